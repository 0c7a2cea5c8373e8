// The user's participation level and the printer's cached status, from the sample product's own libraries; what is
// traced, and that no library stays loaded.
#include "links/CComxDataRetriever.h"
#include "links/CDataRetriever.h"
#include "diag/ActivityTracker.h"
#include "ink/CGUIInkDisplay.h"
#include "links/CGUIUrlLink.h"
#include "locale/OEMTeleIni.h"
#include "support/FakeVersion.h"
#include "support/MessageBoxes.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <filesystem>

namespace
{
namespace fs = std::filesystem;

const char* const Participation = "test_participation.dll";
const char* const Communication = "test_communication.dll";
const char* const FullCache = "test_fullcache.dll";
const char* const Printer = "Torvane Larkmoor 460";
const std::string DriverRoot = "C:\\windows\\system32\\retriever test\\";

void WriteIni(const std::string& file, const char* section, const char* key, const char* value)
{
    ASSERT_TRUE(WritePrivateProfileStringA(section, key, value, file.c_str())) << file << ": " << GetLastError();
}

class ParticipationLevel : public testing::Test
{
protected:
    ~ParticipationLevel() override
    {
        DeleteFileA(m_ini.c_str());
        EXPECT_FALSE(GetModuleHandleA(Participation)) << "still loaded";
    }
    const std::string m_ini = TestFolder() + "test_participation.ini";
};

TEST_F(ParticipationLevel, IsKeptByTheLibrary)
{
    const TestProduct product({{"IDO_DATARETRIEVER_FILENAME", Participation}});
    CDataRetriever retriever;
    EXPECT_EQ(retriever.GetParticipationLevel(), 9) << "not asked yet";
    const std::pair<int, int> levels[] = {{1, 2}, {0, 3}, {1, 2}, {2, 3}, {-1, 3}};
    for (const auto& [level, kept] : levels)
    {
        EXPECT_EQ(retriever.SetParticipationLevel(level), 1) << level;
        EXPECT_EQ(GetPrivateProfileIntA("Participation", "Level", 0, m_ini.c_str()), static_cast<UINT>(kept)) << level;
        EXPECT_EQ(CDataRetriever().GetParticipationLevel(), kept) << level;
    }
    for (const char* other : {"0", "1", "4", "9", "-2"})
    {
        WriteIni(m_ini, "Participation", "Level", other);
        const TraceWorld trace;
        EXPECT_EQ(retriever.GetParticipationLevel(), 9) << other;
        EXPECT_EQ(trace.Records().back(), "(char)CDataRetriever::GetParticipationLevel()...level = 9");
    }
    DeleteFileA(m_ini.c_str());
    CreateDirectoryA(m_ini.c_str(), nullptr);
    EXPECT_EQ(retriever.SetParticipationLevel(1), 0) << "the library could not keep it";
    RemoveDirectoryA(m_ini.c_str());
}

TEST_F(ParticipationLevel, NeedsALibraryWithEntries)
{
    // A library without the entry has nothing to remember.
    for (const char* library : {"nowhere.dll", "", Communication})
    {
        const TestProduct product({{"IDO_DATARETRIEVER_FILENAME", library}});
        const TraceWorld trace;
        EXPECT_EQ(CDataRetriever().SetParticipationLevel(1), library == Communication);
        EXPECT_EQ(CDataRetriever().GetParticipationLevel(), 0);
        EXPECT_EQ(trace.Records().back(), "(char)CDataRetriever::GetParticipationLevel()...level = 0");
        EXPECT_FALSE(GetModuleHandleA(Communication)) << "still loaded";
    }
}

class PrinterCache : public testing::Test
{
protected:
    ~PrinterCache() override
    {
        EXPECT_FALSE(GetModuleHandleA("cache.dll")) << "still loaded";
        fs::remove_all(DriverRoot);
    }
    static TestProduct Product(const char* resourceModule = "nowhere.dll")
    {
        return TestProduct({{"IDO_COMX_DLL_FILENAME", "cache.dll"},
                            {"IDO_WINNTPATH", "\\retriever test\\"},
                            {"IDO_UTIL_RESDLL", resourceModule}});
    }
    static void Install(const char* library, const std::string& folder = DriverRoot + "3\\")
    {
        fs::create_directories(folder);
        fs::copy_file(TestFolder() + library, folder + "cache.dll");
    }
    /// The trace, one record a line; of the look-up of a setting its key.
    static std::string Records(const TraceWorld& trace)
    {
        std::string records;
        for (const std::string& record : trace.Records())
        {
            const std::size_t key = std::min(record.find("IDO_"), record.size());
            records += (key < record.size() ? record.substr(key, record.find('-', key) - key) : record) + "\n";
        }
        return records;
    }
};

TEST_F(PrinterCache, AnswersWhatThePrinterReportedLast)
{
    const TestProduct product = Product();
    Install(Communication);
    const char* const values[][2] = {{"SerialNumber", "LM460-0142"}, {"InkStyle", "2"},
                                     {"InkPercent1", "61"},          {"InkPercent10", "70"},
                                     {"LogicalCartridge1", "48"},    {"LogicalCartridge2", "80"},
                                     {"PhysicalCartridge2", "82"},   {"SavedCartridge1", "50"}};
    for (const auto& [key, value] : values)
        WriteIni(DriverRoot + "3\\cache.ini", Printer, key, value);
    CComxDataRetriever retriever;
    EXPECT_EQ(retriever.GetInkPercent(1), 0u);
    EXPECT_EQ(retriever.GetPrinterCacheData(Printer), 1);
    EXPECT_STREQ(retriever.GetSerialNumber(), "LM460-0142");
    EXPECT_EQ(retriever.GetInkStyle(), 2u);
    for (int i = -1; i < 12; ++i)
        EXPECT_EQ(retriever.GetInkPercent(i), i == 1 ? 61u : i == 10 ? 70u : 0u) << i;
    const unsigned long cartridges[][3] = {{0, 0, 0}, {48, 0, 50}, {80, 82, 0}, {0, 0, 0}};
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(retriever.GetLogCartId(i), cartridges[i][0]) << i;
        EXPECT_EQ(retriever.GetPhysCartId(i), cartridges[i][1]) << i;
        EXPECT_EQ(retriever.GetSavedCartId(i), cartridges[i][2]) << i;
    }
    EXPECT_EQ(retriever.GetPrinterCacheData("another printer"), 0);
    EXPECT_STREQ(retriever.GetSerialNumber(), "") << "not this printer's";
    EXPECT_EQ(retriever.GetInkPercent(1), 0u);
}

TEST_F(PrinterCache, TakesNoMoreThanTheCacheHolds)
{
    const TestProduct product = Product();
    Install(FullCache);
    CComxDataRetriever retriever;
    EXPECT_EQ(retriever.GetPrinterCacheData("0"), 1);
    EXPECT_EQ(std::string(retriever.GetSerialNumber()), std::string(PRINTERCACHE_SERIAL_SIZE, 'x'));
    EXPECT_EQ(retriever.GetSavedCartId(2), 0x78787878u);
    EXPECT_EQ(retriever.GetPrinterCacheData("5, filled in part"), 0);
    EXPECT_STREQ(retriever.GetSerialNumber(), "");
    EXPECT_EQ(retriever.GetSavedCartId(2), 0u);
}

TEST_F(PrinterCache, IsTheLibrarysOfTheDriverOrBesideTheResourceModule)
{
    const std::string none, folder2 = DriverRoot + "2\\", folder3 = DriverRoot + "3\\", system = SystemFolder(),
                            own = PRODUCT_PREFIX "util.dll";
    const std::string retried = "(char)LoadLibrary() Failed, trying alternate path. Return Error Code:\n(DWORD)126\n"
                                "IDO_UTIL_RESDLL\n",
                      failed = "(char)LoadLibrary() Return Error Code:\n(DWORD)126\n(char)m_bLoaded ==\n(int)0\n",
                      loaded = "(char)COMX DLL Loaded!\n(char)m_bLoaded ==\n(int)1\n",
                      noEntry = "(char)pGetCache == NULL\n",
                      asked = "(char)lpFriendlyName ==\n(char)0\n(char)pGetCache(): pfnRet ==\n(int)0\n";
    const struct
    {
        CRegistry::OSVersion windows;
        std::string driver;
        const char* library;
        std::string in, resourceModule, trace;
    } cases[] = {
        {CRegistry::OS_WINXP, folder3, FullCache, folder3, none, loaded + asked},
        {CRegistry::OS_WINNT4, folder2, FullCache, folder2, none, loaded + asked},
        {CRegistry::OS_WIN98, system, FullCache, system, none, loaded + asked},
        {CRegistry::OS_WINXP, folder3, FullCache, TestFolder(), own, retried + loaded + asked},
        // Beside the program, where the system would find it by its bare name.
        {CRegistry::OS_WINXP, folder3, FullCache, TestFolder(), "nowhere.dll", retried + failed + noEntry},
        // A system directory that is too long is none.
        {CRegistry::OS_WINXP, none, FullCache, TestFolder(), "nowhere.dll", retried + failed + noEntry},
        {CRegistry::OS_WINXP, folder3, FullCache, folder2, own, retried + failed + noEntry},
        {CRegistry::OS_WINXP, folder3, Participation, folder3, none, loaded + noEntry},
    };
    for (const auto& [windows, driver, library, in, resourceModule, steps] : cases)
    {
        SCOPED_TRACE(in + " " + resourceModule);
        const TestProduct product = Product(resourceModule.c_str());
        const FakeVersion version(windows);
        const Watch<decltype(&GetSystemDirectoryA)> asksForSystem("GetSystemDirectoryA", driver.empty(),
                                                                  LibraryUnderTest(), 256);
        const TraceWorld trace;
        Install(library, in);
        const int result = steps.ends_with(asked);
        EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData("0"), result);
        EXPECT_EQ(Records(trace),
                  "(char)CComxDataRetriever::GetPrinterCacheData()\n(char)CComxDataRetriever::LoadComxDLL()\n" +
                      std::string(windows == CRegistry::OS_WIN98 ? "" : "IDO_WINNTPATH\n") +
                      "IDO_COMX_DLL_FILENAME\n(char)dlltoload: \n(char)" + driver + "cache.dll\n" + steps +
                      "(char)GetPrinterCacheData(): bReturn\n(int)" + std::to_string(result) + "\n");
        EXPECT_TRUE(fs::remove(in + "cache.dll")) << "still loaded";
    }
}

std::string g_asked;
template <class... A>
UINT WINAPI TooLong(A... arguments)
{
    const auto size = std::get<sizeof...(A) - 1>(std::tuple(arguments...));
    g_asked += (sizeof...(A) == 2 ? "system " : "module ") + std::to_string(size) + " ";
    return static_cast<UINT>(size);
}

TEST(Directories, AreReadIntoTheRoomThatEachPathHas)
{
    struct Link : CGUIUrlLink
    {
        Link() { m_bReadIniURL = 1, ConstructStandardURL(""); }
    };
    const TestProduct product({{"IDO_UTIL_DLL", PRODUCT_PREFIX "util.dll"},
                               {"IDO_UTIL_RESDLL", PRODUCT_PREFIX "util.dll"},
                               {"IDO_DATA_REC_SUPPORTED", 1ul}});
    const MessageBoxes boxes;
    const IatPatch system(LibraryUnderTest(), "GetSystemDirectoryA", TooLong<LPSTR, UINT>);
    const IatPatch module(LibraryUnderTest(), "GetModuleFileNameA", TooLong<HMODULE, LPSTR, DWORD>);
    CString number;
    const std::pair<std::function<void()>, const char*> paths[] = {
        {[&] { OEMTeleIni().GetPhoneNumber("00000409", number); }, "system 260 "},
        {[] { OEMTeleIni().OnSelectCountryLink(); }, "module 256 "},
        {[] { ActivityTracker().WriteData(1, ""); }, "system 260 module 256 "},
        {[] { CComxDataRetriever().GetPrinterCacheData(""); }, "system 256 module 256 "},
        {[] { Link(); }, "system 256 "},
        {[] { CGUIInkDisplay().LaunchInkOrderApp(); }, "system 256 "}};
    for (const auto& [use, asked] : paths)
    {
        g_asked.clear();
        use();
        EXPECT_EQ(g_asked, asked);
    }
}
} // namespace
