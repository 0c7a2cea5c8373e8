// Reading values that are not what the reader expects: bounded, or the default stays.
#include "system/internal/RegistryValue.h"
#include <gtest/gtest.h>
#include <tuple>
#include "RegistryWorld.h"
#include "system/CRegistry.h"
#include "system/internal/Handle.h"

namespace
{
const char* const Home = "Software\\RegistryValueTest";

TEST(RegistryValue, TextAndNumberOrTheirDefaults)
{
    const std::tuple<const char*, DWORD, std::string, const char*, DWORD> rows[] = {
        {"terminated", REG_SZ, std::string("abc\0", 4), "abc", 0x636261},
        {"unterminated", REG_SZ, "abc", "abc", 0x636261},
        {"short", REG_SZ, "ab", "ab", 7},
        {"binary", REG_BINARY, "abcd", "abcd", 0x64636261},
        {"embedded NUL", REG_BINARY, std::string("a\0b", 3), "a", 7},
        {"empty", REG_SZ, "", "", 7},
        {"fills the buffer", REG_BINARY, "12345678", "12345678", 7},
        {"one too long", REG_BINARY, "123456789", "default", 7},
        {"number", REG_DWORD, std::string("A\0\0\0", 4), "default", 65},
        {"short number", REG_DWORD, "AB", "default", 7},
        {"long number", REG_QWORD, std::string("A\0\0\0\0\0\0\0", 8), "default", 7},
    };
    RegistryWorld world;
    for (const auto& [name, type, bytes, text, number] : rows)
        world.Set(HKEY_CURRENT_USER, Home, name, type, bytes);
    tvk::RegistryKey raw;
    CRegistry key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, Home, 0, KEY_READ, raw.Receive()), 0);
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Home, 0, KEY_READ), 1);
    const auto check = [&](auto&& source)
    {
        for (const auto& [name, type, bytes, text, number] : rows)
        {
            SCOPED_TRACE(name);
            CString readText = "default";
            DWORD readNumber = 7;
            EXPECT_EQ(tvk::ReadText(source, name, readText, 8), std::string(text) != "default");
            EXPECT_EQ(readText, text);
            EXPECT_EQ(tvk::ReadNumber(source, name, readNumber), number != 7);
            EXPECT_EQ(readNumber, number);
        }
    };
    check(key);
    check(raw.Get());
    CString text = "default";
    EXPECT_FALSE(tvk::ReadText(key, "missing", text));
    EXPECT_EQ(text, "default");
}
} // namespace
