// The base of the links for hosts without product settings.
#pragma once

#include "links/CLinkT.h"

/// A link in the manner of COwnButton: it paints itself in its own window, over what the parent erases with, and needs
/// nothing of the parent. See CLinkT for all that a link does, CUrlLink, CHelpLink and CWizardLink for where it leads.
class AFX_EXT_CLASS CLink : public CLinkT<COwnButton>
{
    DECLARE_DYNAMIC(CLink)

public:
    /// A link as CLinkT makes it, not underlined. The first one loads the cursor (SetDefaultCursor).
    CLink();
    ~CLink() override;

protected:
    void ShowAtOnce() override;
    CPoint WindowOrigin() const override;

    DECLARE_MESSAGE_MAP()
};
