// Unbuffered binary files.
#pragma once

#include "afx/CException.h"

/// A file of the system, closed by the destructor. Operations throw a CFileException unless said otherwise.
class FRAMEWORK_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)
public:
    /// How Open opens: one access right, one share mode, and any of the rest.
    enum OpenFlags
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,     ///< an existing file is cut to nothing
        modeNoTruncate = 0x2000, ///< with modeCreate: an existing file is kept as it is
        typeText = 0x4000,       ///< for derived classes
        typeBinary = 0x8000
    };
    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2
    };

    static const HANDLE hFileNull; ///< m_hFile of a file that is not open

    CFile();
    /// Takes the handle of an open file over.
    explicit CFile(HANDLE file);
    CFile(LPCSTR fileName, UINT openFlags);
    ~CFile() override;

    HANDLE m_hFile;
    operator HANDLE() const;

    /// FALSE on failure, with the reason in `error` when given; does not throw.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);
    /// Bytes read: fewer than asked for at the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    /// The new position from the beginning of the file.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    ULONGLONG SeekToEnd(); ///< the file's length
    void SeekToBegin();
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG newLength);
    virtual ULONGLONG GetPosition() const;
    virtual void Flush();
    virtual void Close();
    /// Closes without a word of failure.
    virtual void Abort();

    virtual CString GetFileName() const;  ///< the last part of the path
    virtual CString GetFileTitle() const; ///< the same as the system shows it
    virtual CString GetFilePath() const;  ///< the absolute path

    static void Remove(LPCSTR fileName);

protected:
    CString m_strFileName; ///< the absolute path
};
