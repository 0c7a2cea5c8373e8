// The settings of the sample product, each with the place that its value came from.
#pragma once

class TraceLog;

/// Looks a choice of settings up and prints key, value and source; the source is what the look-up's own trace record
/// says. Returns whether every look-up was found in the trace.
bool ReportSettings(TraceLog& trace);
