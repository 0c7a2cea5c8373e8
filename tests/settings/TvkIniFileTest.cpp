// INI files: values found, missing and too long; failed writes.
#include "settings/TvkIniFile.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <fstream>
#include <tuple>

namespace
{
/// A product with a default text, and the path of an INI file that is gone after the test.
class TvkIniFileTest : public testing::Test
{
protected:
    ~TvkIniFileTest() override { DeleteFileA(m_file.c_str()); }

    void Write(const std::string& text) { std::ofstream(m_file, std::ios::binary) << text; }

    TestProduct m_product{{{"IDO_DEFAULTSTRING", "n/a"}}};
    std::string m_file = TestFolder() + "settings-" + std::to_string(GetCurrentProcessId()) + ".ini";
};
} // namespace

TEST_F(TvkIniFileTest, ReadsValuesAndDefaults)
{
    const std::string tooLong(300, 'v');
    Write("[Main]\r\nKey=value\r\nQuoted=\"a b\"\r\nDefaulted=n/a\r\nEmpty=\r\nSecond=second\r\nLong=" + tooLong +
          "\r\n");
    const std::tuple<const char*, const char*, std::string, std::string> table[] = {
        {"Main", "Key", "value", "value"},
        {"main", "KEY", "value", "value"},
        {"Main", "Quoted", "a b", "a b"},
        {"Main", "Empty", "", ""},
        {"Main", "Missing", "n/a", "second"},
        {"Main", "", "n/a", "second"},
        {"Main", "Defaulted", "n/a", "second"},
        {"Elsewhere", "Key", "n/a", "n/a"},
        {"Main", "Long", std::string(255, 'v'), std::string(255, 'v')},
    };
    TvkIniFile ini;
    for (const auto& [section, key, value, orSecond] : table)
    {
        SCOPED_TRACE(std::string(section) + " " + key);
        EXPECT_EQ(value, static_cast<LPCSTR>(ini.ReadINI(m_file.c_str(), key, section)));
        EXPECT_EQ(orSecond, static_cast<LPCSTR>(ini.ReadINI(m_file.c_str(), key, section, "Second")));
    }
    EXPECT_STREQ("n/a", ini.ReadINI(m_file.c_str(), "Missing", "Main", "Missing too"));
}

TEST_F(TvkIniFileTest, WritesWithSectionBeforeKeyAndReadsAMissingFileAsTheEmptyText)
{
    TvkIniFile ini;
    EXPECT_NE(0, ini.WriteINI(m_file.c_str(), "Main", "Key", "written"));
    EXPECT_STREQ("written", ini.ReadINI(m_file.c_str(), "Key", "Main"));
    DeleteFileA(m_file.c_str());
    EXPECT_STREQ("", ini.ReadINI(m_file.c_str(), "Key", "Main"));
    EXPECT_STREQ("", ini.ReadINI(m_file.c_str(), "Key", "Main", "Second"));
    EXPECT_STREQ("", ini.ReadINI("", "Key", "Main"));
}

TEST_F(TvkIniFileTest, AFailedWriteIsTracedWithItsError)
{
    Write("[Main]\r\n");
    const HANDLE held = CreateFileA(m_file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const std::pair<std::string, const char*> table[] = {{m_file, "(DWORD)32"},
                                                         {TestFolder() + "nowhere\\x.ini", "(DWORD)3"}};
    for (const auto& [file, error] : table)
    {
        TraceWorld trace;
        TvkIniFile ini;
        trace.Clear();
        EXPECT_EQ(0, ini.WriteINI(file.c_str(), "Main", "Key", "value"));
        EXPECT_THAT(trace.Records(), testing::ElementsAre("(char)GetLastError() Return Code (WriteINI)", error));
    }
    CloseHandle(held);
}

TEST(TvkIniFileWithoutDefaultTest, ReadsMissingValuesAsAnyMissingSetting)
{
    const TestProduct product({});
    TvkIniFile ini;
    char system[MAX_PATH] = "";
    GetWindowsDirectoryA(system, MAX_PATH);
    EXPECT_STREQ("ERROR", ini.ReadINI(CString(system) + "\\win.ini", "IDO_NO_SUCH_KEY", "nowhere"));
}
