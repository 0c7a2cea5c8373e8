// A system function under observation: its calls are counted, and one of them is refused.
#pragma once

#include "support/IatPatch.h"
#include "support/TestProduct.h"

template <class F>
class Watch;

/// Counts the calls that a module makes of a system function for as long as the object lives. The call numbered
/// `refuse` (from 1) is not passed on and fails.
template <class R, class... A>
class Watch<R(WINAPI*)(A...)>
{
public:
    explicit Watch(const char* function, int refuse = 0, HMODULE caller = LibraryUnderTest())
        : m_patch(caller, function, &Call)
    {
        s_calls = 0;
        s_refuse = refuse;
        s_original = m_patch.template Original<R(WINAPI*)(A...)>();
    }
    int Calls() const { return s_calls; }

private:
    static R WINAPI Call(A... arguments) { return ++s_calls == s_refuse ? R{} : s_original(arguments...); }
    static inline int s_calls, s_refuse;
    static inline R(WINAPI* s_original)(A...);
    IatPatch m_patch;
};
