// Exceptions: their texts, and the functions that throw them.
#include "afx/CException.h"
#include <algorithm>
#include <array>
#include <cstring>

namespace
{
// Copies a description, cut to the buffer.
BOOL Describe(LPCSTR description, LPSTR error, UINT maximum, PUINT helpContext)
{
    if (helpContext)
        *helpContext = 0;
    if (!error || !maximum)
        return FALSE;
    const size_t length = std::min<size_t>(std::strlen(description), maximum - 1);
    std::memcpy(error, description, length);
    error[length] = '\0';
    return TRUE;
}

// One row a cause of CFileException, in the order of its values.
constexpr std::array CauseTexts = {
    "No error occurred.",
    "An unknown error occurred while accessing %s.",
    "%s was not found.",
    "%s contains an invalid path.",
    "%s could not be opened because there are too many open files.",
    "Access to %s was denied.",
    "An invalid file handle was associated with %s.",
    "%s could not be removed because it is the current folder.",
    "%s could not be created because the folder is full.",
    "Seek failed on %s.",
    "A hardware error was reported while accessing %s.",
    "A sharing violation occurred while accessing %s.",
    "A locking violation occurred while accessing %s.",
    "Disk full while accessing %s.",
    "An attempt was made to access %s past its end.",
};
static_assert(CauseTexts.size() == CFileException::endOfFile + 1);

struct OsErrorRow
{
    LONG osError;
    int cause;
};

constexpr std::array OsErrors = {
    OsErrorRow{NO_ERROR, CFileException::none},
    OsErrorRow{ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    OsErrorRow{ERROR_PATH_NOT_FOUND, CFileException::badPath},
    OsErrorRow{ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    OsErrorRow{ERROR_ACCESS_DENIED, CFileException::accessDenied},
    OsErrorRow{ERROR_INVALID_HANDLE, CFileException::invalidFile},
    OsErrorRow{ERROR_INVALID_DRIVE, CFileException::badPath},
    OsErrorRow{ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
    OsErrorRow{ERROR_NO_MORE_FILES, CFileException::fileNotFound},
    OsErrorRow{ERROR_WRITE_PROTECT, CFileException::accessDenied},
    OsErrorRow{ERROR_SEEK, CFileException::badSeek},
    OsErrorRow{ERROR_WRITE_FAULT, CFileException::hardIO},
    OsErrorRow{ERROR_READ_FAULT, CFileException::hardIO},
    OsErrorRow{ERROR_CRC, CFileException::hardIO},
    OsErrorRow{ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    OsErrorRow{ERROR_LOCK_VIOLATION, CFileException::lockViolation},
    OsErrorRow{ERROR_NOT_LOCKED, CFileException::lockViolation},
    OsErrorRow{ERROR_HANDLE_EOF, CFileException::endOfFile},
    OsErrorRow{ERROR_HANDLE_DISK_FULL, CFileException::diskFull},
    OsErrorRow{ERROR_DISK_FULL, CFileException::diskFull},
    OsErrorRow{ERROR_BAD_NETPATH, CFileException::badPath},
    OsErrorRow{ERROR_NETWORK_ACCESS_DENIED, CFileException::accessDenied},
    OsErrorRow{ERROR_BAD_NET_NAME, CFileException::badPath},
    OsErrorRow{ERROR_FILE_EXISTS, CFileException::accessDenied},
    OsErrorRow{ERROR_CANNOT_MAKE, CFileException::accessDenied},
    OsErrorRow{ERROR_INVALID_NAME, CFileException::badPath},
    OsErrorRow{ERROR_NEGATIVE_SEEK, CFileException::badSeek},
    OsErrorRow{ERROR_SEEK_ON_DEVICE, CFileException::badSeek},
    OsErrorRow{ERROR_BAD_PATHNAME, CFileException::badPath},
    OsErrorRow{ERROR_ALREADY_EXISTS, CFileException::accessDenied},
    OsErrorRow{ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
    OsErrorRow{ERROR_DIRECTORY, CFileException::badPath},
};
} // namespace

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

CException::CException() : CException(TRUE) {}

CException::CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext)
{
    Describe("", error, maximum, helpContext);
    return FALSE;
}

int CException::ReportError(UINT type, UINT messageId)
{
    char description[512];
    CString text;
    if (GetErrorMessage(description, sizeof description))
        text = description;
    else if (!messageId || !text.LoadString(messageId))
        text = "An unknown error has occurred.";
    return MessageBoxA(GetActiveWindow(), text, nullptr, type);
}

CMemoryException::CMemoryException() = default;

CMemoryException::CMemoryException(BOOL autoDelete) : CException(autoDelete) {}

BOOL CMemoryException::GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext)
{
    return Describe("Out of memory.", error, maximum, helpContext);
}

CNotSupportedException::CNotSupportedException() = default;

BOOL CNotSupportedException::GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext)
{
    return Describe("An attempt was made to perform an unsupported operation.", error, maximum, helpContext);
}

CResourceException::CResourceException() = default;

BOOL CResourceException::GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext)
{
    return Describe("A required resource was unavailable.", error, maximum, helpContext);
}

CUserException::CUserException() = default;

CFileException::CFileException(int cause, LONG osError, LPCSTR fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName)
{
}

int CFileException::OsErrorToException(LONG osError)
{
    const auto* row = std::find_if(OsErrors.begin(), OsErrors.end(),
                                   [osError](const OsErrorRow& each) { return each.osError == osError; });
    return row != OsErrors.end() ? row->cause : generic;
}

void CFileException::ThrowOsError(LONG osError, LPCSTR fileName)
{
    AfxThrowFileException(OsErrorToException(osError), osError, fileName);
}

BOOL CFileException::GetErrorMessage(LPSTR error, UINT maximum, PUINT helpContext)
{
    const bool known = m_cause >= none && m_cause <= endOfFile;
    CString text = CauseTexts[static_cast<size_t>(known ? m_cause : generic)];
    text.Replace("%s", m_strFileName.IsEmpty() ? "an unnamed file" : static_cast<LPCSTR>(m_strFileName));
    return Describe(text, error, maximum, helpContext);
}

void AfxThrowMemoryException()
{
    // Made beforehand: there may be no memory for it now.
    static CMemoryException exception(FALSE);
    throw &exception;
}

void AfxThrowNotSupportedException()
{
    throw new CNotSupportedException;
}

void AfxThrowResourceException()
{
    throw new CResourceException;
}

void AfxThrowUserException()
{
    throw new CUserException;
}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName)
{
    throw new CFileException(cause, osError, fileName);
}
