#include "settings/internal/Directories.h"
#include <string>
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

CString NtSubdirectory(const CString& ntPath)
{
    return ntPath + (CRegistry().GetOSVer() == CRegistry::OS_WINNT4 ? "2\\" : "3\\");
}
} // namespace

CString SystemDirectory(DWORD size)
{
    std::string directory(size, '\0');
    const UINT length = GetSystemDirectoryA(directory.data(), size);
    return length < size ? CString(directory.data(), static_cast<int>(length)) : CString();
}

CString BelowSystemDirectory(const CString& rest, DWORD size)
{
    const CString system = SystemDirectory(size);
    return system.IsEmpty() ? system : system + rest;
}

CString PrinterDriverDirectory(const CString& ntPath)
{
    return BelowSystemDirectory(IsWin9x() ? CString("\\") : NtSubdirectory(ntPath), MAX_PATH);
}

CString PrinterDriverDirectory(TvkProduct& product, DWORD size)
{
    if (IsWin9x())
        return BelowSystemDirectory("\\", size);
    CString ntPath;
    return BelowSystemDirectory(NtSubdirectory(product.GetSetting("IDO_WINNTPATH", ntPath)), size);
}

CString LoadedModuleDirectory(const CString& moduleName, int cut, DWORD size)
{
    const HMODULE module = GetModuleHandleA(moduleName);
    if (!module) // a null handle would name the host program's directory
        return CString();
    std::string path(size, '\0');
    const DWORD length = GetModuleFileNameA(module, path.data(), size);
    const int kept = static_cast<int>(length) - cut;
    return length < size && kept >= 0 ? CString(path.data(), kept) : CString();
}

CString LoadedModuleDirectory(const CString& moduleName, DWORD size)
{
    return LoadedModuleDirectory(moduleName, moduleName.GetLength(), size);
}

HMODULE LoadLibraryFrom(const CString& directory, const CString& fileName)
{
    if (!directory.IsEmpty())
        return LoadLibraryA(directory + fileName);
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}
} // namespace tvk
