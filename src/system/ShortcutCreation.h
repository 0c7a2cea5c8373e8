// ShortcutCreation: shortcuts and program groups on the desktop and in the menus, for installers.
#pragma once

#include <afx.h>
#include "system/CRegistry.h"

struct IShellLinkA;
struct IPersistFile;

/// Puts a shortcut to a program, or an empty program group, on the desktop, in the Programs menu or in the Start menu.
///
/// The folder is the shell's own: on the NT family the one of all users, on the 9x family the current user's. When the
/// shell's registry names none, the folder below "All Users" in the Windows directory is used.
///
/// Use a new object for every shortcut whose folder matters: an object remembers that a look-up has failed and then
/// asks for both folders, and a folder's path that is longer than the one read before it counts as a failure.
class AFX_EXT_CLASS ShortcutCreation
{
public:
    ShortcutCreation();
    /// A copy takes over every member, the memory of a failed look-up included.
    ShortcutCreation(const ShortcutCreation& other);
    ShortcutCreation& operator=(const ShortcutCreation& other);
    ~ShortcutCreation();

    /// Creates a shortcut or a group; a shortcut of that name is overwritten. COM is initialised for the call.
    /// @param target     the program; the shortcut starts it in the folder before the last backslash
    /// @param arguments  its command line
    /// @param linkName   name of the shortcut's file; ".lnk" is added when the whole path has none in it
    /// @param iconFile   file of the shortcut's icon and the icon's index in it, when `setIcon` is set
    /// @param makeFolder makes a folder called `linkName` in place of a shortcut
    /// @param location   1 the desktop, 2 the Programs menu, 3 the Start menu; with any other number the path begins
    ///                   with a backslash, at the root of the current drive
    /// @return negative when the shortcut or the folder could not be made; 0 also when COM could not be initialised and
    ///         nothing was tried
    long CreateShortcut(CString target, CString arguments, CString linkName, CString iconFile, int iconIndex,
                        bool setIcon, bool makeFolder, int location);
    /// The same in the folder `subFolder` of the chosen one; it must be there.
    long CreateShortcut(CString target, CString arguments, CString linkName, CString iconFile, int iconIndex,
                        bool setIcon, bool makeFolder, int location, CString subFolder);

private:
    long Create(const CString& target, const CString& arguments, const CString& pathInFolder, const CString& iconFile,
                int iconIndex, bool setIcon, bool makeFolder, int location);
    void FindFolder(int location);
    void QueryFolder(HKEY root, const char* valueName);
    void SaveLink(const CString& target, const CString& arguments, const CString& iconFile, int iconIndex,
                  bool setIcon);
    HRESULT SaveFile();

    HRESULT m_hResult; // of the last shell or folder call
    CString m_strWorkingDirectory;
    HKEY m_hKey;               // the shell's folders, while they are read
    unsigned long m_dwSize;    // byte count of the next registry query
    int m_bLookupFailed;       // a look-up of a folder has failed
    CRegistry m_Registry;      // asked for the Windows family only
    CString m_strShortcutPath; // of the shortcut or the folder
    CString m_strShellFolders; // key of the shell's folders
    CString m_strDesktop;      // below the Windows directory, when the shell names no folder
    CString m_strPrograms;
    CString m_strStartMenu;
    CString m_strLowerCase;    // the shortcut's path in lower case
    wchar_t m_szWidePath[260]; // the shortcut's path for saving
    char m_szFolder[260];      // the folder found
    IShellLinkA* m_pShellLink; // while a shortcut is saved
    IPersistFile* m_pPersistFile;
};
