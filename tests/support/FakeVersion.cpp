#include "FakeVersion.h"
#include "TestProduct.h"
#include <gtest/gtest.h>
#include <array>

namespace
{
struct Version
{
    int platform;
    unsigned long major, minor;
};
Version Told;
DWORD LeftError;

BOOL WINAPI TellVersion(OSVERSIONINFOA* version)
{
    SetLastError(LeftError);
    if (Told.platform < 0)
        return FALSE;
    version->dwPlatformId = static_cast<DWORD>(Told.platform);
    version->dwMajorVersion = Told.major;
    version->dwMinorVersion = Told.minor;
    return TRUE;
}

Version VersionOf(int code)
{
    static constexpr std::array<Version, 10> versions = {
        {{-1, 0, 0}, {}, {}, {0, 3, 10}, {1, 4, 0}, {1, 4, 10}, {1, 4, 90}, {2, 4, 0}, {2, 5, 0}, {2, 5, 1}}};
    return versions.at(static_cast<size_t>(code));
}
} // namespace

FakeVersion::FakeVersion(int platform, unsigned long major, unsigned long minor)
    : m_patch(LibraryUnderTest(), "GetVersionExA", &TellVersion)
{
    Told = {platform, major, minor};
    LeftError = 0;
}

FakeVersion::FakeVersion(int version, unsigned long lastError)
    : FakeVersion(VersionOf(version).platform, VersionOf(version).major, VersionOf(version).minor)
{
    LeftError = lastError;
}
