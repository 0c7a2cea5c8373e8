// Settings in the registry: whatever stands there, the reader gets a bounded text or a number, or keeps its default.
#pragma once

#include <afx.h>
#include "system/CRegistryException.h"

class CRegistry;

namespace tvk
{
/// Does what may throw the registry's exception; whether it did not.
template <class Operation>
bool Succeeds(Operation operation)
{
    try
    {
        operation();
        return true;
    }
    catch (CRegistryException* exception)
    {
        exception->Delete();
        return false;
    }
}

/// Size of the buffer that a text value is read into, unless the reader says otherwise.
constexpr DWORD RegistryTextSize = 260;

/// Reads a text value of the open key. The text ends at its first NUL or with the value, whichever comes first: writers
/// forget the NUL, and declare texts as binary data. Returns false and leaves `text` as it was (the default) when the
/// value is missing, may not be read, is a number, or is larger than `capacity` bytes.
bool ReadText(HKEY key, const char* name, CString& text, DWORD capacity = RegistryTextSize);
bool ReadText(CRegistry& key, const char* name, CString& text, DWORD capacity = RegistryTextSize);

/// Reads a number of the open key: a value of exactly four bytes, whatever its declared type. Returns false and leaves
/// `number` as it was (the default) when there is no such value.
bool ReadNumber(HKEY key, const char* name, DWORD& number);
bool ReadNumber(CRegistry& key, const char* name, DWORD& number);
} // namespace tvk
