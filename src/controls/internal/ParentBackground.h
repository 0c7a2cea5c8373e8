// The background of a control with transparent parts.
#pragma once

#include <windows.h>

namespace tvk
{
/// Has the parent of a control paint its background into the control's client area: what it erases with, and what it
/// paints as a picture of itself. Nothing for a window without a parent.
void PaintParentBackground(HWND control, HDC context);
} // namespace tvk
