// JSWOptionsDlg: when, how and in which skin does the job status window of a printer appear?
#pragma once

#include <afxwin.h>
#include <memory>
#include "dialogs/KeptResourceHandle.h"
#include "diag/CSpy.h"
#include "links/CGUIUrlLink.h"
#include "settings/TvkProduct.h"

namespace tvk
{
class PrinterValues;
class SkinPreview;
} // namespace tvk

/// The options dialog of the job status window, for one printer: when the window appears, whether it makes sounds,
/// which skin it wears and, where the product offers the choice, which cartridges a print needs. The options are
/// registry values of the printer; one that cannot be read gets the product's default, and the default is written back
/// at once, whether the user then accepts the dialog or not.
///
/// The template and its texts come from the resource library that is current (AfxGetResourceHandle) when InitModal or
/// Init is called; dialogs/DialogIds.h lists what it must hold. It must stay current and loaded while the dialog is
/// open. A dialog that closes, in whatever way, puts back the handle that was current when it was set up. Dialogs that
/// are open at the same time must therefore be closed in the opposite order, or the host sees to the handle itself.
///
/// Its owner is the application's main window (CWinApp::m_pMainWnd). A modal dialog without one disables nothing.
///
/// A skin is a library of bitmaps. Its preview is loaded when it is shown, and the library is freed at once, so that
/// skins can be replaced while the dialog is open.
///
/// The cartridge choice is kept as two flags of the printer. The first is 2 when the colour cartridge is needed,
/// otherwise 1 when the black one is, otherwise 0: both needed is kept as 2. The second is 1 when either is. They come
/// back as they were stored: a second flag of 0 checks neither box, otherwise the first flag 1 checks the black one and
/// 2 the colour one. Missing flags count as 0 and 1. Flags that are none of these (another program's, or no numbers)
/// and flags that may not be read disable both boxes, and are then left as they are.
///
/// Topics opened and links followed are recorded by ActivityTracker. Its fatal error, a std::logic_error that the
/// library does not catch, leaves the handlers OnHelpInfo, OnContextMenu and OnLink.
class AFX_EXT_CLASS JSWOptionsDlg : public CDialog
{
    DECLARE_DYNAMIC(JSWOptionsDlg)

public:
    /// Options of the modeless Init.
    enum InitOptions : unsigned long
    {
        StayOnTop = 1 ///< stays above other programs' windows, as the job status window itself does
    };

    /// A dialog that is not open yet.
    JSWOptionsDlg();
    /// Closes a modeless dialog that is still open.
    ~JSWOptionsDlg() override;

    /// Prepares a modal dialog; call DoModal next. Its result is 1 however the user closes it, -1 when it cannot be
    /// made, or goes with its owner. A modeless dialog that is open is closed; the resource handle stays as it is.
    /// @param strPrinterName    the printer's friendly name, also the caption
    /// @param strSkinDirectory  the product's own skins, with the backslash at the end
    void InitModal(CString strPrinterName, CString strSkinDirectory);
    /// Makes and shows a modeless dialog; one that is open already comes to the front and is otherwise left alone. The
    /// object must outlive the window. Whether it is open tells GetSafeHwnd.
    /// @param pCaption  caption; null or empty for the printer's name
    /// @param dwOptions InitOptions; other bits mean nothing
    /// @param pPlace    where its top left corner shall be on the screen, moved to where the whole dialog can be seen;
    ///                  its size does not matter. Null for the place that the template gives.
    void Init(CString strPrinterName, CString strSkinDirectory, CString* pCaption, unsigned long dwOptions,
              CRect* pPlace);
    /// The text that is passed along when the skin link is followed; at most 259 characters of it.
    void Init(const char* pszText);
    /// Does nothing: the options are saved when the user accepts them.
    void SaveSettings();

    /// The keys of a dialog, as CDialog has them.
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void PostNcDestroy() override;

    BOOL OnInitDialog() override;
    /// Saves the options and closes.
    afx_msg void OnOk();
    /// Closes with the same result as OnOk: hosts do not tell the two apart.
    void OnCancel() override;
    afx_msg void OnClose();
    afx_msg void OnAlwaysShow();
    afx_msg void OnShowMinimized();
    afx_msg void OnNeverShow();
    afx_msg void OnSound();
    afx_msg void OnLink();
    /// Shows the next skin, if its file is still there. A skin that cannot be loaded is reported in a message box and
    /// leaves preview and choice alone; the step is taken, so that the skins behind it can be reached.
    afx_msg void OnNext();
    /// Shows the previous skin, likewise.
    afx_msg void OnPrevious();
    afx_msg void OnColorCartridge();
    afx_msg void OnBlackCartridge();
    /// Opens the help topic of the control.
    afx_msg BOOL OnHelpInfo(HELPINFO* pHelpInfo);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnPaint();
    afx_msg void OnPaletteChanged(CWnd* pFocusWnd);
    afx_msg BOOL OnQueryNewPalette();
    DECLARE_MESSAGE_MAP()

    static constexpr int MaximumSkins = 200;

    KeptResourceHandle m_KeptResource; // first: destroyed after the settings objects
    CString m_strPrinterName;          // friendly name: selects the registry branch, and is the default caption
    CString m_strSkinDirectory;        // of the product's own skins, with the backslash at the end
    CString m_strCaption;              // empty: the printer's name
    int m_nShowMode;                   // 0 always show, 1 show minimised, 2 never show
    int m_bSound;                      // sound on
    int m_bSkinChanged;                // the user has picked another skin since the dialog opened
    CString m_strSkin;                 // the chosen skin's file name
    CString m_astrSkins[MaximumSkins]; // file names of the skins found, the product's own first
    int m_nPrimarySkins;               // how many of them lie in m_strSkinDirectory
    int m_nLastSkin;                   // index of the last one; -1 without any
    int m_nCurrentSkin;                // index of the one stepped to: shown, unless its file is missing or broken
    int m_bModal;                      // set up by InitModal
    HMODULE m_hSavedResource;          // resource handle when the dialog was set up
    char m_szLinkArgument[260];        // passed along when the skin link is followed
    unsigned long m_dwOptions;         // InitOptions
    int m_bColorCartridge;             // needed to complete a print
    int m_bBlackCartridge;
    int m_bCartridgesDisabled; // the stored flags are not ours to change
    TvkProduct m_Product;
    CSpy m_Spy;
    CGUIUrlLink m_SkinLink;

private:
    CString Setting(const char* key);
    bool Is(const char* key, unsigned long number);
    void Close();
    void Place(const CRect& place);

    void SetUpSkinLink();
    void ReadShowMode(tvk::PrinterValues& values);
    void ReadSound(tvk::PrinterValues& values);
    void ReadSkin(tvk::PrinterValues& values);
    void ReadCartridges(tvk::PrinterValues& values);
    void FindSkins();
    void AppendSkins(const char* conventionKey, const CString& directory);
    void ShowFirstSkin();
    void HideSkinChoice();
    bool RetailerHidesSkins();

    CString AlternateSkinDirectory(const char* failure);
    CString SkinPath(int index, const char* failure);
    void StepSkin(int step, const char* failure);
    bool LoadSkin(const CString& path);
    void EnableSkinButtons();
    CRect PreviewArea() const;
    bool ShowHelp(int control);

    std::unique_ptr<tvk::SkinPreview> m_Preview;
};
