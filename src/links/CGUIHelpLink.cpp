// A link to a help topic.
#include "links/CGUIHelpLink.h"
#include "links/internal/ContextHelp.h"

IMPLEMENT_DYNAMIC(CGUIHelpLink, CGUILink)

CGUIHelpLink::CGUIHelpLink()
{
    SetTextUnderline();
}

CGUIHelpLink::~CGUIHelpLink() = default;

void CGUIHelpLink::FollowLink(UINT nHelpID)
{
    tvk::ShowContextHelp(nHelpID);
}
