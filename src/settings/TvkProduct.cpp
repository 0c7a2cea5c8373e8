#include "settings/TvkProduct.h"
#include "diag/CSpy.h"
#include "settings/SystemConfigDLL.h"
#include "settings/TvkIniFile.h"
#include "settings/internal/Directories.h"
#include "settings/internal/DriverLanguage.h"
#include "settings/internal/JoinedText.h"
#include "settings/internal/RawResource.h"
#include "settings/internal/ResourceHandleScope.h"
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <string_view>

HMODULE TvkProduct::m_UtilDLLInstance = nullptr;
CString TvkProduct::m_strProductPrefix;
const CString TvkProduct::m_strHebrew(tvk::Hebrew);
const CString TvkProduct::m_strArabic(tvk::Arabic);

namespace
{
constexpr int ProductPrefixLength = 4;
constexpr char MissingText[] = "ERROR";
constexpr char Arrow[] = "---->";

/// A cartridge setting that installation may have preloaded, and the INI key that tells with what.
struct PreloadedCartridge
{
    const char* key;
    const char* iniKeySetting;
};
constexpr std::array PreloadedCartridges{
    PreloadedCartridge{"IDO_DEFAULT_COLORCART", "IDO_PRELOAD_KEY_DEFINEINSTALLEDCART1"},
    PreloadedCartridge{"IDO_DEFAULT_BLACKCART", "IDO_PRELOAD_KEY_DEFINEINSTALLEDCART2"},
};

/// A token in texts, and the key whose configuration item replaces it.
struct Token
{
    const char* token;
    const char* key;
};
constexpr std::array Tokens{
    Token{"~MODEL~", "IDO_MODEL"},
    Token{"~MFG~", "IDO_MFG"},
};

CString SettingsLibraryName()
{
    return TvkProduct::GetProductPrefix() + "jswr.dll";
}

void Trace(const CString& text)
{
    CSpy().OutputData(text);
}

CString Decimal(unsigned long number)
{
    char digits[10];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return CString(digits, static_cast<int>(end - digits));
}
} // namespace

TvkProduct::TvkProduct() : TvkProduct(SettingsLibraryName(), CString(), false)
{
    m_strFallbackDLL = m_strPrimaryDLL;
}

TvkProduct::TvkProduct(CString libraryName) : TvkProduct(libraryName, SettingsLibraryName(), true) {}

TvkProduct::TvkProduct(CString libraryName, CString fallbackLibraryName)
    : TvkProduct(libraryName, fallbackLibraryName, true)
{
}

TvkProduct::TvkProduct(CString libraryName, CString fallbackLibraryName, bool fallbackAllowed)
    : m_hSettingsDLL(nullptr), m_hSavedResource(nullptr), m_bFreeSettingsDLL(FALSE), m_pSettingData(nullptr),
      m_dwConfigItem(0), m_bPreloaded(FALSE), m_bFromConfigDLL(FALSE), m_strPrimaryDLL(libraryName),
      m_strFallbackDLL(fallbackLibraryName), m_bFallbackAllowed(fallbackAllowed), m_bUseFallback(false),
      m_dwSettingSize(0), m_ahLoadedDLLs(), m_bConfigDLLAllowed(true)
{
}

TvkProduct::~TvkProduct()
{
    // Only the module resolved last: one that an earlier look-up loaded stays resident for the look-ups to come.
    if (m_bFreeSettingsDLL && HasLoaded(m_hSettingsDLL))
        FreeLibrary(m_hSettingsDLL);
    if (m_hSavedResource)
        AfxSetResourceHandle(m_hSavedResource);
}

CString TvkProduct::GetSetting(const char* key, CString& value)
{
    const CString askedKey(key); // a copy: the caller's key may lie in the text that is emptied
    value.Empty();
    if (!AskConfigDLLFirst(askedKey, value))
        value = LoadResourceSetting() ? SettingText() : CString(MissingText);
    value = TranslateResourceValue(value);
    TraceSetting(askedKey, value);
    return value;
}

unsigned long TvkProduct::GetSetting(const char* key, unsigned long& value)
{
    const CString askedKey(key);
    value = 0;
    bool found = AskConfigDLLFirst(askedKey, value);
    if (!found && LoadResourceSetting())
    {
        value = ConvertSetting();
        found = true;
    }
    TraceSetting(askedKey, found ? Decimal(value) : CString());
    return value;
}

/// The beginning of every look-up: rewrites the key and asks the configuration library.
template <class Value>
bool TvkProduct::AskConfigDLLFirst(const CString& key, Value& value)
{
    m_strKey = key;
    TranslateSetting();
    if (PreloadSetting())
        m_bPreloaded = TRUE;
    m_bFromConfigDLL = UseSystemConfigDLL(value);
    // By design a preloaded cartridge is not named as the source: its value, too, comes from one of the libraries.
    m_bPreloaded = FALSE;
    return m_bFromConfigDLL;
}

int TvkProduct::CompareSetting(const char* key, CString expected)
{
    CString value;
    return GetSetting(key, value) == expected ? 1 : 0;
}

int TvkProduct::CompareSetting(const char* key, unsigned long expected)
{
    unsigned long value = 0;
    return GetSetting(key, value) == expected ? 1 : 0;
}

int TvkProduct::IsDriverLanguageRTL()
{
    const CString fallback = m_strFallbackDLL;
    const bool useFallback = m_bUseFallback;
    m_strFallbackDLL = SettingsLibraryName();
    m_bUseFallback = true;
    LoadSettingsDLL();
    m_strFallbackDLL = fallback;
    m_bUseFallback = useFallback;

    const tvk::ResourceHandleScope scope(m_hSettingsDLL);
    const CString language = tvk::DriverLanguageName(m_hSettingsDLL);
    return language.CompareNoCase(m_strHebrew) == 0 || language.CompareNoCase(m_strArabic) == 0 ? 1 : 0;
}

CString TvkProduct::GetProductPrefix()
{
    if (m_strProductPrefix.IsEmpty())
        m_strProductPrefix = ExtractProductPrefixFromHINST(m_UtilDLLInstance);
    return m_strProductPrefix;
}

void TvkProduct::SetUtilDLLInstance(HINSTANCE instance)
{
    m_UtilDLLInstance = instance;
}

CString TvkProduct::ExtractProductPrefixFromHINST(HINSTANCE instance)
{
    char path[256] = "";
    const DWORD length = GetModuleFileNameA(instance, path, sizeof path);
    const CString file(path, static_cast<int>(std::min<DWORD>(length, sizeof path - 1)));
    return file.Mid(file.ReverseFind('\\') + 1).Left(ProductPrefixLength);
}

void TvkProduct::LoadSettingsDLL()
{
    m_hSettingsDLL = nullptr;
    m_hSavedResource = AfxGetResourceHandle();
    m_strCurrentDLL = m_bUseFallback ? m_strFallbackDLL : m_strPrimaryDLL;
    m_hSettingsDLL = GetModuleHandleA(m_strCurrentDLL);
    if (m_hSettingsDLL)
        return;

    const CString directory = tvk::LoadedModuleDirectory(GetProductPrefix() + "util.dll");
    m_hSettingsDLL = tvk::LoadLibraryFrom(directory, m_strCurrentDLL);
    if (m_hSettingsDLL)
    {
        RememberLoadedDLL();
        return;
    }
    const unsigned long error = ::GetLastError();
    CSpy spy;
    spy.OutputData("ERROR! LoadLibrary failed");
    spy.OutputData(directory + m_strCurrentDLL);
    spy.OutputData("GetLastError:");
    spy.OutputData(error);
}

/// Notes that this object loaded the module: the look-ups after the first find it resident and must still know.
void TvkProduct::RememberLoadedDLL()
{
    m_bFreeSettingsDLL = TRUE;
    if (HasLoaded(m_hSettingsDLL))
        return;
    const auto unused = std::find(std::begin(m_ahLoadedDLLs), std::end(m_ahLoadedDLLs), HMODULE());
    if (unused != std::end(m_ahLoadedDLLs))
        *unused = m_hSettingsDLL;
}

bool TvkProduct::HasLoaded(HMODULE module) const
{
    return module &&
           std::find(std::begin(m_ahLoadedDLLs), std::end(m_ahLoadedDLLs), module) != std::end(m_ahLoadedDLLs);
}

bool TvkProduct::LoadResourceSetting()
{
    LoadSetting();
    if (m_pSettingData)
        return true;
    if (!m_bFallbackAllowed)
        return false;
    m_bUseFallback = true;
    LoadSetting();
    m_bUseFallback = false;
    return m_pSettingData != nullptr;
}

void TvkProduct::LoadSetting()
{
    LoadSettingsDLL();
    const tvk::ResourceHandleScope scope(m_hSettingsDLL);
    // Without a settings library this asks the host program's own resources.
    const tvk::RawResource found = tvk::FindRawResource(m_hSettingsDLL, m_strKey);
    m_pSettingData = found.data;
    m_dwSettingSize = found.size;
}

unsigned long TvkProduct::ConvertSetting()
{
    return tvk::RawResource{m_pSettingData, m_dwSettingSize}.Number();
}

CString TvkProduct::SettingText() const
{
    return tvk::RawResource{m_pSettingData, m_dwSettingSize}.Text();
}

void TvkProduct::TranslateSetting()
{
    struct Translation
    {
        const char* key;
        void (TvkProduct::*rewrite)();
    };
    static constexpr std::array translations{
        Translation{"IDO_DEBUGMSG", &TvkProduct::TranslateDebugMsg},
        Translation{"IDO_RZB_TECHNICALCONTACT_HELPFILE", &TvkProduct::TranslateContactFileName},
        Translation{"IDO_RZB_EXECUTABLENAME_PATH", &TvkProduct::TranslateExecutableFileNamePath},
    };
    for (const Translation& translation : translations)
    {
        if (m_strKey == translation.key)
        {
            (this->*translation.rewrite)();
            return;
        }
    }
}

/// The debug messages are a feature of the drivers before their release, whose versions begin with 0.
void TvkProduct::TranslateDebugMsg()
{
    m_strKey = "IDO_DRIVER_PRODUCTVERSION_STR";
    bool beforeRelease = false;
    if (LoadResourceSetting())
    {
        const CString version = SettingText();
        beforeRelease = !version.IsEmpty() && version[0] == '0';
    }
    else
    {
        Trace("TvkProduct::TranslateDebugMsg() --> Version not found");
    }
    m_strKey = beforeRelease ? "IDO_FEATURE_ON" : "IDO_FEATURE_OFF";
}

void TvkProduct::TranslateContactFileName()
{
    switch (m_Registry.GetOSPlatform())
    {
    case CRegistry::OS_PLATFORM_WIN9X:
        m_strKey = "IDO_RZB_TECHNICALCONTACT_HELPFILE9X";
        break;
    case CRegistry::OS_PLATFORM_NT:
        m_strKey = "IDO_RZB_TECHNICALCONTACT_HELPFILENT";
        break;
    default:
        m_strKey = "IDO_EMPTY";
        break;
    }
}

void TvkProduct::TranslateExecutableFileNamePath()
{
    switch (m_Registry.GetOSPlatform())
    {
    case CRegistry::OS_PLATFORM_WIN9X:
        m_strKey = "IDO_RZB_EXECUTABLENAME_9X_PATH";
        break;
    case CRegistry::OS_PLATFORM_NT:
        m_strKey = m_Registry.GetOSVer() == CRegistry::OS_WINNT4 ? "IDO_RZB_EXECUTABLENAME_NT_PATH"
                                                                 : "IDO_RZB_EXECUTABLENAME_WIN2000_PATH";
        break;
    default:
        m_strKey = "IDO_RZB_EXECUTABLENAME_WIN2000_PATH";
        break;
    }
}

BOOL TvkProduct::PreloadSetting()
{
    const auto isAsked = [this](const PreloadedCartridge& cartridge) { return m_strKey == cartridge.key; };
    return std::any_of(PreloadedCartridges.begin(), PreloadedCartridges.end(), isAsked) && TranslateDefaultCartID();
}

/// What installation wrote down about the cartridge of the key: a hexadecimal identity, or a text that is none.
CString TvkProduct::GetPreloadCartID()
{
    TvkProduct product;
    CString file, section, iniKey;
    product.GetSetting("IDO_PLC_FILENAME", file);
    product.GetSetting("IDO_PLC_SECTION_NAME", section);
    const PreloadedCartridge& cartridge = PreloadedCartridges[m_strKey == PreloadedCartridges[0].key ? 0 : 1];
    product.GetSetting(cartridge.iniKeySetting, iniKey);
    return TvkIniFile().ReadINI(tvk::BelowSystemDirectory("\\" + file), iniKey, section);
}

BOOL TvkProduct::TranslateDefaultCartID()
{
    const CString cartridge = GetPreloadCartID();
    if (cartridge.IsEmpty() || cartridge == "Default" || cartridge == "0")
        return FALSE;
    const char code = static_cast<char>(std::strtoul(cartridge, nullptr, 16) & 0xFF);
    if (!code) // no number, or one that leaves nothing to name a key by
        return FALSE;
    // Settings libraries name their cartridge resources by this one character.
    m_strKey = CString(code, 1);
    return TRUE;
}

bool TvkProduct::CheckForOverride()
{
    const CString key = m_strKey;
    m_strKey = tvk::Joined({tvk::View(key), "_OVERRIDE"});
    const bool found = LoadResourceSetting();
    if (found)
    {
        m_dwConfigItem = ConvertSetting();
        Trace(tvk::Joined({"Override", Arrow, tvk::View(m_strKey), Arrow, tvk::View(Decimal(m_dwConfigItem))}));
    }
    m_strKey = key;
    return found;
}

bool TvkProduct::GetConfigDLLFileName()
{
    const CString key = m_strKey;
    m_strKey = "IDO_CONFIG_DLL";
    const bool found = LoadResourceSetting();
    if (found)
        m_strConfigDLL = SettingText();
    else
        Trace("!Warning! IDO_CONFIG_DLL => Setting not found");
    m_strKey = key;
    return found;
}

bool TvkProduct::FindConfigItem()
{
    return m_bConfigDLLAllowed && CheckForOverride() && GetConfigDLLFileName();
}

bool TvkProduct::UseSystemConfigDLL(CString& value)
{
    if (!FindConfigItem())
        return false;
    SystemConfigDLL library;
    library.Initialize(m_strConfigDLL);
    CString item;
    // The returned text, not the item: a broken protocol answers the character 0xFF, which counts as a value.
    const CString answer = library.GetItemData(m_dwConfigItem, item);
    if (answer == "ERROR_SYSCONFIGDLL_FAILURE")
    {
        Trace("GetItemData returned ERROR_SYSCONFIGDLL_FAILURE");
        return false;
    }
    value = answer;
    return true;
}

bool TvkProduct::UseSystemConfigDLL(unsigned long& value)
{
    if (!FindConfigItem())
        return false;
    SystemConfigDLL library;
    library.Initialize(m_strConfigDLL);
    unsigned long item = 0;
    const unsigned long answer = library.GetItemData(m_dwConfigItem, item);
    if (answer == 0xFFFFFFFF)
    {
        Trace("GetItemData returned ERROR_SYSCONFIGDLL_FAILURE");
        return false;
    }
    value = answer;
    return true;
}

/// The place where a product could translate numeric answers; today's configuration libraries need none.
unsigned long TvkProduct::TranslateConfigDLLReturnValue(unsigned long value)
{
    return value;
}

CString TvkProduct::TranslateResourceValue(CString value)
{
    if (value.Find('~') < 0) // as nearly always, and this answers it in no time
        return value;
    const CString key = m_strKey;
    for (const Token& token : Tokens)
    {
        if (value.Find(token.token) < 0)
            continue;
        m_strKey = token.key;
        value = TranslateResourceValue(value, token.token);
    }
    m_strKey = key;
    return value;
}

/// Replaces the first `token` by the configuration library's answer for the current key; without one it stays.
CString TvkProduct::TranslateResourceValue(CString value, CString token)
{
    const int at = value.Find(token);
    CString answer;
    if (at < 0 || !UseSystemConfigDLL(answer))
        return value;
    return value.Left(at) + answer + value.Mid(at + token.GetLength());
}

void TvkProduct::TraceSetting(const CString& key, const CString& value) const
{
    CSpy spy;
    if (!spy.m_bEnabled) // the commonest record: not put together for nobody
        return;
    const std::string_view source = m_bFromConfigDLL ? "CFG DLL"
                                    : m_bPreloaded   ? "Preload"
                                                     : tvk::View(m_strCurrentDLL);
    spy.OutputData(tvk::Joined({source, Arrow, tvk::View(key), Arrow, tvk::View(value)}));
}
