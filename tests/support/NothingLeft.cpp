#include "NothingLeft.h"
#include <gtest/gtest.h>
#include <windows.h>
#include <psapi.h>

namespace
{
BOOL CALLBACK CountOwn(HWND window, LPARAM count)
{
    *reinterpret_cast<int*>(count) += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
    return TRUE;
}

/// Windows of this thread, at every depth, and those for messages only. Asking for each possible handle took seconds.
int CountWindows()
{
    int count = 0;
    EnumChildWindows(GetDesktopWindow(), &CountOwn, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        CountOwn(window, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// The system's own count is not to be had everywhere.
int OpenHandles()
{
    int count = 0;
    DWORD flags = 0;
    for (ULONG_PTR handle = 4; handle < 0x1000; handle += 4) // the lowest free one is handed out next
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return count;
}

DWORD LoadedModules()
{
    HMODULE modules[256];
    DWORD size = 0;
    EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size);
    return size / sizeof modules[0];
}
} // namespace

int CountGdiObjects()
{
    int count = 0;
    for (UINT_PTR handle = 1; handle <= 0xFFFF; ++handle)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return count;
}

NoDrawingObjectLeft::~NoDrawingObjectLeft()
{
    EXPECT_LE(CountGdiObjects(), m_before) << "drawing objects are left";
}

void ExpectNothingLeftBehind(int rounds, const std::function<void(int)>& round, int settled)
{
    int drawing = 0, windows = 0, handles = 0;
    DWORD modules = 0;
    for (int i = 0; i < rounds; ++i)
    {
        round(i);
        if (i + 1 == settled)
        {
            drawing = CountGdiObjects();
            windows = CountWindows();
            handles = OpenHandles();
            modules = LoadedModules();
        }
    }
    // The system's own threads in this process open handles for a moment, and close theirs when they are idle.
    for (int tries = 0; OpenHandles() > handles && tries < 100; ++tries)
        Sleep(20);
    EXPECT_LE(CountGdiObjects(), drawing);
    EXPECT_LE(CountWindows(), windows);
    EXPECT_LE(OpenHandles(), handles);
    EXPECT_LE(LoadedModules(), modules);
}

void ExpectNothingLeftBehind(const std::function<void(int)>& round)
{
    ExpectNothingLeftBehind(1000, round);
}
