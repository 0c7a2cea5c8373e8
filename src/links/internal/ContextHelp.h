// The application's help for a control.
#pragma once

#include <windows.h>

namespace tvk
{
/// Has the application object show the help topic of a control; nothing without such an object.
void ShowContextHelp(UINT controlTopic);
} // namespace tvk
