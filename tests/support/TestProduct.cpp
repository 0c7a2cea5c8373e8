#include "TestProduct.h"
#include "settings/TvkProduct.h"
#include <gtest/gtest.h>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace
{
constexpr int LanguageString = 8003;
constexpr int StringsInBlock = 16;

/// A block of the string table with one string.
std::string StringBlock(int id, const std::string& text)
{
    std::wstring block(static_cast<size_t>(id % StringsInBlock), L'\0');
    block += static_cast<wchar_t>(text.size());
    block.append(text.begin(), text.end());
    block.append(StringsInBlock - 1 - id % StringsInBlock, L'\0');
    return {reinterpret_cast<const char*>(block.data()), block.size() * sizeof(wchar_t)};
}

std::string MakeProductFolder()
{
    static int count = 0;
    const std::string folder = "product-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
    CreateDirectoryA((TestFolder() + folder).c_str(), nullptr);
    return folder;
}
} // namespace

void WriteLibrary(const std::string& path, const std::vector<TestResource>& resources)
{
    const std::string seed = TestFolder() + TestProduct::LibraryName();
    ASSERT_TRUE(CopyFileA(seed.c_str(), path.c_str(), FALSE)) << path << ": " << GetLastError();
    const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
    ASSERT_TRUE(update) << path << ": " << GetLastError();
    for (TestResource resource : resources)
        UpdateResourceA(update, resource.type, resource.name, 0, resource.bytes.data(),
                        static_cast<DWORD>(resource.bytes.size()));
    ASSERT_TRUE(EndUpdateResourceA(update, FALSE)) << path << ": " << GetLastError();
}

TestLibrary::TestLibrary(const std::string& fileName, const SettingList& settings, const std::string& language)
    : m_path(TestFolder() + fileName)
{
    std::vector<TestResource> resources;
    for (const TestSetting& setting : settings)
        resources.push_back({MAKEINTRESOURCEA(10), setting.key.c_str(), setting.bytes});
    if (!language.empty())
        resources.push_back({MAKEINTRESOURCEA(6), MAKEINTRESOURCEA(LanguageString / StringsInBlock + 1),
                             StringBlock(LanguageString, language)});
    WriteLibrary(m_path, resources);
}

TestLibrary::~TestLibrary()
{
    EXPECT_TRUE(DeleteFileA(m_path.c_str())) << m_path << " is still loaded? " << GetLastError();
}

TestProduct::TestProduct(TestSettings settings, const std::string& language)
    : TestProduct(SettingList(settings), language)
{
}

TestProduct::TestProduct(const SettingList& settings, const std::string& language)
    : m_folder(MakeProductFolder()),
      m_library(std::make_unique<TestLibrary>(m_folder + "\\" + LibraryName(), settings, language))
{
    EXPECT_FALSE(GetModuleHandleA(LibraryName().c_str())) << "another product is resident";
    m_module = LoadLibraryA(m_library->Path().c_str());
    EXPECT_TRUE(m_module) << m_library->Path() << ": " << GetLastError();
}

TestProduct::~TestProduct()
{
    FreeLibrary(m_module);
    EXPECT_FALSE(GetModuleHandleA(LibraryName().c_str())) << "the product is still in use";
    m_library.reset();
    RemoveDirectoryA((TestFolder() + m_folder).c_str());
}

std::string TestProduct::LibraryName()
{
    return static_cast<LPCSTR>(TvkProduct::GetProductPrefix() + "jswr.dll");
}

std::string TestFolder()
{
    const std::string program = _pgmptr;
    return program.substr(0, program.rfind('\\') + 1);
}

std::string SystemFolder()
{
    char path[MAX_PATH] = "";
    GetSystemDirectoryA(path, MAX_PATH);
    return std::string(path) + '\\';
}

std::string FileText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

HMODULE LibraryUnderTest()
{
    return GetModuleHandleA(TvkProduct::GetProductPrefix() + "util.dll");
}
