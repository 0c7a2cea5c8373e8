// A static picture control with a transparent colour.
#include "controls/CTransStaticBmp.h"
#include "controls/internal/ParentBackground.h"

IMPLEMENT_DYNAMIC(CTransStaticBmp, CStatic)

BEGIN_MESSAGE_MAP(CTransStaticBmp, CStatic)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

CTransStaticBmp::CTransStaticBmp() = default;

CTransStaticBmp::~CTransStaticBmp() = default;

int CTransStaticBmp::Initialize(UINT nID, COLORREF crTransparent, int nMode, HINSTANCE hModule)
{
    CRect area(0, 0, 0, 0);
    if (GetSafeHwnd())
        GetClientRect(&area);
    m_bmp.SetSaveBmp((nMode & Keep) != 0);
    // Every paint erases first: what lies under the picture then is this paint's background, not an older one.
    m_bmp.SetOverlap(TRUE);
    const HRGN shape = m_bmp.LoadTransparent(hModule, nID, crTransparent, nMode & Stretch ? &area : nullptr);
    if (GetSafeHwnd())
        Invalidate();
    return shape != nullptr;
}

void CTransStaticBmp::OnPaint()
{
    CPaintDC context(this);
    m_bmp.TransBlt(&context, 0, 0, 0, 0);
}

BOOL CTransStaticBmp::OnEraseBkgnd(CDC* pDC)
{
    tvk::PaintParentBackground(m_hWnd, pDC->GetSafeHdc());
    return TRUE;
}
