// A link within a wizard.
#include "links/CGUIWizardLink.h"

IMPLEMENT_DYNAMIC(CGUIWizardLink, CGUILink)

CGUIWizardLink::CGUIWizardLink()
{
    SetTextUnderline();
}

CGUIWizardLink::~CGUIWizardLink() = default;

void CGUIWizardLink::FollowLink(UINT)
{
    // The wizard that holds the link turns its page.
}
