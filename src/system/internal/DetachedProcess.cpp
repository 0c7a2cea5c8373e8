#include "system/internal/DetachedProcess.h"
#include "system/internal/Handle.h"
#include <string>

namespace tvk
{
bool StartDetached(const char* commandLine)
{
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    return StartDetached(commandLine, startup);
}

bool StartDetached(const char* commandLine, STARTUPINFOA& startup)
{
    std::string line = commandLine; // the system may write into it
    PROCESS_INFORMATION started{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS | DETACHED_PROCESS,
                        nullptr, nullptr, &startup, &started))
        return false;
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
    return true;
}
} // namespace tvk
