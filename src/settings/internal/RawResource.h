// A raw data resource, read within its own size: it may lack its NUL or be shorter than its type.
#pragma once

#include <afx.h>

namespace tvk
{
/// The bytes of an `RT_RCDATA` resource; valid as long as its module stays loaded.
struct RawResource
{
    const BYTE* data = nullptr; ///< null when there is no such resource
    DWORD size = 0;

    /// The bytes up to the NUL or the resource's end, whichever comes first.
    CString Text() const;
    /// The first four bytes as a little-endian number; 0 when there are fewer.
    DWORD Number() const;
};

/// Finds the resource called `name` in `module` (null: the host program).
RawResource FindRawResource(HMODULE module, const char* name);
} // namespace tvk
