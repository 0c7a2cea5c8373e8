// TvkMessageBox: a message box in the reading order of the driver's language.
#pragma once

#include <windows.h>

/// Shows a message box like the system's `MessageBoxA`, with the same arguments and result. When the driver's language
/// (string 8003 of the product's resource library) is "hebrew" or "arabic", in exactly this spelling, the text is
/// aligned to the right and read from right to left.
///
/// The resource library is the module named by the setting `IDO_JSW_RESDLL` if the process holds it, else the one named
/// by `IDO_UTIL_RESDLL` in the folder of the module named by `IDO_UTIL_DLL`, loaded for the call. If that cannot be
/// loaded the user is told so in a box of its own, and the box asked for follows in left-to-right order. Call it on the
/// user-interface thread: it switches the framework's resource handle while it looks.
extern "C" int TvkMessageBox(HWND owner, const char* text, const char* caption, unsigned int style);
