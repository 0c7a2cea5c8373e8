// The base of the links for hosts without product settings.
#include "links/CLink.h"
#include "system/internal/ParentRect.h"

IMPLEMENT_DYNAMIC(CLink, COwnButton)

BEGIN_MESSAGE_MAP(CLink, COwnButton)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_MESSAGE(WM_MOUSELEAVE, &CLink::OnLeave)
    ON_WM_SETCURSOR()
END_MESSAGE_MAP()

CLink::CLink()
{
    CLink::SetDefaultCursor();
}

CLink::~CLink() = default;

void CLink::ShowAtOnce()
{
    Repaint();
    ::UpdateWindow(m_hWnd);
}

/// The link's rectangle may have been moved away from the control.
CPoint CLink::WindowOrigin() const
{
    const RECT place = tvk::RectInParent(m_hWnd);
    return CPoint(place.left, place.top);
}
