// A resource library of the product, loaded while the object lives.
#pragma once

#include <afxwin.h>

class ResourceLibrary
{
public:
    explicit ResourceLibrary(const CString& name) : m_module(LoadLibraryA(name)) {}
    ~ResourceLibrary()
    {
        if (m_module)
            FreeLibrary(m_module);
    }
    ResourceLibrary(const ResourceLibrary&) = delete;
    ResourceLibrary& operator=(const ResourceLibrary&) = delete;

    /// Null when it could not be loaded.
    HMODULE Module() const { return m_module; }

private:
    HMODULE m_module;
};

/// Makes a module the framework's current resource handle for a scope.
class ResourcesFrom
{
public:
    explicit ResourcesFrom(HMODULE module) : m_saved(AfxGetResourceHandle()) { AfxSetResourceHandle(module); }
    ~ResourcesFrom() { AfxSetResourceHandle(m_saved); }
    ResourcesFrom(const ResourcesFrom&) = delete;
    ResourcesFrom& operator=(const ResourcesFrom&) = delete;

private:
    HMODULE m_saved;
};
