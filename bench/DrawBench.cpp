// Rows of drawing: a keyed draw of the sample product's button against the system calls that its steps demand, and
// against the system's own transparent copy.
#include "Harness.h"
#include "sample/product/bitmaps.h"
#include <afxwin.h>
#include "controls/CTransparentBmp.h"
#include "settings/TvkProduct.h"
#include <cstdio>

namespace
{
constexpr COLORREF Key = RGB(0, 255, 0);
constexpr WORD PaletteColours = 256;

/// The system calls work on the very same bitmaps: how fast large ones copy depends on where they lie in memory.
class Opened : public CTransparentBmp
{
public:
    using CTransparentBmp::m_hBkgndBmp;
    using CTransparentBmp::m_hSavedBmp;
};

/// A palette of as many colours as a draw makes.
HPALETTE MakePalette()
{
    struct
    {
        WORD version = 0x300;
        WORD count = PaletteColours;
        PALETTEENTRY entries[PaletteColours] = {};
    } definition;
    return CreatePalette(reinterpret_cast<LOGPALETTE*>(&definition));
}

/// The calls of a draw with the background captured, one after the other.
void DrawBySystemCalls(HDC target, HMODULE module, HBITMAP picture, HBITMAP background, HRGN shape, int width,
                       int height)
{
    const HRSRC resource =
        FindResourceA(module, MAKEINTRESOURCEA(IDB_ACTION_NORMAL), reinterpret_cast<LPCSTR>(RT_BITMAP));
    LockResource(LoadResource(module, resource));
    const HPALETTE palette = MakePalette();
    const HDC contexts[] = {target, CreateCompatibleDC(target), CreateCompatibleDC(nullptr)};
    HPALETTE former[3];
    for (int i = 0; i < 3; ++i)
    {
        former[i] = SelectPalette(contexts[i], palette, TRUE);
        RealizePalette(contexts[i]);
    }
    const HGDIOBJ firstBitmap = SelectObject(contexts[1], background), second = SelectObject(contexts[2], picture);
    SelectClipRgn(contexts[1], shape);
    StretchBlt(contexts[1], 0, 0, width, height, contexts[2], 0, 0, width, height, SRCCOPY);
    SelectClipRgn(target, nullptr);
    BitBlt(target, 10, 10, width, height, contexts[1], 0, 0, SRCCOPY);
    SelectObject(contexts[1], firstBitmap);
    SelectObject(contexts[2], second);
    for (int i = 0; i < 3; ++i)
        SelectPalette(contexts[i], former[i], TRUE);
    DeleteDC(contexts[2]);
    DeleteDC(contexts[1]);
    DeleteObject(palette);
}

/// The button stretched to a size. The contexts and selections of a draw cost the same whatever its size: only on a
/// large picture does the copying itself stand out.
bool Draw(int width, int height, double transparentGoal)
{
    const HMODULE module = LoadLibraryA(TvkProduct::GetProductPrefix() + "jres.dll");
    Opened bitmap;
    bitmap.SetSaveBmp(TRUE);
    bitmap.SetMapSystemColors(FALSE); // in the screen's own format: nothing to convert while drawing
    CRect area(0, 0, width, height);
    const HRGN shape = bitmap.LoadTransparent(module, IDB_ACTION_NORMAL, Key, &area);
    if (!shape)
    {
        std::printf("the sample product's bitmaps are not there\n");
        return false;
    }
    const HBITMAP picture = bitmap.m_hSavedBmp, background = bitmap.m_hBkgndBmp;
    const HDC screen = GetDC(nullptr), target = CreateCompatibleDC(screen), source = CreateCompatibleDC(screen);
    const HBITMAP surface = CreateCompatibleBitmap(screen, width + 20, height + 20);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ firstTarget = SelectObject(target, surface), firstSource = SelectObject(source, picture);

    const auto ours = bench::Repeated("CTransparentBmp::TransBlt",
                                      [&] { bitmap.TransBlt(CDC::FromHandle(target), 10, 10, width, height); });
    SelectObject(source, firstSource);
    const auto calls =
        bench::Repeated("the system calls of its steps",
                        [&] { DrawBySystemCalls(target, module, picture, background, shape, width, height); });
    const auto transparent =
        bench::Repeated("TransparentBlt",
                        [&]
                        {
                            SelectObject(source, picture);
                            TransparentBlt(target, 10, 10, width, height, source, 0, 0, width, height, Key);
                            SelectObject(source, firstSource);
                        });
    const bool met = bench::Compare(
        "keyed draw at " + std::to_string(width) + " x " + std::to_string(height) + ", background captured", ours,
        {{calls, bench::Goal::AtMost, 1.15}, {transparent, bench::Goal::AtLeast, transparentGoal}}, 10, 41);
    SelectObject(target, firstTarget);
    DeleteDC(source);
    DeleteDC(target);
    DeleteObject(surface);
    FreeLibrary(module);
    return met;
}

bool Drawing()
{
    const bool small = Draw(200, 100, 1.0);
    return Draw(640, 480, 10.0) && small;
}

const bench::Registration Registered("drawing", Drawing);
} // namespace
