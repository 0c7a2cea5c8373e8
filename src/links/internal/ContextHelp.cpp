// The application's help for a control.
#include "links/internal/ContextHelp.h"
#include <afxwin.h>

namespace tvk
{
void ShowContextHelp(UINT controlTopic)
{
    /// Topics of commands and controls lie above those of other things.
    constexpr DWORD_PTR commandTopics = 0x10000;
    if (CWinApp* const application = AfxGetApp())
        application->WinHelp(commandTopics + controlTopic, HELP_CONTEXT);
}
} // namespace tvk
