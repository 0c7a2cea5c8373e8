// The configuration library's two-call protocol, kept and broken, and the places where the library is looked for.
#include "ConfigurationLog.h"
#include "settings/SystemConfigDLL.h"
#include "settings/TvkProduct.h"
#include "support/Probe.h"
#include <gtest/gtest.h>

namespace
{
constexpr char Library[] = "testconf.dll";
constexpr unsigned long NoNumber = 0xFFFFFFFF;

class SystemConfigDLLTest : public testing::Test
{
protected:
    ~SystemConfigDLLTest() override
    {
        EXPECT_FALSE(GetModuleHandleA(Library)) << "the configuration library is still loaded";
    }

    const ConfigurationLog m_log;
};

/// A copy of the configuration library in a folder of the printer drivers, gone with its log after the test.
class DriverLibrary
{
public:
    explicit DriverLibrary(const std::string& path) : m_path(SystemFolder() + "spool\\drivers\\x64\\" + path)
    {
        EXPECT_TRUE(CopyFileA((TestFolder() + Library).c_str(), m_path.c_str(), FALSE)) << m_path;
    }
    ~DriverLibrary()
    {
        DeleteFileA(m_path.c_str());
        DeleteFileA((m_path.substr(0, m_path.size() - 4) + ".log").c_str());
    }
    DriverLibrary(const DriverLibrary&) = delete;
    DriverLibrary& operator=(const DriverLibrary&) = delete;

private:
    std::string m_path;
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
              m_log.Text());
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
    const std::string old = SystemFolder() + "spool\\drivers\\x64\\2";
    const bool madeOld = CreateDirectoryA(old.c_str(), nullptr);
    {
        const DriverLibrary before2000("2\\confold.dll"), since2000("3\\confnew.dll");
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
    }
    if (madeOld)
        RemoveDirectoryA(old.c_str());
}

// The product maps the very setting that tells where to look for the configuration library.
TEST_F(SystemConfigDLLTest, ItsOwnPathIsAskedWithoutTheConfigurationLibrary)
{
    const DriverLibrary library("3\\confself.dll");
    {
        const TestProduct product({{"IDO_CONFIG_DLL", "confself.dll"},
                                   {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                                   {"IDO_WINNTPATH_OVERRIDE", ItemModel}});
        CString path;
        EXPECT_STREQ("X100", TvkProduct().GetSetting("IDO_WINNTPATH", path));
    }
    {
        // Nowhere to be found: the product's own value, after one search.
        const TestProduct product({{"IDO_CONFIG_DLL", "nowhere.dll"},
                                   {"IDO_WINNTPATH", "\\~MODEL~\\"},
                                   {"IDO_WINNTPATH_OVERRIDE", ItemModel},
                                   {"IDO_MODEL_OVERRIDE", ItemModel}});
        CString path;
        EXPECT_STREQ("\\~MODEL~\\", TvkProduct().GetSetting("IDO_WINNTPATH", path));
    }
}
