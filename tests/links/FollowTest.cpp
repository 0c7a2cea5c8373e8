// Followed links: what each form of FollowLink makes, opens and records, in which order.
#include "TestLink.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>
#include <fstream>
#include <functional>
#include <iterator>

namespace
{
using Lines = std::vector<std::string>;

/// The trace from the link's own records on: look-ups left out, and of the way to the browser only the address.
Lines Journey(const TraceWorld& trace)
{
    Lines lines;
    const Lines records = trace.Records();
    for (size_t i = 0; i < records.size(); ++i)
    {
        const std::string text = records[i].substr(0, 6) == "(char)" ? records[i].substr(6) : records[i];
        if (text.find("---->") != std::string::npos)
            continue;
        if (text == "CGUIUrlLink::GotoURL()" || text == "CGUIUrlLink::GotoURLManually()")
        {
            lines.push_back(text + " " + records.at(i + 1).substr(6) + " " + records.at(i + 2));
            i += 2;
        }
        else
            lines.push_back(text);
    }
    return lines;
}
} // namespace

TEST(Follow, EachForm)
{
    INKINFO ink{};
    ink.iLogCartID1 = 80;
    ink.iLogCartID2 = 48;
    const std::string home = "http://base/go?f=home&l=0&p=PC&c=00000409&o=wxp&s=SV";
    const std::string supplies = "http://base/go?f=supplies&l=0&p=PC&c=00000409&o=wxp&s=SV";
    const std::string withInk = supplies + "&c1=50&l1=0&c2=30&l2=0";
    const auto made = [](const std::string& address, const char* name) {
        return Lines{"CGUIUrlLink::ConstructStandardURL", address, "CGUIUrlLink::FollowLink()", name};
    };
    const std::string retailer = "FollowLink - m_bReadIniURL is true", shell = "CGUIUrlLink::GotoURL() ",
                      manually = "CGUIUrlLink::GotoURLManually() ", show = " (int)5";
    const struct
    {
        std::function<void(TestLink&)> follow;
        std::vector<Lines> steps;
    } table[] = {
        {[](TestLink& link) { link.FollowLink("home", 0); }, {made(home, "home"), {manually + home + show}}},
        {[](TestLink& link) { link.FollowLink("home", 1); },
         {made(home, "home"), {shell + home + show, manually + home + show}}},
        {[](TestLink& link) { link.FollowLink("supplies", 0); },
         {{retailer}, made(supplies, "supplies"), {manually + supplies + show}}},
        {[&](TestLink& link) { link.FollowLink("supplies", &ink, 0); },
         {{retailer, retailer}, made(withInk, "supplies"), {manually + withInk + show}}},
        {[](TestLink& link) { link.FollowLink("home", "P", 0); },
         {made(home, "home"), {manually + home + show, "ActivityTracker::WriteData(24576, 1, 1, P)"}}},
        {[&](TestLink& link) { link.FollowLink("supplies", &ink, "P", -1); },
         {{retailer},
          made(withInk, "supplies"),
          {shell + withInk + show, manually + withInk + show, "ActivityTracker::WriteData(24577, 1, 1, P)"}}},
        {[](TestLink& link) { link.FollowLink("supplies", static_cast<INKINFO*>(nullptr), nullptr, 0); },
         {{retailer},
          made(supplies, "supplies"),
          {manually + supplies + show, "ActivityTracker::WriteData(24577, 1, 1, )"}}},
        {[](TestLink& link) { link.FollowLink("unknown", std::string(300, 'p').c_str(), 0); },
         {{"CGUIUrlLink::FollowLink()", "unknown", manually + show}}},
    };
    const TestProduct product(AddressSettings());
    const RedirectedRoot noBrowser(HKEY_CLASSES_ROOT);
    for (const auto& row : table)
    {
        const TraceWorld trace;
        TestLink link;
        row.follow(link);
        Lines expected;
        for (const Lines& steps : row.steps)
            expected.insert(expected.end(), steps.begin(), steps.end());
        EXPECT_EQ(Journey(trace), expected);
    }
}

TEST(Follow, AnUnknownNameOpensTheLastAddressAgain)
{
    const TestProduct product(AddressSettings({{"IDO_HOMEPAGE_URL_OVERRIDE", "http://home/"}}));
    const RedirectedRoot noBrowser(HKEY_CLASSES_ROOT);
    const TraceWorld trace;
    TestLink link;
    link.FollowLink("home", 0);
    link.FollowLink("unknown", 0);
    EXPECT_EQ(Journey(trace),
              (Lines{"CGUIUrlLink::FollowLink()", "home", "CGUIUrlLink::GotoURLManually() http://home/ (int)5",
                     "CGUIUrlLink::FollowLink()", "unknown", "CGUIUrlLink::GotoURLManually() http://home/ (int)5"}));
}

TEST(Follow, TheRetailerIsNamedFromTheFirstSuppliesOrResellerLinkOn)
{
    const std::string file = SystemFolder() + "spool\\linkstest.ini";
    std::ofstream(file, std::ios::binary) << "[Retailer]\r\nPartner=shop\r\n";
    const TestProduct product(AddressSettings());
    const RedirectedRoot noBrowser(HKEY_CLASSES_ROOT);
    for (const char* first : {"supplies", "reseller"})
    {
        TestLink link;
        link.FollowLink("home", 0);
        EXPECT_EQ(link.Address().find("&r="), std::string::npos);
        link.FollowLink(first, 0);
        EXPECT_EQ(link.Address(), std::string("http://base/go?f=") + first + "&l=0&p=PC&c=00000409&o=wxp&s=SV&r=shop");
        link.FollowLink("home", 0);
        EXPECT_EQ(link.Address(), "http://base/go?f=home&l=0&p=PC&c=00000409&o=wxp&s=SV&r=shop");
    }
    DeleteFileA(file.c_str());
}

TEST(Follow, EveryKindOfThatNameIsRecorded)
{
    const struct
    {
        const char* subUrl;
        const char* item; // null: not recorded
    } items[] = {{"home", "24576"},     {"supplies", "24577"}, {"support", "24578"},  {"register", "24579"},
                 {"software", "24580"}, {"offer", "24581"},    {"contact", "24582"},  {"tech", "24583"},
                 {"reward", "24599"},   {"skin", "24600"},     {"reseller", "24601"}, {"business", "24584"},
                 {"tutorial", "24585"}, {"privacy", nullptr},  {"genuine", nullptr}};
    Lines all;
    {
        const TestProduct product(AddressSettings());
        for (const auto& item : items)
        {
            const TraceWorld trace;
            TestLink link;
            link.WebContactHistory(item.subUrl);
            const Lines expected =
                item.item ? Lines{std::string("ActivityTracker::WriteData(") + item.item + ", 1, 1, )"} : Lines{};
            EXPECT_EQ(Journey(trace), expected) << item.subUrl;
            all.insert(all.end(), expected.begin(), expected.end());
        }
    }
    SettingList sameNames;
    for (const LinkName& name : LinkNames)
        sameNames.emplace_back(name.subUrlKey, "same");
    const TestProduct product(AddressSettings(sameNames));
    const TraceWorld trace;
    TestLink link;
    link.WebContactHistory("same");
    EXPECT_EQ(Journey(trace), all);
}

TEST(Follow, FromTheNameToTheBrowserAndTheRecorder)
{
    const std::string folder = SystemFolder() + "spool\\drivers\\x64\\3\\", log = TestFolder() + "linksusage.log";
    const std::string longName = std::string(300, 'p'), kept = longName.substr(0, 259);
    CopyFileA((TestFolder() + "usageportal.dll").c_str(), (folder + "linksportal.dll").c_str(), FALSE);
    CopyFileA((TestFolder() + "usagerecorder.dll").c_str(), (folder + "linksrecorder.dll").c_str(), FALSE);
    SetEnvironmentVariableA("USAGE_LOG", log.c_str());
    {
        const TestProduct product(AddressSettings({{"IDO_DATA_REC_SUPPORTED", 1ul},
                                                   {"IDO_CAIRNFIELD_DLL", "linksportal.dll"},
                                                   {"IDO_DATA_RECORDER_DLL", "linksrecorder.dll"},
                                                   {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"}}));
        const RedirectedRoot classes(HKEY_CLASSES_ROOT);
        const RecordingProgram browser(TestFolder() + "links follow browser.exe");
        RegistryWorld world;
        world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "webdoc");
        world.SetText(HKEY_CLASSES_ROOT, "webdoc\\shell\\open\\command", "", "\"" + browser.Path() + "\" \"%1\"");
        INKINFO ink{};
        ink.iLogCartID1 = 130;
        ink.iLogCartID2 = 63;
        ink.InkPercent1 = 12;
        ink.InkPercent2 = 34;
        const auto follow = [&] { TestLink().FollowLink("supplies", &ink, longName.c_str(), 1); };
        EXPECT_EQ(browser.Recorded(follow).commandLine,
                  "\"" + browser.Path() + "\"  http://base/go?f=supplies&l=0&p=PC&c=00000409&o=wxp&s=SV" +
                      "&c1=90&l1=0&c2=30&l2=12");
    }
    std::ifstream file(log, std::ios::binary);
    const std::string usage{std::istreambuf_iterator<char>(file), {}};
    file.close();
    EXPECT_EQ(usage, "portal\nload " + folder + "linksrecorder.dll\ncreate 6 3 0x2003\nserial " + kept +
                         "\nvalue 0x6001 1 1\ncommit\nrecorder release\nportal release\n");
    SetEnvironmentVariableA("USAGE_LOG", nullptr);
    DeleteFileA(log.c_str());
    EXPECT_TRUE(DeleteFileA((folder + "linksportal.dll").c_str()));
    EXPECT_TRUE(DeleteFileA((folder + "linksrecorder.dll").c_str()));
}

TEST(Follow, TheBrowserOpensWhateverTheRecorderDoes)
{
    // Portal and recorder missing: the record fails, the link does not.
    const TestProduct product(AddressSettings({{"IDO_DATA_REC_SUPPORTED", 1ul},
                                               {"IDO_CAIRNFIELD_DLL", "nosuchportal.dll"},
                                               {"IDO_DATA_RECORDER_DLL", "nosuchrecorder.dll"}}));
    const RedirectedRoot classes(HKEY_CLASSES_ROOT);
    const RecordingProgram browser(TestFolder() + "links follow browser.exe");
    RegistryWorld world;
    world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "webdoc");
    world.SetText(HKEY_CLASSES_ROOT, "webdoc\\shell\\open\\command", "", "\"" + browser.Path() + "\"");
    EXPECT_EQ(browser.Recorded([] { TestLink().FollowLink("home", "P", 0); }).commandLine,
              "\"" + browser.Path() + "\" http://base/go?f=home&l=0&p=PC&c=00000409&o=wxp&s=SV");
}
