// Whole addresses: what a link's name becomes, from settings, locale, Windows version, retailer file, registry and ink
// report.
#include "TestLink.h"
#include "links/StoreAddress.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/Probe.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <cstdio>
#include <algorithm>

namespace
{
/// A report with these identities, and levels from InkPercent1 on.
INKINFO Ink(int first, int second, std::initializer_list<int> levels)
{
    INKINFO ink{};
    ink.iLogCartID1 = first;
    ink.iLogCartID2 = second;
    std::copy(levels.begin(), levels.end(), &ink.InkPercent1);
    return ink;
}
} // namespace

TEST(Url, EachKindHasItsName)
{
    {
        const TestProduct product(AddressSettings());
        TestLink link;
        for (const LinkName& name : LinkNames)
            EXPECT_EQ(link.Get(name.subUrl), StandardAddress(name.subUrl));
        for (const char* unknown : {"", "Home", "home ", "nothing"})
            EXPECT_EQ(link.Get(unknown), "(old)") << unknown;
        EXPECT_EQ(link.CompareAndTranlateURL("IDO_HOMEPAGE_SUBURL", "IDO_NOTHING", "skin"), 0);
        EXPECT_EQ(link.CompareAndTranlateURL("IDO_HOMEPAGE_SUBURL", "IDO_PRIVACY_SUBURL", "home"), 1);
        EXPECT_EQ(link.Address(), "privacy");
        link.TranslateURL("any", "IDO_SKIN_URL_OVERRIDE");
        EXPECT_EQ(link.Address(), StandardAddress("any"));
        link.ConstructOEMURL("any");
        EXPECT_EQ(link.Address(), "http://base/goany");
    }
    SettingList overrides, sameNames;
    for (const LinkName& name : LinkNames)
    {
        overrides.emplace_back(name.overrideKey, (std::string("http://x/?") + name.subUrl).c_str());
        sameNames.push_back(overrides.back());
        sameNames.emplace_back(name.subUrlKey, "same");
    }
    {
        const TestProduct product(AddressSettings(overrides));
        TestLink link;
        for (const LinkName& name : LinkNames)
            EXPECT_EQ(link.Get(name.subUrl), std::string("http://x/?") + name.subUrl);
    }
    for (const LinkName& name : LinkNames) // each is the first as long as those before it have other names
    {
        const TestProduct product(AddressSettings(sameNames));
        EXPECT_EQ(TestLink().Get("same"), std::string("http://x/?") + name.subUrl);
        *std::find_if(sameNames.begin(), sameNames.end(),
                      [&](auto& setting) { return setting.key == name.subUrlKey; }) = {name.subUrlKey, "other"};
    }
}

TEST(Url, MissingSettingsReadAsErrors)
{
    const TestProduct product({});
    INKINFO ink = Ink(80, 48, {1, 2, 3, 4});
    TestLink link;
    link.SetInk(&ink);
    EXPECT_EQ(link.Get("home"), "(old)");
    EXPECT_EQ(link.Get("ERROR"), "ERROR"); // the first kind's name and its override
    link.ConstructURL("x");
    EXPECT_EQ(link.Address(), "ERRORERRORxERROR0ERRORERRORERROR00000409ERRORERRORERRORERROR");
    link.m_bReadIniURL = 1; // the retailer's file, "ERRORERROR", is missing
    link.ConstructStandardURL("x");
    EXPECT_EQ(link.Address(), "ERRORERRORxERROR0ERRORERRORERROR00000409ERRORERRORERRORERROR");
    link.ConstructAlternateURL("ERROR"); // the supplies page
    EXPECT_EQ(link.Address(), "ERRORERROR00000409&ST=00000ERRORERRORERROR50ERROR2ERROR30ERROR1");
}

PROBE(Address)
{
    const TestProduct product(AddressSettings());
    std::puts(TestLink().Get("home").c_str());
    return 0;
}

TEST(Url, WindowsVersionAndLocale)
{
    for (const auto& [version, code] :
         {std::pair("win98", "w9x"), {"nt40", "nt4"}, {"win2k", "w2k"}}) // programs really run under these
        EXPECT_EQ(RunProbeUnder(version, "Address").output, StandardAddress("home", code) + "\n");
    const TestProduct product(AddressSettings());
    for (const auto& [version, code] :
         {std::pair(0, "w9x"), {3, "w9x"}, {4, "w9x"}, {5, "w9x"}, {6, "w9x"}, {7, "nt4"}, {8, "w2k"}, {9, "wxp"}})
    {
        const FakeVersion fake(version);
        EXPECT_EQ(TestLink().Get("home"), StandardAddress("home", code)) << version;
    }
    const RedirectedRoot user(HKEY_CURRENT_USER);
    RegistryWorld world;
    world.SetText(HKEY_CURRENT_USER, "Control Panel\\International", "Locale", "00000C0A");
    EXPECT_EQ(TestLink().Get("home"), "http://base/go?f=home&l=28&p=PC&c=00000C0A&o=wxp&s=SV");
}

TEST(Url, CartridgesOfTheStandardAddress)
{
    const SettingList noInfo = {{"IDO_CARTRIDGEINFO_WEBLINKURL", 0ul}}, info2 = {{"IDO_CARTRIDGEINFO_WEBLINKURL", 2ul}},
                      one = {{"IDO_INKSTYLE", 3ul}};
    const struct
    {
        INKINFO ink;
        const char* cartridges;
        SettingList changes = {};
        const char* subUrl = "supplies";
    } table[] = {
        {Ink(80, 48, {9, 40, 30, 120}), "&c1=50&l1=120&c2=30&l2=9"},
        {Ink(81, 49, {9, 40, 30, 20}), "&c1=51&l1=20&c2=31&l2=9"},
        {Ink(82, 50, {9, 40, 120, 30}), "&c1=52&l1=30&c2=32&l2=9"},
        {Ink(95, 63, {101, 120, 101, 130}), "&c1=50&l1=130&c2=30&l2=101"},
        {Ink(128, 47, {0, 101, 102, 101}), "&c1=90&l1=101&c2=00&l2=0"},
        {Ink(129, 64, {0, 100, 0, 50}), "&c1=90&l1=0&c2=00&l2=0"},
        {Ink(130, 0, {0, 7, 7, 101}), "&c1=90&l1=101&c2=00&l2=0"},
        {Ink(143, -1, {0, 1, -5, 3}), "&c1=90&l1=-5&c2=00&l2=0"},
        {Ink(144, 80, {0, 1, 2, 3}), "&c1=00&l1=1&c2=00&l2=0"},
        {Ink(96, 112, {9, 1, 2, 3, 40, 30, 120}), "&c1=00&l1=1&c2=70&l2=120"},
        {Ink(48, 113, {9, 1, 2, 3, 40, 30, 20}), "&c1=00&l1=1&c2=71&l2=20"},
        {Ink(79, 114, {9, 1, 2, 3, 120, 30, 40}), "&c1=00&l1=1&c2=72&l2=30"},
        {Ink(83, 127, {9, 1, 2, 3, 5, 6, -101}), "&c1=00&l1=1&c2=00&l2=-101"},
        {Ink(80, 48, {-101, -101, 5, 5}), "&c1=00&l1=-101&c2=00&l2=-101"},
        {Ink(80, 48, {-102, -102, 5, 5}), "&c1=50&l1=-102&c2=30&l2=-102"},
        {Ink(80, 48, {9, 4, 4, 4}), "&c1=50&l1=4", one},
        {Ink(80, 48, {9, 4, 4, 4}), "", noInfo},
        {Ink(80, 48, {9, 4, 4, 4}), "", info2},
        {Ink(80, 48, {9, 4, 4, 4}), "", {}, "home"},
    };
    for (const auto& row : table)
    {
        const TestProduct product(AddressSettings(row.changes));
        INKINFO ink = row.ink;
        TestLink link;
        link.SetInk(&ink);
        EXPECT_EQ(link.Get(row.subUrl), StandardAddress(row.subUrl) + row.cartridges);
        link.SetInk(nullptr);
        EXPECT_EQ(link.Get(row.subUrl), StandardAddress(row.subUrl)) << "without a report";
    }
}

TEST(Url, StoreAddresses)
{
    INKINFO ink = Ink(143, 114, {9, -101, 5, 5, 40, 30, 120});
    for (const unsigned long style : {2ul, 3ul}) // neither ink style nor cartridge switch count here
    {
        const TestProduct product(StoreSettings({{"IDO_INKSTYLE", style}, {"IDO_CARTRIDGEINFO_WEBLINKURL", 0ul}}));
        TestLink link;
        EXPECT_EQ(link.Get("supplies"), StoreAddress("00000"));
        link.SetInk(&ink);
        EXPECT_EQ(link.Get("supplies"), StoreAddress("00000", "&c1=90&l1=-101&c2=72&l2=120"));
        EXPECT_EQ(link.Get("home"), StoreAddress("00000"));
    }
    const TestProduct otherSpelling(AddressSettings({{"IDO_TORVANEURL", "Accessories.morvay.example/"}}));
    EXPECT_EQ(TestLink().Get("home").substr(0, 34), "Accessories.morvay.example/?f=home");
}

TEST(Url, ServiceTagsFromTheRegistry)
{
    const std::string longTag(259, 'L');
    const struct
    {
        DWORD type;
        std::string bytes;
        std::string tag;
    } table[] = {
        {REG_SZ, std::string("AB 12\0", 6), "AB 12"},
        {REG_SZ, "AB12", "AB12"}, // without its NUL
        {REG_BINARY, "AB12", "AB12"},
        {REG_SZ, std::string("A\0B\0", 4), "A"},
        {REG_SZ, std::string(1, '\0'), "00000"},
        {REG_SZ, "", "00000"},
        {REG_DWORD, "\1\2\3\4", "00000"},
        {REG_SZ, longTag + '\0', longTag},
        {REG_SZ, std::string(260, 'L') + '\0', "00000"},
        {REG_BINARY, std::string(70000, 'L'), "00000"},
        {REG_SZ, std::string("\xC4\xFF&?\0", 5), "\xC4\xFF&?"},
    };
    RegistryWorld world;
    world.SetText(HKEY_LOCAL_MACHINE, OwnKey, "Tag", "own");
    {
        const TestProduct product(StoreSettings());
        world.SetText(HKEY_LOCAL_MACHINE, StoreKey, "Other", "x");
        EXPECT_EQ(TestLink().Get("home"), StoreAddress("00000")) << "no such value";
        for (const auto& row : table)
        {
            world.Set(HKEY_LOCAL_MACHINE, StoreKey, "Tag", row.type, row.bytes);
            EXPECT_EQ(TestLink().Get("home"), StoreAddress(row.tag)) << row.type << " " << row.bytes.size();
        }
    }
    for (const unsigned long oneClick : {0ul, 1ul, 2ul}) // which has a key of its own
    {
        const TestProduct product(StoreSettings({{"IDO_ONECLICK_INK_ORDER", oneClick}}));
        EXPECT_EQ(TestLink().Get("home"), StoreAddress(oneClick == 1 ? "own" : "\xC4\xFF&?"));
    }
    const TestProduct product(StoreSettings());
    world.Restrict(HKEY_LOCAL_MACHINE, StoreKey, KEY_READ);
    EXPECT_EQ(TestLink().Get("home"), StoreAddress("00000")) << "no access but for reading";
}

TEST(Url, RetailersPartnerCode)
{
    const std::pair<std::string, std::string> table[] = {
        {"[Retailer]\r\nPartner=shop 7\r\n", "&r=shop 7"},
        {"[Retailer]\r\nPartner=\r\n", ""},
        {"[Retailer]\r\nPartner=Default\r\n", ""},
        {"[Retailer]\r\nPartner=default\r\n", "&r=default"},
        {"[Retailer]\r\nOther=x\r\n", ""},
        {"[Other]\r\nPartner=x\r\n", ""},
        {"", ""},
        {"[Retailer]\r\nPartner=" + std::string(300, 'p') + "\r\n", "&r=" + std::string(255, 'p')},
        {"[Retailer]\r\nPartner=\xE9%20&\xFF\r\n", "&r=\xE9%20&\xFF"},
    };
    const TestProduct product(AddressSettings());
    TestLink link;
    for (const auto& [text, partner] : table)
    {
        const RetailerFile file(text);
        link.m_bReadIniURL = 1;
        EXPECT_EQ(link.Get("home"), StandardAddress("home") + partner) << text;
        link.m_bReadIniURL = 0;
        EXPECT_EQ(link.Get("home"), StandardAddress("home"));
    }
}

TEST(Url, WithoutTheSystemDirectoryNoFileInTheDrivesRootIsTheRetailers)
{
    const std::string fromRoot = SystemFolder().substr(3) + "spool\\";
    const TestProduct product(AddressSettings({{"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", fromRoot.c_str()}}));
    const RetailerFile file;
    const Watch<decltype(&GetSystemDirectoryA)> refused("GetSystemDirectoryA", 1);
    SetCurrentDirectoryA("c:\\");
    TestLink link;
    link.m_bReadIniURL = 1;
    EXPECT_EQ(link.Get("home"), StandardAddress("home"));
    SetCurrentDirectoryA(TestFolder().c_str());
}

TEST(Url, ANonAsciiOrVeryLongNamePassesUnchanged)
{
    const std::string name = "\xE4\xF6 %1 \"quoted\" " + std::string(5000, 'n');
    const TestProduct product(AddressSettings({{"IDO_SKIN_SUBURL", name.c_str()}}));
    EXPECT_EQ(TestLink().Get(name), StandardAddress(name));
}

TEST(Url, LeavesNothingBehind)
{
    const RetailerFile file;
    const TestProduct product(StoreSettings());
    RegistryWorld world;
    world.Set(HKEY_LOCAL_MACHINE, StoreKey, "Tag", REG_BINARY, std::string(300, 'L'));
    world.SetText(HKEY_LOCAL_MACHINE, StoreKey, "Only", "Yes");
    ExpectNothingLeftBehind(
        [](int)
        {
            TestLink link;
            link.m_bReadIniURL = 1;
            link.Get("supplies");
            link.ConstructStandardURL("supplies");
        });
}
