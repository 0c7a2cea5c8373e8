#include "RedirectedRoot.h"
#include <gtest/gtest.h>
#include "system/internal/Handle.h"

RedirectedRoot::RedirectedRoot(HKEY root) : m_root(root)
{
    static int count = 0;
    m_path = "Software\\TorvaneTest\\root-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
    tvk::RegistryKey key;
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, m_path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(),
                              nullptr),
              0);
    EXPECT_EQ(RegOverridePredefKey(root, key.Get()), 0);
}

RedirectedRoot::~RedirectedRoot()
{
    RegOverridePredefKey(m_root, nullptr);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, m_path.c_str()), 0);
    RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\TorvaneTest"); // refused while another test's key is in it
}
