// What the registry tests share.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include "RegistryWorld.h"
#include "system/CRegistry.h"

/// The error that an operation throws; 0 when it throws nothing.
template <class Operation>
LONG Thrown(Operation operation)
{
    try
    {
        operation();
        return 0;
    }
    catch (CRegistryException* exception)
    {
        const LONG code = exception->m_lErrorCode;
        exception->Delete();
        return code;
    }
}

inline const unsigned char* Bytes(const char* text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

/// A key of the user's with a text value and two generations of keys.
class RegistryKeyTest : public testing::Test
{
protected:
    RegistryKeyTest()
    {
        m_world.SetText(HKEY_CURRENT_USER, Home, "text", "value");
        m_world.Key(HKEY_CURRENT_USER, Path("child\\grandchild"));
    }
    static std::string Path(const std::string& subKey) { return std::string(Home) + "\\" + subKey; }
    template <class Key>
    static int Open(Key& key, DWORD access = KEY_ALL_ACCESS)
    {
        return key.Open(HKEY_CURRENT_USER, Home, 0, access);
    }

    static constexpr char Home[] = "Software\\RegistryTest";
    RegistryWorld m_world;
};
