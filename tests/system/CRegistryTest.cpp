// Plain keys: every operation on the real registry, its failures, and who closes what.
#include "RegistrySupport.h"
#include "support/NothingLeft.h"
#include "support/Watch.h"
#include "system/internal/Handle.h"

namespace
{
class CRegistryTest : public RegistryKeyTest
{
};

TEST_F(CRegistryTest, WritesReadsEnumeratesAndDeletes)
{
    CRegistry key;
    DWORD disposition = 0;
    const std::string path = Path("new");
    key.Create(disposition, HKEY_CURRENT_USER, path.c_str(), REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr);
    EXPECT_EQ(disposition, DWORD(REG_CREATED_NEW_KEY));
    EXPECT_EQ(key.GetSubKey(), path.c_str());
    key.Write("name", Bytes("abc"), 4, REG_SZ);
    EXPECT_EQ(m_world.Get(HKEY_CURRENT_USER, path, "name"), std::string("abc", 4));

    char data[8] = "", name[8] = "";
    DWORD size = sizeof data, type = 0, length = sizeof name;
    key.Read(reinterpret_cast<BYTE*>(data), &size, &type, "name");
    EXPECT_STREQ(data, "abc");
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(type, DWORD(REG_SZ));

    EXPECT_EQ(key.EnumValue(0, name, &length, &type, nullptr, nullptr), 1);
    EXPECT_STREQ(name, "name");
    EXPECT_EQ(key.EnumValue(1, name, &(length = sizeof name), nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(key.GetLastError(), ERROR_NO_MORE_ITEMS);
    key.DeleteValue("name");
    EXPECT_EQ(m_world.Get(HKEY_CURRENT_USER, path, "name"), std::nullopt);

    ASSERT_EQ(Open(key), 1);
    FILETIME changed = {};
    EXPECT_EQ(key.EnumKey(0, name, &(length = sizeof name), &changed, nullptr, nullptr), 1);
    EXPECT_STREQ(name, "child");
    EXPECT_NE(changed.dwHighDateTime, 0u);
    EXPECT_EQ(key.EnumKey(2, name, &(length = sizeof name), nullptr, nullptr, nullptr), 0);
    key.Remove("new");
    EXPECT_FALSE(m_world.Exists(HKEY_CURRENT_USER, path));
    key.Create(disposition, HKEY_CURRENT_USER, Home, 0, KEY_READ, nullptr);
    EXPECT_EQ(disposition, DWORD(REG_OPENED_EXISTING_KEY));
}

TEST_F(CRegistryTest, RefusedRights)
{
    m_world.Restrict(HKEY_CURRENT_USER, Home, KEY_READ);
    CRegistry key;
    DWORD disposition = 0;
    EXPECT_EQ(Open(key), 0);
    EXPECT_EQ(key.GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Thrown([&] { key.Create(disposition, HKEY_CURRENT_USER, Home, 0, KEY_ALL_ACCESS, nullptr); }),
              ERROR_ACCESS_DENIED);
    EXPECT_EQ(Open(key, KEY_READ), 1);
    EXPECT_EQ(Thrown([&] { key.Write("x", Bytes("y"), 2, REG_SZ); }), ERROR_ACCESS_DENIED);
}

TEST_F(CRegistryTest, CopiesShareOneHandleAndEachClosesIt)
{
    CRegistry key;
    ASSERT_EQ(Open(key), 1);
    {
        CRegistry copy(key), assigned;
        assigned = key;
        copy.Read(nullptr, nullptr, nullptr, "text");
        EXPECT_EQ(assigned.GetSubKey(), Home);
        assigned.Close();
        EXPECT_EQ(assigned.GetLastError(), 0);
        EXPECT_EQ(Thrown([&] { copy.Read(nullptr, nullptr, nullptr, "text"); }), ERROR_INVALID_HANDLE);
        copy.Close(); // the second to close: stored, not thrown
        EXPECT_EQ(copy.GetLastError(), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(Thrown([&] { Open(key); }), ERROR_INVALID_HANDLE); // before anything else is opened
    EXPECT_EQ(Open(key), 1);
    CRegistry copy(key); // the destructors report the second closing, silently
}

TEST_F(CRegistryTest, TheKeyConstructorOpensNothing)
{
    CRegistry key(HKEY_CURRENT_USER, Home, 0, KEY_READ);
    EXPECT_EQ(key.GetSubKey(), Home);
    EXPECT_EQ(Thrown([&] { key.Read(nullptr, nullptr, nullptr, "text"); }), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Thrown([&] { EXPECT_EQ(Open(key), 1); }), 0); // closing no key is no failure
}

TEST(CRegistryExceptionTest, IsSilentAndCaughtAsItsBase)
{
    try
    {
        throw new CRegistryException(99);
    }
    catch (CException* exception)
    {
        EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(CRegistryException)));
        EXPECT_EQ(exception->ReportError(), 0);
        exception->Delete();
    }
}

// Switches the backup and restore privileges of this process on while it lives.
class Privileges
{
public:
    Privileges() { Switch(SE_PRIVILEGE_ENABLED); }
    ~Privileges() { Switch(0); }

private:
    static void Switch(DWORD attributes)
    {
        tvk::Token token;
        OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, token.Receive());
        for (const char* name : {"SeBackupPrivilege", "SeRestorePrivilege"})
        {
            TOKEN_PRIVILEGES privileges = {1, {{{}, attributes}}};
            LookupPrivilegeValueA(nullptr, name, &privileges.Privileges[0].Luid);
            AdjustTokenPrivileges(token.Get(), FALSE, &privileges, 0, nullptr, nullptr);
        }
    }
};

TEST_F(CRegistryTest, SavesMountsAndUnmounts)
{
    const char* const file = "C:\\registrytest.hiv";
    DeleteFileA(file);
    const Privileges privileges;
    CRegistry saved, machine, mounted;
    ASSERT_EQ(Open(saved), 1);
    saved.SaveKey(file, nullptr);
    ASSERT_EQ(machine.Open(HKEY_LOCAL_MACHINE, "", 0, KEY_ALL_ACCESS), 1);
    EXPECT_EQ(Thrown([&] { machine.LoadKey("RegistryTestMount", "C:\\missing.hiv"); }), ERROR_FILE_NOT_FOUND);
    machine.LoadKey("RegistryTestMount", file);
    ASSERT_EQ(mounted.Open(HKEY_LOCAL_MACHINE, "RegistryTestMount", 0, KEY_READ), 1);
    mounted.Read(nullptr, nullptr, nullptr, "text");
    mounted.Close();
    machine.UnloadKey("RegistryTestMount"); // never another name: Wine's call deletes whatever key it is given
    EXPECT_FALSE(RegistryWorld::Exists(HKEY_LOCAL_MACHINE, "RegistryTestMount"));
    EXPECT_EQ(Thrown([&] { machine.UnloadKey("RegistryTestMount"); }), ERROR_FILE_NOT_FOUND);
    DeleteFileA(file);
}

// Every trace object opens the switch's key this way.
TEST_F(CRegistryTest, OpeningAnUnmappedKeyIsOneCall)
{
    const Watch<decltype(&RegOpenKeyExA)> opening("RegOpenKeyExA");
    const Watch<decltype(&GetVersionExA)> version("GetVersionExA");
    CRegistry key;
    EXPECT_EQ(Open(key), 1);
    EXPECT_EQ(opening.Calls(), 1);
    EXPECT_EQ(version.Calls(), 0);
}

TEST_F(CRegistryTest, LeavesNothingOpen)
{
    ExpectNothingLeftBehind(
        [](int)
        {
            CRegistry key;
            DWORD disposition = 0;
            key.Create(disposition, HKEY_CURRENT_USER, Home, 0, KEY_READ, nullptr);
            Open(key);
            Open(key);
            Thrown([&] { key.Read(nullptr, nullptr, nullptr, "no"); });
            EXPECT_EQ(key.Open(HKEY_CURRENT_USER, Path("no").c_str(), 0, KEY_READ), 0);
        });
}
} // namespace
