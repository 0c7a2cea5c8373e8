// The framework's exceptions: thrown as pointers to heap objects, caught by type, ended by the catcher with Delete().
#pragma once

#include "afx/CObject.h"
#include "afx/CString.h"

/// The base of all exceptions of the framework.
class FRAMEWORK_API CException : public CObject
{
    DECLARE_DYNAMIC(CException)
public:
    CException();
    /// `autoDelete`: whether Delete() deletes the object, that is, whether it lies on the heap.
    explicit CException(BOOL autoDelete);
    ~CException() override;

    /// Called once by the catcher, in place of the delete operator.
    void Delete();
    /// Puts a description into the buffer (cut to its size, always terminated). FALSE when there is none.
    virtual BOOL GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext = nullptr);
    /// Shows the description, or the text `messageId` when there is none, in a message box; answers its result.
    virtual int ReportError(UINT type = MB_OK, UINT messageId = 0);

protected:
    BOOL m_bAutoDelete;
};

/// Memory ran out.
class FRAMEWORK_API CMemoryException : public CException
{
    DECLARE_DYNAMIC(CMemoryException)
public:
    CMemoryException();
    explicit CMemoryException(BOOL autoDelete);
    BOOL GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext = nullptr) override;
};

/// An unsupported operation was asked for.
class FRAMEWORK_API CNotSupportedException : public CException
{
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    CNotSupportedException();
    BOOL GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext = nullptr) override;
};

/// A system resource (a device context, a window, a resource) could not be obtained.
class FRAMEWORK_API CResourceException : public CException
{
    DECLARE_DYNAMIC(CResourceException)
public:
    CResourceException();
    BOOL GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext = nullptr) override;
};

/// Ends an operation after the user has been told why.
class FRAMEWORK_API CUserException : public CException
{
    DECLARE_DYNAMIC(CUserException)
public:
    CUserException();
};

/// A file operation failed.
class FRAMEWORK_API CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)
public:
    enum
    {
        none,
        generic,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG osError = -1, LPCSTR fileName = nullptr);

    int m_cause;     ///< one of the values above
    LONG m_lOsError; ///< the system's error number, -1 when unknown
    CString m_strFileName;

    /// The cause that belongs to a system error number.
    static int OsErrorToException(LONG osError);
    /// Throws the exception that belongs to a system error number.
    [[noreturn]] static void ThrowOsError(LONG osError, LPCSTR fileName = nullptr);
    BOOL GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext = nullptr) override;
};

[[noreturn]] FRAMEWORK_API void AfxThrowMemoryException();
[[noreturn]] FRAMEWORK_API void AfxThrowNotSupportedException();
[[noreturn]] FRAMEWORK_API void AfxThrowResourceException();
[[noreturn]] FRAMEWORK_API void AfxThrowUserException();
[[noreturn]] FRAMEWORK_API void AfxThrowFileException(int cause, LONG osError = -1, LPCSTR fileName = nullptr);
