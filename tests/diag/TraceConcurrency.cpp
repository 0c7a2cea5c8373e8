// Several processes that trace at once, and one that is stopped at the worst moment.
#include "diag/CSpy.h"
#include "support/IatPatch.h"
#include "support/Probe.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "system/internal/Handle.h"
#include <gtest/gtest.h>
#include <array>
#include <map>
#include <thread>
#include <vector>

namespace
{
constexpr char Reached[] = "TraceWriterHoldsTheLock", Killed[] = "TraceWriterIsKilled";

// Stands still where the record would be written, as a process does that a debugger has stopped, until it is killed.
BOOL WINAPI StopInsteadOfWriting(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*)
{
    SetEvent(OpenEventA(EVENT_MODIFY_STATE, FALSE, Reached));
    WaitForSingleObject(OpenEventA(SYNCHRONIZE, FALSE, Killed), INFINITE);
    return TerminateProcess(GetCurrentProcess(), 1);
}
} // namespace

PROBE(WriteRecords)
{
    CSpy spy;
    for (int i = 0; i < std::atoi(argv[1]); ++i)
        spy.OutputData((std::string(argv[0]) + " " + std::to_string(i)).c_str());
    return 0;
}

PROBE(StopWithinARecord)
{
    const IatPatch patch(GetModuleHandleA("tvkframe.dll"), "WriteFile", StopInsteadOfWriting);
    CSpy().OutputData("never written");
    return 0;
}

TEST(TraceConcurrency, ProcessesThatTraceAtOnceLoseNoRecord)
{
    constexpr int Records = 4000;
    const TraceWorld world;
    std::vector<std::jthread> processes;
    for (const char* name : {"first", "second", "third"})
        processes.emplace_back(
            [name] {
                EXPECT_EQ(RunProbeProcess("WriteRecords", {name, std::to_string(Records)}).exitCode, 0u);
            });
    processes.clear(); // waits for them
    std::map<std::string, int> next;
    for (const std::string& record : world.Records())
    {
        const std::string name = record.substr(0, record.find(' '));
        EXPECT_EQ(record, name + " " + std::to_string(next[name]++)) << "a record is lost, torn or out of order";
    }
    EXPECT_EQ(next, (std::map<std::string, int>{
                        {"(char)first", Records}, {"(char)second", Records}, {"(char)third", Records}}));
}

TEST(TraceConcurrency, AStoppedProcessDoesNotFreezeTheOthers)
{
    constexpr int Records = 200;
    const TraceWorld world;
    const tvk::KernelHandle reached(CreateEventA(nullptr, FALSE, FALSE, Reached));
    const tvk::KernelHandle killed(CreateEventA(nullptr, FALSE, FALSE, Killed));
    std::jthread stopped([] { RunProbeProcess("StopWithinARecord"); });
    ASSERT_EQ(WaitForSingleObject(reached.Get(), 20000), WAIT_OBJECT_0);

    const auto writeRecords = [&world]
    {
        CSpy spy;
        const ULONGLONG start = GetTickCount64();
        for (int i = 0; i < Records; ++i)
            spy.OutputData(i);
        return GetTickCount64() - start;
    };
    const ULONGLONG slow = writeRecords();
    EXPECT_GE(slow, 400u) << "the stopped process does not hold the lock: this test shows nothing";
    EXPECT_LT(slow, 15000u) << "a long wait for every record would take a minute and a half";
    EXPECT_EQ(world.Records().size(), std::size_t{Records});

    SetEvent(killed.Get());
    stopped.join();
    writeRecords();
    EXPECT_LT(writeRecords(), slow / 2) << "the lock is free again, but still waited for";
    EXPECT_EQ(world.Records().size(), std::size_t{3 * Records});
}

TEST(TraceConcurrency, TheLockLiesWhereNobodyReadsOrWrites)
{
    using Calls = std::vector<std::array<ULONGLONG, 2>>; // place and length
    static Calls locked, unlocked;
    const TraceWorld world;
    const auto wide = [](DWORD low, DWORD high) { return ULONGLONG{high} << 32 | low; };
    static const auto note = [wide](Calls& calls, DWORD low, DWORD high, const OVERLAPPED* place) {
        calls.push_back({wide(place->Offset, place->OffsetHigh), wide(low, high)});
    };
    const IatPatch lock(
        LibraryUnderTest(), "LockFileEx",
        +[](HANDLE, DWORD, DWORD, DWORD low, DWORD high, OVERLAPPED* place) -> BOOL
        { return note(locked, low, high, place), TRUE; });
    const IatPatch unlock(
        LibraryUnderTest(), "UnlockFileEx",
        +[](HANDLE, DWORD, DWORD low, DWORD high, OVERLAPPED* place) -> BOOL
        { return note(unlocked, low, high, place), TRUE; });
    CSpy().OutputData("record");
    ASSERT_EQ(locked.size(), 1u);
    EXPECT_GT(locked[0][0], ULONGLONG{1} << 62) << "no log grows there";
    EXPECT_EQ(locked[0][1], 1u);
    EXPECT_EQ(unlocked, locked);
}
