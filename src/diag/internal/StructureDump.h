// Dumps of the suite's status structures, driven by tables of their fields.
#pragma once

#include "diag/StatusStructures.h"
#include <string>

namespace tvk
{
/// Each appends the structure's header line and one line a field.
void AppendDump(std::string& record, const INKINFO* info);
void AppendDump(std::string& record, const ALIGNINFO* info);
void AppendDump(std::string& record, const STATUSINFO* info);
void AppendDump(std::string& record, const PORTINFO* info);
void AppendDump(std::string& record, const LCDEVMODE* mode);
void AppendDump(std::string& record, const UPDPROXYINFO* info);
void AppendDump(std::string& record, const SUBNETINFO* info);
void AppendDump(std::string& record, const PRINTERPORTINFO* info);
} // namespace tvk
