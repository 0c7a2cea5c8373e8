// The suite's languages by locale, and the look-up of the current user's.
#include "locale/CountryLanguage.h"
#include <windows.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>
#include "system/internal/Handle.h"
#include "system/internal/Tables.h"

namespace
{
constexpr std::size_t LocaleDigits = COUNTRYLANGUAGE_LOCALE_SIZE - 1;

struct Language
{
    std::string_view locale;
    unsigned int code;
    std::string_view name;
};

// The names are keys of the suite's resources and services, unusual spellings included. Code 11 is not assigned;
// Spanish in modern sorting, Nynorsk and the two kinds of Portuguese have codes of their own under a shared name.
constexpr auto Languages = std::to_array<Language>({
    {"00000409", 0, "ENGLISH"},        {"00000809", 0, "ENGLISH"},
    {"00001009", 0, "ENGLISH"},        {"00001409", 0, "ENGLISH"},
    {"00000C09", 0, "ENGLISH"},        {"00001C09", 0, "ENGLISH"},
    {"00002009", 0, "ENGLISH"},        {"00002409", 0, "ENGLISH"},
    {"00002809", 0, "ENGLISH"},        {"00002C09", 0, "ENGLISH"},
    {"00001809", 0, "ENGLISH"},        {"0000040C", 1, "FRENCH"},
    {"0000080C", 1, "FRENCH"},         {"0000100C", 1, "FRENCH"},
    {"00000C0C", 1, "FRENCH"},         {"0000140C", 1, "FRENCH"},
    {"00000407", 2, "GERMAN"},         {"00000807", 2, "GERMAN"},
    {"00000C07", 2, "GERMAN"},         {"00001007", 2, "GERMAN"},
    {"00001407", 2, "GERMAN"},         {"00000410", 3, "ITALIAN"},
    {"00000810", 3, "ITALIAN"},        {"0000040A", 4, "SPANISH"},
    {"0000080A", 4, "SPANISH"},        {"0000100A", 4, "SPANISH"},
    {"0000140A", 4, "SPANISH"},        {"0000180A", 4, "SPANISH"},
    {"00001C0A", 4, "SPANISH"},        {"0000200A", 4, "SPANISH"},
    {"0000240A", 4, "SPANISH"},        {"0000280A", 4, "SPANISH"},
    {"00002C0A", 4, "SPANISH"},        {"0000300A", 4, "SPANISH"},
    {"0000340A", 4, "SPANISH"},        {"0000380A", 4, "SPANISH"},
    {"00003C0A", 4, "SPANISH"},        {"0000400A", 4, "SPANISH"},
    {"0000440A", 4, "SPANISH"},        {"0000480A", 4, "SPANISH"},
    {"00004C0A", 4, "SPANISH"},        {"0000500A", 4, "SPANISH"},
    {"00000406", 5, "DANISH"},         {"00000414", 6, "NORWEGAN"},
    {"00000413", 7, "DUTCH"},          {"00000813", 7, "DUTCH"},
    {"0000041D", 8, "SWEDISH"},        {"0000081D", 8, "SWEDISH"},
    {"0000040B", 9, "FINNISH"},        {"00000816", 10, "PORTBRZL"},
    {"00000411", 12, "JAPANESE"},      {"00000804", 13, "CHI_SIMP"},
    {"00001004", 13, "CHI_SIMP"},      {"00000404", 14, "CHI_TRAD"},
    {"00001404", 14, "CHI_TRAD"},      {"00000C04", 14, "CHI_TRAD"},
    {"00000405", 15, "CZECH"},         {"00000408", 16, "GREEK"},
    {"0000040E", 17, "HUNGARAN"},      {"0000040F", 18, "ICELANDIC"},
    {"00000412", 19, "KOREAN"},        {"00000812", 19, "KOREAN"},
    {"00000415", 20, "POLISH"},        {"00000416", 21, "PORTBRZL"},
    {"00000419", 22, "RUSSIAN"},       {"0000041B", 23, "SLOVAK"},
    {"0000041F", 24, "TURKISH"},       {"0000042A", 25, "VIETNAMESE"},
    {"00000422", 26, "UKRAINIAN"},     {"0000041E", 27, "THAI"},
    {"00000C0A", 28, "SPANISH"},       {"00000424", 29, "SLOVENIAN"},
    {"0000081A", 30, "SERBIAN_LATIN"}, {"00000C1A", 31, "SERBIAN_CYRILLIC"},
    {"00000418", 32, "ROMANIAN"},      {"00000427", 33, "LITHUANIAN"},
    {"00000426", 34, "LATVIAN"},       {"00000421", 35, "INDONESIAN"},
    {"00000438", 36, "FAEROESE"},      {"00000425", 37, "ESTONIAN"},
    {"0000041A", 38, "CROATIAN"},      {"00000403", 39, "CATALAN"},
    {"00000402", 40, "BULGARIAN"},     {"00000423", 41, "BELARUSIAN"},
    {"0000042D", 42, "BASQUE"},        {"0000041C", 43, "ALBANIAN"},
    {"00000436", 44, "AFRIKAANS"},     {"00000814", 45, "NORWEGAN"},
    {"0000040D", 46, "HEBREW"},        {"00000401", 47, "ARABIC"},
    {"00000801", 47, "ARABIC"},        {"00000C01", 47, "ARABIC"},
    {"00001001", 47, "ARABIC"},        {"00001401", 47, "ARABIC"},
    {"00001801", 47, "ARABIC"},        {"00001C01", 47, "ARABIC"},
    {"00002001", 47, "ARABIC"},        {"00002401", 47, "ARABIC"},
    {"00002801", 47, "ARABIC"},        {"00002C01", 47, "ARABIC"},
    {"00003001", 47, "ARABIC"},        {"00003401", 47, "ARABIC"},
    {"00003801", 47, "ARABIC"},        {"00003C01", 47, "ARABIC"},
    {"00004001", 47, "ARABIC"},        {"0000042F", 48, "MACEDONIA"},
});

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

constexpr char Upper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

constexpr const Language* Find(std::string_view locale)
{
    const auto found =
        std::find_if(Languages.begin(), Languages.end(),
                     [locale](const Language& row)
                     {
                         return std::equal(row.locale.begin(), row.locale.end(), locale.begin(), locale.end(),
                                           [](char known, char asked) { return known == Upper(asked); });
                     });
    return found == Languages.end() ? nullptr : &*found;
}

// The suite falls back to French, not to English.
constexpr const Language& DefaultLanguage = *Find("0000040C");

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
    const Language* language = Find({locale.data(), locale.size()});
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
