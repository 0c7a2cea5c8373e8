// Followed links: what each form of FollowLink makes, opens and records, in which order, and what is traced of it.
#include "TestLink.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>
#include <functional>
#include <map>

namespace
{
/// The records of an address that was made, or opened.
std::string Made(const std::string& builder, const std::string& address)
{
    return "(char)CGUIUrlLink::" + builder + "\n(char)" + address + "\n";
}

std::string Followed(const std::string& subUrl)
{
    return "(char)CGUIUrlLink::FollowLink()\n(char)" + subUrl + "\n";
}

std::string Manually(const std::string& address, const std::string& function = "GotoURLManually")
{
    return "(char)CGUIUrlLink::" + function + "()\n(char)" + address + "\n(int)5\n";
}

std::string Recorded(const std::string& item, const std::string& printer)
{
    return "(char)ActivityTracker::WriteData(" + item + ", 1, 1, " + printer + ")\n";
}
} // namespace

TEST(Follow, EachForm)
{
    INKINFO ink{};
    ink.iLogCartID1 = 80;
    ink.iLogCartID2 = 48;
    const std::string home = StandardAddress("home"), supplies = StandardAddress("supplies"),
                      withInk = supplies + "&c1=50&l1=0&c2=30&l2=0";
    const std::string retailer = "(char)FollowLink - m_bReadIniURL is true\n",
                      madeHome = Made("ConstructStandardURL", home) + Followed("home"),
                      madeSupplies = Made("ConstructStandardURL", supplies) + Followed("supplies"),
                      madeWithInk = Made("ConstructStandardURL", withInk) + Followed("supplies");
    const std::pair<std::function<void(TestLink&)>, std::string> table[] = {
        {[](TestLink& link) { link.FollowLink("home", 0); }, madeHome + Manually(home)},
        {[](TestLink& link) { link.FollowLink("home", 1); }, madeHome + Manually(home, "GotoURL") + Manually(home)},
        {[](TestLink& link) { link.FollowLink("supplies", 0); }, retailer + madeSupplies + Manually(supplies)},
        {[&](TestLink& link) { link.FollowLink("supplies", &ink, 0); },
         retailer + retailer + madeWithInk + Manually(withInk)},
        {[](TestLink& link) { link.FollowLink("home", "P", 0); }, madeHome + Manually(home) + Recorded("24576", "P")},
        {[&](TestLink& link) { link.FollowLink("supplies", &ink, "P", -1); },
         retailer + madeWithInk + Manually(withInk, "GotoURL") + Manually(withInk) + Recorded("24577", "P")},
        {[](TestLink& link) { link.FollowLink("supplies", static_cast<INKINFO*>(nullptr), nullptr, 0); },
         retailer + madeSupplies + Manually(supplies) + Recorded("24577", "")},
        {[](TestLink& link) { link.FollowLink("unknown", "P", 0); }, Followed("unknown") + Manually("")},
        {[](TestLink& link) { link.FollowLink("home", std::string(300, 'p').c_str(), 0); },
         madeHome + Manually(home) + Recorded("24576", std::string(259, 'p'))},
        // An unknown name opens the last address again.
        {[](TestLink& link) { link.FollowLink("home", 0), link.FollowLink("unknown", 0); },
         madeHome + Manually(home) + Followed("unknown") + Manually(home)},
    };
    const TestProduct product(AddressSettings());
    const RedirectedRoot noBrowser(HKEY_CLASSES_ROOT);
    for (const auto& [follow, steps] : table)
    {
        const TraceWorld trace;
        TestLink link;
        follow(link);
        EXPECT_EQ(trace.Steps(), steps);
    }
}

TEST(Follow, EachBuilderTracesWhatItMade)
{
    const auto store = [](const char* tag)
    {
        return "(char)CGUIUrlLink::CheckInstitutionalSetting (return)\n(int)0\n(char)service tag processing\n(char)" +
               std::string(tag) + "\n" + Made("ConstructAlternateURL", StoreAddress(*tag ? tag : "00000"));
    };
    const std::string institution = "(char)CGUIUrlLink::CheckInstitutionalSetting (return)\n(int)1\n";
    const struct
    {
        SettingList settings;
        std::map<const char*, std::string> registry;
        std::string steps, address = "";
    } table[] = {
        {AddressSettings(), {}, Made("ConstructStandardURL", StandardAddress("home"))},
        {AddressSettings({{"IDO_OEM_URL_OVERRIDE", "0"}}), {}, Made("ConstructOEMURL", "http://base/gohome")},
        {StoreSettings(), {}, store("")},
        {StoreSettings(), {{"Tag", "T 1"}, {"File", "file"}}, store("T 1")},
        {StoreSettings(), {{"Only", "No"}, {"File", "file"}}, store("")},
        {StoreSettings(), {{"Only", "yes"}, {"File", "file"}}, store("")},
        {StoreSettings(), {{"Only", "Yes "}, {"File", "file"}}, store("")},
        {StoreSettings(), {{"Only", "Yes"}}, store("")},
        {StoreSettings(), {{"Only", "Yes"}, {"File", ""}}, store("")},
        // An institution's own order information, in place of the store.
        {StoreSettings(), {{"Only", "Yes"}, {"File", "c:\\order info.htm"}}, institution, "c:\\order info.htm"},
    };
    for (const auto& row : table)
    {
        const TestProduct product(row.settings);
        RegistryWorld world;
        for (const auto& [name, text] : row.registry)
            world.SetText(HKEY_LOCAL_MACHINE, StoreKey, name, text);
        const TraceWorld trace;
        TestLink link;
        link.ConstructURL("home");
        EXPECT_EQ(trace.Steps(), row.steps);
        EXPECT_TRUE(row.address.empty() || link.Address() == row.address) << link.Address();
    }
}

TEST(Follow, TheRetailerIsNamedFromTheFirstSuppliesOrResellerLinkOn)
{
    const RetailerFile file;
    const TestProduct product(AddressSettings());
    const RedirectedRoot noBrowser(HKEY_CLASSES_ROOT);
    for (const char* first : {"supplies", "reseller"})
    {
        TestLink link;
        link.FollowLink("home", 0);
        EXPECT_EQ(link.Address(), StandardAddress("home"));
        link.FollowLink(first, 0);
        EXPECT_EQ(link.Address(), StandardAddress(first) + "&r=shop");
        link.FollowLink("home", 0);
        EXPECT_EQ(link.Address(), StandardAddress("home") + "&r=shop");
    }
}

TEST(Follow, EveryKindOfThatNameIsRecorded)
{
    const std::pair<const char*, const char*> items[] = {
        {"home", "24576"},     {"supplies", "24577"}, {"support", "24578"},  {"register", "24579"},
        {"software", "24580"}, {"offer", "24581"},    {"contact", "24582"},  {"tech", "24583"},
        {"reward", "24599"},   {"skin", "24600"},     {"reseller", "24601"}, {"business", "24584"},
        {"tutorial", "24585"}, {"privacy", ""},       {"genuine", ""}};
    const auto visit = [](const char* subUrl)
    {
        const TraceWorld trace;
        TestLink().WebContactHistory(subUrl);
        return trace.Steps();
    };
    std::string all;
    {
        const TestProduct product(AddressSettings());
        for (const auto& [subUrl, item] : items)
        {
            const std::string expected = *item ? Recorded(item, "") : "";
            EXPECT_EQ(visit(subUrl), expected) << subUrl;
            all += expected;
        }
    }
    SettingList sameNames;
    for (const LinkName& name : LinkNames)
        sameNames.emplace_back(name.subUrlKey, "same");
    const TestProduct product(AddressSettings(sameNames));
    EXPECT_EQ(visit("same"), all);
}
