// What programs, and the library's own look-ups, read of the sample product.
#pragma once

#include "settings/TvkProduct.h"

#include <string>
#include <windows.h>

inline std::string Text(const char* key, TvkProduct&& product = TvkProduct())
{
    CString value;
    return std::string(product.GetSetting(key, value));
}

/// A resource of the product's settings library; the whole of its bytes.
inline std::string Resource(const std::string& key)
{
    const HMODULE library = LoadLibraryA(PRODUCT_PREFIX "jswr.dll");
    const HRSRC found = FindResourceA(library, key.c_str(), MAKEINTRESOURCEA(10));
    std::string bytes;
    if (found)
        bytes.assign(static_cast<const char*>(LockResource(LoadResource(library, found))),
                     SizeofResource(library, found));
    FreeLibrary(library);
    return bytes;
}

/// The number that such bytes are.
inline unsigned long NumberOf(const std::string& bytes)
{
    return bytes.size() == sizeof(unsigned long) ? *reinterpret_cast<const unsigned long*>(bytes.data()) : ~0ul;
}
