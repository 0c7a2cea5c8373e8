// A link within a wizard.
#include "links/CWizardLink.h"

IMPLEMENT_DYNAMIC(CWizardLink, CLink)

CWizardLink::CWizardLink()
{
    SetTextUnderline();
}

CWizardLink::~CWizardLink() = default;

void CWizardLink::FollowLink(UINT)
{
    // The wizard that holds the link turns its page.
}
