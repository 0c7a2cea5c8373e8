// Where a control lies in its parent.
#pragma once

#include <windows.h>

namespace tvk
{
/// A rectangle of the screen in a window's client coordinates, left smaller than right also in a mirrored
/// (right-to-left) window.
RECT ScreenToClientRect(HWND window, RECT rect) noexcept;

/// The rectangle of a control in its parent's client coordinates, left smaller than right also in a mirrored
/// (right-to-left) parent. Empty at (0, 0) for a window without a parent.
RECT RectInParent(HWND control) noexcept;
} // namespace tvk
