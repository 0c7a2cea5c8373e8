// The sample product installed into this machine and taken out again; what programs read in between.
#include "KnownKeys.h"
#include "SampleProduct.h"
#include "diag/ActivityTracker.h"
#include "links/CComxDataRetriever.h"
#include "links/CDataRetriever.h"
#include "links/CGUIUrlLink.h"
#include "links/CatsWinHelp.h"
#include "install/RegistryTree.h"
#include "locale/OEMTeleIni.h"
#include "settings/ConfigurationLibrary.h"
#include "settings/TvkIniFile.h"
#include "system/CPrinterData.h"
#include "system/CSafeRegistry.h"
#include "system/internal/Handle.h"
#include "support/Probe.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
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

/// Handles messages until the condition holds; ten seconds at most.
bool Await(const std::function<bool()>& condition)
{
    MSG message;
    for (int tries = 0; !condition() && tries < 500; ++tries)
    {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        Sleep(20);
    }
    return condition();
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
    const std::string root = "C:\\windows\\All Users\\", programs = root + "Start Menu\\Programs";
    RegistryWorld world;
    for (const char* name : {"Common Desktop", "Common Programs"}) // without them: below the Windows directory
    {
        world.Keep(HKEY_LOCAL_MACHINE, folders, name);
        RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, folders, name);
    }
    fs::create_directories(root + "Desktop");
    fs::create_directories(programs);
    const std::set<std::string> before = Machine();
    const std::string output = Done("");
    for (const std::string& link :
         {root + "Desktop\\Printer Status.lnk", programs + "\\Torvane Printer Suite\\Remove the Printer Software.lnk"})
    {
        EXPECT_THAT(output, HasSubstr(link));
        EXPECT_TRUE(fs::exists(link)) << link;
    }
    Done("--remove");
    EXPECT_THAT(Differences(before, Machine()), IsEmpty());
    fs::remove_all(root);
}

TEST(ProductInstall, ReadsTextsAsLongAsAPath)
{
    RegistryWorld world;
    for (const int length : {255, 259, 260})
    {
        world.SetText(HKEY_LOCAL_MACHINE, "SOFTWARE\\InstallTest", "text",
                      std::string(static_cast<size_t>(length), 'x'));
        EXPECT_EQ(ReadText("SOFTWARE\\InstallTest", "text").GetLength(), length < MAX_PATH ? length : 0);
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

TEST_F(InstalledProduct, SettingsAreTheModelsAndThePreloadedCartridges)
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
}

TEST_F(InstalledProduct, IniFilesHoldTheirValues)
{
    const auto value = [](const char* file, const char* key, const char* section) {
        return std::string(
            TvkIniFile().ReadINI(CString(DriverFolder) + Text(file).c_str(), key, Text(section).c_str()));
    };
    EXPECT_EQ(value("IDO_PHONENUMBER_INIFILE_NAME", "  0x0409", "IDO_PHONENUMBER_SECTION_NAME"), "(555) 555-0142");
    EXPECT_EQ(value("IDO_PRODVER", "Version", "IDO_PRODVERSECTION"), Text("IDO_DRIVER_PRODUCTVERSION_STR"));
    EXPECT_EQ(value("IDO_RETAILERSPECIFIC_INIFILE_NAME", "Partner", "IDO_RETAILER_SPECIFIC_SECTION_NAME"), "HARBOUR7");
}

TEST_F(InstalledProduct, PrinterAnswersForItsPapersAndItsInk)
{
    CPrinterData data;
    short paper = DMPAPER_A4;
    CRect area;
    EXPECT_EQ(data.GetBorderlessPaperSize("Torvane Larkmoor 460", paper, area), 1);
    EXPECT_EQ(area, CRect(0, 0, 2479, 3508));
    CComxDataRetriever retriever;
    EXPECT_EQ(retriever.GetPrinterCacheData("Torvane Larkmoor 460"), 1);
    EXPECT_STREQ(retriever.GetSerialNumber(), "LM460-0142-7");
    EXPECT_EQ(retriever.GetInkPercent(4), 8u);
    EXPECT_EQ(CComxDataRetriever().GetPrinterCacheData("another printer"), 0);
    CSafeRegistry registry; // its settings are every user's
    registry.SetFriendlyName("Torvane Larkmoor 460");
    EXPECT_EQ(registry.Open(nullptr, "PrinterDriverData", 0, KEY_READ), 1);
    EXPECT_EQ(ReadText(registry.GetSubKey(), "Model"), "Larkmoor 460");
}

TEST_F(InstalledProduct, SupportNumbersAreThere)
{
    CString country;
    OEMTeleIni telephones;
    EXPECT_STREQ(telephones.GetDefaultPhoneNumber(country), "(555) 555-0142");
    telephones.GetPhoneNumberList();
    EXPECT_STREQ(telephones.m_strDisplay[0], "(555) 555-0142 - United States");
    telephones.WriteMyLocaleKey("00000807");
    EXPECT_STREQ(telephones.GetDefaultPhoneNumber(country), "Worldwide support: www.torvane.example/support");
    EXPECT_STREQ(country, "Switzerland");
}

TEST_F(InstalledProduct, ASuppliesLinkGoesOutWithAllThatIsKnown)
{
    const RedirectedRoot classes(HKEY_CLASSES_ROOT);
    const RecordingProgram browser(TestFolder() + "browser.exe");
    RegistryWorld world;
    world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "page");
    world.SetText(HKEY_CLASSES_ROOT, "page\\shell\\open\\command", "", "\"" + browser.Path() + "\" \"%1\"");
    INKINFO ink{};
    ink.iLogCartID1 = 80;
    ink.iLogCartID2 = 48;
    ink.InkPercent1 = 80;
    ink.InkPercent2 = ink.InkPercent3 = ink.InkPercent4 = 60;
    const auto follow = [&] { CGUIUrlLink().FollowLink(Text("IDO_SUPPLIES_SUBURL").c_str(), &ink, "LM460-0142-7", 1); };
    EXPECT_THAT(browser.Recorded(follow).commandLine,
                EndsWith("  http://www.torvane.example/go?page=supplies&lang=0&printer=LM46&country=00000409&os=wxp"
                         "&from=jsw&partner=HARBOUR7&c1=50&l1=60&c2=30&l2=80"));
    EXPECT_THAT(Usage(), EndsWith("  LM460-0142-7  item 0x6001: 1, 1 times\r\n"));
}

TEST_F(InstalledProduct, HelpOpensInTheViewerAndInTheProcess)
{
    for (const int launchViewer : {1, 0})
    {
        CatsWinHelp(nullptr, Text("IDO_PSW_HELPFILE").c_str(), 15, 302, "LM460-0142-7", launchViewer);
        HWND help = nullptr;
        ASSERT_TRUE(Await([&] { return (help = FindWindowA("HH Parent", "Torvane Larkmoor Help")) != nullptr; }));
        DWORD process = 0;
        GetWindowThreadProcessId(help, &process);
        EXPECT_EQ(process == GetCurrentProcessId(), !launchViewer);
        PostMessageA(help, WM_CLOSE, 0, 0);
        EXPECT_TRUE(Await([help] { return !IsWindow(help); }));
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
