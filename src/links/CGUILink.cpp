// The base of the links for hosts with product settings.
#include "links/CGUILink.h"
#include "settings/TvkProduct.h"
#include "system/internal/Handle.h"

namespace
{
constexpr int ProductCursor = 30977;
}

IMPLEMENT_DYNAMIC(CGUILink, CGUIButton)

BEGIN_MESSAGE_MAP(CGUILink, CGUIButton)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_MESSAGE(WM_MOUSELEAVE, &CGUILink::OnLeave)
    ON_WM_SETCURSOR()
END_MESSAGE_MAP()

CGUILink::CGUILink()
{
    CGUILink::SetDefaultCursor();
}

CGUILink::~CGUILink() = default;

void CGUILink::SetDefaultCursor()
{
    if (g_hLinkCursor)
        return;
    CLinkT::SetDefaultCursor();
    // The product's own cursor is loaded, too, and left: all products show the system's hand.
    TvkProduct product;
    CString name;
    const tvk::Module resources(::LoadLibraryA(product.GetSetting("IDO_JSW_RESDLL", name)));
    if (resources)
        ::LoadCursorA(resources.Get(), MAKEINTRESOURCEA(ProductCursor));
}

void CGUILink::ShowAtOnce()
{
    const HWND parent = ::GetParent(m_hWnd);
    if (!parent)
        return;
    ::InvalidateRect(parent, &m_rcButton, FALSE);
    const HDC context = ::GetDC(parent);
    DrawButton(CDC::FromHandle(context));
    ::ReleaseDC(parent, context);
}
