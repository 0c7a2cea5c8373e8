// The HTML Help library, which not every Windows has.
#pragma once

#include <windows.h>

namespace tvk
{
/// Calls `HtmlHelpA`. The library that holds it is loaded by the first call and stays loaded, since its windows live in
/// this process. Without the library nothing happens and the result is null; it is looked for once only.
HWND ShowHtmlHelp(HWND owner, const char* file, UINT command, DWORD_PTR data);
} // namespace tvk
