// Where a control lies in its parent.
#include "system/internal/ParentRect.h"
#include <utility>

namespace tvk
{
RECT ScreenToClientRect(HWND window, RECT rect) noexcept
{
    // Corner by corner: whether a conversion of whole rectangles exchanges the sides in a mirrored window differs
    // between systems.
    POINT topLeft = {rect.left, rect.top};
    POINT bottomRight = {rect.right, rect.bottom};
    ::ScreenToClient(window, &topLeft);
    ::ScreenToClient(window, &bottomRight);
    rect = {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
    if (::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL)
        std::swap(rect.left, rect.right);
    return rect;
}

RECT RectInParent(HWND control) noexcept
{
    RECT rect = {};
    const HWND parent = ::GetParent(control);
    if (!parent || !::GetWindowRect(control, &rect))
        return {};
    return ScreenToClientRect(parent, rect);
}
} // namespace tvk
