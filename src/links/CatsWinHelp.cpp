#include "links/CatsWinHelp.h"
#include <string_view>
#include "diag/ActivityTracker.h"
#include "diag/CSpy.h"
#include "links/internal/ConsoleSession.h"
#include "links/internal/HtmlHelp.h"
#include "system/CRegistry.h"
#include "system/internal/DetachedProcess.h"

namespace
{
constexpr unsigned short HelpRequested = 0x6015;

/// Longest command line of the viewer.
constexpr int MaxCommandLength = 259;

constexpr tvk::ConsoleSessionTexts HelpTexts = {
    "CatsWinHelp::Launching Help through CreateProcessAsUser",
    "CatsWinHelp:GetSystemDirectory() failed.",
    "CatsWinHelp - LoadLibrary()for UserEnv.dll failed.",
    "CatsWinHelp - LoadLibrary()for wtsapi32.dll failed.",
    "CatsWinHelp - LoadLibrary()for kernel32.dll failed. Sysdir=",
    "CatsWinHelp - GetProcAddress(WTSGetActiveConsoleSessionId) failed.",
    "CatsWinHelp - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)",
    "CatsWinHelp:: Calling CreateEnvironmentBlock() successful",
    "CatsWinHelp:: Calling CreateEnvironmentBlock() failed",
    "CatsWinHelp - CreateEnvironmentBlock failed",
    "CatsWinHelp - CreateProcessAsUserA failed",
};

/// The viewer's command line; empty when the Windows directory cannot be read.
CString ViewerCommand(const CString& helpFile, int mapId)
{
    char windows[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(windows, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return CString();
    CString command;
    // The viewer's name and the option bring a blank each: two stand between them.
    command.Format("%s\\hh.exe  -mapid %d ", windows, mapId);
    return command + helpFile;
}

/// Starts the viewer. Returns 0 when it did not start; the reason is the thread's last error.
int StartViewer(const CString& commandLine, unsigned int helpCommand, CSpy& spy)
{
    if (commandLine.IsEmpty() || commandLine.GetLength() > MaxCommandLength)
    {
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return 0;
    }
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOW;
    if (tvk::HasConsoleSession(CRegistry().GetOSVer()))
    {
        const tvk::ConsoleSessionLaunch session = tvk::LaunchInConsoleSession(commandLine, startup, HelpTexts, spy);
        // Of a viewer started by another token than the console user's, the command stands for the result.
        if (session.done)
            return session.result ? *session.result : static_cast<int>(helpCommand);
    }
    const bool started = tvk::StartDetached(commandLine, startup);
    // Also where no session was tried: support people look for this line.
    spy.OutputData("CatsWinHelp - CreateProcessAsUserA failed, so launch URL through CreateProcess()");
    return started;
}
} // namespace

extern "C" void CatsWinHelp(HWND owner, CString helpFile, unsigned int command, int mapId, const char* serial,
                            int launchViewer)
{
    ActivityTracker tracker;
    CSpy spy;
    bool shown = false;
    if (launchViewer)
    {
        const CString commandLine = ViewerCommand(helpFile, mapId);
        spy.OutputData("\nHelpPath: ");
        spy.OutputData(commandLine);
        shown = StartViewer(commandLine, command, spy) != 0;
        spy.OutputData(::GetLastError());
    }
    if (!shown)
        tvk::ShowHtmlHelp(owner, helpFile, command, static_cast<DWORD_PTR>(mapId));
    tracker.WriteData(HelpRequested, serial, mapId);
}
