// The system's own controls: what they are asked and told by messages, and their owner-drawn forms.
#include "afx/Controls.h"
#include "afx/CException.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

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
bool ReflectItem(List& list, UINT message, LPARAM lParam, LRESULT* result)
{
    switch (message)
    {
    case WM_DRAWITEM:
        list.DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        return true;
    case WM_MEASUREITEM:
        list.MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        return true;
    case WM_COMPAREITEM:
        if (result)
            *result = list.CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        return true;
    case WM_DELETEITEM:
        list.DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        return true;
    default:
        return false;
    }
}
} // namespace

CStatic::CStatic() = default;
CStatic::~CStatic() = default;

BOOL CStatic::Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("STATIC", text, style, rect, parent, id);
}

HICON CStatic::SetIcon(HICON icon)
{
    return reinterpret_cast<HICON>(Tell<LRESULT>(*this, STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon)));
}

HICON CStatic::GetIcon() const
{
    return reinterpret_cast<HICON>(Tell<LRESULT>(*this, STM_GETIMAGE, IMAGE_ICON));
}

HBITMAP CStatic::SetBitmap(HBITMAP bitmap)
{
    return reinterpret_cast<HBITMAP>(
        Tell<LRESULT>(*this, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}

HBITMAP CStatic::GetBitmap() const
{
    return reinterpret_cast<HBITMAP>(Tell<LRESULT>(*this, STM_GETIMAGE, IMAGE_BITMAP));
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

UINT CButton::GetState() const
{
    return Tell<UINT>(*this, BM_GETSTATE);
}

void CButton::SetState(BOOL highlight)
{
    Tell(*this, BM_SETSTATE, Index(highlight));
}

int CButton::GetCheck() const
{
    return Tell(*this, BM_GETCHECK);
}

void CButton::SetCheck(int check)
{
    Tell(*this, BM_SETCHECK, Index(check));
}

UINT CButton::GetButtonStyle() const
{
    return GetStyle() & 0xFFFF;
}

void CButton::SetButtonStyle(UINT style, BOOL redraw)
{
    Tell(*this, BM_SETSTYLE, style, redraw);
}

HICON CButton::SetIcon(HICON icon)
{
    return reinterpret_cast<HICON>(Tell<LRESULT>(*this, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon)));
}

HICON CButton::GetIcon() const
{
    return reinterpret_cast<HICON>(Tell<LRESULT>(*this, BM_GETIMAGE, IMAGE_ICON));
}

HBITMAP CButton::SetBitmap(HBITMAP bitmap)
{
    return reinterpret_cast<HBITMAP>(Tell<LRESULT>(*this, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}

HBITMAP CButton::GetBitmap() const
{
    return reinterpret_cast<HBITMAP>(Tell<LRESULT>(*this, BM_GETIMAGE, IMAGE_BITMAP));
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

void CEdit::SetLimitText(UINT maximum)
{
    Tell(*this, EM_SETLIMITTEXT, maximum);
}

void CEdit::LimitText(int maximum)
{
    Tell(*this, EM_LIMITTEXT, Index(maximum));
}

void CEdit::SetSel(int start, int end, BOOL noScroll)
{
    Tell(*this, EM_SETSEL, Index(start), end);
    if (!noScroll)
        Tell(*this, EM_SCROLLCARET);
}

void CEdit::GetSel(int& start, int& end) const
{
    DWORD first = 0;
    DWORD last = 0;
    Tell(*this, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    start = static_cast<int>(first);
    end = static_cast<int>(last);
}

void CEdit::ReplaceSel(LPCSTR text, BOOL canUndo)
{
    Tell(*this, EM_REPLACESEL, Index(canUndo), Text(text));
}

BOOL CEdit::SetReadOnly(BOOL readOnly)
{
    return Tell<BOOL>(*this, EM_SETREADONLY, Index(readOnly));
}

BOOL CEdit::GetModify() const
{
    return Tell<BOOL>(*this, EM_GETMODIFY);
}

void CEdit::SetModify(BOOL modified)
{
    Tell(*this, EM_SETMODIFY, Index(modified));
}

int CEdit::GetLineCount() const
{
    return Tell(*this, EM_GETLINECOUNT);
}

void CEdit::SetMargins(UINT left, UINT right)
{
    Tell(*this, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(left, right));
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

int CListBox::InsertString(int index, LPCSTR text)
{
    return Tell(*this, LB_INSERTSTRING, Index(index), Text(text));
}

int CListBox::DeleteString(UINT index)
{
    return Tell(*this, LB_DELETESTRING, index);
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

int CListBox::GetSel(int index) const
{
    return Tell(*this, LB_GETSEL, Index(index));
}

int CListBox::SetSel(int index, BOOL select)
{
    return Tell(*this, LB_SETSEL, Index(select), index);
}

int CListBox::GetSelCount() const
{
    return Tell(*this, LB_GETSELCOUNT);
}

DWORD_PTR CListBox::GetItemData(int index) const
{
    return Tell<DWORD_PTR>(*this, LB_GETITEMDATA, Index(index));
}

int CListBox::SetItemData(int index, DWORD_PTR data)
{
    return Tell(*this, LB_SETITEMDATA, Index(index), static_cast<LPARAM>(data));
}

int CListBox::GetText(int index, LPSTR text) const
{
    return Tell(*this, LB_GETTEXT, Index(index), Text(text));
}

void CListBox::GetText(int index, CString& text) const
{
    ItemText(*this, LB_GETTEXTLEN, LB_GETTEXT, index, text);
}

int CListBox::GetTextLen(int index) const
{
    return Tell(*this, LB_GETTEXTLEN, Index(index));
}

int CListBox::GetTopIndex() const
{
    return Tell(*this, LB_GETTOPINDEX);
}

int CListBox::SetTopIndex(int index)
{
    return Tell(*this, LB_SETTOPINDEX, Index(index));
}

int CListBox::GetItemRect(int index, LPRECT rect) const
{
    return Tell(*this, LB_GETITEMRECT, Index(index), reinterpret_cast<LPARAM>(rect));
}

int CListBox::SetItemHeight(int index, UINT height)
{
    return Tell(*this, LB_SETITEMHEIGHT, Index(index), MAKELPARAM(height, 0));
}

int CListBox::FindString(int startAfter, LPCSTR text) const
{
    return Tell(*this, LB_FINDSTRING, Index(startAfter), Text(text));
}

int CListBox::FindStringExact(int startAfter, LPCSTR text) const
{
    return Tell(*this, LB_FINDSTRINGEXACT, Index(startAfter), Text(text));
}

int CListBox::SelectString(int startAfter, LPCSTR text)
{
    return Tell(*this, LB_SELECTSTRING, Index(startAfter), Text(text));
}

BOOL CListBox::SetTabStops(int count, LPINT stops)
{
    return Tell<BOOL>(*this, LB_SETTABSTOPS, Index(count), reinterpret_cast<LPARAM>(stops));
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

int CListBox::CompareItem(LPCOMPAREITEMSTRUCT)
{
    return 0;
}

void CListBox::DeleteItem(LPDELETEITEMSTRUCT) {}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectItem(*this, message, lParam, result) || CWnd::OnChildNotify(message, wParam, lParam, result);
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

int CComboBox::InsertString(int index, LPCSTR text)
{
    return Tell(*this, CB_INSERTSTRING, Index(index), Text(text));
}

int CComboBox::DeleteString(UINT index)
{
    return Tell(*this, CB_DELETESTRING, index);
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

DWORD_PTR CComboBox::GetItemData(int index) const
{
    return Tell<DWORD_PTR>(*this, CB_GETITEMDATA, Index(index));
}

int CComboBox::SetItemData(int index, DWORD_PTR data)
{
    return Tell(*this, CB_SETITEMDATA, Index(index), static_cast<LPARAM>(data));
}

int CComboBox::GetLBText(int index, LPSTR text) const
{
    return Tell(*this, CB_GETLBTEXT, Index(index), Text(text));
}

void CComboBox::GetLBText(int index, CString& text) const
{
    ItemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index, text);
}

int CComboBox::GetLBTextLen(int index) const
{
    return Tell(*this, CB_GETLBTEXTLEN, Index(index));
}

int CComboBox::FindString(int startAfter, LPCSTR text) const
{
    return Tell(*this, CB_FINDSTRING, Index(startAfter), Text(text));
}

int CComboBox::FindStringExact(int startAfter, LPCSTR text) const
{
    return Tell(*this, CB_FINDSTRINGEXACT, Index(startAfter), Text(text));
}

int CComboBox::SelectString(int startAfter, LPCSTR text)
{
    return Tell(*this, CB_SELECTSTRING, Index(startAfter), Text(text));
}

void CComboBox::ShowDropDown(BOOL show)
{
    Tell(*this, CB_SHOWDROPDOWN, Index(show));
}

BOOL CComboBox::GetDroppedState() const
{
    return Tell<BOOL>(*this, CB_GETDROPPEDSTATE);
}

int CComboBox::SetDroppedWidth(UINT width)
{
    return Tell(*this, CB_SETDROPPEDWIDTH, width);
}

int CComboBox::SetItemHeight(int index, UINT height)
{
    return Tell(*this, CB_SETITEMHEIGHT, Index(index), MAKELPARAM(height, 0));
}

BOOL CComboBox::LimitText(int maximum)
{
    return Tell<BOOL>(*this, CB_LIMITTEXT, Index(maximum));
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

int CComboBox::CompareItem(LPCOMPAREITEMSTRUCT)
{
    return 0;
}

void CComboBox::DeleteItem(LPDELETEITEMSTRUCT) {}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectItem(*this, message, lParam, result) || CWnd::OnChildNotify(message, wParam, lParam, result);
}

CScrollBar::CScrollBar() = default;
CScrollBar::~CScrollBar() = default;

BOOL CScrollBar::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create("SCROLLBAR", nullptr, style, rect, parent, id);
}

int CScrollBar::GetScrollPos() const
{
    return ::GetScrollPos(m_hWnd, SB_CTL);
}

int CScrollBar::SetScrollPos(int position, BOOL redraw)
{
    return ::SetScrollPos(m_hWnd, SB_CTL, position, redraw);
}

void CScrollBar::GetScrollRange(LPINT minimum, LPINT maximum) const
{
    ::GetScrollRange(m_hWnd, SB_CTL, minimum, maximum);
}

void CScrollBar::SetScrollRange(int minimum, int maximum, BOOL redraw)
{
    ::SetScrollRange(m_hWnd, SB_CTL, minimum, maximum, redraw);
}
