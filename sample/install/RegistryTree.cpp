#include "RegistryTree.h"
#include "Step.h"
#include <vector>

namespace
{
void Write(CSafeRegistry& registry, HKEY root, const CString& key, const char* name, const void* data, size_t size,
           unsigned long type)
{
    MakeKey(registry, root, key);
    const int written =
        registry.Write(name, static_cast<const unsigned char*>(data), static_cast<unsigned long>(size), type);
    const long error = registry.GetLastError();
    registry.Close();
    if (!written)
        throw StepFailure("cannot write the registry value " + std::string(name), error);
}

/// Splits "A\B\C" into its parent "A\B" and its name "C"; a key of one component has no parent.
CString ParentOf(const CString& key)
{
    const int cut = key.ReverseFind('\\');
    return cut < 0 ? CString() : key.Left(cut);
}

CString NameOf(const CString& key)
{
    return key.Mid(key.ReverseFind('\\') + 1);
}

bool Open(CSafeRegistry& registry, const CString& key)
{
    return registry.Open(HKEY_LOCAL_MACHINE, key, 0, KEY_ALL_ACCESS) != 0;
}

void RemoveKey(const CString& key)
{
    CSafeRegistry parent;
    if (!Open(parent, ParentOf(key)) || !parent.Remove(NameOf(key)))
        throw StepFailure("cannot delete the registry key " + std::string(key), parent.GetLastError());
}

std::vector<CString> SubKeys(CSafeRegistry& registry)
{
    std::vector<CString> names;
    char name[256];
    FILETIME lastWrite;
    for (unsigned long size = sizeof name;
         registry.EnumKey(static_cast<unsigned long>(names.size()), name, &size, &lastWrite, nullptr, nullptr) == 0;
         size = sizeof name)
        names.push_back(name);
    return names;
}

bool IsEmpty(CSafeRegistry& registry)
{
    char name[256];
    unsigned long size = sizeof name;
    // A value of any size counts: its name alone is asked for.
    return SubKeys(registry).empty() && registry.EnumValue(0, name, &size, nullptr, nullptr, nullptr) != 0;
}

void RemoveWithSubKeys(const CString& key)
{
    CSafeRegistry registry;
    if (!Open(registry, key))
        return;
    for (const CString& name : SubKeys(registry))
        RemoveWithSubKeys(key + "\\" + name);
    registry.Close();
    RemoveKey(key);
}

void RemoveEmptyKeys(CString key, const CString& keep)
{
    for (; !key.IsEmpty() && key.CompareNoCase(keep) != 0; key = ParentOf(key))
    {
        CSafeRegistry registry;
        if (!Open(registry, key))
            continue; // a missing key may have an empty parent
        if (!IsEmpty(registry))
            return;
        registry.Close();
        RemoveKey(key);
    }
}
} // namespace

void MakeKey(CSafeRegistry& registry, HKEY root, const CString& key)
{
    unsigned long disposition = 0;
    if (!registry.Create(disposition, root, key, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr))
        throw StepFailure("cannot make the registry key " + std::string(key), registry.GetLastError());
}

void WriteText(CSafeRegistry& registry, HKEY root, const CString& key, const char* name, const CString& text)
{
    Write(registry, root, key, name, static_cast<LPCSTR>(text), static_cast<size_t>(text.GetLength()) + 1, REG_SZ);
}

void WriteNumber(CSafeRegistry& registry, HKEY root, const CString& key, const char* name, unsigned long number)
{
    Write(registry, root, key, name, &number, sizeof number, REG_DWORD);
}

CString ReadText(const CString& key, const char* name)
{
    CSafeRegistry registry;
    char text[MAX_PATH] = "";
    unsigned long size = sizeof text, type = 0;
    if (!registry.Open(HKEY_LOCAL_MACHINE, key, 0, KEY_QUERY_VALUE) ||
        !registry.Read(reinterpret_cast<unsigned char*>(text), &size, &type, name))
        return CString();
    text[MAX_PATH - 1] = '\0'; // which a writer may forget
    return text;
}

void RemoveTree(const CString& key, const CString& keep)
{
    RemoveWithSubKeys(key);
    RemoveEmptyKeys(ParentOf(key), keep);
}

void RemoveValue(const CString& key, const char* name, const CString& keep)
{
    CSafeRegistry registry;
    if (Open(registry, key) && !registry.DeleteValue(name) && registry.GetLastError() != ERROR_FILE_NOT_FOUND)
        throw StepFailure("cannot delete the registry value " + std::string(name), registry.GetLastError());
    registry.Close();
    RemoveEmptyKeys(key, keep);
}
