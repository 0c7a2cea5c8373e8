// Look-ups: where a value comes from, what the trace says of it, and what is left behind.
#include "ConfigurationLog.h"
#include "settings/TvkProduct.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <afxwin.h>
#include <gtest/gtest.h>
#include <fstream>
#include <tuple>

namespace
{
std::string Text(TvkProduct& product, const char* key)
{
    CString value("stale");
    const CString returned = product.GetSetting(key, value);
    EXPECT_STREQ(value, returned);
    return {value, static_cast<size_t>(value.GetLength())};
}

unsigned long Number(TvkProduct& product, const char* key)
{
    unsigned long value = 99;
    EXPECT_EQ(product.GetSetting(key, value), value);
    return value;
}

/// What the log says since the last call, one line a record: without the tag of texts, and with "@" for the product's
/// settings library.
std::string Trail(TraceWorld& trace)
{
    std::string trail;
    for (std::string record : trace.Records())
    {
        if (record.rfind("(char)", 0) == 0)
            record.erase(0, 6);
        if (record.rfind(TestProduct::LibraryName() + "---->", 0) == 0)
            record.replace(0, TestProduct::LibraryName().size(), "@");
        trail += (trail.empty() ? "" : "\n") + record;
    }
    trace.Clear();
    return trail;
}

bool IsLoaded(const std::string& library)
{
    return GetModuleHandleA(library.c_str()) != nullptr;
}
} // namespace

TEST(TvkProductTest, EveryLookUpTellsWhereItsValueCameFrom)
{
    const ConfigurationLog log;
    // clang-format off
    const TestProduct resident(
        {{"IDO_CONFIG_DLL", "testconf.dll"}, {"IDO_TEXT", "plain"}, {"IDO_EMPTY", ""}, {"IDO_BARE", std::string("abc")},
         {"IDO_EMBEDDED", std::string("ab\0cd", 5)}, {"IDO_NAME", "own"}, {"IDO_NAME_OVERRIDE", ItemText},
         {"IDO_EAGER_OVERRIDE", ItemEager}, {"IDO_FAIL", "own"}, {"IDO_FAIL_OVERRIDE", ItemFailureText},
         {"IDO_LATE", "own"}, {"IDO_LATE_OVERRIDE", ItemLate}, {"IDO_ODD_OVERRIDE", std::string("\x01")},
         {"IDO_TOKENS", "<~MODEL~><~MODEL~><~MFG~>"}, {"IDO_MIX_OVERRIDE", ItemTokens},
         {"IDO_MODEL", "never in a token"}, {"IDO_MODEL_OVERRIDE", ItemModel}, {"IDO_MFG_OVERRIDE", ItemMaker},
         {"IDO_MAX", 4294967294ul}, {"IDO_SHORT", std::string("\x07\0\0", 3)},
         {"IDO_LONG", std::string("\x07\0\0\0\x01", 5)}, {"IDO_COUNT", 5ul}, {"IDO_COUNT_OVERRIDE", ItemNumber},
         {"IDO_ONES", 6ul}, {"IDO_ONES_OVERRIDE", ItemAllOnes}});
    // clang-format on
    const std::tuple<const char*, const char*, const char*> texts[] = {
        {"IDO_TEXT", "plain", "@---->IDO_TEXT---->plain"},
        {"ido_text", "plain", "@---->ido_text---->plain"},
        {"IDO_EMPTY", "", "@---->IDO_EMPTY---->"},
        {"IDO_MISSING", "ERROR", "@---->IDO_MISSING---->ERROR"},
        {"", "ERROR", "@---->---->ERROR"},
        {"IDO_BARE", "abc", "@---->IDO_BARE---->abc"},
        {"IDO_EMBEDDED", "ab", "@---->IDO_EMBEDDED---->ab"},
        {"IDO_NAME", "Larkmoor 5", "Override---->IDO_NAME_OVERRIDE---->1\nCFG DLL---->IDO_NAME---->Larkmoor 5"},
        {"IDO_EAGER", "\xFF", "Override---->IDO_EAGER_OVERRIDE---->6\nCFG DLL---->IDO_EAGER---->\xFF"},
        {"IDO_LATE", "\xFF", "Override---->IDO_LATE_OVERRIDE---->8\nCFG DLL---->IDO_LATE---->\xFF"},
        {"IDO_ODD", "\xFF", "Override---->IDO_ODD_OVERRIDE---->0\nCFG DLL---->IDO_ODD---->\xFF"},
        {"IDO_FAIL", "own",
         "Override---->IDO_FAIL_OVERRIDE---->12\n"
         "GetItemData returned ERROR_SYSCONFIGDLL_FAILURE\n@---->IDO_FAIL---->own"},
        {"IDO_TOKENS", "<X100><~MODEL~><Torvane>",
         "Override---->IDO_MODEL_OVERRIDE---->4\nOverride---->IDO_MFG_OVERRIDE---->5\n"
         "@---->IDO_TOKENS----><X100><~MODEL~><Torvane>"},
        {"IDO_MIX", "X100, not ~MODEL~, by Torvane",
         "Override---->IDO_MIX_OVERRIDE---->3\nOverride---->IDO_MODEL_OVERRIDE---->4\n"
         "Override---->IDO_MFG_OVERRIDE---->5\nCFG DLL---->IDO_MIX---->X100, not ~MODEL~, by Torvane"}};
    const std::tuple<const char*, unsigned long, const char*> numbers[] = {
        {"IDO_MAX", 4294967294ul, "@---->IDO_MAX---->4294967294"},
        {"IDO_SHORT", 0, "@---->IDO_SHORT---->0"},
        {"IDO_LONG", 7, "@---->IDO_LONG---->7"},
        {"IDO_MISSING", 0, "@---->IDO_MISSING---->"},
        {"IDO_COUNT", 77, "Override---->IDO_COUNT_OVERRIDE---->2\nCFG DLL---->IDO_COUNT---->77"},
        {"IDO_ONES", 6,
         "Override---->IDO_ONES_OVERRIDE---->13\n"
         "GetItemData returned ERROR_SYSCONFIGDLL_FAILURE\n@---->IDO_ONES---->6"}};
    TraceWorld trace;
    TvkProduct product;
    const auto check = [&](const auto& rows, auto read)
    {
        for (const auto& [key, value, trail] : rows)
        {
            EXPECT_EQ(value, read(product, key)) << key;
            EXPECT_EQ(trail, Trail(trace));
            EXPECT_EQ(1, product.CompareSetting(key, value)) << key;
            trace.Clear();
        }
    };
    check(texts, Text);
    check(numbers, Number);
    EXPECT_EQ(0, product.CompareSetting("IDO_TEXT", "PLAIN"));
    EXPECT_EQ(0, product.CompareSetting("IDO_COUNT", 78ul));
}

TEST(TvkProductTest, AnOverrideNeedsTheNameOfAConfigurationLibraryThatLoads)
{
    TraceWorld trace;
    {
        const TestProduct resident({{"IDO_NAME", "~MODEL~"}, {"IDO_NAME_OVERRIDE", 1ul}});
        TvkProduct product;
        EXPECT_EQ("~MODEL~", Text(product, "IDO_NAME"));
        EXPECT_EQ("Override---->IDO_NAME_OVERRIDE---->1\n"
                  "!Warning! IDO_CONFIG_DLL => Setting not found\n@---->IDO_NAME---->~MODEL~",
                  Trail(trace));
    }
    const TestProduct resident(
        {{"IDO_NAME", "own"}, {"IDO_NAME_OVERRIDE", 1ul}, {"IDO_CONFIG_DLL", "nowhere.dll"}, {"IDO_WINNTPATH", "\\"}});
    TvkProduct product;
    EXPECT_EQ("own", Text(product, "IDO_NAME"));
    EXPECT_EQ("Override---->IDO_NAME_OVERRIDE---->1\n@---->IDO_WINNTPATH---->\\\n"
              "GetItemData returned ERROR_SYSCONFIGDLL_FAILURE\n@---->IDO_NAME---->own",
              Trail(trace));
}

TEST(TvkProductTest, TheFallbackIsAskedWhenTheConstructorAllowsIt)
{
    const TestProduct resident({{"IDO_BOTH", "product"}, {"IDO_ONLY_PRODUCT", "product"}});
    const TestLibrary brand("brand.dll", {{"IDO_BOTH", "brand"}, {"IDO_ONLY_BRAND", "brand"}});
    const TestLibrary other("other.dll", {{"IDO_ONLY_OTHER", "other"}});
    TraceWorld trace;
    {
        TvkProduct product;
        EXPECT_EQ("ERROR", Text(product, "IDO_ONLY_BRAND"));
        TvkProduct branded("brand.dll");
        EXPECT_EQ("brand", Text(branded, "IDO_BOTH"));
        EXPECT_EQ("product", Text(branded, "IDO_ONLY_PRODUCT"));
        EXPECT_EQ("ERROR", Text(branded, "IDO_NOWHERE"));
        TvkProduct both("other.dll", "brand.dll");
        EXPECT_EQ("other", Text(both, "IDO_ONLY_OTHER"));
        EXPECT_EQ("brand", Text(both, "IDO_BOTH"));
        EXPECT_EQ("ERROR", Text(both, "IDO_ONLY_PRODUCT"));
    }
    EXPECT_EQ("@---->IDO_ONLY_BRAND---->ERROR\nbrand.dll---->IDO_BOTH---->brand\n"
              "@---->IDO_ONLY_PRODUCT---->product\n@---->IDO_NOWHERE---->ERROR\n"
              "other.dll---->IDO_ONLY_OTHER---->other\nbrand.dll---->IDO_BOTH---->brand\n"
              "brand.dll---->IDO_ONLY_PRODUCT---->ERROR",
              Trail(trace));
    // Each of the last two objects loaded libraries that were not the last ones it asked: they stay, once each.
    for (const char* library : {"brand.dll", "other.dll"})
        while (const HMODULE module = GetModuleHandleA(library))
            FreeLibrary(module);
}

TEST(TvkProductTest, TheRecordNamesTheLibraryOfTheLastLoad)
{
    const TestProduct resident({{"IDO_MFG", "unused"}});
    const TestLibrary brand("brand.dll", {{"IDO_NAME", "~MFG~"}});
    const HMODULE module = LoadLibraryA("brand.dll");
    TraceWorld trace;
    {
        TvkProduct product("brand.dll");
        EXPECT_EQ("~MFG~", Text(product, "IDO_NAME"));
    }
    EXPECT_EQ("@---->IDO_NAME---->~MFG~", Trail(trace));
    FreeLibrary(module);
}

TEST(TvkProductTest, ALibraryThatCannotBeLoadedIsTracedAndTheHostIsAsked)
{
    std::ofstream(TestFolder() + "junk.dll") << "no library";
    const auto failed = [](const std::string& library, const char* error)
    { return "ERROR! LoadLibrary failed\n" + TestFolder() + library + "\nGetLastError:\n(DWORD)" + error + "\n"; };
    const std::pair<std::string, const char*> table[] = {{"nowhere.dll", "126"}, {"junk.dll", "193"}};
    for (const auto& [library, error] : table)
    {
        TraceWorld trace;
        TvkProduct product(library.c_str(), "neither.dll");
        EXPECT_EQ("the host's own", Text(product, "IDO_OF_THE_HOST"));
        // The override is looked for in both libraries; the program has the key when the first one fails again.
        EXPECT_EQ(failed(library, error) + failed("neither.dll", "126") + failed(library, error) + library +
                      "---->IDO_OF_THE_HOST---->the host's own",
                  Trail(trace));
    }
    DeleteFileA((TestFolder() + "junk.dll").c_str());
}

TEST(TvkProductTest, FreesWhatItLoadedLastAndNothingElse)
{
    const std::string beside = TestProduct::LibraryName();
    {
        TvkProduct product;
        EXPECT_FALSE(IsLoaded(beside));
        EXPECT_EQ("from the library beside", Text(product, "IDO_TEST_TEXT"));
        EXPECT_EQ("ERROR", Text(product, "IDO_MISSING"));
        EXPECT_TRUE(IsLoaded(beside));
    }
    EXPECT_FALSE(IsLoaded(beside));

    const TestLibrary brand("brand.dll", {{"IDO_BRAND", "brand"}, {"IDO_BRAND_OVERRIDE", 1ul}, {"IDO_CONFIG_DLL", ""}});
    const HMODULE held = LoadLibraryA(beside.c_str());
    {
        TvkProduct product("brand.dll");
        EXPECT_EQ("from the library beside", Text(product, "IDO_TEST_TEXT"));
    }
    EXPECT_TRUE(IsLoaded("brand.dll")) << "not resolved last: stays";
    EXPECT_TRUE(IsLoaded(beside)) << "resolved last, but only found";
    FreeLibrary(held);
    EXPECT_FALSE(IsLoaded(beside));
    FreeLibrary(GetModuleHandleA("brand.dll"));
    {
        TvkProduct product("brand.dll");
        EXPECT_EQ("brand", Text(product, "IDO_BRAND"));
        EXPECT_EQ(0, product.IsDriverLanguageRTL());
    }
    EXPECT_FALSE(IsLoaded(beside)) << "loaded for the language";
    EXPECT_TRUE(IsLoaded("brand.dll"));
    FreeLibrary(GetModuleHandleA("brand.dll"));
}

TEST(TvkProductTest, PutsTheResourceHandleBack)
{
    const TestProduct resident({{"IDO_TEXT", "x"}}, "Hebrew");
    const HINSTANCE before = AfxGetResourceHandle();
    const HINSTANCE own = LibraryUnderTest();
    AfxSetResourceHandle(own);
    {
        TvkProduct product;
        Text(product, "IDO_TEXT");
        EXPECT_EQ(own, AfxGetResourceHandle());
        Number(product, "IDO_MISSING");
        EXPECT_EQ(1, product.IsDriverLanguageRTL());
        EXPECT_EQ(own, AfxGetResourceHandle());
        AfxSetResourceHandle(before);
    }
    EXPECT_EQ(own, AfxGetResourceHandle()) << "the destructor puts back what the last look-up saved";
    AfxSetResourceHandle(before);
}

TEST(TvkProductTest, RightToLeftLanguagesInAnySpelling)
{
    const std::pair<const char*, int> table[] = {{"hebrew", 1},  {"Arabic", 1},  {"HEBREW", 1},
                                                 {"english", 0}, {"arabic ", 0}, {"", 0}};
    for (const auto& [language, rightToLeft] : table)
    {
        const TestProduct resident({}, language);
        EXPECT_EQ(rightToLeft, TvkProduct("elsewhere.dll").IsDriverLanguageRTL()) << language;
    }
}

TEST(TvkProductTest, DebugMessagesAreOnBeforeTheRelease)
{
    const ConfigurationLog log;
    TraceWorld trace;
    const auto look = [&](TestSettings settings)
    {
        const TestProduct resident(settings);
        TvkProduct product;
        Number(product, "IDO_DEBUGMSG");
        return Trail(trace);
    };
    const TestSetting on("IDO_FEATURE_ON", 1ul), off("IDO_FEATURE_OFF", 2ul);
    EXPECT_EQ("@---->IDO_DEBUGMSG---->1", look({{"IDO_DRIVER_PRODUCTVERSION_STR", "0.9"}, on, off}));
    EXPECT_EQ("@---->IDO_DEBUGMSG---->2", look({{"IDO_DRIVER_PRODUCTVERSION_STR", "1.0"}, on, off}));
    EXPECT_EQ("@---->IDO_DEBUGMSG---->2", look({{"IDO_DRIVER_PRODUCTVERSION_STR", ""}, on, off}));
    EXPECT_EQ("TvkProduct::TranslateDebugMsg() --> Version not found\n@---->IDO_DEBUGMSG---->2", look({on, off}));
    // The version itself is read without a record and without the configuration library.
    EXPECT_EQ("Override---->IDO_FEATURE_ON_OVERRIDE---->2\nCFG DLL---->IDO_DEBUGMSG---->77",
              look({{"IDO_DRIVER_PRODUCTVERSION_STR", "0.1"},
                    {"IDO_DRIVER_PRODUCTVERSION_STR_OVERRIDE", ItemText},
                    {"IDO_CONFIG_DLL", "testconf.dll"},
                    {"IDO_FEATURE_ON_OVERRIDE", ItemNumber}}));
}

TEST(TvkProductTest, KeysOfTheWindowsFamily)
{
    const TestProduct resident({{"IDO_RZB_TECHNICALCONTACT_HELPFILE", "unchanged"},
                                {"IDO_RZB_TECHNICALCONTACT_HELPFILE9X", "9x"},
                                {"IDO_RZB_TECHNICALCONTACT_HELPFILENT", "nt"},
                                {"IDO_RZB_EXECUTABLENAME_PATH", "unchanged"},
                                {"IDO_RZB_EXECUTABLENAME_9X_PATH", "9x"},
                                {"IDO_RZB_EXECUTABLENAME_NT_PATH", "nt4"},
                                {"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", "2000"}});
    const struct
    {
        int platform;
        unsigned long major, minor;
        const char *helpFile, *path;
    } systems[] = {{0, 3, 10, "9x", "9x"},  {1, 4, 0, "9x", "9x"},   {1, 4, 90, "9x", "9x"},  {2, 4, 0, "nt", "nt4"},
                   {2, 5, 0, "nt", "2000"}, {2, 5, 1, "nt", "2000"}, {2, 10, 0, "nt", "2000"}};
    for (const auto& [platform, major, minor, helpFile, path] : systems)
    {
        SCOPED_TRACE(testing::Message() << "platform " << platform << ", version " << major << "." << minor);
        const FakeVersion version(platform, major, minor);
        TvkProduct product;
        EXPECT_EQ(helpFile, Text(product, "IDO_RZB_TECHNICALCONTACT_HELPFILE"));
        EXPECT_EQ(path, Text(product, "IDO_RZB_EXECUTABLENAME_PATH"));
    }
}

TEST(TvkProductTest, PreloadedCartridgesReplaceTheDefaultOnes)
{
    // clang-format off
    const TestProduct resident(
        {{"IDO_PLC_FILENAME", "testplc.ini"}, {"IDO_PLC_SECTION_NAME", "Installed"},
         {"IDO_PRELOAD_KEY_DEFINEINSTALLEDCART1", "Cart1"}, {"IDO_PRELOAD_KEY_DEFINEINSTALLEDCART2", "Cart2"},
         {"IDO_DEFAULTSTRING", "Default"}, {"IDO_DEFAULT_COLORCART", 81ul}, {"IDO_DEFAULT_BLACKCART", 49ul},
         {"*", 80ul}, {"P", 82ul}});
    // clang-format on
    const std::pair<const char*, unsigned long> table[] = {
        {"2A", 80},  {"12a", 80},     {"0x2A", 80},   {" 2Ax", 80}, {"50", 82}, {"70", 82}, {"2B", 0},
        {"100", 81}, {"Default", 81}, {"default", 0}, {"0", 81},    {"00", 81}, {"", 81},   {"zz", 81}};
    const std::string file = SystemFolder() + "testplc.ini";
    TraceWorld trace;
    TvkProduct product;
    EXPECT_EQ(81ul, Number(product, "IDO_DEFAULT_COLORCART")) << "without the file";
    for (const auto& [preloaded, cartridge] : table)
    {
        SCOPED_TRACE(preloaded);
        WritePrivateProfileStringA("Installed", "Cart1", preloaded, file.c_str());
        trace.Clear();
        EXPECT_EQ(cartridge, Number(product, "IDO_DEFAULT_COLORCART"));
        EXPECT_EQ("@---->IDO_PLC_FILENAME---->testplc.ini\n@---->IDO_PLC_SECTION_NAME---->Installed\n"
                  "@---->IDO_PRELOAD_KEY_DEFINEINSTALLEDCART1---->Cart1\n@---->IDO_DEFAULTSTRING---->Default\n"
                  "@---->IDO_DEFAULT_COLORCART---->" +
                      (cartridge ? std::to_string(cartridge) : ""),
                  Trail(trace));
    }
    EXPECT_EQ(49ul, Number(product, "IDO_DEFAULT_BLACKCART")) << "no key";
    WritePrivateProfileStringA("Installed", "Cart2", "50", file.c_str());
    EXPECT_EQ(82ul, Number(product, "IDO_DEFAULT_BLACKCART"));
    DeleteFileA(file.c_str());
}

TEST(TvkProductTest, TheKeyMayLieInTheOutput)
{
    const TestProduct resident({{"IDO_TEXT", "a value"}});
    CString text("IDO_TEXT");
    EXPECT_STREQ("a value", TvkProduct().GetSetting(text, text));
    CString none;
    EXPECT_STREQ("ERROR", TvkProduct().GetSetting(nullptr, none));
}

TEST(TvkProductTest, LeavesNothingBehind)
{
    const ConfigurationLog log;
    const TestProduct resident({{"IDO_CONFIG_DLL", "testconf.dll"},
                                {"IDO_TOKENS", "~MODEL~"},
                                {"IDO_MODEL_OVERRIDE", ItemModel},
                                {"IDO_DEFAULT_COLORCART", 1ul}});
    const TestLibrary brand("brand.dll", {{"IDO_BRAND", "x"}, {"IDO_BRAND_OVERRIDE", 1ul}, {"IDO_CONFIG_DLL", ""}});
    TraceWorld trace(4);
    ExpectNothingLeftBehind(
        [](int)
        {
            TvkProduct product;
            Text(product, "IDO_TOKENS");
            Number(product, "IDO_DEFAULT_COLORCART");
            Number(product, "IDO_MISSING");
            TvkProduct branded("brand.dll", "brand.dll");
            Text(branded, "IDO_BRAND");
        });
    EXPECT_FALSE(IsLoaded("brand.dll"));
    EXPECT_FALSE(IsLoaded("testconf.dll"));
}
