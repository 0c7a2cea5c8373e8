// The user's participation level and the printer's cached status, from the sample product's own libraries; what is
// traced, and that no library stays loaded.
#include "links/CComxDataRetriever.h"
#include "links/CDataRetriever.h"
#include "support/FakeVersion.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <filesystem>

namespace
{
namespace fs = std::filesystem;
using testing::StartsWith;

const char* const Participation = "test_participation.dll";
const char* const Communication = "test_communication.dll";
const char* const FullCache = "test_fullcache.dll";
const char* const Printer = "Torvane Larkmoor 460";
const char* const FirstFailure = "(char)LoadLibrary() Failed, trying alternate path. Return Error Code:\n(DWORD)126\n";
const std::string DriverRoot = "C:\\windows\\system32\\retriever test\\";

void WriteIni(const std::string& file, const char* section, const char* key, const char* value)
{
    ASSERT_TRUE(WritePrivateProfileStringA(section, key, value, file.c_str())) << file << ": " << GetLastError();
}

TestProduct ParticipationProduct(const char* fileName)
{
    return TestProduct({{"IDO_DATARETRIEVER_FILENAME", fileName}});
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
    const TestProduct product = ParticipationProduct(Participation);
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
        EXPECT_EQ(retriever.GetParticipationLevel(), 9) << other;
    }
    DeleteFileA(m_ini.c_str());
    CreateDirectoryA(m_ini.c_str(), nullptr);
    EXPECT_EQ(retriever.SetParticipationLevel(1), 0) << "the library could not keep it";
    RemoveDirectoryA(m_ini.c_str());
}

TEST_F(ParticipationLevel, NeedsALibraryWithEntries)
{
    const auto expectNone = [](const TestProduct&, int set)
    {
        const TraceWorld trace;
        EXPECT_EQ(CDataRetriever().SetParticipationLevel(1), set);
        EXPECT_EQ(CDataRetriever().GetParticipationLevel(), 0);
        EXPECT_EQ(trace.Records().back(), "(char)CDataRetriever::GetParticipationLevel()...level = 0");
        EXPECT_FALSE(GetModuleHandleA(Communication)) << "still loaded";
    };
    expectNone(TestProduct({}), 0);
    for (const char* library : {"nowhere.dll", ""})
        expectNone(ParticipationProduct(library), 0);
    expectNone(ParticipationProduct(Communication), 1); // no such entry: nothing to remember
}

class PrinterCache : public testing::Test
{
protected:
    PrinterCache() { fs::create_directories(DriverRoot + "3"); }
    ~PrinterCache() override
    {
        EXPECT_FALSE(GetModuleHandleA("cache.dll")) << "still loaded";
        fs::remove_all(DriverRoot);
    }
    static void Install(const char* library, const std::string& folder = DriverRoot + "3\\")
    {
        fs::create_directories(folder);
        fs::copy_file(TestFolder() + library, folder + "cache.dll", fs::copy_options::overwrite_existing);
        const char* const values[][2] = {{"SerialNumber", "LM460-0142"}, {"InkStyle", "2"},
                                         {"InkPercent1", "61"},          {"InkPercent10", "70"},
                                         {"LogicalCartridge1", "48"},    {"LogicalCartridge2", "80"},
                                         {"PhysicalCartridge2", "82"},   {"SavedCartridge1", "50"}};
        for (const auto& [key, value] : values)
            WriteIni(folder + "cache.ini", Printer, key, value);
    }
    /// The records without the settings' own, one a line.
    static std::string Records(const TraceWorld& trace)
    {
        std::string records;
        for (const std::string& record : trace.Records())
            if (record.find("GetSetting") == std::string::npos && record.find("IDO_") == std::string::npos)
                records += record + "\n";
        return records;
    }
    /// The records of every question up to the library's loading.
    static std::string Beginning()
    {
        return "(char)CComxDataRetriever::GetPrinterCacheData()\n(char)CComxDataRetriever::LoadComxDLL()\n"
               "(char)dlltoload: \n(char)" +
               DriverRoot + "3\\cache.dll\n";
    }
};

TestProduct CacheProduct(const char* resourceModule = "nowhere.dll")
{
    return TestProduct({{"IDO_COMX_DLL_FILENAME", "cache.dll"},
                        {"IDO_WINNTPATH", "\\retriever test\\"},
                        {"IDO_UTIL_RESDLL", resourceModule}});
}

TEST_F(PrinterCache, AnswersWhatThePrinterReportedLast)
{
    const TestProduct product = CacheProduct();
    Install(Communication);
    TraceWorld trace;
    CComxDataRetriever retriever;
    EXPECT_EQ(retriever.GetInkPercent(1), 0u);
    EXPECT_EQ(retriever.GetPrinterCacheData(Printer), 1);
    EXPECT_EQ(Records(trace), Beginning() +
                                  "(char)COMX DLL Loaded!\n(char)m_bLoaded ==\n(int)1\n"
                                  "(char)lpFriendlyName ==\n(char)" +
                                  Printer +
                                  "\n(char)pGetCache(): pfnRet ==\n(int)0\n"
                                  "(char)GetPrinterCacheData(): bReturn\n(int)1\n");
    EXPECT_STREQ(retriever.GetSerialNumber(), "LM460-0142");
    EXPECT_EQ(retriever.GetInkStyle(), 2u);
    const unsigned long levels[] = {0, 61, 0, 0, 0, 0, 0, 0, 0, 0, 70, 0};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(retriever.GetInkPercent(i), levels[i]) << i;
    const unsigned long cartridges[][3] = {{0, 0, 0}, {48, 0, 50}, {80, 82, 0}, {0, 0, 0}};
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(retriever.GetLogCartId(i), cartridges[i][0]) << i;
        EXPECT_EQ(retriever.GetPhysCartId(i), cartridges[i][1]) << i;
        EXPECT_EQ(retriever.GetSavedCartId(i), cartridges[i][2]) << i;
    }
    EXPECT_EQ(retriever.GetInkPercent(-1), 0u);

    trace.Switch(0);
    EXPECT_EQ(retriever.GetPrinterCacheData("another printer"), 0);
    EXPECT_STREQ(retriever.GetSerialNumber(), "") << "not this printer's";
    EXPECT_EQ(retriever.GetInkPercent(1), 0u);
}

TEST_F(PrinterCache, TakesNoMoreThanTheCacheHolds)
{
    const TestProduct product = CacheProduct();
    Install(FullCache);
    CComxDataRetriever retriever;
    EXPECT_EQ(retriever.GetPrinterCacheData("0"), 1);
    EXPECT_EQ(std::string(retriever.GetSerialNumber()), std::string(PRINTERCACHE_SERIAL_SIZE, 'x'));
    EXPECT_EQ(retriever.GetSavedCartId(2), 0x78787878u);
    EXPECT_EQ(retriever.GetPrinterCacheData("5, filled in part"), 0);
    EXPECT_STREQ(retriever.GetSerialNumber(), "");
    EXPECT_EQ(retriever.GetSavedCartId(2), 0u);
}

TEST_F(PrinterCache, LooksBesideTheResourceModuleToo)
{
    const TestProduct product = CacheProduct(TvkProduct::GetProductPrefix() + "util.dll");
    const std::string copy = TestFolder() + "cache.dll";
    fs::copy_file(TestFolder() + FullCache, copy);
    const TraceWorld trace;
    EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData("0"), 1);
    EXPECT_THAT(Records(trace), StartsWith(Beginning() + FirstFailure + "(char)COMX DLL Loaded!\n"));
    EXPECT_TRUE(fs::remove(copy)) << "still loaded";
}

TEST_F(PrinterCache, NeedsALibraryWithTheEntry)
{
    const auto expectFailure = [](const std::string& loading, const char* loaded)
    {
        const TraceWorld trace;
        EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData(Printer), 0);
        EXPECT_EQ(Records(trace), Beginning() + loading + "(char)m_bLoaded ==\n" + loaded +
                                      "\n(char)pGetCache == NULL\n(char)GetPrinterCacheData(): bReturn\n(int)0\n");
    };
    const std::string failed = std::string(FirstFailure) + "(char)LoadLibrary() Return Error Code:\n(DWORD)126\n";
    {
        const TestProduct product = CacheProduct();
        expectFailure(failed, "(int)0");
        Install(Participation);
        expectFailure("(char)COMX DLL Loaded!\n", "(int)1");
    }
    fs::remove_all(DriverRoot);
    const TestProduct product = CacheProduct(TvkProduct::GetProductPrefix() + "util.dll");
    expectFailure(failed, "(int)0");
}

TEST_F(PrinterCache, LiesInTheDriversDirectoryOfTheWindowsFamily)
{
    const TestProduct product = CacheProduct();
    const std::pair<CRegistry::OSVersion, std::string> cases[] = {{CRegistry::OS_WIN98, SystemFolder()},
                                                                  {CRegistry::OS_WINNT4, DriverRoot + "2\\"},
                                                                  {CRegistry::OS_WINXP, DriverRoot + "3\\"}};
    for (const auto& [windows, folder] : cases)
    {
        const FakeVersion version(windows);
        Install(Communication, folder);
        EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData(Printer), 1) << folder;
        fs::remove(folder + "cache.dll");
        fs::remove(folder + "cache.ini");
        EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData(Printer), 0) << folder;
    }
}
} // namespace
