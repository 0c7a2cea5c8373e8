// The registry values of one printer, read and written without exceptions: what cannot be read has a default, and what
// cannot be written is lost.
#pragma once

#include <afx.h>
#include <optional>
#include "system/CRegistry.h"

namespace tvk
{
class PrinterValues
{
public:
    /// @param printer  its friendly name
    explicit PrinterValues(const CString& printer);

    /// Opens the printer's key of this name, and makes it when there is none. Until a key could be opened nothing can
    /// be read or written.
    bool Select(const char* key);
    /// The same for a key that is only read: it is not made. Whether there is such a key, nothing when it may not be
    /// opened.
    std::optional<bool> SelectExisting(const char* key);

    bool Has(const char* name);
    /// A value of four bytes, whatever its declared type.
    std::optional<DWORD> Number(const char* name);
    /// The first four of at most eight bytes: what WriteWideNumber stored, or a plain number.
    std::optional<DWORD> WideNumber(const char* name);
    /// A text of at most `capacity` bytes.
    std::optional<CString> Text(const char* name, DWORD capacity);

    void WriteNumber(const char* name, DWORD number);
    /// The number and four bytes of padding: a REG_DWORD like every number, but eight bytes long.
    void WriteWideNumber(const char* name, DWORD number);
    /// The text without its terminator.
    void WriteText(const char* name, const CString& text);

private:
    void Write(const char* name, const void* data, DWORD size, DWORD type);

    CRegistry m_registry;
};
} // namespace tvk
