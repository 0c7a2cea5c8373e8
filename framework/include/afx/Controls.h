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
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int index);
    int GetText(int index, LPSTR text) const;
    void GetText(int index, CString& text) const;
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);

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
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int index);
    int GetLBText(int index, LPSTR text) const;
    void GetLBText(int index, CString& text) const;
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
