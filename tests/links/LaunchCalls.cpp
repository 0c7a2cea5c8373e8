#include "LaunchCalls.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <shellapi.h>
#include <algorithm>
#include <cstring>

namespace
{
LaunchCalls* Current;

std::string Hex(unsigned long number)
{
    char text[16];
    std::snprintf(text, sizeof text, " %lx", number);
    return text;
}

bool Refused(const char* name)
{
    if (!Current->Refuses(name))
        return false;
    SetLastError(ERROR_NOT_SUPPORTED);
    return true;
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

HMODULE WINAPI Load(const char* path)
{
    const std::string file = path;
    return Refused(file.substr(file.rfind('\\') + 1).c_str()) ? nullptr : LoadLibraryA(path);
}

using EnvironmentFunction = BOOL(WINAPI*)(void**, HANDLE, BOOL);
using DestroyFunction = BOOL(WINAPI*)(void*);
using UserFunction = BOOL(WINAPI*)(ULONG, HANDLE*);
FARPROC RealEnvironment, RealDestroy, RealUser;

template <class F>
F As(FARPROC function)
{
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(function));
}

BOOL WINAPI MakeEnvironment(void** block, HANDLE token, BOOL inherit)
{
    Current->Note("environment" + Hex(static_cast<unsigned long>(inherit)));
    if (Refused("CreateEnvironmentBlock") || !As<EnvironmentFunction>(RealEnvironment)(block, token, inherit))
        return FALSE;
    ++Current->environments;
    return TRUE;
}

BOOL WINAPI DestroyEnvironment(void* block)
{
    --Current->environments;
    return As<DestroyFunction>(RealDestroy)(block);
}

BOOL WINAPI UserToken(ULONG session, HANDLE* token)
{
    Current->Note("user" + Hex(session));
    return !Refused("WTSQueryUserToken") && As<UserFunction>(RealUser)(session, token);
}

DWORD WINAPI ConsoleSession()
{
    return 1;
}

FARPROC WINAPI Find(HMODULE module, const char* name)
{
    const FARPROC found = GetProcAddress(module, name);
    if (IS_INTRESOURCE(name) || !found)
        return found;
    const struct
    {
        const char* name;
        FARPROC* real;
        void (*replacement)();
    } replaced[] = {
        {"CreateEnvironmentBlock", &RealEnvironment, reinterpret_cast<void (*)()>(&MakeEnvironment)},
        {"DestroyEnvironmentBlock", &RealDestroy, reinterpret_cast<void (*)()>(&DestroyEnvironment)},
        {"WTSQueryUserToken", &RealUser, reinterpret_cast<void (*)()>(&UserToken)},
        {"WTSGetActiveConsoleSessionId", nullptr, reinterpret_cast<void (*)()>(&ConsoleSession)},
    };
    for (const auto& row : replaced)
    {
        if (std::strcmp(name, row.name) != 0)
            continue;
        if (!row.real)
            return Refused(name) ? nullptr : reinterpret_cast<FARPROC>(row.replacement);
        *row.real = found;
        return reinterpret_cast<FARPROC>(row.replacement);
    }
    return found;
}

BOOL WINAPI Impersonate(SECURITY_IMPERSONATION_LEVEL level)
{
    Current->Note("self" + Hex(level));
    return !Refused("ImpersonateSelf") && ImpersonateSelf(level);
}

BOOL WINAPI ThreadToken(HANDLE thread, DWORD access, BOOL asSelf, HANDLE* token)
{
    Current->Note("token" + Hex(access) + Hex(static_cast<unsigned long>(asSelf)));
    return !Refused("OpenThreadToken") && OpenThreadToken(thread, access, asSelf, token);
}

BOOL WINAPI ImpersonateUser(HANDLE token)
{
    Current->Note("impersonate");
    return !Refused("ImpersonateLoggedOnUser") && ImpersonateLoggedOnUser(token);
}

BOOL WINAPI Duplicate(HANDLE token, DWORD access, SECURITY_ATTRIBUTES* attributes, SECURITY_IMPERSONATION_LEVEL level,
                      TOKEN_TYPE type, HANDLE* copy)
{
    Current->Note("duplicate" + Hex(access) + Hex(level) + Hex(type) + (attributes ? " attributes" : ""));
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

BOOL WINAPI StartAsUser(HANDLE token, const char* program, char* line, SECURITY_ATTRIBUTES* processAttributes,
                        SECURITY_ATTRIBUTES* threadAttributes, BOOL inherit, DWORD flags, void* environment,
                        const char* folder, STARTUPINFOA* startup, PROCESS_INFORMATION* started)
{
    Current->Note("as user" + Hex(flags) + (token ? "" : " no token") + (environment ? "" : " no environment") +
                  (program || processAttributes || threadAttributes || inherit || folder ? " more" : ""));
    return !Refused("CreateProcessAsUserA") &&
           (Pretend(started) || CreateProcessAsUserA(token, program, line, processAttributes, threadAttributes, inherit,
                                                     flags, environment, folder, startup, started));
}

BOOL WINAPI Start(const char* program, char* line, SECURITY_ATTRIBUTES* processAttributes,
                  SECURITY_ATTRIBUTES* threadAttributes, BOOL inherit, DWORD flags, void* environment,
                  const char* folder, STARTUPINFOA* startup, PROCESS_INFORMATION* started)
{
    Current->Note(
        "process" + Hex(flags) +
        (program || processAttributes || threadAttributes || inherit || environment || folder ? " more" : ""));
    return !Refused("CreateProcessA") &&
           (Pretend(started) || CreateProcessA(program, line, processAttributes, threadAttributes, inherit, flags,
                                               environment, folder, startup, started));
}

HINSTANCE WINAPI Shell(HWND owner, const char* verb, const char* file, const char* parameters, const char* folder,
                       int show)
{
    Current->Note(std::string("shell ") + verb + " " + file + Hex(static_cast<unsigned long>(show)) +
                  (owner || parameters || folder ? " more" : ""));
    if (Current->shellResult)
        return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(Current->shellResult));
    return ShellExecuteA(owner, verb, file, parameters, folder, show);
}
} // namespace

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

void LaunchCalls::Note(const std::string& call)
{
    log += call + "; ";
}
