// Files of the system. Every failure becomes a CFileException with the system's error number.
#include "afx/CFile.h"
#include <algorithm>

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

void CFile::Remove(LPCSTR fileName)
{
    if (!DeleteFileA(fileName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), fileName);
}
