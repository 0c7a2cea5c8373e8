// Registry keys for hosts: CRegistry's operations with return codes instead of exceptions.
#pragma once

#include "system/CRegistry.h"

class CSpy;

/// A CRegistry whose operations let no CRegistryException out. A failure is the operation's result; its reason is in
/// GetLastError(), and an object built with tracing also writes one line to the trace log, naming operation and key.
///
/// The operations hide those of CRegistry, they do not override them: they have other result types, and their reference
/// qualifier keeps the language from taking them for overrides (GCC agrees, clang 14 refuses it). Used through a
/// CRegistry&, such an object throws like any other.
class AFX_EXT_CLASS CSafeRegistry : public CRegistry
{
public:
    /// Holds no key. `trace`: non-zero makes the trace object, which reads the trace switch now and never again.
    explicit CSafeRegistry(int trace);
    CSafeRegistry(); ///< with tracing

    /// As CRegistry's constructor of the same arguments: nothing is opened yet.
    CSafeRegistry(HKEY root, const char* subKey, unsigned long options, unsigned long access, int trace);

    /// A copy shares the key handle (see CRegistry) and the trace object; the last owner deletes the trace object.
    CSafeRegistry(const CSafeRegistry& other);
    CSafeRegistry& operator=(const CSafeRegistry& other);
    ~CSafeRegistry() override;

    // Arguments are those of the CRegistry operation of the same name. The results are 1 for success and 0 for failure,
    // unless said otherwise.

    int Create(unsigned long& disposition, HKEY root, const char* subKey, unsigned long options, unsigned long access,
               SECURITY_ATTRIBUTES* ignored) &;

    /// A key that does not open gives 0 without a trace line: only a key held before that failed to close is traced.
    int Open(HKEY root, const char* subKey, unsigned long options, unsigned long access) &;

    int Remove(const char* subKey) &;
    int DeleteValue(const char* name) &;
    int Write(const char* name, const unsigned char* data, unsigned long size, unsigned long type) &;
    int Read(unsigned char* data, unsigned long* size, unsigned long* type, const char* name) &;

    /// Reads the value; when that fails, writes the default under its name and reads again. `size` must hold the size
    /// of `data` for the second read too: the first one leaves the size of a value in it that was too large for `data`.
    /// Returns 1 when one of the reads succeeded.
    int ReadOrCreate(const char* name, unsigned char* data, unsigned long* size, unsigned long* type,
                     const unsigned char* defaultData, unsigned long defaultSize, unsigned long defaultType);

    /// Returns 0 for an entry, ERROR_NO_MORE_ITEMS (259) after the last one, else the error; EnumKey likewise.
    long EnumValue(unsigned long index, char* name, unsigned long* nameLength, unsigned long* type, unsigned char* data,
                   unsigned long* dataLength) &;
    long EnumKey(unsigned long index, char* name, unsigned long* nameLength, FILETIME* lastWrite, char* className,
                 unsigned long* classLength) &;

    int SaveKey(const char* file, SECURITY_ATTRIBUTES* sa) &;
    int LoadKey(const char* subKey, const char* file) &;
    int UnloadKey(const char* subKey) &;
    int RestoreKey(const char* file, unsigned long flags) &;

    void Close() &;
    long GetLastError() &; ///< the result of the last registry call

    void SetFriendlyName(CString name);
    OSVersion GetOSVer();
    OSVersion GetOSPlatform();
    void* CreateSecurityDescriptor();
    void InitMode(unsigned long mode);

private:
    CSpy* m_pSpy; // null: no tracing
};
