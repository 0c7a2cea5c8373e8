// Keys with return codes: results, stored errors, trace lines, and who owns the trace object.
#include "RegistrySupport.h"
#include <functional>
#include <optional>
#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "system/CSafeRegistry.h"
#include "system/internal/Handle.h"

namespace
{
class CSafeRegistryTest : public RegistryKeyTest
{
protected:
    TraceWorld m_trace{1};
};

TEST_F(CSafeRegistryTest, FailuresAreResultsAndTraceLines)
{
    const IatPatch patch( // Wine's never fails
        LibraryUnderTest(), "RegRestoreKeyA",
        +[](HKEY key, LPCSTR file, DWORD flags) -> LONG
        { return key && std::string(file) == "C:\\f" && flags == 8 ? ERROR_NOT_REGISTRY_FILE : 0; });
    char name[8];
    BYTE data[2];
    DWORD size = sizeof data, disposition = 0;
    const struct
    {
        std::function<long(CSafeRegistry&)> operation; // done on the opened key
        long result, error;
        const char* line = nullptr;
    } rows[] = {
        {[&](auto& k) { return k.Create(disposition, reinterpret_cast<HKEY>(0x7ff0), "path", 0, KEY_READ, nullptr); },
         0, 6, R"(Create failed to create "path" "path")"},
        {[](auto& k) { return k.Remove("no"); }, 0, 2, R"(Remove failed to remove "%" "no")"},
        {[](auto& k) { return k.Remove("child"); }, 0, 5, R"(Remove failed to remove "%" "child")"},
        {[](auto& k) { return k.DeleteValue("no"); }, 0, 2, R"(DeleteValue failed to delete "%" "no")"},
        {[&](auto& k) { return k.Close(), k.Write("x", data, 2, REG_BINARY); }, 0, 6,
         R"(Write failed to write "%" "x")"},
        {[&](auto& k) { return k.Read(data, &(size = 2), nullptr, "no"); }, 0, 2, R"(Read failed to read "%" "no")"},
        {[&](auto& k) { return k.Read(data, &(size = 2), nullptr, "text"); }, 0, 234,
         R"(Read failed to read "%" "text")"},
        {[&](auto& k) { return k.EnumValue(0, name, &(size = 4), nullptr, nullptr, nullptr); }, 234, 234,
         "EnumValue failed on index: 0"},
        {[&](auto& k) { return k.EnumKey(0, name, &(size = 4), nullptr, nullptr, nullptr); }, 234, 234,
         "EnumKey failed on index 0"},
        {[](auto& k) { return k.SaveKey("C:\\f.hiv", nullptr); }, 0, 1314,
         R"(SaveKey failed to write "%" to "C:\f.hiv")"},
        {[](auto& k) { return k.LoadKey("m", "C:\\f"); }, 0, 2, R"(LoadKey failed to create "%" "m" from "C:\f")"},
        {[](auto& k) { return k.UnloadKey("no"); }, 0, 1314, R"(UnloadKey failed to unload "%" "no")"},
        {[](auto& k) { return k.RestoreKey("C:\\f", 8); }, 0, 1017, R"(RestoreKey failed to restore "%" from "C:\f")"},
        {[](auto& k)
         {
             CSafeRegistry copy(k);
             copy.Close();
             return Open(k);
         },
         0, 6, R"(Open failed to open "%" "Software\RegistryTest")"},
        // No failures, or none that is traced.
        {[](auto& k) { return k.Open(HKEY_CURRENT_USER, "Software\\no", 0, KEY_READ); }, 0, 2},
        {[&](auto& k) { return k.EnumValue(9, name, &(size = 8), nullptr, nullptr, nullptr); }, 259, 259},
        {[&](auto& k) { return k.EnumKey(9, name, &(size = 8), nullptr, nullptr, nullptr); }, 259, 259},
        {[&](auto& k) { return k.EnumKey(0, name, &(size = 8), nullptr, nullptr, nullptr); }, 0, 0},
        {[](auto& k) { return k.RestoreKey("C:\\f", 0); }, 1, 0},
        {[](auto& k) { return k.Write("x", Bytes("y"), 2, REG_SZ); }, 1, 0},
        {[](auto& k) { return k.Read(nullptr, nullptr, nullptr, "x"); }, 1, 0},
        {[](auto& k) { return k.DeleteValue("x"); }, 1, 0},
        {[&](auto& k) { return k.Create(disposition, HKEY_CURRENT_USER, Home, 0, KEY_READ, nullptr); }, 1, 0},
        {[](auto& k) { return k.Remove("child\\grandchild"); }, 1, 0},
    };
    for (const int trace : {1, 0})
        for (const auto& row : rows)
        {
            m_world.Key(HKEY_CURRENT_USER, Path("child\\grandchild"));
            m_trace.Clear();
            CSafeRegistry key(trace);
            ASSERT_EQ(Open(key), 1);
            EXPECT_EQ(row.operation(key), row.result) << (row.line ? row.line : "no line");
            EXPECT_EQ(key.GetLastError(), row.error) << (row.line ? row.line : "no line");
            std::string line = std::string("(char)CSafeRegistry::") + (row.line ? row.line : "");
            if (const std::size_t mark = line.find('%'); mark != std::string::npos)
                line.replace(mark, 1, Home);
            const bool written = trace && row.line;
            EXPECT_EQ(m_trace.Records(), written ? std::vector<std::string>{line} : std::vector<std::string>{});
        }
    DeleteFileA("C:\\f.hiv"); // Wine leaves an empty file behind
}

TEST_F(CSafeRegistryTest, ReadOrCreateWritesTheDefaultOnce)
{
    CSafeRegistry key(0);
    ASSERT_EQ(Open(key), 1);
    char data[8] = "";
    DWORD size = sizeof data, type = 0;
    const auto read = [&](const char* name)
    { return key.ReadOrCreate(name, reinterpret_cast<BYTE*>(data), &size, &type, Bytes("first"), 6, REG_SZ); };
    EXPECT_EQ(read("new"), 1);
    EXPECT_STREQ(data, "first");
    EXPECT_EQ(m_world.Get(HKEY_CURRENT_USER, Home, "new"), std::string("first", 6));
    key.Write("new", Bytes("other"), 6, REG_SZ);
    EXPECT_EQ(read("new"), 1);
    EXPECT_STREQ(data, "other");
    key.Write("new", Bytes("a longer text"), 14, REG_SZ);
    size = sizeof data;
    EXPECT_EQ(read("new"), 1); // too large for the buffer: replaced by the default, read with the size it left
    EXPECT_STREQ(data, "first");
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Home, 0, KEY_READ), 1);
    EXPECT_EQ(read("another"), 0);
    EXPECT_EQ(key.GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(CSafeRegistryTest, ThroughItsBaseItThrowsAndTheBasesVirtualOperationsAreCalled)
{
    struct Refusing : CSafeRegistry
    {
        void Remove(const char*) override { throw new CRegistryException(99); }
        long GetLastError() override { return 99; }
    } key;
    CSafeRegistry& safe = key;
    EXPECT_EQ(safe.Remove("x"), 0);
    EXPECT_EQ(safe.GetLastError(), 99);
    EXPECT_EQ(Thrown([&] { static_cast<CRegistry&>(key).DeleteValue("no"); }), ERROR_INVALID_HANDLE);
}

TEST_F(CSafeRegistryTest, CopiesShareTheTraceUntilTheLastIsGone)
{
    std::optional<CSafeRegistry> first(std::in_place, 1), second(first), third(std::in_place, 0);
    *third = *first;
    *third = *third;
    EXPECT_EQ(third->Remove("a"), 0);
    first.reset();
    EXPECT_EQ(second->Remove("b"), 0);
    second.reset();
    EXPECT_EQ(third->Remove("c"), 0);
    EXPECT_EQ(m_trace.Records().size(), 3u);
    const auto logIsHeld = [] { return !DeleteFileA(TraceWorld::LogPath().c_str()); };
    EXPECT_TRUE(logIsHeld());
    *third = CSafeRegistry(0);
    EXPECT_FALSE(logIsHeld());
    EXPECT_EQ(third->Remove("d"), 0);
    EXPECT_EQ(m_trace.Records().size(), 0u);
}

TEST_F(CSafeRegistryTest, ForwardsTheRest)
{
    CSafeRegistry key(HKEY_CURRENT_USER, "Software", 0, 0, 1);
    EXPECT_EQ(key.GetSubKey(), "Software");
    EXPECT_EQ(key.GetOSVer(), CRegistry().GetOSVer());
    EXPECT_EQ(key.GetOSPlatform(), CRegistry().GetOSPlatform());
    EXPECT_TRUE(tvk::LocalMemory<void>(key.CreateSecurityDescriptor()));
    key.InitMode(3);
    EXPECT_EQ(key.Open(nullptr, "no", 0, KEY_READ), 1); // what the constructor mapped
    key.InitMode(1);
    key.SetFriendlyName("P");
    EXPECT_EQ(key.Open(nullptr, "S", 0, KEY_READ), 0);
    EXPECT_EQ(key.GetSubKey(), "Printers\\P\\GUI\\S");
}
} // namespace
