// Where records go: the switch, the log file, message boxes, the debugger.
#include "diag/CSpy.h"
#include "support/IatPatch.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>
#include <fstream>
#include <functional>
#include <sstream>

namespace
{
using Texts = std::vector<std::string>;

HMODULE Library()
{
    return GetModuleHandleA(PRODUCT_PREFIX "util.dll");
}

// The boxes that the library showed, as "caption flags text"; each is dismissed at once.
Texts Boxes;
std::function<void()> WhileBoxIsOpen;

int WINAPI RecordBox(HWND owner, const char* text, const char* caption, UINT flags)
{
    Boxes.push_back(std::string(owner ? "owned " : "") + caption + " " + std::to_string(flags) + " " +
                    WithoutTimeStamp(text));
    if (WhileBoxIsOpen)
        WhileBoxIsOpen();
    return IDOK;
}

// What reaches a debugger, seen where the system raises it; only kept here, for a failing test writes to it too.
Texts DebuggerTexts;

LONG CALLBACK SeeDebuggerText(EXCEPTION_POINTERS* pointers)
{
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != 0x40010006)
        return EXCEPTION_CONTINUE_SEARCH;
    DebuggerTexts.push_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
    return EXCEPTION_CONTINUE_EXECUTION;
}

class TraceSinks : public testing::Test
{
protected:
    TraceSinks() : m_handler(AddVectoredExceptionHandler(1, SeeDebuggerText))
    {
        Boxes.clear();
        DebuggerTexts.clear();
    }
    ~TraceSinks() override
    {
        RemoveVectoredExceptionHandler(m_handler);
        WhileBoxIsOpen = nullptr;
    }

    TraceWorld world;

private:
    PVOID m_handler;
    IatPatch m_box{Library(), "MessageBoxA", RecordBox};
};

std::string Bytes(std::initializer_list<int> values)
{
    return std::string(values.begin(), values.end());
}

int TimesAsked;

void WINAPI CountTimeQuestions(SYSTEMTIME* now)
{
    ++TimesAsked;
    GetLocalTime(now);
}

BOOL WINAPI FailToWrite(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*)
{
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

// Opens the log so that others are held off, or is held off itself.
HANDLE OpenLog(DWORD share)
{
    return CreateFileA(TraceWorld::LogPath().c_str(), GENERIC_READ, share, nullptr, OPEN_ALWAYS, 0, nullptr);
}
} // namespace

TEST_F(TraceSinks, TheSwitchChoosesTheSinks)
{
    struct Case
    {
        const char* situation;
        std::function<void()> arrange;
        bool file, box, debugger;
    };
    const Case cases[] = {
        {"0", [&] { world.Switch(0); }, false, false, false},
        {"1", [&] { world.Switch(1); }, true, false, false},
        {"2", [&] { world.Switch(2); }, false, true, false},
        {"3", [&] { world.Switch(3); }, true, true, false},
        {"4", [&] { world.Switch(4); }, false, false, true},
        {"5", [&] { world.Switch(5); }, false, false, false},
        {"all bits", [&] { world.Switch(~0ul); }, false, false, false},
        {"no value", [&] { world.RemoveSwitch(); }, false, false, false},
        {"four bytes of another type",
         [&] {
             world.Switch(REG_BINARY, Bytes({1, 0, 0, 0}));
         },
         true, false, false},
        {"text of four bytes",
         [&] {
             world.Switch(REG_SZ, Bytes({4, 0, 0, 0}));
         },
         false, false, true},
        {"one byte", [&] { world.Switch(REG_BINARY, Bytes({1})); }, false, false, false},
        {"no bytes", [&] { world.Switch(REG_BINARY, ""); }, false, false, false},
        {"eight bytes",
         [&] {
             world.Switch(REG_QWORD, Bytes({1, 0, 0, 0, 0, 0, 0, 0}));
         },
         false, false, false},
        {"text",
         [&] {
             world.Switch(REG_SZ, Bytes({'1', 0}));
         },
         false, false, false},
    };
    for (const Case& row : cases)
    {
        SCOPED_TRACE(row.situation);
        world.Clear();
        Boxes.clear();
        DebuggerTexts.clear();
        row.arrange();
        CSpy spy;
        world.Switch(1); // read when the object was made, never again
        const int answer = spy.OutputData(42);
        const Texts texts = DebuggerTexts;
        EXPECT_EQ(answer, 1);
        EXPECT_EQ(world.Records(), row.file ? Texts{"(int)42"} : Texts{});
        EXPECT_EQ(Boxes, row.box ? Texts{"GUI debug 0 (int)42\n"} : Texts{});
        ASSERT_EQ(texts.size(), row.debugger ? 1u : 0u);
        for (const std::string& text : texts)
            EXPECT_EQ(WithoutTimeStamp(text), "(int)42\n");
    }
}

TEST_F(TraceSinks, WhoMayNotWriteToTheKeyGetsNoTracing)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\TORVANE", 0, KEY_READ | WRITE_DAC, &key), 0);
    const auto allowEveryone = [key](DWORD rights)
    {
        SID_IDENTIFIER_AUTHORITY authority = SECURITY_WORLD_SID_AUTHORITY;
        PSID everyone = nullptr;
        AllocateAndInitializeSid(&authority, 1, 0, 0, 0, 0, 0, 0, 0, 0, &everyone);
        alignas(ACL) BYTE list[256];
        ACL* const acl = reinterpret_cast<ACL*>(list);
        InitializeAcl(acl, sizeof list, ACL_REVISION);
        AddAccessAllowedAce(acl, ACL_REVISION, rights, everyone);
        SECURITY_DESCRIPTOR descriptor;
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE);
        EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor), 0);
        FreeSid(everyone);
    };
    allowEveryone(KEY_READ);
    {
        CSpy spy;
        EXPECT_EQ(spy.OutputData(42), 1);
    }
    EXPECT_EQ(world.Log(), "");
    allowEveryone(KEY_ALL_ACCESS);
    RegCloseKey(key);
    CSpy spy;
    spy.OutputData(42);
    EXPECT_EQ(world.Records(), Texts{"(int)42"});
}

TEST_F(TraceSinks, SwitchedOffNothingIsFormattedAndOnTheLastErrorStays)
{
    const IatPatch patch(Library(), "GetLocalTime", CountTimeQuestions);
    for (const bool on : {false, true})
    {
        world.Switch(on ? 3 : 0);
        CSpy spy;
        TimesAsked = 0;
        SetLastError(12345);
        spy.OutputData(1);
        spy.OutputData("text");
        EXPECT_EQ(GetLastError(), 12345u);
        EXPECT_EQ(TimesAsked, on ? 2 : 0);
    }
}

TEST_F(TraceSinks, RecordsThatComeUpDuringAMessageBoxAreRecordsOfTheirOwn)
{
    world.Switch(3);
    CSpy spy;
    WhileBoxIsOpen = [&]
    {
        WhileBoxIsOpen = nullptr;
        spy.OutputData("inner");
    };
    spy.OutputData("outer");
    spy.OutputData("next");
    EXPECT_EQ(Boxes, (Texts{"GUI debug 0 (char)outer\n", "GUI debug 0 (char)inner\n", "GUI debug 0 (char)next\n"}));
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

TEST_F(TraceSinks, ALogThatCannotBeOpenedIsTriedAgainForTheNextRecord)
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
    EXPECT_EQ(world.Records(), Texts{"(char)kept"});
}

TEST_F(TraceSinks, AFullDiskLosesTheRecordOnly)
{
    CSpy spy;
    spy.OutputData(1);
    {
        const IatPatch full(GetModuleHandleA("tvkframe.dll"), "WriteFile", FailToWrite);
        EXPECT_EQ(spy.OutputData(2), 1);
    }
    spy.OutputData(3);
    EXPECT_EQ(world.Records(), (Texts{"(int)1", "(int)3"}));
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
