// The suite's languages by locale.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace tvk
{
struct Language
{
    std::string_view locale;
    unsigned int code;
    std::string_view name;
};

// The names are keys of the suite's resources and services, unusual spellings included. Code 11 is not assigned;
// Spanish in modern sorting, Nynorsk and the two kinds of Portuguese have codes of their own under a shared name.
inline constexpr auto Languages = std::to_array<Language>({
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

constexpr char UpperCase(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// The row of a locale of eight hexadecimal digits, upper and lower case alike; null when the suite does not know it.
constexpr const Language* FindLanguage(std::string_view locale)
{
    const auto found =
        std::find_if(Languages.begin(), Languages.end(),
                     [locale](const Language& row)
                     {
                         return std::equal(row.locale.begin(), row.locale.end(), locale.begin(), locale.end(),
                                           [](char known, char asked) { return known == UpperCase(asked); });
                     });
    return found == Languages.end() ? nullptr : &*found;
}
} // namespace tvk
