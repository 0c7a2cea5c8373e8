// What the registry tests share.
#pragma once

#include <string>
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
