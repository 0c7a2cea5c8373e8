// Shortcuts and groups made in real shell folders, which lie in a scratch folder for the test, and read back through
// the shell.
#include "system/ShortcutCreation.h"
#include "support/FakeVersion.h"
#include "support/IatPatch.h"
#include "support/NothingLeft.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include <shlobj.h>
#include <gmock/gmock.h>
#include <filesystem>
#include <set>
#include <vector>

namespace
{
namespace fs = std::filesystem;

const char* const ShellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
const char* const Root = "C:\\shortcuts";
const char* const AllUsers = "C:\\windows\\All Users";

struct FolderValue
{
    HKEY root;
    const char *name, *folder;
};
// The shell's folders, below the scratch folder: their lengths tell which value size reads them.
const FolderValue Values[] = {
    {HKEY_CURRENT_USER, "Desktop", "user desk"},
    {HKEY_CURRENT_USER, "Programs", "u"},
    {HKEY_CURRENT_USER, "Start Menu", "user menu"},
    {HKEY_LOCAL_MACHINE, "Common Desktop", "common"},
    {HKEY_LOCAL_MACHINE, "Common Programs", "common programs"},
    {HKEY_LOCAL_MACHINE, "Common Start Menu", "menu"},
};

/// The files and groups below the scratch folder and below "All Users", sorted, a bar behind each. Takes them away.
std::string Made()
{
    std::set<fs::path> found;
    for (const fs::path root : {Root, AllUsers})
        for (const auto& entry : fs::recursive_directory_iterator(root))
            if (entry.is_regular_file() || entry.path().filename() == "Suite")
                found.insert(entry.path());
    std::string made;
    for (const fs::path& path : found)
    {
        made += path.lexically_relative(path.string().starts_with(Root) ? Root : "C:\\windows").string() + "|";
        fs::remove(path);
    }
    return made;
}

/// What the shell reads from a link's file: "target|arguments|working directory|icon file|icon number".
std::string ReadLink(const wchar_t* file)
{
    IShellLinkA* link = nullptr;
    IPersistFile* persistFile = nullptr;
    CoInitialize(nullptr);
    EXPECT_EQ(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                               reinterpret_cast<void**>(&link)),
              S_OK);
    link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&persistFile));
    EXPECT_EQ(persistFile->Load(file, STGM_READ), S_OK);
    char target[MAX_PATH] = "", arguments[MAX_PATH] = "", folder[MAX_PATH] = "", icon[MAX_PATH] = "";
    int index = -1;
    link->GetPath(target, MAX_PATH, nullptr, SLGP_RAWPATH);
    link->GetArguments(arguments, MAX_PATH);
    link->GetWorkingDirectory(folder, MAX_PATH);
    link->GetIconLocation(icon, MAX_PATH, &index);
    persistFile->Release();
    link->Release();
    CoUninitialize();
    return std::string(target) + "|" + arguments + "|" + folder + "|" + icon + "|" + std::to_string(index);
}

long Create(ShortcutCreation& shortcuts, const char* name, int location, bool makeFolder = false)
{
    return shortcuts.CreateShortcut("C:\\windows\\notepad.exe", "", name, "", 0, false, makeFolder, location);
}

class Shortcuts : public testing::Test
{
protected:
    Shortcuts()
    {
        for (const FolderValue& value : Values)
        {
            m_registry.Keep(value.root, ShellFolders, value.name);
            fs::create_directories(fs::path(Root) / value.folder);
        }
        WriteFolders();
        for (const char* folder : {"Desktop", "Start Menu\\Programs"})
            fs::create_directories(fs::path(AllUsers) / folder);
    }
    ~Shortcuts() override
    {
        fs::remove_all(Root);
        fs::remove_all(AllUsers);
    }
    /// The shell itself restores the user's desktop whenever a program makes its first link.
    void WriteFolders()
    {
        for (const FolderValue& value : Values)
            m_registry.SetText(value.root, ShellFolders, value.name, std::string(Root) + "\\" + value.folder);
    }

    RegistryWorld m_registry;
    ShortcutCreation m_shortcuts;
};

TEST_F(Shortcuts, HoldTheProgramAsTheShellReadsIt)
{
    const auto link = [this](const char* target, bool setIcon)
    {
        EXPECT_EQ(m_shortcuts.CreateShortcut(target, "/a \"b c\"", "Tool", "C:\\i.dll", 3, setIcon, false, 1), S_OK);
        return ReadLink(L"C:\\shortcuts\\common\\Tool.lnk");
    };
    EXPECT_EQ(link("C:\\windows\\notepad.exe", true), "C:\\windows\\notepad.exe|/a \"b c\"|C:\\windows|C:\\i.dll|3");
    EXPECT_EQ(link("C:\\tool.exe", false), "C:\\tool.exe|/a \"b c\"|C:||0");
    // A target without a folder has no working directory; the shell looks for it elsewhere.
    EXPECT_THAT(link("notepad.exe", false), testing::EndsWith("|/a \"b c\"|||0"));
}

TEST_F(Shortcuts, LieInTheFoldersOfTheWindowsFamily)
{
    const struct
    {
        CRegistry::OSVersion windows;
        const char* missingValue;
        std::vector<int> locations;
        const char* made;
        DWORD rights = KEY_QUERY_VALUE; // to that value's key, all users' for "C"
    } cases[] = {
        // From the longest path to the shortest: the size of one query is what the one before it read.
        {CRegistry::OS_WINXP, "", {2, 1, 3}, "common\\2.lnk|common programs\\1.lnk|menu\\3.lnk|"},
        {CRegistry::OS_WIN98, "", {3, 2}, "u\\2.lnk|user menu\\1.lnk|"},
        {CRegistry::OS_WIN98, "", {1}, "user desk\\1.lnk|"},
        {CRegistry::OS_WINXP, "Common Desktop", {1}, "All Users\\Desktop\\1.lnk|"},
        {CRegistry::OS_WINXP, "Common Programs", {2}, "All Users\\Start Menu\\Programs\\1.lnk|"},
        {CRegistry::OS_WINXP, "Common Start Menu", {3}, "All Users\\Start Menu\\1.lnk|"},
        {CRegistry::OS_WIN98, "Desktop", {1}, "common\\1.lnk|"},
        {CRegistry::OS_WIN98, "Programs", {2, 2}, "common programs\\1.lnk|common programs\\2.lnk|"},
        // The second path is longer than the first: it is not read, and the object remembers the failure.
        {CRegistry::OS_WINXP, "", {3, 1}, "menu\\1.lnk|All Users\\Desktop\\2.lnk|"},
        // After a failure both keys are asked: the user's path stays when the one of all users is longer. That length
        // is the size of the next query, so all is well again.
        {CRegistry::OS_WINXP, "Common Desktop", {1, 2, 3}, "menu\\3.lnk|u\\2.lnk|All Users\\Desktop\\1.lnk|"},
        // A key that cannot be opened is a failure, too.
        {CRegistry::OS_WIN98, "", {1}, "common\\1.lnk|", KEY_SET_VALUE},
        {CRegistry::OS_WINXP, "C", {1, 2}, "u\\2.lnk|All Users\\Desktop\\1.lnk|", KEY_SET_VALUE},
    };
    for (const auto& [windows, missingValue, locations, made, rights] : cases)
    {
        const FakeVersion version(windows);
        ShortcutCreation shortcuts;
        WriteFolders();
        const HKEY root = *missingValue == 'C' ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        RegDeleteKeyValueA(root, ShellFolders, missingValue);
        RegistryWorld restricted;
        restricted.Restrict(root, ShellFolders, rights);
        for (std::size_t i = 0; i < locations.size(); ++i)
            EXPECT_EQ(Create(shortcuts, std::to_string(i + 1).c_str(), locations[i]), S_OK);
        EXPECT_EQ(Made(), made);
    }
}

TEST_F(Shortcuts, CopiesRememberAFailureToo)
{
    RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, ShellFolders, "Common Desktop");
    Create(m_shortcuts, "a", 1);
    ShortcutCreation copy(m_shortcuts), assigned;
    assigned = m_shortcuts;
    Create(copy, "b", 2);
    Create(assigned, "c", 2);
    EXPECT_EQ(Made(), "u\\b.lnk|u\\c.lnk|All Users\\Desktop\\a.lnk|");
}

TEST_F(Shortcuts, AreNamedAsTheCallerSays)
{
    const char* const cases[][3] = {
        {"Tool", "", "menu\\Tool.lnk|"},
        {"Tool.LNK", "", "menu\\Tool.LNK|"},
        {"Tool.lnk.txt", "", "menu\\Tool.lnk.txt|"},
        {"Tool", "group", "menu\\group\\Tool.lnk|"},
        {"Tool", "old.Lnk files", "menu\\old.Lnk files\\Tool|"}, // the ending counts anywhere in the path
    };
    for (const auto& [name, subFolder, made] : cases)
    {
        fs::create_directories(std::string(Root) + "\\menu\\" + subFolder);
        EXPECT_EQ(*subFolder ? m_shortcuts.CreateShortcut("t.exe", "", name, "", 0, false, false, 3, subFolder)
                             : Create(m_shortcuts, name, 3),
                  S_OK);
        EXPECT_EQ(Made(), made);
    }
}

TEST_F(Shortcuts, MakeGroups)
{
    EXPECT_EQ(Create(m_shortcuts, "Suite", 2, true), 0);
    EXPECT_EQ(Create(m_shortcuts, "Suite", 2, true), -1) << "it is there";
    EXPECT_EQ(m_shortcuts.CreateShortcut("", "", "Suite", "", 0, false, true, 2, "Suite"), 0);
    EXPECT_EQ(m_shortcuts.CreateShortcut("", "", "Suite", "", 0, false, true, 2, "missing"), -1);
    EXPECT_TRUE(fs::is_directory("C:\\shortcuts\\common programs\\Suite\\Suite"));
    fs::remove_all("C:\\shortcuts\\common programs\\Suite\\Suite");
    EXPECT_EQ(Made(), "common programs\\Suite|");
}

TEST_F(Shortcuts, WithoutALocationLieInTheRootOfTheDrive)
{
    const fs::path former = fs::current_path();
    fs::current_path(Root);
    for (const int location : {4, 0, -1})
    {
        EXPECT_EQ(Create(m_shortcuts, "At the root", location), S_OK);
        EXPECT_TRUE(fs::remove("C:\\At the root.lnk")) << location;
    }
    fs::current_path(former);
}

int g_released;
/// A link object that cannot be saved, and counts how often it is released.
HRESULT WINAPI CreateWithoutFile(REFCLSID id, IUnknown* outer, DWORD context, REFIID interfaceId, void** link)
{
    using Member = void (*)();
    static Member members[21];
    static ULONG(WINAPI * release)(IUnknown*);
    const HRESULT result = CoCreateInstance(id, outer, context, interfaceId, link);
    Member*& table = *static_cast<Member**>(*link);
    std::copy_n(table, std::size(members), members);
    release = reinterpret_cast<decltype(release)>(members[2]);
    members[0] = reinterpret_cast<Member>(+[](IUnknown*, REFIID, void**) -> HRESULT { return E_NOINTERFACE; });
    members[2] = reinterpret_cast<Member>(+[](IUnknown* object) -> ULONG { return ++g_released, release(object); });
    table = members;
    return result;
}

TEST_F(Shortcuts, EndWithTheResultOfTheStepThatFailed)
{
    const std::string longName(300, 'n');
    EXPECT_LT(Create(m_shortcuts, longName.c_str(), 3), 0);
    EXPECT_EQ(Create(m_shortcuts, longName.c_str(), 3, true), -1);
    EXPECT_EQ(m_shortcuts.CreateShortcut("t.exe", "", "a", "", 0, false, false, 3, "missing"),
              HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
    {
        const IatPatch create(
            LibraryUnderTest(), "CoCreateInstance",
            +[](REFCLSID, IUnknown*, DWORD, REFIID, void**) -> HRESULT { return CLASS_E_NOTLICENSED; });
        EXPECT_EQ(Create(m_shortcuts, "a", 3), CLASS_E_NOTLICENSED);
    }
    {
        const IatPatch create(LibraryUnderTest(), "CoCreateInstance", CreateWithoutFile);
        g_released = 0;
        EXPECT_EQ(Create(m_shortcuts, "a", 3), E_NOINTERFACE);
        EXPECT_EQ(g_released, 1);
    }
    {
        const auto refuse = +[](void*) -> HRESULT { return RPC_E_CHANGED_MODE; };
        const IatPatch com(LibraryUnderTest(), "CoInitialize", refuse);
        EXPECT_EQ(Create(m_shortcuts, "a", 3), 0) << "success to the shell, though nothing was made";
        EXPECT_EQ(Create(m_shortcuts, "Suite", 3, true), 0);
    }
    EXPECT_EQ(Made(), "");
    EXPECT_EQ(Create(m_shortcuts, "a", 3), S_OK);
    EXPECT_EQ(Made(), "menu\\a.lnk|");
}

TEST_F(Shortcuts, ReadNoMoreThanTheBuffer)
{
    const auto folder = [](std::size_t length) { return "C:\\" + std::string(length - 3, 'x'); };
    const std::pair<std::string, const char*> cases[] = {
        {folder(259) + '\0', ""}, // just fits; no name behind it does
        {folder(260), ""},
        {folder(260) + '\0', "All Users\\Start Menu\\a.lnk|"},
        {folder(5000) + '\0', "All Users\\Start Menu\\a.lnk|"},
        {std::string(Root) + "\\menu", "menu\\a.lnk|"},
        {std::string(1, '\0'), "All Users\\Start Menu\\a.lnk|"},
        {"", "All Users\\Start Menu\\a.lnk|"},
    };
    for (const auto& [value, made] : cases)
    {
        SCOPED_TRACE(value.size());
        for (const FolderValue& menu : {Values[2], Values[5]})
            m_registry.Set(menu.root, ShellFolders, menu.name, REG_BINARY, value);
        ShortcutCreation shortcuts;
        EXPECT_EQ(Create(shortcuts, "a", 3) == S_OK, *made != 0);
        EXPECT_EQ(Made(), made);
        // The size that did not fit must not become the size of the buffer.
        Create(shortcuts, "b", 3);
        Create(shortcuts, "b", 2);
        Made();
    }
}

std::string g_group;
TEST_F(Shortcuts, LieBelowOneBackslashAndWithinTheBuffer)
{
    const HMODULE library = LibraryUnderTest();
    const IatPatch group(
        library, "_mkdir", +[](const char* path) { return g_group = path, 0; });
    const IatPatch root(
        library, "GetWindowsDirectoryA", +[](char* path, UINT) -> UINT { return lstrcpyA(path, "C:\\"), 3; });
    RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, ShellFolders, "Common Start Menu");
    Create(m_shortcuts, "Suite", 3, true);
    EXPECT_EQ(g_group, "C:\\All Users\\Start Menu\\Suite");
    // A query that fails half way leaves what it likes.
    const IatPatch query(
        library, "RegQueryValueExA",
        +[](HKEY, LPCSTR, DWORD*, DWORD*, BYTE* data, DWORD* size) -> LONG
        {
            memset(data, 'x', *size);
            return ERROR_MORE_DATA;
        });
    ShortcutCreation shortcuts;
    Create(shortcuts, "Suite", 3, true);
    EXPECT_EQ(g_group, std::string(259, 'x') + "\\Suite");
}

TEST_F(Shortcuts, LeaveNothingOpen)
{
    ExpectNothingLeftBehind(
        [this](int i)
        {
            if (i < 10 || i % 8 == 0) // the shell takes its time
                Create(m_shortcuts, i % 3 ? "Tool" : "missing\\Tool", 1 + i % 3);
        });
    // COM is given up as often as it was taken: another kind of apartment can be had.
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    CoUninitialize();
}
} // namespace
