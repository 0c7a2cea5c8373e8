// The configuration library's two-call protocol, kept and broken, and the places where the library is looked for.
#include "ConfigurationLog.h"
#include "settings/SystemConfigDLL.h"
#include "settings/TvkProduct.h"
#include "support/FakeVersion.h"
#include <gtest/gtest.h>
#include <filesystem>

namespace
{
namespace fs = std::filesystem;

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

/// The configuration library under another name in a printer driver's directory of the test's own, which is gone with
/// the object.
struct DriverLibrary
{
    DriverLibrary(const std::string& folder, const char* name)
    {
        fs::create_directories(Root + folder);
        fs::copy_file(TestFolder() + Library, Root + folder + "\\" + name);
    }
    ~DriverLibrary() { fs::remove_all(Root); }

    const std::string Root = SystemFolder() + "configtest\\";
};
const char* const DriverPath = "\\configtest\\";
} // namespace

TEST_F(SystemConfigDLLTest, AsksTwiceForATextWithTheSameBufferAndForANumberFirstWithout)
{
    SystemConfigDLL library;
    ASSERT_EQ(1, library.Initialize(Library));
    EXPECT_EQ(1, library.Initialize("another.dll")) << "the first library stays";
    CString text;
    EXPECT_STREQ("Larkmoor 5", library.GetItemData(ItemText, text));
    EXPECT_STREQ("Larkmoor 5", text);
    unsigned long number = 0;
    EXPECT_EQ(77ul, library.GetItemData(ItemNumber, number));
    EXPECT_EQ(77ul, number);
    // The size word keeps what the library wrote last.
    EXPECT_EQ("0 1 0 buffer 0: 3 11\n0 1 0 buffer 11: 0 11\n0 2 0 null 11: 3 4\n0 2 0 buffer 4: 0 4\n", m_log.Text());
}

/// Asks for a text and a number, which both fail: the outputs stay as they were.
static void ExpectFailure(SystemConfigDLL& library, unsigned long item, const char* failure)
{
    SCOPED_TRACE(item);
    CString text("untouched");
    EXPECT_STREQ(failure, library.GetItemData(item, text));
    EXPECT_STREQ("untouched", text);
    unsigned long number = 5;
    EXPECT_EQ(NoNumber, library.GetItemData(item, number));
    EXPECT_EQ(5ul, number);
}

TEST_F(SystemConfigDLLTest, ABrokenProtocolIsToldFromAMissingLibraryAndLeavesTheOutputAlone)
{
    SystemConfigDLL library;
    ASSERT_EQ(1, library.Initialize(Library));
    for (const unsigned long item : {ItemUndefined, ItemEager, ItemLate, ItemStrange, ItemInsatiable})
        ExpectFailure(library, item, "\xFF");

    const TestLibrary withoutEntryPoint("noentry.dll", {{"IDO_TEXT", "x"}});
    for (const char* name : {"", "nowhere.dll", "noentry.dll"})
    {
        SystemConfigDLL none;
        EXPECT_EQ(0, none.Initialize(name)) << name;
        ExpectFailure(none, ItemText, "ERROR_SYSCONFIGDLL_FAILURE");
        EXPECT_FALSE(GetModuleHandleA("noentry.dll")) << "freed at once";
        EXPECT_EQ(1, none.Initialize(Library)) << "a second chance";
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

TEST_F(SystemConfigDLLTest, LooksInThePrinterDriversDirectoryOnTheNtFamily)
{
    const TestProduct product({{"IDO_WINNTPATH", DriverPath}});
    const DriverLibrary before2000("2", "confold.dll"), since2000("3", "confnew.dll");
    const std::pair<CRegistry::OSVersion, const char*> cases[] = {{CRegistry::OS_WIN98, ""},
                                                                  {CRegistry::OS_WINNT4, "confold.dll"},
                                                                  {CRegistry::OS_WIN2000, "confnew.dll"},
                                                                  {CRegistry::OS_WINXP, "confnew.dll"}};
    for (const auto& [windows, found] : cases)
        for (const char* name : {"confold.dll", "confnew.dll"})
        {
            const FakeVersion version(windows);
            SystemConfigDLL library;
            CString text;
            EXPECT_EQ(library.Initialize(name), std::string(found) == name) << windows;
            library.GetItemData(ItemModel, text);
            EXPECT_STREQ(text, std::string(found) == name ? "X100" : "");
        }
}

// The product maps the very setting that tells where to look for the configuration library.
TEST_F(SystemConfigDLLTest, ItsOwnPathIsAskedWithoutTheConfigurationLibrary)
{
    const DriverLibrary library("3", "confself.dll");
    // Where it is nowhere to be found the answer is the product's own value, after one search.
    const char* const cases[][3] = {{"confself.dll", DriverPath, "X100"},
                                    {"nowhere.dll", "\\~MODEL~\\", "\\~MODEL~\\"}};
    for (const auto& [name, own, answer] : cases)
    {
        const TestProduct product({{"IDO_CONFIG_DLL", name},
                                   {"IDO_WINNTPATH", own},
                                   {"IDO_WINNTPATH_OVERRIDE", ItemModel},
                                   {"IDO_MODEL_OVERRIDE", ItemModel}});
        CString path;
        EXPECT_STREQ(answer, TvkProduct().GetSetting("IDO_WINNTPATH", path));
    }
}
