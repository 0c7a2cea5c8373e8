// The address behind a link, without opening it.
#pragma once

#include "diag/StatusStructures.h"
#include "links/CGUIUrlLink.h"

class LinkAddress : public CGUIUrlLink
{
public:
    /// The address that following the link called `subUrl` would open, for a printer with this ink report.
    CString Of(const CString& subUrl, INKINFO& report);
};
