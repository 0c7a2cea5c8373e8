// What the framework keeps for each thread that uses windows or drawing.
#pragma once

#include "afx/CDC.h"
#include "afx/CWnd.h"
#include "HandleMap.h"

namespace framework
{
struct ThreadState
{
    HandleMap<HGDIOBJ, CGdiObject, &CGdiObject::m_hObject> gdiObjects;
    HandleMap<HDC, CDC, &CDC::m_hDC> contexts;
    HandleMap<HWND, CWnd, &CWnd::m_hWnd> windows;
};

/// The running thread's state, made at its first use. Kept in a slot of the system's: it must outlive the destructors
/// of every module's static objects.
ThreadState& State();
/// Ends the state of a thread that ends.
void DeleteState();
} // namespace framework
