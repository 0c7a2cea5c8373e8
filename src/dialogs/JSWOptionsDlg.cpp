#include "dialogs/JSWOptionsDlg.h"
#include <htmlhelp.h>
#include <algorithm>
#include <array>
#include "dialogs/DialogIds.h"
#include "dialogs/internal/DialogControls.h"
#include "dialogs/internal/PrinterValues.h"
#include "dialogs/internal/SkinPreview.h"
#include "links/CatsWinHelp.h"
#include "settings/TvkIniFile.h"
#include "settings/internal/Directories.h"
#include "settings/internal/ResourceHandleScope.h"
#include "system/internal/Handle.h"
#include "system/internal/ParentRect.h"

namespace
{
enum ShowMode
{
    AlwaysShow,
    ShowMinimized,
    NeverShow
};
static_assert(IDC_JSW_ALWAYS_SHOW + ShowMinimized == IDC_JSW_SHOW_MINIMIZED &&
              IDC_JSW_ALWAYS_SHOW + NeverShow == IDC_JSW_NEVER_SHOW);

// Keys and values of the printer.
constexpr char WindowKey[] = "JSW";
constexpr char ShowValue[] = "Show Process Window";
constexpr char MinimizedValue[] = "Job Progress Minimized";
constexpr char SkinValue[] = "JSW Skin";
constexpr char SkinChangeValue[] = "JSW Skin Change";
constexpr char SoundKey[] = "RZB";
constexpr char SoundValue[] = "Sound";
constexpr char CartridgeKey[] = "PSW";
constexpr char FirstFlagKey[] = "IDO_KEY_NAME_COMPLETETOPRINT_FLAG"; // settings that name the values
constexpr char SecondFlagKey[] = "IDO_KEY_NAME_COMPTOPRINT_PPRZB_FLAG";
constexpr DWORD SkinNameCapacity = 50;

constexpr DWORD NoCartridge = 0;
constexpr DWORD BlackCartridge = 1;
constexpr DWORD ColorCartridge = 2; // also when both are needed

constexpr COLORREF LinkColour = 0xFFFFFF;

constexpr int SkinsOfAKind = 100;     // numbered from 0
constexpr int SkinsSearchedFor = 100; // the remembered skin is looked for among the first ones only

constexpr std::array SkinControls = {IDC_JSW_SKIN_LABEL, IDC_JSW_SKIN_PREVIEW, IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT,
                                     IDC_JSW_SKIN_LINK};
constexpr std::array CartridgeControls = {IDC_JSW_CARTRIDGE_LABEL, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE};

struct HelpTopic
{
    int control;
    int topic;
};
constexpr auto HelpTopics = std::to_array<HelpTopic>({
    {IDC_JSW_ALWAYS_SHOW, 302},
    {IDC_JSW_SHOW_MINIMIZED, 303},
    {IDC_JSW_NEVER_SHOW, 301},
    {IDC_JSW_SOUND, 304},
    {IDC_JSW_SKIN_PREVIEW, 305},
    {IDC_JSW_SKIN_PREVIOUS, 305},
    {IDC_JSW_SKIN_NEXT, 305},
});

bool IsFile(const CString& path)
{
    const DWORD attributes = ::GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

/// A library whose resources can be read. One that is no program for this system (a 32-bit skin) serves as a file.
tvk::Module LoadResources(const CString& path)
{
    tvk::Module library(::LoadLibraryA(path));
    if (!library && ::GetLastError() == ERROR_BAD_EXE_FORMAT)
        library.Reset(::LoadLibraryExA(path, nullptr, LOAD_LIBRARY_AS_DATAFILE));
    return library;
}

/// A dialog that was opened without Init or InitModal has saved none.
void PutBack(HMODULE savedResource)
{
    if (savedResource)
        AfxSetResourceHandle(savedResource);
}
} // namespace

IMPLEMENT_DYNAMIC(JSWOptionsDlg, CDialog)

BEGIN_MESSAGE_MAP(JSWOptionsDlg, CDialog)
    ON_BN_CLICKED(IDOK, &JSWOptionsDlg::OnOk)
    ON_BN_CLICKED(IDC_JSW_ALWAYS_SHOW, &JSWOptionsDlg::OnAlwaysShow)
    ON_BN_CLICKED(IDC_JSW_SHOW_MINIMIZED, &JSWOptionsDlg::OnShowMinimized)
    ON_BN_CLICKED(IDC_JSW_NEVER_SHOW, &JSWOptionsDlg::OnNeverShow)
    ON_BN_CLICKED(IDC_JSW_SOUND, &JSWOptionsDlg::OnSound)
    ON_BN_CLICKED(IDC_JSW_SKIN_LINK, &JSWOptionsDlg::OnLink)
    ON_BN_CLICKED(IDC_JSW_SKIN_NEXT, &JSWOptionsDlg::OnNext)
    ON_BN_CLICKED(IDC_JSW_SKIN_PREVIOUS, &JSWOptionsDlg::OnPrevious)
    ON_BN_CLICKED(IDC_JSW_COLOR_CARTRIDGE, &JSWOptionsDlg::OnColorCartridge)
    ON_BN_CLICKED(IDC_JSW_BLACK_CARTRIDGE, &JSWOptionsDlg::OnBlackCartridge)
    ON_WM_CLOSE()
    ON_WM_HELPINFO()
    ON_WM_CONTEXTMENU()
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_PALETTECHANGED()
    ON_WM_QUERYNEWPALETTE()
END_MESSAGE_MAP()

JSWOptionsDlg::JSWOptionsDlg()
    : CDialog(IDD_JSW_OPTIONS), m_nShowMode(AlwaysShow), m_bSound(0), m_bSkinChanged(0), m_nPrimarySkins(0),
      m_nLastSkin(-1), m_nCurrentSkin(0), m_bModal(0), m_hSavedResource(nullptr), m_szLinkArgument(), m_dwOptions(0),
      m_bColorCartridge(0), m_bBlackCartridge(0), m_bCartridgesDisabled(0)
{
}

JSWOptionsDlg::~JSWOptionsDlg()
{
    if (m_hWnd)
        DestroyWindow(); // while the handlers are still there
    m_KeptResource.Keep();
}

void JSWOptionsDlg::InitModal(CString strPrinterName, CString strSkinDirectory)
{
    if (m_hWnd)
    {
        const tvk::ResourceHandleScope current(AfxGetResourceHandle());
        DestroyWindow(); // DoModal makes one of its own
    }
    m_strPrinterName = strPrinterName;
    m_strSkinDirectory = strSkinDirectory;
    m_strCaption.Empty();
    m_dwOptions = 0;
    m_hSavedResource = AfxGetResourceHandle();
    m_bModal = 1;
}

void JSWOptionsDlg::Init(CString strPrinterName, CString strSkinDirectory, CString* pCaption, unsigned long dwOptions,
                         CRect* pPlace)
{
    if (m_hWnd)
    {
        ShowWindow(SW_SHOWNORMAL);
        SetForegroundWindow();
        return;
    }
    m_strPrinterName = strPrinterName;
    m_strSkinDirectory = strSkinDirectory;
    m_strCaption = pCaption ? *pCaption : CString();
    m_dwOptions = dwOptions;
    m_hSavedResource = AfxGetResourceHandle();
    m_bModal = 0;
    if (!Create(IDD_JSW_OPTIONS))
        return;
    if (pPlace)
        Place(*pPlace);
    ShowWindow(SW_SHOW);
}

void JSWOptionsDlg::Init(const char* pszText)
{
    ::lstrcpynA(m_szLinkArgument, pszText ? pszText : "", sizeof m_szLinkArgument);
}

void JSWOptionsDlg::SaveSettings() {}

BOOL JSWOptionsDlg::PreTranslateMessage(MSG* pMsg)
{
    return CDialog::PreTranslateMessage(pMsg);
}

void JSWOptionsDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Check(pDX, IDC_JSW_SOUND, m_bSound);
    DDX_Check(pDX, IDC_JSW_COLOR_CARTRIDGE, m_bColorCartridge);
    DDX_Check(pDX, IDC_JSW_BLACK_CARTRIDGE, m_bBlackCartridge);
}

/// Every way of closing ends here, also the destruction by an owner.
void JSWOptionsDlg::PostNcDestroy()
{
    CDialog::PostNcDestroy();
    m_Preview.reset();
    PutBack(m_hSavedResource);
    tvk::LeaveModalLoop(*this);
}

CString JSWOptionsDlg::Setting(const char* key)
{
    CString value;
    return m_Product.GetSetting(key, value);
}

bool JSWOptionsDlg::Is(const char* key, unsigned long number)
{
    return m_Product.CompareSetting(key, number) != 0;
}

/// Moves the dialog to the rectangle's top left corner, or as near as its monitor can show it whole.
void JSWOptionsDlg::Place(const CRect& place)
{
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    CRect window;
    GetWindowRect(&window);
    CPoint corner = place.TopLeft();
    if (::GetMonitorInfoA(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor))
    {
        const CRect room(monitor.rcWork);
        corner.x = std::max(room.left, std::min(corner.x, room.right - window.Width()));
        corner.y = std::max(room.top, std::min(corner.y, room.bottom - window.Height()));
    }
    SetWindowPos(nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL JSWOptionsDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_bSkinChanged = 0;
    SetWindowText(m_strCaption.IsEmpty() ? m_strPrinterName : m_strCaption);
    if (m_dwOptions & StayOnTop)
        ::SetWindowPos(m_hWnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetUpSkinLink();
    if (Is("IDO_MORVAY_INKLOW_WARNING_OPTION", 1))
        tvk::SetTextFromString(*this, IDC_JSW_WARNING, IDS_JSW_INK_LOW);

    tvk::PrinterValues values(m_strPrinterName);
    ReadShowMode(values);
    ReadSound(values);
    ReadSkin(values);
    FindSkins();
    ShowFirstSkin();
    HideSkinChoice();
    ReadCartridges(values);
    CheckRadioButton(IDC_JSW_ALWAYS_SHOW, IDC_JSW_NEVER_SHOW, IDC_JSW_ALWAYS_SHOW + m_nShowMode);
    UpdateData(FALSE);
    return TRUE;
}

void JSWOptionsDlg::SetUpSkinLink()
{
    if (!m_SkinLink.m_hWnd && !m_SkinLink.SubclassDlgItem(IDC_JSW_SKIN_LINK, this))
        return;
    tvk::SetTextFromString(*this, IDC_JSW_SKIN_LINK, IDS_JSW_SKIN_LINK);
    m_SkinLink.Initialize(IDB_JSW_LINK, IDB_JSW_LINK, IDB_JSW_LINK, nullptr, DT_VCENTER | DT_SINGLELINE);
    // Also while hovered: the link's own blue cannot be read on the dark picture.
    m_SkinLink.SetLinkTextColor(LinkColour);
    m_SkinLink.SetLinkHoverColor(LinkColour);
}

void JSWOptionsDlg::ReadShowMode(tvk::PrinterValues& values)
{
    values.Select(WindowKey);
    std::optional<DWORD> minimized = values.WideNumber(MinimizedValue);
    if (!minimized)
    {
        minimized = Is("IDO_DEFAULT_JSW_MINIMIZED", 0) ? 0 : 1;
        // Deliberately the only number of eight bytes. It is read with room for them, and for a plain number.
        values.WriteWideNumber(MinimizedValue, *minimized);
    }
    std::optional<DWORD> show = values.Number(ShowValue);
    if (!show)
    {
        show = 1;
        values.WriteNumber(ShowValue, *show);
    }
    m_nShowMode = *minimized == 1 ? ShowMinimized : *show == 0 ? NeverShow : AlwaysShow;
}

void JSWOptionsDlg::ReadSound(tvk::PrinterValues& values)
{
    values.Select(SoundKey);
    std::optional<DWORD> sound = values.Number(SoundValue);
    if (!sound)
    {
        sound = !Is("IDO_HIDE_SOUND_OPTION", 1) && Is("IDO_DEFAULT_SOUND", 1) ? 1 : 0;
        values.WriteNumber(SoundValue, *sound);
    }
    m_bSound = *sound != 0;
}

void JSWOptionsDlg::ReadSkin(tvk::PrinterValues& values)
{
    values.Select(WindowKey);
    std::optional<CString> skin = values.Text(SkinValue, SkinNameCapacity);
    if (!skin)
    {
        skin = Setting("IDO_JSWDEFAULTSKIN");
        values.WriteText(SkinValue, *skin);
    }
    m_strSkin = *skin;
}

void JSWOptionsDlg::FindSkins()
{
    m_nLastSkin = -1;
    AppendSkins("IDO_JSWDEFAULTSKINNAMECONVENTION", m_strSkinDirectory);
    m_nPrimarySkins = m_nLastSkin + 1;
    const CString alternates = AlternateSkinDirectory("JSWOptionsDlg::OnInitDialog1: GetWindowsDirectory failed.\n");
    if (!alternates.IsEmpty())
        AppendSkins("IDO_JSWALTERNATESKINNAMECONVENTION", alternates);
}

void JSWOptionsDlg::AppendSkins(const char* conventionKey, const CString& directory)
{
    static_assert(MaximumSkins == 2 * SkinsOfAKind);
    const CString convention = Setting(conventionKey), extension = Setting("IDO_JSWSKINEXTENSION");
    for (int n = 0; n < SkinsOfAKind; ++n)
    {
        CString number;
        number.Format("%d", n);
        const CString name = convention + number + extension;
        if (IsFile(directory + name))
            m_astrSkins[++m_nLastSkin] = name;
    }
}

void JSWOptionsDlg::ShowFirstSkin()
{
    const CString* const begin = m_astrSkins;
    const CString* const end = begin + std::min(m_nLastSkin + 1, SkinsSearchedFor);
    const CString* const found =
        std::find_if(begin, end, [this](const CString& name) { return name.CompareNoCase(m_strSkin) == 0; });
    m_nCurrentSkin = found == end ? 0 : static_cast<int>(found - begin);
    m_Preview.reset();
    if (m_nLastSkin >= 0)
    {
        const CString path = SkinPath(m_nCurrentSkin, "JSWOptionsDlg::OnInitDialog2: GetWindowsDirectory failed.\n");
        if (IsFile(path))
            LoadSkin(path);
    }
    EnableSkinButtons();
}

void JSWOptionsDlg::HideSkinChoice()
{
    if (m_Product.CompareSetting("IDO_SKIN_URL_OVERRIDE", "1"))
        tvk::ShowControl(*this, IDC_JSW_SKIN_LINK, false);
    const bool retailer = RetailerHidesSkins();
    if (retailer || Is("IDO_HIDE_APPEARANCESTYLE_OPTION", 1) || Is("IDO_ONECLICK_INK_ORDER", 1))
        for (const int control : SkinControls)
            tvk::ShowControl(*this, control, false);
}

bool JSWOptionsDlg::RetailerHidesSkins()
{
    const CString directory = tvk::PrinterDriverDirectory(m_Product);
    if (directory.IsEmpty()) // a bare name would be looked for elsewhere
        return false;
    const CString file = directory + Setting("IDO_RETAILERSPECIFIC_INIFILE_NAME");
    return TvkIniFile().ReadINI(file, Setting("IDO_SKIN_DIRECTIVE_KEY_NAME"),
                                Setting("IDO_RETAILER_SPECIFIC_SECTION_NAME")) == "1";
}

void JSWOptionsDlg::ReadCartridges(tvk::PrinterValues& values)
{
    m_bColorCartridge = m_bBlackCartridge = m_bCartridgesDisabled = 0;
    if (!Is("IDO_SUPPORT_COMPLETE_A_PRINT", 1))
    {
        for (const int control : CartridgeControls)
            tvk::ShowControl(*this, control, false);
        return;
    }
    const std::optional<bool> stored = values.SelectExisting(CartridgeKey);
    m_bCartridgesDisabled = !stored;
    if (stored.value_or(false))
    {
        const CString firstName = Setting(FirstFlagKey), secondName = Setting(SecondFlagKey);
        const auto read = [&values](const CString& name, DWORD missing)
        { return values.Has(name) ? values.Number(name) : missing; };
        const std::optional<DWORD> first = read(firstName, NoCartridge), second = read(secondName, 1);
        m_bCartridgesDisabled = !first || !second || *first > ColorCartridge || *second > 1;
        if (!m_bCartridgesDisabled && *second == 1)
        {
            m_bColorCartridge = *first == ColorCartridge;
            m_bBlackCartridge = *first == BlackCartridge;
        }
    }
    for (const int control : CartridgeControls)
        ::EnableWindow(::GetDlgItem(m_hWnd, control), !m_bCartridgesDisabled);
}

void JSWOptionsDlg::OnOk()
{
    tvk::PrinterValues values(m_strPrinterName);
    values.Select(WindowKey);
    values.WriteNumber(ShowValue, m_nShowMode != NeverShow);
    values.WriteNumber(MinimizedValue, m_nShowMode == ShowMinimized);
    values.Select(SoundKey);
    values.WriteNumber(SoundValue, static_cast<DWORD>(m_bSound));
    if (m_bSkinChanged)
    {
        values.Select(WindowKey);
        values.WriteText(SkinValue, m_strSkin);
        values.WriteNumber(SkinChangeValue, 1);
    }
    if (Is("IDO_SUPPORT_COMPLETE_A_PRINT", 1) && !m_bCartridgesDisabled)
    {
        values.Select(CartridgeKey);
        values.WriteNumber(Setting(FirstFlagKey), m_bColorCartridge   ? ColorCartridge
                                                  : m_bBlackCartridge ? BlackCartridge
                                                                      : NoCartridge);
        values.WriteNumber(Setting(SecondFlagKey), m_bColorCartridge || m_bBlackCartridge);
    }
    Close();
}

void JSWOptionsDlg::OnCancel()
{
    Close();
}

void JSWOptionsDlg::OnClose()
{
    OnCancel();
}

void JSWOptionsDlg::Close()
{
    if (m_bModal)
        EndDialog(IDOK);
    else
        DestroyWindow();
    PutBack(m_hSavedResource);
}

void JSWOptionsDlg::OnAlwaysShow()
{
    m_nShowMode = AlwaysShow;
}

void JSWOptionsDlg::OnShowMinimized()
{
    m_nShowMode = ShowMinimized;
}

void JSWOptionsDlg::OnNeverShow()
{
    m_nShowMode = NeverShow;
}

void JSWOptionsDlg::OnSound()
{
    m_bSound = !m_bSound;
}

void JSWOptionsDlg::OnColorCartridge()
{
    m_bColorCartridge = IsDlgButtonChecked(IDC_JSW_COLOR_CARTRIDGE) == BST_CHECKED;
}

void JSWOptionsDlg::OnBlackCartridge()
{
    m_bBlackCartridge = IsDlgButtonChecked(IDC_JSW_BLACK_CARTRIDGE) == BST_CHECKED;
}

void JSWOptionsDlg::OnLink()
{
    m_SkinLink.FollowLink(Setting("IDO_SKIN_SUBURL"), static_cast<const char*>(m_szLinkArgument), 1);
}

void JSWOptionsDlg::OnNext()
{
    StepSkin(1, "JSWOptionsDlg::OnNext: GetWindowsDirectory failed.\n");
}

void JSWOptionsDlg::OnPrevious()
{
    StepSkin(-1, "JSWOptionsDlg::OnPrevious: GetWindowsDirectory failed.\n");
}

/// The folder of the skins that were added later; empty, after a record, when the system does not tell its directory.
CString JSWOptionsDlg::AlternateSkinDirectory(const char* failure)
{
    char windows[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(windows, MAX_PATH);
    if (length == 0 || length > MAX_PATH)
    {
        m_Spy.OutputData(failure);
        m_Spy.OutputData(static_cast<unsigned long>(length));
        return CString();
    }
    return windows + Setting("IDO_JSWALTSKINDIRECTORY");
}

/// Empty when its folder is not known.
CString JSWOptionsDlg::SkinPath(int index, const char* failure)
{
    const CString directory = index < m_nPrimarySkins ? m_strSkinDirectory : AlternateSkinDirectory(failure);
    // The current directory is no place for skins, except where the host has said so.
    return directory.IsEmpty() && index >= m_nPrimarySkins ? CString() : directory + m_astrSkins[index];
}

void JSWOptionsDlg::StepSkin(int step, const char* failure)
{
    const int index = m_nCurrentSkin + step;
    if (index < 0 || index > m_nLastSkin)
        return;
    const CString path = SkinPath(index, failure);
    if (!IsFile(path)) // deleted in the meantime
        return;
    m_nCurrentSkin = index;
    if (LoadSkin(path))
    {
        m_strSkin = m_astrSkins[index];
        m_bSkinChanged = 1;
        tvk::RepaintArea(*this, PreviewArea());
    }
    EnableSkinButtons();
}

/// Takes the preview from a skin; false, with the old preview in place, when it cannot be loaded. A skin without a
/// preview is a skin, and shows none.
bool JSWOptionsDlg::LoadSkin(const CString& path)
{
    const tvk::Module skin = LoadResources(path);
    if (!skin)
    {
        MessageBox(path, "Skin LoadLibrary Failed");
        return false;
    }
    auto preview = std::make_unique<tvk::SkinPreview>();
    {
        const tvk::ResourceHandleScope resources(skin.Get());
        if (!preview->Load(skin.Get(), PreviewArea().Size()))
            preview.reset();
    }
    PutBack(m_hSavedResource); // what the host has made current meanwhile does not count
    m_Preview = std::move(preview);
    return true;
}

void JSWOptionsDlg::EnableSkinButtons()
{
    CWnd* const previous = GetDlgItem(IDC_JSW_SKIN_PREVIOUS);
    CWnd* const next = GetDlgItem(IDC_JSW_SKIN_NEXT);
    if (!previous || !next)
        return;
    const bool hasPrevious = m_nCurrentSkin > 0, hasNext = m_nCurrentSkin < m_nLastSkin;
    // The enabled one first: the focus must have a place to go to.
    if (hasPrevious)
        previous->EnableWindow();
    if (hasNext)
        next->EnableWindow();
    const HWND focus = ::GetFocus();
    CWnd* target = nullptr;
    if (!hasPrevious && focus == previous->m_hWnd)
        target = hasNext ? next : GetDlgItem(IDOK);
    if (!hasNext && focus == next->m_hWnd)
        target = hasPrevious ? previous : GetDlgItem(IDOK);
    if (target) // a template may lack the button
        GotoDlgCtrl(target);
    previous->EnableWindow(hasPrevious);
    next->EnableWindow(hasNext);
}

CRect JSWOptionsDlg::PreviewArea() const
{
    const HWND control = ::GetDlgItem(m_hWnd, IDC_JSW_SKIN_PREVIEW);
    return control ? CRect(tvk::RectInParent(control)) : CRect(0, 0, 0, 0);
}

BOOL JSWOptionsDlg::OnHelpInfo(HELPINFO* pHelpInfo)
{
    if (pHelpInfo && pHelpInfo->iContextType == HELPINFO_WINDOW && ShowHelp(pHelpInfo->iCtrlId))
        return TRUE;
    return CDialog::OnHelpInfo(pHelpInfo);
}

void JSWOptionsDlg::OnContextMenu(CWnd* pWnd, CPoint point)
{
    int control = pWnd ? pWnd->GetDlgCtrlID() : 0;
    if (pWnd == this) // static and disabled controls let the mouse through
        for (const HelpTopic& entry : HelpTopics)
        {
            CRect place;
            const HWND candidate = ::GetDlgItem(m_hWnd, entry.control);
            if (::IsWindowVisible(candidate) && ::GetWindowRect(candidate, &place) && place.PtInRect(point))
                control = entry.control;
        }
    if (!ShowHelp(control))
        CDialog::OnContextMenu(pWnd, point);
}

/// False when the control has no topic.
bool JSWOptionsDlg::ShowHelp(int control)
{
    const auto* const topic = std::find_if(HelpTopics.begin(), HelpTopics.end(),
                                           [control](const HelpTopic& entry) { return entry.control == control; });
    if (topic == HelpTopics.end())
        return false;
    CatsWinHelp(m_hWnd, Setting("IDO_PSW_HELPFILE"), HH_HELP_CONTEXT, topic->topic, m_strPrinterName, 1);
    return true;
}

BOOL JSWOptionsDlg::OnEraseBkgnd(CDC* pDC)
{
    const BOOL erased = CDialog::OnEraseBkgnd(pDC);
    const CWnd* const place = GetDlgItem(IDC_JSW_SKIN_PREVIEW);
    if (m_Preview && place && place->IsWindowVisible())
        m_Preview->Draw(*pDC, PreviewArea());
    return erased;
}

void JSWOptionsDlg::OnPaint()
{
    CPaintDC context(this);
    if (m_SkinLink.m_hWnd)
        m_SkinLink.DrawButton(&context);
}

void JSWOptionsDlg::OnPaletteChanged(CWnd* pFocusWnd)
{
    CDialog::OnPaletteChanged(pFocusWnd);
    if (pFocusWnd != this && m_Preview) // its own change is known
        tvk::RealizePalette(*this, m_Preview->Palette());
}

BOOL JSWOptionsDlg::OnQueryNewPalette()
{
    return m_Preview ? tvk::RealizePalette(*this, m_Preview->Palette()) : FALSE;
}
