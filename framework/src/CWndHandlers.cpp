// The message handlers of CWnd itself: mostly what the window did before it had an object.
#include "afx/CWnd.h"
#include "afx/CWinApp.h"
#include "ThreadState.h"

// What controls ask of their parent goes back to the control where that has an object.
BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

void CWnd::OnNcDestroy()
{
    CWinApp* application = AfxGetApp();
    const bool main = application && application->m_pMainWnd == this;
    Default();
    if (main)
    {
        application->m_pMainWnd = nullptr;
        PostQuitMessage(0);
    }
    framework::State().formerProcedures.erase(m_hWnd);
    Detach();
    PostNcDestroy();
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT item)
{
    if (item->CtlType == ODT_MENU || !ReflectLastMsg(item->hwndItem))
        Default();
}

void CWnd::OnMeasureItem(int id, LPMEASUREITEMSTRUCT item)
{
    const HWND control = item->CtlType == ODT_MENU ? nullptr : ::GetDlgItem(m_hWnd, id);
    if (!control || !ReflectLastMsg(control))
        Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* control, UINT)
{
    LRESULT result = 0;
    if (!control || !ReflectLastMsg(control->m_hWnd, &result))
        result = Default();
    return reinterpret_cast<HBRUSH>(result);
}

#define DEFAULT_HANDLER(result, name, ...)                                                                             \
    result CWnd::name(__VA_ARGS__)                                                                                     \
    {                                                                                                                  \
        return static_cast<result>(Default());                                                                         \
    }

DEFAULT_HANDLER(int, OnCreate, LPCREATESTRUCT)
DEFAULT_HANDLER(void, OnDestroy)
DEFAULT_HANDLER(void, OnClose)
DEFAULT_HANDLER(void, OnPaint)
DEFAULT_HANDLER(BOOL, OnEraseBkgnd, CDC*)
DEFAULT_HANDLER(void, OnMouseMove, UINT, CPoint)
DEFAULT_HANDLER(void, OnLButtonDown, UINT, CPoint)
DEFAULT_HANDLER(void, OnLButtonUp, UINT, CPoint)
DEFAULT_HANDLER(void, OnLButtonDblClk, UINT, CPoint)
DEFAULT_HANDLER(void, OnCaptureChanged, CWnd*)
DEFAULT_HANDLER(BOOL, OnSetCursor, CWnd*, UINT, UINT)
DEFAULT_HANDLER(void, OnKillFocus, CWnd*)
DEFAULT_HANDLER(void, OnKeyDown, UINT, UINT, UINT)
DEFAULT_HANDLER(void, OnChar, UINT, UINT, UINT)
DEFAULT_HANDLER(void, OnTimer, UINT_PTR)
DEFAULT_HANDLER(void, OnSize, UINT, int, int)
DEFAULT_HANDLER(void, OnActivate, UINT, CWnd*, BOOL)
DEFAULT_HANDLER(void, OnPaletteChanged, CWnd*)
DEFAULT_HANDLER(BOOL, OnQueryNewPalette)
DEFAULT_HANDLER(void, OnContextMenu, CWnd*, CPoint)
DEFAULT_HANDLER(BOOL, OnHelpInfo, HELPINFO*)
#undef DEFAULT_HANDLER
