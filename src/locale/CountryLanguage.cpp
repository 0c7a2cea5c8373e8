// The suite's languages by locale, and the look-up of the current user's.
#include "locale/CountryLanguage.h"
#include <windows.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>
#include "locale/internal/Languages.h"
#include "system/internal/Handle.h"
#include "system/internal/Tables.h"

namespace
{
constexpr std::size_t LocaleDigits = COUNTRYLANGUAGE_LOCALE_SIZE - 1;

using tvk::FindLanguage;
using tvk::Language;
using tvk::Languages;

constexpr bool IsUpperHex(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
}

constexpr bool AreRowsWellFormed()
{
    return std::all_of(Languages.begin(), Languages.end(),
                       [](const Language& row)
                       {
                           return row.locale.size() == LocaleDigits &&
                                  std::all_of(row.locale.begin(), row.locale.end(), IsUpperHex) &&
                                  row.name.size() < COUNTRYLANGUAGE_NAME_SIZE && row.code <= 48 && row.code != 11;
                       });
}

constexpr bool HasEachCodeOneName()
{
    for (std::size_t i = 1; i < Languages.size(); ++i)
    {
        const bool sameCode = Languages[i].code == Languages[i - 1].code;
        if (Languages[i].code < Languages[i - 1].code || (sameCode && Languages[i].name != Languages[i - 1].name))
            return false;
    }
    return true;
}

// The suite falls back to French, not to English.
constexpr const Language& DefaultLanguage = *FindLanguage("0000040C");

static_assert(Languages.size() == 106);
static_assert(AreRowsWellFormed());
static_assert(tvk::AreUnique(Languages, &Language::locale));
static_assert(HasEachCodeOneName());
static_assert(DefaultLanguage.code == 1);

/// The text of the user's locale setting in `buffer`; empty when it cannot be read or is no text. Allocates
/// nothing: no exception may leave the exported functions.
std::string_view ReadUserLocale(std::array<char, 256>& buffer)
{
    tvk::RegistryKey key;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, "Control Panel\\International", 0, KEY_READ, key.Receive()) != ERROR_SUCCESS)
        return {};
    DWORD type = REG_NONE;
    DWORD size = static_cast<DWORD>(buffer.size() - 1);
    auto* bytes = reinterpret_cast<BYTE*>(buffer.data());
    if (RegQueryValueExA(key.Get(), "Locale", nullptr, &type, bytes, &size) != ERROR_SUCCESS)
        return {};
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        return {};
    return {buffer.data(), strnlen(buffer.data(), std::min<std::size_t>(size, buffer.size() - 1))};
}

const Language& UserLanguage()
{
    std::array<char, 256> buffer = {};
    const std::string_view value = ReadUserLocale(buffer);
    if (value.empty() || value.size() > LocaleDigits)
        return DefaultLanguage;
    std::array<char, LocaleDigits> locale;
    locale.fill('0'); // a short value lacks its leading zeros
    std::copy(value.rbegin(), value.rend(), locale.rbegin());
    const Language* language = FindLanguage({locale.data(), locale.size()});
    return language ? *language : DefaultLanguage;
}

void CopyOut(char* out, std::string_view text)
{
    *std::copy(text.begin(), text.end(), out) = '\0';
}
} // namespace

extern "C" unsigned int Get32CountryLanguage(char* localeOut, char* nameOut)
{
    const Language& language = UserLanguage();
    CopyOut(localeOut, language.locale);
    CopyOut(nameOut, language.name);
    return language.code;
}

extern "C" int IsOSLanguageDBCS(void)
{
    constexpr std::array<unsigned int, 4> doubleByteCodes = {12, 13, 14, 19}; // Japanese, Chinese (2), Korean
    char locale[COUNTRYLANGUAGE_LOCALE_SIZE];
    char name[COUNTRYLANGUAGE_NAME_SIZE];
    const unsigned int code = Get32CountryLanguage(locale, name);
    return std::find(doubleByteCodes.begin(), doubleByteCodes.end(), code) != doubleByteCodes.end();
}

extern "C" void GetDecimalLangID(const char* hexId, char* decimalOut)
{
    unsigned int identifier = 0;
    std::sscanf(hexId, "%x", &identifier);
    std::snprintf(decimalOut, COUNTRYLANGUAGE_DECIMAL_SIZE, "%d", static_cast<int>(identifier));
    if (std::strcmp(decimalOut, "3082") == 0)
        std::strcpy(decimalOut, "1034");
}
