// What every header of the framework stands on: the Windows headers in the ANSI build, and the export macros.
#pragma once

#if defined(UNICODE) || defined(_UNICODE)
#error "The framework and everything that uses it is an ANSI build: member names depend on it."
#endif

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h> // GetFileTitle is a macro there: a member name of ours must not depend on who included what
#include <tchar.h>
#include <cstdarg>

// Old macros in the way of members of these names.
#undef GetCurrentTime
#undef GetNextWindow
#undef SubclassWindow

#ifdef FRAMEWORK_BUILD
#define FRAMEWORK_API __declspec(dllexport)
#else
#define FRAMEWORK_API __declspec(dllimport)
#endif

// A module that defines _AFXEXT is an extension module: it exports what others import.
#ifdef _AFXEXT
#define AFX_EXT_CLASS __declspec(dllexport)
#else
#define AFX_EXT_CLASS __declspec(dllimport)
#endif
#define AFX_EXT_API AFX_EXT_CLASS

#define afx_msg // marks a message handler, for the reader

/// Stops at a false condition in debug builds, is nothing otherwise.
#ifdef _DEBUG
#define ASSERT(condition) ((condition) ? void() : AfxAssertFailed(#condition, __FILE__, __LINE__))
#else
#define ASSERT(condition) void(0)
#endif

/// Writes formatted text to the debugger.
FRAMEWORK_API void AfxTrace(LPCSTR format, ...) __attribute__((format(gnu_printf, 1, 2)));
/// Reports a failed ASSERT on the debugger and on standard error, then ends the program.
[[noreturn]] FRAMEWORK_API void AfxAssertFailed(LPCSTR condition, LPCSTR file, int line);
/// Ends the program at once.
[[noreturn]] FRAMEWORK_API void AfxAbort();
