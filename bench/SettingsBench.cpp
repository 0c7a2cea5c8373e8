// Rows of the product settings: a look-up against the system calls that it must make, and against the same key read
// from an INI file.
#include "Harness.h"
#include <afx.h>
#include "settings/TvkProduct.h"
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
constexpr const char* Key = "IDO_SUPPLIES_SUBURL"; // a text that no configuration item overrides
constexpr const char* OverrideKey = "IDO_SUPPLIES_SUBURL_OVERRIDE";
constexpr const char* SwitchKey = "SOFTWARE\\TORVANE";

const char* FindText(HMODULE library, const char* key)
{
    HRSRC found = FindResourceA(library, key, MAKEINTRESOURCEA(10));
    return found ? static_cast<const char*>(LockResource(LoadResource(library, found))) : nullptr;
}

/// The INI file that holds the same settings: five hundred keys, ours in the middle.
std::string WriteIni(const std::string& value)
{
    char folder[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, folder);
    const std::string path = std::string(folder) + "bench.ini";
    std::FILE* file = std::fopen(path.c_str(), "w");
    std::fputs("[settings]\n", file);
    for (int i = 0; i < 500; ++i)
        std::fprintf(file, "%s=%s\n", i == 250 ? Key : ("IDO_FILLER_" + std::to_string(i)).c_str(), value.c_str());
    std::fclose(file);
    return path;
}

bool LookUp()
{
    const std::string settingsName = static_cast<LPCSTR>(TvkProduct::GetProductPrefix() + "jswr.dll");
    HMODULE resident = LoadLibraryA(settingsName.c_str());
    const char* expected = resident ? FindText(resident, Key) : nullptr;
    CString value;
    if (!expected || TvkProduct().GetSetting(Key, value) != expected)
    {
        std::printf("the settings library does not answer %s\n", Key);
        return false;
    }
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, SwitchKey, 0, KEY_ALL_ACCESS, &key) == ERROR_SUCCESS)
    {
        RegCloseKey(key);
        std::printf("the trace switch key is there: the figures are for a machine without it\n");
        return false;
    }
    TvkProduct product;
    const bench::Contender ours = {"TvkProduct::GetSetting, text, trace off", [&](int count)
                                   {
                                       CString text;
                                       for (int i = 0; i < count; ++i)
                                           product.GetSetting(Key, text);
                                   }};
    const bench::Contender calls = {
        "the system calls: 2 modules, 2 resources, 1 key", [&](int count)
        {
            for (int i = 0; i < count; ++i)
            {
                FindText(GetModuleHandleA(settingsName.c_str()), OverrideKey);
                FindText(GetModuleHandleA(settingsName.c_str()), Key);
                HKEY opened = nullptr;
                if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, SwitchKey, 0, KEY_ALL_ACCESS, &opened) == ERROR_SUCCESS)
                    RegCloseKey(opened);
            }
        }};
    const std::string ini = WriteIni(expected);
    const bench::Contender iniFile = {"GetPrivateProfileStringA, 500 keys", [&](int count)
                                      {
                                          char text[256];
                                          for (int i = 0; i < count; ++i)
                                              GetPrivateProfileStringA("settings", Key, "", text, sizeof text,
                                                                       ini.c_str());
                                      }};
    const bool met = bench::Compare("setting look-up, settings library resident, trace off", ours,
                                    {{calls, bench::Goal::AtMost, 1.15}, {iniFile, bench::Goal::AtLeast, 4.0}}, 200);
    DeleteFileA(ini.c_str());
    FreeLibrary(resident);
    return met;
}

const bench::Registration Registered("settings", LookUp);
} // namespace
