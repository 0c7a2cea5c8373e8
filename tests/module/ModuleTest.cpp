// What the library exports.
#include <windows.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <cxxabi.h>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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

std::vector<std::string> Split(const std::string& names)
{
    std::vector<std::string> result;
    std::istringstream stream(names);
    for (std::string name; std::getline(stream >> std::ws, name, ';');)
        result.push_back(name);
    return result;
}

TEST(Module, ExportsThePublicNamesAndNoOtherClassOrFunction)
{
    std::ifstream file("Z:" PUBLIC_NAMES);
    ASSERT_TRUE(file) << PUBLIC_NAMES;
    const std::set<std::string> exported = ExportedNames(LoadLibraryA(UTIL_DLL));
    std::set<std::string> scopes;
    std::string scope;
    for (std::string line; std::getline(file, line);)
    {
        if (line[0] != ' ')
            scope = line[0] == '(' || line[0] == '#' ? "" : line + "::";
        else
            for (const std::string& member : Split(line))
            {
                EXPECT_TRUE(exported.count(scope + member)) << "not exported: " << scope << member;
                scopes.insert(ScopeOf(scope + member));
            }
    }
    for (const std::string& name : exported)
        EXPECT_TRUE(scopes.count(ScopeOf(name))) << "exported, but not in public-names.txt: " << name;
}
} // namespace
