// The exchange of values between controls and members.
#include "afx/Dialogs.h"
#include "afx/CWinApp.h"
#include <cerrno>
#include <climits>
#include <cstdlib>

namespace
{
CString TextOf(HWND control)
{
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    return text;
}

// Only changed texts are set: setting one moves the caret and redraws.
void SetTextOf(HWND control, const CString& text)
{
    if (TextOf(control) != text)
        SetWindowTextA(control, text);
}

[[noreturn]] void Refuse(CDataExchange& exchange, LPCSTR message)
{
    AfxMessageBox(message, MB_ICONEXCLAMATION);
    exchange.Fail();
}

// The whole text, blanks around it aside, as a number of the given range.
LONGLONG NumberOf(CDataExchange& exchange, HWND control, LONGLONG minimum, LONGLONG maximum)
{
    CString text = TextOf(control);
    text.TrimLeft();
    text.TrimRight();
    char* end = nullptr;
    errno = 0;
    const LONGLONG value = std::strtoll(text, &end, 10);
    if (text.IsEmpty() || *end || errno == ERANGE || value < minimum || value > maximum)
        Refuse(exchange, "Please enter a whole number.");
    return value;
}

void ExchangeIndex(CDataExchange* exchange, int id, int& index, UINT getMessage, UINT setMessage)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        index = static_cast<int>(SendMessageA(control, getMessage, 0, 0));
    else
        SendMessageA(control, setMessage, static_cast<WPARAM>(index), 0);
}
} // namespace

CDataExchange::CDataExchange(CWnd* dialog, BOOL saveAndValidate)
    : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog), m_hWndLastControl(nullptr), m_bEditLastControl(FALSE)
{
}

HWND CDataExchange::PrepareCtrl(int id)
{
    const HWND control = GetDlgItem(m_pDlgWnd->m_hWnd, id);
    if (!control)
        AfxThrowNotSupportedException();
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int id)
{
    const HWND control = PrepareCtrl(id);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_hWndLastControl)
    {
        SetFocus(m_hWndLastControl);
        if (m_bEditLastControl)
            SendMessageA(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control)
{
    if (control.m_hWnd)
        return;
    const HWND window = exchange->PrepareCtrl(id);
    if (!control.SubclassWindow(window))
        AfxThrowNotSupportedException();
}

void DDX_Text(CDataExchange* exchange, int id, CString& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = TextOf(control);
    else
        SetTextOf(control, value);
}

void DDX_Text(CDataExchange* exchange, int id, int& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate)
    {
        value = static_cast<int>(NumberOf(*exchange, control, INT_MIN, INT_MAX));
        return;
    }
    CString text;
    text.Format("%d", value);
    SetTextOf(control, text);
}

void DDX_Text(CDataExchange* exchange, int id, UINT& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate)
    {
        value = static_cast<UINT>(NumberOf(*exchange, control, 0, UINT_MAX));
        return;
    }
    CString text;
    text.Format("%u", value);
    SetTextOf(control, text);
}

void DDX_Check(CDataExchange* exchange, int id, int& value)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
    {
        value = static_cast<int>(SendMessageA(control, BM_GETCHECK, 0, 0));
        return;
    }
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE)
        value = BST_UNCHECKED;
    SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Radio(CDataExchange* exchange, int id, int& value)
{
    HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = -1;
    int index = 0;
    do
    {
        if (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON)
        {
            if (!exchange->m_bSaveAndValidate)
                SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(index == value), 0);
            else if (SendMessageA(control, BM_GETCHECK, 0, 0))
                value = index;
            ++index;
        }
        control = GetWindow(control, GW_HWNDNEXT);
    } while (control && !(GetWindowLongPtrA(control, GWL_STYLE) & WS_GROUP));
}

void DDX_LBIndex(CDataExchange* exchange, int id, int& index)
{
    ExchangeIndex(exchange, id, index, LB_GETCURSEL, LB_SETCURSEL);
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& index)
{
    ExchangeIndex(exchange, id, index, CB_GETCURSEL, CB_SETCURSEL);
}

void DDV_MaxChars(CDataExchange* exchange, const CString& value, int maximum)
{
    if (exchange->m_bSaveAndValidate && value.GetLength() > maximum)
    {
        CString message;
        message.Format("Please enter no more than %d characters.", maximum);
        Refuse(*exchange, message);
    }
    if (!exchange->m_bSaveAndValidate && exchange->m_hWndLastControl && exchange->m_bEditLastControl)
        SendMessageA(exchange->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(maximum), 0);
}
