#include "GdiObjects.h"
#include <windows.h>

int CountGdiObjects()
{
    int count = 0;
    for (UINT_PTR handle = 1; handle <= 0xFFFF; ++handle)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return count;
}
