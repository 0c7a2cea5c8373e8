// Entry point: joins the framework's chain of extension modules, so that the library's resources are found, and tells
// the settings where the library lies. Nothing else happens at load time.
#include <afxwin.h>
#include <afxdllx.h>
#include "settings/TvkProduct.h"

static AFX_EXTENSION_MODULE UtilModule;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        if (!AfxInitExtensionModule(UtilModule, instance))
            return FALSE;
        // The framework owns the chain entry: AfxTermExtensionModule deletes it.
        new CDynLinkLibrary(UtilModule);
        TvkProduct::SetUtilDLLInstance(instance);
    }
    else if (reason == DLL_PROCESS_DETACH)
    {
        AfxTermExtensionModule(UtilModule);
    }
    return TRUE;
}
