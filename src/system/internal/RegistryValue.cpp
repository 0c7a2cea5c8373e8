// Settings read from the registry: whatever stands there, the reader gets a bounded text or a number, or keeps its
// default.
#include "system/internal/RegistryValue.h"
#include <cstring>
#include <vector>
#include "system/CRegistry.h"

namespace
{
/// Fills `data` with the value and returns whether that worked; `size` is the buffer's before and the value's after.
bool Query(HKEY key, const char* name, BYTE* data, DWORD& size, DWORD& type)
{
    return ::RegQueryValueExA(key, name, nullptr, &type, data, &size) == ERROR_SUCCESS;
}

bool Query(CRegistry& key, const char* name, BYTE* data, DWORD& size, DWORD& type)
{
    return tvk::Succeeds([&] { key.Read(data, &size, &type, name); });
}

template <class Key>
bool QueryText(Key&& key, const char* name, CString& text, DWORD capacity)
{
    std::vector<char> buffer(capacity);
    DWORD size = capacity, type = REG_NONE;
    if (!Query(key, name, reinterpret_cast<BYTE*>(buffer.data()), size, type))
        return false;
    if (type == REG_DWORD || type == REG_DWORD_BIG_ENDIAN || type == REG_QWORD)
        return false;
    text = CString(buffer.data(), static_cast<int>(::strnlen(buffer.data(), size)));
    return true;
}

template <class Key>
bool QueryNumber(Key&& key, const char* name, DWORD& number)
{
    DWORD value = 0, size = sizeof value, type = REG_NONE;
    if (!Query(key, name, reinterpret_cast<BYTE*>(&value), size, type) || size != sizeof value)
        return false;
    number = value;
    return true;
}
} // namespace

bool tvk::ReadText(HKEY key, const char* name, CString& text, DWORD capacity)
{
    return QueryText(key, name, text, capacity);
}

bool tvk::ReadText(CRegistry& key, const char* name, CString& text, DWORD capacity)
{
    return QueryText(key, name, text, capacity);
}

bool tvk::ReadNumber(HKEY key, const char* name, DWORD& number)
{
    return QueryNumber(key, name, number);
}

bool tvk::ReadNumber(CRegistry& key, const char* name, DWORD& number)
{
    return QueryNumber(key, name, number);
}
