#include "dialogs/VersionDlg.h"
#include <shellapi.h>
#include <algorithm>
#include <array>
#include <cstring>
#include "controls/internal/Colours.h"
#include "diag/ActivityTracker.h"
#include "dialogs/DialogIds.h"
#include "dialogs/internal/DialogControls.h"
#include "settings/internal/Directories.h"
#include "system/internal/DetachedProcess.h"
#include "system/internal/Handle.h"
#include "system/internal/ParentRect.h"

namespace
{
constexpr unsigned short WebUpdateActivity = 4101;

/// The setting that names a detail row's file.
struct DetailRow
{
    const char* win9x;
    const char* nt;
};

// On the NT family the printer driver's work is done by the print processor, which the first row shows as well.
constexpr auto Rows = std::to_array<DetailRow>({
    {"IDO_FILEPD_9X", "IDO_FILEPP_NT"},         // driver
    {"IDO_FILEPSWX", "IDO_FILEPSWX"},           // job status program
    {"IDO_FILEPP_9X", "IDO_FILEPP_NT"},         // print processor
    {"IDO_FILELCS", "IDO_FILELCS"},             // communication service
    {"IDO_CORE_9X", "IDO_CORE_NT"},             // driver core
    {"IDO_UTILITIES_DLL", "IDO_UTILITIES_DLL"}, // utilities
});
// Last: its version, which the product version falls back to, is read already.
constexpr std::size_t UtilitiesRow = Rows.size() - 1;

bool IsRowControl(int id)
{
    constexpr int count = static_cast<int>(Rows.size());
    return (id >= IDC_VERSION_ROW_LABEL && id < IDC_VERSION_ROW_LABEL + count) ||
           (id >= IDC_VERSION_ROW_VALUE && id < IDC_VERSION_ROW_VALUE + count);
}

/// A file's version information, in memory.
class VersionInformation
{
public:
    explicit VersionInformation(const CString& path)
    {
        DWORD unused = 0;
        const DWORD size = ::GetFileVersionInfoSizeA(path, &unused);
        if (size == 0)
            return;
        m_memory.Reset(::GlobalAlloc(GMEM_MOVEABLE, size));
        if (!m_memory)
            return;
        m_data = ::GlobalLock(m_memory.Get());
        if (m_data && !::GetFileVersionInfoA(path, 0, size, m_data))
            Unlock();
    }
    VersionInformation(const VersionInformation&) = delete;
    VersionInformation& operator=(const VersionInformation&) = delete;
    ~VersionInformation() { Unlock(); }

    /// The file's version in its first language. False when the information could not be read or does not tell it.
    bool FileVersion(CString& version) const
    {
        struct Translation
        {
            WORD language;
            WORD codePage;
        } translation;
        const char* data = nullptr;
        UINT size = 0;
        if (!Query("\\VarFileInfo\\Translation", data, size) || size < sizeof translation)
            return false;
        std::memcpy(&translation, data, sizeof translation);
        CString name;
        name.Format("\\StringFileInfo\\%04x%04x\\FileVersion", translation.language, translation.codePage);
        if (!Query(name, data, size))
            return false;
        version = CString(data, static_cast<int>(::strnlen(data, size)));
        return true;
    }

private:
    bool Query(const char* name, const char*& data, UINT& size) const
    {
        void* found = nullptr;
        if (!m_data || !::VerQueryValueA(m_data, name, &found, &size) || !found)
            return false;
        data = static_cast<const char*>(found);
        return true;
    }

    void Unlock()
    {
        if (m_data)
            ::GlobalUnlock(m_memory.Get());
        m_data = nullptr;
    }

    tvk::GlobalMemory m_memory;
    void* m_data = nullptr;
};

/// Calls `act` with each control of the dialog.
template <class Action>
void ForEachControl(const CWnd& dialog, Action act)
{
    for (HWND control = ::GetWindow(dialog.m_hWnd, GW_CHILD); control; control = ::GetWindow(control, GW_HWNDNEXT))
        act(control, ::GetDlgCtrlID(control));
}
} // namespace

IMPLEMENT_DYNAMIC(VersionDlg, CDialog)

BEGIN_MESSAGE_MAP(VersionDlg, CDialog)
    ON_BN_CLICKED(IDC_VERSION_DETAILS, &VersionDlg::OnDetails)
    ON_BN_CLICKED(IDC_VERSION_LEGAL, &VersionDlg::OnLegal)
    ON_BN_CLICKED(IDC_VERSION_UPDATE, &VersionDlg::OnWebTuneUp)
    ON_WM_ERASEBKGND()
    ON_WM_PALETTECHANGED()
    ON_WM_QUERYNEWPALETTE()
END_MESSAGE_MAP()

VersionDlg::VersionDlg(CWnd* pParent) : CDialog(IDD_VERSION, pParent), m_bDetails(0), m_nFullHeight(0)
{
    static_assert(Rows.size() == DetailRows);
}

VersionDlg::~VersionDlg()
{
    if (m_hWnd)
        DestroyWindow(); // while the handlers are still there
    m_KeptResource.Keep();
}

void VersionDlg::PostNcDestroy()
{
    CDialog::PostNcDestroy();
    tvk::LeaveModalLoop(*this);
}

void VersionDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_VERSION_PRODUCT, m_strProductVersion);
    for (int row = 0; row < DetailRows; ++row)
        DDX_Text(pDX, IDC_VERSION_ROW_VALUE + row, m_astrRowVersion[row]);
}

CString VersionDlg::Setting(const char* key)
{
    CString value;
    return m_Product.GetSetting(key, value);
}

bool VersionDlg::IsNT()
{
    return m_Registry.GetOSPlatform() == CRegistry::OS_PLATFORM_NT;
}

/// Empty when the system directory is not known.
CString VersionDlg::ComponentDirectory(const CString& file)
{
    if (!IsNT() || file == Setting("IDO_FILELCS"))
        return tvk::BelowSystemDirectory("\\");
    if (file == Setting("IDO_FILEPP_NT"))
        return tvk::BelowSystemDirectory(Setting("IDO_PRTPROCSPATH"));
    return tvk::PrinterDriverDirectory(m_Product);
}

CString VersionDlg::GetDriverVersion()
{
    m_Spy.OutputData("VersionDlg::GetDriverVersion()");
    const CString directory = tvk::PrinterDriverDirectory(m_Product), path = directory + Setting("IDO_PRODVER");
    m_Spy.OutputData("fileName ==");
    m_Spy.OutputData(path);
    CString version;
    if (!directory.IsEmpty()) // a bare name would be looked for elsewhere
        version = m_IniFile.ReadINI(path, Setting("IDO_PRODVERKEYNAME"), Setting("IDO_PRODVERSECTION"));
    if (version.IsEmpty())
    {
        m_Spy.OutputData("Failed to read file");
        return version;
    }
    m_Spy.OutputData("Success...driver version number:");
    m_Spy.OutputData(version);
    return version;
}

CString VersionDlg::GetFileVersion(CString strFile)
{
    m_Spy.OutputData("VersionDlg::GetFileVersion()");
    m_Spy.OutputData(strFile);
    CString version;
    version.LoadString(IDS_VERSION_UNKNOWN);
    const CString directory = ComponentDirectory(strFile), path = directory + strFile;
    const VersionInformation information(directory.IsEmpty() ? directory : path); // a bare name would be searched for
    m_Spy.OutputData(path);
    if (!information.FileVersion(version))
    {
        m_Spy.OutputData("GetFileVersionInfo() failed...returning Unknown");
        return version;
    }
    m_Spy.OutputData("Success...returning version info");
    m_Spy.OutputData(version);
    return version;
}

BOOL VersionDlg::OnInitDialog()
{
    m_bDetails = 0; // the object may have been opened before
    CDialog::OnInitDialog();
    ReadProductVersion();
    ApplyFonts();
    CRect window;
    GetWindowRect(&window);
    m_nFullHeight = window.Height();
    ShowDetails();
    m_Bitmap.LoadTransparent(IDB_VERSION_IMAGE, tvk::TransparentGreen, nullptr);
    m_Palette.CreatePalette256(IDB_VERSION_IMAGE);
    ReadComponentVersions();
    UpdateData(FALSE);
    ApplySettings();
    return TRUE;
}

void VersionDlg::ReadProductVersion()
{
    const CString driver = GetDriverVersion();
    m_astrRowVersion[UtilitiesRow] = GetFileVersion(Setting("IDO_UTILITIES_DLL"));
    const bool fromIni = m_Product.CompareSetting("IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", 1ul) && !driver.IsEmpty() &&
                         driver != Setting("IDO_DEFAULTSTRING");
    m_strProductVersion = fromIni ? driver : m_astrRowVersion[UtilitiesRow];
}

void VersionDlg::ReadComponentVersions()
{
    for (std::size_t row = 0; row < UtilitiesRow; ++row)
        m_astrRowVersion[row] = GetFileVersion(Setting(IsNT() ? Rows[row].nt : Rows[row].win9x));
}

/// The dialog's font for all controls, bold for the product version and the labels of the rows.
void VersionDlg::ApplyFonts()
{
    LOGFONTA font;
    if (!GetFont() || !GetFont()->GetLogFont(&font))
        return;
    m_Font.DeleteObject();
    m_BoldFont.DeleteObject();
    m_Font.CreateFontIndirect(&font);
    font.lfWeight = FW_BOLD;
    m_BoldFont.CreateFontIndirect(&font);
    ForEachControl(*this,
                   [this](HWND control, int id)
                   {
                       const bool bold = id == IDC_VERSION_PRODUCT || id == IDC_VERSION_LABEL ||
                                         (IsRowControl(id) && id < IDC_VERSION_ROW_VALUE);
                       CWnd::FromHandle(control)->SetFont(bold ? &m_BoldFont : &m_Font, FALSE);
                   });
}

void VersionDlg::ApplySettings()
{
    tvk::SetTextFromString(*this, IDC_VERSION_LABEL,
                           m_Product.CompareSetting("IDO_USEHPE", 1ul) ? IDS_VERSION_LABEL_HPE : IDS_VERSION_LABEL);
    if (IsNT() || !m_Product.CompareSetting("IDO_SOFTWARE2000COPYRIGHT", 1ul))
        tvk::SetTextFromString(*this, IDC_VERSION_NOTICE, IDS_VERSION_NOTICE);
    if (m_Product.CompareSetting("IDO_VERSIONDLGLEGALWARRANTYBUTTON", 0ul))
        tvk::ShowControl(*this, IDC_VERSION_LEGAL, false);
    if (m_Product.CompareSetting("IDO_SUPPORT_WEBUPDATE", 0ul))
        for (const int id : {IDC_VERSION_UPDATE, IDC_VERSION_UPDATE_LABEL})
        {
            tvk::ShowControl(*this, id, false);
            ::EnableWindow(::GetDlgItem(m_hWnd, id), FALSE);
        }
}

void VersionDlg::OnDetails()
{
    m_bDetails = !m_bDetails;
    ShowDetails();
    tvk::SetTextFromString(*this, IDC_VERSION_DETAILS,
                           m_bDetails ? IDS_VERSION_HIDE_DETAILS : IDS_VERSION_SHOW_DETAILS);
    CRect area(0, 0, 0, 0);
    ForEachControl(*this,
                   [&area](HWND control, int id)
                   {
                       if (IsRowControl(id))
                           area.UnionRect(area, CRect(tvk::RectInParent(control)));
                   });
    tvk::RepaintArea(*this, area);
}

void VersionDlg::ShowDetails()
{
    for (int row = 0; row < DetailRows; ++row)
        for (const int first : {IDC_VERSION_ROW_LABEL, IDC_VERSION_ROW_VALUE})
            tvk::ShowControl(*this, first + row, m_bDetails != 0);
    FitHeight();
}

/// Makes the window as high as its template, less the rows' share while they are hidden and lie below all the rest.
void VersionDlg::FitHeight()
{
    long rows = 0, others = 0;
    ForEachControl(*this,
                   [&](HWND control, int id)
                   {
                       long& bottom = IsRowControl(id) ? rows : others;
                       bottom = std::max(bottom, tvk::RectInParent(control).bottom);
                   });
    const int hidden = m_bDetails ? 0 : static_cast<int>(std::max(rows - others, 0l));
    CRect window;
    GetWindowRect(&window);
    SetWindowPos(nullptr, 0, 0, window.Width(), m_nFullHeight - hidden, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void VersionDlg::OnLegal()
{
    if (!m_Product.CompareSetting("IDO_VERSIONDLGLEGALWARRANTYBUTTON", 1ul))
        return;
    const CString directory = tvk::LoadedModuleDirectory(Setting("IDO_UTIL_DLL"));
    // Without it the name alone would open whatever file of that name the current directory has.
    if (!directory.IsEmpty())
        ::ShellExecuteA(m_hWnd, "open", directory + Setting("IDO_LEGALNOTICEFILE"), nullptr, nullptr, SW_SHOWNORMAL);
}

void VersionDlg::OnWebTuneUp()
{
    ActivityTracker().WriteData(WebUpdateActivity, 1, 1ul, "");
    const CString directory =
        IsNT() ? tvk::PrinterDriverDirectory(m_Product) : tvk::LoadedModuleDirectory(Setting("IDO_UTIL_DLL"));
    if (directory.IsEmpty()) // a bare name would be searched for
        return;
    // No separator: the string begins with its own.
    CString arguments;
    arguments.LoadString(IDS_VERSION_UPDATE_TAIL);
    tvk::StartDetached(directory + Setting("IDO_WEBUPDATE_EXE") + arguments);
}

BOOL VersionDlg::OnEraseBkgnd(CDC* pDC)
{
    const BOOL erased = CDialog::OnEraseBkgnd(pDC);
    if (const HWND place = ::GetDlgItem(m_hWnd, IDC_VERSION_PICTURE))
    {
        const RECT rect = tvk::RectInParent(place);
        m_Bitmap.TransBlt(pDC, rect.left, rect.top, 0, 0);
    }
    return erased;
}

void VersionDlg::OnPaletteChanged(CWnd* pFocusWnd)
{
    CDialog::OnPaletteChanged(pFocusWnd);
    if (pFocusWnd != this) // the change would be its own
        tvk::RealizePalette(*this, m_Palette);
}

BOOL VersionDlg::OnQueryNewPalette()
{
    return tvk::RealizePalette(*this, m_Palette);
}
