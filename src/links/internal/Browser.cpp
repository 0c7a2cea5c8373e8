// The browser as it is registered, and what the shell says when it cannot open an address.
#include "links/internal/Browser.h"
#include "system/internal/Handle.h"
#include "system/internal/RegistryValue.h"
#include "system/internal/Tables.h"
#include <algorithm>
#include <array>
#include <cstring>

namespace
{
/// What an error of the shell means to the user.
struct ShellError
{
    int code;
    const char* text;
};
constexpr auto ShellErrors = std::to_array<ShellError>({
    {0, "The operating system is out\nof memory or resources."},
    {2, "The specified file was not found."},
    {3, "The specified path was not found."},
    {5, "The operating system denied\naccess to the specified file."},
    {8, "There was not enough memory to complete the operation."},
    {11, "The .EXE file is invalid\n(non-Win32 .EXE or error in .EXE image)."},
    {26, "A sharing violation occurred. "},
    {27, "The filename association is\nincomplete or invalid."},
    {28, "The DDE transaction could not\nbe completed because the request timed out."},
    {29, "The DDE transaction failed."},
    {30, "The DDE transaction could not\nbe completed because other DDE transactions\nwere being processed."},
    {31, "There is no application associated\nwith the given filename extension."},
    {32, "The specified dynamic-link library was not found."},
});
static_assert(tvk::AreUnique(ShellErrors, &ShellError::code));

/// The browser's command with the address in place of its placeholder and all that follows it.
CString WithAddress(const CString& browserCommand, const char* address)
{
    for (const char* const placeholder : {"\"%1\"", "%1"})
    {
        const int at = browserCommand.Find(placeholder);
        if (at >= 0)
            return browserCommand.Left(at) + " " + address;
    }
    return browserCommand + " " + address;
}

} // namespace

namespace tvk
{
CString ShellErrorText(int error)
{
    const auto known = std::find_if(ShellErrors.begin(), ShellErrors.end(),
                                    [error](const ShellError& row) { return row.code == error; });
    CString text;
    if (known != ShellErrors.end())
        text = known->text;
    else
        text.Format("Unknown Error (%d) occurred.", error);
    return "Can't open link:\n\n" + text;
}

long ReadDefaultText(HKEY root, const char* keyPath, char* output)
{
    RegistryKey key;
    const long result = ::RegOpenKeyExA(root, keyPath, 0, KEY_QUERY_VALUE, key.Receive());
    if (result != ERROR_SUCCESS)
        return result;
    CString text;
    ReadText(key.Get(), nullptr, text);
    if (text.GetLength() >= static_cast<int>(RegistryTextSize)) // it came without a NUL
        text.Empty();
    std::memcpy(output, static_cast<LPCSTR>(text), static_cast<size_t>(text.GetLength()) + 1);
    return result;
}

CString BrowserCommandLine(const char* address)
{
    char documentClass[RegistryTextSize] = "", command[RegistryTextSize] = "";
    if (ReadDefaultText(HKEY_CLASSES_ROOT, ".htm", documentClass) != ERROR_SUCCESS ||
        ReadDefaultText(HKEY_CLASSES_ROOT, CString(documentClass) + "\\shell\\open\\command", command) !=
            ERROR_SUCCESS ||
        !command[0])
        return CString();
    return WithAddress(command, address);
}
} // namespace tvk
