// The region of a bitmap's visible pixels.
#include "Pictures.h"
#include "controls/CTransparentBmp.h"
#include "support/NothingLeft.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <array>
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
    Picture blue(4, 4, 32, 1);
    blue.SetHoleColour(RGB(0, 0, 255));
    for (int pixel = 0; pixel < 16; ++pixel)
        blue.Set(pixel % 4, pixel / 4, true);
    for (const COLORREF hole : {RGB(255, 0, 0), 0x7F000000u | RGB(255, 0, 0)})  // the fourth byte is no colour
        ExpectRegion(Region(blue, hole), 4, 4, [](int, int) { return false; }); // an empty region, not a missing one
    for (const COLORREF other : {RGB(0, 0, 255), RGB(254, 0, 0), RGB(255, 1, 0)})
    {
        SCOPED_TRACE(testing::Message() << std::hex << other);
        ExpectRegion(Region(blue, other), 4, 4, [](int, int) { return true; });
    }
}

TEST(Regions, AreBuiltInBatchesFromABufferThatGrows)
{
    for (const auto& [width, height, growths, batches] :
         {std::array{200, 1, 0, 1}, {202, 1, 1, 1}, {1000, 3, 14, 1}, {1000, 9, 19, 3}, {1000, 4, 19, 2}})
    {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        const Picture picture = Striped(width, height);
        HRGN region;
        {
            const Watch<decltype(&GlobalReAlloc)> grown("GlobalReAlloc");
            const Watch<decltype(&ExtCreateRegion)> made("ExtCreateRegion");
            region = Region(picture, picture.Key());
            EXPECT_EQ(grown.Calls(), growths);
            EXPECT_EQ(made.Calls(), batches);
        }
        ExpectRegion(region, width, height, [](int x, int) { return x % 2 == 0; });
    }
}

TEST(Regions, AreNullWhenTheSystemRefuses)
{
    const std::string text = "(char)Wendrel:CTransparentBmp::BitmapToRegion: ";
    const Picture picture = Striped(1000, 9);
    TraceWorld trace;
    const auto expectNull = [&](const char* function, RefuseFunction refuse, int call, const std::string& traced)
    {
        SCOPED_TRACE(testing::Message() << function << ", call " << call);
        trace.Clear();
        const NoDrawingObjectLeft nothingLeft;
        const auto refused = refuse(function, call, LibraryUnderTest());
        EXPECT_FALSE(Region(picture, picture.Key()));
        EXPECT_EQ(trace.Steps(), traced.empty() ? "" : text + traced);
    };
    expectNull(REFUSED(GlobalAlloc), 1, "GlobalAlloc Failed.\n\n");
    expectNull(REFUSED(GlobalLock), 1, "GlobalLock Failed.\n\n");
    expectNull(REFUSED(GlobalLock), 3, "GlobalLock Failed.\n\n");
    expectNull(REFUSED(GlobalReAlloc), 1, "GlobalReAlloc Failed.\n\n");
    expectNull(REFUSED(GlobalReAlloc), 7, "GlobalReAlloc Failed.\n\n");
    expectNull(REFUSED(CreateCompatibleDC), 1, "");
    expectNull(REFUSED(CreateCompatibleDC), 2, "");
    expectNull(REFUSED(CreateDIBSection), 1, "");
    expectNull(REFUSED(GetObjectA), 1, "");
    expectNull(REFUSED(SelectObject), 1, "");
    expectNull(REFUSED(SelectObject), 2, "");
    expectNull(REFUSED(BitBlt), 1, "");
    expectNull(REFUSED(ExtCreateRegion), 1, "");
    expectNull(REFUSED(ExtCreateRegion), 3, "");
    expectNull(REFUSED(CombineRgn), 1, "");
    EXPECT_FALSE(CTransparentBmp().BitmapToRegion(nullptr, 0, nullptr));
    for (CRect size : {CRect(0, 0, 0, 5), CRect(0, 0, 5, 0), CRect(5, 5, 0, 0), CRect(0, 0, 100000, 100000)})
        EXPECT_FALSE(Region(picture, picture.Key(), &size)) << size.right << " x " << size.bottom;
}
} // namespace
