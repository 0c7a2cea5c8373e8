// The product's files outside the program folder. They wait beside the program: in product\system for the system
// directory, in product\driver for the printer driver's directory, in product\prtprocs for the print processors', in
// product\skins for that of added skins, in product\help for the Windows help folder. The utilities library itself also
// belongs to the driver's.
#pragma once

#include <afx.h>
#include <vector>

struct InstalledFile
{
    CString source;
    CString target;
};

/// The folder of this program and of the suite's, with the backslash.
CString ProgramFolder();

/// The Windows directory, without a backslash at its end. Throws StepFailure.
CString WindowsFolder();

/// Where the spooler keeps a driver's files, with the backslash: the library looks for them there.
CString DriverFolder();

/// Every file that waits, with the place it belongs to. Throws StepFailure when there is none.
std::vector<InstalledFile> ProductFiles();

/// Copies the file. Of an INI file every value is written into the target one, so that what is already there is kept.
/// Throws StepFailure.
void InstallFile(const InstalledFile& file);

/// Files that the product's libraries write once they are used.
std::vector<InstalledFile> WrittenFiles();

/// Deletes the installed file; its folder stays, as the spooler's. A file that is not there is no failure. Throws
/// StepFailure.
void RemoveFile(const InstalledFile& file);

/// Deletes the folder of added skins if nothing is left in it.
void RemoveAddedSkinFolder();
