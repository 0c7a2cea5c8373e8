// Tool tips.
#include "afx/CToolTipCtrl.h"

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

namespace
{
// The tool of a whole window, which belongs to its parent, or the one with an id inside a window.
TOOLINFOA ToolOf(const CWnd* window, UINT_PTR id)
{
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V2_SIZE; // what the control's version 5 knows, too
    if (id)
    {
        tool.hwnd = window->m_hWnd;
        tool.uId = id;
    }
    else
    {
        tool.hwnd = ::GetParent(window->m_hWnd);
        tool.uFlags = TTF_IDISHWND;
        tool.uId = reinterpret_cast<UINT_PTR>(window->m_hWnd);
    }
    return tool;
}

LRESULT Tell(const CWnd& control, UINT message, TOOLINFOA& tool)
{
    return ::SendMessageA(control.m_hWnd, message, 0, reinterpret_cast<LPARAM>(&tool));
}
} // namespace

CToolTipCtrl::CToolTipCtrl() = default;
CToolTipCtrl::~CToolTipCtrl() = default;

BOOL CToolTipCtrl::Create(CWnd* parent, DWORD style)
{
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    return CreateEx(0, TOOLTIPS_CLASSA, nullptr, WS_POPUP | style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, parent ? parent->m_hWnd : nullptr, nullptr);
}

BOOL CToolTipCtrl::AddTool(CWnd* window, LPCSTR text, LPCRECT rect, UINT_PTR id)
{
    TOOLINFOA tool = ToolOf(window, id);
    if (rect)
        tool.rect = *rect;
    tool.lpszText = const_cast<LPSTR>(text); // only read
    return Tell(*this, TTM_ADDTOOLA, tool) != 0;
}

BOOL CToolTipCtrl::AddTool(CWnd* window, UINT textId, LPCRECT rect, UINT_PTR id)
{
    CString text;
    text.LoadString(textId);
    return AddTool(window, text, rect, id);
}

void CToolTipCtrl::DelTool(CWnd* window, UINT_PTR id)
{
    TOOLINFOA tool = ToolOf(window, id);
    Tell(*this, TTM_DELTOOLA, tool);
}

void CToolTipCtrl::UpdateTipText(LPCSTR text, CWnd* window, UINT_PTR id)
{
    TOOLINFOA tool = ToolOf(window, id);
    tool.lpszText = const_cast<LPSTR>(text); // only read
    Tell(*this, TTM_UPDATETIPTEXTA, tool);
}

void CToolTipCtrl::UpdateTipText(UINT textId, CWnd* window, UINT_PTR id)
{
    CString text;
    text.LoadString(textId);
    UpdateTipText(text, window, id);
}

int CToolTipCtrl::GetToolCount() const
{
    return static_cast<int>(::SendMessageA(m_hWnd, TTM_GETTOOLCOUNT, 0, 0));
}

void CToolTipCtrl::GetText(CString& text, CWnd* window, UINT_PTR id) const
{
    constexpr int Maximum = 1024;
    TOOLINFOA tool = ToolOf(window, id);
    tool.lpszText = text.GetBuffer(Maximum);
    tool.lpszText[0] = '\0';
    ::SendMessageA(m_hWnd, TTM_GETTEXTA, Maximum, reinterpret_cast<LPARAM>(&tool));
    text.ReleaseBuffer();
}

void CToolTipCtrl::RelayEvent(LPMSG message)
{
    SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(message));
}
