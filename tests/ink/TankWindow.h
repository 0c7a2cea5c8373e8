// A window with four tanks, and what a user sees in them.
#pragma once

#include "ink/CGUIInkTank.h"
#include <memory>
#include <vector>

class TankWindow
{
  public:
    /// `type`: the tanks' bitmap type; `exStyle`: further styles of the window, such as WS_EX_LAYOUTRTL.
    explicit TankWindow(int type = CGUIInkTank::BmpLongSeries, DWORD exStyle = 0);
    ~TankWindow();
    TankWindow(const TankWindow&) = delete;
    TankWindow& operator=(const TankWindow&) = delete;

    HWND Window() const { return m_window; }
    CGUIInkTank& Tank(int index) { return *m_tanks[static_cast<size_t>(index)]; }

    /// The module of the tanks' bitmaps.
    static HMODULE Bitmaps();
    /// The resource id of the bitmap that a tank shows now, read back from its pixels: 0 for an empty control, -1 for
    /// anything else.
    int Shown(int index);

    static constexpr int Tanks = 4, Width = 48, Height = 104, Distance = 60;
    static constexpr COLORREF Background = RGB(30, 200, 250);

  private:
    HWND m_window;
    std::vector<std::unique_ptr<CGUIInkTank>> m_tanks;
};

using Pixels = std::vector<DWORD>; ///< 0x00RRGGBB, from the top left corner

/// What a context shows in a rectangle.
Pixels ReadPixels(HDC context, int left, int top, int width, int height);
/// A tank bitmap of TankWindow::Bitmaps(), the transparent colour replaced; empty when there is none of that id and
/// size.
Pixels TankBitmap(int id, COLORREF background);
