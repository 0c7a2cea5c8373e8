#include "links/internal/ConsoleSession.h"
#include <string>
#include "diag/CSpy.h"
#include "settings/internal/Directories.h"
#include "system/internal/Handle.h"

namespace tvk
{
namespace
{
using CreateEnvironmentBlockFunction = BOOL(WINAPI*)(void**, HANDLE, BOOL);
using QueryUserTokenFunction = BOOL(WINAPI*)(ULONG, HANDLE*);
using GetConsoleSessionFunction = DWORD(WINAPI*)();

/// What older systems do not have; null where it is missing.
struct SessionFunctions
{
    CreateEnvironmentBlockFunction createEnvironmentBlock = nullptr;
    QueryUserTokenFunction queryUserToken = nullptr;
    GetConsoleSessionFunction getConsoleSession = nullptr;
};

/// Loads a library of the system, from the system directory only. It is never freed: the program that was started, and
/// the environment that it was given, outlast the launch, and the next launch needs it again.
HMODULE LoadSystemLibrary(const CString& systemDirectory, const char* file, const char* failure, CSpy& spy)
{
    const HMODULE library = systemDirectory.IsEmpty() ? nullptr : ::LoadLibraryA(systemDirectory + file);
    if (!library)
        spy.OutputData(failure);
    return library;
}

SessionFunctions LoadSessionFunctions(const ConsoleSessionTexts& texts, CSpy& spy)
{
    const CString directory = SystemDirectory();
    if (directory.IsEmpty())
        spy.OutputData(texts.noSystemDirectory);
    const HMODULE environment = LoadSystemLibrary(directory, "\\UserEnv.dll", texts.noEnvironmentLibrary, spy);
    const HMODULE terminal = LoadSystemLibrary(directory, "\\wtsapi32.dll", texts.noTerminalServicesLibrary, spy);
    const HMODULE kernel = LoadSystemLibrary(directory, "\\kernel32.dll", texts.noKernelLibrary, spy);
    return {FindEntry<CreateEnvironmentBlockFunction>(environment, "CreateEnvironmentBlock"),
            FindEntry<QueryUserTokenFunction>(terminal, "WTSQueryUserToken"),
            FindEntry<GetConsoleSessionFunction>(kernel, "WTSGetActiveConsoleSessionId")};
}

bool MakeEnvironment(const SessionFunctions& functions, HANDLE token, EnvironmentBlock& environment)
{
    return functions.createEnvironmentBlock && functions.createEnvironmentBlock(environment.Receive(), token, FALSE);
}

BOOL StartAs(HANDLE token, const char* commandLine, const EnvironmentBlock& environment, STARTUPINFOA& startup)
{
    std::string line = commandLine; // the system may write into it
    PROCESS_INFORMATION started{};
    const BOOL result =
        ::CreateProcessAsUserA(token, nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_UNICODE_ENVIRONMENT,
                               environment.Get(), nullptr, &startup, &started);
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
    return result;
}

/// A primary token like this thread's own. No step is checked, by design: what a step could not give shows when the
/// environment or the process is made. The thread goes on impersonating.
Token OwnPrimaryToken()
{
    Token thread, primary;
    ::ImpersonateSelf(SecurityDelegation);
    ::OpenThreadToken(::GetCurrentThread(), TOKEN_ASSIGN_PRIMARY | TOKEN_DUPLICATE | TOKEN_QUERY | TOKEN_IMPERSONATE,
                      FALSE, thread.Receive());
    ::ImpersonateLoggedOnUser(thread.Get());
    ::DuplicateTokenEx(thread.Get(), TOKEN_ASSIGN_PRIMARY | TOKEN_DUPLICATE | TOKEN_QUERY, nullptr,
                       SecurityImpersonation, TokenPrimary, primary.Receive());
    return primary;
}
} // namespace

ConsoleSessionLaunch LaunchInConsoleSession(const char* commandLine, STARTUPINFOA& startup,
                                            const ConsoleSessionTexts& texts, CSpy& spy)
{
    ConsoleSessionLaunch launch;
    spy.OutputData(texts.begins);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOW;
    launch.savedError = ::GetLastError();

    const SessionFunctions functions = LoadSessionFunctions(texts, spy);
    unsigned long session = 0;
    if (functions.getConsoleSession)
        session = functions.getConsoleSession();
    else
        spy.OutputData(texts.noSessionFunction);
    Token user;
    const BOOL hasUser = functions.queryUserToken ? functions.queryUserToken(session, user.Receive()) : FALSE;
    spy.OutputData(texts.sessionAndUser);
    spy.OutputData(session);
    spy.OutputData(hasUser);

    // Declared before the environment, so that it is closed after that is gone.
    const Token own = hasUser ? Token() : OwnPrimaryToken();
    EnvironmentBlock environment;
    if (!MakeEnvironment(functions, hasUser ? user.Get() : own.Get(), environment))
    {
        spy.OutputData(hasUser ? texts.userEnvironmentFailed : texts.ownEnvironmentFailed);
    }
    else if (hasUser)
    {
        launch.result = StartAs(user.Get(), commandLine, environment, startup);
        launch.done = true;
        spy.OutputData(texts.userEnvironmentMade);
        spy.OutputData(*launch.result);
    }
    else
    {
        launch.done = StartAs(own.Get(), commandLine, environment, startup) != FALSE;
        if (!launch.done)
            spy.OutputData(texts.ownProcessFailed);
    }
    return launch;
}
} // namespace tvk
