// The browser as it is registered, and what the shell says when it cannot open an address.
#pragma once

#include <afx.h>

namespace tvk
{
/// Results of ShellExecute above this one are successes.
constexpr INT_PTR LastShellError = 32;

/// What an error of ShellExecute (0 to 32) means to the user.
CString ShellErrorText(int error);

/// Reads the default value of a key into at least RegistryTextSize bytes: untouched when the key cannot be opened,
/// empty when it has no text that fits. Returns the result of opening the key.
long ReadDefaultText(HKEY root, const char* keyPath, char* output);

/// The command that opens ".htm" files, with the address in place of its placeholder and all that follows it; empty
/// when there is no such command.
CString BrowserCommandLine(const char* address);
} // namespace tvk
