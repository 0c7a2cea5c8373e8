// Keeps the framework's resource handle through the destruction of an object with settings among its members.
#pragma once

#include <afxwin.h>

/// A settings object puts back, when it is destroyed, the resource handle that was current at its last look-up. A
/// dialog's members look up while the dialog is open and are destroyed when the host has long made another module
/// current. Their class has one of these as its first member, which is destroyed last, and calls Keep() in its
/// destructor: the handle that is current then stays.
class AFX_EXT_CLASS KeptResourceHandle
{
public:
    /// Keeps nothing yet.
    KeptResourceHandle();
    /// Puts the kept handle back, if there is one.
    ~KeptResourceHandle();
    KeptResourceHandle(const KeptResourceHandle&) = delete;
    KeptResourceHandle& operator=(const KeptResourceHandle&) = delete;

    /// Notes the current handle.
    void Keep();

private:
    HINSTANCE m_hKept;
};
