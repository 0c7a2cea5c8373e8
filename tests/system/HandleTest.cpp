// The owner of system handles: closes once, moves, and keeps the thread's last error.
#include "system/internal/Handle.h"
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{
std::vector<int*> closed;

struct RecordingTraits : tvk::NullHandleTraits<int*>
{
    static void Close(int* handle) noexcept
    {
        closed.push_back(handle);
        SetLastError(99);
    }
};
using Recording = tvk::Owner<RecordingTraits>;
static_assert(!std::is_copy_constructible_v<Recording> && sizeof(Recording) == sizeof(int*));

TEST(Handle, ClosesOnceAndKeepsTheLastError)
{
    int a = 0, b = 0;
    closed.clear();
    SetLastError(7);
    {
        Recording first(&a), second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_EQ(second.Get(), &a);
        second.Reset(&a); // what it holds already
        EXPECT_TRUE(closed.empty());
        first = Recording(&b);
        *second.Receive() = &b;
        EXPECT_EQ(closed, std::vector<int*>{&a});
        EXPECT_EQ(first.Release(), &b);
    }
    EXPECT_EQ(closed, (std::vector<int*>{&a, &b}));
    EXPECT_EQ(GetLastError(), 7u);
}
} // namespace
