#include "locale/OEMTeleIni.h"
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include "locale/CSelectCountryDlg.h"
#include "locale/CountryLanguage.h"
#include "locale/internal/Languages.h"
#include "settings/internal/Directories.h"
#include "settings/internal/SuppliesKey.h"
#include "system/internal/ParentRect.h"
#include "system/internal/RegistryValue.h"
#include "system/internal/Tables.h"

namespace
{
constexpr UINT GenericSupportString = 10070;
constexpr char UnitedStates[] = "00000409";
constexpr LCID UnitedStatesId = 0x409;

// The order of the list: the countries by their English names.
// clang-format off
constexpr auto Countries = std::to_array<std::string_view>({
    "00000436", "0000041C", "00001401", "00002C0A", "00000C09", "00000C07", "00003C01", "0000042D", "00000423",
    "0000080C", "00000813", "00002809", "0000400A", "00000416", "00000402", "00001009", "00000C0C", "00002409",
    "00000403", "0000340A", "00000804", "00000C04", "00001404", "0000240A", "0000140A", "0000041A", "00000405",
    "00000406", "00001C0A", "0000300A", "00000C01", "0000440A", "00000425", "0000040B", "0000081D", "0000040C",
    "00000438", "00000407", "00000408", "0000100A", "0000480A", "0000040E", "0000040D", "0000040F", "00000421",
    "00000801", "00001809", "00000410", "00002009", "00000411", "00002C01", "00000412", "00000812", "00003401",
    "00000426", "00003001", "00001001", "00001407", "00000427", "0000140C", "00001007", "0000042F", "0000080A",
    "00001801", "00000413", "00001409", "00004C0A", "00000414", "00000814", "00002001", "0000180A", "00003C0A",
    "0000280A", "00000415", "00000816", "0000500A", "00004001", "00000418", "00000419", "00000401", "00000C1A",
    "0000081A", "00001004", "0000041B", "00000424", "00001C09", "0000040A", "00000C0A", "0000100C", "00000810",
    "00000807", "0000041D", "00002801", "00000404", "0000041E", "00002C09", "00001C01", "0000041F", "00000422",
    "00003801", "00000809", "00000409", "0000380A", "0000200A", "0000042A", "00002401",
});
// clang-format on

static_assert(Countries.size() == tvk::Languages.size());
static_assert(tvk::AreUnique(Countries, [](std::string_view locale) { return locale; }));
static_assert(std::all_of(Countries.begin(), Countries.end(), tvk::FindLanguage)); // with that, they are the same
static_assert(OEMTeleIni::MAX_ENTRIES > Countries.size());                         // my country comes on top
} // namespace

OEMTeleIni::OEMTeleIni() : m_nCount(0), m_hResDll(nullptr), m_hSavedResource(nullptr), m_bResDllLoaded(FALSE)
{
    m_strSuppliesPath = tvk::SuppliesKeyPath(m_Product);
    m_strMyLocaleName = ReadSetting("IDO_KEY_NAME_MYLOCALE");
    m_strIniFile = ReadSetting("IDO_PHONENUMBER_INIFILE_NAME");
    m_strSection = ReadSetting("IDO_PHONENUMBER_SECTION_NAME");
    m_strNoNumber = ReadSetting("IDO_DEFAULTSTRING");
    m_strDefaultNumber = ReadSetting("IDO_DEFAULT_PHONENUMBER_STRING");
    m_strNTPath = ReadSetting("IDO_WINNTPATH");
}

OEMTeleIni::~OEMTeleIni() = default;

int OEMTeleIni::GetPhoneNumber(CString locale, CString& number)
{
    number.Empty();
    constexpr int Replaced = 4;
    if (locale.GetLength() < Replaced)
        return 0;
    const CString key = "  0x" + locale.Mid(Replaced);
    number = m_IniFile.ReadINI(tvk::PrinterDriverDirectory(m_strNTPath) + m_strIniFile, key, m_strSection);
    return !number.IsEmpty() && number != m_strNoNumber;
}

CString OEMTeleIni::ReadMyLocaleKey(CString valueName)
{
    CString locale;
    tvk::Succeeds(
        [&]
        {
            if (m_Registry.Open(HKEY_LOCAL_MACHINE, m_strSuppliesPath, 0, KEY_ALL_ACCESS))
                tvk::ReadText(m_Registry, valueName, locale);
        });
    m_Registry.Close();
    return locale;
}

void OEMTeleIni::WriteMyLocaleKey(CString locale)
{
    tvk::Succeeds( // otherwise the country is asked for, or worked out, again
        [&]
        {
            unsigned long disposition = 0;
            m_Registry.Create(disposition, HKEY_LOCAL_MACHINE, m_strSuppliesPath, REG_OPTION_NON_VOLATILE,
                              KEY_ALL_ACCESS, nullptr);
            m_Registry.Write(m_strMyLocaleName, reinterpret_cast<const unsigned char*>(static_cast<LPCSTR>(locale)),
                             static_cast<unsigned long>(locale.GetLength()), REG_SZ);
        });
    m_Registry.Close();
}

void OEMTeleIni::GetPhoneNumberList()
{
    MakeList();
}

/// Tells whether my country has a number, and so comes first.
bool OEMTeleIni::MakeList()
{
    const CString myLocale = ResolveMyLocale();
    m_nCount = 0;
    const auto addIfServed = [this](const CString& locale)
    {
        CString number;
        if (GetPhoneNumber(locale, number))
            AddToList(locale, number);
    };
    addIfServed(myLocale);
    const bool isMineFirst = m_nCount > 0;
    for (const std::string_view locale : Countries)
        addIfServed(locale.data());
    return isMineFirst;
}

CString OEMTeleIni::GetDefaultPhoneNumber(CString& countryName)
{
    CString genericSupport, number;
    LoadResDll();
    genericSupport.LoadString(GenericSupportString);
    ReleaseResDll();
    CString myLocale = ResolveMyLocale();
    if (!GetPhoneNumber(myLocale, number))
    {
        myLocale = UnitedStates;
        WriteMyLocaleKey(myLocale);
        GetPhoneNumber(myLocale, number);
    }
    countryName = GetLocalizedCountryString(myLocale);
    return number.CompareNoCase(m_strDefaultNumber) == 0 ? genericSupport : number;
}

void OEMTeleIni::ExpandCombobox(CComboBox* combo)
{
    const int dropDownWidth = static_cast<int>(combo->SendMessage(CB_GETDROPPEDWIDTH));
    int widest = 0;
    CClientDC dc(combo);
    for (int i = 0; i < combo->GetCount(); ++i)
    {
        CString item;
        combo->GetLBText(i, item);
        SIZE extent = {};
        ::GetTextExtentPoint32A(dc.m_hDC, item, item.GetLength(), &extent);
        widest = std::max<int>(widest, extent.cx);
    }
    if (dropDownWidth >= widest)
        return;
    const CRect rect = tvk::RectInParent(combo->m_hWnd);
    // Half of the shortfall, on purpose: the list and the box around it meet in the middle.
    combo->MoveWindow(rect.left, rect.top, rect.Width() + (widest - dropDownWidth) / 2, rect.Height());
}

void OEMTeleIni::OnSelectCountryLink()
{
    LoadResDll();
    std::make_unique<CSelectCountryDlg>()->DoModal();
    ReleaseResDll();
}

CString OEMTeleIni::GetLocalizedCountryString(CString locale)
{
    const LCID id = tvk::FindLanguage(std::string_view(locale, static_cast<std::size_t>(locale.GetLength())))
                        ? std::strtoul(locale, nullptr, 16)
                        : UnitedStatesId;
    wchar_t name[520] = L"";
    return ::GetLocaleInfoW(id, LOCALE_SCOUNTRY, name, static_cast<int>(std::size(name))) ? CString(name) : CString();
}

void OEMTeleIni::LoadResDll()
{
    m_hSavedResource = AfxGetResourceHandle();
    if (const HMODULE resident = ::GetModuleHandleA(ReadSetting("IDO_JSW_RESDLL")))
    {
        AfxSetResourceHandle(resident);
        return;
    }
    const CString utilities = ReadSetting("IDO_UTIL_DLL");
    const CString library = ReadSetting("IDO_UTIL_RESDLL");
    // As many characters as the resource library's name has are cut off: the two names are equally long.
    const CString directory = tvk::LoadedModuleDirectory(utilities, library.GetLength(), 256);
    if (!m_hResDll)
    {
        m_hResDll = tvk::LoadLibraryFrom(directory, library);
        if (m_hResDll)
            m_bResDllLoaded = TRUE;
        else
            ::MessageBoxA(nullptr, directory + library, "ERROR", MB_OK);
    }
    AfxSetResourceHandle(m_hResDll);
}

void OEMTeleIni::ReleaseResDll()
{
    if (m_hSavedResource)
        AfxSetResourceHandle(m_hSavedResource);
    m_hSavedResource = nullptr;
    if (m_bResDllLoaded)
    {
        ::FreeLibrary(m_hResDll);
        m_hResDll = nullptr;
        m_bResDllLoaded = FALSE;
    }
}

void OEMTeleIni::AddToList(CString locale, CString number)
{
    CString display = GetLocalizedCountryString(locale);
    if (m_Product.CompareSetting("IDO_ATTACH_PHONE_NUMBER_OPTION", 1ul))
        display = number + " - " + display;
    const CString* const end = m_strDisplay + m_nCount;
    if (m_nCount == MAX_ENTRIES || std::find(static_cast<const CString*>(m_strDisplay), end, display) != end)
        return;
    m_strDisplay[m_nCount] = display;
    m_strLocale[m_nCount] = locale;
    ++m_nCount;
}

/// The remembered locale as it stands, or the system's, which is remembered then. A value that holds its own name is
/// one that an installer has only prepared.
CString OEMTeleIni::ResolveMyLocale()
{
    const CString remembered = ReadMyLocaleKey(m_strMyLocaleName);
    if (!remembered.IsEmpty() && remembered != m_strMyLocaleName)
        return remembered;
    char locale[COUNTRYLANGUAGE_LOCALE_SIZE];
    char language[COUNTRYLANGUAGE_NAME_SIZE];
    Get32CountryLanguage(locale, language);
    WriteMyLocaleKey(locale);
    return locale;
}

CString OEMTeleIni::ReadSetting(const char* key)
{
    return m_Product.GetSetting(key, m_strSetting);
}
