#include "InstalledFiles.h"
#include "Step.h"
#include "settings/TvkIniFile.h"
#include "settings/TvkProduct.h"

namespace
{
CString SystemFolder()
{
    char path[MAX_PATH] = "";
    const UINT length = GetSystemDirectoryA(path, sizeof path);
    if (length == 0 || length >= sizeof path)
        throw StepFailure("the system directory cannot be read", GetLastError());
    return CString(path) + "\\";
}

/// Where the spooler keeps print processors.
CString PrintProcessorFolder()
{
    CString path;
    const CString folder = SystemFolder();
    return CRegistry().GetOSPlatform() == CRegistry::OS_PLATFORM_WIN9X
               ? folder
               : folder.Left(folder.GetLength() - 1) + TvkProduct().GetSetting("IDO_PRTPROCSPATH", path);
}

/// Where the options dialog looks for skins that are not the product's own.
CString AddedSkinFolder()
{
    CString folder;
    return WindowsFolder() + TvkProduct().GetSetting("IDO_JSWALTSKINDIRECTORY", folder);
}

/// Where help viewers look for a file that is named without its folder.
CString HelpFolder()
{
    return WindowsFolder() + "\\Help\\";
}

void AddFolder(std::vector<InstalledFile>& files, const CString& from, const CString& to)
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(from + "*", &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do
    {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            files.push_back({from + found.cFileName, to + found.cFileName});
    } while (FindNextFileA(search, &found));
    FindClose(search);
}

bool IsIniFile(const CString& file)
{
    return file.Right(4).CompareNoCase(".ini") == 0;
}

/// A list of texts, each ended by a zero, as the profile functions return it.
std::vector<CString> Texts(const std::vector<char>& list)
{
    std::vector<CString> texts;
    for (const char* text = list.data(); *text; text += texts.back().GetLength() + 1)
        texts.push_back(text);
    return texts;
}

void WriteIniFile(const InstalledFile& file)
{
    constexpr DWORD ListSize = 32 * 1024;
    std::vector<char> list(ListSize);
    TvkIniFile ini;
    GetPrivateProfileSectionNamesA(list.data(), ListSize, file.source);
    for (const CString& section : Texts(list))
    {
        GetPrivateProfileSectionA(section, list.data(), ListSize, file.source);
        for (const CString& line : Texts(list))
        {
            const int equals = line.Find('=');
            if (equals > 0 && !ini.WriteINI(file.target, section, line.Left(equals), line.Mid(equals + 1)))
                throw StepFailure("cannot write " + std::string(line) + " to " + std::string(file.target));
        }
    }
}

/// The folders above the file, outermost first, without the drive.
std::vector<CString> FoldersAbove(const CString& file)
{
    std::vector<CString> folders;
    for (int cut = file.Find('\\', 3); cut >= 0; cut = file.Find('\\', cut + 1))
        folders.push_back(file.Left(cut));
    return folders;
}
} // namespace

CString ProgramFolder()
{
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    if (length == 0 || length >= sizeof path)
        throw StepFailure("the program's own path is too long");
    const CString file(path);
    return file.Left(file.ReverseFind('\\') + 1);
}

CString WindowsFolder()
{
    char path[MAX_PATH] = "";
    const UINT length = GetWindowsDirectoryA(path, sizeof path);
    if (length == 0 || length >= sizeof path)
        throw StepFailure("the Windows directory cannot be read", GetLastError());
    return path[length - 1] == '\\' ? CString(path, static_cast<int>(length) - 1) : CString(path);
}

CString DriverFolder()
{
    CRegistry system;
    if (system.GetOSPlatform() == CRegistry::OS_PLATFORM_WIN9X)
        return SystemFolder();
    CString driverPath;
    TvkProduct().GetSetting("IDO_WINNTPATH", driverPath);
    const CString folder = SystemFolder();
    return folder.Left(folder.GetLength() - 1) + driverPath +
           (system.GetOSVer() == CRegistry::OS_WINNT4 ? "2\\" : "3\\");
}

std::vector<InstalledFile> ProductFiles()
{
    std::vector<InstalledFile> files;
    const CString source = ProgramFolder() + "product\\";
    AddFolder(files, source + "driver\\", DriverFolder());
    AddFolder(files, source + "system\\", SystemFolder());
    AddFolder(files, source + "prtprocs\\", PrintProcessorFolder());
    AddFolder(files, source + "skins\\", AddedSkinFolder());
    AddFolder(files, source + "help\\", HelpFolder());
    if (files.empty())
        throw StepFailure("the product's files are not in " + std::string(source));
    // The suite's programs take the library from the driver's folder; its version is the product's.
    CString utilities;
    TvkProduct().GetSetting("IDO_UTILITIES_DLL", utilities);
    files.push_back({ProgramFolder() + utilities, DriverFolder() + utilities});
    return files;
}

std::vector<InstalledFile> WrittenFiles()
{
    CString participation;
    TvkProduct().GetSetting("IDO_DATARETRIEVER_FILENAME", participation);
    return {{"", SystemFolder() + participation.Left(participation.ReverseFind('.')) + ".ini"},
            {"", DriverFolder() + "usage.txt"}};
}

void InstallFile(const InstalledFile& file)
{
    for (const CString& folder : FoldersAbove(file.target))
        CreateDirectoryA(folder, nullptr); // one that cannot be made fails the copy
    if (IsIniFile(file.source))
        WriteIniFile(file);
    else if (!CopyFileA(file.source, file.target, FALSE))
        throw StepFailure("cannot copy to " + std::string(file.target), GetLastError());
}

void RemoveFile(const InstalledFile& file)
{
    if (!DeleteFileA(file.target) && GetLastError() != ERROR_FILE_NOT_FOUND && GetLastError() != ERROR_PATH_NOT_FOUND)
        throw StepFailure("cannot delete " + std::string(file.target), GetLastError());
}

void RemoveAddedSkinFolder()
{
    RemoveDirectoryA(AddedSkinFolder()); // a user's own skins keep it
}
