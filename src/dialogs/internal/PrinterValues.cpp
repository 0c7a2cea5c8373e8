#include "dialogs/internal/PrinterValues.h"
#include <array>
#include "system/internal/RegistryValue.h"

namespace tvk
{
PrinterValues::PrinterValues(const CString& printer)
{
    m_registry.SetFriendlyName(printer);
}

bool PrinterValues::Select(const char* key)
{
    unsigned long disposition = 0;
    return Succeeds(
        [&] { m_registry.Create(disposition, nullptr, key, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr); });
}

std::optional<bool> PrinterValues::SelectExisting(const char* key)
{
    int opened = 0;
    const bool tried = Succeeds([&] { opened = m_registry.Open(nullptr, key, 0, KEY_ALL_ACCESS); });
    if (tried && !opened && m_registry.GetLastError() == ERROR_FILE_NOT_FOUND)
        return false;
    return opened ? std::optional(true) : std::nullopt;
}

bool PrinterValues::Has(const char* name)
{
    return Succeeds([&] { m_registry.Read(nullptr, nullptr, nullptr, name); });
}

std::optional<DWORD> PrinterValues::Number(const char* name)
{
    DWORD number = 0;
    return ReadNumber(m_registry, name, number) ? std::optional(number) : std::nullopt;
}

std::optional<DWORD> PrinterValues::WideNumber(const char* name)
{
    std::array<DWORD, 2> data = {};
    DWORD size = sizeof data;
    const bool read = Succeeds([&] { m_registry.Read(reinterpret_cast<BYTE*>(data.data()), &size, nullptr, name); });
    return read && size >= sizeof data[0] ? std::optional(data[0]) : std::nullopt;
}

std::optional<CString> PrinterValues::Text(const char* name, DWORD capacity)
{
    CString text;
    return ReadText(m_registry, name, text, capacity) ? std::optional(text) : std::nullopt;
}

void PrinterValues::WriteNumber(const char* name, DWORD number)
{
    Write(name, &number, sizeof number, REG_DWORD);
}

void PrinterValues::WriteWideNumber(const char* name, DWORD number)
{
    const std::array<DWORD, 2> data = {number, 0};
    Write(name, data.data(), sizeof data, REG_DWORD);
}

void PrinterValues::WriteText(const char* name, const CString& text)
{
    Write(name, static_cast<LPCSTR>(text), static_cast<DWORD>(text.GetLength()), REG_SZ);
}

void PrinterValues::Write(const char* name, const void* data, DWORD size, DWORD type)
{
    Succeeds([&] { m_registry.Write(name, static_cast<const BYTE*>(data), size, type); });
}
} // namespace tvk
