// The members of CWnd that pass on to the system's functions.
#include "afx/CWnd.h"
#include "afx/CWinApp.h"
#include "afx/Dialogs.h"
#include "ThreadState.h"
#include <algorithm>

namespace
{
HWND HandleOf(const CWnd* window)
{
    return window ? window->m_hWnd : nullptr;
}

BOOL ModifyBits(HWND window, int index, DWORD remove, DWORD add, UINT flags)
{
    const auto old = static_cast<DWORD>(GetWindowLongPtrA(window, index));
    const DWORD changed = (old & ~remove) | add;
    if (old == changed)
        return FALSE;
    SetWindowLongPtrA(window, index, static_cast<LONG_PTR>(changed));
    if (flags)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}
} // namespace

DWORD CWnd::GetStyle() const
{
    return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const
{
    return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE));
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags)
{
    return ModifyBits(m_hWnd, GWL_STYLE, remove, add, flags);
}

void CWnd::SetWindowText(LPCSTR text)
{
    ::SetWindowTextA(m_hWnd, text);
}

int CWnd::GetWindowText(LPSTR text, int maximum) const
{
    return ::GetWindowTextA(m_hWnd, text, maximum);
}

void CWnd::GetWindowText(CString& text) const
{
    const int length = GetWindowTextLength();
    GetWindowText(text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
}

int CWnd::GetWindowTextLength() const
{
    return ::GetWindowTextLengthA(m_hWnd);
}

void CWnd::SetFont(CFont* font, BOOL redraw)
{
    ::SendMessageA(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font ? font->m_hObject : nullptr), redraw);
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageA(m_hWnd, WM_GETFONT, 0, 0)));
}

BOOL CWnd::EnableWindow(BOOL enable)
{
    return ::EnableWindow(m_hWnd, enable);
}

BOOL CWnd::IsWindowEnabled() const
{
    return ::IsWindowEnabled(m_hWnd);
}

BOOL CWnd::ShowWindow(int show)
{
    return ::ShowWindow(m_hWnd, show);
}

BOOL CWnd::IsWindowVisible() const
{
    return ::IsWindowVisible(m_hWnd);
}

int CWnd::GetDlgCtrlID() const
{
    return ::GetDlgCtrlID(m_hWnd);
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint)
{
    ::MoveWindow(m_hWnd, x, y, width, height, repaint);
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint)
{
    MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int width, int height, UINT flags)
{
    return ::SetWindowPos(m_hWnd, HandleOf(insertAfter), x, y, width, height, flags);
}

void CWnd::CenterWindow(CWnd* alternateOwner)
{
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND center = HandleOf(alternateOwner);
    if (!center)
        center = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    // An owner that cannot be seen is no place to be at.
    if (center && !child && (!::IsWindowVisible(center) || ::IsIconic(center)))
        center = nullptr;

    CRect area; // to stay in
    CRect around;
    if (child)
    {
        ::GetClientRect(::GetParent(m_hWnd), &area);
        ::GetClientRect(center, &around);
        ::MapWindowPoints(center, ::GetParent(m_hWnd), reinterpret_cast<LPPOINT>(&around), 2);
    }
    else
    {
        MONITORINFO monitor = {};
        monitor.cbSize = sizeof monitor;
        GetMonitorInfoA(MonitorFromWindow(center ? center : m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor);
        area = monitor.rcWork;
        around = area;
        if (center)
            ::GetWindowRect(center, &around);
    }
    CRect rect;
    GetWindowRect(&rect);
    const CPoint middle = around.CenterPoint();
    const LONG left = std::max(area.left, std::min(middle.x - rect.Width() / 2, area.right - rect.Width()));
    const LONG top = std::max(area.top, std::min(middle.y - rect.Height() / 2, area.bottom - rect.Height()));
    SetWindowPos(nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CWnd::GetWindowRect(LPRECT rect) const
{
    ::GetWindowRect(m_hWnd, rect);
}

void CWnd::GetClientRect(LPRECT rect) const
{
    ::GetClientRect(m_hWnd, rect);
}

int CWnd::SetWindowRgn(HRGN region, BOOL redraw)
{
    return ::SetWindowRgn(m_hWnd, region, redraw);
}

void CWnd::ClientToScreen(LPPOINT point) const
{
    ::ClientToScreen(m_hWnd, point);
}

void CWnd::ClientToScreen(LPRECT rect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::ScreenToClient(LPPOINT point) const
{
    ::ScreenToClient(m_hWnd, point);
}

void CWnd::ScreenToClient(LPRECT rect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const
{
    ::MapWindowPoints(m_hWnd, HandleOf(to), points, count);
}

void CWnd::MapWindowPoints(CWnd* to, LPRECT rect) const
{
    MapWindowPoints(to, reinterpret_cast<LPPOINT>(rect), 2);
}

CDC* CWnd::GetDC()
{
    return CDC::FromHandle(::GetDC(m_hWnd));
}

int CWnd::ReleaseDC(CDC* dc)
{
    return ::ReleaseDC(m_hWnd, dc->m_hDC);
}

void CWnd::UpdateWindow()
{
    ::UpdateWindow(m_hWnd);
}

BOOL CWnd::GetUpdateRect(LPRECT rect, BOOL erase)
{
    return ::GetUpdateRect(m_hWnd, rect, erase);
}

void CWnd::Invalidate(BOOL erase)
{
    ::InvalidateRect(m_hWnd, nullptr, erase);
}

void CWnd::InvalidateRect(LPCRECT rect, BOOL erase)
{
    ::InvalidateRect(m_hWnd, rect, erase);
}

void CWnd::ValidateRect(LPCRECT rect)
{
    ::ValidateRect(m_hWnd, rect);
}

BOOL CWnd::RedrawWindow(LPCRECT rect, CRgn* region, UINT flags)
{
    return ::RedrawWindow(m_hWnd, rect, region ? *region : static_cast<HRGN>(nullptr), flags);
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC procedure)
{
    return ::SetTimer(m_hWnd, id, milliseconds, procedure);
}

BOOL CWnd::KillTimer(UINT_PTR id)
{
    return ::KillTimer(m_hWnd, id);
}

CWnd* CWnd::GetCapture()
{
    return FromHandle(::GetCapture());
}

CWnd* CWnd::SetCapture()
{
    return FromHandle(::SetCapture(m_hWnd));
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWnd::GetActiveWindow()
{
    return FromHandle(::GetActiveWindow());
}

BOOL CWnd::SetForegroundWindow()
{
    return ::SetForegroundWindow(m_hWnd);
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::GetOwner() const
{
    return FromHandle(::GetParent(m_hWnd)); // the owner of a top-level window, the parent of a child
}

CWnd* CWnd::GetWindow(UINT relation) const
{
    return FromHandle(::GetWindow(m_hWnd, relation));
}

CWnd* CWnd::GetDlgItem(int id) const
{
    return FromHandle(::GetDlgItem(m_hWnd, id));
}

void CWnd::GetDlgItem(int id, HWND* window) const
{
    *window = ::GetDlgItem(m_hWnd, id);
}

void CWnd::SetDlgItemText(int id, LPCSTR text)
{
    ::SetDlgItemTextA(m_hWnd, id, text);
}

int CWnd::GetDlgItemText(int id, LPSTR text, int maximum) const
{
    return static_cast<int>(::GetDlgItemTextA(m_hWnd, id, text, maximum));
}

int CWnd::GetDlgItemText(int id, CString& text) const
{
    text.Empty();
    const HWND control = ::GetDlgItem(m_hWnd, id);
    if (control)
        FromHandle(control)->GetWindowText(text);
    return text.GetLength();
}

void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned)
{
    ::SetDlgItemInt(m_hWnd, id, value, isSigned);
}

UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const
{
    return ::GetDlgItemInt(m_hWnd, id, translated, isSigned);
}

void CWnd::CheckDlgButton(int id, UINT check)
{
    ::CheckDlgButton(m_hWnd, id, check);
}

UINT CWnd::IsDlgButtonChecked(int id) const
{
    return ::IsDlgButtonChecked(m_hWnd, id);
}

void CWnd::CheckRadioButton(int firstId, int lastId, int checkedId)
{
    ::CheckRadioButton(m_hWnd, firstId, lastId, checkedId);
}

int CWnd::GetCheckedRadioButton(int firstId, int lastId) const
{
    for (int id = firstId; id <= lastId; ++id)
    {
        if (IsDlgButtonChecked(id))
            return id;
    }
    return 0;
}

LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendDlgItemMessageA(m_hWnd, id, message, wParam, lParam);
}

BOOL CWnd::UpdateData(BOOL saveAndValidate)
{
    CDataExchange exchange(this, saveAndValidate);
    try
    {
        DoDataExchange(&exchange);
    }
    catch (CUserException* exception)
    {
        exception->Delete(); // the user has been told
        return FALSE;
    }
    return TRUE;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

int CWnd::MessageBox(LPCSTR text, LPCSTR caption, UINT type)
{
    return ::MessageBoxA(m_hWnd, text, caption ? caption : AfxGetAppName(), type);
}

void CWnd::WinHelp(DWORD_PTR data, UINT command)
{
    if (CWinApp* application = AfxGetApp())
        application->WinHelp(data, command);
}
