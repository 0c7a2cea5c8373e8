// What the entry point of an extension module needs.
#pragma once

#include "afx/CObject.h"
#include "afx/Resources.h"

/// The state of one extension module: a static variable in its entry point's file.
struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource; ///< where its resources are; hModule unless changed before the CDynLinkLibrary is made
};

/// Called when the module is loaded; FALSE when it cannot be used.
FRAMEWORK_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
/// Called when the module is unloaded: deletes its CDynLinkLibrary objects.
FRAMEWORK_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

/// An extension module's place in the chain that AfxFindResourceHandle walks. Created with new; AfxTermExtensionModule
/// deletes it.
class FRAMEWORK_API CDynLinkLibrary : public CObject
{
    DECLARE_DYNAMIC(CDynLinkLibrary)
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
};
