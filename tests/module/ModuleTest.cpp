// The library as a module: what it exports, how it names itself, how its exceptions reach a host.
#include <afx.h>
#include <afxwin.h>
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"
#include <gmock/gmock.h>
#include <algorithm>
#include <cxxabi.h>
#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

namespace
{
std::string Demangle(const char* name)
{
    int status = 0;
    char* text = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    const std::string result = status == 0 ? text : name;
    std::free(text);
    return result;
}

std::set<std::string> ExportedNames(HMODULE module)
{
    const auto* base = reinterpret_cast<const BYTE*>(module);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + table->AddressOfNames);
    std::set<std::string> result;
    for (DWORD i = 0; i < table->NumberOfNames; ++i)
    {
        const std::string name = Demangle(reinterpret_cast<const char*>(base + names[i]));
        // Tables and thunks that the compiler adds to every class are not names that a host writes.
        if (name.rfind("vtable for ", 0) && name.rfind("typeinfo ", 0) && name.find(" thunk to ") == std::string::npos)
            result.insert(name);
    }
    return result;
}

/// The class of a member's name, or the name of a plain function.
std::string ScopeOf(const std::string& name)
{
    return name.substr(0, std::min(name.find("::"), name.find('(')));
}

TEST(Module, ExportsThePublicNamesAndNoOtherClassOrFunction)
{
    std::ifstream file("Z:" PUBLIC_NAMES);
    ASSERT_TRUE(file) << PUBLIC_NAMES;
    const std::set<std::string> exported = ExportedNames(GetModuleHandleA(UTIL_DLL));
    std::set<std::string> scopes;
    for (std::string line; std::getline(file, line);)
    {
        if (line.empty() || line[0] == '#')
            continue;
        EXPECT_TRUE(exported.count(line)) << "not exported: " << line;
        scopes.insert(ScopeOf(line));
    }
    for (const std::string& name : exported)
        EXPECT_TRUE(scopes.count(ScopeOf(name))) << "exported, but not in public-names.txt: " << name;
}

TEST(Module, PrefixComesFromTheFileNameOfTheLibrary)
{
    EXPECT_STREQ(std::string(UTIL_DLL).substr(0, 4).c_str(), TvkProduct::GetProductPrefix());
}

TEST(Module, ExceptionsAreCaughtByType)
{
    CRegistry registry;
    try
    {
        registry.DeleteValue("value");
        FAIL() << "a closed key took a call";
    }
    catch (CRegistryException* error)
    {
        EXPECT_EQ(registry.GetLastError(), ERROR_INVALID_HANDLE);
        error->Delete();
    }
    try
    {
        registry.DeleteValue("value");
        FAIL() << "a closed key took a call";
    }
    catch (CException* error) // by the framework's base as well
    {
        error->Delete();
    }
}

TEST(Module, LoadingAndFreeingLeavesTheResourceHandle)
{
    HINSTANCE before = AfxGetResourceHandle();
    HMODULE again = LoadLibraryA(UTIL_DLL);
    EXPECT_EQ(again, GetModuleHandleA(UTIL_DLL));
    FreeLibrary(again);
    EXPECT_EQ(AfxGetResourceHandle(), before);
}
} // namespace
