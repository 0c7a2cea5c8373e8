// Starting a program that goes its own way.
#pragma once

#include <windows.h>

namespace tvk
{
/// Starts a command line without a console, at normal priority, and lets go of it: nothing is inherited, nothing is
/// waited for, the process and thread handles are closed. Returns false when the system refuses; the reason is the
/// thread's last error.
bool StartDetached(const char* commandLine);
/// The same with start-up information of the caller's.
bool StartDetached(const char* commandLine, STARTUPINFOA& startup);
} // namespace tvk
