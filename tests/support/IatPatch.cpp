#include "IatPatch.h"
#include <gtest/gtest.h>
#include <cstring>

namespace
{
using Function = void (*)();

Function* FindImport(HMODULE module, const char* function)
{
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (!imports)
        return nullptr;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); library->Name; ++library)
    {
        const DWORD names = library->OriginalFirstThunk ? library->OriginalFirstThunk : library->FirstThunk;
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + names);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot)
        {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                continue;
            const auto* entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0)
                return reinterpret_cast<Function*>(&slot->u1.Function);
        }
    }
    return nullptr;
}

void Store(Function* slot, Function value)
{
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = value;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}
} // namespace

IatPatch::IatPatch(HMODULE module, const char* function, void (*replacement)()) : m_slot(FindImport(module, function))
{
    if (!m_slot)
    {
        ADD_FAILURE() << "the module does not import " << function;
        return;
    }
    m_original = *m_slot;
    Store(m_slot, replacement);
}

IatPatch::~IatPatch()
{
    if (m_slot)
        Store(m_slot, m_original);
}
