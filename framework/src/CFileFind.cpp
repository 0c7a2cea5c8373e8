// Searching files: the search runs one file ahead, so that FindNextFile can say whether its file is the last one.
#include "afx/CFileFind.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(CFileFind, CObject)

CFileFind::CFileFind() : m_search(INVALID_HANDLE_VALUE), m_found{}, m_next{}, m_hasNext(FALSE) {}

CFileFind::~CFileFind()
{
    Close();
}

void CFileFind::Close()
{
    if (m_search != INVALID_HANDLE_VALUE)
        FindClose(m_search);
    m_search = INVALID_HANDLE_VALUE;
    m_hasNext = FALSE;
    m_found = {};
}

BOOL CFileFind::FindFile(LPCSTR name, DWORD)
{
    Close();
    const CString pattern = name ? name : "*.*";
    CString full;
    const DWORD size = GetFullPathNameA(pattern, 0, nullptr, nullptr);
    GetFullPathNameA(pattern, size, full.GetBuffer(static_cast<int>(size)), nullptr);
    full.ReleaseBuffer();
    m_root = full.Left(std::max(full.ReverseFind('\\'), full.ReverseFind('/')) + 1);

    m_search = FindFirstFileA(pattern, &m_next);
    m_hasNext = m_search != INVALID_HANDLE_VALUE;
    return m_hasNext;
}

BOOL CFileFind::FindNextFile()
{
    if (!m_hasNext)
        return FALSE;
    m_found = m_next;
    m_hasNext = ::FindNextFileA(m_search, &m_next);
    return m_hasNext;
}

CString CFileFind::GetFileName() const
{
    return m_found.cFileName;
}

CString CFileFind::GetFilePath() const
{
    return m_root + m_found.cFileName;
}

CString CFileFind::GetFileTitle() const
{
    const CString name = m_found.cFileName;
    const int dot = name.ReverseFind('.');
    return dot < 0 || IsDots() ? name : name.Left(dot);
}

ULONGLONG CFileFind::GetLength() const
{
    return (static_cast<ULONGLONG>(m_found.nFileSizeHigh) << 32) | m_found.nFileSizeLow;
}

BOOL CFileFind::MatchesMask(DWORD mask) const
{
    return (m_found.dwFileAttributes & mask) != 0;
}

BOOL CFileFind::IsDots() const
{
    const CString name = m_found.cFileName;
    return IsDirectory() && (name == "." || name == "..");
}

BOOL CFileFind::IsDirectory() const
{
    return MatchesMask(FILE_ATTRIBUTE_DIRECTORY);
}
