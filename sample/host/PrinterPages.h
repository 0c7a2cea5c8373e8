// What a support page and a paper page show of an installed printer, in text.
#pragma once

/// Prints the support number of the user's country and the list of all countries with one. False when there is none.
bool ReportSupport();

/// Prints every paper of the printer with its printable area, and its borderless twin. False when the papers cannot be
/// read.
bool ReportPapers(const char* printer);

/// Prints what the printer last reported to the printer communication library: its serial number, its cartridges, and
/// the levels of the inks that are not empty. False when nothing is known of it.
bool ReportInk(const char* printer);
