// The text type: sharing, every operation at its edges, formatting of any length.
#include "Extension.h"
#include "ids.h"
#include <afxwin.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

static_assert(sizeof(CString) == sizeof(char*), "a text is handed over in one register");

namespace
{
std::string Plain(const CString& text)
{
    return {static_cast<LPCSTR>(text), static_cast<size_t>(text.GetLength())};
}
} // namespace

TEST(String, Constructors)
{
    const unsigned char bytes[] = "bytes";
    EXPECT_EQ(Plain(CString()), "");
    EXPECT_EQ(Plain(CString(static_cast<LPCSTR>(nullptr))), "");
    EXPECT_EQ(Plain(CString('x', 3)), "xxx");
    EXPECT_EQ(Plain(CString('x', -1)), "");
    EXPECT_EQ(Plain(CString("abcdef", 3)), "abc");
    EXPECT_EQ(Plain(CString("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(Plain(CString(bytes)), "bytes");
    EXPECT_EQ(Plain(CString(L"wide \x00e4")), "wide \xe4");
}

TEST(String, CopiesShareUntilOneIsChanged)
{
    CString first("shared");
    const CString second(first);
    EXPECT_EQ(static_cast<LPCSTR>(first), static_cast<LPCSTR>(second));
    first.SetAt(0, 'S');
    EXPECT_EQ(first, "Shared");
    EXPECT_EQ(second, "shared");

    CString locked("locked");
    locked.LockBuffer();
    const CString copy(locked);
    EXPECT_NE(static_cast<LPCSTR>(locked), static_cast<LPCSTR>(copy));
    locked.UnlockBuffer();
    locked = locked;
    EXPECT_EQ(locked, copy);

    EXPECT_EQ(PassThrough(second), "shared!") << "by value through another module";
    EXPECT_EQ(second, "shared");
}

TEST(String, CountsItsSharersAcrossThreads)
{
    const CString shared("held by many");
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(
            [&shared]
            {
                for (int round = 0; round < 20000; ++round)
                {
                    CString copy(shared);
                    const CString another = copy;
                    copy += '.';
                }
            });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(shared, "held by many");
    CString last(shared);
    EXPECT_EQ(static_cast<LPCSTR>(last), static_cast<LPCSTR>(shared)) << "the buffer was freed while it was shared";
}

TEST(String, PartsAndSearches)
{
    const CString text("C:\\folder\\name.ext");
    EXPECT_EQ(text.Left(2), "C:");
    EXPECT_EQ(text.Left(99), text);
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Right(3), "ext");
    EXPECT_EQ(text.Right(99), text);
    EXPECT_EQ(text.Mid(3), "folder\\name.ext");
    EXPECT_EQ(text.Mid(3, 6), "folder");
    EXPECT_EQ(text.Mid(99, 1), "");
    EXPECT_EQ(text.SpanExcluding("."), "C:\\folder\\name");
    EXPECT_EQ(text.SpanIncluding("C:"), "C:");

    const CString twice("abcabc");
    EXPECT_EQ(twice.Find('b'), 1);
    EXPECT_EQ(twice.Find('b', 2), 4);
    EXPECT_EQ(twice.Find('b', 5), -1);
    EXPECT_EQ(twice.Find('\0'), -1);
    EXPECT_EQ(twice.Find("ca"), 2);
    EXPECT_EQ(twice.Find("abc", 1), 3);
    EXPECT_EQ(twice.Find("abc", 99), -1);
    EXPECT_EQ(twice.Find(""), 0);
    EXPECT_EQ(twice.ReverseFind('a'), 3);
    EXPECT_EQ(twice.ReverseFind('x'), -1);
    EXPECT_EQ(twice.FindOneOf("xc"), 2);
    EXPECT_EQ(twice.FindOneOf("xy"), -1);
}

TEST(String, Changes)
{
    const struct
    {
        const char* before;
        void (*change)(CString&);
        const char* after;
    } rows[] = {
        // clang-format off
        {"  \t a b \r\n", [](CString& s) { s.TrimLeft(); s.TrimRight(); }, "a b"},
        {"   ", [](CString& s) { s.TrimRight(); }, ""},
        {"xxaxx", [](CString& s) { s.TrimLeft('x'); }, "axx"},
        {"xyaxy", [](CString& s) { s.TrimRight("yx"); }, "xya"},
        {"aXb", [](CString& s) { s.MakeLower(); }, "axb"},
        {"aX\xe4", [](CString& s) { s.MakeUpper(); }, "AX\xc4"},
        {"abc", [](CString& s) { s.MakeReverse(); }, "cba"},
        {"a.b.c", [](CString& s) { EXPECT_EQ(s.Replace('.', '-'), 2); }, "a-b-c"},
        {"aaa", [](CString& s) { EXPECT_EQ(s.Replace("a", "aa"), 3); }, "aaaaaa"},
        {"one two", [](CString& s) { EXPECT_EQ(s.Replace(" two", ""), 1); }, "one"},
        {"abc", [](CString& s) { EXPECT_EQ(s.Replace("x", "y"), 0); }, "abc"},
        {"banana", [](CString& s) { EXPECT_EQ(s.Remove('a'), 3); }, "bnn"},
        {"ac", [](CString& s) { EXPECT_EQ(s.Insert(1, 'b'), 3); }, "abc"},
        {"ac", [](CString& s) { EXPECT_EQ(s.Insert(99, "d"), 3); }, "acd"},
        {"abc", [](CString& s) { EXPECT_EQ(s.Delete(1), 2); }, "ac"},
        {"abc", [](CString& s) { EXPECT_EQ(s.Delete(1, 99), 1); }, "a"},
        {"abc", [](CString& s) { s += s; s += static_cast<LPCSTR>(s) + 4; }, "abcabcbc"},
        {"abc", [](CString& s) { s = static_cast<LPCSTR>(s) + 1; }, "bc"},
        {"abc", [](CString& s) { s.Empty(); s += 'x'; }, "x"},
        {"abc", [](CString& s) { s.Format("<%s>", static_cast<LPCSTR>(s)); }, "<abc>"},
        {"abc", [](CString& s) { s.GetBufferSetLength(2); }, "ab"},
        {"abc", [](CString& s) { lstrcpyA(s.GetBuffer(10), "longer"); s.ReleaseBuffer(); s.FreeExtra(); }, "longer"},
        {"abc", [](CString& s) { s.GetBuffer(10)[1] = '\0'; s.ReleaseBuffer(); }, "a"},
        {"", [](CString& s) { s.GetBuffer(0)[0] = '\0'; s.ReleaseBuffer(); }, ""},
        // clang-format on
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.before);
        CString text(row.before);
        const CString witness(text); // shares the buffer: it must not see the change
        row.change(text);
        EXPECT_EQ(Plain(text), row.after);
        EXPECT_EQ(Plain(witness), row.before);
    }
    EXPECT_TRUE(CString().IsEmpty()) << "a change went to the text that all empty objects share";
}

TEST(String, Compares)
{
    const CString text("Mid");
    EXPECT_EQ(text.Compare("Mie"), -1);
    EXPECT_EQ(text.Compare("Mid"), 0);
    EXPECT_EQ(text.Compare("Mi"), 1);
    EXPECT_EQ(text.CompareNoCase("mID"), 0);
    EXPECT_EQ(text.Collate("Mid"), 0);
    EXPECT_LT(CString("a").Collate("B"), 0) << "by the locale, not by byte values";
    EXPECT_TRUE(text == CString("Mid") && text == "Mid" && "Mid" == text && text != "mid");
    EXPECT_TRUE(text < "Mie" && "Mie" > text && text <= CString("Mid") && text >= "Mi");
    EXPECT_EQ('<' + text + "|" + text + '>', "<Mid|Mid>");
}

TEST(String, FormatsTextOfAnyLength)
{
    CString text;
    const std::string huge(100000, 'x');
    text.Format("%s %5.2f %08lX", huge.c_str(), 3.14159, 0xABCDUL);
    EXPECT_EQ(Plain(text), huge + "  3.14 0000ABCD");
    text.Format("%s", "");
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_THROW(CString('x', INT_MAX), CMemoryException*);
}
