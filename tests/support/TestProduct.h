// Products made by a test: real resource-only libraries, written for the test and gone after it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

/// One setting of a settings library: a text with its NUL, a 32-bit number, or the bytes as they are.
struct TestSetting
{
    TestSetting(const char* key, const char* text) : key(key), bytes(std::string(text) + '\0') {}
    TestSetting(const char* key, unsigned long number)
        : key(key), bytes(reinterpret_cast<const char*>(&number), sizeof number)
    {
    }
    TestSetting(const char* key, std::string raw) : key(key), bytes(std::move(raw)) {}

    std::string key;
    std::string bytes;
};
using TestSettings = std::initializer_list<TestSetting>;
/// Settings that a test puts together.
using SettingList = std::vector<TestSetting>;

/// A resource as a library holds it, of the neutral language.
struct TestResource
{
    LPCSTR type, name;
    std::string bytes;
};
/// Writes a resource-only library with these resources and no others.
void WriteLibrary(const std::string& path, const std::vector<TestResource>& resources);

/// A settings library in a file, not loaded.
class TestLibrary
{
public:
    /// Writes `fileName` beside the utilities library under test. `language` becomes string 8003, the driver's
    /// language.
    TestLibrary(const std::string& fileName, const SettingList& settings, const std::string& language = "");
    ~TestLibrary();
    TestLibrary(const TestLibrary&) = delete;
    TestLibrary& operator=(const TestLibrary&) = delete;

    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

/// The product, for as long as the object lives: its settings library is resident, so that every look-up finds it in
/// place of the one beside the utilities library.
class TestProduct
{
public:
    explicit TestProduct(TestSettings settings, const std::string& language = "");
    explicit TestProduct(const SettingList& settings, const std::string& language = "");
    ~TestProduct();

    /// The settings library's file name, as records name it.
    static std::string LibraryName();

private:
    std::string m_folder;
    std::unique_ptr<TestLibrary> m_library;
    HMODULE m_module;
};

/// The folder of the tests' programs and libraries, with the backslash.
std::string TestFolder();
/// The Windows system directory, with the backslash.
std::string SystemFolder();
/// The bytes of a file; none without it.
std::string FileText(const std::string& path);
/// The utilities library under test, for IatPatch.
HMODULE LibraryUnderTest();
