// The region of a bitmap's visible pixels.
#include "Pictures.h"
#include "controls/CTransparentBmp.h"
#include "support/NothingLeft.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <functional>

namespace
{
HRGN Region(const Picture& picture, COLORREF key, CRect* rect = nullptr)
{
    const HBITMAP bitmap = picture.Make();
    const HRGN region = CTransparentBmp().BitmapToRegion(bitmap, key, rect);
    DeleteObject(bitmap);
    return region;
}

/// The slow, obvious answer: every pixel asked one by one, and none outside the bitmap.
void ExpectRegion(HRGN region, int width, int height, const std::function<bool(int, int)>& visible)
{
    ASSERT_TRUE(region);
    RECT box;
    GetRgnBox(region, &box);
    EXPECT_TRUE(box.left >= 0 && box.top >= 0 && box.right <= width && box.bottom <= height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(PtInRegion(region, x, y) != 0, visible(x, y)) << x << ", " << y;
    DeleteObject(region);
}

Picture Striped(int width, int height)
{
    Picture picture(width, height, 32, 1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.Set(x, y, x % 2 == 1);
    return picture;
}

TEST(Regions, AreThePixelsThatAreNotOfTheKey)
{
    unsigned seed = 0;
    for (const int depth : {1, 4, 8, 16, 24, 32})
        for (const CSize size : {CSize(1, 1), CSize(2, 9), CSize(7, 5), CSize(33, 64), CSize(129, 31), CSize(640, 3)})
        {
            SCOPED_TRACE(testing::Message() << depth << " bits, " << size.cx << " x " << size.cy << ", seed " << seed);
            const Picture picture(size.cx, size.cy, depth, seed++);
            ExpectRegion(Region(picture, picture.Key()), size.cx, size.cy,
                         [&](int x, int y) { return !picture.IsHole(x, y); });
            CRect larger(5, 5, 5 + size.cx * 3, 5 + size.cy * 2);
            ExpectRegion(Region(picture, picture.Key(), &larger), size.cx * 3, size.cy * 2,
                         [&](int x, int y) { return !picture.IsHole(x / 3, y / 2); });
        }
}

TEST(Regions, TakeTheKeyWithRedAndBlueExchangedAndExactly)
{
    const struct
    {
        COLORREF key;
        bool blueIsHole;
    } keys[] = {{RGB(255, 0, 0), true},
                {RGB(0, 0, 255), false},
                {RGB(254, 0, 0), false},
                {RGB(255, 1, 0), false},
                {0x7F000000u | RGB(255, 0, 0), true}}; // the fourth byte is no colour
    Picture blue(4, 4, 32, 1);
    blue.SetHoleColour(RGB(0, 0, 255));
    for (int pixel = 0; pixel < 16; ++pixel)
        blue.Set(pixel % 4, pixel / 4, true);
    for (const auto& row : keys)
    {
        SCOPED_TRACE(testing::Message() << std::hex << row.key);
        // Nothing visible is an empty region, not a missing one.
        ExpectRegion(Region(blue, row.key), 4, 4, [&](int, int) { return !row.blueIsHole; });
    }
}

TEST(Regions, AreBuiltInBatchesFromABufferThatGrows)
{
    const struct
    {
        int width, height, growths, batches;
    } rows[] = {{200, 1, 0, 1}, {202, 1, 1, 1}, {1000, 3, 14, 1}, {1000, 9, 19, 3}, {1000, 4, 19, 2}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
        const Picture picture = Striped(row.width, row.height);
        HRGN region;
        {
            const Watch<decltype(&GlobalReAlloc)> growths("GlobalReAlloc");
            const Watch<decltype(&ExtCreateRegion)> batches("ExtCreateRegion");
            region = Region(picture, picture.Key());
            EXPECT_EQ(growths.Calls(), row.growths);
            EXPECT_EQ(batches.Calls(), row.batches);
        }
        ExpectRegion(region, row.width, row.height, [](int x, int) { return x % 2 == 0; });
    }
}

TEST(Regions, AreNullWhenTheSystemRefuses)
{
    const std::string text = "(char)Wendrel:CTransparentBmp::BitmapToRegion: ";
    const Picture picture = Striped(1000, 9);
    const struct
    {
        const char* function;
        RefuseFunction refuse;
        int call;
        std::string trace;
    } faults[] = {
        {REFUSED(GlobalAlloc), 1, "GlobalAlloc Failed.\n\n"},
        {REFUSED(GlobalLock), 1, "GlobalLock Failed.\n\n"},
        {REFUSED(GlobalLock), 3, "GlobalLock Failed.\n\n"},
        {REFUSED(GlobalReAlloc), 1, "GlobalReAlloc Failed.\n\n"},
        {REFUSED(GlobalReAlloc), 7, "GlobalReAlloc Failed.\n\n"},
        {REFUSED(CreateCompatibleDC), 1, ""},
        {REFUSED(CreateCompatibleDC), 2, ""},
        {REFUSED(CreateDIBSection), 1, ""},
        {REFUSED(GetObjectA), 1, ""},
        {REFUSED(SelectObject), 1, ""},
        {REFUSED(SelectObject), 2, ""},
        {REFUSED(BitBlt), 1, ""},
        {REFUSED(ExtCreateRegion), 1, ""},
        {REFUSED(ExtCreateRegion), 3, ""},
        {REFUSED(CombineRgn), 1, ""},
    };
    TraceWorld trace;
    for (const auto& fault : faults)
    {
        SCOPED_TRACE(testing::Message() << fault.function << ", call " << fault.call);
        trace.Clear();
        const NoDrawingObjectLeft nothingLeft;
        const auto refused = fault.refuse(fault.function, fault.call, LibraryUnderTest());
        EXPECT_FALSE(Region(picture, picture.Key()));
        EXPECT_EQ(trace.Steps(), fault.trace.empty() ? "" : text + fault.trace);
    }
    EXPECT_FALSE(CTransparentBmp().BitmapToRegion(nullptr, 0, nullptr));
    for (CRect size : {CRect(0, 0, 0, 5), CRect(0, 0, 5, 0), CRect(5, 5, 0, 0), CRect(0, 0, 100000, 100000)})
        EXPECT_FALSE(Region(picture, picture.Key(), &size)) << size.right << " x " << size.bottom;
}
} // namespace
