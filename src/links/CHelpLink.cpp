// A link to a help topic.
#include "links/CHelpLink.h"
#include "links/internal/ContextHelp.h"

IMPLEMENT_DYNAMIC(CHelpLink, CLink)

CHelpLink::CHelpLink()
{
    SetTextUnderline();
}

CHelpLink::~CHelpLink() = default;

void CHelpLink::FollowLink(UINT nHelpID)
{
    tvk::ShowContextHelp(nHelpID);
}
