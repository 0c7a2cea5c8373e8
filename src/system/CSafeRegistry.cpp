// Registry keys for hosts: CRegistry's operations with return codes instead of exceptions.
#include "system/CSafeRegistry.h"
#include <atomic>
#include <cstdarg>
#include "diag/CSpy.h"
#include "system/internal/RegistryValue.h"

namespace
{
/// The trace object as its owners share it: each copy of a CSafeRegistry counts as one.
class SharedSpy : public CSpy
{
public:
    static CSpy* Make(int trace) { return trace ? new SharedSpy : nullptr; }

    static CSpy* Share(CSpy* spy)
    {
        if (spy)
            ++static_cast<SharedSpy*>(spy)->m_owners;
        return spy;
    }

    static void Release(CSpy* spy)
    {
        if (spy && --static_cast<SharedSpy*>(spy)->m_owners == 0)
            delete spy;
    }

private:
    std::atomic<int> m_owners = 1; // the copies may live on different threads
};

/// Runs an operation of the base through its virtual slot; false when it threw.
template <class Operation>
bool Succeeds(CRegistry& registry, Operation operation)
{
    return tvk::Succeeds([&] { operation(registry); });
}

/// Writes an operation's line when there is a trace object; always 0, the operation's result.
__attribute__((format(gnu_printf, 2, 3))) int Failed(CSpy* spy, const char* format, ...)
{
    if (!spy)
        return 0;
    CString line;
    va_list fields;
    va_start(fields, format);
    line.FormatV(format, fields);
    va_end(fields);
    spy->OutputData(line);
    return 0;
}
} // namespace

CSafeRegistry::CSafeRegistry(int trace) : m_pSpy(SharedSpy::Make(trace)) {}

CSafeRegistry::CSafeRegistry() : CSafeRegistry(1) {}

CSafeRegistry::CSafeRegistry(HKEY root, const char* subKey, unsigned long options, unsigned long access, int trace)
    : CRegistry(root, subKey, options, access), m_pSpy(SharedSpy::Make(trace))
{
}

CSafeRegistry::CSafeRegistry(const CSafeRegistry& other) : CRegistry(other), m_pSpy(SharedSpy::Share(other.m_pSpy)) {}

CSafeRegistry& CSafeRegistry::operator=(const CSafeRegistry& other)
{
    CRegistry::operator=(other);
    CSpy* const old = m_pSpy;
    m_pSpy = SharedSpy::Share(other.m_pSpy);
    SharedSpy::Release(old);
    return *this;
}

CSafeRegistry::~CSafeRegistry()
{
    SharedSpy::Release(m_pSpy);
}

int CSafeRegistry::Create(unsigned long& disposition, HKEY root, const char* subKey, unsigned long options,
                          unsigned long access, SECURITY_ATTRIBUTES* ignored) &
{
    return Succeeds(*this,
                    [&](CRegistry& base) { base.Create(disposition, root, subKey, options, access, ignored); }) ||
           Failed(m_pSpy, "CSafeRegistry::Create failed to create \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()),
                  subKey);
}

int CSafeRegistry::Open(HKEY root, const char* subKey, unsigned long options, unsigned long access) &
{
    int opened = 0;
    if (Succeeds(*this, [&](CRegistry& base) { opened = base.Open(root, subKey, options, access); }))
        return opened;
    Failed(m_pSpy, "CSafeRegistry::Open failed to open \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()), subKey);
    return 0;
}

int CSafeRegistry::Remove(const char* subKey) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.Remove(subKey); }) ||
           Failed(m_pSpy, "CSafeRegistry::Remove failed to remove \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()),
                  subKey);
}

int CSafeRegistry::DeleteValue(const char* name) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.DeleteValue(name); }) ||
           Failed(m_pSpy, "CSafeRegistry::DeleteValue failed to delete \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()),
                  name);
}

int CSafeRegistry::Write(const char* name, const unsigned char* data, unsigned long size, unsigned long type) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.Write(name, data, size, type); }) ||
           Failed(m_pSpy, "CSafeRegistry::Write failed to write \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()), name);
}

int CSafeRegistry::Read(unsigned char* data, unsigned long* size, unsigned long* type, const char* name) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.Read(data, size, type, name); }) ||
           Failed(m_pSpy, "CSafeRegistry::Read failed to read \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()), name);
}

int CSafeRegistry::ReadOrCreate(const char* name, unsigned char* data, unsigned long* size, unsigned long* type,
                                const unsigned char* defaultData, unsigned long defaultSize, unsigned long defaultType)
{
    if (Read(data, size, type, name))
        return 1;
    return Write(name, defaultData, defaultSize, defaultType) && Read(data, size, type, name);
}

long CSafeRegistry::EnumValue(unsigned long index, char* name, unsigned long* nameLength, unsigned long* type,
                              unsigned char* data, unsigned long* dataLength) &
{
    int found = 0;
    if (Succeeds(*this,
                 [&](CRegistry& base) { found = base.EnumValue(index, name, nameLength, type, data, dataLength); }))
        return found ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS;
    Failed(m_pSpy, "CSafeRegistry::EnumValue failed on index: %d", static_cast<int>(index));
    return GetLastError();
}

long CSafeRegistry::EnumKey(unsigned long index, char* name, unsigned long* nameLength, FILETIME* lastWrite,
                            char* className, unsigned long* classLength) &
{
    int found = 0;
    if (Succeeds(*this, [&](CRegistry& base)
                 { found = base.EnumKey(index, name, nameLength, lastWrite, className, classLength); }))
        return found ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS;
    Failed(m_pSpy, "CSafeRegistry::EnumKey failed on index %d", static_cast<int>(index)); // without a colon
    return GetLastError();
}

int CSafeRegistry::SaveKey(const char* file, SECURITY_ATTRIBUTES* sa) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.SaveKey(file, sa); }) ||
           Failed(m_pSpy, "CSafeRegistry::SaveKey failed to write \"%s\" to \"%s\"", static_cast<LPCSTR>(GetSubKey()),
                  file);
}

int CSafeRegistry::LoadKey(const char* subKey, const char* file) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.LoadKey(subKey, file); }) ||
           Failed(m_pSpy, "CSafeRegistry::LoadKey failed to create \"%s\" \"%s\" from \"%s\"",
                  static_cast<LPCSTR>(GetSubKey()), subKey, file);
}

int CSafeRegistry::UnloadKey(const char* subKey) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.UnloadKey(subKey); }) ||
           Failed(m_pSpy, "CSafeRegistry::UnloadKey failed to unload \"%s\" \"%s\"", static_cast<LPCSTR>(GetSubKey()),
                  subKey);
}

int CSafeRegistry::RestoreKey(const char* file, unsigned long flags) &
{
    return Succeeds(*this, [&](CRegistry& base) { base.RestoreKey(file, flags); }) ||
           Failed(m_pSpy, "CSafeRegistry::RestoreKey failed to restore \"%s\" from \"%s\"",
                  static_cast<LPCSTR>(GetSubKey()), file);
}

void CSafeRegistry::Close() &
{
    static_cast<CRegistry&>(*this).Close();
}

long CSafeRegistry::GetLastError() &
{
    return static_cast<CRegistry&>(*this).GetLastError();
}

void CSafeRegistry::SetFriendlyName(CString name)
{
    CRegistry::SetFriendlyName(name);
}

CRegistry::OSVersion CSafeRegistry::GetOSVer()
{
    return CRegistry::GetOSVer();
}

CRegistry::OSVersion CSafeRegistry::GetOSPlatform()
{
    return CRegistry::GetOSPlatform();
}

void* CSafeRegistry::CreateSecurityDescriptor()
{
    return CRegistry::CreateSecurityDescriptor();
}

void CSafeRegistry::InitMode(unsigned long mode)
{
    CRegistry::InitMode(mode);
}
