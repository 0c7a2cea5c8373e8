// Where records go: the switch, the log file, message boxes, the debugger.
#include "diag/CSpy.h"
#include "support/MessageBoxes.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <fstream>
#include <sstream>

namespace
{
using Texts = std::vector<std::string>;

class TraceSinks : public testing::Test
{
protected:
    /// The message boxes since the last call, without their time stamps.
    static Texts Boxes()
    {
        Texts boxes = MessageBoxes::Shown();
        std::ranges::transform(boxes, boxes.begin(), WithoutTimeStamp);
        return boxes;
    }

    TraceWorld world;
    const MessageBoxes boxes;
};

// Opens the log so that others are held off, or is held off itself.
HANDLE OpenLog(DWORD share)
{
    return CreateFileA(TraceWorld::LogPath().c_str(), GENERIC_READ, share, nullptr, OPEN_ALWAYS, 0, nullptr);
}
} // namespace

TEST_F(TraceSinks, TheSwitchChoosesTheSinks)
{
    static Texts debugged;
    const IatPatch debugger(
        LibraryUnderTest(), "OutputDebugStringA",
        +[](LPCSTR text) -> void { debugged.push_back(WithoutTimeStamp(text)); });
    const auto expect =
        [&](const char* situation, unsigned long type, const std::string& data, bool file, bool box, bool debugger)
    {
        SCOPED_TRACE(situation);
        world.Clear();
        debugged.clear();
        if (type == REG_NONE)
            world.RemoveSwitch();
        else
            world.Switch(type, data);
        CSpy spy;
        world.Switch(1); // read when the object was made, never again
        EXPECT_EQ(spy.OutputData(42), 1);
        EXPECT_EQ(world.Records(), file ? Texts{"(int)42"} : Texts{});
        EXPECT_EQ(Boxes(), box ? Texts{"(int)42\n|GUI debug|0|0"} : Texts{});
        EXPECT_EQ(debugged, debugger ? Texts{"(int)42\n"} : Texts{});
    };
    expect("0", REG_DWORD, {"\0\0\0\0", 4}, false, false, false);
    expect("1", REG_DWORD, {"\1\0\0\0", 4}, true, false, false);
    expect("2", REG_DWORD, {"\2\0\0\0", 4}, false, true, false);
    expect("3", REG_DWORD, {"\3\0\0\0", 4}, true, true, false);
    expect("4", REG_DWORD, {"\4\0\0\0", 4}, false, false, true);
    expect("5", REG_DWORD, {"\5\0\0\0", 4}, false, false, false);
    expect("all bits", REG_DWORD, "\xFF\xFF\xFF\xFF", false, false, false);
    expect("no value", REG_NONE, "", false, false, false);
    expect("four bytes of another type", REG_BINARY, {"\1\0\0\0", 4}, true, false, false);
    expect("text of four bytes", REG_SZ, {"\4\0\0\0", 4}, false, false, true);
    expect("one byte", REG_BINARY, "\1", false, false, false);
    expect("no bytes", REG_BINARY, "", false, false, false);
    expect("eight bytes", REG_QWORD, {"\1\0\0\0\0\0\0\0", 8}, false, false, false);
    expect("text", REG_SZ, {"1\0", 2}, false, false, false);
}

TEST_F(TraceSinks, WhoMayNotWriteToTheKeyGetsNoTracing)
{
    {
        RegistryWorld registry;
        registry.Restrict(HKEY_LOCAL_MACHINE, "SOFTWARE\\TORVANE", KEY_READ);
        EXPECT_EQ(CSpy().OutputData(42), 1);
    }
    EXPECT_EQ(world.Log(), "");
    CSpy().OutputData(42);
    EXPECT_EQ(world.Records(), Texts{"(int)42"});
}

TEST_F(TraceSinks, SwitchedOffNothingIsFormattedAndOnTheLastErrorStays)
{
    for (const bool on : {false, true})
    {
        world.Switch(on ? 3 : 0);
        CSpy spy;
        const Watch<decltype(&GetLocalTime)> timesAsked("GetLocalTime");
        SetLastError(12345);
        spy.OutputData(1);
        spy.OutputData("text");
        EXPECT_EQ(GetLastError(), 12345u);
        EXPECT_EQ(timesAsked.Calls(), on ? 2 : 0);
    }
}

TEST_F(TraceSinks, RecordsThatComeUpDuringAMessageBoxAreRecordsOfTheirOwn)
{
    world.Switch(3);
    CSpy spy;
    MessageBoxes::whileOpen = [&] { spy.OutputData("inner"); };
    spy.OutputData("outer");
    spy.OutputData("next");
    EXPECT_EQ(Boxes(),
              (Texts{"(char)outer\n|GUI debug|0|0", "(char)inner\n|GUI debug|0|0", "(char)next\n|GUI debug|0|0"}));
    EXPECT_EQ(world.Records(), (Texts{"(char)outer", "(char)inner", "(char)next"}));
}

TEST_F(TraceSinks, TheFileIsAppendedToInBareLines)
{
    const std::string former = "left by others\n";
    std::ofstream(TraceWorld::LogPath(), std::ios::binary) << former;
    {
        CSpy first;
        CSpy second;
        first.OutputData(1);
        second.OutputData(2);
        std::ofstream(TraceWorld::LogPath(), std::ios::binary | std::ios::app) << "foreign\n"; // it shares with all
        first.OutputData(3);
    }
    CSpy().OutputData(4);
    std::istringstream log(world.Log());
    Texts bodies;
    for (std::string line; std::getline(log, line);)
        bodies.push_back(line.find('<') == line.npos ? line : WithoutTimeStamp(line));
    EXPECT_EQ(bodies, (Texts{"left by others", "(int)1", "(int)2", "foreign", "(int)3", "(int)4"}));
}

TEST_F(TraceSinks, ALogThatCannotBeOpenedOrWrittenLosesTheRecordAndIsTriedAgainForTheNextOne)
{
    CSpy spy;
    for (const DWORD share : {DWORD{0}, DWORD{FILE_SHARE_READ}})
    {
        const HANDLE other = OpenLog(share);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        EXPECT_EQ(spy.OutputData("lost to a program that lets nobody write"), 1);
        CloseHandle(other);
    }
    ASSERT_TRUE(DeleteFileA(TraceWorld::LogPath().c_str()));
    ASSERT_TRUE(CreateDirectoryA(TraceWorld::LogPath().c_str(), nullptr));
    EXPECT_EQ(spy.OutputData("lost to a directory"), 1);
    ASSERT_TRUE(RemoveDirectoryA(TraceWorld::LogPath().c_str()));
    spy.OutputData("kept");
    {
        const Watch<decltype(&WriteFile)> full("WriteFile", 1, GetModuleHandleA("tvkframe.dll"));
        EXPECT_EQ(spy.OutputData("lost to a full disk"), 1);
    }
    spy.OutputData("kept again");
    EXPECT_EQ(world.Records(), (Texts{"(char)kept", "(char)kept again"}));
}

TEST_F(TraceSinks, TheFileIsOpenFromTheFirstRecordToTheObjectsEnd)
{
    const auto inUse = []
    {
        const HANDLE file = OpenLog(0);
        if (file != INVALID_HANDLE_VALUE)
            CloseHandle(file);
        return file == INVALID_HANDLE_VALUE;
    };
    {
        CSpy spy;
        EXPECT_FALSE(inUse());
        spy.OutputData(1);
        EXPECT_TRUE(inUse());
    }
    EXPECT_FALSE(inUse());
}
