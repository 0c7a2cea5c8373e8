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
// The button is stretched to this size.
constexpr int Width = 200;
constexpr int Height = 100;
constexpr WORD PaletteColours = 256;

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
void DrawBySystemCalls(HDC target, HMODULE module, HBITMAP picture, HBITMAP background, HRGN shape)
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
    StretchBlt(contexts[1], 0, 0, Width, Height, contexts[2], 0, 0, Width, Height, SRCCOPY);
    SelectClipRgn(target, nullptr);
    BitBlt(target, 10, 10, Width, Height, contexts[1], 0, 0, SRCCOPY);
    SelectObject(contexts[1], firstBitmap);
    SelectObject(contexts[2], second);
    for (int i = 0; i < 3; ++i)
        SelectPalette(contexts[i], former[i], TRUE);
    DeleteDC(contexts[2]);
    DeleteDC(contexts[1]);
    DeleteObject(palette);
}

bool Drawing()
{
    const HMODULE module = LoadLibraryA(TvkProduct::GetProductPrefix() + "jres.dll");
    CTransparentBmp bitmap;
    bitmap.SetSaveBmp(TRUE);
    CRect area(0, 0, Width, Height);
    const HRGN shape = bitmap.LoadTransparent(module, IDB_ACTION_NORMAL, Key, &area);
    if (!shape)
    {
        std::printf("the sample product's bitmaps are not there\n");
        return false;
    }
    const auto load = [&](UINT flags)
    {
        return static_cast<HBITMAP>(
            LoadImageA(module, MAKEINTRESOURCEA(IDB_ACTION_NORMAL), IMAGE_BITMAP, Width, Height, flags));
    };
    const HBITMAP picture = load(LR_CREATEDIBSECTION), background = load(0);
    const HDC screen = GetDC(nullptr), target = CreateCompatibleDC(screen), source = CreateCompatibleDC(screen);
    const HBITMAP surface = CreateCompatibleBitmap(screen, 300, 100);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ firstTarget = SelectObject(target, surface), firstSource = SelectObject(source, picture);

    const auto ours = bench::Repeated("CTransparentBmp::TransBlt",
                                      [&] { bitmap.TransBlt(CDC::FromHandle(target), 10, 10, Width, Height); });
    SelectObject(source, firstSource);
    const auto calls = bench::Repeated("the system calls of its steps",
                                       [&] { DrawBySystemCalls(target, module, picture, background, shape); });
    const auto transparent =
        bench::Repeated("TransparentBlt",
                        [&]
                        {
                            SelectObject(source, picture);
                            TransparentBlt(target, 10, 10, Width, Height, source, 0, 0, Width, Height, Key);
                            SelectObject(source, firstSource);
                        });
    const bool met =
        bench::Compare("keyed draw of a button, background captured", ours,
                       {{calls, bench::Goal::AtMost, 1.15}, {transparent, bench::Goal::AtLeast, 10.0}}, 20, 101);
    SelectObject(target, firstTarget);
    DeleteDC(source);
    DeleteDC(target);
    for (const HBITMAP made : {picture, background, surface})
        DeleteObject(made);
    FreeLibrary(module);
    return met;
}

const bench::Registration Registered("drawing", Drawing);
} // namespace
