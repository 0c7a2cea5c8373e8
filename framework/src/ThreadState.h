// What the framework keeps for each thread that uses windows or drawing.
#pragma once

#include "afx/CDC.h"
#include "afx/CWinApp.h"
#include "afx/CWnd.h"
#include "HandleMap.h"

namespace framework
{
struct ThreadState
{
    HandleMap<HGDIOBJ, CGdiObject, &CGdiObject::m_hObject> gdiObjects;
    HandleMap<HDC, CDC, &CDC::m_hDC> contexts;
    HandleMap<HWND, CWnd, &CWnd::m_hWnd> windows;
    // The procedure that a window had before its messages came here; kept until the window is gone or gets it back,
    // also while no object is attached.
    std::map<HWND, WNDPROC> formerProcedures;

    CWnd* beingCreated = nullptr;
    HHOOK creationHook = nullptr;

    MSG handled = {}; // the message that a window procedure is handling
    int depth = 0;    // how many window procedures are running
    MSG pumped = {};  // the message that the message loop is working on
    UINT lastIdleMessage = 0;
    POINT lastIdlePosition = {-1, -1};
};

/// The running thread's state, made at its first use. Kept in a slot of the system's: it must outlive the destructors
/// of every module's static objects.
ThreadState& State();
/// Ends the state of a thread that ends.
void DeleteState();

/// Drops all temporary objects; does nothing while a window procedure runs, which may hold some.
void DeleteTemporaryObjects();
/// The window that owns message boxes and dialogs without a parent: the application's main window or its last pop-up.
HWND DefaultOwner();
/// Waits for one message and works on it; false for WM_QUIT.
bool PumpMessage();
/// Stops an exception that a message's handler has let out, and answers for the message; null for one that is none
/// of the framework's. Deletes the exception.
LRESULT EndedByException(CException* exception, const MSG& message);
/// Whether the loop should idle again after this message.
bool IsIdleMessage(const MSG& message);
/// Offers a message to the application or the windows before it is dispatched.
bool PreTranslate(MSG& message);
} // namespace framework
