// The application object, message loops, and the functions that ask for the application.
#include "afx/CWinApp.h"
#include "afx/Resources.h"
#include "ThreadState.h"

using framework::State;

namespace
{
CWinApp* Application = nullptr;

CString ExecutablePath()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

CString WithoutEnding(const CString& path)
{
    const int dot = path.ReverseFind('.');
    return dot > path.ReverseFind('\\') ? path.Left(dot) : path;
}

CString ExecutableTitle()
{
    const CString path = WithoutEnding(ExecutablePath());
    return path.Mid(path.ReverseFind('\\') + 1);
}

LRESULT AnswerException(CException* exception, const MSG& message)
{
    if (message.message == WM_CREATE)
        return -1;
    if (message.message == WM_PAINT)
    {
        ValidateRect(message.hwnd, nullptr);
        return 0;
    }
    if (!exception)
        AfxMessageBox("An unknown error has occurred.", MB_ICONSTOP);
    else if (!exception->IsKindOf(RUNTIME_CLASS(CUserException))) // that one has told the user itself
        exception->ReportError(MB_ICONSTOP);
    return 0;
}
} // namespace

namespace framework
{
LRESULT EndedByException(CException* exception, const MSG& message)
{
    LRESULT result = 0;
    try
    {
        result = exception && Application ? Application->ProcessWndProcException(exception, &message)
                                          : AnswerException(exception, message);
    }
    catch (...)
    {
        AfxTrace("message %u: the report of an exception ended by another one\n", message.message);
    }
    if (exception)
        exception->Delete();
    return result;
}

HWND DefaultOwner()
{
    if (!Application || !Application->m_pMainWnd || !Application->m_pMainWnd->m_hWnd)
        return nullptr;
    return ::GetLastActivePopup(Application->m_pMainWnd->m_hWnd);
}

bool PreTranslate(MSG& message)
{
    if (Application)
        return Application->PreTranslateMessage(&message);
    return CWnd::WalkPreTranslateTree(nullptr, &message);
}

bool PumpMessage()
{
    MSG& message = State().pumped;
    const BOOL received = ::GetMessageA(&message, nullptr, 0, 0);
    if (received <= 0)
        return false;
    MSG current = message; // a loop inside changes the thread's
    if (!PreTranslate(current))
    {
        ::TranslateMessage(&current);
        ::DispatchMessageA(&current);
    }
    State().pumped = current;
    return true;
}

bool IsIdleMessage(const MSG& message)
{
    // A mouse that rests, a caret that blinks: nothing has changed.
    ThreadState& state = State();
    if (message.message == WM_MOUSEMOVE || message.message == WM_NCMOUSEMOVE)
    {
        const bool same = message.message == state.lastIdleMessage && message.pt.x == state.lastIdlePosition.x &&
                          message.pt.y == state.lastIdlePosition.y;
        state.lastIdleMessage = message.message;
        state.lastIdlePosition = message.pt;
        return !same;
    }
    constexpr UINT CaretTimer = 0x0118;
    return message.message != WM_PAINT && message.message != CaretTimer;
}
} // namespace framework

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)
IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

CWinThread::CWinThread() : m_pMainWnd(nullptr) {}

CWinThread::~CWinThread() = default;

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    return static_cast<int>(State().pumped.wParam);
}

int CWinThread::Run()
{
    MSG waiting;
    bool idle = true;
    LONG count = 0;
    for (;;)
    {
        while (idle && !::PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE))
            idle = OnIdle(count++) != FALSE;
        if (!PumpMessage())
            return ExitInstance();
        if (IsIdleMessage(&State().pumped))
        {
            idle = true;
            count = 0;
        }
    }
}

BOOL CWinThread::PumpMessage()
{
    return framework::PumpMessage();
}

BOOL CWinThread::PreTranslateMessage(MSG* message)
{
    if (!message->hwnd)
        return FALSE;
    const HWND main = m_pMainWnd ? m_pMainWnd->m_hWnd : nullptr;
    if (CWnd::WalkPreTranslateTree(main, message))
        return TRUE;
    // The main window's keys also work in the windows that it owns without being their parent.
    if (m_pMainWnd && main && message->hwnd != main && !::IsChild(main, message->hwnd))
    {
        HWND top = message->hwnd;
        for (HWND next = top; next; next = ::GetParent(next))
            top = next;
        if (top != main)
            return m_pMainWnd->PreTranslateMessage(message);
    }
    return FALSE;
}

BOOL CWinThread::OnIdle(LONG)
{
    framework::DeleteTemporaryObjects();
    return FALSE;
}

BOOL CWinThread::IsIdleMessage(MSG* message)
{
    return framework::IsIdleMessage(*message);
}

LRESULT CWinThread::ProcessWndProcException(CException* exception, const MSG* message)
{
    return AnswerException(exception, *message);
}

CWnd* CWinThread::GetMainWnd()
{
    return m_pMainWnd;
}

CWinApp::CWinApp(LPCSTR appName)
    : m_hInstance(AfxGetInstanceHandle()), m_lpCmdLine(GetCommandLineA()), m_nCmdShow(SW_SHOWNORMAL),
      m_appName(appName ? CString(appName) : ExecutableTitle()), m_exeName(ExecutableTitle()),
      m_helpPath(WithoutEnding(ExecutablePath()) + ".hlp")
{
    m_pszAppName = m_appName;
    m_pszExeName = m_exeName;
    m_pszHelpFilePath = m_helpPath;
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
    const HWND active = GetActiveWindow();
    return MessageBoxA(active ? active : framework::DefaultOwner(), prompt, m_pszAppName, type);
}

void CWinApp::WinHelp(DWORD_PTR data, UINT command)
{
    if (m_pMainWnd && m_pMainWnd->m_hWnd)
        ::WinHelpA(m_pMainWnd->m_hWnd, m_pszHelpFilePath, command, data);
}

void CWinApp::OnHelp()
{
    WinHelp(0, HELP_CONTENTS);
}

CWinApp* AfxGetApp()
{
    return Application;
}

CWnd* AfxGetMainWnd()
{
    return Application ? Application->GetMainWnd() : nullptr;
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
