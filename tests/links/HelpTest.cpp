// Help topics: which viewer shows them and how it is started, and that every request is recorded.
#include "links/CatsWinHelp.h"
#include "LaunchCalls.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/Probe.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>

namespace
{
constexpr char HelpFile[] = "c:\\a b\\help.chm";
constexpr char ControlKey[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr UINT Context = 15; // HH_HELP_CONTEXT

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
    return "(char)ActivityTracker::WriteData(24597, 1, 1, SN, " + std::to_string(mapId) + ")\n";
}

/// A Windows directory with a viewer that writes down its start, and a help library that writes down its calls.
class Help : public testing::Test
{
protected:
    Help()
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

    RedirectedRoot classes{HKEY_CLASSES_ROOT};
    RegistryWorld world;
    LaunchCalls calls;
    const std::string folder = MakeFolder(TestFolder() + "helpwin");
    const RecordingProgram viewer{folder + "\\hh.exe"};
};
} // namespace

TEST_F(Help, WithoutTheViewerTheHelpShowsInTheProcess)
{
    for (const int mapId : {20, -1, 0})
    {
        const TraceWorld trace;
        CatsWinHelp(reinterpret_cast<HWND>(0x123), HelpFile, Context, mapId, "SN", 0);
        EXPECT_EQ(HtmlHelpCall(), std::string("0x123 ") + HelpFile + " 15 " + std::to_string(mapId));
        EXPECT_EQ(calls.log, "");
        EXPECT_EQ(trace.Steps(), Recorded(mapId));
    }
}

TEST_F(Help, EachRoute)
{
    SetEnvironmentVariableA("RECORDER_PARENT", "inherited");
    for (const UINT command : {Context, 0u})
        for (const LaunchRoute& route : LaunchRoutes)
        {
            // Of a start with the own token the command stands for the result: help may show twice.
            const bool own = route.result == LaunchRoute::OwnToken, shows = own ? command == 0 : route.result == 0;
            if (command == 0 && !own)
                continue;
            SCOPED_TRACE(route.calls);
            const TraceWorld trace;
            const FakeVersion version(route.version);
            calls.Refuse(route.refused);
            const auto help = [&] { CatsWinHelp(nullptr, HelpFile, command, -1, "SN", 1); };
            const ProgramStart start = viewer.Recorded(help, route.Starts());
            EXPECT_EQ(calls.log, route.calls);
            EXPECT_EQ(start.commandLine, route.Starts() ? Command(-1) : "nothing was started");
            EXPECT_EQ(HtmlHelpCall(),
                      shows ? "0x0 " + std::string(HelpFile) + " " + std::to_string(command) + " -1" : "");
            if (route.Starts())
            {
                EXPECT_EQ(start.parent, route.StartsDirectly() ? "inherited" : "");
                EXPECT_EQ(start.window.substr(0, 14), "show 5, flags ");
            }
            EXPECT_EQ(trace.Steps(),
                      "(char)\nHelpPath: \n(char)" + Command(-1) + "\n" +
                          route.Trace("CatsWinHelp", "CatsWinHelp::Launching Help through CreateProcessAsUser") +
                          "(DWORD)" + std::to_string(route.Starts() ? LaunchCalls::Started : ERROR_NOT_SUPPORTED) +
                          "\n" + Recorded(-1));
            EXPECT_EQ(calls.environments, 0);
        }
}

TEST_F(Help, ALineThatDoesNotFitIsNotStarted)
{
    const size_t rest = 259 - Command(20, "").size();
    const std::string fits(rest, 'f'), longFolder = "c:\\" + std::string(256, 'w');
    EXPECT_EQ(viewer.Recorded([&] { CatsWinHelp(nullptr, fits.c_str(), Context, 20, "SN", 1); }).commandLine,
              Command(20, fits));
    EXPECT_EQ(HtmlHelpCall(), "");
    const struct
    {
        std::string file;
        const char* windows;
        std::set<std::string> refused;
        std::string command;
    } table[] = {{fits + "f", folder.c_str(), {}, Command(20, fits + "f")},
                 {std::string(400, 'f'), folder.c_str(), {}, Command(20, std::string(400, 'f'))},
                 {"f", longFolder.c_str(), {}, longFolder + "\\hh.exe  -mapid 20 f"},
                 {"f", folder.c_str(), {"GetWindowsDirectoryA"}, ""}};
    for (const auto& row : table)
    {
        const TraceWorld trace;
        calls.Refuse(row.refused);
        calls.windowsFolder = row.windows;
        CatsWinHelp(nullptr, row.file.c_str(), Context, 20, "SN", 1);
        EXPECT_EQ(HtmlHelpCall(), "0x0 " + row.file + " 15 20");
        EXPECT_EQ(calls.log, "");
        EXPECT_EQ(trace.Steps(), "(char)\nHelpPath: \n(char)" + row.command + "\n(DWORD)" +
                                     std::to_string(ERROR_FILENAME_EXCED_RANGE) + "\n" + Recorded(20));
    }
}

TEST_F(Help, LeavesNothingBehind)
{
    calls.pretend = true;
    ExpectNothingLeftBehind(
        [&](int round)
        {
            calls.Refuse(LaunchRoutes[static_cast<size_t>(round) % LaunchRoutes.size()].refused);
            CatsWinHelp(nullptr, HelpFile, Context, 20, "SN", round % 2);
        });
    EXPECT_EQ(calls.environments, 0);
}

/// Asks for help twice, and prints what libraries were asked for and what the one in the program's folder was asked.
/// Arguments: "none" or the registered library; what is refused.
PROBE(HelpLibrary)
{
    const TestProduct product({});
    const RedirectedRoot classes(HKEY_CLASSES_ROOT);
    RegistryWorld world;
    if (std::string(argv[0]) != "none")
        world.SetText(HKEY_CLASSES_ROOT, ControlKey, "", argv[0]);
    LaunchCalls calls;
    calls.Refuse({argv[1]});
    HtmlHelpCall();
    for (int i = 0; i < 2; ++i)
        CatsWinHelp(nullptr, "help.chm", Context, 20, "SN", 0);
    std::printf("%s| %s\n", calls.loads.c_str(), HtmlHelpCall().c_str());
    return 0;
}

TEST(HelpLibrary, IsLoadedOnceOrGivenUp)
{
    const std::string library = TestFolder() + "htmlhelp.dll", byName = TestFolder() + "hhctrl.ocx";
    const std::string shown = "| 0x0 help.chm 15 20\n", nowhere = "c:\\nowhere\\help.ocx";
    ASSERT_TRUE(CopyFileA(library.c_str(), byName.c_str(), FALSE));
    RegistryWorld world; // Wine's own one would come before it
    world.SetText(HKEY_CURRENT_USER, "Software\\Wine\\AppDefaults\\links_help.exe\\DllOverrides", "hhctrl.ocx",
                  "native");
    const struct
    {
        std::string registered, refused, answer;
    } table[] = {
        {library, "none", library + "; " + shown},
        {"none", "none", "hhctrl.ocx; " + shown},
        {"", "none", "hhctrl.ocx; " + shown},
        {nowhere, "none", nowhere + "; hhctrl.ocx; " + shown},
        {nowhere, "hhctrl.ocx", nowhere + "; hhctrl.ocx; | \n"},
        {TestFolder() + "recorder.exe", "none", TestFolder() + "recorder.exe; | \n"}, // without the entry
    };
    for (const auto& row : table)
    {
        const TraceWorld trace;
        EXPECT_EQ(RunProbeProcess("HelpLibrary", {row.registered, row.refused}).output, row.answer);
        EXPECT_EQ(trace.Steps(), Recorded(20) + Recorded(20));
    }
    DeleteFileA(byName.c_str());
}
