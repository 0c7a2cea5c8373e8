// What the identities and states of cartridges mean.
#include "support/FakeVersion.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "ink/CGUIInkDisplay.h"
#include "ink/InkDisplay.h"
#include <gtest/gtest.h>
#include <climits>

namespace
{
constexpr auto Physical = CGUIInkDisplay::Physical, Logical = CGUIInkDisplay::Logical;
constexpr auto First = CGUIInkDisplay::First, Second = CGUIInkDisplay::Second;
constexpr auto NoType = static_cast<CGUIInkDisplay::CartIDType>(2);
constexpr auto NoPosition = static_cast<CGUIInkDisplay::CartPosition>(2);

/// One letter for each question that is answered with yes.
std::string Answers(CGUIInkDisplay& display, CGUIInkDisplay::CartIDType type, CGUIInkDisplay::CartPosition position)
{
    using Question = int (CGUIInkDisplay::*)(CGUIInkDisplay::CartIDType, CGUIInkDisplay::CartPosition);
    static const std::pair<char, Question> questions[] = {
        {'B', &CGUIInkDisplay::IsItBlack},     {'C', &CGUIInkDisplay::IsItCMY},
        {'A', &CGUIInkDisplay::IsItALTCMY},    {'K', &CGUIInkDisplay::IsItKCM},
        {'H', &CGUIInkDisplay::IsItHighYield}, {'L', &CGUIInkDisplay::IsItLowYield},
        {'G', &CGUIInkDisplay::IsItGeneric},   {'M', &CGUIInkDisplay::IsItMissing},
        {'I', &CGUIInkDisplay::IsItInvalid},   {'V', &CGUIInkDisplay::IsItValid},
    };
    std::string answers;
    for (const auto& [letter, question] : questions)
    {
        const int answer = (display.*question)(type, position);
        EXPECT_TRUE(answer == 0 || answer == 1);
        if (answer)
            answers += letter;
    }
    return answers;
}

struct Identity
{
    int identity;
    const char* answers;
    int kind;    // WhatIsIt
    int checked; // CheckCartridgeID, status in order
    int flagged; // the same, status flagged
};
constexpr Identity Identities[] = {
    {48, "BV", 0, 0, 15},   {49, "BLV", 0, 0, 15},   {50, "BHV", 0, 0, 15},   {63, "BGV", 9, 9, 15},
    {80, "CV", 4, 4, 13},   {81, "CLV", 4, 4, 13},   {82, "CHV", 4, 4, 13},   {95, "CGV", 10, 10, 13},
    {112, "KV", 5, 5, 14},  {113, "KLV", 5, 5, 14},  {114, "KHV", 5, 5, 14},  {127, "KGV", 11, 11, 14},
    {128, "CAV", 8, 8, 13}, {129, "CALV", 8, 8, 13}, {130, "CAHV", 8, 8, 13}, {143, "CAGV", 12, 12, 13},
    {16, "I", 7, 6, 6},     {32, "M", 6, 6, 6},      {0, "", 7, 6, 6},        {15, "", 7, 6, 6},
    {17, "", 7, 6, 6},      {31, "", 7, 6, 6},       {33, "", 7, 6, 6},       {47, "", 7, 6, 6},
    {51, "", 7, 6, 6},      {62, "", 7, 6, 6},       {64, "", 7, 6, 6},       {79, "", 7, 6, 6},
    {83, "", 7, 6, 6},      {94, "", 7, 6, 6},       {96, "", 7, 6, 6},       {111, "", 7, 6, 6},
    {115, "", 7, 6, 6},     {126, "", 7, 6, 6},      {131, "", 7, 6, 6},      {142, "", 7, 6, 6},
    {144, "", 7, 6, 6},     {-1, "", 7, 6, 6},       {INT_MAX, "", 7, 6, 6},  {INT_MIN, "", 7, 6, 6},
};
} // namespace

TEST(Cartridges, AreKnownByTheIdentityAskedFor)
{
    int INKINFO::*const fields[2][2] = {{&INKINFO::iPhysCartID1, &INKINFO::iPhysCartID2},
                                        {&INKINFO::iLogCartID1, &INKINFO::iLogCartID2}};
    CGUIInkDisplay display;
    for (const Identity& row : Identities)
        for (const auto type : {Physical, Logical})
            for (const auto position : {First, Second})
            {
                INKINFO ink{};
                ink.*fields[type][position] = row.identity;
                display.SetInkInfo(&ink, nullptr);
                EXPECT_EQ(display.GetCartID(type, position), row.identity);
                EXPECT_EQ(Answers(display, type, position), row.answers) << row.identity;
                EXPECT_EQ(display.WhatIsIt(type, position), row.kind) << row.identity;
                EXPECT_EQ(display.WhatIsIt(row.identity), row.kind) << row.identity;
                const auto otherType = type == Physical ? Logical : Physical;
                EXPECT_EQ(display.GetCartID(otherType, position), 0);
                EXPECT_EQ(display.AreAnyMissing(type), row.identity == 32);
                EXPECT_EQ(display.AreAnyKCM(type), row.answers[0] == 'K');
                EXPECT_EQ(display.AreAnyKCM(otherType) + display.AreAnyMissing(otherType), 0);
            }
}

TEST(Cartridges, AreNoneWithoutAReportOrASelection)
{
    CGUIInkDisplay display;
    EXPECT_EQ(Answers(display, Physical, First), "") << "no report";
    INKINFO ink{};
    ink.iPhysCartID1 = ink.iPhysCartID2 = ink.iLogCartID1 = ink.iLogCartID2 = 127;
    display.SetInkInfo(&ink, nullptr);
    for (const auto& [type, position] : {std::pair(NoType, First), std::pair(Logical, NoPosition)})
    {
        EXPECT_EQ(display.GetCartID(type, position), 0);
        EXPECT_EQ(Answers(display, type, position), "");
        EXPECT_EQ(display.WhatIsIt(type, position), CGUIInkTank::InkInvalid);
    }
    EXPECT_EQ(display.AreAnyKCM(NoType), 0);
}

TEST(Cartridges, AreFlaggedByTheirStatusWithSmartMessagingAlone)
{
    for (const unsigned long smart : {0ul, 1ul, 2ul})
    {
        const TestProduct product({{"IDO_SUPPORT_SMARTMESSAGING", smart}});
        CGUIInkDisplay display;
        for (const Identity& row : Identities)
            for (int status = -1; status <= 6; ++status)
            {
                const bool flagged = smart == 1 && (status == 2 || status == 4 || status == 5);
                EXPECT_EQ(display.CheckCartridgeID(row.identity, status), flagged ? row.flagged : row.checked)
                    << row.identity << " status " << status << " smart messaging " << smart;
            }
    }
}

TEST(Cartridges, BelongWhereThePrintHeadFormatSays)
{
    constexpr struct
    {
        int first, second;
        int wrong[3][2]; // in format 1, in format 2, in any other
    } rows[] = {
        {80, 112, {{0, 0}, {1, 1}, {0, 0}}}, {114, 143, {{1, 1}, {0, 0}, {0, 0}}}, {112, 127, {{1, 0}, {0, 1}, {0, 0}}},
        {95, 128, {{0, 1}, {1, 0}, {0, 0}}}, {48, 80, {{0, 1}, {0, 0}, {0, 0}}},   {80, 48, {{0, 0}, {1, 0}, {0, 0}}},
        {48, 63, {{0, 0}, {0, 0}, {0, 0}}},  {32, 16, {{0, 0}, {0, 0}, {0, 0}}},   {115, 96, {{0, 0}, {0, 0}, {0, 0}}},
    };
    for (unsigned long format = 0; format < 4; ++format)
    {
        const TestProduct product({{"IDO_PRINTHEADFORMAT", format}});
        CGUIInkDisplay display;
        for (const auto& row : rows)
        {
            INKINFO ink{};
            ink.iLogCartID1 = row.first;
            ink.iLogCartID2 = row.second;
            display.SetInkInfo(&ink, nullptr);
            const int(&wrong)[2] = row.wrong[format == 1 ? 0 : format == 2 ? 1 : 2];
            EXPECT_EQ(display.IsItWrongPosition(Logical, First), wrong[0]) << format << ": " << row.first;
            EXPECT_EQ(display.IsItWrongPosition(Logical, Second), wrong[1]) << format << ": " << row.second;
            EXPECT_EQ(display.AreTheySwapped(Logical), wrong[0] && wrong[1]) << format << ": " << row.first;
            EXPECT_EQ(display.AreTheySwapped(Physical) + display.AreTheySwapped(NoType), 0);
        }
    }
}

TEST(Cartridges, CanBeJudgedWithoutProductSettings)
{
    InkDisplay display;
    INKINFO ink{};
    ink.iLogCartID1 = 112;
    ink.iLogCartID2 = 80;
    display.SetInkInfo(&ink, nullptr);
    EXPECT_EQ(display.AreTheySwapped(Logical), 0);
    EXPECT_EQ(display.CheckCartridgeID(80, 2), CGUIInkTank::InkTriColor);
    display.SetSetting("IDO_PRINTHEADFORMAT", 1ul);
    display.SetSetting("IDO_SUPPORT_SMARTMESSAGING", 1ul);
    EXPECT_EQ(display.AreTheySwapped(Logical), 1);
    EXPECT_EQ(display.CheckCartridgeID(80, 2), CGUIInkTank::InkTriColorStatus);
    EXPECT_FALSE(GetModuleHandleA(TestProduct::LibraryName().c_str())) << "the settings library was looked for";
}

namespace
{
constexpr char Flag[] = "DimsFlag";

SettingList DimsSettings(unsigned long oneClick)
{
    return {{"IDO_ONECLICK_INK_ORDER", oneClick},
            {"IDO_SUPPLIES_REG_PATH", "Software\\Torvane\\InkTest\\Own\\"},
            {"IDO_MORVAY_SUPPLIES_REG_PATH", "Software\\Torvane\\InkTest\\Store\\"},
            {"IDO_PRINTER_MODEL", "T100"},
            {"IDO_KEY_NAME_MORVAY_DIMS_SETTING", Flag},
            {"IDO_OEM_INKJET_IDENT", "Software\\Torvane\\InkTest"}};
}
} // namespace

TEST(Dims, IsKeptForEachPrinterOnBothFamiliesAndWithAnInstalledPrintersSettings)
{
    const auto expectKept = [&](int platform, bool installed, HKEY root, const char* key)
    {
        SCOPED_TRACE(key);
        RegistryWorld registry;
        if (installed)
            registry.Printer("Ink Test Printer", "Original Name");
        registry.Claim(root, key);
        const TestProduct product(DimsSettings(0));
        const FakeVersion version(platform, platform == VER_PLATFORM_WIN32_NT ? 6 : 4, 10);
        CGUIInkDisplay display;
        EXPECT_EQ(display.GetDIMSValue("Ink Test Printer"), 1);
        display.SetDIMSValue("Ink Test Printer", 0);
        EXPECT_EQ(display.GetDIMSValue("Ink Test Printer"), 0);
        display.SetDIMSValue("Ink Test Printer", 7);
        EXPECT_EQ(display.GetDIMSValue("Ink Test Printer"), 1);
        EXPECT_EQ(RegistryWorld::Get(root, key, Flag), std::string("\7\0\0\0", 4));
    };
    expectKept(VER_PLATFORM_WIN32_WINDOWS, false, HKEY_LOCAL_MACHINE,
               "System\\CurrentControlSet\\control\\Print\\Printers\\Ink Test Printer\\GUI\\PSW");
    expectKept(VER_PLATFORM_WIN32_NT, false, HKEY_CURRENT_USER, "Printers\\Ink Test Printer\\GUI\\PSW");
    expectKept(VER_PLATFORM_WIN32_NT, true, HKEY_LOCAL_MACHINE,
               "Software\\Torvane\\InkTest\\IJPrtSettings\\Original Name\\GUI\\PSW");
}

TEST(Dims, OfTheProductStandsInTheModelsSuppliesKeyOrThatOfItsOwnOrderingTool)
{
    const std::string keys[] = {"Software\\Torvane\\InkTest\\Store\\T100", "Software\\Torvane\\InkTest\\Own\\T100"};
    for (const unsigned long oneClick : {0ul, 1ul})
    {
        const std::string& key = keys[oneClick];
        SCOPED_TRACE(key);
        RegistryWorld registry;
        registry.Claim(HKEY_LOCAL_MACHINE, key);
        const TestProduct product(DimsSettings(oneClick));
        CGUIInkDisplay display;
        EXPECT_EQ(display.GetDIMSValue(), 1) << "no key";
        display.SetDIMSValue(0);
        EXPECT_EQ(RegistryWorld::Get(HKEY_LOCAL_MACHINE, key, Flag), std::string(4, '\0'));
        EXPECT_EQ(display.GetDIMSValue(), 0);
        display.SetDIMSValue(7);
        EXPECT_EQ(display.GetDIMSValue(), 1);
        registry.SetText(HKEY_LOCAL_MACHINE, key, Flag, "a text");
        EXPECT_EQ(display.GetDIMSValue(), 1);
        registry.Set(HKEY_LOCAL_MACHINE, key, Flag, REG_BINARY, std::string(2, '\0'));
        EXPECT_EQ(display.GetDIMSValue(), 1) << "too short for a number";
        RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), Flag);
        EXPECT_EQ(display.GetDIMSValue(), 1) << "no value";
        registry.Restrict(HKEY_LOCAL_MACHINE, key, KEY_READ);
        display.SetDIMSValue(0);
        EXPECT_EQ(display.GetDIMSValue(), 1) << "neither writing nor reading is allowed";
    }
}
