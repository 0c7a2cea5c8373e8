// Answers of a system call, changed at the library's boundary: the import table of one loaded module is pointed to a
// replacement for as long as the object lives. Only calls from that module are affected.
#pragma once

#include <windows.h>

class IatPatch
{
public:
    /// Replaces `function` among the imports of `module` (whichever library it comes from). A module that does not
    /// import the function fails the running test.
    IatPatch(HMODULE module, const char* function, void (*replacement)());
    template <class R, class... A>
    IatPatch(HMODULE module, const char* function, R(WINAPI* replacement)(A...))
        : IatPatch(module, function, reinterpret_cast<void (*)()>(replacement))
    {
    }
    ~IatPatch();
    IatPatch(const IatPatch&) = delete;
    IatPatch& operator=(const IatPatch&) = delete;

    /// The function that the import named before.
    template <class F>
    F Original() const
    {
        return reinterpret_cast<F>(m_original);
    }

private:
    void (**m_slot)() = nullptr;
    void (*m_original)() = nullptr;
};
