// Drawing through a colour key.
#include "Pictures.h"
#include "controls/CTransparentBmp.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <algorithm>

namespace
{
constexpr int Side = 40;

/// What the surface must show: the picture's visible pixels at (left, top) over what was there before.
std::vector<COLORREF> Over(std::vector<COLORREF> background, const Picture& picture, int left, int top)
{
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            if (!picture.IsHole(x, y) && left + x < Side && top + y < Side)
                background[static_cast<size_t>((top + y) * Side + left + x)] = picture.At(x, y);
    return background;
}

void Draw(CTransparentBmp& bitmap, const Surface& surface, int x, int y, int cx = 0, int cy = 0)
{
    bitmap.TransBlt(CDC::FromHandle(surface.Context()), x, y, cx, cy);
}

TEST(Drawing, ShowsTheBackgroundThroughTheHoles)
{
    unsigned seed = 100;
    for (const int depth : {0, 1, 4, 8, 16, 24, 32}) // 0: one bit, black and white
        for (const std::string from : {"a resource", "a resource, saved", "a file"})
            for (const DWORD layout : {0, LAYOUT_RTL})
                for (const bool screenFormat : {false, true})
                {
                    SCOPED_TRACE(testing::Message() << depth << " bits, from " << from << ", layout " << layout
                                                    << ", screen format " << screenFormat);
                    Picture picture(21, 17, std::max(depth, 1), ++seed);
                    if (depth == 0)
                        picture.MakeBlackAndWhite();
                    const PictureLibrary library({{7, picture.Dib()}});
                    const ScratchFile file("drawn.bmp", picture.File());
                    Surface surface(Side, Side, seed, layout);
                    const auto before = surface.Pixels();
                    const NoDrawingObjectLeft nothingLeft;
                    CTransparentBmp bitmap;
                    if (screenFormat)
                        bitmap.SetMapSystemColors(FALSE);
                    bitmap.SetSaveBmp(from == "a resource, saved");
                    const HRGN region = from == "a file"
                                            ? bitmap.LoadTransparent(7, file.Path().c_str(), picture.Key(), nullptr)
                                            : bitmap.LoadTransparent(library.Module(), 7, picture.Key(), nullptr);
                    ASSERT_TRUE(region);
                    EXPECT_EQ(CSize(bitmap.ReturnWidth(), bitmap.ReturnHeight()), CSize(21, 17));
                    Draw(bitmap, surface, 5, 9);
                    ASSERT_EQ(surface.Pixels(), Over(before, picture, 5, 9));
                    Draw(bitmap, surface, 5, 9);
                    ASSERT_EQ(surface.Pixels(), Over(before, picture, 5, 9)) << "drawn again";
                }
}

/// A picture in a library, loaded in save-bitmap mode.
class SavedDrawing : public testing::Test
{
protected:
    void Load(bool save = true, CRect* rect = nullptr)
    {
        m_bitmap.SetSaveBmp(save);
        ASSERT_TRUE(m_bitmap.LoadTransparent(m_library.Module(), 1, m_picture.Key(), rect));
    }
    void Draw(int cx = 0, int cy = 0) { ::Draw(m_bitmap, m_surface, 0, 0, cx, cy); }
    /// Draws on noise: the whole picture must stand over it.
    void ExpectDrawnOver(unsigned seed, const char* what)
    {
        m_surface.FillWithNoise(seed);
        const auto expected = Expected();
        Draw();
        EXPECT_EQ(m_surface.Pixels(), expected) << what;
    }
    std::vector<COLORREF> Expected() const { return Over(m_surface.Pixels(), m_picture, 0, 0); }

    const Picture m_picture{12, 10, 24, 5};
    const PictureLibrary m_library{{{1, m_picture.Dib()}}};
    Surface m_surface{Side, Side, 1};
    const NoDrawingObjectLeft m_nothingLeft;
    CTransparentBmp m_bitmap;
};

TEST_F(SavedDrawing, CapturesTheBackgroundOnce)
{
    Load();
    const auto first = Expected();
    Draw();
    m_surface.FillWithNoise(2);
    auto second = m_surface.Pixels();
    Draw();
    for (int y = 0; y < m_picture.Height(); ++y)
        std::copy_n(first.begin() + y * Side, m_picture.Width(), second.begin() + y * Side);
    EXPECT_EQ(m_surface.Pixels(), second) << "the first draw's background";

    m_bitmap.SetOverlap(TRUE);
    ExpectDrawnOver(3, "this draw's background");
    m_bitmap.SetOverlap(FALSE);
    Load();
    ExpectDrawnOver(4, "a load captures anew");
}

TEST_F(SavedDrawing, TakesABackgroundFromOutside)
{
    Surface other(Side, Side, 9);
    CRect area(3, 4, 3 + 12, 4 + 10);
    EXPECT_FALSE(m_bitmap.SetBkgnd(CDC::FromHandle(other.Context()), &area)) << "no buffer yet";
    Load();
    m_bitmap.SetOverlap(TRUE); // captures at every draw, but never over what was supplied
    ASSERT_TRUE(m_bitmap.SetBkgnd(CDC::FromHandle(other.Context()), &area));
    EXPECT_FALSE(m_bitmap.SetBkgnd(static_cast<CDC*>(nullptr), &area));
    Draw();
    for (int y = 0; y < m_picture.Height(); ++y)
        for (int x = 0; x < m_picture.Width(); ++x)
            ASSERT_EQ(GetPixel(m_surface.Context(), x, y),
                      m_picture.IsHole(x, y) ? GetPixel(other.Context(), 3 + x, 4 + y) : m_picture.At(x, y));
}

TEST_F(SavedDrawing, ClipsToItsOwnOrAnotherRegionAndInSaveModeTakesTheContextsAway)
{
    for (const bool save : {true, false})
    {
        Load(save);
        m_surface.FillWithNoise(1);
        const auto before = m_surface.Pixels(), whole = Expected();
        IntersectClipRect(m_surface.Context(), 0, 0, 1, 1);
        Draw();
        RECT box;
        EXPECT_EQ(GetClipBox(m_surface.Context(), &box), SIMPLEREGION);
        EXPECT_EQ(box.right, save ? Side : 1);
        SelectClipRgn(m_surface.Context(), nullptr);
        EXPECT_EQ(m_surface.Pixels() == whole, save);
        EXPECT_EQ(std::equal(before.begin() + 1, before.end(), m_surface.Pixels().begin() + 1), !save);

        Load(save);
        m_surface.FillWithNoise(1);
        for (const int right : {1, 6}) // the first is replaced at once
        {
            const HRGN left = CreateRectRgn(-5, 0, right, 100);
            m_bitmap.SetClipRgn(left);
            DeleteObject(left);
        }
        auto expected = before;
        for (int y = 0; y < m_picture.Height(); ++y)
            std::copy_n(whole.begin() + y * Side, 6, expected.begin() + y * Side);
        Draw();
        EXPECT_EQ(m_surface.Pixels(), expected);

        m_bitmap.SetClipRgn(nullptr);
        m_bitmap.SetOverlap(TRUE);
        ExpectDrawnOver(2, "back to the bitmap's own region");
        m_bitmap.SetOverlap(FALSE);
    }
}

TEST_F(SavedDrawing, StretchesWhenLoadedAndKeepsThatSizeWhenDrawn)
{
    CRect larger(100, 100, 100 + 24, 100 + 19);
    CBitmap stretched;
    stretched.Attach(LoadImageA(m_library.Module(), MAKEINTRESOURCEA(1), IMAGE_BITMAP, 24, 19, LR_CREATEDIBSECTION));
    CDC source;
    source.CreateCompatibleDC(nullptr);
    source.SelectObject(&stretched);
    const COLORREF hole = RGB(GetBValue(m_picture.Key()), GetGValue(m_picture.Key()), GetRValue(m_picture.Key()));
    for (const bool save : {true, false})
    {
        Load(save, &larger);
        for (const int scale : {0, 1, 2})
        {
            m_surface.FillWithNoise(1);
            auto expected = m_surface.Pixels();
            for (int y = 0; y < 19; ++y)
                for (int x = 0; x < 24; ++x)
                    if (GetPixel(source, x, y) != hole) // the region keeps the loaded size
                        expected[static_cast<size_t>(y * Side + x)] =
                            GetPixel(source, x / std::max(scale, 1), y / std::max(scale, 1));
            m_bitmap.SetOverlap(TRUE);
            Draw(24 * scale, 19 * scale);
            EXPECT_EQ(m_surface.Pixels(), expected) << save << ", " << scale;
        }
    }
}

TEST_F(SavedDrawing, FailsWithoutATraceOnTheSurface)
{
    const std::string dib = m_picture.Dib();
    std::string emptyHeader = dib;
    std::fill_n(emptyHeader.begin() + 4, 8, '\0');
    const PictureLibrary library({{1, dib}, {2, "no bitmap"}, {3, emptyHeader}});
    const ScratchFile junk("junk.bmp", "BM, but no bitmap at all, only some text that goes on for a while");
    const ScratchFile cut("cut.bmp", m_picture.File().substr(0, 30));
    const auto before = m_surface.Pixels();
    const auto tried = [&](HRGN region, const char* what)
    {
        EXPECT_FALSE(region) << what;
        Draw();
        EXPECT_EQ(m_surface.Pixels(), before) << what;
    };
    const COLORREF key = m_picture.Key();
    tried(nullptr, "before any load");
    CRect huge(0, 0, 200000, 200000), turned(10, 10, 0, 0);
    for (const int save : {0, 1})
    {
        m_bitmap.SetSaveBmp(save);
        tried(m_bitmap.LoadTransparent(library.Module(), 99, key, nullptr), "a missing resource");
        tried(m_bitmap.LoadTransparent(99, key, save, nullptr), "a resource missing everywhere");
        tried(m_bitmap.LoadTransparent(library.Module(), 2, key, nullptr), "a resource that is no bitmap");
        tried(m_bitmap.LoadTransparent(library.Module(), 3, key, nullptr), "a bitmap without pixels");
        tried(m_bitmap.LoadTransparent(library.Module(), 1, key, &huge), "a huge size");
        tried(m_bitmap.LoadTransparent(1, "no such file.bmp", key, nullptr), "a missing file");
        tried(m_bitmap.LoadTransparent(1, junk.Path().c_str(), key, nullptr), "a file that is no bitmap");
        // What these show is the system's affair.
        m_bitmap.LoadTransparent(1, cut.Path().c_str(), key, nullptr);
        Draw();
        m_bitmap.LoadTransparent(library.Module(), 1, key, &turned);
        Draw();
        m_surface.FillWithNoise(1);
    }
    m_bitmap.TransBlt(nullptr, 0, 0, 0, 0);
    ASSERT_TRUE(m_bitmap.LoadTransparent(library.Module(), 1, key, nullptr));
    ExpectDrawnOver(2, "a good load after all of these");
}

TEST_F(SavedDrawing, LeavesTheContextAsItWasWhenTheSystemRefuses)
{
    const HMODULE library = LibraryUnderTest(), framework = GetModuleHandleA("tvkframe.dll");
    const auto expectUnchanged = [&](const char* function, RefuseFunction refuse, HMODULE caller, int call,
                                     bool nothingInSavedDraw, bool nothingInFreshDraw)
    {
        for (const bool save : {true, false})
        {
            SCOPED_TRACE(testing::Message() << function << ", call " << call << ", saved " << save);
            Load(save);
            m_surface.FillWithNoise(1);
            const auto before = m_surface.Pixels(), drawn = Expected();
            const HGDIOBJ palette = GetCurrentObject(m_surface.Context(), OBJ_PAL);
            {
                const NoDrawingObjectLeft nothingLeft;
                const auto refused = refuse(function, call, caller);
                Draw();
            }
            EXPECT_EQ(GetCurrentObject(m_surface.Context(), OBJ_PAL), palette);
            EXPECT_EQ(m_surface.Pixels(), (save ? nothingInSavedDraw : nothingInFreshDraw) ? before : drawn);
            Draw();
            EXPECT_EQ(m_surface.Pixels(), drawn) << "drawn as ever afterwards";
        }
    };
    expectUnchanged(REFUSED(CreateCompatibleDC), library, 1, true, true);
    expectUnchanged(REFUSED(CreateCompatibleDC), library, 2, true, true);
    expectUnchanged(REFUSED(SelectObject), library, 1, true, true);
    expectUnchanged(REFUSED(SelectObject), library, 2, true, true);
    expectUnchanged(REFUSED(LoadImageA), library, 1, false, true);
    expectUnchanged(REFUSED(CreateCompatibleBitmap), framework, 1, false, true);
    expectUnchanged(REFUSED(CreatePalette), framework, 1, false, false); // drawn without a palette
    expectUnchanged(REFUSED(SelectPalette), library, 1, false, false);
    expectUnchanged(REFUSED(SelectPalette), library, 3, false, false);
}

TEST_F(SavedDrawing, LeavesNothingBehind)
{
    const ScratchFile file("again.bmp", m_picture.File());
    ExpectNothingLeftBehind(
        1008,
        [&](int round)
        {
            m_bitmap.SetSaveBmp(round % 3 == 0);
            if (round % 3 == 2)
                m_bitmap.LoadTransparent(1, file.Path().c_str(), m_picture.Key(), nullptr);
            else
                m_bitmap.LoadTransparent(m_library.Module(), round % 7 ? 1 : 99, m_picture.Key(), nullptr);
            const HRGN clip = CreateRectRgn(0, 0, 5, 5);
            m_bitmap.SetClipRgn(clip);
            DeleteObject(clip);
            Draw();
            CTransparentBmp other;
            other.LoadTransparent(m_library.Module(), 1, m_picture.Key(), nullptr);
        },
        21); // every kind of load has been tried
}

TEST(Drawing, IsOnePixelFurtherRightInMirroredContextsOfThe9xFamily)
{
    const Picture picture(8, 8, 24, 3);
    const PictureLibrary library({{1, picture.Dib()}});
    for (const int platform : {VER_PLATFORM_WIN32_WINDOWS, VER_PLATFORM_WIN32_NT})
        for (const DWORD layout : {0, LAYOUT_RTL})
        {
            const FakeVersion version(platform, 4, 10);
            const Surface surface(Side, Side, 1, layout);
            const int left = layout && platform == VER_PLATFORM_WIN32_WINDOWS ? 5 : 4;
            const auto expected = Over(surface.Pixels(), picture, left, 4);
            CTransparentBmp bitmap;
            bitmap.LoadTransparent(library.Module(), 1, picture.Key(), nullptr);
            Draw(bitmap, surface, 4, 4);
            EXPECT_EQ(surface.Pixels(), expected) << platform << ", layout " << layout;
        }
}
} // namespace
