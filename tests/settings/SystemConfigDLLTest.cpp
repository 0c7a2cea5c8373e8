// The configuration library's two-call protocol, kept and broken, and the places where the library is looked for.
#include "ConfigItems.h"
#include "settings/SystemConfigDLL.h"
#include "settings/TvkProduct.h"
#include "support/Probe.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <fstream>
#include <iterator>

namespace
{
constexpr char Library[] = "testconf.dll";
constexpr unsigned long NoNumber = 0xFFFFFFFF;

std::string Log()
{
    std::ifstream file(TestFolder() + "testconf.log", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Every test begins without a log of the configuration library and leaves none.
class SystemConfigDLLTest : public testing::Test
{
  protected:
    SystemConfigDLLTest() { DeleteFileA((TestFolder() + "testconf.log").c_str()); }
    ~SystemConfigDLLTest() override
    {
        DeleteFileA((TestFolder() + "testconf.log").c_str());
        EXPECT_FALSE(GetModuleHandleA(Library)) << "the configuration library is still loaded";
    }
};
} // namespace

TEST_F(SystemConfigDLLTest, AsksTwiceForATextWithTheSameBufferAndForANumberFirstWithout)
{
    SystemConfigDLL library;
    ASSERT_EQ(1, library.Initialize(Library));
    CString text;
    EXPECT_STREQ("Larkmoor 5", library.GetItemData(ItemText, text));
    EXPECT_STREQ("Larkmoor 5", text);
    unsigned long number = 0;
    EXPECT_EQ(77ul, library.GetItemData(ItemNumber, number));
    EXPECT_EQ(77ul, number);
    // The size word keeps what the library wrote last.
    EXPECT_EQ("0 1 0 buffer 0: 3 11\n"
              "0 1 0 buffer 11: 0 11\n"
              "0 2 0 null 11: 3 4\n"
              "0 2 0 buffer 4: 0 4\n",
              Log());
}

TEST_F(SystemConfigDLLTest, ABrokenProtocolIsToldFromAMissingLibraryAndLeavesTheOutputAlone)
{
    SystemConfigDLL library;
    ASSERT_EQ(1, library.Initialize(Library));
    for (const unsigned long item : {ItemUndefined, ItemEager, ItemLate, ItemStrange, ItemInsatiable})
    {
        SCOPED_TRACE(item);
        CString text("untouched");
        EXPECT_STREQ("\xFF", library.GetItemData(item, text));
        EXPECT_STREQ("untouched", text);
        unsigned long number = 5;
        EXPECT_EQ(NoNumber, library.GetItemData(item, number));
        EXPECT_EQ(5ul, number);
    }
}

TEST_F(SystemConfigDLLTest, ReadsAtMostItsBufferWhateverSizeIsDeclared)
{
    SystemConfigDLL library(Library);
    unsigned long number = 0;
    library.GetItemData(ItemNumber, number); // lies behind the text's buffer from now on
    CString text;
    EXPECT_EQ(std::string(256, 'x'), static_cast<LPCSTR>(library.GetItemData(ItemUnterminated, text)));
    EXPECT_EQ(256, text.GetLength());
}

TEST_F(SystemConfigDLLTest, KeepsTheFirstLibrary)
{
    SystemConfigDLL library(Library);
    EXPECT_EQ(1, library.Initialize("another.dll"));
    CString text;
    EXPECT_STREQ("X100", library.GetItemData(ItemModel, text));
}

TEST_F(SystemConfigDLLTest, AnswersFailureWithoutALibrary)
{
    const TestLibrary withoutEntryPoint("noentry.dll", {{"IDO_TEXT", "x"}});
    for (const char* name : {"", "nowhere.dll", "noentry.dll"})
    {
        SCOPED_TRACE(name);
        SystemConfigDLL library;
        EXPECT_EQ(0, library.Initialize(name));
        CString text("untouched");
        EXPECT_STREQ("ERROR_SYSCONFIGDLL_FAILURE", library.GetItemData(ItemText, text));
        EXPECT_STREQ("untouched", text);
        unsigned long number = 5;
        EXPECT_EQ(NoNumber, library.GetItemData(ItemNumber, number));
        EXPECT_EQ(5ul, number);
    }
    EXPECT_FALSE(GetModuleHandleA("noentry.dll")) << "freed at once";
    SystemConfigDLL secondChance("nowhere.dll");
    EXPECT_EQ(1, secondChance.Initialize(Library));
}

/// Asks a library that lies only in a printer driver's directory: prints the answer.
PROBE(DriverDirectory)
{
    SystemConfigDLL library;
    const int loaded = library.Initialize(argv[0]);
    CString text;
    std::printf("%d %s\n", loaded, static_cast<LPCSTR>(library.GetItemData(ItemModel, text)));
    return 0;
}

TEST_F(SystemConfigDLLTest, LooksInThePrinterDriversDirectoryOnTheNtFamily)
{
    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, MAX_PATH);
    const std::string drivers = std::string(system) + "\\spool\\drivers\\x64\\";
    const bool madeOld = CreateDirectoryA((drivers + "2").c_str(), nullptr);
    const std::string oldLibrary = drivers + "2\\confold.dll", newLibrary = drivers + "3\\confnew.dll";
    ASSERT_TRUE(CopyFileA((TestFolder() + Library).c_str(), oldLibrary.c_str(), FALSE));
    ASSERT_TRUE(CopyFileA((TestFolder() + Library).c_str(), newLibrary.c_str(), FALSE));
    const struct
    {
        const char* windows;
        const char* inOld;
        const char* inNew;
    } table[] = {
        {"win98", "0 ERROR_SYSCONFIGDLL_FAILURE\n", "0 ERROR_SYSCONFIGDLL_FAILURE\n"},
        {"nt40", "1 X100\n", "0 ERROR_SYSCONFIGDLL_FAILURE\n"},
        {"win2k", "0 ERROR_SYSCONFIGDLL_FAILURE\n", "1 X100\n"},
        {"win10", "0 ERROR_SYSCONFIGDLL_FAILURE\n", "1 X100\n"},
    };
    for (const auto& row : table)
    {
        SCOPED_TRACE(row.windows);
        EXPECT_EQ(row.inOld, RunProbeUnder(row.windows, "DriverDirectory", {"confold.dll"}).output);
        EXPECT_EQ(row.inNew, RunProbeUnder(row.windows, "DriverDirectory", {"confnew.dll"}).output);
    }
    for (const std::string& library : {oldLibrary, newLibrary})
    {
        DeleteFileA(library.c_str());
        DeleteFileA((library.substr(0, library.size() - 4) + ".log").c_str());
    }
    if (madeOld)
        RemoveDirectoryA((drivers + "2").c_str());
}

// The product maps the very setting that tells where to look for the configuration library.
TEST_F(SystemConfigDLLTest, ItsOwnPathIsAskedWithoutTheConfigurationLibrary)
{
    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, MAX_PATH);
    const std::string library = std::string(system) + "\\spool\\drivers\\x64\\3\\confself.dll";
    ASSERT_TRUE(CopyFileA((TestFolder() + Library).c_str(), library.c_str(), FALSE));
    {
        const TestProduct product({{"IDO_CONFIG_DLL", "confself.dll"},
                                   {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                                   {"IDO_WINNTPATH_OVERRIDE", ItemModel + 0ul}});
        CString path;
        EXPECT_STREQ("X100", TvkProduct().GetSetting("IDO_WINNTPATH", path));
    }
    {
        // Nowhere to be found: the product's own value, after one search.
        const TestProduct product({{"IDO_CONFIG_DLL", "nowhere.dll"},
                                   {"IDO_WINNTPATH", "\\~MODEL~\\"},
                                   {"IDO_WINNTPATH_OVERRIDE", ItemModel + 0ul},
                                   {"IDO_MODEL_OVERRIDE", ItemModel + 0ul}});
        CString path;
        EXPECT_STREQ("\\~MODEL~\\", TvkProduct().GetSetting("IDO_WINNTPATH", path));
    }
    DeleteFileA(library.c_str());
    DeleteFileA((library.substr(0, library.size() - 4) + ".log").c_str());
}
