// The suite's entry in the system's list of programs; it remembers for which printer the product was installed.
#pragma once

#include <afx.h>

/// The list of programs and the suite's entry in it: keys below HKEY_LOCAL_MACHINE.
inline constexpr char Programs[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
CString ProgramEntry();

/// Maker and model; the exact model once the product's files are installed, the series before.
CString ProductName();

/// The printer that the product was installed for; empty when it was not, or not wholly, installed.
CString InstalledPrinter();

/// The printer that the suite's programs are about: the installed one, else one of the product's own name.
CString PrinterName();
