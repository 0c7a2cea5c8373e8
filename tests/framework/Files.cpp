// Files and file search, on a folder of the test's own.
#include <afx.h>
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

namespace
{
class Files : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder.Format("framework files %lu", GetCurrentProcessId());
        m_folder = TestFolder().c_str() + m_folder;
        ASSERT_TRUE(CreateDirectoryA(m_folder, nullptr));
    }
    void TearDown() override
    {
        std::error_code error;
        std::filesystem::remove_all(static_cast<LPCSTR>(m_folder), error);
        EXPECT_FALSE(error) << "a file was left open";
    }
    CString Path(LPCSTR name) const { return m_folder + "\\" + name; }
    void Make(LPCSTR name, LPCSTR content) const
    {
        CFile file(Path(name), CFile::modeCreate | CFile::modeWrite);
        file.Write(content, static_cast<UINT>(lstrlenA(content)));
    }
    CString Content(LPCSTR name) const
    {
        CFile file(Path(name), CFile::modeRead | CFile::shareDenyNone);
        CString content;
        const int length = static_cast<int>(file.GetLength());
        EXPECT_EQ(file.Read(content.GetBuffer(length), length + 10), static_cast<UINT>(length));
        content.ReleaseBuffer(length);
        return content;
    }

    CString m_folder;
};

/// Why the call failed.
template <class F>
int Cause(F call)
{
    try
    {
        call();
        return CFileException::none;
    }
    catch (CFileException* thrown)
    {
        const int cause = thrown->m_cause;
        thrown->Delete();
        return cause;
    }
}
} // namespace

TEST_F(Files, WriteReadSeekLength)
{
    CFile file(Path("a.txt"), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.GetLength(), 10u);
    EXPECT_EQ(file.Seek(-3, CFile::end), 7u);
    char buffer[10] = "";
    EXPECT_EQ(file.Read(buffer, 10), 3u);
    EXPECT_STREQ(buffer, "789");
    file.SeekToBegin();
    EXPECT_EQ(file.Seek(2, CFile::current), 2u);
    file.SetLength(5);
    EXPECT_EQ(file.SeekToEnd(), 5u);
    EXPECT_EQ(file.GetPosition(), 5u);
    file.Flush();
    EXPECT_EQ(file.GetFileName(), "a.txt");
    EXPECT_EQ(file.GetFilePath(), Path("a.txt"));
    file.Close();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(Content("a.txt"), "01234");
}

TEST_F(Files, CreationFlags)
{
    Make("kept.txt", "kept");
    constexpr UINT create = CFile::modeCreate | CFile::modeReadWrite;
    EXPECT_EQ(CFile(Path("kept.txt"), create | CFile::modeNoTruncate).GetLength(), 4u);
    EXPECT_EQ(CFile(Path("kept.txt"), create).GetLength(), 0u);
    EXPECT_EQ(CFile(Path("new.txt"), create | CFile::modeNoTruncate).GetLength(), 0u);
}

// Which second opening a share mode allows.
TEST_F(Files, ShareModes)
{
    Make("shared.txt", "x");
    const struct
    {
        UINT first, second;
        bool opens;
    } rows[] = {
        {CFile::modeRead | CFile::shareDenyNone, CFile::modeReadWrite | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareDenyWrite, CFile::modeRead | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareDenyWrite, CFile::modeWrite | CFile::shareDenyNone, false},
        {CFile::modeWrite | CFile::shareDenyRead, CFile::modeRead | CFile::shareDenyNone, false},
        {CFile::modeWrite | CFile::shareDenyRead, CFile::modeWrite | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareExclusive, CFile::modeRead | CFile::shareDenyNone, false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(testing::Message() << std::hex << row.first << ' ' << row.second);
        CFile first(Path("shared.txt"), row.first);
        CFile second;
        CFileException error;
        EXPECT_EQ(second.Open(Path("shared.txt"), row.second, &error) != FALSE, row.opens);
        EXPECT_EQ(error.m_cause, row.opens ? CFileException::none : CFileException::sharingViolation);
    }
}

TEST_F(Files, Failures)
{
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(Path("missing.txt"), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_lOsError, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error.m_strFileName, Path("missing.txt"));
    EXPECT_FALSE(file.Open(Path("missing.txt"), CFile::modeRead)) << "without an exception object it just fails";

    EXPECT_EQ(Cause([&] { CFile(Path("missing.txt"), CFile::modeRead); }), CFileException::fileNotFound);
    EXPECT_EQ(Cause([&] { CFile::Remove(Path("missing.txt")); }), CFileException::fileNotFound);
    Make("read.txt", "x");
    CFile reader(Path("read.txt"), CFile::modeRead);
    EXPECT_EQ(Cause([&] { reader.Write("y", 1); }), CFileException::accessDenied);
}

TEST_F(Files, SearchFindsEveryFileOnce)
{
    Make("one.txt", "1");
    Make("two.part.txt", "22");
    Make("three.ini", "333");
    CreateDirectoryA(Path("folder.txt"), nullptr);
    std::map<std::string, ULONGLONG> found; // their titles and lengths
    CFileFind find;
    for (BOOL more = find.FindFile(Path("*.txt")); more;)
    {
        more = find.FindNextFile();
        found[static_cast<LPCSTR>(find.GetFileTitle())] = find.IsDirectory() ? 0 : find.GetLength();
        EXPECT_EQ(find.GetFilePath(), Path(find.GetFileName()));
    }
    EXPECT_EQ(found, (std::map<std::string, ULONGLONG>{{"folder", 0}, {"one", 1}, {"two.part", 2}}));
    EXPECT_FALSE(find.FindNextFile());
    EXPECT_FALSE(find.FindFile(Path("*.none")));
}
