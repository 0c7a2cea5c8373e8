// settingsdump LIBRARY.dll: prints the settings of a settings library as the settings file that would compile to it, so
// that two products can be compared or an old library taken into a build again. Damaged resources are printed as
// look-ups read them, with a comment; they and keys that nobody reads make the exit code 1.
#include "KnownKeys.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace
{
constexpr const char* OverrideEnding = "_OVERRIDE";

struct Resource
{
    std::wstring name;
    std::string data;
    bool printed = false;
};

BOOL CALLBACK CollectResource(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR parameter)
{
    auto& resources = *reinterpret_cast<std::vector<Resource>*>(parameter);
    if (IS_INTRESOURCE(name))
        return TRUE; // settings have names
    HRSRC found = FindResourceW(module, name, type);
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void* data = loaded ? LockResource(loaded) : nullptr;
    if (data)
        resources.push_back({name, std::string(static_cast<const char*>(data), SizeofResource(module, found))});
    return TRUE;
}

/// A value as the settings file writes it, followed by a comment when the resource is not what its kind asks for.
struct Value
{
    std::string text;
    std::string damage;
};

Value NumberValue(const std::string& data)
{
    DWORD number = 0;
    if (data.size() >= sizeof number)
        std::memcpy(&number, data.data(), sizeof number);
    std::string damage;
    if (data.size() != sizeof number)
        damage = "a number of " + std::to_string(data.size()) + " bytes";
    return {std::to_string(number), damage};
}

Value TextValue(const std::string& data)
{
    std::string text = "\"";
    const std::string::size_type length = data.find('\0');
    for (char character : data.substr(0, length))
    {
        char escaped[8];
        if (character == '"' || character == '\\')
            text += {'\\', character};
        else if (character >= 0x20 && character < 0x7F)
            text += character;
        else
        {
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned char>(character));
            text += escaped;
        }
    }
    for (auto place = text.find("${"); place != std::string::npos; place = text.find("${", place + 3))
        text.insert(place, 1, '$');
    std::string damage;
    if (length == std::string::npos)
        damage = "a text without its terminator";
    else if (length + 1 != data.size())
        damage = std::to_string(data.size() - length - 1) + " bytes after the text's terminator";
    return {text + '"', damage};
}

/// Prints one line; false when the resource is damaged.
bool PrintSetting(const std::string& key, Resource& resource, bool number)
{
    resource.printed = true;
    const Value value = number ? NumberValue(resource.data) : TextValue(resource.data);
    std::printf("%s = %s%s%s\n", key.c_str(), value.text.c_str(),
                value.damage.empty() ? "" : " # damaged: ", value.damage.c_str());
    return value.damage.empty();
}

Resource* Find(std::vector<Resource>& resources, const std::string& key)
{
    // Resource names do not tell case apart.
    const std::wstring wide(key.begin(), key.end());
    for (Resource& resource : resources)
        if (_wcsicmp(resource.name.c_str(), wide.c_str()) == 0)
            return &resource;
    return nullptr;
}

/// The look-up key of a preloaded cartridge: the one byte that the name is in the system's code page; 0 for others.
unsigned CartridgeKey(const std::wstring& name)
{
    unsigned char bytes[4] = {};
    if (name.size() != 1 || WideCharToMultiByte(CP_ACP, 0, name.c_str(), 1, reinterpret_cast<char*>(bytes),
                                                sizeof bytes, nullptr, nullptr) != 1)
        return 0;
    return bytes[0];
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: settingsdump LIBRARY.dll\n");
        return 2;
    }
    HMODULE module = LoadLibraryExA(argv[1], nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!module)
    {
        std::fprintf(stderr, "settingsdump: %s cannot be loaded (error %lu)\n", argv[1], GetLastError());
        return 2;
    }
    std::vector<Resource> resources;
    EnumResourceNamesW(module, MAKEINTRESOURCEW(10), CollectResource, reinterpret_cast<LONG_PTR>(&resources));
    FreeLibrary(module);

    bool sound = true;
    const char* file = argv[1];
    for (const char* cut = file; (cut = std::strpbrk(cut, "\\/")); ++cut)
        file = cut + 1;
    std::printf("# Settings of %s\n", file);
    for (const KnownKey& known : KnownKeys)
    {
        if (Resource* resource = Find(resources, known.name))
            sound &= PrintSetting(known.name, *resource, known.number);
        const std::string overrideKey = std::string(known.name) + OverrideEnding;
        if (Resource* resource = Find(resources, overrideKey))
            sound &= PrintSetting(overrideKey, *resource, true);
    }
    std::map<unsigned, Resource*> cartridges;
    for (Resource& resource : resources)
        if (const unsigned code = CartridgeKey(resource.name))
            cartridges[code] = &resource;
    for (const auto& [code, resource] : cartridges)
    {
        char key[20];
        std::snprintf(key, sizeof key, "cartridge 0x%02X", code);
        sound &= PrintSetting(key, *resource, false);
    }
    for (const Resource& resource : resources)
        if (!resource.printed)
        {
            std::printf("# unknown key: %ls (%u bytes)\n", resource.name.c_str(),
                        static_cast<unsigned>(resource.data.size()));
            sound = false;
        }
    return sound ? 0 : 1;
}
