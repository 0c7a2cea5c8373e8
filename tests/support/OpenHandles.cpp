#include "OpenHandles.h"
#include "GdiObjects.h"
#include <windows.h>
#include <psapi.h>

std::size_t OpenHandles()
{
    std::size_t count = 0;
    DWORD flags = 0;
    for (ULONG_PTR handle = 4; handle < 0x1000; handle += 4) // the lowest free one is handed out next
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return count;
}

std::size_t LoadedModules()
{
    HMODULE modules[256];
    DWORD size = 0;
    EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size);
    return size / sizeof modules[0];
}

void ExpectNothingLeftBy(const std::function<void(int)>& round)
{
    ExpectNothingLeftBehind(1000, round);
}
