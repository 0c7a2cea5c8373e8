// The directories in which the parts of the suite lie. Every answer ends as it is to be continued: with the backslash
// where one is named, else without.
//
// `size` is the room that the system's path is read into, in bytes, its NUL included: the suite's parts do not agree on
// one, so each says its own. A path that does not fit counts as not known.
#pragma once

#include <afx.h>

class TvkProduct;

namespace tvk
{
/// The Windows system directory, without a backslash at its end; empty when the system does not tell.
CString SystemDirectory(DWORD size = MAX_PATH);

/// The system directory and `rest`, which begins with a backslash. Empty when the system directory is not known: the
/// rest alone would be a path from the root of the current drive.
CString BelowSystemDirectory(const CString& rest, DWORD size = MAX_PATH);

/// The printer driver's directory, with the backslash at its end. On the NT family: the system directory, `ntPath` (the
/// setting `IDO_WINNTPATH`), then "2\" before Windows 2000 and "3\" since; on the 9x family the system directory alone.
/// Empty when the system directory is not known.
CString PrinterDriverDirectory(const CString& ntPath);
/// The same; asks `product` for `IDO_WINNTPATH`, on the NT family only.
CString PrinterDriverDirectory(TvkProduct& product, DWORD size = MAX_PATH);

/// The full path of the loaded module called `moduleName`, less its last `cut` characters: with the length of a file
/// name, the module's directory with the backslash at its end. Empty when no such module is loaded, when its path is
/// not known, or when it is shorter than the cut.
CString LoadedModuleDirectory(const CString& moduleName, int cut, DWORD size);
/// The same, less the length of `moduleName`.
CString LoadedModuleDirectory(const CString& moduleName, DWORD size = MAX_PATH);

/// Loads a library of the suite from `directory`, as the functions above answer it. Null on failure, with the system's
/// error; an empty directory is one: the bare name would be searched for in places that are not the suite's.
HMODULE LoadLibraryFrom(const CString& directory, const CString& fileName);
} // namespace tvk
