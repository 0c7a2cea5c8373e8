// The current resource handle and the chain of extension modules.
#include "afx/Resources.h"
#include "afxdllx.h"
#include <atomic>
#include <vector>

namespace
{
std::atomic<HINSTANCE> CurrentResource = nullptr;
SRWLOCK ChainLock = SRWLOCK_INIT;

// Made on first use and never destroyed: modules leave the chain while the process ends, in any order.
std::vector<CDynLinkLibrary*>& Chain()
{
    static auto* chain = new std::vector<CDynLinkLibrary*>;
    return *chain;
}
} // namespace

HINSTANCE AfxGetInstanceHandle()
{
    return GetModuleHandleA(nullptr);
}

HINSTANCE AfxGetResourceHandle()
{
    const HINSTANCE resource = CurrentResource.load();
    return resource ? resource : AfxGetInstanceHandle();
}

void AfxSetResourceHandle(HINSTANCE resource)
{
    CurrentResource = resource;
}

HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type)
{
    const HINSTANCE current = AfxGetResourceHandle();
    if (FindResourceA(current, name, type))
        return current;
    HINSTANCE found = current;
    AcquireSRWLockShared(&ChainLock);
    for (auto each = Chain().rbegin(); each != Chain().rend(); ++each)
    {
        if (FindResourceA((*each)->m_hResource, name, type))
        {
            found = (*each)->m_hResource;
            break;
        }
    }
    ReleaseSRWLockShared(&ChainLock);
    return found;
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module)
{
    if (!state.bInitialized)
        state = {TRUE, module, module};
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all)
{
    if (!state.bInitialized && !all)
        return;
    std::vector<CDynLinkLibrary*> leaving;
    AcquireSRWLockShared(&ChainLock);
    for (CDynLinkLibrary* each : Chain())
    {
        if (all || each->m_hModule == state.hModule)
            leaving.push_back(each);
    }
    ReleaseSRWLockShared(&ChainLock);
    for (const CDynLinkLibrary* each : leaving)
        delete each;
    state = {};
}

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL)
    : m_hModule(state.hModule), m_hResource(state.hResource)
{
    AcquireSRWLockExclusive(&ChainLock);
    Chain().push_back(this);
    ReleaseSRWLockExclusive(&ChainLock);
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    AcquireSRWLockExclusive(&ChainLock);
    std::erase(Chain(), this);
    ReleaseSRWLockExclusive(&ChainLock);
}
