// The sample printer in the system's list of printers: driven by the system's PostScript driver, by a description of
// our own. It stands in for a driver package.
#pragma once

#include <afx.h>

/// The description and the driver's name that a printer is installed with.
struct PrinterDriver
{
    CString name;
    CString description; ///< full path of the PPD file
};

/// Installs the driver, then the printer; one of this name that is there already, with whatever driver, stays as it is.
/// Throws StepFailure.
void AddPrinter(const CString& printer, const PrinterDriver& driver);

/// Removes the printer if it has this driver, then the driver and its copies of the description. What is not there is
/// no failure. Throws StepFailure.
void RemovePrinter(const CString& printer, const PrinterDriver& driver);
