// Files and file search, on a folder of the test's own.
#include <afx.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

namespace
{
class Files : public testing::Test
{
  protected:
    void SetUp() override
    {
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        m_folder.Format("%sframework files %lu", temp, GetCurrentProcessId());
        ASSERT_TRUE(CreateDirectoryA(m_folder, nullptr));
    }
    void TearDown() override
    {
        CFileFind find;
        for (BOOL more = find.FindFile(Path("*")); more;)
        {
            more = find.FindNextFile();
            if (find.IsDots())
                continue;
            SetFileAttributesA(find.GetFilePath(), FILE_ATTRIBUTE_NORMAL);
            if (find.IsDirectory())
                RemoveDirectoryA(find.GetFilePath());
            else
                DeleteFileA(find.GetFilePath());
        }
        find.Close();
        EXPECT_TRUE(RemoveDirectoryA(m_folder)) << "a file was left open";
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
        const auto length = static_cast<UINT>(file.GetLength());
        EXPECT_EQ(file.Read(content.GetBuffer(static_cast<int>(length)), length + 10), length);
        content.ReleaseBuffer(static_cast<int>(length));
        return content;
    }

    CString m_folder;
};
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
    CFile kept(Path("kept.txt"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);
    EXPECT_EQ(kept.GetLength(), 4u);
    kept.Close();
    CFile cut(Path("kept.txt"), CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(cut.GetLength(), 0u);
    cut.Close();
    CFile made(Path("new.txt"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
    EXPECT_EQ(made.GetLength(), 0u);
}

// Which second opening a share mode allows.
TEST_F(Files, ShareModes)
{
    Make("shared.txt", "x");
    struct Row
    {
        UINT first, second;
        bool opens;
    };
    const Row rows[] = {
        {CFile::modeRead | CFile::shareDenyNone, CFile::modeReadWrite | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareDenyWrite, CFile::modeRead | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareDenyWrite, CFile::modeWrite | CFile::shareDenyNone, false},
        {CFile::modeWrite | CFile::shareDenyRead, CFile::modeRead | CFile::shareDenyNone, false},
        {CFile::modeWrite | CFile::shareDenyRead, CFile::modeWrite | CFile::shareDenyNone, true},
        {CFile::modeRead | CFile::shareExclusive, CFile::modeRead | CFile::shareDenyNone, false},
    };
    for (const Row& row : rows)
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

    EXPECT_THROW(
        try { CFile(Path("missing.txt"), CFile::modeRead); } catch (CFileException* thrown) {
            EXPECT_EQ(thrown->m_lOsError, ERROR_FILE_NOT_FOUND);
            thrown->Delete();
            throw 1;
        },
        int);
    EXPECT_THROW(
        try { CFile::Remove(Path("missing.txt")); } catch (CFileException* thrown) {
            thrown->Delete();
            throw 1;
        },
        int);

    Make("read.txt", "x");
    CFile reader(Path("read.txt"), CFile::modeRead);
    EXPECT_THROW(
        try { reader.Write("y", 1); } catch (CFileException* thrown) {
            EXPECT_EQ(thrown->m_cause, CFileException::accessDenied);
            thrown->Delete();
            throw 1;
        },
        int);
}

TEST_F(Files, LockedRangesExcludeOtherHandles)
{
    Make("locked.txt", "0123456789");
    CFile first(Path("locked.txt"), CFile::modeReadWrite | CFile::shareDenyNone);
    CFile second(Path("locked.txt"), CFile::modeReadWrite | CFile::shareDenyNone);
    first.LockRange(2, 3);
    EXPECT_THROW(
        try { second.LockRange(4, 1); } catch (CFileException* thrown) {
            EXPECT_EQ(thrown->m_cause, CFileException::lockViolation);
            thrown->Delete();
            throw 1;
        },
        int);
    first.UnlockRange(2, 3);
    second.LockRange(4, 1);
    second.UnlockRange(4, 1);
}

TEST_F(Files, StatusRenameRemove)
{
    Make("old.txt", "12345");
    SetFileAttributesA(Path("old.txt"), FILE_ATTRIBUTE_READONLY);
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(Path("old.txt"), status));
    EXPECT_EQ(status.m_size, 5u);
    EXPECT_EQ(status.m_attribute & CFile::readOnly, static_cast<DWORD>(CFile::readOnly));
    EXPECT_STREQ(status.m_szFullName, Path("old.txt"));
    EXPECT_LT((CTime::GetCurrentTime() - status.m_mtime).GetTotalSeconds(), 60);
    SetFileAttributesA(Path("old.txt"), FILE_ATTRIBUTE_NORMAL);
    CFile::Rename(Path("old.txt"), Path("new.txt"));
    EXPECT_FALSE(CFile::GetStatus(Path("old.txt"), status));
    CFile::Remove(Path("new.txt"));
    EXPECT_FALSE(CFile::GetStatus(Path("new.txt"), status));
}

TEST_F(Files, SearchFindsEveryFileOnce)
{
    Make("one.txt", "1");
    Make("two.part.txt", "22");
    Make("three.ini", "333");
    CreateDirectoryA(Path("folder.txt"), nullptr);
    std::map<std::string, ULONGLONG> found;
    std::set<std::string> titles;
    CFileFind find;
    BOOL more = find.FindFile(Path("*.txt"));
    while (more)
    {
        more = find.FindNextFile();
        found[static_cast<LPCSTR>(find.GetFileName())] = find.IsDirectory() ? 0 : find.GetLength();
        titles.insert(static_cast<LPCSTR>(find.GetFileTitle()));
        EXPECT_EQ(find.GetFilePath(), Path(find.GetFileName()));
        CTime written;
        EXPECT_TRUE(find.GetLastWriteTime(written));
        EXPECT_GT(written.GetYear(), 2000);
    }
    EXPECT_EQ(found, (std::map<std::string, ULONGLONG>{{"folder.txt", 0}, {"one.txt", 1}, {"two.part.txt", 2}}));
    EXPECT_EQ(titles, (std::set<std::string>{"folder", "one", "two.part"}));
    EXPECT_FALSE(find.FindNextFile());
    EXPECT_FALSE(find.FindFile(Path("*.none")));
}
