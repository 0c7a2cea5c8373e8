// The application object, and the functions that ask for it.
#include "afx/CWinApp.h"
#include "afx/Resources.h"

namespace
{
CWinApp* Application = nullptr;

CString ExecutableTitle()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    CString title = path;
    title = title.Mid(title.ReverseFind('\\') + 1);
    const int dot = title.ReverseFind('.');
    return dot > 0 ? title.Left(dot) : title;
}
} // namespace

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

CWinApp::CWinApp(LPCSTR appName)
    : m_hInstance(AfxGetInstanceHandle()), m_lpCmdLine(GetCommandLineA()), m_nCmdShow(SW_SHOWNORMAL),
      m_pMainWnd(nullptr), m_appName(appName ? CString(appName) : ExecutableTitle())
{
    m_pszAppName = m_appName;
    ASSERT(!Application);
    Application = this;
}

CWinApp::~CWinApp()
{
    if (Application == this)
        Application = nullptr;
}

int CWinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT)
{
    // A message without an icon gets the one that fits its buttons.
    if (!(type & MB_ICONMASK))
    {
        const UINT buttons = type & MB_TYPEMASK;
        const bool question = buttons == MB_YESNO || buttons == MB_YESNOCANCEL;
        type |= question ? MB_ICONQUESTION : MB_ICONEXCLAMATION;
    }
    HWND owner = GetActiveWindow();
    if (!owner && m_pMainWnd)
        owner = m_pMainWnd->m_hWnd;
    return MessageBoxA(owner, prompt, m_pszAppName, type);
}

CWinApp* AfxGetApp()
{
    return Application;
}

CWnd* AfxGetMainWnd()
{
    return Application ? Application->m_pMainWnd : nullptr;
}

LPCSTR AfxGetAppName()
{
    return Application ? Application->m_pszAppName : "";
}

int AfxMessageBox(LPCSTR text, UINT type, UINT helpId)
{
    if (Application)
        return Application->DoMessageBox(text, type, helpId);
    return MessageBoxA(GetActiveWindow(), text, ExecutableTitle(), type);
}

int AfxMessageBox(UINT textId, UINT type, UINT helpId)
{
    CString text;
    text.LoadString(textId);
    return AfxMessageBox(text, type, helpId == static_cast<UINT>(-1) ? textId : helpId);
}

BOOL AfxWinInit(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int show)
{
    AfxSetResourceHandle(instance);
    if (Application)
    {
        Application->m_hInstance = instance;
        Application->m_lpCmdLine = commandLine;
        Application->m_nCmdShow = show;
    }
    return TRUE;
}
