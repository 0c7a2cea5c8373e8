#include "settings/internal/Directories.h"
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"

namespace tvk
{
namespace
{
bool IsWin9x()
{
    return CRegistry().GetOSPlatform() == CRegistry::OS_PLATFORM_WIN9X;
}

/// A directory in the system directory; empty when that is not known: the rest alone would be a path from the root of
/// the current drive.
CString BelowSystemDirectory(const CString& rest)
{
    const CString system = SystemDirectory();
    return system.IsEmpty() ? system : system + rest;
}

CString NtSubdirectory(const CString& ntPath)
{
    return ntPath + (CRegistry().GetOSVer() == CRegistry::OS_WINNT4 ? "2\\" : "3\\");
}
} // namespace

CString SystemDirectory()
{
    char directory[MAX_PATH] = "";
    const UINT length = GetSystemDirectoryA(directory, MAX_PATH);
    return length < MAX_PATH ? CString(directory, static_cast<int>(length)) : CString();
}

CString PrinterDriverDirectory(const CString& ntPath)
{
    return BelowSystemDirectory(IsWin9x() ? CString("\\") : NtSubdirectory(ntPath));
}

CString PrinterDriverDirectory(TvkProduct& product)
{
    if (IsWin9x())
        return BelowSystemDirectory("\\");
    CString ntPath;
    return BelowSystemDirectory(NtSubdirectory(product.GetSetting("IDO_WINNTPATH", ntPath)));
}

CString LoadedModuleDirectory(const CString& moduleName, int cut)
{
    const HMODULE module = GetModuleHandleA(moduleName);
    if (!module) // a null handle would name the host program's directory
        return CString();
    char path[MAX_PATH] = "";
    const int length = static_cast<int>(GetModuleFileNameA(module, path, MAX_PATH));
    return length < MAX_PATH && length >= cut ? CString(path, length - cut) : CString();
}

CString LoadedModuleDirectory(const CString& moduleName)
{
    return LoadedModuleDirectory(moduleName, moduleName.GetLength());
}

HMODULE LoadLibraryFrom(const CString& directory, const CString& fileName)
{
    if (!directory.IsEmpty())
        return LoadLibraryA(directory + fileName);
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}
} // namespace tvk
