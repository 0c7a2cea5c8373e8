// The user's locale as the suite's language, read from a registry of the test's own.
#include "locale/CountryLanguage.h"
#include "support/NothingLeft.h"
#include "support/RedirectedRoot.h"
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>

namespace
{
/// The languages by code: each with all its locales.
struct Group
{
    unsigned int code;
    const char *name, *locales;
};
// clang-format off
const Group Groups[] = {
    {0, "ENGLISH", "409 809 1009 1409 C09 1C09 2009 2409 2809 2C09 1809"}, {1, "FRENCH", "40C 80C 100C C0C 140C"},
    {2, "GERMAN", "407 807 C07 1007 1407"}, {3, "ITALIAN", "410 810"},
    {4, "SPANISH", "40A 80A 100A 140A 180A 1C0A 200A 240A 280A 2C0A 300A 340A 380A 3C0A 400A 440A 480A 4C0A 500A"},
    {5, "DANISH", "406"}, {6, "NORWEGAN", "414"}, {7, "DUTCH", "413 813"}, {8, "SWEDISH", "41D 81D"},
    {9, "FINNISH", "40B"}, {10, "PORTBRZL", "816"}, {12, "JAPANESE", "411"}, {13, "CHI_SIMP", "804 1004"},
    {14, "CHI_TRAD", "404 1404 C04"}, {15, "CZECH", "405"}, {16, "GREEK", "408"}, {17, "HUNGARAN", "40E"},
    {18, "ICELANDIC", "40F"}, {19, "KOREAN", "412 812"}, {20, "POLISH", "415"}, {21, "PORTBRZL", "416"},
    {22, "RUSSIAN", "419"}, {23, "SLOVAK", "41B"}, {24, "TURKISH", "41F"}, {25, "VIETNAMESE", "42A"},
    {26, "UKRAINIAN", "422"}, {27, "THAI", "41E"}, {28, "SPANISH", "C0A"}, {29, "SLOVENIAN", "424"},
    {30, "SERBIAN_LATIN", "81A"}, {31, "SERBIAN_CYRILLIC", "C1A"}, {32, "ROMANIAN", "418"}, {33, "LITHUANIAN", "427"},
    {34, "LATVIAN", "426"}, {35, "INDONESIAN", "421"}, {36, "FAEROESE", "438"}, {37, "ESTONIAN", "425"},
    {38, "CROATIAN", "41A"}, {39, "CATALAN", "403"}, {40, "BULGARIAN", "402"}, {41, "BELARUSIAN", "423"},
    {42, "BASQUE", "42D"}, {43, "ALBANIAN", "41C"}, {44, "AFRIKAANS", "436"}, {45, "NORWEGAN", "814"},
    {46, "HEBREW", "40D"},
    {47, "ARABIC", "401 801 C01 1001 1401 1801 1C01 2001 2401 2801 2C01 3001 3401 3801 3C01 4001"},
    {48, "MACEDONIA", "42F"},
};
// clang-format on

/// The answer as "code locale name". Asks with buffers of just the promised sizes and guards behind them.
std::string Ask()
{
    std::string locale(COUNTRYLANGUAGE_LOCALE_SIZE + 4, '#'), name(COUNTRYLANGUAGE_NAME_SIZE + 4, '#');
    const unsigned int code = Get32CountryLanguage(locale.data(), name.data());
    EXPECT_EQ(locale.substr(COUNTRYLANGUAGE_LOCALE_SIZE), "####");
    EXPECT_EQ(name.substr(COUNTRYLANGUAGE_NAME_SIZE), "####");
    return std::to_string(code) + " " + locale.c_str() + " " + name.c_str();
}
const char* const French = "1 0000040C FRENCH";

class CountryLanguage : public testing::Test
{
protected:
    static void Set(const std::string& bytes, DWORD type = REG_SZ)
    {
        RegSetKeyValueA(HKEY_CURRENT_USER, "Control Panel\\International", "Locale", type, bytes.data(),
                        static_cast<DWORD>(bytes.size()));
    }

    const RedirectedRoot m_user{HKEY_CURRENT_USER};
};

TEST_F(CountryLanguage, KnowsEachLocaleInEverySpelling)
{
    std::set<std::string> locales;
    for (const Group& group : Groups)
    {
        std::istringstream words(group.locales);
        for (std::string digits; words >> digits;)
        {
            const std::string locale = std::string(8 - digits.size(), '0') + digits;
            locales.insert(locale);
            std::string lower = locale;
            CharLowerA(lower.data());
            for (const std::string& text : {locale, lower, digits})
            {
                Set(text + '\0');
                EXPECT_EQ(Ask(), std::to_string(group.code) + " " + locale + " " + group.name) << text;
                const std::set<unsigned int> doubleByte = {12, 13, 14, 19};
                EXPECT_EQ(IsOSLanguageDBCS(), static_cast<int>(doubleByte.count(group.code))) << text;
            }
        }
    }
    EXPECT_EQ(locales.size(), 106u);
}

TEST_F(CountryLanguage, FallsBackToFrench)
{
    EXPECT_EQ(Ask(), French) << "no key";
    const std::pair<std::string, DWORD> others[] = {
        {std::string(1, '\0'), REG_SZ},          {"", REG_SZ},
        {std::string("0000FFFF", 9), REG_SZ},    {std::string("english", 8), REG_SZ},
        {std::string("000000409", 10), REG_SZ},                                           // one character too many
        {std::string(254, '4') + '\0', REG_SZ},  {std::string(2000, '4') + '\0', REG_SZ}, // more than the buffer
        {std::string(" 409", 5), REG_SZ},        {std::string("\x11\x04\0\0", 4), REG_DWORD},
        {std::string("00000411", 9), REG_BINARY}};
    for (const auto& [bytes, type] : others)
    {
        Set(bytes, type);
        EXPECT_EQ(Ask(), French) << bytes;
    }
    Set("00000411");
    EXPECT_EQ(Ask(), "12 00000411 JAPANESE") << "without terminator";
    Set(std::string("409\0junk", 8));
    EXPECT_EQ(Ask(), "0 00000409 ENGLISH") << "text behind the terminator";
    RegDeleteKeyValueA(HKEY_CURRENT_USER, "Control Panel\\International", "Locale");
    EXPECT_EQ(Ask(), French) << "no value";
    EXPECT_EQ(IsOSLanguageDBCS(), 0) << "no value";
}

TEST_F(CountryLanguage, LeavesNothingOpen)
{
    Set("00000411");
    ExpectNothingLeftBehind([](int) { Ask(); });
}

TEST(DecimalLangID, ConvertsWithinElevenBytes)
{
    const char* const cases[][2] = {
        {"0409", "1033"},          {"00000409", "1033"},       {"0C0A", "1034"}, {"0c0a", "1034"},
        {"040A", "1034"},          {"0x40C", "1036"},          {"", "0"},        {"xyz", "0"},
        {"FFFFFFFF", "-1"},        {"7FFFFFFF", "2147483647"}, {"411 ", "1041"}, {"C0A0", "49312"},
        {"80000000", "-214748364"}}; // the eleventh digit does not fit
    for (const auto& [hex, decimal] : cases)
    {
        std::string out(COUNTRYLANGUAGE_DECIMAL_SIZE + 4, '#');
        GetDecimalLangID(hex, out.data());
        EXPECT_STREQ(out.c_str(), decimal) << hex;
        EXPECT_EQ(out.substr(COUNTRYLANGUAGE_DECIMAL_SIZE), "####") << hex;
    }
}
} // namespace
