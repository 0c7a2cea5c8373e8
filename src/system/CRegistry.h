// One open key of the Windows registry, and the place of each installed printer's settings in it.
#pragma once

#include <afx.h>
#include <aclapi.h>
#include "system/CRegistryException.h"

/// Wraps one registry key. Given no root key, Open and Create turn a short sub-key name into the full path of the
/// settings of one installed printer (named by SetFriendlyName), by the Windows family and by what the printer's own
/// registry entry says. Keys made by Create can be written by every user group.
///
/// Every operation stores the result of its registry call: see GetLastError(). Failures are thrown as
/// CRegistryException*, to be freed by the catcher with Delete(), except where the operation says otherwise.
class AFX_EXT_CLASS CRegistry
{
public:
    /// What GetOSVer() and GetOSPlatform() answer.
    enum OSVersion
    {
        OS_UNKNOWN = 0,        ///< the version query failed
        OS_PLATFORM_WIN9X = 1, ///< Win32s or the Windows 95/98/Me family (GetOSPlatform only)
        OS_PLATFORM_NT = 2,    ///< the NT family, or the query failed (GetOSPlatform only)
        OS_WIN32S = 3,         ///< Win32s
        OS_WIN95 = 4,          ///< Windows family, minor version 0
        OS_WIN98 = 5,          ///< Windows family, minor version 10
        OS_WINME = 6,          ///< Windows family, any other minor version
        OS_WINNT4 = 7,         ///< NT family, major version 4 or lower
        OS_WIN2000 = 8,        ///< NT 5.0
        OS_WINXP = 9,          ///< NT 5.1 and later, NT 6 and later, and any unknown platform
    };

    /// Holds no key; printer mapping (mode 1).
    CRegistry();

    /// Maps `root` and `subKey` as Open would in mode 1 and marks the object as holding an open key, although none is
    /// opened: follow it by Open or Create. The last two arguments are not used.
    CRegistry(HKEY root, const char* subKey, unsigned long options, unsigned long access);

    /// A copy takes over every member as it stands. Copy and source then share one key handle, which each of them
    /// closes: whoever closes second stores ERROR_INVALID_HANDLE.
    CRegistry(const CRegistry& other);
    CRegistry& operator=(const CRegistry& other);

    // CSafeRegistry hides the operations below by its own with return codes, on purpose. GCC reports hiding at the
    // hidden function, so this is where the warning has to be switched off.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

    /// Creates the key, or opens it when it exists, and holds it; a key held before is closed first.
    /// @param disposition  receives REG_CREATED_NEW_KEY or REG_OPENED_EXISTING_KEY
    /// @param root         predefined or open key; null: the key is mapped by the mode
    /// @param options      REG_OPTION_ flags
    /// @param access       rights asked for, such as KEY_ALL_ACCESS
    /// @param ignored      not used: a new key gets CreateSecurityDescriptor()'s descriptor whenever one can be built
    /// Throws when closing the key held before or creating the new one failed.
    virtual void Create(unsigned long& disposition, HKEY root, const char* subKey, unsigned long options,
                        unsigned long access, SECURITY_ATTRIBUTES* ignored);

    /// Opens an existing key and holds it; a key held before is closed first. Arguments as in Create.
    /// Returns 1, or 0 when the key cannot be opened (the reason is in GetLastError()); throws only when closing the
    /// key held before failed. Personal settings play no part here.
    virtual int Open(HKEY root, const char* subKey, unsigned long options, unsigned long access);

    /// Closes the key held; without one it stores success. Never throws.
    virtual void Close();

    /// Deletes the sub-key `subKey` of the key held. It must have no sub-keys of its own.
    virtual void Remove(const char* subKey);

    /// Deletes a value of the key held; null or "" names the default value, here and in Write and Read.
    virtual void DeleteValue(const char* name);

    /// Writes a value: `size` bytes of `data`, for a text type with its NUL, declared as `type` (REG_SZ, REG_DWORD,
    /// ...).
    virtual void Write(const char* name, const unsigned char* data, unsigned long size, unsigned long type);

    /// Reads a value. `size` is the size of `data` in bytes and receives the value's size, also when `data` is too
    /// small (ERROR_MORE_DATA is thrown). `data` and `type` may be null. A text may come without its NUL.
    virtual void Read(unsigned char* data, unsigned long* size, unsigned long* type, const char* name);

    /// The result of the last registry call of this object (0: success), not the thread's last error.
    virtual long GetLastError();

    /// Reads the value number `index`. Lengths are of the buffers before and of what they received after the call: the
    /// name's in characters (without the NUL after the call), the data's in bytes; `type`, `data` and `dataLength` may
    /// be null. Returns 1, or 0 when there are no more values.
    virtual int EnumValue(unsigned long index, char* name, unsigned long* nameLength, unsigned long* type,
                          unsigned char* data, unsigned long* dataLength);

    /// Reads the name of the sub-key number `index`, and on request the time of its last change and its class (null
    /// when not wanted); lengths as in EnumValue. Returns 1, or 0 when there are no more sub-keys.
    virtual int EnumKey(unsigned long index, char* name, unsigned long* nameLength, FILETIME* lastWrite,
                        char* className, unsigned long* classLength);

    /// Saves the key held and everything below it to a file that does not exist yet. The process needs the backup
    /// privilege, switched on; `sa` (may be null) is for the new file.
    virtual void SaveKey(const char* file, SECURITY_ATTRIBUTES* sa);

    /// Replaces the contents of the key held by those of a saved file; needs the restore privilege.
    virtual void RestoreKey(const char* file, unsigned long flags);

    /// Mounts a saved file as the sub-key `subKey` of the key held (HKEY_LOCAL_MACHINE or HKEY_USERS); needs the
    /// restore privilege.
    virtual void LoadKey(const char* subKey, const char* file);

    /// Takes a file mounted by LoadKey away again.
    virtual void UnloadKey(const char* subKey);

#pragma GCC diagnostic pop

    /// Closes the key held.
    virtual ~CRegistry();

    /// Chooses how a null root is mapped: 1 to the printer's settings (the default), 2 to the product's settings. With
    /// any other mode Open and Create ignore the root and sub-key given and use again what the previous call was mapped
    /// to.
    void InitMode(unsigned long mode);

    /// Non-zero: on NT-family systems the settings path starts with the product's 32-bit identification.
    void Use32BitRegPath(int use);

    /// Non-zero: Create makes its keys below HKEY_CURRENT_USER, whatever their root. Open stays as it is.
    void SetPersonalSettings(int personal);

    /// Names the installed printer whose settings a null root stands for.
    void SetFriendlyName(CString name);

    /// The path below the root that the last Open or Create used, after mapping.
    CString GetSubKey();

    /// The Windows version; OS_UNKNOWN when it cannot be found out.
    OSVersion GetOSVer();

    /// The Windows family: OS_PLATFORM_WIN9X or OS_PLATFORM_NT.
    OSVersion GetOSPlatform();

    /// Builds the descriptor (a SECURITY_DESCRIPTOR) that gives Everyone, Administrators, Power Users, Users, Local
    /// System and Guests full access. Returns null when it cannot be built, after a line on standard output that says
    /// why. The caller frees the descriptor and the access list that it points to (GetSecurityDescriptorDacl), both
    /// with LocalFree.
    void* CreateSecurityDescriptor();

private:
    using SetEntriesInAclFunction = DWORD(WINAPI*)(ULONG, EXPLICIT_ACCESSA*, ACL*, ACL**);

    void GetOSKey(HKEY root, CString subKey);
    void GetAIOKey(HKEY root, CString subKey);
    void SetWin9xKey();
    void SetWinNTKey();
    void MapKey(HKEY root, const char* subKey); // by the mode
    void CloseHeldKey();                        // throws when that fails
    void Check() const;                         // throws the last error unless it is success
    int CheckEntry() const;                     // of an enumeration: 1 for an entry, 0 at the end
    void UnloadSecurityLibrary();

    BOOL m_bOpen;                                 // a key is held
    HKEY m_hKey;                                  // the open key
    LONG m_lLastError;                            // result of the last registry call
    CString m_strSettingsBase;                    // on NT-family systems: product identification + "\IJPrtSettings\"
    CString m_strFriendlyName;                    // the printer
    CString m_strSubKey;                          // the sub-key used, after mapping
    HKEY m_hRoot;                                 // the root used, after mapping
    int m_nMode;                                  // 1 printer mapping, 2 product mapping, other: none
    BOOL m_b32BitPath;                            // use the 32-bit product identification
    BOOL m_bPersonalSettings;                     // Create uses HKEY_CURRENT_USER
    HMODULE m_hSecurityDLL;                       // loaded while a security descriptor is built
    SetEntriesInAclFunction m_pfnSetEntriesInAcl; // of that library
    ACL* m_pACL;                                  // access list of the last security descriptor; LocalFree
};
