// Searching files by name.
#pragma once

#include "afx/CFile.h"

/// A search through the files of one folder. FindFile begins it; the getters answer after the first FindNextFile.
class FRAMEWORK_API CFileFind : public CObject
{
    DECLARE_DYNAMIC(CFileFind)
public:
    CFileFind();
    ~CFileFind() override;

    /// Begins a search; wildcards in the last part of the path, "*.*" for null. FALSE when nothing matches.
    virtual BOOL FindFile(LPCSTR name = nullptr, DWORD unused = 0);
    /// Goes to the next file; FALSE when it is the last one (it counts nevertheless).
    virtual BOOL FindNextFile();
    void Close();

    virtual CString GetFileName() const;
    virtual CString GetFilePath() const;
    virtual CString GetFileTitle() const; ///< the name without its ending
    ULONGLONG GetLength() const;
    virtual BOOL MatchesMask(DWORD mask) const; ///< FILE_ATTRIBUTE_…
    virtual BOOL IsDots() const;                ///< "." or ".."
    BOOL IsDirectory() const;

private:
    HANDLE m_search;
    WIN32_FIND_DATAA m_found;
    WIN32_FIND_DATAA m_next;
    BOOL m_hasNext;
    CString m_root; // with a backslash at its end
};
