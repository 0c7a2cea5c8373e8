#include "GdiObjects.h"
#include <gtest/gtest.h>
#include <utility>
#include <windows.h>

namespace
{
constexpr UINT_PTR LastHandle = 0xFFFF;

int CountWindows()
{
    int count = 0;
    for (UINT_PTR handle = 1; handle <= LastHandle; ++handle)
        count += GetWindowThreadProcessId(reinterpret_cast<HWND>(handle), nullptr) == GetCurrentThreadId();
    return count;
}
} // namespace

int CountGdiObjects()
{
    int count = 0;
    for (UINT_PTR handle = 1; handle <= LastHandle; ++handle)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return count;
}

void ExpectNothingLeftBehind(int rounds, const std::function<void(int)>& round, int settled)
{
    std::pair<int, int> before;
    for (int i = 0; i < rounds; ++i)
    {
        round(i);
        if (i + 1 == settled)
            before = {CountGdiObjects(), CountWindows()};
    }
    EXPECT_EQ(std::pair(CountGdiObjects(), CountWindows()), before);
}
