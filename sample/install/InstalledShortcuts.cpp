#include "InstalledShortcuts.h"
#include "InstalledFiles.h"
#include "RegistryTree.h"
#include "Step.h"
#include "settings/TvkProduct.h"
#include "system/ShortcutCreation.h"

namespace
{
constexpr int Desktop = 1;
constexpr int ProgramsMenu = 2;

struct Shortcut
{
    int location;
    const char* name;
    const char* program;
    const char* arguments;
};
constexpr Shortcut Shortcuts[] = {
    {Desktop, "Printer Status", "demohost.exe", ""},
    {ProgramsMenu, "Printer Status", "demohost.exe", ""},
    {ProgramsMenu, "Remove the Printer Software", "productinstall.exe", "--remove"},
};

CString Group()
{
    CString maker;
    return TvkProduct().GetSetting("IDO_MFG", maker) + " Printer Suite";
}

/// Where ShortcutCreation puts them, on the NT family: that of all users; below the Windows directory when the shell
/// names none.
CString Folder(int location)
{
    const CString folder = ReadText("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                                    location == Desktop ? "Common Desktop" : "Common Programs");
    const char* const fallback = location == Desktop ? "\\All Users\\Desktop" : "\\All Users\\Start Menu\\Programs";
    return folder.IsEmpty() ? WindowsFolder() + fallback : folder;
}

CString GroupFolder()
{
    return Folder(ProgramsMenu) + "\\" + Group();
}

CString LinkFile(const Shortcut& shortcut)
{
    return (shortcut.location == Desktop ? Folder(Desktop) : GroupFolder()) + "\\" + shortcut.name + ".lnk";
}

long Create(const Shortcut& shortcut, const CString& programFolder)
{
    // An object for each: one remembers the folders that it has found.
    ShortcutCreation creation;
    const CString target = programFolder + shortcut.program;
    return shortcut.location == Desktop
               ? creation.CreateShortcut(target, shortcut.arguments, shortcut.name, "", 0, false, false, Desktop)
               : creation.CreateShortcut(target, shortcut.arguments, shortcut.name, "", 0, false, false,
                                         shortcut.location, Group());
}
} // namespace

void InstallShortcuts(const CString& programFolder)
{
    const bool groupIsThere = GetFileAttributesA(GroupFolder()) != INVALID_FILE_ATTRIBUTES;
    if (!groupIsThere && ShortcutCreation().CreateShortcut("", "", Group(), "", 0, false, true, ProgramsMenu) < 0)
        throw StepFailure("cannot make the program group " + std::string(GroupFolder()));
    for (const Shortcut& shortcut : Shortcuts)
    {
        if (Create(shortcut, programFolder) < 0)
            throw StepFailure("cannot make the shortcut " + std::string(LinkFile(shortcut)));
        Report("shortcut", LinkFile(shortcut));
    }
}

void RemoveShortcuts()
{
    for (const Shortcut& shortcut : Shortcuts)
    {
        const CString file = LinkFile(shortcut);
        if (!DeleteFileA(file) && GetLastError() != ERROR_FILE_NOT_FOUND && GetLastError() != ERROR_PATH_NOT_FOUND)
            throw StepFailure("cannot delete " + std::string(file), GetLastError());
    }
    RemoveDirectoryA(GroupFolder()); // fails on what is not ours
}
