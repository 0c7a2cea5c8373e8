// The background of a control with transparent parts.
#include "controls/internal/ParentBackground.h"
#include "system/internal/ParentRect.h"

namespace tvk
{
void PaintParentBackground(HWND control, HDC context)
{
    const HWND parent = ::GetParent(control);
    if (!parent)
        return;
    const RECT place = RectInParent(control);
    RECT client = {};
    ::GetClientRect(control, &client);
    const int saved = ::SaveDC(context);
    ::IntersectClipRect(context, client.left, client.top, client.right, client.bottom);
    ::OffsetViewportOrgEx(context, -place.left, -place.top, nullptr);
    ::SendMessageA(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
    ::SendMessageA(parent, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT);
    ::RestoreDC(context, saved);
}
} // namespace tvk
