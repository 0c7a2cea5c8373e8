// Tool tips.
#pragma once

#include "afx/CWnd.h"

/// A pop-up that shows a text over each of its tools: windows, or rectangles of windows. The window whose tools they
/// are passes its mouse messages on by RelayEvent.
class FRAMEWORK_API CToolTipCtrl : public CWnd
{
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    CToolTipCtrl();
    ~CToolTipCtrl() override;
    using CWnd::Create;
    virtual BOOL Create(CWnd* parent, DWORD style = 0);

    /// A tool: the whole window (neither rectangle nor id), or a rectangle of it with an id. The text is copied.
    BOOL AddTool(CWnd* window, LPCSTR text = LPSTR_TEXTCALLBACKA, LPCRECT rect = nullptr, UINT_PTR id = 0);
    BOOL AddTool(CWnd* window, UINT textId, LPCRECT rect = nullptr, UINT_PTR id = 0);
    void DelTool(CWnd* window, UINT_PTR id = 0);
    void UpdateTipText(LPCSTR text, CWnd* window, UINT_PTR id = 0);
    void UpdateTipText(UINT textId, CWnd* window, UINT_PTR id = 0);
    int GetToolCount() const;
    void GetText(CString& text, CWnd* window, UINT_PTR id = 0) const;

    void RelayEvent(LPMSG message);
};
