// Windows.
#include "afx/CWnd.h"
#include "ThreadState.h"

using framework::State;

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)
IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

CCmdTarget::CCmdTarget() = default;
CCmdTarget::~CCmdTarget() = default;

CWnd::CWnd() : m_hWnd(nullptr) {}

CWnd::~CWnd()
{
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this)
        CWnd::DestroyWindow();
}

CWnd::operator HWND() const
{
    return GetSafeHwnd();
}

HWND CWnd::GetSafeHwnd() const
{
    const auto* volatile self = this; // documented to answer for a null object
    return self ? m_hWnd : nullptr;
}

CWnd* CWnd::FromHandle(HWND window)
{
    return State().windows.Find<CWnd>(window);
}

CWnd* CWnd::FromHandlePermanent(HWND window)
{
    return State().windows.Permanent(window);
}

void CWnd::DeleteTempMap()
{
    State().windows.DeleteTemporary();
}

BOOL CWnd::Attach(HWND window)
{
    if (!window)
        return FALSE;
    m_hWnd = window;
    State().windows.Set(window, this);
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND window = m_hWnd;
    if (window && FromHandlePermanent(window) == this)
        State().windows.Remove(window);
    m_hWnd = nullptr;
    return window;
}

BOOL CWnd::DestroyWindow()
{
    return m_hWnd && ::DestroyWindow(Detach());
}

int CWnd::MessageBox(LPCSTR text, LPCSTR caption, UINT type)
{
    return ::MessageBoxA(m_hWnd, text, caption, type);
}

void CWnd::GetClientRect(LPRECT rect) const
{
    ::GetClientRect(m_hWnd, rect);
}

void CWnd::GetWindowRect(LPRECT rect) const
{
    ::GetWindowRect(m_hWnd, rect);
}

CDC* CWnd::GetDC()
{
    return CDC::FromHandle(::GetDC(m_hWnd));
}

CDC* CWnd::GetWindowDC()
{
    return CDC::FromHandle(::GetWindowDC(m_hWnd));
}

int CWnd::ReleaseDC(CDC* dc)
{
    return ::ReleaseDC(m_hWnd, dc->m_hDC);
}
