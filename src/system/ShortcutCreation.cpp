#include "system/ShortcutCreation.h"
#include <direct.h>
#include <shlobj.h>
#include <algorithm>
#include <cstring>
#include <iterator>

namespace
{
/// What of a path lies before its last backslash; empty without one.
CString BeforeLastBackslash(const CString& path)
{
    const int cut = path.ReverseFind('\\');
    return cut < 0 ? CString() : path.Left(cut);
}

CString WindowsDirectory()
{
    char directory[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(directory, MAX_PATH);
    const CString path(directory, length < MAX_PATH ? static_cast<int>(length) : 0);
    return path.Right(1) == "\\" ? path.Left(path.GetLength() - 1) : path; // a Windows in the root of its drive
}

/// COM for the current thread, for a scope.
class ComScope
{
public:
    ComScope() : m_initialised(SUCCEEDED(::CoInitialize(nullptr))) {}
    ~ComScope()
    {
        if (m_initialised)
            ::CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    explicit operator bool() const { return m_initialised; }

private:
    bool m_initialised;
};
} // namespace

ShortcutCreation::ShortcutCreation()
    : m_hResult(S_OK), m_hKey(nullptr), m_dwSize(sizeof m_szFolder), m_bLookupFailed(FALSE),
      m_strShellFolders("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"),
      m_strDesktop("\\All Users\\Desktop"), m_strPrograms("\\All Users\\Start Menu\\Programs"),
      m_strStartMenu("\\All Users\\Start Menu"), m_szWidePath(), m_szFolder(), m_pShellLink(nullptr),
      m_pPersistFile(nullptr)
{
}

ShortcutCreation::ShortcutCreation(const ShortcutCreation&) = default;
ShortcutCreation& ShortcutCreation::operator=(const ShortcutCreation&) = default;
ShortcutCreation::~ShortcutCreation() = default;

long ShortcutCreation::CreateShortcut(CString target, CString arguments, CString linkName, CString iconFile,
                                      int iconIndex, bool setIcon, bool makeFolder, int location)
{
    return Create(target, arguments, "\\" + linkName, iconFile, iconIndex, setIcon, makeFolder, location);
}

long ShortcutCreation::CreateShortcut(CString target, CString arguments, CString linkName, CString iconFile,
                                      int iconIndex, bool setIcon, bool makeFolder, int location, CString subFolder)
{
    return Create(target, arguments, "\\" + subFolder + "\\" + linkName, iconFile, iconIndex, setIcon, makeFolder,
                  location);
}

long ShortcutCreation::Create(const CString& target, const CString& arguments, const CString& pathInFolder,
                              const CString& iconFile, int iconIndex, bool setIcon, bool makeFolder, int location)
{
    m_strWorkingDirectory = BeforeLastBackslash(target);
    const ComScope com;
    if (!com)
        return 0;
    FindFolder(location);
    m_strShortcutPath = m_szFolder + pathInFolder;
    if (makeFolder)
        m_hResult = _mkdir(m_strShortcutPath);
    else
        SaveLink(target, arguments, iconFile, iconIndex, setIcon);
    return m_hResult;
}

void ShortcutCreation::FindFolder(int location)
{
    struct Location
    {
        int number;
        const char* perUser;
        const char* allUsers;
        CString ShortcutCreation::*fallback;
    };
    static constexpr Location Locations[] = {
        {1, "Desktop", "Common Desktop", &ShortcutCreation::m_strDesktop},
        {2, "Programs", "Common Programs", &ShortcutCreation::m_strPrograms},
        {3, "Start Menu", "Common Start Menu", &ShortcutCreation::m_strStartMenu},
    };
    std::memset(m_szFolder, 0, sizeof m_szFolder);
    const auto* chosen = std::find_if(std::begin(Locations), std::end(Locations),
                                      [location](const Location& row) { return row.number == location; });
    if (chosen == std::end(Locations))
        return;

    const CRegistry::OSVersion platform = m_Registry.GetOSPlatform();
    // The memory of a failure goes beyond the call on purpose: from then on both keys are asked, the all-users one
    // last.
    if (m_bLookupFailed || platform == CRegistry::OS_PLATFORM_WIN9X)
        QueryFolder(HKEY_CURRENT_USER, chosen->perUser);
    if (m_bLookupFailed || platform == CRegistry::OS_PLATFORM_NT)
    {
        m_bLookupFailed = FALSE;
        QueryFolder(HKEY_LOCAL_MACHINE, chosen->allUsers);
    }
    if (!m_szFolder[0])
        lstrcpynA(m_szFolder, WindowsDirectory() + this->*chosen->fallback, sizeof m_szFolder);
}

/// Reads a folder; a failure leaves the one read before.
void ShortcutCreation::QueryFolder(HKEY root, const char* valueName)
{
    if (::RegOpenKeyExA(root, m_strShellFolders, 0, KEY_QUERY_VALUE, &m_hKey) != ERROR_SUCCESS)
    {
        m_bLookupFailed = TRUE;
        return;
    }
    // The size is what the query before this one left in the member, on purpose: but never more than the buffer, which
    // it becomes when that value did not fit.
    m_dwSize = std::min<unsigned long>(m_dwSize, sizeof m_szFolder);
    if (::RegQueryValueExA(m_hKey, valueName, nullptr, nullptr, reinterpret_cast<BYTE*>(m_szFolder), &m_dwSize) ==
        ERROR_SUCCESS)
        m_szFolder[std::min<unsigned long>(m_dwSize, sizeof m_szFolder - 1)] = '\0'; // writers forget it
    else
        m_bLookupFailed = TRUE;
    m_szFolder[sizeof m_szFolder - 1] = '\0'; // what a failed query leaves behind is the system's affair
    ::RegCloseKey(m_hKey);
    m_hKey = nullptr;
}

void ShortcutCreation::SaveLink(const CString& target, const CString& arguments, const CString& iconFile, int iconIndex,
                                bool setIcon)
{
    m_hResult = ::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                   reinterpret_cast<void**>(&m_pShellLink));
    if (FAILED(m_hResult))
        return;
    m_pShellLink->SetPath(target);
    m_pShellLink->SetArguments(arguments);
    m_pShellLink->SetWorkingDirectory(m_strWorkingDirectory);
    if (setIcon)
        m_pShellLink->SetIconLocation(iconFile, iconIndex);
    m_hResult = m_pShellLink->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&m_pPersistFile));
    if (SUCCEEDED(m_hResult))
    {
        m_hResult = SaveFile();
        m_pPersistFile->Release();
        m_pPersistFile = nullptr;
    }
    m_pShellLink->Release();
    m_pShellLink = nullptr;
}

HRESULT ShortcutCreation::SaveFile()
{
    m_strLowerCase = m_strShortcutPath;
    m_strLowerCase.MakeLower();
    if (m_strLowerCase.Find(".lnk") < 0)
        m_strShortcutPath += ".lnk";
    if (!::MultiByteToWideChar(CP_ACP, 0, m_strShortcutPath, -1, m_szWidePath,
                               static_cast<int>(std::size(m_szWidePath))))
        return HRESULT_FROM_WIN32(::GetLastError()); // longer than a path may be
    return m_pPersistFile->Save(m_szWidePath, TRUE);
}
