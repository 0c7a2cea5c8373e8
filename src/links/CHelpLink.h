// A link to a help topic.
#pragma once

#include "links/CLink.h"

/// A link to a topic of the application's help.
class AFX_EXT_CLASS CHelpLink : public CLink
{
    DECLARE_DYNAMIC(CHelpLink)

public:
    /// The text is underlined.
    CHelpLink();
    ~CHelpLink() override;

    /// Has the application show its help for a topic (CWinApp::WinHelp, as context help). Nothing happens in a program
    /// without an application object.
    /// @param nHelpID  the topic's number among the controls; the help file's is that plus 0x10000
    void FollowLink(UINT nHelpID);
};
