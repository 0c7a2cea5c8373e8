// The real registry for a test: whatever was not there before the test is gone after it, however it was made. Tests
// with keys of their own names may run beside others.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

class RegistryWorld
{
public:
    RegistryWorld() = default;
    ~RegistryWorld();
    RegistryWorld(const RegistryWorld&) = delete;
    RegistryWorld& operator=(const RegistryWorld&) = delete;

    /// The test, or the code under test, may make this key: what of the path is not there yet is removed at the end.
    void Claim(HKEY root, const std::string& path);
    /// Makes a key, claimed.
    void Key(HKEY root, const std::string& path);
    /// Writes raw bytes as a value of a claimed key; SetText adds the NUL, SetNumber writes a REG_DWORD.
    void Set(HKEY root, const std::string& path, const char* name, DWORD type, const std::string& bytes);
    void SetText(HKEY root, const std::string& path, const char* name, const std::string& text);
    void SetNumber(HKEY root, const std::string& path, const char* name, DWORD number);
    /// A value that the test may change: at the end it is as it is now.
    void Keep(HKEY root, const std::string& path, const char* name);
    /// Grants everyone these rights to a key and nobody more (0: no rights at all), until the end of
    /// the test.
    void Restrict(HKEY root, const std::string& path, DWORD rights);
    /// An installed printer's own registry entry; `originalName` may be raw bytes of another type.
    void Printer(const std::string& friendlyName, const std::string& originalName, DWORD type = REG_SZ);

    static bool Exists(HKEY root, const std::string& path);
    /// The bytes of a value as they are stored; nothing when it is missing.
    static std::optional<std::string> Get(HKEY root, const std::string& path, const char* name);

private:
    static void Grant(HKEY root, const std::string& path, DWORD rights);

    struct Kept
    {
        HKEY root;
        std::string path, name;
        std::optional<std::string> bytes;
        DWORD type;
    };
    std::vector<std::pair<HKEY, std::string>> m_claimed, m_restricted;
    std::vector<Kept> m_kept;
};
