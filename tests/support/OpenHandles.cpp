#include "OpenHandles.h"
#include <windows.h>

std::size_t OpenHandles()
{
    std::size_t count = 0;
    DWORD flags = 0;
    for (ULONG_PTR handle = 4; handle < 0x1000; handle += 4) // the lowest free one is handed out next
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return count;
}
