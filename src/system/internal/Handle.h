// Owners of system handles for locals and internal helpers: one move-only template, a traits type for each kind of
// handle, a guard for what is selected into a device context; and the look-up of a module's functions.
#pragma once

#include <windows.h>

namespace tvk
{
/// Owns one handle and closes it. Traits name the handle's type, the value that means "none", and the way to close it.
/// Closing never changes the thread's last error, so that a failure can be reported after its locals are gone.
template <class Traits>
class Owner
{
public:
    using Type = typename Traits::Type;

    Owner() noexcept = default;
    explicit Owner(Type handle) noexcept : m_handle(handle) {}
    Owner(Owner&& other) noexcept : m_handle(other.Release()) {}
    Owner& operator=(Owner&& other) noexcept
    {
        Reset(other.Release());
        return *this;
    }
    ~Owner() { Reset(); }

    Type Get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != Traits::None(); }

    /// Gives the handle up without closing it.
    Type Release() noexcept
    {
        const Type handle = m_handle;
        m_handle = Traits::None();
        return handle;
    }

    /// Closes the handle held, if any, and takes `handle`; resetting to the handle held changes nothing.
    void Reset(Type handle = Traits::None()) noexcept
    {
        const Type old = m_handle;
        m_handle = handle;
        if (old == Traits::None() || old == handle)
            return;
        const DWORD lastError = ::GetLastError();
        Traits::Close(old);
        ::SetLastError(lastError);
    }

    /// Closes the handle held; the address is for a system call that hands out a new one.
    Type* Receive() noexcept
    {
        Reset();
        return &m_handle;
    }

private:
    Type m_handle = Traits::None();
};

/// The function that `module` (may be null) exports under a name; null when there is none.
template <class Function>
Function FindEntry(HMODULE module, const char* name) noexcept
{
    const FARPROC entry = module ? ::GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(entry));
}

/// What most traits share: a null handle means "none".
template <class T>
struct NullHandleTraits
{
    using Type = T;
    static Type None() noexcept { return nullptr; }
};

struct RegistryKeyTraits : NullHandleTraits<HKEY>
{
    static void Close(HKEY key) noexcept { ::RegCloseKey(key); }
};

struct ModuleTraits : NullHandleTraits<HMODULE>
{
    static void Close(HMODULE module) noexcept { ::FreeLibrary(module); }
};

template <class T>
struct GdiObjectTraits : NullHandleTraits<T>
{
    static void Close(T object) noexcept { ::DeleteObject(object); }
};

struct DeviceContextTraits : NullHandleTraits<HDC>
{
    static void Close(HDC context) noexcept { ::DeleteDC(context); }
};

struct KernelHandleTraits : NullHandleTraits<HANDLE>
{
    static void Close(HANDLE handle) noexcept { ::CloseHandle(handle); }
};

/// Environment blocks come from a library that is looked up at run time; it is still loaded while a block exists.
struct EnvironmentBlockTraits : NullHandleTraits<void*>
{
    static void Close(void* block) noexcept
    {
        using Destroy = BOOL(WINAPI*)(void*);
        if (const auto destroy = FindEntry<Destroy>(::GetModuleHandleA("userenv.dll"), "DestroyEnvironmentBlock"))
            destroy(block);
    }
};

struct GlobalMemoryTraits : NullHandleTraits<HGLOBAL>
{
    static void Close(HGLOBAL memory) noexcept { ::GlobalFree(memory); }
};

template <class T>
struct LocalMemoryTraits : NullHandleTraits<T*>
{
    static void Close(T* memory) noexcept { ::LocalFree(memory); }
};

struct SidTraits : NullHandleTraits<PSID>
{
    static void Close(PSID sid) noexcept { ::FreeSid(sid); }
};

using RegistryKey = Owner<RegistryKeyTraits>;
using Module = Owner<ModuleTraits>;
template <class T>
using GdiObject = Owner<GdiObjectTraits<T>>;      ///< GdiObject<HBITMAP>, GdiObject<HRGN>, ...
using DeviceContext = Owner<DeviceContextTraits>; ///< made by CreateCompatibleDC or CreateDC, not by GetDC
using KernelHandle = Owner<KernelHandleTraits>;   ///< process, thread, event, ...: whatever is null when it failed
using Token = Owner<KernelHandleTraits>;          ///< access token
using EnvironmentBlock = Owner<EnvironmentBlockTraits>;
using GlobalMemory = Owner<GlobalMemoryTraits>;
template <class T>
using LocalMemory = Owner<LocalMemoryTraits<T>>; ///< LocalMemory<char> for text that FormatMessage allocated
using Sid = Owner<SidTraits>;                    ///< made by AllocateAndInitializeSid

/// Selects a GDI object into a device context and puts back the one that was there.
class SelectGuard
{
public:
    SelectGuard(HDC context, HGDIOBJ object) noexcept : m_context(context), m_previous(::SelectObject(context, object))
    {
    }
    SelectGuard(const SelectGuard&) = delete;
    SelectGuard& operator=(const SelectGuard&) = delete;
    ~SelectGuard()
    {
        if (!*this)
            return;
        const DWORD lastError = ::GetLastError();
        ::SelectObject(m_context, m_previous);
        ::SetLastError(lastError);
    }

    /// False when the object could not be selected.
    explicit operator bool() const noexcept { return m_previous && m_previous != HGDI_ERROR; }

private:
    HDC m_context;
    HGDIOBJ m_previous;
};
} // namespace tvk
