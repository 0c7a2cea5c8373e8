// Programs for the user at the screen, started from wherever the library runs.
#pragma once

#include <windows.h>
#include <optional>
#include "system/CRegistry.h"

class CSpy;

namespace tvk
{
/// What a launch in the console session writes to the trace. The texts are the caller's: support people tell the
/// browser from the help viewer by them.
struct ConsoleSessionTexts
{
    const char* begins;
    const char* noSystemDirectory;
    const char* noEnvironmentLibrary;
    const char* noTerminalServicesLibrary;
    const char* noKernelLibrary;
    const char* noSessionFunction;
    const char* sessionAndUser;      ///< followed by the session's number and whether its user's token was had
    const char* userEnvironmentMade; ///< followed by the result of starting the program
    const char* userEnvironmentFailed;
    const char* ownEnvironmentFailed;
    const char* ownProcessFailed;
};

/// How a launch in the console session went.
struct ConsoleSessionLaunch
{
    bool done = false;          ///< counts as done; when false the caller tries another way
    std::optional<BOOL> result; ///< of starting the program as the console user, where it came to that
    DWORD savedError = 0;       ///< the thread's last error when the launch began
};

/// Windows versions with a console session and its user: from NT 4 on.
constexpr bool HasConsoleSession(CRegistry::OSVersion version)
{
    return version == CRegistry::OS_WINNT4 || version == CRegistry::OS_WIN2000 || version == CRegistry::OS_WINXP;
}

/// Starts a command line in the session of the user at the console, with that user's token and environment. Where there
/// is no such user (or no terminal services), with a copy of this thread's own token; the thread impersonates itself
/// from then on.
///
/// The launch counts as done when the program was started, and also when the console user's environment was had and the
/// start itself was refused: that user cannot start the program, and nobody else should do it in their place.
/// @param startup  is made to show the program's window, also for the caller's other ways
ConsoleSessionLaunch LaunchInConsoleSession(const char* commandLine, STARTUPINFOA& startup,
                                            const ConsoleSessionTexts& texts, CSpy& spy);
} // namespace tvk
