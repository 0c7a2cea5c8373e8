#include "TankWindow.h"
#include "controls/Pictures.h"
#include "settings/TvkProduct.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <map>

namespace
{
constexpr char ClassName[] = "TankWindow";

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
const std::map<std::vector<COLORREF>, int>& KnownPictures()
{
    static const std::map<std::vector<COLORREF>, int> pictures = []
    {
        std::map<std::vector<COLORREF>, int> found;
        for (int id = 134; id <= 389; ++id)
        {
            std::vector<COLORREF> pixels = TankBitmap(id);
            std::ranges::replace(pixels, Hole, TankWindow::Background);
            found[pixels] = id;
        }
        return found;
    }();
    return pictures;
}

std::vector<COLORREF> PixelsOf(HDC context)
{
    const Surface copy(TankWindow::Width, TankWindow::Height, 0);
    BitBlt(copy.Context(), 0, 0, TankWindow::Width, TankWindow::Height, context, 0, 0, SRCCOPY);
    return copy.Pixels();
}
} // namespace

std::vector<COLORREF> TankBitmap(int id)
{
    const HANDLE bitmap =
        LoadImageA(TankWindow::Bitmaps(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    BITMAP description{};
    if (!GetObjectA(bitmap, sizeof description, &description))
        return {};
    EXPECT_TRUE(description.bmWidth == TankWindow::Width && description.bmHeight == TankWindow::Height) << id;
    const HDC memory = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    std::vector<COLORREF> pixels = PixelsOf(memory);
    SelectObject(memory, former);
    DeleteDC(memory);
    DeleteObject(bitmap);
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
    const std::vector<COLORREF> pixels = PixelsOf(context);
    ReleaseDC(control, context);
    if (std::ranges::count(pixels, Background) == Width * Height)
        return 0;
    const auto found = KnownPictures().find(pixels);
    return found == KnownPictures().end() ? -1 : found->second;
}
