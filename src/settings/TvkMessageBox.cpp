#include "settings/TvkMessageBox.h"
#include "settings/TvkProduct.h"
#include "settings/internal/Directories.h"
#include "settings/internal/DriverLanguage.h"
#include "settings/internal/ResourceHandleScope.h"
#include "system/internal/Handle.h"

namespace
{
/// Loads the resource library that lies beside this one; tells the user when it cannot be loaded. Null then.
tvk::Module LoadResourceLibrary(TvkProduct& product)
{
    CString library, utilities;
    product.GetSetting("IDO_UTIL_RESDLL", library);
    product.GetSetting("IDO_UTIL_DLL", utilities);
    const CString directory = tvk::LoadedModuleDirectory(utilities);
    tvk::Module module(tvk::LoadLibraryFrom(directory, library));
    if (!module)
        MessageBoxA(nullptr, directory + library, "ERROR", 0);
    return module;
}
} // namespace

extern "C" int TvkMessageBox(HWND owner, const char* text, const char* caption, unsigned int style)
{
    tvk::Module loaded; // until the box is gone
    try
    {
        TvkProduct product;
        CString name;
        HMODULE resources = GetModuleHandleA(product.GetSetting("IDO_JSW_RESDLL", name));
        if (!resources)
        {
            loaded = LoadResourceLibrary(product);
            resources = loaded.Get();
        }
        CString language;
        {
            const tvk::ResourceHandleScope scope(resources);
            language = tvk::DriverLanguageName(resources);
        }
        // Upper and lower case are told apart here, unlike in TvkProduct::IsDriverLanguageRTL: resource libraries in
        // the field rely on either.
        if (language == tvk::Hebrew || language == tvk::Arabic)
            style |= MB_RIGHT | MB_RTLREADING;
    }
    catch (CException* exception)
    {
        exception->Delete(); // out of memory: the box matters more than its reading order
    }
    catch (...) // a host written in C must not meet an exception
    {
    }
    return MessageBoxA(owner, text, caption, style);
}
