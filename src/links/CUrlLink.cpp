// A link to an address, for hosts without product settings.
#include "links/CUrlLink.h"
#include "links/internal/Browser.h"
#include "system/internal/DetachedProcess.h"
#include <shellapi.h>

IMPLEMENT_DYNAMIC(CUrlLink, CLink)

CUrlLink::CUrlLink()
{
    constexpr COLORREF blue = 0xFF0000;
    SetLinkTextColor(blue);
    SetLinkHoverColor(blue);
    SetTextUnderline();
}

CUrlLink::~CUrlLink() = default;

HINSTANCE CUrlLink::FollowLink(CString address)
{
    return GotoURL(address, SW_SHOW);
}

HINSTANCE CUrlLink::GotoURL(const char* address, int show)
{
    const HINSTANCE opened = ::ShellExecuteA(nullptr, "open", address, nullptr, nullptr, show);
    if (reinterpret_cast<INT_PTR>(opened) > tvk::LastShellError)
        return opened;
    const CString commandLine = tvk::BrowserCommandLine(address);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(show);
    if (commandLine.IsEmpty() || !tvk::StartDetached(commandLine, startup))
        return opened;
    return reinterpret_cast<HINSTANCE>(tvk::LastShellError + 1);
}

long CUrlLink::GetRegKey(HKEY root, const char* keyPath, char* output)
{
    return tvk::ReadDefaultText(root, keyPath, output);
}

void CUrlLink::ReportError(int error)
{
    AfxMessageBox(tvk::ShellErrorText(error), MB_ICONEXCLAMATION);
}
