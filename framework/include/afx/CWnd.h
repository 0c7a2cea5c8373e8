// Windows.
#pragma once

#include "afx/CCmdTarget.h"
#include "afx/CDC.h"
#include "afx/CString.h"

class CDataExchange;
struct CCreateContext; // documents and views, which this framework does not have

#define MLF_NOIDLEMSG 0x0001
#define MLF_NOKICKIDLE 0x0002
#define MLF_SHOWONIDLE 0x0004

/// A window of the system. The object is attached to its window by Create, SubclassWindow or Attach, from WM_NCCREATE
/// to WM_NCDESTROY. An object that FromHandle makes only stands for a window; it lasts until the program is idle.
class FRAMEWORK_API CWnd : public CCmdTarget
{
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd();
    /// Destroys a window that is still attached, without a call of any member of the derived class.
    ~CWnd() override;

    HWND m_hWnd;
    operator HWND() const;
    HWND GetSafeHwnd() const;

    static CWnd* FromHandle(HWND window);          ///< temporary unless attached
    static CWnd* FromHandlePermanent(HWND window); ///< null unless attached
    static void DeleteTempMap();
    BOOL Attach(HWND window);
    HWND Detach();
    /// Called before the window's messages come to this object, when it is created or subclassed.
    virtual void PreSubclassWindow();
    /// Attaches an existing window (of the same thread) and takes over its messages. FALSE when it has an object.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    /// Gives the messages back and detaches the window.
    HWND UnsubclassWindow();

    /// A child window.
    virtual BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                        CCreateContext* context = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                  UINT id, LPVOID parameter = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width, int height,
                  HWND parent, HMENU idOrMenu, LPVOID parameter = nullptr);
    virtual BOOL DestroyWindow();
    /// May change what the window is created with; FALSE stops the creation.
    virtual BOOL PreCreateWindow(CREATESTRUCT& parameters);

    // State and text
    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    void SetWindowText(LPCSTR text);
    int GetWindowText(LPSTR text, int maximum) const;
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const;
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const;
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;
    BOOL ShowWindow(int show);
    BOOL IsWindowVisible() const;
    int GetDlgCtrlID() const;

    // Place and size
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int width, int height, UINT flags);
    void CenterWindow(CWnd* alternateOwner = nullptr);
    void GetWindowRect(LPRECT rect) const;
    void GetClientRect(LPRECT rect) const;
    int SetWindowRgn(HRGN region, BOOL redraw);
    void ClientToScreen(LPPOINT point) const;
    void ClientToScreen(LPRECT rect) const;
    void ScreenToClient(LPPOINT point) const;
    void ScreenToClient(LPRECT rect) const;
    void MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const;
    void MapWindowPoints(CWnd* to, LPRECT rect) const;

    // Painting
    CDC* GetDC();
    int ReleaseDC(CDC* dc);
    void UpdateWindow();
    BOOL GetUpdateRect(LPRECT rect, BOOL erase = FALSE);
    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE);
    void ValidateRect(LPCRECT rect);
    BOOL RedrawWindow(LPCRECT rect = nullptr, CRgn* region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);

    // Input and time
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
    BOOL KillTimer(UINT_PTR id);
    static CWnd* GetCapture();
    CWnd* SetCapture();
    static CWnd* GetFocus();
    CWnd* SetFocus();
    static CWnd* GetActiveWindow();
    BOOL SetForegroundWindow();

    // Relatives
    CWnd* GetParent() const;
    CWnd* GetOwner() const;
    CWnd* GetWindow(UINT relation) const;

    // Controls of a dialog
    CWnd* GetDlgItem(int id) const;
    void GetDlgItem(int id, HWND* window) const;
    void SetDlgItemText(int id, LPCSTR text);
    int GetDlgItemText(int id, LPSTR text, int maximum) const;
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    void CheckDlgButton(int id, UINT check);
    UINT IsDlgButtonChecked(int id) const;
    void CheckRadioButton(int firstId, int lastId, int checkedId);
    int GetCheckedRadioButton(int firstId, int lastId) const;
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Moves values between the controls and the object's members, TRUE: from the controls. FALSE when a value is bad.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    // Messages
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    int MessageBox(LPCSTR text, LPCSTR caption = nullptr, UINT type = MB_OK);
    virtual void WinHelp(DWORD_PTR data, UINT command = HELP_CONTEXT);
    /// Sees every message of the program's message loops before it is dispatched; TRUE takes it out.
    virtual BOOL PreTranslateMessage(MSG* message);
    /// Offers a message to its window and that window's parents, up to `stop`.
    static BOOL WalkPreTranslateTree(HWND stop, MSG* message);
    /// Turns keyboard input into the moves of a dialog.
    BOOL PreTranslateInput(MSG* message);
    static const MSG* GetCurrentMessage();

    /// Runs a message loop until EndModalLoop; answers its argument.
    int RunModalLoop(DWORD flags = 0);
    virtual BOOL ContinueModal();
    virtual void EndModalLoop(int result);

    /// Hands a message of a control back to it, if it has an object; FALSE when it does not want it.
    static BOOL ReflectLastMsg(HWND child, LRESULT* result = nullptr);

protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// What the window did before it was attached, or the system's default.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// DefWindowProc with the message that is being handled.
    LRESULT Default();
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// A message that this control sent to its parent; TRUE when the parent need not see it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void DoDataExchange(CDataExchange* exchange);
    /// The window is gone; an object on the heap may delete itself here.
    virtual void PostNcDestroy();

    // Handlers for the messages of their names; these here do what the window did by itself. Those for controls'
    // messages hand the message back to the control.
    afx_msg int OnCreate(LPCREATESTRUCT parameters);
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy();
    afx_msg void OnClose();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    afx_msg void OnKillFocus(CWnd* newWindow);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnChar(UINT character, UINT repeat, UINT flags);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnPaletteChanged(CWnd* focusWindow);
    afx_msg BOOL OnQueryNewPalette();
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT item);
    afx_msg void OnMeasureItem(int id, LPMEASUREITEMSTRUCT item);
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT type);
    afx_msg void OnContextMenu(CWnd* window, CPoint point);
    afx_msg BOOL OnHelpInfo(HELPINFO* information);

    DECLARE_MESSAGE_MAP()

private:
    friend class CDialog;
    friend class CColorDialog;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam);
    void HookCreation();
    static bool UnhookCreation();
    void TakeMessages(HWND window);
    void GiveMessagesBack();

    int m_modalResult = 0;
    bool m_modal = false;
};

/// Registers a window class of the given looks once and answers its name, which lasts as long as the program.
FRAMEWORK_API LPCSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                                         HICON icon = nullptr);
