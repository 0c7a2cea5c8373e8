// The journey of one click: from the supplies link of the window to the browser of the user.
#pragma once

#include "diag/StatusStructures.h"

/// Registers a recording program as this user's browser, opens the window, clicks the supplies link with the mouse, and
/// prints what the browser received, what the usage recorder kept, and the trace between, the settings beside the parts
/// of the address that they gave. Meant for a machine of its own: the registration stays. False
/// unless the browser received exactly the link's address, and the visit was recorded.
bool ReportJourney(const INKINFO& report);
