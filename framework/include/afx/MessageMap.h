// Message maps: which member function answers which message. A handler is named by `&Class::Member`, or by the fixed
// name that its ON_WM_ macro documents. Each entry holds a small function that unpacks the message's parameters and
// calls the handler with its own type: no pointer to a member is ever converted.
#pragma once

#include "afx/Platform.h"

class CCmdTarget;

/// A message on its way to a handler, and the answer.
struct AFX_MSGCALL
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
};

/// Calls the handler; false when it declines and the search goes on.
using AFX_MSGTHUNK = bool (*)(CCmdTarget& target, AFX_MSGCALL& call);

/// Where a message comes from: sent to the window itself, or handed back by its parent.
enum AFX_MSGKIND
{
    AfxMsgWindow,
    AfxMsgReflected
};

struct AFX_MSGMAP_ENTRY
{
    AFX_MSGKIND kind;
    UINT nMessage;
    UINT nCode; ///< notification code; 0 for commands of menus and accelerators
    UINT nID;
    UINT nLastID;
    const UINT* pRegistered; ///< the number of a registered message
    AFX_MSGTHUNK pThunk;
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries; ///< ends with an entry without a thunk
};

namespace framework
{
template <class C, class R, class... A>
C ClassOf(R (C::*)(A...));

template <auto handler>
auto& Target(CCmdTarget& target)
{
    return static_cast<decltype(ClassOf(handler))&>(target);
}

// Commands and control notifications: void().
template <auto handler>
bool CallCommand(CCmdTarget& target, AFX_MSGCALL&)
{
    (Target<handler>(target).*handler)();
    return true;
}

// The same with a result that says whether the search ends: BOOL().
template <auto handler>
bool CallCommandEx(CCmdTarget& target, AFX_MSGCALL&)
{
    return (Target<handler>(target).*handler)() != FALSE;
}

// Commands of a range: void(UINT id).
template <auto handler>
bool CallRange(CCmdTarget& target, AFX_MSGCALL& call)
{
    (Target<handler>(target).*handler)(LOWORD(call.wParam));
    return true;
}

// Notifications: void(NMHDR*, LRESULT*), or BOOL(...) in the extended form.
template <auto handler>
bool CallNotify(CCmdTarget& target, AFX_MSGCALL& call)
{
    (Target<handler>(target).*handler)(reinterpret_cast<NMHDR*>(call.lParam), &call.result);
    return true;
}

template <auto handler>
bool CallNotifyEx(CCmdTarget& target, AFX_MSGCALL& call)
{
    return (Target<handler>(target).*handler)(reinterpret_cast<NMHDR*>(call.lParam), &call.result) != FALSE;
}

// Any message: LRESULT(WPARAM, LPARAM).
template <auto handler>
bool CallMessage(CCmdTarget& target, AFX_MSGCALL& call)
{
    call.result = (Target<handler>(target).*handler)(call.wParam, call.lParam);
    return true;
}
} // namespace framework

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static const AFX_MSGMAP* GetThisMessageMap();                                                                      \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                                  \
    {                                                                                                                  \
        return GetThisMessageMap();                                                                                    \
    }                                                                                                                  \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                                    \
    {                                                                                                                  \
        using ThisClass [[maybe_unused]] = theClass;                                                                   \
        using TheBaseClass = baseClass;                                                                                \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                              \
    {                                                                                                                  \
        AfxMsgWindow, 0, 0, 0, 0, nullptr, nullptr                                                                     \
    }                                                                                                                  \
    }                                                                                                                  \
    ;                                                                                                                  \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                                         \
    return &map;                                                                                                       \
    }

#define AFX_ON_ID(message, code, first, last, thunk)                                                                   \
    {AfxMsgWindow, message, static_cast<UINT>(code), static_cast<UINT>(first), static_cast<UINT>(last), nullptr, thunk},
#define AFX_ON_REFLECTED(message, code, thunk)                                                                         \
    {AfxMsgReflected, message, static_cast<UINT>(code), 0, 0, nullptr, thunk},

#define ON_COMMAND(id, memberFxn) AFX_ON_ID(WM_COMMAND, 0, id, id, &framework::CallCommand<memberFxn>)
#define ON_COMMAND_RANGE(id, idLast, memberFxn) AFX_ON_ID(WM_COMMAND, 0, id, idLast, &framework::CallRange<memberFxn>)
#define ON_CONTROL(code, id, memberFxn) AFX_ON_ID(WM_COMMAND, code, id, id, &framework::CallCommand<memberFxn>)
#define ON_NOTIFY(code, id, memberFxn) AFX_ON_ID(WM_NOTIFY, code, id, id, &framework::CallNotify<memberFxn>)
#define ON_MESSAGE(message, memberFxn) AFX_ON_ID(message, 0, 0, 0, &framework::CallMessage<memberFxn>)
#define ON_REGISTERED_MESSAGE(variable, memberFxn)                                                                     \
    {AfxMsgWindow, 0, 0, 0, 0, &(variable), &framework::CallMessage<memberFxn>},

#define ON_CONTROL_REFLECT(code, memberFxn) AFX_ON_REFLECTED(WM_COMMAND, code, &framework::CallCommand<memberFxn>)
#define ON_CONTROL_REFLECT_EX(code, memberFxn) AFX_ON_REFLECTED(WM_COMMAND, code, &framework::CallCommandEx<memberFxn>)
#define ON_NOTIFY_REFLECT(code, memberFxn) AFX_ON_REFLECTED(WM_NOTIFY, code, &framework::CallNotify<memberFxn>)
#define ON_NOTIFY_REFLECT_EX(code, memberFxn) AFX_ON_REFLECTED(WM_NOTIFY, code, &framework::CallNotifyEx<memberFxn>)

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)

// The rest are messages of the system with handlers of fixed names. `self` is the object, `m` the message.
#define AFX_ON_WM_KIND(kind, message, ...)                                                                             \
    {kind,                                                                                                             \
     message,                                                                                                          \
     0,                                                                                                                \
     0,                                                                                                                \
     0,                                                                                                                \
     nullptr,                                                                                                          \
     [](CCmdTarget& target, [[maybe_unused]] AFX_MSGCALL& m)                                                           \
     {                                                                                                                 \
         auto& self = static_cast<ThisClass&>(target);                                                                 \
         __VA_ARGS__;                                                                                                  \
         return true;                                                                                                  \
     }},
#define AFX_ON_WM(message, ...) AFX_ON_WM_KIND(AfxMsgWindow, message, __VA_ARGS__)

#define AFX_ON_WM_MOUSE(message, handler)                                                                              \
    AFX_ON_WM(message, self.handler(static_cast<UINT>(m.wParam), CPoint(m.lParam)))
#define AFX_ON_WM_KEY(message, handler)                                                                                \
    AFX_ON_WM(message, self.handler(static_cast<UINT>(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam)))
#define AFX_WINDOW_OF(parameter) CWnd::FromHandle(reinterpret_cast<HWND>(parameter))
#define AFX_CONTEXT_OF(parameter) CDC::FromHandle(reinterpret_cast<HDC>(parameter))

#define ON_WM_CREATE() AFX_ON_WM(WM_CREATE, m.result = self.OnCreate(reinterpret_cast<LPCREATESTRUCT>(m.lParam)))
#define ON_WM_DESTROY() AFX_ON_WM(WM_DESTROY, self.OnDestroy())
#define ON_WM_NCDESTROY() AFX_ON_WM(WM_NCDESTROY, self.OnNcDestroy())
#define ON_WM_CLOSE() AFX_ON_WM(WM_CLOSE, self.OnClose())
#define ON_WM_PAINT() AFX_ON_WM(WM_PAINT, self.OnPaint())
#define ON_WM_ERASEBKGND() AFX_ON_WM(WM_ERASEBKGND, m.result = self.OnEraseBkgnd(AFX_CONTEXT_OF(m.wParam)))
#define ON_WM_MOUSEMOVE() AFX_ON_WM_MOUSE(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_ON_WM_MOUSE(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_ON_WM_MOUSE(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_ON_WM_MOUSE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_CAPTURECHANGED() AFX_ON_WM(WM_CAPTURECHANGED, self.OnCaptureChanged(AFX_WINDOW_OF(m.lParam)))
#define ON_WM_SETCURSOR()                                                                                              \
    AFX_ON_WM(WM_SETCURSOR, m.result = self.OnSetCursor(AFX_WINDOW_OF(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam)))
#define ON_WM_KILLFOCUS() AFX_ON_WM(WM_KILLFOCUS, self.OnKillFocus(AFX_WINDOW_OF(m.wParam)))
#define ON_WM_KEYDOWN() AFX_ON_WM_KEY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_CHAR() AFX_ON_WM_KEY(WM_CHAR, OnChar)
#define ON_WM_TIMER() AFX_ON_WM(WM_TIMER, self.OnTimer(m.wParam))
#define ON_WM_SIZE() AFX_ON_WM(WM_SIZE, self.OnSize(static_cast<UINT>(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam)))
#define ON_WM_ACTIVATE()                                                                                               \
    AFX_ON_WM(WM_ACTIVATE, self.OnActivate(LOWORD(m.wParam), AFX_WINDOW_OF(m.lParam), HIWORD(m.wParam) != 0))
#define ON_WM_PALETTECHANGED() AFX_ON_WM(WM_PALETTECHANGED, self.OnPaletteChanged(AFX_WINDOW_OF(m.wParam)))
#define ON_WM_QUERYNEWPALETTE() AFX_ON_WM(WM_QUERYNEWPALETTE, m.result = self.OnQueryNewPalette())
#define ON_WM_DRAWITEM()                                                                                               \
    AFX_ON_WM(WM_DRAWITEM, self.OnDrawItem(static_cast<int>(m.wParam), reinterpret_cast<LPDRAWITEMSTRUCT>(m.lParam));  \
              m.result = TRUE)
#define ON_WM_MEASUREITEM()                                                                                            \
    AFX_ON_WM(WM_MEASUREITEM,                                                                                          \
              self.OnMeasureItem(static_cast<int>(m.wParam), reinterpret_cast<LPMEASUREITEMSTRUCT>(m.lParam));         \
              m.result = TRUE)
#define ON_WM_CTLCOLOR()                                                                                               \
    AFX_ON_WM(WM_CTLCOLOR, m.result = reinterpret_cast<LRESULT>(self.OnCtlColor(                                       \
                               AFX_CONTEXT_OF(m.wParam), AFX_WINDOW_OF(m.lParam), m.message - WM_CTLCOLORMSGBOX)))
#define ON_WM_CONTEXTMENU() AFX_ON_WM(WM_CONTEXTMENU, self.OnContextMenu(AFX_WINDOW_OF(m.wParam), CPoint(m.lParam)))
#define ON_WM_HELPINFO() AFX_ON_WM(WM_HELP, m.result = self.OnHelpInfo(reinterpret_cast<HELPINFO*>(m.lParam)))

// What a parent hands back to the control that sent it.
#define ON_WM_CTLCOLOR_REFLECT()                                                                                       \
    AFX_ON_WM_KIND(                                                                                                    \
        AfxMsgReflected, WM_CTLCOLOR,                                                                                  \
        m.result = reinterpret_cast<LRESULT>(self.CtlColor(AFX_CONTEXT_OF(m.wParam), m.message - WM_CTLCOLORMSGBOX));  \
        if (!m.result) return false)
#define ON_WM_DRAWITEM_REFLECT()                                                                                       \
    AFX_ON_WM_KIND(AfxMsgReflected, WM_DRAWITEM, self.DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(m.lParam)))
#define ON_WM_MEASUREITEM_REFLECT()                                                                                    \
    AFX_ON_WM_KIND(AfxMsgReflected, WM_MEASUREITEM, self.MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(m.lParam)))

// The old common name of the seven WM_CTLCOLOR… messages; map entries use it for all of them.
#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif
