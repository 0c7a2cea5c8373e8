// What the two families of link controls have in common.
#include "links/CLinkT.h"
#include "controls/internal/Colours.h"
#include "system/internal/Handle.h"
#include "system/internal/ParentRect.h"
#include <algorithm>
#include <commctrl.h>

namespace
{
constexpr COLORREF Blue = 0xFF0000;
constexpr UINT PlacingFlags = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM;

/// Where a length lies within a longer one.
int Aligned(int start, int end, int length, bool middle, bool atEnd)
{
    const int room = std::max(0, end - start - length);
    return start + (atEnd ? room : middle ? room / 2 : 0);
}
} // namespace

template <class Button>
CLinkT<Button>::CLinkT() : m_rcLink(0, 0, 0, 0), m_ptTextStart(0, 0)
{
    m_crText = Blue;
}

template <class Button>
CLinkT<Button>::~CLinkT() = default;

// ---- Initialisers and settings

template <class Button>
int CLinkT<Button>::Initialize(UINT nNormal, UINT nHover, UINT nDisabled, HINSTANCE hInst, UINT nFlags)
{
    this->ModifyStyle(0, BS_OWNERDRAW);
    m_rcButton = tvk::RectInParent(this->m_hWnd);
    this->FreeFaces();
    m_nNormalID = nNormal;
    m_nHoverID = nHover;
    m_nTextFlags = nFlags;
    m_pNormalBmp = this->LoadFace(hInst, nNormal, tvk::TransparentGreen, false, m_hNormalRgn);
    m_pHoverBmp = this->LoadFace(hInst, nHover, tvk::TransparentGreen, false, m_hHoverRgn);
    const int disabled = nDisabled ? SetDisabledBitmap(nDisabled, hInst, tvk::TransparentGreen) : 1;
    PlaceTextArea();
    return disabled && (!m_pNormalBmp || m_hNormalRgn) && (!m_pHoverBmp || m_hHoverRgn);
}

template <class Button>
int CLinkT<Button>::Initialize(UINT nNormal, UINT nDisabled, HINSTANCE hInst, UINT nFlags)
{
    return Initialize(nNormal, 0, nDisabled, hInst, nFlags);
}

template <class Button>
int CLinkT<Button>::Initialize(UINT nNormal, HINSTANCE hInst)
{
    return Initialize(nNormal, 0, 0, hInst, m_nTextFlags);
}

template <class Button>
int CLinkT<Button>::SetDisabledBitmap(UINT nID, HINSTANCE hInst, COLORREF crKey)
{
    delete m_pDisabledBmp;
    m_pDisabledBmp = nullptr;
    m_nDisabledID = nID;
    m_bHasDisabledBmp = nID != 0;
    m_pDisabledBmp = this->LoadFace(hInst, nID, crKey, false, m_hDisabledRgn);
    this->Repaint();
    return m_hDisabledRgn != nullptr;
}

template <class Button>
void CLinkT<Button>::SetFont(CGUIFont* pFont)
{
    m_pFont = pFont;
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::SetLinkTextColor(COLORREF crText)
{
    m_crText = crText;
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::SetLinkHoverColor(COLORREF crHover)
{
    m_crHover = crHover;
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::SetTextStart(int x, int y)
{
    m_ptTextStart = CPoint(x, y);
    m_bTextStartSet = 1;
    PlaceTextArea();
}

template <class Button>
void CLinkT<Button>::SetTextAlignmentFlags(UINT nFlags)
{
    m_nTextFlags = nFlags;
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::OffsetTopLeft(int dx, int dy)
{
    this->Repaint();
    for (CRect* const rect : {&m_rcButton, &m_rcText, &m_rcLink})
        rect->OffsetRect(dx, dy);
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::SetRect(CDC* pDC, const CRect& rect, UINT nFlags)
{
    m_rcText = rect;
    m_nTextFlags = nFlags;
    if (pDC)
        PlaceText(pDC->GetSafeHdc());
    this->Repaint();
}

template <class Button>
void CLinkT<Button>::PlaceTextArea()
{
    m_rcText = m_rcButton;
    if (m_bTextStartSet)
        m_rcText.DeflateRect(m_ptTextStart.x, m_ptTextStart.y, 0, 0);
    else if (m_pNormalBmp)
        m_rcText.left += m_nTextIndent;
    const tvk::DeviceContext screen(::CreateCompatibleDC(nullptr));
    PlaceText(screen.Get());
    this->Repaint();
}

// ---- Drawing

template <class Button>
bool CLinkT<Button>::IsHot() const
{
    return m_bHover || m_bPressed || (m_nItemState & ODS_SELECTED);
}

template <class Button>
CTransparentBmp* CLinkT<Button>::CurrentFace(bool disabled) const
{
    if (disabled && m_pDisabledBmp)
        return m_pDisabledBmp;
    return !disabled && m_pHoverBmp && IsHot() ? m_pHoverBmp : m_pNormalBmp;
}

template <class Button>
void CLinkT<Button>::DrawFace(CDC* pDC, CTransparentBmp* face)
{
    if (face)
        face->TransBlt(pDC, m_rcButton.left, m_rcButton.top, 0, 0);
    DisplayText(pDC);
}

template <class Button>
HGDIOBJ CLinkT<Button>::TextFont() const
{
    return (m_pFont ? *m_pFont : m_font).GetSafeHandle();
}

/// Finds where the text lies in its place.
template <class Button>
void CLinkT<Button>::PlaceText(HDC context)
{
    CString text;
    if (this->m_hWnd)
        this->GetWindowText(text);
    const tvk::SelectGuard font(context, TextFont());
    CRect extent(0, 0, m_rcText.Width(), 0);
    if (text.IsEmpty() ||
        !::DrawTextA(context, text, text.GetLength(), &extent, (m_nTextFlags & ~PlacingFlags) | DT_CALCRECT))
        extent.SetRectEmpty();
    const CSize size(std::min(extent.Width(), m_rcText.Width()), std::min(extent.Height(), m_rcText.Height()));
    const CPoint corner(
        Aligned(m_rcText.left, m_rcText.right, size.cx, m_nTextFlags & DT_CENTER, m_nTextFlags & DT_RIGHT),
        Aligned(m_rcText.top, m_rcText.bottom, size.cy, m_nTextFlags & DT_VCENTER, m_nTextFlags & DT_BOTTOM));
    m_rcLink = CRect(corner, size);
}

template <class Button>
void CLinkT<Button>::DisplayText(CDC* pDC)
{
    const HDC context = pDC->GetSafeHdc();
    const int saved = ::SaveDC(context);
    PlaceText(context);
    const COLORREF colour = !this->IsWindowEnabled() ? m_crDisabled : IsHot() ? m_crHover : m_crText;
    ::SelectObject(context, TextFont());
    ::SetBkMode(context, TRANSPARENT);
    ::SetTextColor(context, colour);
    CString text;
    this->GetWindowText(text);
    CRect place = m_rcLink;
    if (!place.IsRectEmpty()) // there the system draws the underline all the same
        ::DrawTextA(context, text, text.GetLength(), &place, m_nTextFlags);
    if (m_bFocus && (this->GetStyle() & WS_TABSTOP))
        DrawFocus(context, text.IsEmpty() ? m_rcButton : m_rcLink, colour);
    ::RestoreDC(context, saved);
}

/// Not the system's focus rectangle: drawn a second time over itself, as happens where the parent does not erase its
/// background, that one vanishes.
template <class Button>
void CLinkT<Button>::DrawFocus(HDC context, CRect frame, COLORREF colour) const
{
    const LOGBRUSH ink = {BS_SOLID, colour, 0};
    const tvk::GdiObject<HPEN> dots(::ExtCreatePen(PS_COSMETIC | PS_ALTERNATE, 1, &ink, 0, nullptr));
    const tvk::SelectGuard pen(context, dots.Get());
    const tvk::SelectGuard inside(context, ::GetStockObject(NULL_BRUSH));
    frame.InflateRect(1, 1);
    frame.IntersectRect(&frame, &m_rcButton);
    ::Rectangle(context, frame.left, frame.top, frame.right, frame.bottom);
}

// ---- Mouse

/// A point relative to the link's top left corner.
template <class Button>
bool CLinkT<Button>::InShape(CPoint point) const
{
    return Button::InShape(point) || m_rcLink.PtInRect(point + m_rcButton.TopLeft());
}

/// A point in the control's client coordinates. In a mirrored window a point of the mouse is the pixel's right edge, as
/// pixels are drawn: the whole pixel goes to the parent's coordinates.
template <class Button>
bool CLinkT<Button>::IsOnLink(CPoint point)
{
    ::ClientToScreen(this->m_hWnd, &point);
    const RECT pixel = tvk::ScreenToClientRect(::GetParent(this->m_hWnd), {point.x, point.y, point.x + 1, point.y + 1});
    return this->HitTest(CPoint(pixel.left, pixel.top));
}

template <class Button>
void CLinkT<Button>::SetDefaultCursor()
{
    if (!this->g_hLinkCursor)
        this->g_hLinkCursor = ::LoadCursorA(nullptr, IDC_HAND);
}

template <class Button>
void CLinkT<Button>::TrackMouse(CPoint point)
{
    CRect client;
    this->GetClientRect(&client);
    // The mouse may be outside, in captivity: of what has left before, no leaving is told.
    if (m_bTracking || !client.PtInRect(point))
        return;
    TRACKMOUSEEVENT leaving = {sizeof leaving, TME_LEAVE, this->m_hWnd, 0};
    m_bTracking = ::_TrackMouseEvent(&leaving);
}

template <class Button>
void CLinkT<Button>::KillMouseTracking()
{
    TRACKMOUSEEVENT leaving = {sizeof leaving, TME_LEAVE | TME_CANCEL, this->m_hWnd, 0};
    ::_TrackMouseEvent(&leaving);
    m_bTracking = 0;
}

/// Without a hover picture, hovered and pressed are one look.
template <class Button>
void CLinkT<Button>::SetLookedPressed(bool pressed)
{
    if (pressed == (m_bPressed != 0))
        return;
    m_bPressed = pressed;
    m_bToggle = !m_bToggle;
    ShowAtOnce();
}

template <class Button>
void CLinkT<Button>::OnMouseMove(UINT, CPoint point)
{
    SetDefaultCursor();
    TrackMouse(point);
    if (m_pHoverBmp)
        CheckHover(point);
    else if (!m_bCaptured)
        SetLookedPressed(IsOnLink(point));
    this->Default();
}

template <class Button>
void CLinkT<Button>::CheckHover(CPoint point)
{
    if (IsOnLink(point))
    {
        SetDefaultCursor();
        ::SetCursor(this->g_hLinkCursor);
        this->Capture();
        if (!m_bHover && !m_bPressed)
        {
            m_bHover = 1;
            this->Repaint();
        }
        return;
    }
    if (m_bHover && !m_bPressed)
    {
        m_bHover = 0;
        this->Repaint();
    }
    if (m_bCaptured)
    {
        m_bCaptured = 0;
        ::ReleaseCapture();
        m_bPressed = 0;
        this->Repaint();
    }
}

/// Beside the link nothing is clicked: the system never sees the press, nor then a click.
template <class Button>
void CLinkT<Button>::OnLButtonDown(UINT, CPoint point)
{
    if (!IsOnLink(point))
        return;
    this->SetPressed(1);
    this->Capture();
    this->Default();
}

template <class Button>
void CLinkT<Button>::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    if (IsOnLink(point))
        Button::OnLButtonDblClk(nFlags, point);
}

template <class Button>
void CLinkT<Button>::OnLButtonUp(UINT, CPoint point)
{
    const HWND window = this->m_hWnd;
    if (m_bPressed)
        this->SetPressed(0);
    m_bCaptured = 0; // the system releases it: that is no loss to react to
    if (IsOnLink(point) || !m_pDisabledBmp)
    {
        this->Default();
        // The click may have ended the window, and this object with it.
        if (CWnd::FromHandlePermanent(window) != this)
            return;
        if (::GetCapture() == window)
            ::ReleaseCapture();
        if (m_pHoverBmp)
            CheckHover(point);
    }
    else
        ::ReleaseCapture();
    if (!m_bTracking)
    {
        m_bCaptured = 0;
        if (::GetCapture() == window)
            ::ReleaseCapture();
        m_bHover = 0;
        this->Repaint();
        ::SetCursor(::LoadCursorA(nullptr, IDC_ARROW));
    }
}

template <class Button>
LRESULT CLinkT<Button>::OnLeave(WPARAM, LPARAM)
{
    KillMouseTracking();
    if (!m_pHoverBmp && !m_bCaptured)
        SetLookedPressed(false);
    m_bHover = 0;
    this->Repaint();
    return this->Default();
}

/// Without this the arrow would come back before every mouse move.
template <class Button>
BOOL CLinkT<Button>::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    CPoint point(0, 0);
    ::GetCursorPos(&point);
    ::ScreenToClient(this->m_hWnd, &point);
    if (nHitTest != HTCLIENT || !IsOnLink(point))
        return Button::OnSetCursor(pWnd, nHitTest, message);
    SetDefaultCursor();
    ::SetCursor(this->g_hLinkCursor);
    return TRUE;
}

template class CLinkT<CGUIButton>;
template class CLinkT<COwnButton>;
