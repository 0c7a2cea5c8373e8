#include "TankWindow.h"
#include "settings/TvkProduct.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <map>

namespace
{
constexpr char ClassName[] = "TankWindow";
constexpr DWORD Key = 0x00FF00;

DWORD Pixel(COLORREF color)
{
    return static_cast<DWORD>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color));
}

void RegisterWindowClass()
{
    static const ATOM registered = []
    {
        WNDCLASSA description{};
        description.lpfnWndProc = DefWindowProcA;
        description.hInstance = GetModuleHandleA(nullptr);
        description.hbrBackground = CreateSolidBrush(TankWindow::Background);
        description.lpszClassName = ClassName;
        return RegisterClassA(&description);
    }();
    ASSERT_TRUE(registered);
}

/// Every tank bitmap as it looks on the window's background.
const std::map<Pixels, int>& KnownPictures()
{
    static const std::map<Pixels, int> pictures = []
    {
        std::map<Pixels, int> found;
        for (int id = 134; id <= 389; ++id)
        {
            if (const Pixels pixels = TankBitmap(id, TankWindow::Background); !pixels.empty())
                found[pixels] = id;
        }
        return found;
    }();
    return pictures;
}
} // namespace

Pixels ReadPixels(HDC context, int left, int top, int width, int height)
{
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC memory = CreateCompatibleDC(context);
    const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    SetLayout(memory, GetLayout(context));
    BitBlt(memory, 0, 0, width, height, context, left, top, SRCCOPY);
    GdiFlush();
    const auto* const first = static_cast<const DWORD*>(bits);
    Pixels pixels(first, first + width * height);
    std::ranges::transform(pixels, pixels.begin(), [](DWORD pixel) { return pixel & 0xFFFFFF; });
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    return pixels;
}

Pixels TankBitmap(int id, COLORREF background)
{
    const HANDLE bitmap =
        LoadImageA(TankWindow::Bitmaps(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    BITMAP description{};
    if (!GetObjectA(bitmap, sizeof description, &description))
        return {};
    EXPECT_TRUE(description.bmWidth == TankWindow::Width && description.bmHeight == TankWindow::Height) << id;
    const HDC memory = CreateCompatibleDC(nullptr);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    Pixels pixels = ReadPixels(memory, 0, 0, TankWindow::Width, TankWindow::Height);
    SelectObject(memory, old);
    DeleteDC(memory);
    DeleteObject(bitmap);
    std::ranges::replace(pixels, Key, Pixel(background));
    return pixels;
}

TankWindow::TankWindow(int type, DWORD exStyle)
{
    RegisterWindowClass();
    m_window = CreateWindowExA(WS_EX_TOPMOST | exStyle, ClassName, "", WS_POPUP, 0, 0, Tanks * Distance, Height + 20,
                               nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(m_window);
    for (int i = 0; i < Tanks; ++i)
    {
        const HWND control = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 6 + i * Distance, 10, Width,
                                             Height, m_window, nullptr, nullptr, nullptr);
        m_tanks.push_back(std::make_unique<CGUIInkTank>(type));
        EXPECT_TRUE(m_tanks.back()->SubclassWindow(control));
    }
    ShowWindow(m_window, SW_SHOWNA);
    UpdateWindow(m_window);
}

TankWindow::~TankWindow()
{
    DestroyWindow(m_window);
}

HMODULE TankWindow::Bitmaps()
{
    static const HMODULE module = LoadLibraryA(TvkProduct::GetProductPrefix() + "jres.dll");
    EXPECT_TRUE(module);
    return module;
}

int TankWindow::Shown(int index)
{
    const HWND control = Tank(index).m_hWnd;
    UpdateWindow(m_window);
    UpdateWindow(control);
    const HDC context = GetDC(control);
    const Pixels pixels = ReadPixels(context, 0, 0, Width, Height);
    ReleaseDC(control, context);
    if (std::ranges::count(pixels, Pixel(Background)) == Width * Height)
        return 0;
    const auto found = KnownPictures().find(pixels);
    return found == KnownPictures().end() ? -1 : found->second;
}
