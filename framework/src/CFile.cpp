// Files of the system. Every failure becomes a CFileException with the system's error number.
#include "afx/CFile.h"
#include <algorithm>
#include <cstring>

namespace
{
CString FullPath(LPCSTR path)
{
    CString full;
    const DWORD size = GetFullPathNameA(path, 0, nullptr, nullptr);
    if (!size)
        return path;
    GetFullPathNameA(path, size, full.GetBuffer(static_cast<int>(size)), nullptr);
    full.ReleaseBuffer();
    return full;
}

CString LastPart(const CString& path)
{
    const int separator = std::max({path.ReverseFind('\\'), path.ReverseFind('/'), path.ReverseFind(':')});
    return path.Mid(separator + 1);
}

LONGLONG ToLongLong(DWORD high, DWORD low)
{
    return static_cast<LONGLONG>((static_cast<ULONGLONG>(high) << 32) | low);
}

void Fill(CFileStatus& status, const WIN32_FILE_ATTRIBUTE_DATA& data, LPCSTR path)
{
    status.m_ctime = data.ftCreationTime;
    status.m_mtime = data.ftLastWriteTime;
    status.m_atime = data.ftLastAccessTime;
    status.m_size = static_cast<ULONGLONG>(ToLongLong(data.nFileSizeHigh, data.nFileSizeLow));
    status.m_attribute = data.dwFileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL);
    lstrcpynA(status.m_szFullName, path, MAX_PATH);
}
} // namespace

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

IMPLEMENT_DYNAMIC(CFile, CObject)

CFile::CFile() : m_hFile(hFileNull) {}

CFile::CFile(HANDLE file) : m_hFile(file) {}

CFile::CFile(LPCSTR fileName, UINT openFlags) : m_hFile(hFileNull)
{
    CFileException error;
    if (!CFile::Open(fileName, openFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    CFile::Abort();
}

CFile::operator HANDLE() const
{
    return m_hFile;
}

BOOL CFile::Open(LPCSTR fileName, UINT openFlags, CFileException* error)
{
    Abort();
    m_strFileName = FullPath(fileName);

    static constexpr DWORD Access[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE, GENERIC_READ};
    DWORD share = 0; // shareCompat is as exclusive as shareExclusive
    switch (openFlags & 0x70)
    {
    case shareDenyWrite:
        share = FILE_SHARE_READ;
        break;
    case shareDenyRead:
        share = FILE_SHARE_WRITE;
        break;
    case shareDenyNone:
        share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        break;
    default:
        break;
    }
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, nullptr, (openFlags & modeNoInherit) == 0};
    DWORD disposition = OPEN_EXISTING;
    if (openFlags & modeCreate)
        disposition = openFlags & modeNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;

    m_hFile =
        CreateFileA(fileName, Access[openFlags & 3], share, &attributes, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_hFile != hFileNull)
        return TRUE;
    const auto osError = static_cast<LONG>(GetLastError());
    if (error)
    {
        error->m_lOsError = osError;
        error->m_cause = CFileException::OsErrorToException(osError);
        error->m_strFileName = fileName;
    }
    m_strFileName.Empty();
    SetLastError(static_cast<DWORD>(osError));
    return FALSE;
}

UINT CFile::Read(void* buffer, UINT count)
{
    DWORD done = 0;
    if (count && !ReadFile(m_hFile, buffer, count, &done, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return done;
}

void CFile::Write(const void* buffer, UINT count)
{
    if (!count)
        return;
    DWORD done = 0;
    if (!WriteFile(m_hFile, buffer, count, &done, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    if (done != count)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from)
{
    LARGE_INTEGER distance;
    LARGE_INTEGER position;
    distance.QuadPart = offset;
    if (!SetFilePointerEx(m_hFile, distance, &position, from))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::SeekToEnd()
{
    return Seek(0, end);
}

void CFile::SeekToBegin()
{
    Seek(0, begin);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(m_hFile, &size))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(size.QuadPart);
}

void CFile::SetLength(ULONGLONG newLength)
{
    Seek(static_cast<LONGLONG>(newLength), begin);
    if (!SetEndOfFile(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER position;
    if (!SetFilePointerEx(m_hFile, {}, &position, FILE_CURRENT))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

void CFile::LockRange(ULONGLONG position, ULONGLONG count)
{
    if (!LockFile(m_hFile, static_cast<DWORD>(position), static_cast<DWORD>(position >> 32), static_cast<DWORD>(count),
                  static_cast<DWORD>(count >> 32)))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::UnlockRange(ULONGLONG position, ULONGLONG count)
{
    if (!UnlockFile(m_hFile, static_cast<DWORD>(position), static_cast<DWORD>(position >> 32),
                    static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile != hFileNull && !FlushFileBuffers(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::Close()
{
    const BOOL closed = m_hFile == hFileNull || CloseHandle(m_hFile);
    const DWORD osError = GetLastError();
    const CString name = m_strFileName;
    m_hFile = hFileNull;
    m_strFileName.Empty();
    if (!closed)
        CFileException::ThrowOsError(static_cast<LONG>(osError), name);
}

void CFile::Abort()
{
    if (m_hFile != hFileNull)
        CloseHandle(m_hFile);
    m_hFile = hFileNull;
    m_strFileName.Empty();
}

CString CFile::GetFileName() const
{
    return LastPart(m_strFileName);
}

CString CFile::GetFileTitle() const
{
    char title[MAX_PATH];
    return ::GetFileTitleA(m_strFileName, title, MAX_PATH) == 0 ? CString(title) : GetFileName();
}

CString CFile::GetFilePath() const
{
    return m_strFileName;
}

void CFile::SetFilePath(LPCSTR path)
{
    m_strFileName = path;
}

BOOL CFile::GetStatus(CFileStatus& status) const
{
    status = {};
    lstrcpynA(status.m_szFullName, m_strFileName, MAX_PATH);
    if (m_hFile == hFileNull)
        return TRUE;
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(m_hFile, &information))
        return FALSE;
    const WIN32_FILE_ATTRIBUTE_DATA data = {information.dwFileAttributes, information.ftCreationTime,
                                            information.ftLastAccessTime, information.ftLastWriteTime,
                                            information.nFileSizeHigh,    information.nFileSizeLow};
    Fill(status, data, m_strFileName);
    return TRUE;
}

BOOL CFile::GetStatus(LPCSTR fileName, CFileStatus& status)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(fileName, GetFileExInfoStandard, &data))
        return FALSE;
    Fill(status, data, FullPath(fileName));
    return TRUE;
}

void CFile::Rename(LPCSTR oldName, LPCSTR newName)
{
    if (!MoveFileA(oldName, newName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), oldName);
}

void CFile::Remove(LPCSTR fileName)
{
    if (!DeleteFileA(fileName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), fileName);
}
