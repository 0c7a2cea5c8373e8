// A push button whose face is a set of bitmaps with a transparent colour.
#include "controls/CGUIButton.h"
#include "controls/internal/Colours.h"
#include "system/internal/ParentRect.h"
#include <memory>

namespace
{
constexpr DWORD OwnerDraw = BS_OWNERDRAW;
constexpr DWORD VisibleOwnerDrawnChild = 0x5000008B;
static_assert(OwnerDraw == 0x0B);
/// A dialog's border and caption.
constexpr POINT FrameOffset = {-3, -22};
} // namespace

HCURSOR CGUIButton::g_hLinkCursor = nullptr;

/// A bitmap to load; id 0 for none.
struct CGUIButton::Face
{
    UINT id = 0;
    COLORREF key = 0;
};

IMPLEMENT_DYNAMIC(CGUIButton, CStatic)

BEGIN_MESSAGE_MAP(CGUIButton, CStatic)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_SETCURSOR()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

CGUIButton::CGUIButton() : m_rcButton(0, 0, 0, 0), m_rcText(0, 0, 0, 0) {}

CGUIButton::~CGUIButton()
{
    FreeFaces();
}

// ---- Initialisers

int CGUIButton::Initialize(UINT nID, COLORREF crKey)
{
    m_crKey = crKey;
    PlaceStretched();
    return LoadFaces(nullptr, {nID, crKey}, {}, {}, true);
}

int CGUIButton::Initialize(UINT nNormal, UINT nHover, UINT nPressed, COLORREF crKey, COLORREF crText)
{
    m_crKey = crKey;
    m_crText = crText;
    PlaceStretched();
    // The caller's key is for the normal face only; hover and pressed pictures are always keyed with green.
    return LoadFaces(nullptr, {nNormal, crKey}, {nHover, tvk::TransparentGreen}, {nPressed, tvk::TransparentGreen},
                     true);
}

int CGUIButton::Initialize(HINSTANCE hInst, UINT nNormal, UINT nPressed, COLORREF crKey, COLORREF crText)
{
    m_crKey = crKey; // noted, not used: both pictures are keyed with green
    m_crText = crText;
    PlaceStretched();
    return LoadFaces(hInst, {nNormal, tvk::TransparentGreen}, {}, {nPressed, tvk::TransparentGreen}, true);
}

int CGUIButton::Initialize(UINT nNormal, UINT nPressed, COLORREF crKey, COLORREF crText)
{
    return Initialize(static_cast<HINSTANCE>(nullptr), nNormal, nPressed, crKey, crText);
}

int CGUIButton::InitializeNoStretch(UINT nID, COLORREF crKey)
{
    m_crKey = crKey;
    ModifyStyle(0, OwnerDraw);
    m_rcText = m_rcButton;
    return LoadFaces(nullptr, {nID, crKey}, {}, {}, false);
}

int CGUIButton::InitializeNoStretch(UINT nNormal, UINT nHover, UINT nPressed, COLORREF crKey, COLORREF crText)
{
    m_crKey = crKey;
    m_crText = crText;
    ModifyStyle(0, VisibleOwnerDrawnChild);
    // Not converted into the parent's coordinates: the fixed offset stands for the dialog's frame.
    GetWindowRect(&m_rcButton);
    m_rcButton.OffsetRect(FrameOffset);
    m_rcText = m_rcButton;
    return LoadFaces(nullptr, {nNormal, crKey}, {nHover, crKey}, {nPressed, crKey}, false);
}

int CGUIButton::SetDisabledBitmap(UINT nID, COLORREF crKey)
{
    m_bHasDisabledBmp = 1;
    delete m_pDisabledBmp;
    m_pDisabledBmp = nullptr;
    m_pDisabledBmp = LoadFace(nullptr, nID, crKey, true, m_hDisabledRgn);
    return m_hDisabledRgn != nullptr;
}

void CGUIButton::PlaceStretched()
{
    ModifyStyle(0, OwnerDraw);
    m_bInitialized = 1;
    m_rcButton = tvk::RectInParent(m_hWnd);
    m_rcText = m_rcButton;
}

int CGUIButton::LoadFaces(HINSTANCE hInst, const Face& normal, const Face& hover, const Face& pressed, bool stretch)
{
    FreeFaces();
    m_nNormalID = normal.id;
    m_nHoverID = hover.id;
    m_nPressedID = pressed.id;
    m_pNormalBmp = LoadFace(hInst, normal.id, normal.key, stretch, m_hNormalRgn);
    m_pHoverBmp = LoadFace(hInst, hover.id, hover.key, stretch, m_hHoverRgn);
    m_pPressedBmp = LoadFace(hInst, pressed.id, pressed.key, stretch, m_hPressedRgn);
    m_bThreeState = m_pHoverBmp && m_pPressedBmp;
    return m_hNormalRgn && (!m_pHoverBmp || m_hHoverRgn) && (!m_pPressedBmp || m_hPressedRgn);
}

CTransparentBmp* CGUIButton::LoadFace(HINSTANCE hInst, UINT nID, COLORREF crKey, bool stretch, HRGN& region)
{
    region = nullptr;
    if (!nID)
        return nullptr;
    auto bitmap = std::make_unique<CTransparentBmp>();
    bitmap->SetSaveBmp(m_bSaveBmp);
    region = bitmap->LoadTransparent(hInst, nID, crKey, stretch ? &m_rcButton : nullptr);
    return bitmap.release();
}

void CGUIButton::FreeFaces()
{
    for (CTransparentBmp** face : {&m_pNormalBmp, &m_pHoverBmp, &m_pPressedBmp, &m_pDisabledBmp})
    {
        delete *face;
        *face = nullptr;
    }
    m_hNormalRgn = m_hHoverRgn = m_hPressedRgn = m_hDisabledRgn = nullptr;
    m_bHasDisabledBmp = 0;
}

// ---- Settings

void CGUIButton::SetSaveBmp()
{
    m_bSaveBmp = 1;
}

void CGUIButton::SetOverlap(int bOverlap)
{
    for (CTransparentBmp* face : {m_pNormalBmp, m_pHoverBmp, m_pPressedBmp, m_pDisabledBmp})
        if (face)
            face->SetOverlap(bOverlap);
}

void CGUIButton::SetMapSystemColors(int bMap)
{
    for (CTransparentBmp* face : {m_pNormalBmp, m_pHoverBmp, m_pPressedBmp, m_pDisabledBmp})
        if (face)
            face->SetMapSystemColors(bMap);
}

void CGUIButton::SetTextRect(const CRect& rect)
{
    m_rcText = rect;
}

CRect CGUIButton::GetTextRect()
{
    return m_rcText;
}

void CGUIButton::SetTextBold()
{
    m_font.SetTextBold();
}

void CGUIButton::SetTextUnderline()
{
    m_font.SetTextUnderline();
}

void CGUIButton::SetTextSize(int nSize)
{
    m_font.SetTextSize(nSize);
}

void CGUIButton::EnableCursorMorph(int bEnable)
{
    m_bMorphCursor = bEnable != 0;
}

void CGUIButton::MorphCursor()
{
    if (!g_hLinkCursor)
        g_hLinkCursor = ::LoadCursorA(nullptr, IDC_HAND);
    ::SetCursor(g_hLinkCursor);
}

BOOL CGUIButton::HitTest(CPoint point)
{
    return InShape(CPoint(point.x - m_rcButton.left, point.y - m_rcButton.top));
}

/// The point is relative to the bitmap's top left corner, which is the control's.
bool CGUIButton::InShape(CPoint point) const
{
    return m_hNormalRgn && ::PtInRegion(m_hNormalRgn, point.x, point.y);
}

// ---- Drawing

bool CGUIButton::IsShown() const
{
    return GetSafeHwnd() && (GetStyle() & WS_VISIBLE);
}

CTransparentBmp* CGUIButton::CurrentFace(bool disabled) const
{
    if (disabled && m_pDisabledBmp)
        return m_pDisabledBmp;
    CTransparentBmp* const face = m_bPressed ? m_pPressedBmp : m_bHover ? m_pHoverBmp : nullptr;
    return face ? face : m_pNormalBmp;
}

void CGUIButton::DrawButton(CDC* pDC)
{
    if (pDC && IsShown())
        DrawFace(pDC, CurrentFace(!IsWindowEnabled()));
}

void CGUIButton::DrawButton(CPaintDC* pDC)
{
    if (!pDC || !IsShown())
        return;
    CTransparentBmp* const face = CurrentFace((m_nItemState & ODS_DISABLED) != 0);
    if (face)
        face->SetBkgnd(pDC, &m_rcButton);
    DrawFace(pDC, face);
}

void CGUIButton::DrawFace(CDC* pDC, CTransparentBmp* face)
{
    if (face)
        face->TransBlt(pDC, m_rcButton.left, m_rcButton.top, m_rcButton.Width(), m_rcButton.Height());
    const HDC context = pDC->GetSafeHdc();
    ::SelectObject(context, m_font.GetSafeHandle());
    ::SelectObject(context, ::GetStockObject(BLACK_PEN));
    DrawCaption(pDC);
    ::SelectObject(context, ::GetStockObject(DEFAULT_GUI_FONT));
}

void CGUIButton::DrawCaption(CDC* pDC)
{
    const HDC context = pDC->GetSafeHdc();
    const int backgroundMode = ::SetBkMode(context, TRANSPARENT);
    CString caption;
    GetWindowText(caption);
    const bool disabled = (GetStyle() & WS_DISABLED) != 0;
    ::SetTextColor(context, disabled   ? ::GetSysColor(COLOR_GRAYTEXT)
                            : m_crText ? m_crText
                                       : ::GetSysColor(COLOR_BTNTEXT));
    const POINT moved = {m_bPressed ? m_nPressOffsetX : 0, m_bPressed ? m_nPressOffsetY : 0};
    CRect text = m_rcText;
    text.OffsetRect(moved);
    ::DrawTextA(context, caption, caption.GetLength(), &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if (m_bFocus && (GetStyle() & WS_TABSTOP))
    {
        CRect focus(m_rcText.left + 1, m_rcText.top + 1, m_rcText.right - 2, m_rcText.bottom - 2);
        if (!caption.IsEmpty())
        {
            CRect extent(0, 0, 0, 0);
            ::DrawTextA(context, caption, caption.GetLength(), &extent, DT_CALCRECT | DT_SINGLELINE);
            const CPoint centre((m_rcText.left + m_rcText.right) / 2, (m_rcText.top + m_rcText.bottom) / 2);
            focus.SetRect(centre.x - extent.Width() / 2 - 1, centre.y - extent.Height() / 2 - 1,
                          centre.x + extent.Width() / 2 + 2, centre.y + extent.Height() / 2 + 2);
        }
        focus.OffsetRect(moved);
        ::DrawFocusRect(context, &focus);
    }
    ::SetBkMode(context, backgroundMode);
}

void CGUIButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    // The parent may have painted before this notice, and so with the state before.
    const bool enabledOrDisabled = ((m_nItemState ^ lpDrawItemStruct->itemState) & ODS_DISABLED) != 0;
    m_nItemState = lpDrawItemStruct->itemState;
    if (lpDrawItemStruct->itemAction & (ODA_SELECT | ODA_FOCUS))
        m_bFocus = (m_nItemState & ODS_FOCUS) != 0;
    else if (!enabledOrDisabled)
        return;
    Repaint();
}

void CGUIButton::Repaint()
{
    if (const HWND parent = ::GetParent(m_hWnd))
        ::InvalidateRect(parent, &m_rcButton, TRUE);
}

/// The parent paints what is seen here; the system's grey would cover it.
BOOL CGUIButton::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

// ---- Mouse

void CGUIButton::Capture()
{
    if (m_bCaptured)
        return;
    m_bCaptured = 1;
    ::SetCapture(m_hWnd);
}

void CGUIButton::SetPressed(int bPressed)
{
    m_bPressed = bPressed;
    m_bToggle = !m_bToggle;
    Repaint();
}

void CGUIButton::OnLButtonDown(UINT nFlags, CPoint point)
{
    if (InShape(point))
    {
        SetPressed(1);
        Capture();
    }
    CStatic::OnLButtonDown(nFlags, point);
}

/// The system only tells the parent of an owner-drawn button that it was double-clicked (BN_DOUBLECLICKED). The second
/// of two quick clicks is a click like any other, too.
void CGUIButton::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    CStatic::OnLButtonDblClk(nFlags, point);
    if (::IsWindow(window))
        ::SendMessageA(window, WM_LBUTTONDOWN, nFlags, MAKELPARAM(point.x, point.y));
}

void CGUIButton::OnMouseMove(UINT nFlags, CPoint point)
{
    if (m_bMorphCursor == 1)
        MorphCursor();
    if (m_pHoverBmp)
        TrackHover(InShape(point));
    else if (m_bCaptured)
        TrackPress(InShape(point));
    CStatic::OnMouseMove(nFlags, point);
}

void CGUIButton::TrackPress(bool inside)
{
    if (inside != (m_bPressed != 0))
        SetPressed(inside);
}

void CGUIButton::TrackHover(bool inside)
{
    if (inside)
    {
        Capture();
        if (!m_bHover && !m_bPressed)
        {
            m_bHover = 1;
            Repaint();
        }
        return;
    }
    if (m_bCaptured)
    {
        m_bCaptured = 0;
        ::ReleaseCapture();
        SetPressed(0);
    }
    if (!m_bPressed && m_bHover)
    {
        Repaint();
        m_bHover = 0;
    }
}

void CGUIButton::OnLButtonUp(UINT nFlags, CPoint point)
{
    if (m_bPressed)
        SetPressed(0);
    m_bCaptured = 0;
    if (!InShape(point) && m_pPressedBmp)
    {
        // The default procedure does not see this release: no click.
        ::ReleaseCapture();
        return;
    }
    if (m_pHoverBmp)
    {
        m_bHover = !m_bHover;
        Repaint();
    }
    // The click may end the window and this object: nothing of them may be touched after it.
    CStatic::OnLButtonUp(nFlags, point);
    ::ReleaseCapture();
}

/// Another window takes the mouse away, or the system does (the button is disabled, another program comes to the
/// front): no further message would end the pressed or the hover state.
void CGUIButton::OnCaptureChanged(CWnd* pWnd)
{
    if (m_bCaptured && (!pWnd || pWnd->GetSafeHwnd() != m_hWnd))
    {
        m_bCaptured = 0;
        if (m_bPressed)
            SetPressed(0);
        if (m_bHover)
        {
            m_bHover = 0;
            Repaint();
        }
    }
    Default();
}

/// Without this the arrow would come back before every mouse move.
BOOL CGUIButton::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    if (m_bMorphCursor != 1)
        return CStatic::OnSetCursor(pWnd, nHitTest, message);
    MorphCursor();
    return TRUE;
}

// ---- Keyboard and state

LRESULT CGUIButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_GETDLGCODE:
    {
        // The dialog manager never makes an owner-drawn button the default one: take Return here.
        const auto* next = reinterpret_cast<const MSG*>(lParam);
        const bool isReturn = next && next->message == WM_KEYDOWN && next->wParam == VK_RETURN;
        return CStatic::WindowProc(message, wParam, lParam) | (isReturn ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        if (wParam == VK_RETURN)
        {
            SendClick();
            return 0;
        }
        break;
    case BM_CLICK:
        // Sent for the caption's mnemonic and by screen readers. The system would click on the window's corner, which
        // may lie outside the shape.
        if (IsWindowEnabled())
            SendClick();
        return 0;
    case WM_SETTEXT:
    {
        const LRESULT result = CStatic::WindowProc(message, wParam, lParam);
        Repaint();
        return result;
    }
    default:
        break;
    }
    return CStatic::WindowProc(message, wParam, lParam);
}

void CGUIButton::SendClick()
{
    if (const HWND parent = ::GetParent(m_hWnd))
        ::SendMessageA(parent, WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(m_hWnd), BN_CLICKED),
                       reinterpret_cast<LPARAM>(m_hWnd));
}
