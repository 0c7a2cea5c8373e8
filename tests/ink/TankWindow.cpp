#include "TankWindow.h"
#include "controls/Pictures.h"
#include "settings/TvkProduct.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <map>

namespace
{
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
    CBitmap bitmap;
    BITMAP description{};
    if (!bitmap.Attach(
            LoadImageA(TankWindow::Bitmaps(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)) ||
        !GetObjectA(bitmap.m_hObject, sizeof description, &description))
        return {};
    EXPECT_TRUE(description.bmWidth == TankWindow::Width && description.bmHeight == TankWindow::Height) << id;
    CDC memory;
    memory.CreateCompatibleDC(nullptr);
    memory.SelectObject(&bitmap);
    return PixelsOf(memory.GetSafeHdc());
}

TankWindow::TankWindow(int type, DWORD exStyle)
{
    static const HBRUSH background = CreateSolidBrush(Background);
    EXPECT_TRUE(m_window.CreateEx(WS_EX_TOPMOST | exStyle, AfxRegisterWndClass(0, nullptr, background), "", WS_POPUP, 0,
                                  0, Tanks * Distance, Height + 20, nullptr, nullptr));
    for (int i = 0; i < Tanks; ++i)
    {
        m_tanks.push_back(std::make_unique<CGUIInkTank>(type));
        const HWND control = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 6 + i * Distance, 10, Width,
                                             Height, m_window, nullptr, nullptr, nullptr);
        EXPECT_TRUE(m_tanks.back()->SubclassWindow(control));
    }
    m_window.ShowWindow(SW_SHOWNA);
    m_window.UpdateWindow();
}

TankWindow::~TankWindow()
{
    m_window.DestroyWindow();
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
    m_window.UpdateWindow();
    UpdateWindow(control);
    const HDC context = GetDC(control);
    const std::vector<COLORREF> pixels = PixelsOf(context);
    ReleaseDC(control, context);
    if (std::ranges::count(pixels, Background) == Width * Height)
        return 0;
    const auto found = KnownPictures().find(pixels);
    return found == KnownPictures().end() ? -1 : found->second;
}
