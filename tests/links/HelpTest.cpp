// Help topics: which viewer shows them and how it is started, and that every request is recorded.
#include "links/CatsWinHelp.h"
#include "LaunchCalls.h"
#include "support/FakeVersion.h"
#include "support/OpenHandles.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>

namespace
{
using Lines = std::vector<std::string>;

constexpr char HelpFile[] = "c:\\a b\\help.chm";
constexpr char ControlKey[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr UINT Context = 15; // HH_HELP_CONTEXT
constexpr char DirectText[] = "(char)CatsWinHelp - CreateProcessAsUserA failed, so launch URL through CreateProcess()";

/// What the stand-in for the HTML Help library was asked (htmlhelp.c); empty when it was not.
std::string HtmlHelpCall()
{
    char call[512] = "";
    GetEnvironmentVariableA("HTMLHELP_CALL", call, sizeof call);
    SetEnvironmentVariableA("HTMLHELP_CALL", nullptr);
    return call;
}

std::string Recorded(int mapId)
{
    return "(char)ActivityTracker::WriteData(24597, 1, 1, SN, " + std::to_string(mapId) + ")";
}

/// A Windows directory with a viewer that writes down its start, and a help library that writes down its calls.
class Help : public testing::Test
{
protected:
    Help() : folder(TestFolder() + "helpwin"), viewer(MakeFolder(folder) + "\\hh.exe")
    {
        world.SetText(HKEY_CLASSES_ROOT, ControlKey, "", TestFolder() + "htmlhelp.dll");
        calls.windowsFolder = folder.c_str();
        HtmlHelpCall();
    }
    ~Help() override { SetEnvironmentVariableA("RECORDER_PARENT", nullptr); }
    static std::string MakeFolder(const std::string& path)
    {
        CreateDirectoryA(path.c_str(), nullptr);
        return path;
    }
    std::string Command(int mapId, const std::string& file = HelpFile) const
    {
        return folder + "\\hh.exe  -mapid " + std::to_string(mapId) + " " + file;
    }
    /// The trace without the look-ups of settings.
    static Lines Trace(const TraceWorld& trace)
    {
        Lines lines;
        for (const std::string& record : trace.Records())
            if (record.find("---->") == std::string::npos)
                lines.push_back(record);
        return lines;
    }

    RedirectedRoot classes{HKEY_CLASSES_ROOT};
    RegistryWorld world;
    LaunchCalls calls;
    std::string folder;
    RecordingProgram viewer;
};
} // namespace

TEST_F(Help, WithoutTheViewerTheHelpShowsInTheProcess)
{
    for (const int mapId : {20, -1, 0})
    {
        const TraceWorld trace;
        calls.log.clear();
        CatsWinHelp(reinterpret_cast<HWND>(0x123), HelpFile, Context, mapId, "SN", 0);
        EXPECT_EQ(HtmlHelpCall(), std::string("0x123 ") + HelpFile + " 15 " + std::to_string(mapId));
        EXPECT_EQ(calls.log, "");
        EXPECT_EQ(Trace(trace), (Lines{Recorded(mapId)}));
    }
}

TEST_F(Help, EachRoute)
{
    const Lines session = {"(char)CatsWinHelp - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)",
                           "(DWORD)1"};
    const std::string user = "user 1; environment 0; ", asUser = "as user 400; ", direct = "process 28; ",
                      ownToken = "user 1; self 3; token f 0; impersonate; duplicate b 2 1; environment 0; ";
    const struct
    {
        std::set<std::string> refused;
        std::string steps;
        Lines trace; // after the session's number
        bool starts = true, shows = false;
        UINT command = Context;
        int version = 9;
    } routes[] = {
        {{}, user + asUser, {"(int)1", "(char)CatsWinHelp:: Calling CreateEnvironmentBlock() successful", "(int)1"}},
        {{"CreateProcessAsUserA"},
         user + asUser,
         {"(int)1", "(char)CatsWinHelp:: Calling CreateEnvironmentBlock() successful", "(int)0"},
         false,
         true},
        {{"CreateEnvironmentBlock"},
         user + direct,
         {"(int)1", "(char)CatsWinHelp:: Calling CreateEnvironmentBlock() failed", DirectText},
         true,
         false,
         0},
        {{"CreateEnvironmentBlock", "CreateProcessA"},
         user + direct,
         {"(int)1", "(char)CatsWinHelp:: Calling CreateEnvironmentBlock() failed", DirectText},
         false,
         true},
        {{"WTSQueryUserToken"}, ownToken + asUser, {"(int)0"}},
        // Started, but the command, 0, stands for the result.
        {{"WTSQueryUserToken"}, ownToken + asUser, {"(int)0"}, true, true, 0},
        {{"WTSQueryUserToken", "CreateEnvironmentBlock"},
         ownToken + direct,
         {"(int)0", "(char)CatsWinHelp - CreateEnvironmentBlock failed", DirectText}},
        {{"WTSQueryUserToken", "CreateProcessAsUserA", "CreateProcessA"},
         ownToken + asUser + direct,
         {"(int)0", "(char)CatsWinHelp - CreateProcessAsUserA failed", DirectText},
         false,
         true},
        {{}, direct, {DirectText}, true, false, 0, 4},
        {{"CreateProcessA"}, direct, {DirectText}, false, true, Context, 6},
        {{}, direct, {DirectText}, true, false, Context, 0},
    };
    SetEnvironmentVariableA("RECORDER_PARENT", "inherited");
    for (const auto& route : routes)
    {
        const TraceWorld trace;
        const FakeVersion version(route.version);
        calls.Refuse(route.refused);
        const ProgramStart start =
            viewer.Recorded([&] { CatsWinHelp(nullptr, HelpFile, route.command, 20, "SN", 1); }, route.starts);
        EXPECT_EQ(calls.log, route.steps);
        EXPECT_EQ(start.commandLine, route.starts ? Command(20) : "nothing was started");
        EXPECT_EQ(HtmlHelpCall(),
                  route.shows ? "0x0 " + std::string(HelpFile) + " " + std::to_string(route.command) + " 20" : "");
        if (route.starts)
        {
            const bool inherits = route.steps.find(direct) != std::string::npos;
            EXPECT_EQ(start.parent, inherits ? "inherited" : "");
            EXPECT_EQ(start.window.substr(0, 14), "show 5, flags ");
        }
        Lines records = Trace(trace);
        ASSERT_GT(records.size(), 4u);
        EXPECT_EQ(records.back(), Recorded(20));
        records.pop_back();
        EXPECT_EQ(records.back().substr(0, 7), "(DWORD)") << "the last error";
        records.pop_back();
        Lines expected = {"(char)\nHelpPath: ", "(char)" + Command(20)};
        if (route.version >= 7)
        {
            expected.push_back("(char)CatsWinHelp::Launching Help through CreateProcessAsUser");
            expected.insert(expected.end(), session.begin(), session.end());
        }
        expected.insert(expected.end(), route.trace.begin(), route.trace.end());
        EXPECT_EQ(records, expected) << route.steps;
        EXPECT_EQ(calls.environments, 0);
    }
}

TEST_F(Help, MissingSessionLibraries)
{
    const TraceWorld trace;
    calls.Refuse({"GetSystemDirectoryA"});
    calls.pretend = true;
    CatsWinHelp(nullptr, HelpFile, Context, -1, "SN", 1);
    const Lines records = Trace(trace);
    ASSERT_EQ(records.size(), 15u);
    EXPECT_EQ(records[1], "(char)" + Command(-1));
    EXPECT_EQ(Lines(records.begin() + 3, records.begin() + 12),
              (Lines{"(char)CatsWinHelp:GetSystemDirectory() failed.",
                     "(char)CatsWinHelp - LoadLibrary()for UserEnv.dll failed.",
                     "(char)CatsWinHelp - LoadLibrary()for wtsapi32.dll failed.",
                     "(char)CatsWinHelp - LoadLibrary()for kernel32.dll failed. Sysdir=",
                     "(char)CatsWinHelp - GetProcAddress(WTSGetActiveConsoleSessionId) failed.",
                     "(char)CatsWinHelp - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)", "(DWORD)0",
                     "(int)0", "(char)CatsWinHelp - CreateEnvironmentBlock failed"}));
}

TEST_F(Help, ALineThatDoesNotFitIsNotStarted)
{
    const size_t rest = 259 - (Command(20, "").size());
    const std::string fits(rest, 'f'), tooLong(rest + 1, 'f');
    EXPECT_EQ(viewer.Recorded([&] { CatsWinHelp(nullptr, fits.c_str(), Context, 20, "SN", 1); }).commandLine,
              Command(20, fits));
    EXPECT_EQ(HtmlHelpCall(), "");
    const std::string longFolder = "c:\\" + std::string(256, 'w');
    const struct
    {
        std::string file;
        const char* windows;
        std::set<std::string> refused;
    } table[] = {{tooLong, folder.c_str(), {}},
                 {std::string(400, 'f'), folder.c_str(), {}},
                 {"f", longFolder.c_str(), {}},
                 {"f", folder.c_str(), {"GetWindowsDirectoryA"}}};
    for (const auto& row : table)
    {
        const TraceWorld trace;
        calls.Refuse(row.refused);
        calls.windowsFolder = row.windows;
        CatsWinHelp(nullptr, row.file.c_str(), Context, 20, "SN", 1);
        EXPECT_EQ(HtmlHelpCall(), "0x0 " + row.file + " 15 20");
        EXPECT_EQ(calls.log, "");
        const Lines records = Trace(trace);
        ASSERT_EQ(records.size(), 4u);
        EXPECT_EQ(records[2], "(DWORD)" + std::to_string(ERROR_FILENAME_EXCED_RANGE));
        EXPECT_EQ(records[3], Recorded(20));
    }
}

TEST_F(Help, LeavesNothingBehind)
{
    const std::set<std::string> faults[] = {{},
                                            {"CreateProcessAsUserA"},
                                            {"CreateEnvironmentBlock"},
                                            {"WTSQueryUserToken"},
                                            {"WTSQueryUserToken", "CreateProcessAsUserA"}};
    calls.pretend = true;
    size_t handles = 0, modules = 0;
    for (int round = 0; round < 1000; ++round)
    {
        if (round == 10)
        {
            handles = OpenHandles();
            modules = LoadedModules();
        }
        calls.Refuse(faults[static_cast<size_t>(round) % std::size(faults)]);
        CatsWinHelp(nullptr, HelpFile, Context, 20, "SN", round % 2);
    }
    EXPECT_EQ(OpenHandles(), handles);
    EXPECT_EQ(LoadedModules(), modules);
    EXPECT_EQ(calls.environments, 0);
}
