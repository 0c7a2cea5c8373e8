// Ink reports: the printer's own, or what one would send, for hosts without a printer.
#pragma once

#include "diag/StatusStructures.h"
#include <string>

/// The report of a printer with a colour cartridge that is half empty and a black one that runs low.
INKINFO SampleInkReport();

/// What the printer last reported to the printer communication library; the sample report when it knows nothing.
INKINFO LastInkReport(const char* printer);

/// Sets a field of the report from "field=number", with the field's name in INKINFO; false for an unknown field or a
/// number that is none.
bool SetInkField(INKINFO& report, const std::string& assignment);
