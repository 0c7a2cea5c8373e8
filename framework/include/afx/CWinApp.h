// The application and its message loop.
#pragma once

#include "afx/CException.h"
#include "afx/CWnd.h"

/// A thread with a message loop.
class FRAMEWORK_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread();
    ~CWinThread() override;

    CWnd* m_pMainWnd; ///< when it is destroyed, the loop ends

    virtual BOOL InitInstance(); ///< FALSE: the loop does not begin
    virtual int ExitInstance();  ///< the exit code
    virtual int Run();
    virtual BOOL PumpMessage();
    virtual BOOL PreTranslateMessage(MSG* message);
    /// Called when no message waits, with a growing count; FALSE: nothing more to do.
    virtual BOOL OnIdle(LONG count);
    virtual BOOL IsIdleMessage(MSG* message);
    /// Answers for a message whose handler ended by an exception: creation fails, painting counts as done, everything
    /// else tells the user.
    virtual LRESULT ProcessWndProcException(CException* exception, const MSG* message);
    virtual CWnd* GetMainWnd();
};

/// The application object: one static object a program, if any.
class FRAMEWORK_API CWinApp : public CWinThread
{
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCSTR appName = nullptr);
    ~CWinApp() override;

    HINSTANCE m_hInstance;
    LPSTR m_lpCmdLine;
    int m_nCmdShow;
    LPCSTR m_pszAppName; ///< the executable's name without its ending unless given
    LPCSTR m_pszExeName;
    LPCSTR m_pszHelpFilePath; ///< the executable's path with the ending .hlp

    /// Shows a message box; a host may bring its own look.
    virtual int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId);
    /// Calls the help program for the main window.
    virtual void WinHelp(DWORD_PTR data, UINT command = HELP_CONTEXT);

    afx_msg void OnHelp();

private:
    CString m_appName;
    CString m_exeName;
    CString m_helpPath;
};

FRAMEWORK_API CWinApp* AfxGetApp(); ///< null in a program without an application object
FRAMEWORK_API CWnd* AfxGetMainWnd();
FRAMEWORK_API LPCSTR AfxGetAppName();
/// A message box over the active window, by the application object where there is one.
FRAMEWORK_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT helpId = 0);
FRAMEWORK_API int AfxMessageBox(UINT textId, UINT type = MB_OK, UINT helpId = static_cast<UINT>(-1));
/// Prepares a program that has no WinMain of the framework's; FALSE when it cannot run.
FRAMEWORK_API BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show);
