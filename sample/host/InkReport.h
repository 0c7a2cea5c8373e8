// Ink reports: the printer's own, or what one would send, for hosts without a printer.
#pragma once

#include "diag/StatusStructures.h"
#include <string>

/// The report of a printer with a colour cartridge that is half empty and a black one that runs low.
INKINFO SampleInkReport();

/// The number of pages that the ink will last for, in a report that does not tell it.
inline constexpr int PagesUnknown = -1;

/// What the printer last reported to the printer communication library: style, levels and identities of the cartridges.
/// Of the pages that are left the library knows nothing (PagesUnknown), and the remaining fields are 0. The sample
/// report when it knows nothing at all.
INKINFO LastInkReport(const char* printer);

/// Sets a field of the report from "field=number", with the field's name in INKINFO; false for an unknown field or a
/// number that is none.
bool SetInkField(INKINFO& report, const std::string& assignment);
