// Activities recorded through a real portal and recorder library (UsageRecorder.c), which write down how they are
// called and fail on demand; what they were given, what was traced, and what stays loaded.
#include "diag/ActivityTracker.h"
#include "support/NothingLeft.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <stdexcept>

namespace
{
const std::string DriverDirectory = SystemFolder() + "spool\\drivers\\x64\\3\\";
constexpr char Beginning[] = "create 6 3 0x2003\nserial SN-7\n";
constexpr char Release[] = "recorder release\nportal release\n";

bool IsLoaded()
{
    return GetModuleHandleA("portal.dll") || GetModuleHandleA("recorder.dll");
}

/// Copies of the two libraries in a directory, for as long as the object lives.
class InstalledRecorder
{
public:
    explicit InstalledRecorder(const std::string& directory, const std::string& portal = "usageportal.dll")
        : m_directory(directory)
    {
        EXPECT_TRUE(CopyFileA((TestFolder() + portal).c_str(), (directory + "portal.dll").c_str(), FALSE)) << directory;
        EXPECT_TRUE(
            CopyFileA((TestFolder() + "usagerecorder.dll").c_str(), (directory + "recorder.dll").c_str(), FALSE));
    }
    ~InstalledRecorder()
    {
        for (const char* library : {"portal.dll", "recorder.dll"})
            EXPECT_TRUE(DeleteFileA((m_directory + library).c_str())) << "still loaded? " << GetLastError();
    }

private:
    const std::string m_directory;
};

/// A product that records, by libraries "portal.dll" and "recorder.dll".
TestProduct RecordingProduct(const char* resourceModule = "nowhere.dll")
{
    return TestProduct({{"IDO_DATA_REC_SUPPORTED", 1ul},
                        {"IDO_CAIRNFIELD_DLL", "portal.dll"},
                        {"IDO_DATA_RECORDER_DLL", "recorder.dll"},
                        {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                        {"IDO_UTIL_RESDLL", resourceModule}});
}

std::string UsageLog()
{
    return FileText(TestFolder() + "usage.log");
}

/// What the libraries write down from their loading on, with `steps` between the beginning and the release.
std::string Journey(const std::string& directory, const std::string& steps)
{
    return "portal\nload " + directory + "recorder.dll\n" + Beginning + steps + Release;
}

class ActivityTrackerTest : public testing::Test
{
protected:
    ActivityTrackerTest()
    {
        SetEnvironmentVariableA("USAGE_LOG", (TestFolder() + "usage.log").c_str());
        Begin("");
    }
    ~ActivityTrackerTest() override
    {
        Begin("");
        SetEnvironmentVariableA("USAGE_LOG", nullptr);
        EXPECT_FALSE(IsLoaded());
    }
    void Begin(const char* fault)
    {
        SetEnvironmentVariableA("USAGE_FAULT", *fault ? fault : nullptr);
        DeleteFileA((TestFolder() + "usage.log").c_str());
        world.Clear();
    }
    TraceWorld world;
};

/// A product that records and has its libraries.
class Recording : public ActivityTrackerTest
{
protected:
    const TestProduct product = RecordingProduct();
    const InstalledRecorder installed{DriverDirectory};
    ActivityTracker tracker;
};

TEST_F(Recording, HasSixForms)
{
    char serial[] = "SN-7", text[] = "a text";
    const auto expect = [this](int result, const std::string& trace, const std::string& steps)
    {
        EXPECT_EQ(result, 1) << trace;
        EXPECT_EQ(UsageLog(), Journey(DriverDirectory, steps + "commit\n"));
        EXPECT_EQ(world.Steps(), "(char)ActivityTracker::WriteData" + trace + "\n(char)" + DriverDirectory +
                                     "portal.dll\n(char)" + DriverDirectory + "recorder.dll\n");
        EXPECT_FALSE(IsLoaded());
        Begin("");
    };
    expect(tracker.WriteData(0x1000, -5, 4294967295ul, serial), "(4096, -5, -1, SN-7)", "value 0x1000 -5 4294967295\n");
    expect(tracker.WriteData(0x1000, 5, 2ul, serial, 77), "(4096, 5, 2, SN-7, 77)",
           "topic 0x1000 77\nvalue 0x1000 5 2\n");
    expect(tracker.WriteData(0xFFFF, text, 3ul, serial), "(65535, a text, 3, SN-7)", "text 0xffff a text 3\n");
    expect(tracker.WriteData(0x1000, serial, 77), "(4096, 1, 1, SN-7, 77)", "topic 0x1000 77\nvalue 0x1000 1 1\n");
    expect(tracker.WriteData(0x1000, 9, serial), "(4096, 9, 1, SN-7)", "value 0x1000 9 1\n");
    expect(tracker.WriteData(0x6031, serial), "(24625, 1, 1, SN-7)", "value 0x6031 1 1\ndated 0x6061 0 0\n");
}

TEST_F(Recording, NotesSomeItemsOnceMoreWithTheDate)
{
    const std::pair<unsigned short, unsigned short> items[] = {
        {0x1004, 0}, {0x1005, 0x1006}, {0x1006, 0},      {0x601F, 0}, {0x6020, 0x6050}, {0x6031, 0x6061},
        {0x6032, 0}, {0x6033, 0x6063}, {0x6039, 0x6069}, {0x603A, 0}, {0x6050, 0},      {0, 0}};
    for (const auto& [item, partner] : items)
    {
        Begin("");
        EXPECT_EQ(tracker.WriteData(item, "SN-7"), 1);
        CString expected;
        expected.Format(partner ? "value 0x%x 1 1\ndated 0x%x 0 0\ncommit\n" : "value 0x%x 1 1\ncommit\n", item,
                        partner);
        EXPECT_EQ(UsageLog(), Journey(DriverDirectory, std::string(expected)));
    }
}

TEST_F(Recording, UnloadsAfterEveryFailingStep)
{
    const std::string loaded = "portal\nload " + DriverDirectory + "recorder.dll\n";
    const std::string text = "text 0x1005 t 1\n", textAndDate = text + "dated 0x1006 0 0\ncommit\n";
    const std::string topic = "topic 0x1005 3\n";
    const auto expect = [&](const char* fault, bool asText, int result, const std::string& log, const char* failure)
    {
        SCOPED_TRACE(fault);
        Begin(fault);
        EXPECT_EQ(asText ? tracker.WriteData(0x1005, "t", 1ul, "SN-7") : tracker.WriteData(0x1005, "SN-7", 3), result);
        EXPECT_EQ(UsageLog(), log);
        const std::string trace = world.Steps();
        EXPECT_EQ(trace.substr(trace.rfind(".dll\n") + 5), failure);
        EXPECT_FALSE(IsLoaded());
    };
    expect("portal=1", false, 0, "portal\n", "");
    expect("load=1", false, 0, loaded + "portal release\n", "");
    expect("create=1", false, 0, loaded + "create 6 3 0x2003\nportal release\n", "");
    expect("serial=0x80004005", true, 1, Journey(DriverDirectory, textAndDate), "");
    expect("topic=1", false, 0, Journey(DriverDirectory, topic), "(char)HelpTopic API Failed\n");
    expect("value=0x80004005", false, 0, Journey(DriverDirectory, topic + "value 0x1005 1 1\n"),
           "(char)Record API Failed\n");
    expect("text=1", true, 0, Journey(DriverDirectory, text), "(char)Record API Failed\n");
    expect("dated=0x80004005", true, 1, Journey(DriverDirectory, textAndDate), "");
    expect("commit=1", true, 0, Journey(DriverDirectory, textAndDate), "(char)Commit API Failed\n");
    for (const char* fault : {"no portal", "no recorder"}) // a missing object is fatal
    {
        Begin(fault);
        EXPECT_THROW(tracker.WriteData(1, "SN-7"), std::logic_error) << fault;
        EXPECT_FALSE(IsLoaded()) << fault;
    }
    Begin("");
    EXPECT_EQ(tracker.WriteData(1, "SN-7"), 1) << "and the next record succeeds";
}

TEST_F(ActivityTrackerTest, DoesNothingForAProductThatDoesNotRecord)
{
    const InstalledRecorder installed(DriverDirectory);
    for (const unsigned long supported : {~0ul, 0ul, 2ul})
    {
        SettingList settings = {{"IDO_CAIRNFIELD_DLL", "portal.dll"}, {"IDO_DATA_RECORDER_DLL", "recorder.dll"}};
        if (supported != ~0ul)
            settings.emplace_back("IDO_DATA_REC_SUPPORTED", supported);
        const TestProduct product(settings);
        Begin("");
        EXPECT_EQ(ActivityTracker().WriteData(1, 2, "SN-7"), 0);
        EXPECT_EQ(UsageLog(), "");
        EXPECT_EQ(world.Steps(), "(char)ActivityTracker::WriteData(1, 2, 1, SN-7)\n");
        EXPECT_EQ(world.Records().size(), 2u) << "one look-up, that of the switch";
    }
}

TEST_F(ActivityTrackerTest, LooksBesideTheResourceModuleNext)
{
    const TestProduct product = RecordingProduct(PRODUCT_PREFIX "util.dll");
    {
        const InstalledRecorder installed(TestFolder());
        EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), 1);
        EXPECT_EQ(UsageLog(), Journey(TestFolder(), "value 0x1 1 1\ncommit\n"));
        EXPECT_EQ(world.Steps(), "(char)ActivityTracker::WriteData(1, 1, 1, SN-7)\n(char)" + DriverDirectory +
                                     "portal.dll\n(char)" + TestFolder() + "recorder.dll\n");
    }
    Begin("");
    EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), 0) << "neither here nor there";
    const InstalledRecorder withoutEntryPoint(DriverDirectory, TestProduct::LibraryName());
    EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), 0) << "a library that is no portal";
    EXPECT_EQ(UsageLog(), "");
}

TEST_F(ActivityTrackerTest, NeverLoadsByABareName)
{
    const TestProduct product = RecordingProduct();  // its resource module is not loaded: the program is no substitute
    const InstalledRecorder installed(TestFolder()); // beside the program
    EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), 0);
    const Watch<decltype(&GetSystemDirectoryA)> refused("GetSystemDirectoryA", 1);
    Begin("");
    EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), 0);
    EXPECT_EQ(world.Steps(), "(char)ActivityTracker::WriteData(1, 1, 1, SN-7)\n(char)portal.dll\n");
    EXPECT_EQ(UsageLog(), "");
}

TEST_F(Recording, LeavesNothingBehind)
{
    world.RemoveSwitch();
    ExpectNothingLeftBehind(
        [](int round)
        {
            SetEnvironmentVariableA("USAGE_FAULT", round % 3 ? nullptr : round % 2 ? "create=1" : "value=1");
            EXPECT_EQ(ActivityTracker().WriteData(1, "SN-7"), round % 3 != 0);
        });
}
} // namespace
