// A round trip through the per-printer keys of the registry.
#pragma once

/// Creates a key of the printer's settings, writes, reads back, lists and removes it; prints every step with the path
/// that the library mapped. Returns whether all that was written was read back.
bool ReportRegistry(const char* printer);
