// VersionDlg: which versions of the printer software are installed here?
#pragma once

#include <afxwin.h>
#include "controls/CPalette256.h"
#include "controls/CTransparentBmp.h"
#include "diag/CSpy.h"
#include "dialogs/KeptResourceHandle.h"
#include "settings/TvkIniFile.h"
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"

/// The about dialog of the printer software: the product version; on request the versions of the installed components;
/// the legal notice; the web update.
///
/// The template, its texts and its picture come from the resource library that is current (AfxGetResourceHandle) while
/// the dialog is made and used; dialogs/DialogIds.h lists what it must hold. A host makes that library current, runs
/// the dialog, and puts its own handle back; the library stays loaded as long as the dialog is open. Which files, which
/// INI file and which buttons there are is told by the product's settings.
///
/// Closed by the user, DoModal answers IDOK or IDCANCEL; -1 when the dialog cannot be made, or goes with its owner.
///
/// A version that cannot be read shows as the text of string 10075. Every reading is traced; nothing is reported to the
/// user.
class AFX_EXT_CLASS VersionDlg : public CDialog
{
    DECLARE_DYNAMIC(VersionDlg)

public:
    /// @param pParent  owner window; null for the application's main window
    explicit VersionDlg(CWnd* pParent = nullptr);
    /// Closes a modeless dialog that is still open.
    ~VersionDlg() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void PostNcDestroy() override;

    /// The printer driver's version from the product's version INI file: empty without the file, the product's default
    /// text without the value.
    CString GetDriverVersion();
    /// The version of a component's file. Where the file lies follows from the Windows family and from its name:
    ///  - on the 9x family all components, on the NT family the communication service (`IDO_FILELCS`), in the system
    ///    directory;
    ///  - the print processor (`IDO_FILEPP_NT`) in the system directory's `IDO_PRTPROCSPATH`;
    ///  - every other one in the printer driver's directory.
    /// @return "FileVersion" in the first language of the file's version resource; the text of string 10075 when there
    ///         is none
    CString GetFileVersion(CString strFile);

    BOOL OnInitDialog() override;
    /// Shows or hides the rows of versions. While they are hidden the window is only as high as the rest needs.
    afx_msg void OnDetails();
    /// Opens the legal notice.
    afx_msg void OnLegal();
    /// Records the activity and starts the web update program. A failed start is not reported. ActivityTracker's fatal
    /// error, a std::logic_error that the library does not catch, leaves this handler; nothing is started then.
    afx_msg void OnWebTuneUp();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnPaletteChanged(CWnd* pFocusWnd);
    afx_msg BOOL OnQueryNewPalette();
    DECLARE_MESSAGE_MAP()

    static constexpr int DetailRows = 6;

    KeptResourceHandle m_KeptResource; // first: destroyed after the settings objects
    TvkProduct m_Product;
    TvkIniFile m_IniFile;
    CRegistry m_Registry; // asked for the Windows version only
    CSpy m_Spy;
    CFont m_Font;
    CFont m_BoldFont;
    CTransparentBmp m_Bitmap;
    CPalette256 m_Palette;
    int m_bDetails; // the rows are shown
    CString m_strProductVersion;
    CString m_astrRowVersion[DetailRows];

private:
    CString Setting(const char* key);
    bool IsNT();
    CString ComponentDirectory(const CString& file);
    void ReadProductVersion();
    void ReadComponentVersions();
    void ApplyFonts();
    void ApplySettings();
    void ShowDetails();
    void FitHeight();

    int m_nFullHeight; // of the window, with the rows
};
