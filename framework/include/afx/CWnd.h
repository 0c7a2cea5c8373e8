// Windows.
#pragma once

#include "afx/CDC.h"
#include "afx/CObject.h"
#include "afx/CString.h"

/// The base of what receives commands.
class FRAMEWORK_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
  public:
    CCmdTarget();
    ~CCmdTarget() override;
};

/// A window of the system. An object that FromHandle makes only stands for a window; it lasts until the program is
/// idle.
class FRAMEWORK_API CWnd : public CCmdTarget
{
    DECLARE_DYNCREATE(CWnd)
  public:
    CWnd();
    ~CWnd() override;

    HWND m_hWnd;
    operator HWND() const;
    HWND GetSafeHwnd() const; ///< the handle; null for a null object

    static CWnd* FromHandle(HWND window);          ///< temporary unless attached
    static CWnd* FromHandlePermanent(HWND window); ///< null unless attached
    static void DeleteTempMap();
    BOOL Attach(HWND window);
    HWND Detach();
    virtual BOOL DestroyWindow();

    int MessageBox(LPCSTR text, LPCSTR caption = nullptr, UINT type = MB_OK);
    void GetClientRect(LPRECT rect) const;
    void GetWindowRect(LPRECT rect) const;
    CDC* GetDC();
    CDC* GetWindowDC();
    int ReleaseDC(CDC* dc);
};
