#include "LaunchCalls.h"
#include "support/TestProduct.h"
#include <shellapi.h>
#include <userenv.h>
#include <wtsapi32.h>
#include <cstring>
#include <map>
#include <regex>

namespace
{
LaunchCalls* Current;

bool Refused(const std::string& name)
{
    if (!Current->Refuses(name))
        return false;
    SetLastError(ERROR_NOT_SUPPORTED);
    return true;
}

BOOL WINAPI MakeEnvironment(void** block, HANDLE token, BOOL inherit)
{
    Current->Note("environment", inherit);
    if (Refused("CreateEnvironmentBlock") || !CreateEnvironmentBlock(block, token, inherit))
        return FALSE;
    ++Current->environments;
    return TRUE;
}

BOOL WINAPI DestroyEnvironment(void* block)
{
    --Current->environments;
    return DestroyEnvironmentBlock(block);
}

BOOL WINAPI UserToken(ULONG session, HANDLE* token)
{
    Current->Note("user", session);
    return !Refused("WTSQueryUserToken") && WTSQueryUserToken(session, token);
}

DWORD WINAPI ConsoleSession()
{
    return 1;
}

FARPROC WINAPI Find(HMODULE module, const char* name)
{
    static const std::map<std::string, void (*)()> replacements = {
        {"CreateEnvironmentBlock", reinterpret_cast<void (*)()>(&MakeEnvironment)},
        {"DestroyEnvironmentBlock", reinterpret_cast<void (*)()>(&DestroyEnvironment)},
        {"WTSQueryUserToken", reinterpret_cast<void (*)()>(&UserToken)},
        {"WTSGetActiveConsoleSessionId", reinterpret_cast<void (*)()>(&ConsoleSession)},
    };
    const FARPROC found = GetProcAddress(module, name);
    if (IS_INTRESOURCE(name) || !found)
        return found;
    if (std::strcmp(name, "WTSGetActiveConsoleSessionId") == 0 && Refused(name))
        return nullptr;
    const auto replacement = replacements.find(name);
    return replacement == replacements.end() ? found : reinterpret_cast<FARPROC>(replacement->second);
}

HMODULE WINAPI Load(const char* path)
{
    const std::string file = path;
    Current->loads += file + "; ";
    return Refused(file.substr(file.rfind('\\') + 1)) ? nullptr : LoadLibraryA(path);
}

UINT WINAPI SystemDirectory(char* buffer, UINT size)
{
    return Refused("GetSystemDirectoryA") ? 0 : GetSystemDirectoryA(buffer, size);
}

UINT WINAPI WindowsDirectory(char* buffer, UINT size)
{
    if (Refused("GetWindowsDirectoryA"))
        return 0;
    if (!Current->windowsFolder)
        return GetWindowsDirectoryA(buffer, size);
    lstrcpynA(buffer, Current->windowsFolder, static_cast<int>(size));
    return static_cast<UINT>(std::strlen(Current->windowsFolder));
}

BOOL WINAPI Impersonate(SECURITY_IMPERSONATION_LEVEL level)
{
    Current->Note("self", level);
    return !Refused("ImpersonateSelf") && ImpersonateSelf(level);
}

BOOL WINAPI ThreadToken(HANDLE thread, DWORD access, BOOL asSelf, HANDLE* token)
{
    Current->Note("token", access, asSelf);
    return !Refused("OpenThreadToken") && OpenThreadToken(thread, access, asSelf, token);
}

BOOL WINAPI ImpersonateUser(HANDLE token)
{
    Current->Note(token ? "impersonate" : "impersonate nobody");
    return !Refused("ImpersonateLoggedOnUser") && ImpersonateLoggedOnUser(token);
}

BOOL WINAPI Duplicate(HANDLE token, DWORD access, SECURITY_ATTRIBUTES* attributes, SECURITY_IMPERSONATION_LEVEL level,
                      TOKEN_TYPE type, HANDLE* copy)
{
    Current->Note(attributes ? "duplicate with attributes" : "duplicate", access, level, type);
    return !Refused("DuplicateTokenEx") && DuplicateTokenEx(token, access, attributes, level, type, copy);
}

bool Pretend(PROCESS_INFORMATION* started)
{
    if (!Current->pretend)
        return false;
    started->hProcess = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    started->hThread = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    return true;
}

BOOL Started(BOOL result)
{
    if (result)
        SetLastError(LaunchCalls::Started);
    return result;
}

BOOL WINAPI StartAsUser(HANDLE token, const char* program, char* line, SECURITY_ATTRIBUTES* process,
                        SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, void* environment, const char* folder,
                        STARTUPINFOA* startup, PROCESS_INFORMATION* started)
{
    const bool more = program || process || thread || inherit || folder || !environment;
    Current->Note(more ? "as user with more" : token ? "as user" : "as nobody", flags);
    return !Refused("CreateProcessAsUserA") &&
           Started(Pretend(started) || CreateProcessAsUserA(token, program, line, process, thread, inherit, flags,
                                                            environment, folder, startup, started));
}

BOOL WINAPI Start(const char* program, char* line, SECURITY_ATTRIBUTES* process, SECURITY_ATTRIBUTES* thread,
                  BOOL inherit, DWORD flags, void* environment, const char* folder, STARTUPINFOA* startup,
                  PROCESS_INFORMATION* started)
{
    const bool more = program || process || thread || inherit || environment || folder;
    Current->Note(more ? "process with more" : "process", flags);
    return !Refused("CreateProcessA") &&
           Started(Pretend(started) || CreateProcessA(program, line, process, thread, inherit, flags, environment,
                                                      folder, startup, started));
}

HINSTANCE WINAPI Shell(HWND owner, const char* verb, const char* file, const char* parameters, const char* folder,
                       int show)
{
    Current->Note((owner || parameters || folder ? "shell with more " : "shell ") + std::string(verb) + " " + file,
                  show);
    if (Current->shellResult)
        return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(Current->shellResult));
    return ShellExecuteA(owner, verb, file, parameters, folder, show);
}

// The parts of the routes.
const std::string User = "user 1; ", Environment = "environment 0; ", AsUser = "as user 400; ",
                  AsNobody = "as nobody 400; ", Direct = "process 28; ",
                  Own = "self 3; token f 0; impersonate; duplicate b 2 1; environment 0; ",
                  OwnWithoutToken = "self 3; token f 0; impersonate nobody; duplicate b 2 1; environment 0; ";
const std::string Asked = "(char)@ - dSessionId(fpGetConsoleSessionId),bFlag (fpQueryUserToken)\n",
                  HasUser = Asked + "(DWORD)1\n(int)1\n", NoUser = Asked + "(DWORD)1\n(int)0\n",
                  Made = "(char)@:: Calling CreateEnvironmentBlock() successful\n(int)1\n",
                  NotMade = "(char)@:: Calling CreateEnvironmentBlock() failed\n",
                  OwnNotMade = "(char)@ - CreateEnvironmentBlock failed\n",
                  OwnNotStarted = "(char)@ - CreateProcessAsUserA failed\n",
                  Directly = "(char)@ - CreateProcessAsUserA failed, so launch URL through CreateProcess()\n",
                  NoEnvironmentLibrary = "(char)@ - LoadLibrary()for UserEnv.dll failed.\n",
                  NoTerminalLibrary = "(char)@ - LoadLibrary()for wtsapi32.dll failed.\n",
                  NoKernelLibrary = "(char)@ - LoadLibrary()for kernel32.dll failed. Sysdir=\n",
                  NoSession = "(char)@ - GetProcAddress(WTSGetActiveConsoleSessionId) failed.\n";
} // namespace

const std::vector<LaunchRoute> LaunchRoutes = {
    {{}, User + Environment + AsUser, HasUser + Made, 1},
    {{}, User + Environment + AsUser, HasUser + Made, 1, 8},
    {{}, User + Environment + AsUser, HasUser + Made, 1, 7},
    // The console user's environment was made: whatever comes of the start is the result.
    {{"CreateProcessAsUserA"},
     User + Environment + AsUser,
     HasUser + "(char)@:: Calling CreateEnvironmentBlock() successful\n(int)0\n",
     0},
    {{"CreateEnvironmentBlock"}, User + Environment + Direct, HasUser + NotMade + Directly, 1},
    {{"CreateEnvironmentBlock", "CreateProcessA"}, User + Environment + Direct, HasUser + NotMade + Directly, 0},
    {{"UserEnv.dll"}, User + Direct, NoEnvironmentLibrary + HasUser + NotMade + Directly, 1},
    // No user at the console: this process's own token. Only the environment and the start decide.
    {{"WTSQueryUserToken"}, User + Own + AsUser, NoUser, LaunchRoute::OwnToken},
    {{"wtsapi32.dll"}, Own + AsUser, NoTerminalLibrary + NoUser, LaunchRoute::OwnToken},
    {{"WTSQueryUserToken", "ImpersonateLoggedOnUser"}, User + Own + AsUser, NoUser, LaunchRoute::OwnToken},
    {{"WTSQueryUserToken", "ImpersonateSelf"}, User + OwnWithoutToken + AsNobody, NoUser, LaunchRoute::OwnToken},
    {{"WTSQueryUserToken", "OpenThreadToken"}, User + OwnWithoutToken + AsNobody, NoUser, LaunchRoute::OwnToken},
    {{"WTSQueryUserToken", "DuplicateTokenEx"}, User + Own + AsNobody, NoUser, LaunchRoute::OwnToken},
    {{"WTSQueryUserToken", "CreateEnvironmentBlock"}, User + Own + Direct, NoUser + OwnNotMade + Directly, 1},
    {{"WTSQueryUserToken", "CreateProcessAsUserA"},
     User + Own + AsUser + Direct,
     NoUser + OwnNotStarted + Directly,
     1,
     8},
    {{"WTSQueryUserToken", "CreateProcessAsUserA", "CreateProcessA"},
     User + Own + AsUser + Direct,
     NoUser + OwnNotStarted + Directly,
     0,
     8},
    {{"kernel32.dll"},
     "user 0; " + Environment + AsUser,
     NoKernelLibrary + NoSession + Asked + "(DWORD)0\n(int)1\n" + Made,
     1},
    {{"WTSGetActiveConsoleSessionId"},
     "user 0; " + Environment + AsUser,
     NoSession + Asked + "(DWORD)0\n(int)1\n" + Made,
     1},
    {{"GetSystemDirectoryA"},
     "self 3; token f 0; impersonate; duplicate b 2 1; " + Direct,
     "(char)@:GetSystemDirectory() failed.\n" + NoEnvironmentLibrary + NoTerminalLibrary + NoKernelLibrary + NoSession +
         Asked + "(DWORD)0\n(int)0\n" + OwnNotMade + Directly,
     1},
    {{}, Direct, Directly, 1, 0},
    {{}, Direct, Directly, 1, 4},
    {{"CreateProcessA"}, Direct, Directly, 0, 6},
};

std::string LaunchRoute::Trace(const std::string& launcher, const std::string& begins) const
{
    return std::regex_replace((version >= 7 ? "(char)" + begins + "\n" : "") + trace, std::regex("@"), launcher);
}

LaunchCalls::LaunchCalls()
{
    const HMODULE library = LibraryUnderTest();
    m_patches.emplace_back(library, "GetSystemDirectoryA", &SystemDirectory);
    m_patches.emplace_back(library, "GetWindowsDirectoryA", &WindowsDirectory);
    m_patches.emplace_back(library, "LoadLibraryA", &Load);
    m_patches.emplace_back(library, "GetProcAddress", &Find);
    m_patches.emplace_back(library, "ImpersonateSelf", &Impersonate);
    m_patches.emplace_back(library, "OpenThreadToken", &ThreadToken);
    m_patches.emplace_back(library, "ImpersonateLoggedOnUser", &ImpersonateUser);
    m_patches.emplace_back(library, "DuplicateTokenEx", &Duplicate);
    m_patches.emplace_back(library, "CreateProcessAsUserA", &StartAsUser);
    m_patches.emplace_back(library, "CreateProcessA", &Start);
    m_patches.emplace_back(library, "ShellExecuteA", &Shell);
    Current = this;
}

LaunchCalls::~LaunchCalls()
{
    RevertToSelf();
}

void LaunchCalls::Refuse(std::set<std::string> names)
{
    RevertToSelf();
    log.clear();
    m_refused = std::move(names);
}

bool LaunchCalls::Refuses(const std::string& name)
{
    return m_refused.count(name) != 0;
}

std::string LaunchCalls::Hex(unsigned long number)
{
    char text[16];
    std::snprintf(text, sizeof text, " %lx", number);
    return text;
}
