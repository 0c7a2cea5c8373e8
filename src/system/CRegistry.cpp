// One open key of the Windows registry, and the place of each installed printer's settings in it.
#include "system/CRegistry.h"
#include <array>
#include <cstdio>
#include "settings/TvkProduct.h"
#include "system/internal/Handle.h"
#include "system/internal/RegistryValue.h"

namespace
{
constexpr char SystemPrinters[] = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\";
constexpr char SystemPrinters9x[] = "System\\CurrentControlSet\\control\\Print\\Printers\\"; // as stored there
constexpr char PrinterDriverData[] = "\\PrinterDriverData";
constexpr char UserPrinters[] = "Printers\\";
constexpr char GuiSubkey[] = "\\GUI\\";
constexpr char SettingsFolder[] = "\\IJPrtSettings\\";
constexpr char OriginalNameValue[] = "OriginalFriendlyName";
constexpr DWORD OriginalNameSize = 256;

constexpr int PrinterMode = 1;
constexpr int ProductMode = 2;

/// One group of the access list.
struct Group
{
    const char* name; // in the failure text
    SID_IDENTIFIER_AUTHORITY authority;
    BYTE subAuthorities;
    DWORD subAuthority[2];
    TRUSTEE_TYPE trustee;
};

// Guests and Everyone get full access like the rest: whoever runs the suite, under whatever account, saves settings.
constexpr std::array<Group, 6> Groups = {{
    {"Everyone", {SECURITY_WORLD_SID_AUTHORITY}, 1, {SECURITY_WORLD_RID, 0}, TRUSTEE_IS_WELL_KNOWN_GROUP},
    {"Admin", {SECURITY_NT_AUTHORITY}, 2, {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS}, TRUSTEE_IS_GROUP},
    {"Power Users",
     {SECURITY_NT_AUTHORITY},
     2,
     {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_POWER_USERS},
     TRUSTEE_IS_GROUP},
    {"Users", {SECURITY_NT_AUTHORITY}, 2, {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_USERS}, TRUSTEE_IS_GROUP},
    {"System", {SECURITY_NT_AUTHORITY}, 1, {SECURITY_LOCAL_SYSTEM_RID, 0}, TRUSTEE_IS_GROUP},
    {"Guest", {SECURITY_NT_AUTHORITY}, 2, {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_GUESTS}, TRUSTEE_IS_GROUP},
}};
static_assert(KEY_ALL_ACCESS == 0xF003F && SECURITY_DESCRIPTOR_MIN_LENGTH == 40);

/// What stands between a printer's name and a sub-key: the driver's own data lies beside the user interface's settings.
const char* SubKeySeparator(const CString& subKey)
{
    return subKey == "PrinterDriverData" ? "\\" : GuiSubkey;
}

bool QueryVersion(OSVERSIONINFOA& version)
{
    version = {};
    version.dwOSVersionInfoSize = sizeof version;
    return ::GetVersionExA(&version) != FALSE;
}

CRegistry::OSVersion NtVersion(const OSVERSIONINFOA& version)
{
    if (version.dwMajorVersion <= 4)
        return CRegistry::OS_WINNT4;
    return version.dwMajorVersion == 5 && version.dwMinorVersion == 0 ? CRegistry::OS_WIN2000 : CRegistry::OS_WINXP;
}

CRegistry::OSVersion Win9xVersion(const OSVERSIONINFOA& version)
{
    switch (version.dwMinorVersion)
    {
    case 0:
        return CRegistry::OS_WIN95;
    case 10:
        return CRegistry::OS_WIN98;
    default:
        return CRegistry::OS_WINME;
    }
}
} // namespace

CRegistry::CRegistry()
    : m_bOpen(FALSE), m_hKey(nullptr), m_lLastError(ERROR_SUCCESS), m_hRoot(nullptr), m_nMode(PrinterMode),
      m_b32BitPath(FALSE), m_bPersonalSettings(FALSE), m_hSecurityDLL(nullptr), m_pfnSetEntriesInAcl(nullptr),
      m_pACL(nullptr)
{
}

CRegistry::CRegistry(HKEY root, const char* subKey, unsigned long, unsigned long) : CRegistry()
{
    GetOSKey(root, subKey);
    m_bOpen = TRUE; // with a null key: closing that counts as success
}

CRegistry::CRegistry(const CRegistry& other) = default;
CRegistry& CRegistry::operator=(const CRegistry& other) = default;

CRegistry::~CRegistry()
{
    if (m_hSecurityDLL)
        ::FreeLibrary(m_hSecurityDLL);
    try
    {
        CloseHeldKey();
    }
    catch (CRegistryException* exception)
    {
        exception->ReportError();
        exception->Delete();
    }
}

void CRegistry::Create(unsigned long& disposition, HKEY root, const char* subKey, unsigned long options,
                       unsigned long access, SECURITY_ATTRIBUTES*)
{
    CloseHeldKey();
    MapKey(root, subKey);
    // The stored root stays as it was mapped: a mode without mapping uses it again.
    const HKEY usedRoot = m_bPersonalSettings ? HKEY_CURRENT_USER : m_hRoot;

    SECURITY_ATTRIBUTES attributes = {sizeof attributes, CreateSecurityDescriptor(), FALSE};
    HKEY key = nullptr;
    m_lLastError = ::RegCreateKeyExA(usedRoot, m_strSubKey, 0, nullptr, options, access,
                                     attributes.lpSecurityDescriptor ? &attributes : nullptr, &key, &disposition);
    // By design the descriptor, its access list and the security library are left alone when the key could not be
    // created: the library goes with this object, the other two stay.
    Check();

    m_hKey = key;
    m_bOpen = TRUE;
    ::LocalFree(attributes.lpSecurityDescriptor);
    ::LocalFree(m_pACL);
    m_pACL = nullptr;
    UnloadSecurityLibrary();
}

int CRegistry::Open(HKEY root, const char* subKey, unsigned long options, unsigned long access)
{
    CloseHeldKey();
    MapKey(root, subKey);
    HKEY key = nullptr;
    m_lLastError = ::RegOpenKeyExA(m_hRoot, m_strSubKey, options, access, &key);
    if (m_lLastError != ERROR_SUCCESS)
        return 0;
    m_hKey = key;
    m_bOpen = TRUE;
    return 1;
}

void CRegistry::Close()
{
    m_lLastError = m_bOpen && m_hKey ? ::RegCloseKey(m_hKey) : ERROR_SUCCESS;
    m_bOpen = FALSE;
    m_hKey = nullptr;
}

void CRegistry::Remove(const char* subKey)
{
    m_lLastError = ::RegDeleteKeyA(m_hKey, subKey);
    Check();
}

void CRegistry::DeleteValue(const char* name)
{
    m_lLastError = ::RegDeleteValueA(m_hKey, name);
    Check();
}

void CRegistry::Write(const char* name, const unsigned char* data, unsigned long size, unsigned long type)
{
    m_lLastError = ::RegSetValueExA(m_hKey, name, 0, type, data, size);
    Check();
}

void CRegistry::Read(unsigned char* data, unsigned long* size, unsigned long* type, const char* name)
{
    m_lLastError = ::RegQueryValueExA(m_hKey, name, nullptr, type, data, size);
    Check();
}

long CRegistry::GetLastError()
{
    return m_lLastError;
}

int CRegistry::EnumValue(unsigned long index, char* name, unsigned long* nameLength, unsigned long* type,
                         unsigned char* data, unsigned long* dataLength)
{
    m_lLastError = ::RegEnumValueA(m_hKey, index, name, nameLength, nullptr, type, data, dataLength);
    return CheckEntry();
}

int CRegistry::EnumKey(unsigned long index, char* name, unsigned long* nameLength, FILETIME* lastWrite, char* className,
                       unsigned long* classLength)
{
    m_lLastError = ::RegEnumKeyExA(m_hKey, index, name, nameLength, nullptr, className, classLength, lastWrite);
    return CheckEntry();
}

void CRegistry::SaveKey(const char* file, SECURITY_ATTRIBUTES* sa)
{
    m_lLastError = ::RegSaveKeyA(m_hKey, file, sa);
    Check();
}

void CRegistry::RestoreKey(const char* file, unsigned long flags)
{
    m_lLastError = ::RegRestoreKeyA(m_hKey, file, flags);
    Check();
}

void CRegistry::LoadKey(const char* subKey, const char* file)
{
    m_lLastError = ::RegLoadKeyA(m_hKey, subKey, file);
    Check();
}

void CRegistry::UnloadKey(const char* subKey)
{
    m_lLastError = ::RegUnLoadKeyA(m_hKey, subKey);
    Check();
}

void CRegistry::InitMode(unsigned long mode)
{
    m_nMode = static_cast<int>(mode);
}

void CRegistry::Use32BitRegPath(int use)
{
    m_b32BitPath = use;
}

void CRegistry::SetPersonalSettings(int personal)
{
    m_bPersonalSettings = personal;
}

void CRegistry::SetFriendlyName(CString name)
{
    m_strFriendlyName = name;
}

CString CRegistry::GetSubKey()
{
    return m_strSubKey;
}

CRegistry::OSVersion CRegistry::GetOSVer()
{
    OSVERSIONINFOA version;
    if (!QueryVersion(version))
        return OS_UNKNOWN;
    switch (version.dwPlatformId)
    {
    case VER_PLATFORM_WIN32s:
        return OS_WIN32S;
    case VER_PLATFORM_WIN32_WINDOWS:
        return Win9xVersion(version);
    case VER_PLATFORM_WIN32_NT:
        return NtVersion(version);
    default:
        return OS_WINXP;
    }
}

CRegistry::OSVersion CRegistry::GetOSPlatform()
{
    OSVERSIONINFOA version;
    if (QueryVersion(version) && version.dwPlatformId <= VER_PLATFORM_WIN32_WINDOWS)
        return OS_PLATFORM_WIN9X;
    return OS_PLATFORM_NT;
}

void* CRegistry::CreateSecurityDescriptor()
{
    // An access list of before belongs to a descriptor that was handed out: from here on it is not ours to free.
    m_pACL = nullptr;
    if (!m_hSecurityDLL)
        m_hSecurityDLL = ::LoadLibraryA("advapi32.dll");
    // Looked up at run time: the 9x family's library goes without it.
    m_pfnSetEntriesInAcl = tvk::FindEntry<SetEntriesInAclFunction>(m_hSecurityDLL, "SetEntriesInAclA");
    if (!m_pfnSetEntriesInAcl)
    {
        UnloadSecurityLibrary();
        return nullptr;
    }

    // The number in the failure lines is that of the last registry call, not the failed call's own.
    const auto registryError = static_cast<unsigned>(m_lLastError);
    std::array<tvk::Sid, Groups.size()> sids;
    std::array<EXPLICIT_ACCESSA, Groups.size()> entries = {};
    for (std::size_t i = 0; i < Groups.size(); ++i)
    {
        const Group& group = Groups[i];
        SID_IDENTIFIER_AUTHORITY authority = group.authority;
        if (!::AllocateAndInitializeSid(&authority, group.subAuthorities, group.subAuthority[0], group.subAuthority[1],
                                        0, 0, 0, 0, 0, 0, sids[i].Receive()))
        {
            std::printf("AllocateAndInitializeSid for %s Group, Error = %u\n", group.name, registryError);
            return nullptr;
        }
        entries[i].grfAccessPermissions = KEY_ALL_ACCESS;
        entries[i].grfAccessMode = SET_ACCESS;
        entries[i].grfInheritance = NO_INHERITANCE;
        entries[i].Trustee.TrusteeForm = TRUSTEE_IS_SID;
        entries[i].Trustee.TrusteeType = group.trustee;
        entries[i].Trustee.ptstrName = static_cast<char*>(sids[i].Get());
    }

    ACL* list = nullptr;
    if (m_pfnSetEntriesInAcl(static_cast<ULONG>(entries.size()), entries.data(), nullptr, &list) != ERROR_SUCCESS)
    {
        std::printf("SetEntriesInAcl Error %u\n", registryError);
        return nullptr;
    }
    tvk::LocalMemory<ACL> ownedList(list);
    tvk::LocalMemory<void> descriptor(::LocalAlloc(LPTR, SECURITY_DESCRIPTOR_MIN_LENGTH));
    const char* failure = nullptr;
    if (!descriptor)
        failure = "LocalAlloc";
    else if (!::InitializeSecurityDescriptor(descriptor.Get(), SECURITY_DESCRIPTOR_REVISION))
        failure = "InitializeSecurityDescriptor";
    else if (!::SetSecurityDescriptorDacl(descriptor.Get(), TRUE, list, FALSE))
        failure = "SetSecurityDescriptorDacl";
    if (failure)
    {
        std::printf("%s Error %u\n", failure, registryError);
        return nullptr;
    }
    m_pACL = ownedList.Release();
    return descriptor.Release();
}

void CRegistry::Check() const
{
    if (m_lLastError != ERROR_SUCCESS)
        throw new CRegistryException(m_lLastError);
}

int CRegistry::CheckEntry() const
{
    if (m_lLastError == ERROR_NO_MORE_ITEMS)
        return 0;
    Check();
    return 1;
}

void CRegistry::CloseHeldKey()
{
    if (!m_bOpen)
        return;
    Close();
    Check();
}

void CRegistry::UnloadSecurityLibrary()
{
    if (m_hSecurityDLL)
        ::FreeLibrary(m_hSecurityDLL);
    m_hSecurityDLL = nullptr;
    m_pfnSetEntriesInAcl = nullptr;
}

void CRegistry::MapKey(HKEY root, const char* subKey)
{
    switch (m_nMode)
    {
    case PrinterMode:
        GetOSKey(root, subKey);
        break;
    case ProductMode:
        GetAIOKey(root, subKey);
        break;
    default: // what the previous call was mapped to is used again, whatever was asked for
        break;
    }
}

void CRegistry::GetOSKey(HKEY root, CString subKey)
{
    m_hRoot = root;
    m_strSubKey = subKey;
    if (root)
        return;
    m_hRoot = HKEY_LOCAL_MACHINE;
    if (GetOSPlatform() == OS_PLATFORM_WIN9X)
        SetWin9xKey();
    else
        SetWinNTKey();
}

void CRegistry::GetAIOKey(HKEY root, CString subKey)
{
    m_hRoot = root;
    m_strSubKey = subKey;
    if (root)
        return;
    m_hRoot = HKEY_LOCAL_MACHINE;
    TvkProduct product;
    CString ident, model;
    product.GetSetting("IDO_OEM_INKJET_IDENT", ident);
    product.GetSetting("IDO_MODEL", model);
    m_strSubKey = ident + "\\" + model + "\\" + subKey;
}

void CRegistry::SetWin9xKey()
{
    m_strSubKey = SystemPrinters9x + m_strFriendlyName + SubKeySeparator(m_strSubKey) + m_strSubKey;
}

void CRegistry::SetWinNTKey()
{
    TvkProduct product;
    CString ident;
    product.GetSetting(m_b32BitPath ? "IDO_OEM_INKJET_IDENT32" : "IDO_OEM_INKJET_IDENT", ident);
    m_strSettingsBase = ident + SettingsFolder;
    CloseHeldKey();

    const CString driverData = SystemPrinters + m_strFriendlyName + PrinterDriverData;
    tvk::RegistryKey key;
    m_lLastError = ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, driverData, 0, KEY_READ, key.Receive());
    CString originalName;
    if (m_lLastError == ERROR_SUCCESS && tvk::ReadText(key.Get(), OriginalNameValue, originalName, OriginalNameSize))
    {
        m_strSubKey = m_strSettingsBase + originalName + SubKeySeparator(m_strSubKey) + m_strSubKey;
        return;
    }
    // A printer that only this user has (a network connection). Here the driver's data has no place of its own.
    ::RegOpenKeyExA(HKEY_CURRENT_USER, UserPrinters, 0, KEY_ALL_ACCESS, key.Receive());
    m_strSubKey = UserPrinters + m_strFriendlyName + GuiSubkey + m_strSubKey;
    m_hRoot = HKEY_CURRENT_USER;
}
