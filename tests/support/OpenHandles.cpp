#include "OpenHandles.h"
#include "GdiObjects.h"
#include <gtest/gtest.h>
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
    for (int i = 0; i < 10; ++i)
        round(i);
    const size_t handles = OpenHandles(), modules = LoadedModules();
    const int drawing = CountGdiObjects();
    for (int i = 10; i < 1000; ++i)
        round(i);
    // The system's own threads in this process open handles for a moment, and close theirs when they are idle.
    for (int tries = 0; OpenHandles() > handles && tries < 100; ++tries)
        Sleep(20);
    EXPECT_LE(OpenHandles(), handles);
    EXPECT_LE(LoadedModules(), modules);
    EXPECT_LE(CountGdiObjects(), drawing);
}
