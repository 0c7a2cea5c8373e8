// The sample product installed into this machine and taken out again; what programs read in between.
#include "KnownKeys.h"
#include "SampleProduct.h"
#include "diag/ActivityTracker.h"
#include "links/CDataRetriever.h"
#include "links/CatsWinHelp.h"
#include "install/RegistryTree.h"
#include "settings/ConfigurationLibrary.h"
#include "settings/TvkIniFile.h"
#include "system/CSafeRegistry.h"
#include "system/internal/Handle.h"
#include "support/Probe.h"
#include "support/RegistryWorld.h"
#include "support/Screen.h"
#include "support/Screen.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

const char* const System32 = "C:\\windows\\system32\\";
const char* const HelpFolder = "C:\\windows\\Help\\";
const char* const StartMenu = "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\";
const char* const Desktop = "C:\\users\\Public\\Desktop\\";
const char* const DriverFolder = "C:\\windows\\system32\\spool\\drivers\\x64\\3\\";

ProcessResult Installer(const std::string& arguments)
{
    return RunProcess("productinstall.exe " + arguments);
}

std::string Lower(std::string name)
{
    CharLowerA(name.data());
    return name;
}

void AddKeys(std::set<std::string>& found, HKEY root, const std::string& path)
{
    tvk::RegistryKey key;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, key.Receive()) != 0)
        return;
    found.insert(Lower(path));
    char name[512];
    DWORD size;
    for (DWORD i = 0; RegEnumValueA(key.Get(), i, name, &(size = sizeof name), nullptr, nullptr, nullptr, nullptr) == 0;
         ++i)
        found.insert(Lower(path + " : " + name));
    for (DWORD i = 0; RegEnumKeyA(key.Get(), i, name, sizeof name) == 0; ++i)
        if (std::string(name) != "Classes") // a third of the registry, and none of ours
            AddKeys(found, root, path + "\\" + name);
}

/// The names, in small letters, of everything that an installation could leave behind: registry keys and values, files
/// and folders.
std::set<std::string> Machine()
{
    std::set<std::string> found;
    AddKeys(found, HKEY_LOCAL_MACHINE, "SOFTWARE");
    AddKeys(found, HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\Print");
    AddKeys(found, HKEY_CURRENT_USER, "Printers");
    for (const char* folder : {"C:\\", "C:\\windows"})
        for (const auto& entry : fs::directory_iterator(folder))
            found.insert(Lower(entry.path().string()));
    std::error_code missing;
    for (const char* folder : {System32, HelpFolder, StartMenu, Desktop, "C:\\windows\\All Users"})
        for (const auto& entry : fs::recursive_directory_iterator(folder, missing))
            found.insert(Lower(entry.path().string()));
    for (const char* key : {"\\drivers\\version-3", "\\drivers"}) // the spooler's own, made for the first driver
        found.erase(std::string("system\\currentcontrolset\\control\\print\\environments\\windows x64") + key);
    return found;
}

/// The names that are on one machine only.
std::vector<std::string> Differences(const std::set<std::string>& before, const std::set<std::string>& after)
{
    std::vector<std::string> differences;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(differences));
    return differences;
}

/// What the recorder has kept.
std::string Usage()
{
    std::ifstream file(std::string(DriverFolder) + "usage.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs the installer, which succeeds; what it printed.
std::string Done(const std::string& arguments)
{
    const ProcessResult result = Installer(arguments);
    EXPECT_EQ(result.exitCode, 0u) << result.output;
    return result.output;
}

/// The product installed while these tests run; they only read.
class InstalledProduct : public testing::Test
{
protected:
    static void SetUpTestSuite() { EXPECT_THAT(Done(""), HasSubstr("Torvane Larkmoor 460 is installed.")); }
    static void TearDownTestSuite() { Done("--remove"); }
};
} // namespace

TEST(ProductInstall, LeavesTheMachineAsItWas)
{
    Installer("--remove"); // what a test that was ended halfway has left
    const std::set<std::string> before = Machine();
    Done("--printer \"Office printer\" --trace 4");
    const std::set<std::string> between = Machine();
    for (const char* made :
         {"software\\torvane\\inkjet\\ijprtsettings\\office printer\\gui\\psw", "software\\torvane : guilog",
          "system\\currentcontrolset\\control\\print\\printers\\office printer\\printerdriverdata : "
          "originalfriendlyname",
          "software\\torvane\\morvay supplies\\larkmoor400 : servicetag",
          "c:\\windows\\system32\\" PRODUCT_PREFIX "plc.ini", "c:\\users\\public\\desktop\\printer status.lnk",
          "c:\\programdata\\microsoft\\windows\\start menu\\programs\\torvane printer suite\\printer status.lnk"})
        EXPECT_EQ(between.count(made), 1u) << made;
    EXPECT_EQ(CDataRetriever().SetParticipationLevel(1), 1);    // leaves a file
    EXPECT_EQ(ActivityTracker().WriteData(0x6001, "LM460"), 1); // leaves one, too
    Done("--remove");
    EXPECT_THAT(Differences(before, Machine()), IsEmpty());
}

TEST(ProductInstall, FindsTheShortcutsWhereTheLibraryPutsThem)
{
    const char* const folders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    const std::string withoutValues = "C:\\windows\\All Users\\", ofAnotherType = std::string(HelpFolder) + "shell\\";
    for (const std::string& root : {withoutValues, ofAnotherType})
    {
        const std::string desktop = root + "Desktop", programs = root + "Start Menu\\Programs";
        RegistryWorld world;
        for (const auto& [name, folder] : {std::pair{"Common Desktop", desktop}, {"Common Programs", programs}})
        {
            fs::create_directories(folder);
            world.Keep(HKEY_LOCAL_MACHINE, folders, name);
            RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, folders, name);
            if (root == ofAnotherType)
                world.Set(HKEY_LOCAL_MACHINE, folders, name, REG_EXPAND_SZ, folder + '\0');
        }
        const std::set<std::string> before = Machine();
        const std::string output = Done("");
        for (const std::string& link :
             {desktop + "\\Printer Status.lnk", programs + "\\Torvane Printer Suite\\Remove the Printer Software.lnk"})
        {
            EXPECT_THAT(output, HasSubstr(link));
            EXPECT_TRUE(fs::exists(link)) << link;
        }
        Done("--remove");
        EXPECT_THAT(Differences(before, Machine()), IsEmpty());
        fs::remove_all(root);
    }
}

TEST(ProductInstall, ReadsTextsAsLongAsAPath)
{
    RegistryWorld world;
    for (const size_t length : {255, 259, 260})
    {
        world.SetText(HKEY_LOCAL_MACHINE, "SOFTWARE\\InstallTest", "text", std::string(length, 'x'));
        EXPECT_EQ(std::string(ReadText("SOFTWARE\\InstallTest", "text")).size(), length < MAX_PATH ? length : 0);
    }
}

TEST(ProductInstall, SaysWhatFailed)
{
    EXPECT_EQ(Installer("--trace 5").exitCode, 2u);
    EXPECT_EQ(Installer("--remove").exitCode, 1u) << "nothing is installed";

    const std::set<std::string> before = Machine();
    const std::string preload = std::string(System32) + PRODUCT_PREFIX "plc.ini";
    const HANDLE held = CreateFileA(preload.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const ProcessResult failed = Installer("");
    CloseHandle(held);
    EXPECT_EQ(failed.exitCode, 1u);
    EXPECT_THAT(failed.output, HasSubstr("FAILED: cannot write DefineInstalledCart1=52 to " + preload));
    EXPECT_EQ(Installer("--remove").exitCode, 1u) << "no printer was installed";
    EXPECT_THAT(Differences(before, Machine()), IsEmpty());
}

TEST_F(InstalledProduct, SettingsAreTheModelsAndItsPrinters)
{
    const char* const texts[][2] = {
        {"IDO_MODEL", "Larkmoor 460"},
        {"IDO_URL_PRINTER_CODE", "LM46"},
        {"IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS", "/T=200 /L=a /P=\"Torvane Larkmoor 460\""},
        {"IDO_DEFAULT_COLORCART", "TC-482H"},
        {"IDO_DEFAULT_BLACKCART", "TK-481H"},
    };
    for (const auto& [key, text] : texts)
        EXPECT_EQ(Text(key), text);
    EXPECT_EQ(TvkProduct().CompareSetting("IDO_PRINTHEADFORMAT", 2ul), 1) << "the series has 1";
    EXPECT_EQ(Text("IDO_DRIVER_PRODUCTVERSION_STR"),
              std::string(TvkIniFile().ReadINI(DriverFolder + CString(Text("IDO_PRODVER").c_str()), "Version",
                                               Text("IDO_PRODVERSECTION").c_str())));
    CSafeRegistry registry; // the printer's settings are every user's
    registry.SetFriendlyName("Torvane Larkmoor 460");
    EXPECT_EQ(registry.Open(nullptr, "PrinterDriverData", 0, KEY_READ), 1);
    EXPECT_EQ(ReadText(registry.GetSubKey(), "Model"), "Larkmoor 460");
}

TEST_F(InstalledProduct, HelpOpensInTheViewerAndInTheProcess)
{
    for (const int launchViewer : {1, 0})
    {
        CatsWinHelp(nullptr, Text("IDO_PSW_HELPFILE").c_str(), 15, 302, "LM460-0142-7", launchViewer);
        HWND help = nullptr;
        ASSERT_TRUE(Until([&] { return (help = FindWindowA("HH Parent", "Torvane Larkmoor Help")) != nullptr; }));
        DWORD process = 0;
        GetWindowThreadProcessId(help, &process);
        EXPECT_EQ(process == GetCurrentProcessId(), !launchViewer);
        PostMessageA(help, WM_CLOSE, 0, 0);
        EXPECT_TRUE(Until([help] { return !IsWindow(help); }));
        EXPECT_THAT(Usage(), AllOf(HasSubstr("  LM460-0142-7  item 0x6015: help topic 302\r\n"),
                                   EndsWith("  LM460-0142-7  item 0x6015: 1, 1 times\r\n")));
    }
}

TEST_F(InstalledProduct, ConfigurationLibraryAnswersEveryOverride)
{
    const HMODULE library = LoadLibraryA((std::string(DriverFolder) + PRODUCT_PREFIX "conf.dll").c_str());
    const auto entry = tvk::FindEntry<GetConfigDataFunction>(library, "GetConfigData");
    ASSERT_TRUE(entry);
    char answer[256];
    unsigned long size = 0;
    int overrides = 0;
    for (const KnownKey& known : KnownKeys)
    {
        const std::string item = Resource(std::string(known.name) + "_OVERRIDE");
        if (item.empty())
            continue;
        SCOPED_TRACE(known.name);
        ++overrides;
        // Twice over: the size word keeps what the question before it left.
        for (int round = 0; round < 2; ++round)
        {
            EXPECT_EQ(entry(0, NumberOf(item), 0, answer, &size), ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE);
            EXPECT_EQ(entry(0, NumberOf(item), 0, answer, &size), ERROR_CONFIG_SUCCESS);
        }
        EXPECT_EQ(size, known.number ? sizeof(DWORD) : std::string(answer).size() + 1);
    }
    EXPECT_GT(overrides, 3);
    EXPECT_EQ(entry(0, 4711, 0, answer, &size), ERROR_CONFIG_UNDEFINED_ITEM);
    FreeLibrary(library);
}
