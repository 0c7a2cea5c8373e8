// The system's own controls: what they are asked and told by messages, and their owner-drawn forms.
#include "afx/Controls.h"
#include "afx/CException.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)

namespace
{
template <class Result = int>
Result Tell(const CWnd& control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return static_cast<Result>(::SendMessageA(control.m_hWnd, message, wParam, lParam));
}

WPARAM Index(int index)
{
    return static_cast<WPARAM>(index);
}

LPARAM Text(LPCSTR text)
{
    return reinterpret_cast<LPARAM>(text);
}

// An item's text of any length; an item that does not exist throws, as documented.
void ItemText(const CWnd& control, UINT lengthMessage, UINT textMessage, int index, CString& text)
{
    const int length = Tell(control, lengthMessage, Index(index));
    if (length < 0)
        AfxThrowResourceException();
    Tell(control, textMessage, Index(index), Text(text.GetBuffer(length)));
    text.ReleaseBuffer();
}

// Hands the messages of owner-drawn lists to the virtual members.
template <class List>
bool ReflectItem(List& list, UINT message, LPARAM lParam)
{
    if (message == WM_DRAWITEM)
        list.DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    else if (message == WM_MEASUREITEM)
        list.MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
    else
        return false;
    return true;
}
} // namespace

CStatic::CStatic() = default;
CStatic::~CStatic() = default;

BOOL CStatic::Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("STATIC", text, style, rect, parent, id);
}

void CStatic::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

CButton::CButton() = default;
CButton::~CButton() = default;

BOOL CButton::Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("BUTTON", caption, style, rect, parent, id);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

CEdit::CEdit() = default;
CEdit::~CEdit() = default;

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("EDIT", nullptr, style, rect, parent, id);
}

CListBox::CListBox() = default;
CListBox::~CListBox() = default;

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("LISTBOX", nullptr, style, rect, parent, id);
}

int CListBox::AddString(LPCSTR text)
{
    return Tell(*this, LB_ADDSTRING, 0, Text(text));
}

void CListBox::ResetContent()
{
    Tell(*this, LB_RESETCONTENT);
}

int CListBox::GetCount() const
{
    return Tell(*this, LB_GETCOUNT);
}

int CListBox::GetCurSel() const
{
    return Tell(*this, LB_GETCURSEL);
}

int CListBox::SetCurSel(int index)
{
    return Tell(*this, LB_SETCURSEL, Index(index));
}

int CListBox::GetText(int index, LPSTR text) const
{
    return Tell(*this, LB_GETTEXT, Index(index), Text(text));
}

void CListBox::GetText(int index, CString& text) const
{
    ItemText(*this, LB_GETTEXTLEN, LB_GETTEXT, index, text);
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectItem(*this, message, lParam) || CWnd::OnChildNotify(message, wParam, lParam, result);
}

CComboBox::CComboBox() = default;
CComboBox::~CComboBox() = default;

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("COMBOBOX", nullptr, style, rect, parent, id);
}

int CComboBox::AddString(LPCSTR text)
{
    return Tell(*this, CB_ADDSTRING, 0, Text(text));
}

void CComboBox::ResetContent()
{
    Tell(*this, CB_RESETCONTENT);
}

int CComboBox::GetCount() const
{
    return Tell(*this, CB_GETCOUNT);
}

int CComboBox::GetCurSel() const
{
    return Tell(*this, CB_GETCURSEL);
}

int CComboBox::SetCurSel(int index)
{
    return Tell(*this, CB_SETCURSEL, Index(index));
}

int CComboBox::GetLBText(int index, LPSTR text) const
{
    return Tell(*this, CB_GETLBTEXT, Index(index), Text(text));
}

void CComboBox::GetLBText(int index, CString& text) const
{
    ItemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index, text);
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectItem(*this, message, lParam) || CWnd::OnChildNotify(message, wParam, lParam, result);
}
