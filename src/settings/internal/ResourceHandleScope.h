// Makes a module the framework's current resource handle for a scope.
#pragma once

#include <afxwin.h>

namespace tvk
{
/// Puts the handle that was current before back at the end of the scope, when there was one.
class ResourceHandleScope
{
public:
    explicit ResourceHandleScope(HINSTANCE module) : m_saved(AfxGetResourceHandle()) { AfxSetResourceHandle(module); }
    ~ResourceHandleScope()
    {
        if (m_saved)
            AfxSetResourceHandle(m_saved);
    }
    ResourceHandleScope(const ResourceHandleScope&) = delete;
    ResourceHandleScope& operator=(const ResourceHandleScope&) = delete;

private:
    HINSTANCE m_saved;
};
} // namespace tvk
