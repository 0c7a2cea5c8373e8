#include "links/internal/HtmlHelp.h"
#include <afx.h>
#include "system/internal/Handle.h"
#include "system/internal/RegistryValue.h"

namespace tvk
{
namespace
{
using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

constexpr char ControlKey[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr WORD HtmlHelpOrdinal = 14; // of HtmlHelpA; the library promises the number, not the name

HMODULE LoadRegisteredControl()
{
    RegistryKey key;
    CString path;
    if (::RegOpenKeyExA(HKEY_CLASSES_ROOT, ControlKey, 0, KEY_QUERY_VALUE, key.Receive()) != ERROR_SUCCESS ||
        !ReadText(key.Get(), nullptr, path) || path.IsEmpty())
        return nullptr;
    return ::LoadLibraryA(path);
}

HtmlHelpFunction FindHtmlHelp()
{
    HMODULE control = LoadRegisteredControl();
    if (!control)
        control = ::LoadLibraryA("hhctrl.ocx");
    const FARPROC entry = control ? ::GetProcAddress(control, MAKEINTRESOURCEA(HtmlHelpOrdinal)) : nullptr;
    return reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void (*)()>(entry));
}
} // namespace

HWND ShowHtmlHelp(HWND owner, const char* file, UINT command, DWORD_PTR data)
{
    static const HtmlHelpFunction htmlHelp = FindHtmlHelp();
    return htmlHelp ? htmlHelp(owner, file, command, data) : nullptr;
}
} // namespace tvk
