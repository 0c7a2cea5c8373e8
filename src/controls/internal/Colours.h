// Colours that the suite's pictures agree on.
#pragma once

#include <windows.h>

namespace tvk
{
/// What is transparent in a picture unless its caller says otherwise; the same with red and blue exchanged.
constexpr COLORREF TransparentGreen = RGB(0, 255, 0);
} // namespace tvk
