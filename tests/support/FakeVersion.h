// The Windows version that the library under test is told, for as long as the object lives: cheaper than a process of
// its own under that version where only the library's own decisions matter.
#pragma once

#include "IatPatch.h"

class FakeVersion
{
public:
    /// Platform 0 Win32s, 1 the 9x family, 2 the NT family; below 0 the query fails.
    FakeVersion(int platform, unsigned long major, unsigned long minor);

    /// The OS version code `version` by a version that stands for it (CRegistry::OSVersion, but not its 1 and 2). The
    /// query leaves `lastError` behind as the thread's last error.
    explicit FakeVersion(int version, unsigned long lastError = 0);

private:
    IatPatch m_patch;
};
