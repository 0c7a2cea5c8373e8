// The system's own controls.
#pragma once

#include "afx/CWnd.h"

class FRAMEWORK_API CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)
  public:
    CStatic();
    ~CStatic() override;
    using CWnd::Create;
    virtual BOOL Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
    HICON SetIcon(HICON icon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
    /// Draws an owner-drawn control; does nothing unless a derived class does.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

  protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class FRAMEWORK_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)
  public:
    CButton();
    ~CButton() override;
    using CWnd::Create;
    virtual BOOL Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    UINT GetState() const;
    void SetState(BOOL highlight);
    int GetCheck() const;
    void SetCheck(int check);
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT style, BOOL redraw = TRUE);
    HICON SetIcon(HICON icon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
    /// Draws an owner-drawn button; a derived class must do so.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

  protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class FRAMEWORK_API CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)
  public:
    CEdit();
    ~CEdit() override;
    using CWnd::Create;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    void SetLimitText(UINT maximum);
    void LimitText(int maximum = 0);
    void SetSel(int start, int end, BOOL noScroll = FALSE);
    void GetSel(int& start, int& end) const;
    void ReplaceSel(LPCSTR text, BOOL canUndo = FALSE);
    BOOL SetReadOnly(BOOL readOnly = TRUE);
    BOOL GetModify() const;
    void SetModify(BOOL modified = TRUE);
    int GetLineCount() const;
    void SetMargins(UINT left, UINT right);
};

class FRAMEWORK_API CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)
  public:
    CListBox();
    ~CListBox() override;
    using CWnd::Create;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int AddString(LPCSTR text);
    int InsertString(int index, LPCSTR text);
    int DeleteString(UINT index);
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int index);
    int GetSel(int index) const;
    int SetSel(int index, BOOL select = TRUE);
    int GetSelCount() const;
    DWORD_PTR GetItemData(int index) const;
    int SetItemData(int index, DWORD_PTR data);
    int GetText(int index, LPSTR text) const;
    void GetText(int index, CString& text) const;
    int GetTextLen(int index) const;
    int GetTopIndex() const;
    int SetTopIndex(int index);
    int GetItemRect(int index, LPRECT rect) const;
    int SetItemHeight(int index, UINT height);
    int FindString(int startAfter, LPCSTR text) const;
    int FindStringExact(int startAfter, LPCSTR text) const;
    int SelectString(int startAfter, LPCSTR text);
    BOOL SetTabStops(int count, LPINT stops);
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT item);
    virtual void DeleteItem(LPDELETEITEMSTRUCT item);

  protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class FRAMEWORK_API CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)
  public:
    CComboBox();
    ~CComboBox() override;
    using CWnd::Create;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int AddString(LPCSTR text);
    int InsertString(int index, LPCSTR text);
    int DeleteString(UINT index);
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int index);
    DWORD_PTR GetItemData(int index) const;
    int SetItemData(int index, DWORD_PTR data);
    int GetLBText(int index, LPSTR text) const;
    void GetLBText(int index, CString& text) const;
    int GetLBTextLen(int index) const;
    int FindString(int startAfter, LPCSTR text) const;
    int FindStringExact(int startAfter, LPCSTR text) const;
    int SelectString(int startAfter, LPCSTR text);
    void ShowDropDown(BOOL show = TRUE);
    BOOL GetDroppedState() const;
    int SetDroppedWidth(UINT width);
    int SetItemHeight(int index, UINT height);
    BOOL LimitText(int maximum);
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT item);
    virtual void DeleteItem(LPDELETEITEMSTRUCT item);

  protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class FRAMEWORK_API CScrollBar : public CWnd
{
    DECLARE_DYNAMIC(CScrollBar)
  public:
    CScrollBar();
    ~CScrollBar() override;
    using CWnd::Create;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetScrollPos() const;
    int SetScrollPos(int position, BOOL redraw = TRUE);
    void GetScrollRange(LPINT minimum, LPINT maximum) const;
    void SetScrollRange(int minimum, int maximum, BOOL redraw = TRUE);
};
