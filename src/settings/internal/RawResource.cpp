#include "settings/internal/RawResource.h"
#include <cstring>

namespace tvk
{
CString RawResource::Text() const
{
    if (!data)
        return CString();
    const char* text = reinterpret_cast<const char*>(data);
    return CString(text, static_cast<int>(strnlen(text, size)));
}

DWORD RawResource::Number() const
{
    DWORD number = 0;
    if (data && size >= sizeof number)
        std::memcpy(&number, data, sizeof number); // resources are not aligned
    return number;
}

RawResource FindRawResource(HMODULE module, const char* name)
{
    RawResource found;
    const HRSRC resource = FindResourceA(module, name, reinterpret_cast<LPCSTR>(RT_RCDATA));
    if (!resource)
        return found;
    found.data = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    if (found.data)
        found.size = SizeofResource(module, resource);
    return found;
}
} // namespace tvk
