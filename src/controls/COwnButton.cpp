// A bitmap button that paints itself.
#include "controls/COwnButton.h"
#include "controls/internal/ParentBackground.h"

IMPLEMENT_DYNAMIC(COwnButton, CGUIButton)

BEGIN_MESSAGE_MAP(COwnButton, CGUIButton)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

COwnButton::COwnButton() = default;

COwnButton::~COwnButton() = default;

void COwnButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CGUIButton::DrawItem(lpDrawItemStruct);
    const HDC context = lpDrawItemStruct->hDC;
    const int saved = ::SaveDC(context);
    // The rectangles are the parent's; the button's own corner is the origin here.
    const CPoint origin = WindowOrigin();
    ::OffsetViewportOrgEx(context, -origin.x, -origin.y, nullptr);
    DrawButton(CDC::FromHandle(context));
    ::RestoreDC(context, saved);
}

CPoint COwnButton::WindowOrigin() const
{
    return m_rcButton.TopLeft();
}

void COwnButton::Repaint()
{
    if (m_hWnd)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

BOOL COwnButton::OnEraseBkgnd(CDC* pDC)
{
    tvk::PaintParentBackground(m_hWnd, pDC->GetSafeHdc());
    return TRUE;
}
