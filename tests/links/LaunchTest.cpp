// Addresses in the browser: which command line the registered browser gets, by which route, and what is traced of it.
#include "LaunchCalls.h"
#include "TestLink.h"
#include "support/FakeVersion.h"
#include "support/OpenHandles.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>
#include <optional>

namespace
{
constexpr char Address[] = "http://base/go?f=home&x=%20y";
constexpr char CommandKey[] = "webdoc\\shell\\open\\command";

using Lines = std::vector<std::string>;

/// A browser registered for this process alone, and the calls of a launch.
class Launch : public testing::Test
{
protected:
    Launch() : browser(TestFolder() + "links test browser.exe") { Register("\"" + browser.Path() + "\" -open \"%1\""); }
    ~Launch() override { SetEnvironmentVariableA("RECORDER_PARENT", nullptr); }

    void Register(const std::string& command, DWORD type = REG_SZ)
    {
        world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "webdoc");
        world.Set(HKEY_CLASSES_ROOT, CommandKey, "", type, command + (type == REG_SZ ? std::string(1, '\0') : ""));
    }

    RedirectedRoot classes{HKEY_CLASSES_ROOT};
    RegistryWorld world;
    RecordingProgram browser;
    LaunchCalls calls;
    TestLink link;
};

INT_PTR Result(HINSTANCE result)
{
    return reinterpret_cast<INT_PTR>(result);
}

/// The trace without the look-ups of settings.
Lines Trace(const TraceWorld& trace)
{
    Lines lines;
    for (const std::string& record : trace.Records())
        if (record.find("---->") == std::string::npos)
            lines.push_back(record);
    return lines;
}

Lines Joined(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}
} // namespace

TEST_F(Launch, TheAddressTakesThePlaceholdersPlace)
{
    const std::string quoted = "\"" + browser.Path() + "\"", bare = browser.Path(),
                      plainName = TestFolder() + "linksbr.exe";
    const RecordingProgram plain(plainName);
    const struct
    {
        const RecordingProgram& program;
        std::string command, received;
    } table[] = {
        {browser, quoted + " -open \"%1\"", quoted + " -open  " + Address},
        {browser, quoted + " -open \"%1\" -after", quoted + " -open  " + Address},
        {browser, quoted + " -url=%1 -after", quoted + " -url= " + Address},
        {browser, quoted + " %1 \"%1\"", quoted + " %1  " + Address}, // the quoted one first, wherever it stands
        {browser, quoted, quoted + " " + Address},
        {browser, quoted + " -x%l", quoted + " -x%l " + Address},
        {plain, plainName + " \"%1\"", plainName + "  " + Address},
        {plain, plainName, plainName + " " + Address},
    };
    for (const auto& row : table)
    {
        Register(row.command);
        const auto open = [&] { EXPECT_EQ(Result(link.GotoURLManually(Address, SW_SHOW)), 1); };
        EXPECT_EQ(row.program.Recorded(open).commandLine, row.received);
    }
}

TEST_F(Launch, WithoutABrowserNothingHappens)
{
    const std::string longPath = "\"" + browser.Path() + "\" " + std::string(260, 'x');
    TraceWorld trace;
    TestLink traced;
    const auto expectNothing = [&](const char* what)
    {
        calls.log.clear();
        trace.Clear();
        EXPECT_EQ(traced.GotoURLManually(Address, 7), nullptr) << what;
        EXPECT_EQ(calls.log, "") << what;
        EXPECT_EQ(Trace(trace),
                  (Lines{"(char)CGUIUrlLink::GotoURLManually()", std::string("(char)") + Address, "(int)7"}))
            << what;
    };
    Register("");
    expectNothing("empty command");
    Register(longPath);
    expectNothing("command too long");
    Register(longPath.substr(0, 260), REG_BINARY);
    expectNothing("command too long, no NUL");
    Register("\1\2\3\4", REG_DWORD);
    expectNothing("command is a number");
    RegDeleteTreeA(HKEY_CLASSES_ROOT, "webdoc");
    expectNothing("no command");
    world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "");
    expectNothing("no class");
    RegDeleteTreeA(HKEY_CLASSES_ROOT, ".htm");
    expectNothing("no file type");

    const std::string longest = "\"" + browser.Path() + "\"" + std::string(257 - browser.Path().size(), ' ');
    Register(longest); // 259 characters
    EXPECT_EQ(browser.Recorded([&] { traced.GotoURLManually(Address, 7); }).commandLine, longest + " " + Address);
}

TEST_F(Launch, ReadsADefaultValue)
{
    const std::string longest(259, 'v');
    world.SetText(HKEY_CLASSES_ROOT, "some\\key", "", longest);
    char text[260] = "before";
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some\\other", text), ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some\\key", text), 0);
    EXPECT_EQ(text, longest);
    EXPECT_EQ(link.GetRegKey(HKEY_CLASSES_ROOT, "some", text), 0);
    EXPECT_STREQ(text, "") << "a key without a default value";
}

namespace
{
constexpr char DirectText[] = "(char)CGUIUrlLink - CreateProcessAsUserA failed, so launch URL through CreateProcess()";
constexpr char NoEnvironmentLibrary[] = "(char)CGUIUrlLink - LoadLibrary()for UserEnv.dll failed.";
constexpr char NoTerminalLibrary[] = "(char)CGUIUrlLink - LoadLibrary()for wtsapi32.dll failed.";
constexpr char NoKernelLibrary[] = "(char)CGUIUrlLink - LoadLibrary()for kernel32.dll failed. Sysdir=";
constexpr char NoSessionFunction[] = "(char)CGUIUrlLink - GetProcAddress(WTSGetActiveConsoleSessionId) failed.";
constexpr char OwnEnvironmentFailed[] = "(char)CGUIUrlLink - CreateEnvironmentBlock failed";
constexpr char OwnProcessFailed[] = "(char)CGUIUrlLink - CreateProcessAsUserA failed";
const Lines UserEnvironmentMade = {"(char)CGUIUrlLink:: Calling CreateEnvironmentBlock() successful", "(int)1"};
const Lines UserEnvironmentFailed = {"(char)CGUIUrlLink:: Calling CreateEnvironmentBlock() failed"};

Lines Session(const std::string& id, const std::string& user)
{
    return {"(char)CGUIUrlLink - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)", "(DWORD)" + id,
            "(int)" + user};
}

constexpr char OwnToken[] = "self 3; token f 0; impersonate; duplicate b 2 1; environment 0; ";
const std::string AsUser = "as user 400; ", Direct = "process 28; ";
} // namespace

TEST_F(Launch, EachRoute)
{
    constexpr DWORD Saved = 4711;
    const Lines user = Session("1", "1"), noUser = Session("1", "0");
    const std::string userSteps = "user 1; environment 0; ";
    const struct
    {
        std::set<std::string> refused;
        std::string steps;
        Lines trace; // between "Launching" and "return code"
        int result;
        int version = 9;
        bool starts = true;
    } routes[] = {
        {{}, userSteps + AsUser, Joined({user, UserEnvironmentMade}), 1},
        {{}, userSteps + AsUser, Joined({user, UserEnvironmentMade}), 1, 8},
        {{}, userSteps + AsUser, Joined({user, UserEnvironmentMade}), 1, 7},
        // The console user's environment was made: whatever comes of the start is the result.
        {{"CreateProcessAsUserA"}, userSteps + AsUser, Joined({user, {UserEnvironmentMade[0], "(int)0"}}), 0, 9, false},
        {{"CreateEnvironmentBlock"}, userSteps + Direct, Joined({user, UserEnvironmentFailed, {DirectText}}), 1},
        {{"CreateEnvironmentBlock", "CreateProcessA"},
         userSteps + Direct,
         Joined({user, UserEnvironmentFailed, {DirectText}}),
         0,
         9,
         false},
        {{"UserEnv.dll"},
         "user 1; " + Direct,
         Joined({{NoEnvironmentLibrary}, user, UserEnvironmentFailed, {DirectText}}),
         1},
        // No user at the console: this process's own token, and the saved error for a result.
        {{"WTSQueryUserToken"}, "user 1; " + (OwnToken + AsUser), noUser, Saved},
        {{"wtsapi32.dll"}, OwnToken + AsUser, Joined({{NoTerminalLibrary}, noUser}), Saved},
        {{"WTSQueryUserToken", "CreateEnvironmentBlock"},
         std::string("user 1; ") + OwnToken + Direct,
         Joined({noUser, {OwnEnvironmentFailed, DirectText}}),
         1},
        {{"WTSQueryUserToken", "CreateProcessAsUserA"},
         "user 1; " + (OwnToken + AsUser) + Direct,
         Joined({noUser, {OwnProcessFailed, DirectText}}),
         1,
         8},
        {{"WTSQueryUserToken", "CreateProcessAsUserA", "CreateProcessA"},
         "user 1; " + (OwnToken + AsUser) + Direct,
         Joined({noUser, {OwnProcessFailed, DirectText}}),
         0,
         8,
         false},
        {{"kernel32.dll"},
         "user 0; environment 0; " + AsUser,
         Joined({{NoKernelLibrary, NoSessionFunction}, Session("0", "1"), UserEnvironmentMade}),
         1},
        {{"WTSGetActiveConsoleSessionId"},
         "user 0; environment 0; " + AsUser,
         Joined({{NoSessionFunction}, Session("0", "1"), UserEnvironmentMade}),
         1},
        {{"GetSystemDirectoryA"},
         "self 3; token f 0; impersonate; duplicate b 2 1; " + Direct,
         Joined({{"(char)CGUIUrlLink:GetSystemDirectory() failed.", NoEnvironmentLibrary, NoTerminalLibrary,
                  NoKernelLibrary, NoSessionFunction},
                 Session("0", "0"),
                 {OwnEnvironmentFailed, DirectText}}),
         1},
        {{}, Direct, {DirectText}, 1, 0},
        {{}, Direct, {DirectText}, 1, 4},
        {{"CreateProcessA"}, Direct, {DirectText}, 0, 6, false},
    };
    const std::string line = "\"" + browser.Path() + "\" -open  " + Address;
    SetEnvironmentVariableA("RECORDER_PARENT", "inherited");
    for (const auto& route : routes)
    {
        TraceWorld trace;
        const FakeVersion version(route.version, Saved);
        calls.Refuse(route.refused);
        TestLink traced;
        INT_PTR result = -1;
        const ProgramStart start =
            browser.Recorded([&] { result = Result(traced.GotoURLManually(Address, 9)); }, route.starts);
        EXPECT_EQ(result, route.result) << route.steps;
        EXPECT_EQ(calls.log, route.steps);
        EXPECT_EQ(start.commandLine, route.starts ? line : "nothing was started");

        const bool session = route.version >= 7;
        Lines expected = {"(char)CGUIUrlLink::GotoURLManually()", std::string("(char)") + Address, "(int)9",
                          "(char)CGUIUrlLink::GotoURLManually()...CreateProcess()", "(char)" + line};
        if (session)
            expected.push_back("(char)CGUIUrlLink::GotoURLManually()...Launching URL through CreateProcessAsUser");
        expected = Joined({expected,
                           route.trace,
                           {"(char)CGUIUrlLink::GotoURLManually()...CreateProcess return code",
                            "(int)" + std::to_string(route.result)}});
        if (!route.result)
            expected =
                Joined({expected, {"(char)CreateProcess()...GetLastError()", session ? "(DWORD)4711" : "(DWORD)0"}});
        EXPECT_EQ(Trace(trace), expected) << route.steps;

        if (route.starts)
        {
            const bool direct = route.steps.find(Direct) != std::string::npos;
            EXPECT_EQ(start.parent, direct ? "inherited" : "") << route.steps;
            EXPECT_EQ(start.window.substr(0, 14), session ? "show 5, flags " : "show 0, flags ") << start.window;
            EXPECT_TRUE(!direct || start.process == "priority 20, no console") << start.process;
        }
        HANDLE token = nullptr;
        const bool impersonates = OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token) != FALSE;
        EXPECT_EQ(impersonates, route.steps.find("self") != std::string::npos) << route.steps;
        if (impersonates)
            CloseHandle(token);
        EXPECT_EQ(calls.environments, 0) << route.steps;
    }
}

TEST_F(Launch, ASuccessWithoutASavedErrorReadsAsAFailure)
{
    const FakeVersion version(9, 0);
    TraceWorld trace;
    calls.Refuse({"WTSQueryUserToken"});
    TestLink traced;
    EXPECT_NE(browser.Recorded([&] { EXPECT_EQ(traced.GotoURLManually(Address, 5), nullptr); }).commandLine,
              "nothing was started");
    const Lines records = Trace(trace);
    ASSERT_GE(records.size(), 4u);
    EXPECT_EQ(Lines(records.end() - 4, records.end()),
              (Lines{"(char)CGUIUrlLink::GotoURLManually()...CreateProcess return code", "(int)0",
                     "(char)CreateProcess()...GetLastError()", "(DWORD)0"}));
}

TEST_F(Launch, TheShellOnTheOldFamily)
{
    const Lines begin = {"(char)CGUIUrlLink::GotoURL()", std::string("(char)") + Address, "(int)5"};
    const std::string shell = std::string("shell open ") + Address + " 5; ";
    const struct
    {
        int version, shellResult;
        INT_PTR result;
        std::string steps;
        Lines failure;
    } table[] = {
        {4, 33, 33, shell, {}},
        {3, 34, 34, shell, {}},
        {6, 32, 1, shell + Direct, {"(char)ShellExecute() Failed...return code", "(int)32"}},
        {5, 2, 1, shell + Direct, {"(char)ShellExecute() Failed...return code", "(int)2"}},
        {0, 33, 1, Direct, {}},
        {7, 33, 1, "user 1; environment 0; " + AsUser, {}},
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
        EXPECT_EQ(calls.log, row.steps);
        const Lines records = Trace(trace);
        const Lines expected = Joined({begin, row.failure});
        ASSERT_GE(records.size(), expected.size());
        EXPECT_EQ(Lines(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
        const bool manually = row.result == 1;
        EXPECT_EQ(records.size() > expected.size(), manually);
        EXPECT_TRUE(!manually || records[expected.size()] == "(char)CGUIUrlLink::GotoURLManually()");
    }
}

TEST_F(Launch, TheRealShell)
{
    world.SetText(HKEY_CLASSES_ROOT, "http", "URL Protocol", "");
    world.SetText(HKEY_CLASSES_ROOT, "http\\shell\\open\\command", "", "\"" + browser.Path() + "\" -shell \"%1\"");
    const FakeVersion version(5);
    const auto open = [&] { EXPECT_GT(Result(link.GotoURL(Address, SW_SHOW)), 32); };
    EXPECT_EQ(browser.Recorded(open).commandLine, "\"" + browser.Path() + "\" -shell \"" + Address + "\"");
    EXPECT_EQ(calls.log, std::string("shell open ") + Address + " 5; ");
}

TEST_F(Launch, AMissingBrowserFails)
{
    Register("\"c:\\no such folder\\browser.exe\" \"%1\"");
    EXPECT_EQ(link.GotoURL(Address, SW_SHOW), nullptr);
    EXPECT_EQ(calls.log, "user 1; environment 0; as user 400; ");
}

TEST_F(Launch, LeavesNothingBehind)
{
    const std::set<std::string> faults[] = {{},
                                            {"CreateProcessAsUserA"},
                                            {"CreateEnvironmentBlock"},
                                            {"WTSQueryUserToken"},
                                            {"WTSQueryUserToken", "CreateEnvironmentBlock"},
                                            {"WTSQueryUserToken", "CreateProcessAsUserA"},
                                            {"WTSQueryUserToken", "CreateProcessAsUserA", "CreateProcessA"}};
    const FakeVersion version(9);
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
        TestLink().GotoURLManually(Address, SW_SHOW);
    }
    EXPECT_EQ(OpenHandles(), handles);
    EXPECT_EQ(LoadedModules(), modules);
    EXPECT_EQ(calls.environments, 0);
}

namespace
{
std::string ShownBox;

int WINAPI NoteBox(HWND, const char* text, const char*, UINT style)
{
    ShownBox = text + std::string("|") + std::to_string(style);
    return IDOK;
}
} // namespace

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
    const IatPatch box(GetModuleHandleA("tvkframe.dll"), "MessageBoxA", &NoteBox);
    for (const char* driver : {"1.0", "0.9"}) // debug messages are on before the release
    {
        const TestProduct product(
            {{"IDO_DRIVER_PRODUCTVERSION_STR", driver}, {"IDO_FEATURE_ON", 1ul}, {"IDO_FEATURE_OFF", 0ul}});
        for (const auto& [code, text] : texts)
        {
            const std::string shown = std::string("Can't open link:\n\n") + text;
            TraceWorld trace;
            TestLink traced;
            ShownBox.clear();
            traced.ReportError(code);
            EXPECT_EQ(ShownBox, *driver == '0' ? shown + "|48" : "");
            EXPECT_EQ(Trace(trace), (Lines{"(char)CGUIUrlLink::ReportError()", "(char)" + shown}));
        }
    }
}
