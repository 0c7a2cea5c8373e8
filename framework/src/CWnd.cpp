// Windows: objects attached to handles, creation, and the way of a message from the system to its handler.
#include "afx/CWnd.h"
#include "afx/CException.h"
#include "afx/CWinApp.h"
#include "afx/Resources.h"
#include "MessageSearch.h"
#include "ThreadState.h"
#include <exception>
#include <set>
#include <string>

using framework::State;
using framework::ThreadState;

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

namespace
{
// The message being handled, for as long as its window procedure runs.
class HandledMessage
{
public:
    explicit HandledMessage(const MSG& message) : m_former(State().handled)
    {
        State().handled = message;
        ++State().depth;
    }
    ~HandledMessage()
    {
        --State().depth;
        State().handled = m_former;
    }
    HandledMessage(const HandledMessage&) = delete;
    HandledMessage& operator=(const HandledMessage&) = delete;

private:
    MSG m_former;
};

bool IsCtlColor(UINT message)
{
    return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

// The number under which map entries have a message.
UINT EntryMessage(UINT message)
{
    return IsCtlColor(message) ? WM_CTLCOLOR : message;
}
} // namespace

CWnd::CWnd() : m_hWnd(nullptr) {}

CWnd::~CWnd()
{
    if (!m_hWnd || FromHandlePermanent(m_hWnd) != this)
        return;
    // The derived part is gone: the window ends as what it was before.
    const HWND window = m_hWnd;
    GiveMessagesBack();
    Detach();
    ::DestroyWindow(window);
}

CWnd::operator HWND() const
{
    return GetSafeHwnd();
}

HWND CWnd::GetSafeHwnd() const
{
    const auto* volatile self = this; // documented to answer for a null object
    return self ? m_hWnd : nullptr;
}

CWnd* CWnd::FromHandle(HWND window)
{
    return State().windows.Find<CWnd>(window);
}

CWnd* CWnd::FromHandlePermanent(HWND window)
{
    return State().windows.Permanent(window);
}

void CWnd::DeleteTempMap()
{
    State().windows.DeleteTemporary();
}

BOOL CWnd::Attach(HWND window)
{
    ASSERT(!m_hWnd);
    if (!window)
        return FALSE;
    m_hWnd = window;
    State().windows.Set(window, this);
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND window = m_hWnd;
    if (window && FromHandlePermanent(window) == this)
        State().windows.Remove(window);
    m_hWnd = nullptr;
    return window;
}

void CWnd::PreSubclassWindow() {}

// Puts the framework's procedure before the window's own.
void CWnd::TakeMessages(HWND window)
{
    const auto former = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::Procedure)));
    if (former != &CWnd::Procedure)
        State().formerProcedures[window] = former;
}

// Takes the framework's procedure out again, unless somebody has put another one before it.
void CWnd::GiveMessagesBack()
{
    auto& procedures = State().formerProcedures;
    const auto former = procedures.find(m_hWnd);
    if (former == procedures.end() ||
        reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(m_hWnd, GWLP_WNDPROC)) != &CWnd::Procedure)
        return;
    ::SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former->second));
    procedures.erase(former);
}

BOOL CWnd::SubclassWindow(HWND window)
{
    if (!window || FromHandlePermanent(window) || !Attach(window))
        return FALSE;
    PreSubclassWindow();
    TakeMessages(window);
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent)
{
    return SubclassWindow(::GetDlgItem(parent->m_hWnd, static_cast<int>(id)));
}

HWND CWnd::UnsubclassWindow()
{
    GiveMessagesBack();
    return Detach();
}

BOOL CWnd::Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  CCreateContext*)
{
    ASSERT(parent && !(style & WS_POPUP));
    return CreateEx(0, className, windowName, style | WS_CHILD, rect, parent, id);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                    UINT id, LPVOID parameter)
{
    return CreateEx(exStyle, className, windowName, style, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, parent ? parent->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), parameter);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width,
                    int height, HWND parent, HMENU idOrMenu, LPVOID parameter)
{
    CREATESTRUCT parameters = {parameter, AfxGetInstanceHandle(),   idOrMenu,   parent,    height, width, y,
                               x,         static_cast<LONG>(style), windowName, className, exStyle};
    if (!PreCreateWindow(parameters))
    {
        PostNcDestroy();
        return FALSE;
    }
    HookCreation();
    const HWND window = ::CreateWindowExA(parameters.dwExStyle, parameters.lpszClass, parameters.lpszName,
                                          static_cast<DWORD>(parameters.style), parameters.x, parameters.y,
                                          parameters.cx, parameters.cy, parameters.hwndParent, parameters.hMenu,
                                          parameters.hInstance, parameters.lpCreateParams);
    // A window that was never made, and so never destroyed, ends its object here.
    if (!UnhookCreation() && !window)
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& parameters)
{
    if (!parameters.lpszClass)
        parameters.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, LoadCursor(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::DestroyWindow()
{
    if (!m_hWnd)
        return FALSE;
    const HWND window = m_hWnd;
    const bool mine = FromHandlePermanent(window) == this;
    const BOOL destroyed = ::DestroyWindow(window);
    // An attached window without our procedure has not told its object (which, with it, may be gone by now).
    if (mine && FromHandlePermanent(window) == this)
        Detach();
    return destroyed;
}

// The next window that this thread creates becomes this object's: the first one only, so that a dialog's controls
// stay plain.
void CWnd::HookCreation()
{
    ThreadState& state = State();
    ASSERT(!state.beingCreated);
    state.beingCreated = this;
    if (!state.creationHook)
        state.creationHook = SetWindowsHookExA(WH_CBT, &CWnd::CreationHook, nullptr, GetCurrentThreadId());
}

// Whether the window was met.
bool CWnd::UnhookCreation()
{
    ThreadState& state = State();
    const bool met = state.beingCreated == nullptr;
    state.beingCreated = nullptr;
    if (state.creationHook)
        UnhookWindowsHookEx(state.creationHook);
    state.creationHook = nullptr;
    return met;
}

LRESULT CALLBACK CWnd::CreationHook(int code, WPARAM wParam, LPARAM lParam)
{
    ThreadState& state = State();
    const HHOOK hook = state.creationHook;
    const auto window = reinterpret_cast<HWND>(wParam);
    // The input method's own window may come first.
    if (code == HCBT_CREATEWND && state.beingCreated && !(::GetClassLongA(window, GCL_STYLE) & CS_IME))
    {
        CWnd* object = state.beingCreated;
        UnhookCreation();
        object->Attach(window);
        object->PreSubclassWindow();
        object->TakeMessages(window);
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

LRESULT CALLBACK CWnd::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* object = FromHandlePermanent(window);
    if (!object)
    {
        auto& procedures = State().formerProcedures;
        const auto former = procedures.find(window);
        const WNDPROC procedure = former == procedures.end() ? &::DefWindowProcA : former->second;
        if (message == WM_NCDESTROY)
            procedures.erase(window);
        return ::CallWindowProcA(procedure, window, message, wParam, lParam);
    }
    const MSG handled = {window, message, wParam, lParam, static_cast<DWORD>(::GetMessageTime()), {}};
    const HandledMessage scope(handled);
    // The frames below are the system's: nothing may be thrown through them.
    try
    {
        return object->WindowProc(message, wParam, lParam);
    }
    catch (CException* exception)
    {
        return framework::EndedByException(exception, handled);
    }
    catch (const std::exception& exception)
    {
        AfxTrace("message %u ended by an exception: %s\n", message, exception.what());
    }
    catch (...)
    {
        AfxTrace("message %u ended by an exception\n", message);
    }
    return framework::EndedByException(nullptr, handled);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_COMMAND)
    {
        *result = 0;
        return OnCommand(wParam, lParam);
    }
    if (message == WM_NOTIFY)
        return reinterpret_cast<const NMHDR*>(lParam)->hwndFrom && OnNotify(wParam, lParam, result);
    AFX_MSGCALL call = {message, wParam, lParam, 0};
    if (!framework::CallHandler(*this, GetMessageMap(), {AfxMsgWindow, EntryMessage(message)}, call))
        return FALSE;
    *result = call.result;
    return TRUE;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto& procedures = State().formerProcedures;
    const auto former = procedures.find(m_hWnd);
    if (former == procedures.end())
        return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
    return ::CallWindowProcA(former->second, m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG& message = State().handled;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

const MSG* CWnd::GetCurrentMessage()
{
    return &State().handled;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const auto control = reinterpret_cast<HWND>(lParam);
    if (control && ReflectLastMsg(control))
        return TRUE;
    return OnCmdMsg(LOWORD(wParam), control ? HIWORD(wParam) : 0, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (ReflectLastMsg(header->hwndFrom, result))
        return TRUE;
    AFX_MSGCALL call = {WM_NOTIFY, wParam, lParam, 0};
    const auto id = static_cast<UINT>(header->idFrom);
    if (!framework::CallHandler(*this, GetMessageMap(), {AfxMsgWindow, WM_NOTIFY, header->code, id}, call))
        return FALSE;
    *result = call.result;
    return TRUE;
}

BOOL CWnd::ReflectLastMsg(HWND child, LRESULT* result)
{
    CWnd* object = FromHandlePermanent(child);
    const MSG& message = State().handled;
    return object && object->OnChildNotify(message.message, message.wParam, message.lParam, result);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectChildNotify(message, wParam, lParam, result);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    framework::MessageKey key = {AfxMsgReflected, EntryMessage(message)};
    if (message == WM_COMMAND)
        key.code = HIWORD(wParam);
    else if (message == WM_NOTIFY)
        key.code = reinterpret_cast<const NMHDR*>(lParam)->code;
    AFX_MSGCALL call = {message, wParam, lParam, 0};
    if (!framework::CallHandler(*this, GetMessageMap(), key, call))
        return FALSE;
    if (result)
        *result = call.result;
    return TRUE;
}

void CWnd::PostNcDestroy() {}

void CWnd::DoDataExchange(CDataExchange*) {}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND stop, MSG* message)
{
    for (HWND window = message->hwnd; window; window = ::GetParent(window))
    {
        CWnd* object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(message))
            return TRUE;
        if (window == stop)
            break;
    }
    return FALSE;
}

BOOL CWnd::PreTranslateInput(MSG* message)
{
    const bool input = (message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST) ||
                       (message->message >= WM_MOUSEFIRST && message->message <= WM_MOUSELAST);
    return input && ::IsDialogMessageA(m_hWnd, message);
}

int CWnd::RunModalLoop(DWORD flags)
{
    m_modal = true;
    m_modalResult = -1;
    bool show = (flags & MLF_SHOWONIDLE) && !IsWindowVisible();
    const HWND owner = ::GetParent(m_hWnd);
    MSG message;
    while (m_modal && ContinueModal())
    {
        // A timer that is always due must not keep the window from showing.
        if (show && !HIWORD(::GetQueueStatus(QS_POSTMESSAGE | QS_INPUT | QS_SENDMESSAGE)))
        {
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
            show = false;
        }
        if (!::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
        {
            framework::DeleteTemporaryObjects();
            if (!(flags & MLF_NOIDLEMSG) && owner)
                ::SendMessageA(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
        }
        if (!framework::PumpMessage())
        {
            PostQuitMessage(static_cast<int>(State().pumped.wParam)); // for the loop that this one runs in
            m_modal = false;
            return -1;
        }
    }
    return m_modalResult;
}

BOOL CWnd::ContinueModal()
{
    return m_modal;
}

void CWnd::EndModalLoop(int result)
{
    m_modalResult = result;
    if (!m_modal)
        return;
    m_modal = false;
    PostMessage(WM_NULL); // wakes the loop
}

LPCSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor, HBRUSH background, HICON icon)
{
    static SRWLOCK lock = SRWLOCK_INIT;
    static auto* names = new std::set<std::string>; // the names last as long as the program
    CString name;
    name.Format("AfxWnd:%p:%x:%p:%p:%p", static_cast<void*>(AfxGetInstanceHandle()), classStyle,
                static_cast<void*>(cursor), static_cast<void*>(background), static_cast<void*>(icon));
    AcquireSRWLockExclusive(&lock);
    const auto [entry, fresh] = names->insert(static_cast<LPCSTR>(name));
    const LPCSTR kept = entry->c_str();
    bool registered = true;
    if (fresh)
    {
        const WNDCLASSA windowClass = {classStyle, ::DefWindowProcA, 0,          0,       AfxGetInstanceHandle(),
                                       icon,       cursor,           background, nullptr, kept};
        registered = RegisterClassA(&windowClass) != 0;
        if (!registered)
            names->erase(entry);
    }
    ReleaseSRWLockExclusive(&lock);
    if (!registered)
        AfxThrowResourceException();
    return kept;
}
