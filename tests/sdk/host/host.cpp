#include <afx.h>
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"
#include <cstdio>

int main()
{
    CString model;
    std::printf("model: %s\n", static_cast<LPCSTR>(TvkProduct().GetSetting("IDO_MODEL", model)));
    try
    {
        CRegistry().DeleteValue("a value of a key that is not open");
    }
    catch (CRegistryException* error) // by type, across the library's boundary
    {
        std::printf("caught registry error %ld\n", error->m_lErrorCode);
        error->Delete();
    }
}
