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

    CWnd& Window() { return m_window; }
    CGUIInkTank& Tank(int index) { return *m_tanks[static_cast<size_t>(index)]; }

    /// The module of the tanks' bitmaps.
    static HMODULE Bitmaps();
    /// The resource id of the bitmap that a tank shows now, read back from its pixels: 0 for an empty control, -1 for
    /// anything else.
    int Shown(int index);

    static constexpr int Tanks = 4, Width = 48, Height = 104, Distance = 60;
    static constexpr COLORREF Background = RGB(30, 200, 250);

private:
    CWnd m_window;
    std::vector<std::unique_ptr<CGUIInkTank>> m_tanks;
};

/// The pixels of a tank bitmap of TankWindow::Bitmaps(), row by row, Hole where it is transparent; empty when there is
/// none of that id.
std::vector<COLORREF> TankBitmap(int id);
constexpr COLORREF Hole = RGB(0, 255, 0);
