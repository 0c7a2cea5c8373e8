// Addresses in the browser: which command line the registered browser gets, by which route, and what is traced of it.
#include "LaunchCalls.h"
#include "TestLink.h"
#include "links/CUrlLink.h"
#include "support/FakeVersion.h"
#include "support/MessageBoxes.h"
#include "support/NothingLeft.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <shellapi.h>

namespace
{
using testing::StartsWith;

constexpr char Address[] = "http://base/go?f=home&x=%20y";
constexpr char AsUser[] = "user 1; environment 0; as user 400; ";

/// A browser registered for this process alone, and the calls of a launch.
class Launch : public testing::Test
{
protected:
    ~Launch() override { SetEnvironmentVariableA("RECORDER_PARENT", nullptr); }

    TestBrowser browser{" -open \"%1\""};
    LaunchCalls calls;
    TestLink link;
};

INT_PTR Result(HINSTANCE result)
{
    return reinterpret_cast<INT_PTR>(result);
}

/// What GotoURL or GotoURLManually traces first.
std::string Begin(const std::string& function, const std::string& show)
{
    return "(char)CGUIUrlLink::" + function + "()\n(char)" + Address + "\n(int)" + show + "\n";
}
} // namespace

TEST_F(Launch, TheAddressTakesThePlaceholdersPlace)
{
    const RecordingProgram plain(TestFolder() + "linksbr.exe");
    const struct
    {
        const RecordingProgram& program;
        std::string command, received;
    } table[] = {
        {browser.program, browser.quoted + " -open \"%1\" -after", browser.quoted + " -open "},
        {browser.program, browser.quoted + " -url=%1 -after", browser.quoted + " -url="},
        {browser.program, browser.quoted + " %1 \"%1\"", browser.quoted + " %1 "}, // the quoted one, wherever it stands
        {browser.program, browser.quoted, browser.quoted},
        {browser.program, browser.quoted + " -x%l", browser.quoted + " -x%l"},
        {plain, plain.Path() + " \"%1\"", plain.Path() + " "},
        {plain, plain.Path(), plain.Path()},
    };
    for (const auto& row : table)
    {
        browser.Register(row.command);
        const auto open = [&] { EXPECT_EQ(Result(link.GotoURLManually(Address, SW_SHOW)), 1); };
        EXPECT_EQ(row.program.Recorded(open).commandLine, row.received + " " + Address);
    }
}

TEST_F(Launch, WithoutABrowserNothingHappens)
{
    const std::string longPath = browser.quoted + " " + std::string(260, 'x');
    TraceWorld trace;
    TestLink traced;
    const auto expectNothing = [&](const char* what)
    {
        calls.log.clear();
        trace.Clear();
        EXPECT_EQ(traced.GotoURLManually(Address, 7), nullptr) << what;
        EXPECT_EQ(calls.log, "") << what;
        EXPECT_EQ(trace.Steps(), Begin("GotoURLManually", "7")) << what;
    };
    for (const auto& [command, type] : {std::pair(std::string(), REG_SZ),
                                        {longPath, REG_SZ},
                                        {longPath.substr(0, 260), REG_BINARY}, // no NUL
                                        {"\1\2\3\4", REG_DWORD}})
    {
        browser.Register(command, type);
        expectNothing(command.c_str());
    }
    RegDeleteTreeA(HKEY_CLASSES_ROOT, "webdoc");
    expectNothing("no command");
    browser.world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "");
    expectNothing("no class");
    RegDeleteTreeA(HKEY_CLASSES_ROOT, ".htm");
    expectNothing("no file type");

    const std::string longest = browser.quoted + std::string(259 - browser.quoted.size(), ' ');
    browser.Register(longest);
    EXPECT_EQ(browser.program.Recorded([&] { traced.GotoURLManually(Address, 7); }).commandLine,
              longest + " " + Address);
}

TEST_F(Launch, ReadsADefaultValue)
{
    const std::string longest(259, 'v');
    browser.world.SetText(HKEY_CLASSES_ROOT, "some\\key", "", longest);
    char text[260] = "before";
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some\\other", text), ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some\\key", text), 0);
    EXPECT_EQ(text, longest);
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some", text), 0);
    EXPECT_STREQ(text, "") << "a key without a default value";
    EXPECT_EQ(CUrlLink::GetRegKey(HKEY_CLASSES_ROOT, "some\\other", text), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(CUrlLink::GetRegKey(HKEY_CLASSES_ROOT, "some\\key", text), 0);
    EXPECT_EQ(text, longest);
}

TEST_F(Launch, EachRoute)
{
    const std::string line = browser.quoted + " -open  " + Address;
    SetEnvironmentVariableA("RECORDER_PARENT", "inherited");
    for (const DWORD saved : {4711ul, 0ul}) // the result of a start with the own token: 0 reads as a failure
        for (const LaunchRoute& route : LaunchRoutes)
        {
            SCOPED_TRACE(route.calls);
            const bool session = route.version >= 7;
            const int result = route.result == LaunchRoute::OwnToken ? static_cast<int>(saved) : route.result;
            if (saved == 0 && (result != 0 || !route.Starts()))
                continue;
            TraceWorld trace;
            const FakeVersion version(route.version, saved);
            calls.Refuse(route.refused);
            TestLink traced;
            const auto open = [&] { EXPECT_EQ(Result(traced.GotoURLManually(Address, 9)), result); };
            const ProgramStart start = browser.program.Recorded(open, route.Starts());
            EXPECT_EQ(calls.log, route.calls);
            EXPECT_EQ(start.commandLine, route.Starts() ? line : "nothing was started");
            EXPECT_EQ(trace.Steps(),
                      Begin("GotoURLManually", "9") + "(char)CGUIUrlLink::GotoURLManually()...CreateProcess()\n(char)" +
                          line + "\n" +
                          route.Trace("CGUIUrlLink", "CGUIUrlLink::GotoURLManually()...Launching URL through "
                                                     "CreateProcessAsUser") +
                          "(char)CGUIUrlLink::GotoURLManually()...CreateProcess return code\n(int)" +
                          std::to_string(result) + "\n" +
                          (result ? ""
                                  : "(char)CreateProcess()...GetLastError()\n(DWORD)" +
                                        std::to_string(session ? saved : 0) + "\n"));
            if (route.Starts())
            {
                EXPECT_EQ(start.parent, route.StartsDirectly() ? "inherited" : "");
                EXPECT_THAT(start.window, StartsWith(session ? "show 5, flags " : "show 0, flags "));
                EXPECT_TRUE(!route.StartsDirectly() || start.process == "priority 20, no console") << start.process;
            }
            HANDLE token = nullptr;
            const bool impersonates = OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token) != FALSE;
            EXPECT_EQ(impersonates,
                      route.calls.find("self") != std::string::npos && !route.refused.count("ImpersonateSelf"));
            if (impersonates)
                CloseHandle(token);
            EXPECT_EQ(calls.environments, 0);
        }
}

TEST_F(Launch, TheShell)
{
    const std::string open = std::string("shell open ") + Address, shell = open + " 5; ", direct = "process 28; ";
    const struct
    {
        int version, shellResult;
        INT_PTR result;
        std::string calls, failure;
    } table[] = {
        {4, 33, 33, shell, ""},
        {3, 34, 34, shell, ""},
        {6, 32, 1, shell + direct, "(char)ShellExecute() Failed...return code\n(int)32\n"},
        {5, 2, 1, shell + direct, "(char)ShellExecute() Failed...return code\n(int)2\n"},
        {0, 33, 1, direct, ""},
        {7, 33, 1, AsUser, ""},
    };
    calls.pretend = true;
    for (const auto& row : table)
    {
        TraceWorld trace;
        const FakeVersion version(row.version);
        calls.log.clear();
        calls.shellResult = row.shellResult;
        TestLink traced;
        EXPECT_EQ(Result(traced.GotoURL(Address, SW_SHOW)), row.result);
        EXPECT_EQ(calls.log, row.calls);
        const std::string expected = Begin("GotoURL", "5") + row.failure;
        if (row.result == 1)
            EXPECT_THAT(trace.Steps(), StartsWith(expected + Begin("GotoURLManually", "5")));
        else
            EXPECT_EQ(trace.Steps(), expected);
        // The link without settings asks the shell on every version, and tells nothing.
        trace.Clear();
        calls.log.clear();
        const bool opened = row.shellResult > 32;
        EXPECT_EQ(Result(CUrlLink::GotoURL(Address, 9)), opened ? row.shellResult : 33);
        EXPECT_EQ(calls.log, open + " 9; " + (opened ? "" : direct));
        EXPECT_EQ(trace.Log(), "");
    }
}

TEST_F(Launch, WithoutSettingsByTheRealShellOrTheBrowser)
{
    browser.world.SetText(HKEY_CLASSES_ROOT, "http", "URL Protocol", "");
    browser.world.SetText(HKEY_CLASSES_ROOT, "http\\shell\\open\\command", "", browser.quoted + " -shell \"%1\"");
    const auto open = [] { EXPECT_GT(Result(CUrlLink().FollowLink(Address)), 32); };
    EXPECT_EQ(browser.program.Recorded(open).commandLine, browser.quoted + " -shell \"" + Address + "\"");
    calls.shellResult = SE_ERR_NOASSOC;
    const ProgramStart start = browser.program.Recorded(open);
    EXPECT_EQ(start.commandLine, browser.quoted + " -open  " + Address);
    EXPECT_THAT(start.window, StartsWith("show 5"));
    browser.world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "");
    EXPECT_EQ(Result(CUrlLink().FollowLink(Address)), SE_ERR_NOASSOC) << "no browser";
}

TEST_F(Launch, LeavesNothingBehind)
{
    const FakeVersion version(9);
    calls.pretend = true;
    ExpectNothingLeftBehind(
        [&](int round)
        {
            calls.Refuse(LaunchRoutes[static_cast<size_t>(round) % LaunchRoutes.size()].refused);
            TestLink().GotoURLManually(Address, SW_SHOW);
        });
    EXPECT_EQ(calls.environments, 0);
}

TEST_F(Launch, ShellErrors)
{
    const std::pair<int, const char*> texts[] = {
        {0, "The operating system is out\nof memory or resources."},
        {2, "The specified file was not found."},
        {3, "The specified path was not found."},
        {5, "The operating system denied\naccess to the specified file."},
        {8, "There was not enough memory to complete the operation."},
        {11, "The .EXE file is invalid\n(non-Win32 .EXE or error in .EXE image)."},
        {26, "A sharing violation occurred. "},
        {27, "The filename association is\nincomplete or invalid."},
        {28, "The DDE transaction could not\nbe completed because the request timed out."},
        {29, "The DDE transaction failed."},
        {30, "The DDE transaction could not\nbe completed because other DDE transactions\nwere being processed."},
        {31, "There is no application associated\nwith the given filename extension."},
        {32, "The specified dynamic-link library was not found."},
        {1, "Unknown Error (1) occurred."},
        {33, "Unknown Error (33) occurred."},
        {-1, "Unknown Error (-1) occurred."},
    };
    const MessageBoxes boxes(GetModuleHandleA("tvkframe.dll"));
    for (const char* driver : {"1.0", "0.9"}) // debug messages are on before the release
    {
        const TestProduct product(
            {{"IDO_DRIVER_PRODUCTVERSION_STR", driver}, {"IDO_FEATURE_ON", 1ul}, {"IDO_FEATURE_OFF", 0ul}});
        for (const auto& [code, text] : texts)
        {
            const std::string shown = std::string("Can't open link:\n\n") + text;
            TraceWorld trace;
            TestLink traced;
            const std::vector<std::string> box = {shown + "|links_launch|30|0"};
            CUrlLink::ReportError(code);
            EXPECT_EQ(boxes.Shown(), box);
            traced.ReportError(code);
            EXPECT_EQ(boxes.Shown(), *driver == '0' ? box : std::vector<std::string>());
            EXPECT_EQ(trace.Steps(), "(char)CGUIUrlLink::ReportError()\n(char)" + shown + "\n");
        }
    }
}
