// The base of the links for hosts with product settings.
#pragma once

#include "links/CLinkT.h"

/// A link in the manner of CGUIButton: the parent draws it while it paints,
///
///     void CMyDialog::OnPaint()
///     {
///         CPaintDC context(this);
///         PaintBackground(context);
///         m_suppliesLink.DrawButton(&context);
///     }
///
/// so that the parent's background shows through. The background belongs into OnPaint: when the mouse comes onto a
/// link, the parent is asked to paint without erasing. See CLinkT for all that a link does, CGUIUrlLink, CGUIHelpLink
/// and CGUIWizardLink for where it leads.
class AFX_EXT_CLASS CGUILink : public CLinkT<CGUIButton>
{
    DECLARE_DYNAMIC(CGUILink)

public:
    /// A link as CLinkT makes it, not underlined. The first one loads the cursor (SetDefaultCursor).
    CGUILink();
    ~CGUILink() override;

    void SetDefaultCursor() override;

protected:
    void ShowAtOnce() override;

    DECLARE_MESSAGE_MAP()
};
