// A system function under observation: its calls are counted, and one of them is refused.
#pragma once

#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include <memory>
#include <type_traits>

/// Counts the calls that a module makes of a system function for as long as the object lives. The call numbered
/// `refuse` (from 1) is not passed on and answers `failure`. Functions of one type that are watched at the same time
/// need a tag each.
template <class F, class Tag = void>
class Watch;

template <class R, class... A, class Tag>
class Watch<R(WINAPI*)(A...), Tag>
{
    using Answer = std::conditional_t<std::is_void_v<R>, int, R>;

public:
    explicit Watch(const char* function, int refuse = 0, HMODULE caller = LibraryUnderTest(), Answer failure = Answer{})
        : m_patch(caller, function, &Call)
    {
        s_calls = s_done = 0;
        s_refuse = refuse;
        s_failure = failure;
        s_original = m_patch.template Original<R(WINAPI*)(A...)>();
    }
    int Calls() const { return s_calls; }
    /// Those that answered something else than 0.
    int Done() const { return s_done; }

private:
    static R WINAPI Call(A... arguments)
    {
        if (++s_calls == s_refuse)
        {
            SetLastError(ERROR_ACCESS_DENIED);
            return static_cast<R>(s_failure);
        }
        if constexpr (std::is_void_v<R>)
            s_original(arguments...);
        else
        {
            const R result = s_original(arguments...);
            s_done += result != R{};
            return result;
        }
    }
    static inline int s_calls, s_done, s_refuse;
    static inline Answer s_failure;
    static inline R(WINAPI* s_original)(A...);
    IatPatch m_patch;
};

/// For tables: a function's name, and how a call of it is refused for as long as the answer lives.
using RefuseFunction = std::shared_ptr<void> (*)(const char* function, int call, HMODULE caller);
template <class F>
RefuseFunction Refuser(F)
{
    return [](const char* function, int call, HMODULE caller) -> std::shared_ptr<void>
    { return std::make_shared<Watch<F>>(function, call, caller); };
}
#define REFUSED(function) #function, Refuser(&function)
