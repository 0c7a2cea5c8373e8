// The application.
#pragma once

#include "afx/CWnd.h"

/// The application object: one static object a program, if any.
class FRAMEWORK_API CWinApp : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinApp)
  public:
    explicit CWinApp(LPCSTR appName = nullptr);
    ~CWinApp() override;

    HINSTANCE m_hInstance;
    LPCSTR m_pszAppName; ///< the executable's name without its ending unless given
    LPSTR m_lpCmdLine;
    int m_nCmdShow;
    CWnd* m_pMainWnd;

    /// Shows a message box; a host may bring its own look.
    virtual int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId);

  private:
    CString m_appName;
};

FRAMEWORK_API CWinApp* AfxGetApp(); ///< null in a program without an application object
FRAMEWORK_API CWnd* AfxGetMainWnd();
FRAMEWORK_API LPCSTR AfxGetAppName();
/// A message box over the active window, by the application object where there is one.
FRAMEWORK_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT helpId = 0);
FRAMEWORK_API int AfxMessageBox(UINT textId, UINT type = MB_OK, UINT helpId = static_cast<UINT>(-1));
/// Prepares a program that has no WinMain of the framework's; FALSE when it cannot run.
FRAMEWORK_API BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show);
