#include "links/CGUIUrlLink.h"
#include <shellapi.h>
#include "diag/ActivityTracker.h"
#include "links/StoreAddress.h"
#include "links/internal/Browser.h"
#include "links/internal/ConsoleSession.h"
#include "locale/CountryLanguage.h"
#include "settings/TvkIniFile.h"
#include "settings/internal/Directories.h"
#include "settings/internal/SuppliesKey.h"
#include "system/internal/DetachedProcess.h"
#include "system/internal/RegistryValue.h"
#include "system/internal/Tables.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string_view>

namespace
{
/// What is recorded of a visit; 0 for pages whose visits nobody counts.
constexpr unsigned short NotRecorded = 0;

/// One kind of link.
struct LinkKind
{
    const char* subUrlKey;
    const char* overrideKey;
    unsigned short activity;
};

// In the order in which a link's name is looked for: the first kind of that name wins.
constexpr auto LinkKinds = std::to_array<LinkKind>({
    {"IDO_SPECIALOFFER_SUBURL", "IDO_SPECIALOFFER_URL_OVERRIDE", 0x6005},
    {"IDO_SUPPORT_SUBURL", "IDO_SUPPORT_URL_OVERRIDE", 0x6002},
    {"IDO_SOFTWARE_SUBURL", "IDO_SOFTWARE_URL_OVERRIDE", 0x6004},
    {"IDO_REGISTRATION_SUBURL", "IDO_REGISTRATION_URL_OVERRIDE", 0x6003},
    {"IDO_SUPPLIES_SUBURL", "IDO_SUPPLIES_URL_OVERRIDE", 0x6001},
    {"IDO_MORECONTACT_SUBURL", "IDO_MORECONTACT_URL_OVERRIDE", 0x6006},
    {"IDO_HOMEPAGE_SUBURL", "IDO_HOMEPAGE_URL_OVERRIDE", 0x6000},
    {"IDO_REWARD_SUBURL", "IDO_REWARD_URL_OVERRIDE", 0x6017},
    {"IDO_SKIN_SUBURL", "IDO_SKIN_URL_OVERRIDE", 0x6018},
    {"IDO_RESELLER_SUBURL", "IDO_RESELLER_URL_OVERRIDE", 0x6019},
    {"IDO_CONTACTTECH_SUBURL", "IDO_CONTACTTECH_URL_OVERRIDE", 0x6007},
    {"IDO_PRIVACY_SUBURL", "IDO_PRIVACY_URL_OVERRIDE", NotRecorded},
    {"IDO_TORVANESMB_SUBURL", "IDO_TORVANESMB_URL_OVERRIDE", 0x6008},
    {"IDO_WEBTUTORIAL_SUBURL", "IDO_WEBTUTORIAL_URL_OVERRIDE", 0x6009},
    {"IDO_GENUINE_SUBURL", "IDO_GENUINE_URL_OVERRIDE", NotRecorded},
});

// The order in which visits are recorded, as activities. It matters when two kinds share a name: both are recorded.
constexpr auto RecordedActivities = std::to_array<unsigned short>(
    {0x6000, 0x6001, 0x6002, 0x6003, 0x6004, 0x6005, 0x6006, 0x6007, 0x6017, 0x6018, 0x6019, 0x6008, 0x6009});

constexpr auto KindOf(unsigned short activity)
{
    return std::find_if(LinkKinds.begin(), LinkKinds.end(),
                        [activity](const LinkKind& kind) { return kind.activity == activity; });
}

static_assert(LinkKinds.size() == 15);
static_assert(tvk::AreUnique(LinkKinds, [](const LinkKind& kind) { return std::string_view(kind.subUrlKey); }));
static_assert(std::count_if(LinkKinds.begin(), LinkKinds.end(),
                            [](const LinkKind& kind)
                            { return kind.activity != NotRecorded; }) == std::ssize(RecordedActivities));
static_assert(tvk::AreUnique(RecordedActivities, std::identity{}));
static_assert(std::all_of(RecordedActivities.begin(), RecordedActivities.end(),
                          [](unsigned short activity) { return KindOf(activity) != LinkKinds.end(); }));

/// How the maker's site names a cartridge.
struct CartridgeCode
{
    int identity;
    const char* code;
};
constexpr char NoCartridgeCode[] = "00";

constexpr auto FirstSlotCodes = std::to_array<CartridgeCode>({
    {80, "50"},
    {81, "51"},
    {82, "52"},
    {95, "50"}, // generic: sold as the standard one
    {128, "90"},
    {129, "90"},
    {130, "90"},
    {143, "90"},
});
constexpr auto SecondSlotCodes = std::to_array<CartridgeCode>({
    {48, "30"},
    {49, "31"},
    {50, "32"},
    {63, "30"},
    {112, "70"},
    {113, "71"},
    {114, "72"},
    {127, "70"},
});

static_assert(tvk::AreUnique(FirstSlotCodes, &CartridgeCode::identity));
static_assert(tvk::AreUnique(SecondSlotCodes, &CartridgeCode::identity));

template <std::size_t N>
const char* CodeOf(const std::array<CartridgeCode, N>& codes, int identity)
{
    const auto found = std::find_if(codes.begin(), codes.end(),
                                    [identity](const CartridgeCode& row) { return row.identity == identity; });
    return found == codes.end() ? NoCartridgeCode : found->code;
}

/// The printer's mark for a level that it cannot tell: the maker's format then names no cartridge either.
constexpr int LevelNotKnown = -101;

const char* CodeWithLevel(const char* code, int level)
{
    return level == LevelNotKnown ? NoCartridgeCode : code;
}

/// One level for a cartridge of three inks: the lowest, except that a second or third value of 101 or more, the
/// printer's mark for something else than a level, takes the place of what came before it. The order of the values
/// counts.
constexpr int FoldLevels(int first, int second, int third)
{
    int level = first;
    for (const int next : {second, third})
    {
        if (next < level || next >= 101)
            level = next;
    }
    return level;
}
static_assert(FoldLevels(40, 30, 120) == 120 && FoldLevels(40, 30, 20) == 20 && FoldLevels(40, 120, 30) == 30);

int FirstLevel(const INKINFO& ink)
{
    return FoldLevels(ink.InkPercent2, ink.InkPercent3, ink.InkPercent4);
}

/// The setting with the code of the Windows version. What is unknown counts as one of the 9x family.
const char* WindowsCodeKey(CRegistry::OSVersion version)
{
    switch (version)
    {
    case CRegistry::OS_WINNT4:
        return "IDO_URL_OSNT4_CODE";
    case CRegistry::OS_WIN2000:
        return "IDO_URL_OSWIN2000_CODE";
    case CRegistry::OS_WINXP:
        return "IDO_URL_OSWINXP_CODE";
    default:
        return "IDO_URL_OS9x_CODE";
    }
}

CString Decimal(int number)
{
    CString text;
    text.Format("%d", number);
    return text;
}

constexpr tvk::ConsoleSessionTexts BrowserTexts = {
    "CGUIUrlLink::GotoURLManually()...Launching URL through CreateProcessAsUser",
    "CGUIUrlLink:GetSystemDirectory() failed.",
    "CGUIUrlLink - LoadLibrary()for UserEnv.dll failed.",
    "CGUIUrlLink - LoadLibrary()for wtsapi32.dll failed.",
    "CGUIUrlLink - LoadLibrary()for kernel32.dll failed. Sysdir=",
    "CGUIUrlLink - GetProcAddress(WTSGetActiveConsoleSessionId) failed.",
    "CGUIUrlLink - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)",
    "CGUIUrlLink:: Calling CreateEnvironmentBlock() successful",
    "CGUIUrlLink:: Calling CreateEnvironmentBlock() failed",
    "CGUIUrlLink - CreateEnvironmentBlock failed",
    "CGUIUrlLink - CreateProcessAsUserA failed",
};

/// Windows versions whose shell opens addresses.
constexpr bool IsWin9x(CRegistry::OSVersion version)
{
    return version >= CRegistry::OS_WIN32S && version <= CRegistry::OS_WINME;
}

/// The user's country and language as addresses give them.
struct UserLocale
{
    char country[COUNTRYLANGUAGE_LOCALE_SIZE];
    char languageName[COUNTRYLANGUAGE_NAME_SIZE];
    int language;

    UserLocale() : language(static_cast<int>(Get32CountryLanguage(country, languageName))) {}
};
} // namespace

IMPLEMENT_DYNAMIC(CGUIUrlLink, CGUILink)

CGUIUrlLink::CGUIUrlLink() : m_szPrinterName(), m_bReadIniURL(0), m_pInkInfo(nullptr)
{
    constexpr COLORREF blue = 0xFF0000;
    SetLinkTextColor(blue);
    SetLinkHoverColor(blue);
    SetTextUnderline();
}

CGUIUrlLink::~CGUIUrlLink() = default;

void CGUIUrlLink::GetURL(CString subUrl)
{
    for (const LinkKind& kind : LinkKinds)
    {
        if (CompareAndTranlateURL(kind.subUrlKey, kind.overrideKey, subUrl))
            return;
    }
}

int CGUIUrlLink::CompareAndTranlateURL(CString subUrlKey, CString overrideKey, CString subUrl)
{
    if (!m_Product.CompareSetting(subUrlKey, subUrl))
        return 0;
    TranslateURL(subUrl, overrideKey);
    return 1;
}

void CGUIUrlLink::TranslateURL(CString subUrl, CString overrideKey)
{
    if (m_Product.CompareSetting(overrideKey, "0"))
        ConstructURL(subUrl);
    else
        m_strURL = Setting(overrideKey);
}

void CGUIUrlLink::ConstructURL(CString subUrl)
{
    // "0" does select the plain address here, although elsewhere it means "not overridden".
    if (m_Product.CompareSetting("IDO_OEM_URL_OVERRIDE", "0"))
        ConstructOEMURL(subUrl);
    else if (!m_Product.CompareSetting("IDO_TORVANEURL", OEM_ACCESSORIES_ADDRESS))
        ConstructStandardURL(subUrl);
    else if (!CheckInstitutionalSetting())
        ConstructAlternateURL(subUrl);
}

void CGUIUrlLink::ConstructOEMURL(CString subUrl)
{
    m_strURL = Setting("IDO_TORVANEURL") + subUrl;
    m_Spy.OutputData("CGUIUrlLink::ConstructOEMURL");
    m_Spy.OutputData(m_strURL);
}

void CGUIUrlLink::ConstructStandardURL(CString subUrl)
{
    const UserLocale locale;
    m_strURL = Setting("IDO_TORVANEURL");
    AppendSetting("IDO_FUNC_URLPARAM");
    m_strURL += subUrl;
    AppendSetting("IDO_LANG_URLPARAM");
    m_strURL += Decimal(locale.language);
    AppendSetting("IDO_PRTR_URLPARAM");
    AppendSetting("IDO_URL_PRINTER_CODE");
    AppendSetting("IDO_CTRY_URLPARAM");
    m_strURL += locale.country;
    AppendSetting("IDO_OS_URLPARAM");
    AppendSetting(WindowsCodeKey(m_Registry.GetOSVer()));
    AppendSetting("IDO_SRC_URLPARAM");
    AppendSetting("IDO_URL_RZB_SOURCEVAR");
    if (m_bReadIniURL)
        AppendPartner();
    if (m_Product.CompareSetting("IDO_CARTRIDGEINFO_WEBLINKURL", 1ul) &&
        m_Product.CompareSetting("IDO_SUPPLIES_SUBURL", subUrl) && m_pInkInfo)
    {
        const int first = FirstLevel(*m_pInkInfo);
        AppendCartridge("IDO_C1_URLPARAM", CodeWithLevel(CodeOf(FirstSlotCodes, m_pInkInfo->iLogCartID1), first),
                        "IDO_L1_URLPARAM", first);
        if (!m_Product.CompareSetting("IDO_INKSTYLE", 3ul))
        {
            const int second = SecondLevel();
            AppendCartridge("IDO_C2_URLPARAM", CodeWithLevel(CodeOf(SecondSlotCodes, m_pInkInfo->iLogCartID2), second),
                            "IDO_L2_URLPARAM", second);
        }
    }
    m_Spy.OutputData("CGUIUrlLink::ConstructStandardURL");
    m_Spy.OutputData(m_strURL);
}

void CGUIUrlLink::ConstructAlternateURL(CString subUrl)
{
    const UserLocale locale; // the store has no parameter for the language
    m_strURL = Setting("IDO_TORVANEURL");
    AppendSetting("IDO_CTRY_URLPARAM");
    m_strURL += locale.country;
    const CString tag = GetServiceTag();
    m_strURL += "&ST=" + (tag.IsEmpty() ? CString("00000") : tag);
    AppendSetting("IDO_PRTR_URLPARAM");
    AppendSetting("IDO_URL_PRINTER_CODE");
    if (m_Product.CompareSetting("IDO_SUPPLIES_SUBURL", subUrl) && m_pInkInfo)
    {
        // The store takes both cartridges of every model, and names them whatever their levels.
        AppendCartridge("IDO_C1_URLPARAM", CodeOf(FirstSlotCodes, m_pInkInfo->iLogCartID1), "IDO_L1_URLPARAM",
                        FirstLevel(*m_pInkInfo));
        AppendCartridge("IDO_C2_URLPARAM", CodeOf(SecondSlotCodes, m_pInkInfo->iLogCartID2), "IDO_L2_URLPARAM",
                        SecondLevel());
    }
    m_Spy.OutputData("CGUIUrlLink::ConstructAlternateURL");
    m_Spy.OutputData(m_strURL);
}

int CGUIUrlLink::CheckInstitutionalSetting()
{
    int replaced = 0;
    const CString keyPath = tvk::SuppliesKeyPath(m_Product);
    if (ReadSuppliesValue(keyPath, "IDO_KEY_NAME_INFORMATION_ONLY", "No") == "Yes")
    {
        const CString file = ReadSuppliesValue(keyPath, "IDO_KEY_NAME_ORDER_INFORMATION_FILE", "");
        if (!file.IsEmpty())
        {
            m_strURL = file;
            replaced = 1;
        }
    }
    m_Spy.OutputData("CGUIUrlLink::CheckInstitutionalSetting (return)");
    m_Spy.OutputData(replaced);
    return replaced;
}

void CGUIUrlLink::WebContactHistory(CString subUrl)
{
    ActivityTracker tracker;
    for (const unsigned short activity : RecordedActivities)
    {
        if (m_Product.CompareSetting(KindOf(activity)->subUrlKey, subUrl))
            tracker.WriteData(activity, m_szPrinterName);
    }
}

void CGUIUrlLink::FollowLink(CString subUrl, int useShell)
{
    OpenLink(subUrl, useShell);
}

void CGUIUrlLink::FollowLink(CString subUrl, INKINFO* ink, int useShell)
{
    StoreInkInfo(ink);
    NoticeRetailerLink(subUrl); // and once more below: the trace shows it twice
    FollowLink(subUrl, useShell);
}

void CGUIUrlLink::FollowLink(CString subUrl, const char* printerName, int useShell)
{
    lstrcpynA(m_szPrinterName, printerName ? printerName : "", sizeof m_szPrinterName);
    OpenLink(subUrl, useShell);
    WebContactHistory(subUrl);
}

void CGUIUrlLink::FollowLink(CString subUrl, INKINFO* ink, const char* printerName, int useShell)
{
    StoreInkInfo(ink);
    FollowLink(subUrl, printerName, useShell);
}

HINSTANCE CGUIUrlLink::GotoURL(const char* address, int show)
{
    m_Spy.OutputData("CGUIUrlLink::GotoURL()");
    m_Spy.OutputData(CString(address));
    m_Spy.OutputData(show);
    if (!IsWin9x(m_Registry.GetOSVer()))
        return GotoURLManually(address, show);
    const HINSTANCE opened = ::ShellExecuteA(nullptr, "open", address, nullptr, nullptr, show);
    const INT_PTR result = reinterpret_cast<INT_PTR>(opened);
    if (result > tvk::LastShellError)
        return opened;
    m_Spy.OutputData("ShellExecute() Failed...return code");
    m_Spy.OutputData(static_cast<int>(result));
    return GotoURLManually(address, show);
}

HINSTANCE CGUIUrlLink::GotoURLManually(const char* address, int show)
{
    m_Spy.OutputData("CGUIUrlLink::GotoURLManually()");
    m_Spy.OutputData(CString(address));
    m_Spy.OutputData(show);
    const CString commandLine = tvk::BrowserCommandLine(address);
    if (commandLine.IsEmpty())
        return nullptr;
    m_Spy.OutputData("CGUIUrlLink::GotoURLManually()...CreateProcess()");
    m_Spy.OutputData(commandLine);

    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    tvk::ConsoleSessionLaunch session;
    if (tvk::HasConsoleSession(m_Registry.GetOSVer()))
        session = tvk::LaunchInConsoleSession(commandLine, startup, BrowserTexts, m_Spy);
    // Of a program started by another token than the console user's, the error saved is all that is told.
    INT_PTR result = session.result ? *session.result : static_cast<INT_PTR>(session.savedError);
    if (!session.done)
    {
        result = tvk::StartDetached(commandLine, startup);
        // Also where no session was tried: support people look for this line.
        m_Spy.OutputData("CGUIUrlLink - CreateProcessAsUserA failed, so launch URL through CreateProcess()");
    }
    m_Spy.OutputData("CGUIUrlLink::GotoURLManually()...CreateProcess return code");
    m_Spy.OutputData(static_cast<int>(result));
    if (!result)
    {
        m_Spy.OutputData("CreateProcess()...GetLastError()");
        m_Spy.OutputData(session.savedError);
    }
    return reinterpret_cast<HINSTANCE>(result);
}

void CGUIUrlLink::ReportError(int error)
{
    const CString text = tvk::ShellErrorText(error);
    if (m_Product.CompareSetting("IDO_DEBUGMSG", 1ul))
        AfxMessageBox(text, MB_ICONEXCLAMATION);
    m_Spy.OutputData("CGUIUrlLink::ReportError()");
    m_Spy.OutputData(text);
}

long CGUIUrlLink::GetRegKey(HKEY root, const char* keyPath, char* output)
{
    return tvk::ReadDefaultText(root, keyPath, output);
}

CString CGUIUrlLink::Setting(const char* key)
{
    return m_Product.GetSetting(key, m_strSetting);
}

void CGUIUrlLink::AppendSetting(const char* key)
{
    m_strURL += Setting(key);
}

/// The code of the retailer that the printer was sold by, when its file names one.
void CGUIUrlLink::AppendPartner()
{
    CString file = tvk::BelowSystemDirectory("\\", 256);
    if (file.IsEmpty())
        return;
    file += Setting("IDO_RZB_EXECUTABLENAME_PATH");
    file += Setting("IDO_RETAILERSPECIFIC_INIFILE_NAME");
    const CString key = Setting("IDO_PARTNER_KEY_NAME");
    const CString section = Setting("IDO_RETAILER_SPECIFIC_SECTION_NAME");
    const CString partner = TvkIniFile().ReadINI(file, key, section);
    // The word itself, whatever the product's default text is.
    if (partner.IsEmpty() || partner == "Default")
        return;
    AppendSetting("IDO_PARTNER_URLPARAM");
    m_strURL += partner;
}

void CGUIUrlLink::AppendCartridge(const char* codeKey, const char* code, const char* levelKey, int level)
{
    AppendSetting(codeKey);
    m_strURL += code;
    AppendSetting(levelKey);
    m_strURL += Decimal(level);
}

/// The level of the second cartridge: the lowest of a photo cartridge's three inks, else black.
int CGUIUrlLink::SecondLevel()
{
    if (m_InkDisplay.IsItKCM(CGUIInkDisplay::Logical, CGUIInkDisplay::Second))
        return FoldLevels(m_pInkInfo->InkPercent5, m_pInkInfo->InkPercent6, m_pInkInfo->InkPercent7);
    return m_pInkInfo->InkPercent1;
}

/// A text of the model's supplies key, or `missing` when there is none.
CString CGUIUrlLink::ReadSuppliesValue(const CString& keyPath, const char* nameKey, const char* missing)
{
    const CString name = Setting(nameKey);
    CString text = missing;
    tvk::Succeeds(
        [&]
        {
            // All access, although it is only read: an ordinary user who may not write here does not get these values.
            if (m_Registry.Open(HKEY_LOCAL_MACHINE, keyPath, 0, KEY_ALL_ACCESS))
                tvk::ReadText(m_Registry, name, text);
        });
    m_Registry.Close();
    return text;
}

CString CGUIUrlLink::GetServiceTag()
{
    const CString tag = ReadSuppliesValue(tvk::SuppliesKeyPath(m_Product), "IDO_KEY_NAME_SERVICETAG", "");
    m_Spy.OutputData("service tag processing");
    m_Spy.OutputData(tag);
    return tag;
}

/// From the first supplies or reseller link on, addresses name the retailer; later links of other kinds do, too.
void CGUIUrlLink::NoticeRetailerLink(const CString& subUrl)
{
    if (m_Product.CompareSetting("IDO_SUPPLIES_SUBURL", subUrl) ||
        m_Product.CompareSetting("IDO_RESELLER_SUBURL", subUrl))
    {
        m_bReadIniURL = 1;
        m_Spy.OutputData("FollowLink - m_bReadIniURL is true");
    }
}

void CGUIUrlLink::StoreInkInfo(INKINFO* ink)
{
    m_pInkInfo = ink;
    m_InkDisplay.SetInkInfo(ink, nullptr);
}

void CGUIUrlLink::OpenLink(const CString& subUrl, int useShell)
{
    NoticeRetailerLink(subUrl);
    GetURL(subUrl);
    m_Spy.OutputData("CGUIUrlLink::FollowLink()");
    m_Spy.OutputData(subUrl);
    if (useShell)
        GotoURL(m_strURL, SW_SHOW);
    else
        GotoURLManually(m_strURL, SW_SHOW);
}
