#include "RegistryWorld.h"
#include <gtest/gtest.h>
#include <sddl.h>
#include <cstdio>
#include "system/internal/Handle.h"

RegistryWorld::~RegistryWorld()
{
    for (const auto& [root, path] : m_restricted)
        Grant(root, path, KEY_ALL_ACCESS);
    for (const auto& [root, path, name, bytes, type] : m_kept)
        if (bytes)
            Set(root, path, name.c_str(), type, *bytes);
        else
            RegDeleteKeyValueA(root, path.c_str(), name.c_str());
    for (auto claim = m_claimed.rbegin(); claim != m_claimed.rend(); ++claim)
    {
        RegDeleteTreeA(claim->first, claim->second.c_str());
        EXPECT_FALSE(Exists(claim->first, claim->second)) << claim->second << " is still there";
    }
}

void RegistryWorld::Claim(HKEY root, const std::string& path)
{
    for (std::size_t end = path.find('\\');; end = path.find('\\', end + 1))
    {
        const std::string part = path.substr(0, end);
        if (!Exists(root, part))
        {
            m_claimed.emplace_back(root, part);
            return;
        }
        if (end == std::string::npos)
            return;
    }
}

void RegistryWorld::Key(HKEY root, const std::string& path)
{
    Claim(root, path);
    tvk::RegistryKey key;
    EXPECT_EQ(RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_READ, nullptr, key.Receive(), nullptr), 0) << path;
}

void RegistryWorld::Set(HKEY root, const std::string& path, const char* name, DWORD type, const std::string& bytes)
{
    Claim(root, path);
    EXPECT_EQ(RegSetKeyValueA(root, path.c_str(), name, type, bytes.data(), static_cast<DWORD>(bytes.size())), 0)
        << path;
}

void RegistryWorld::SetText(HKEY root, const std::string& path, const char* name, const std::string& text)
{
    Set(root, path, name, REG_SZ, std::string(text.c_str(), text.size() + 1));
}

void RegistryWorld::SetNumber(HKEY root, const std::string& path, const char* name, DWORD number)
{
    Set(root, path, name, REG_DWORD, std::string(reinterpret_cast<const char*>(&number), sizeof number));
}

void RegistryWorld::Keep(HKEY root, const std::string& path, const char* name)
{
    DWORD type = REG_NONE;
    RegGetValueA(root, path.c_str(), name, RRF_RT_ANY | RRF_NOEXPAND, &type, nullptr, nullptr);
    m_kept.push_back({root, path, name, Get(root, path, name), type});
}

void RegistryWorld::Restrict(HKEY root, const std::string& path, DWORD rights)
{
    m_restricted.emplace_back(root, path);
    Grant(root, path, rights);
}

void RegistryWorld::Grant(HKEY root, const std::string& path, DWORD rights)
{
    char text[40] = "D:";
    if (rights)
        std::snprintf(text, sizeof text, "D:(A;;0x%lx;;;WD)", rights);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorA(text, SDDL_REVISION_1, &descriptor, nullptr));
    tvk::RegistryKey key;
    EXPECT_EQ(RegOpenKeyExA(root, path.c_str(), 0, WRITE_DAC, key.Receive()), 0) << path;
    EXPECT_EQ(RegSetKeySecurity(key.Get(), DACL_SECURITY_INFORMATION, descriptor), 0) << path;
    LocalFree(descriptor);
}

void RegistryWorld::Printer(const std::string& friendlyName, const std::string& originalName, DWORD type)
{
    const std::string entry = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\" + friendlyName;
    const std::string terminator(type == REG_SZ ? 1 : 0, '\0');
    Set(HKEY_LOCAL_MACHINE, entry + "\\PrinterDriverData", "OriginalFriendlyName", type, originalName + terminator);
}

bool RegistryWorld::Exists(HKEY root, const std::string& path)
{
    tvk::RegistryKey key;
    const LONG result = RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, key.Receive());
    return result == ERROR_SUCCESS || result == ERROR_ACCESS_DENIED;
}

std::optional<std::string> RegistryWorld::Get(HKEY root, const std::string& path, const char* name)
{
    tvk::RegistryKey key;
    DWORD size = 0;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS ||
        RegQueryValueExA(key.Get(), name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return {};
    std::string bytes(size, '\0');
    RegQueryValueExA(key.Get(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()), &size);
    return bytes;
}
