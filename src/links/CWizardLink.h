// A link within a wizard.
#pragma once

#include "links/CLink.h"

/// A link whose click the parent answers by itself, by turning the page of a wizard for example.
class AFX_EXT_CLASS CWizardLink : public CLink
{
    DECLARE_DYNAMIC(CWizardLink)

public:
    /// The text is underlined.
    CWizardLink();
    ~CWizardLink() override;

    /// Does nothing: where the link leads is the parent's business. It is there so that links of all kinds can be
    /// followed alike.
    void FollowLink(UINT nID);
};
