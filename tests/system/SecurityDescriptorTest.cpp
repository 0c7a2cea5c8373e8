// The access list of new keys: what is passed to the system, what failing calls lead to, and that nothing stays behind.
#include "RegistrySupport.h"
#include <gmock/gmock.h>
#include <cstdio>
#include <sddl.h>
#include <vector>
#include "IatPatch.h"
#include "RegistryWorld.h"
#include "TestProduct.h"
#include "system/internal/Handle.h"

namespace
{
const char* const Home = "Software\\SecurityTest";

// What the library asked for, and which of its calls (0: none) is to fail.
struct Calls
{
    int failingSid = 0;
    bool failAcl = false, failAlloc = false, failInitialize = false, failDacl = false, noFunction = false;
    LONG createResult = 0;
    int sids = 0, freedSids = 0, freedMemory = 0, freedLibraries = 0;
    std::vector<std::string> passed = {}; // the group of each entry of the list passed to RegCreateKeyExA
    bool attributes = false, inherit = false;
    std::vector<int> trustees = {}; // access mode * 100 + inheritance * 10 + trustee type
} calls;

DWORD WINAPI SetEntries(ULONG count, EXPLICIT_ACCESSA* entries, ACL* old, ACL** list)
{
    for (ULONG i = 0; i < count; ++i)
        calls.trustees.push_back(entries[i].grfAccessMode * 100 + int(entries[i].grfInheritance) * 10 +
                                 entries[i].Trustee.TrusteeType);
    return calls.failAcl ? ERROR_INVALID_PARAMETER : SetEntriesInAclA(count, entries, old, list);
}

FARPROC WINAPI LookUp(HMODULE module, LPCSTR name)
{
    if (std::string(name) != "SetEntriesInAclA")
        return GetProcAddress(module, name);
    return calls.noFunction ? nullptr : reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(SetEntries));
}

// Wine ignores the descriptor of a new key: what was passed is all there is to see.
LONG WINAPI CreateKey(HKEY root, LPCSTR path, DWORD reserved, LPSTR type, DWORD options, REGSAM access,
                      SECURITY_ATTRIBUTES* attributes, PHKEY key, DWORD* disposition)
{
    BOOL present = FALSE, defaulted = TRUE;
    ACL* list = nullptr;
    calls.attributes = attributes != nullptr;
    calls.inherit = attributes && attributes->bInheritHandle;
    if (attributes && GetSecurityDescriptorDacl(attributes->lpSecurityDescriptor, &present, &list, &defaulted) &&
        present && !defaulted)
        for (WORD i = 0; i < list->AceCount; ++i)
        {
            void* entry = nullptr;
            GetAce(list, i, &entry);
            const auto* ace = static_cast<ACCESS_ALLOWED_ACE*>(entry);
            EXPECT_EQ(ace->Header.AceType, ACCESS_ALLOWED_ACE_TYPE);
            EXPECT_EQ(ace->Header.AceFlags, 0);
            EXPECT_EQ(ace->Mask, 0xF003Fu);
            tvk::LocalMemory<char> text;
            ConvertSidToStringSidA(const_cast<DWORD*>(&ace->SidStart), text.Receive());
            calls.passed.push_back(text.Get());
        }
    return calls.createResult
               ? calls.createResult
               : RegCreateKeyExA(root, path, reserved, type, options, access, attributes, key, disposition);
}

class SecurityDescriptorTest : public testing::Test
{
protected:
    SecurityDescriptorTest()
    {
        calls = {};
        m_world.Claim(HKEY_CURRENT_USER, Home);
    }

    static void Create(CRegistry& key)
    {
        DWORD disposition = 0;
        SECURITY_ATTRIBUTES ignored = {sizeof ignored, nullptr, TRUE};
        key.Create(disposition, HKEY_CURRENT_USER, Home, 0, KEY_READ, &ignored);
    }

    RegistryWorld m_world;
    const IatPatch m_patches[9] = {
        {LibraryUnderTest(), "AllocateAndInitializeSid",
         +[](SID_IDENTIFIER_AUTHORITY* authority, BYTE count, DWORD a, DWORD b, DWORD c, DWORD d, DWORD e, DWORD f,
             DWORD g, DWORD h, PSID* sid) -> BOOL
         {
             return ++calls.sids != calls.failingSid &&
                    AllocateAndInitializeSid(authority, count, a, b, c, d, e, f, g, h, sid);
         }},
        {LibraryUnderTest(), "FreeSid", +[](PSID sid) { return ++calls.freedSids, FreeSid(sid); }},
        {LibraryUnderTest(), "GetProcAddress", LookUp},
        {LibraryUnderTest(), "LocalAlloc",
         +[](UINT flags, SIZE_T size) { return calls.failAlloc ? nullptr : LocalAlloc(flags, size); }},
        {LibraryUnderTest(), "LocalFree",
         +[](HLOCAL memory) { return calls.freedMemory += memory != nullptr, LocalFree(memory); }},
        {LibraryUnderTest(), "FreeLibrary",
         +[](HMODULE module) { return ++calls.freedLibraries, FreeLibrary(module); }},
        {LibraryUnderTest(), "InitializeSecurityDescriptor",
         +[](PSECURITY_DESCRIPTOR descriptor, DWORD revision) -> BOOL
         { return !calls.failInitialize && InitializeSecurityDescriptor(descriptor, revision); }},
        {LibraryUnderTest(), "SetSecurityDescriptorDacl",
         +[](PSECURITY_DESCRIPTOR descriptor, BOOL present, PACL list, BOOL defaulted) -> BOOL
         { return !calls.failDacl && SetSecurityDescriptorDacl(descriptor, present, list, defaulted); }},
        {LibraryUnderTest(), "RegCreateKeyExA", CreateKey},
    };
};

TEST_F(SecurityDescriptorTest, NewKeysBelongToSixGroups)
{
    CRegistry key;
    Create(key);
    EXPECT_THAT(calls.passed, testing::ElementsAre("S-1-1-0", "S-1-5-32-544", "S-1-5-32-547", "S-1-5-32-545",
                                                   "S-1-5-18", "S-1-5-32-546"));
    EXPECT_FALSE(calls.inherit);
    // Access is set, nothing is inherited; Everyone is a well-known group (5), the others are groups (2).
    EXPECT_THAT(calls.trustees, testing::ElementsAre(205, 202, 202, 202, 202, 202));
    EXPECT_EQ(calls.freedSids, 6);
    EXPECT_EQ(calls.freedMemory, 2); // descriptor and access list
    EXPECT_EQ(calls.freedLibraries, 1);
}

TEST_F(SecurityDescriptorTest, AKeyThatCannotBeCreatedKeepsItsDescriptor)
{
    {
        CRegistry key;
        calls.createResult = ERROR_ACCESS_DENIED;
        EXPECT_EQ(Thrown([&] { Create(key); }), ERROR_ACCESS_DENIED);
        EXPECT_EQ(calls.freedMemory, 0);
        EXPECT_EQ(calls.freedLibraries, 0);
        EXPECT_EQ(calls.freedSids, 6);
    }
    EXPECT_EQ(calls.freedMemory, 0);
    EXPECT_EQ(calls.freedLibraries, 1); // by the destructor
}

TEST_F(SecurityDescriptorTest, ADescriptorThatWasHandedOutKeepsItsAccessList)
{
    for (const Calls& failing : {Calls{}, Calls{.failingSid = 1}, Calls{.noFunction = true}})
    {
        CRegistry key;
        const tvk::LocalMemory<void> descriptor(key.CreateSecurityDescriptor());
        BOOL present = FALSE, defaulted = FALSE;
        ACL* list = nullptr;
        ASSERT_TRUE(GetSecurityDescriptorDacl(descriptor.Get(), &present, &list, &defaulted));
        const tvk::LocalMemory<ACL> owned(list);
        calls = failing;
        Create(key);
        EXPECT_EQ(calls.freedMemory, calls.attributes ? 2 : 0) << "freed what is the host's";
    }
}

TEST_F(SecurityDescriptorTest, FailingCallsAreNamedAndLeakNothing)
{
    const auto check = [](const std::string& line, const Calls& failing, int freedSids, int freedMemory)
    {
        SCOPED_TRACE(line);
        CRegistry key;
        ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\SecurityTest\\missing", 0, KEY_READ), 0);
        SetLastError(99); // the number is the stored result's
        calls = failing;
        testing::internal::CaptureStdout();
        EXPECT_EQ(key.CreateSecurityDescriptor(), nullptr);
        std::fflush(stdout);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), line);
        EXPECT_EQ(calls.freedSids, freedSids);
        EXPECT_EQ(calls.freedMemory, freedMemory);

        calls = failing; // and the key is created all the same, without a descriptor
        testing::internal::CaptureStdout();
        EXPECT_EQ(Thrown([&] { Create(key); }), 0);
        testing::internal::GetCapturedStdout();
        EXPECT_FALSE(calls.attributes);
        EXPECT_EQ(calls.freedMemory, freedMemory);
        EXPECT_EQ(calls.freedLibraries, 1);
    };
    const char* const groups[] = {"Everyone", "Admin", "Power Users", "Users", "System", "Guest"};
    for (int i = 0; i < 6; ++i)
        check(std::string("AllocateAndInitializeSid for ") + groups[i] + " Group, Error = 2\n", {.failingSid = i + 1},
              i, 0);
    check("SetEntriesInAcl Error 2\n", {.failAcl = true}, 6, 0);
    check("LocalAlloc Error 2\n", {.failAlloc = true}, 6, 1);
    check("InitializeSecurityDescriptor Error 2\n", {.failInitialize = true}, 6, 2);
    check("SetSecurityDescriptorDacl Error 2\n", {.failDacl = true}, 6, 2);
    check("", {.noFunction = true}, 0, 0);
}
} // namespace
