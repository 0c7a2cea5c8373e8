// The resource handle and the chain of extension modules, which the whole process shares.
#pragma once

#include "afx/Platform.h"

/// The program's module.
FRAMEWORK_API HINSTANCE AfxGetInstanceHandle();
/// Where resources are looked for first: what AfxSetResourceHandle set, until then the program's module (also in a
/// program without an application object).
FRAMEWORK_API HINSTANCE AfxGetResourceHandle();
FRAMEWORK_API void AfxSetResourceHandle(HINSTANCE resource);
/// The module that has the resource: the current resource handle's, then the extension modules', the one added last
/// first. Without any it is the current resource handle.
FRAMEWORK_API HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type);
