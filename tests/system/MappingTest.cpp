// Windows versions, and where the settings of a printer or product lie: on both system families, on the real registry.
#include "RegistrySupport.h"
#include <gtest/gtest.h>
#include <cstdio>
#include "FakeVersion.h"
#include "Probe.h"
#include "RegistryWorld.h"
#include "TestProduct.h"

namespace
{
const std::string Ident = "SOFTWARE\\MappingTest\\Inkjet";
const std::string Ident32 = "SOFTWARE\\MappingTest\\Inkjet32";
const std::string Model = "X100";

struct Product : TestProduct
{
    Product()
        : TestProduct({{"IDO_OEM_INKJET_IDENT", Ident.c_str()},
                       {"IDO_OEM_INKJET_IDENT32", Ident32.c_str()},
                       {"IDO_MODEL", Model.c_str()}})
    {
    }
};

const std::string Printer = "Mapping Test Printer";
const std::string Original = "Mapping Test Original";
const std::string Driver = "System\\CurrentControlSet\\control\\Print\\Printers\\" + Printer;

const std::string UserKey = "Printers\\" + Printer + "\\GUI\\JSW";

PROBE(OsCodes)
{
    CRegistry registry;
    std::printf("%d %d", registry.GetOSVer(), registry.GetOSPlatform());
    return 0;
}

TEST(Mapping, OsCodesOfTenWindowsVersions)
{
    const char* const rows[][2] = {{"win31", "3 1"}, {"win95", "4 1"}, {"win98", "5 1"}, {"winme", "6 1"},
                                   {"nt40", "7 2"},  {"win2k", "8 2"}, {"winxp", "9 2"}, {"vista", "9 2"},
                                   {"win7", "9 2"},  {"win10", "9 2"}};
    for (const auto& [windows, codes] : rows)
        EXPECT_EQ(RunProbeUnder(windows, "OsCodes").output, codes) << windows;
}

TEST(Mapping, OsCodesOfOtherAnswers)
{
    const struct
    {
        int platform; // below 0: no answer
        DWORD major, minor;
        int version, family;
    } rows[] = {{2, 3, 51, 7, 2}, {2, 5, 2, 9, 2}, {2, 6, 0, 9, 2}, {3, 1, 0, 9, 2}, {1, 4, 3, 6, 1}, {-1, 0, 0, 0, 2}};
    for (const auto& [platform, major, minor, version, family] : rows)
    {
        const FakeVersion told(platform, major, minor);
        EXPECT_EQ(CRegistry().GetOSVer(), version) << platform << " " << major << "." << minor;
        EXPECT_EQ(CRegistry().GetOSPlatform(), family) << platform << " " << major << "." << minor;
    }
}

// Creates the key that a null root stands for, opens it again, and tells where it was.
std::string CreateMapped(const char* options, const char* subKey)
{
    const Product product;
    CRegistry registry;
    registry.InitMode(options[0] - '0');
    registry.Use32BitRegPath(options[1] - '0');
    registry.SetPersonalSettings(options[2] - '0');
    registry.SetFriendlyName(Printer.c_str());
    DWORD disposition = 0;
    registry.Create(disposition, nullptr, subKey, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr);
    const std::string created(registry.GetSubKey());
    return created + (registry.Open(nullptr, subKey, 0, KEY_READ) ? "" : " not opened");
}

TEST(Mapping, PathsOfBothFamiliesAndBothModes)
{
    const HKEY machine = HKEY_LOCAL_MACHINE, user = HKEY_CURRENT_USER;
    const std::string settings = "\\IJPrtSettings\\" + Original + "\\";
    const auto xp = CRegistry::OS_WINXP;
    const struct
    {
        CRegistry::OSVersion windows;
        const char* options; // mode, 32-bit path, personal settings
        bool installed;      // the printer's entry names the original
        const char* subKey;
        HKEY root;
        std::string path;
        const char* opened = "";
    } rows[] = {
        {xp, "100", true, "PrinterDriverData", machine, Ident + settings + "PrinterDriverData"},
        {xp, "100", true, "JSW", machine, Ident + settings + "GUI\\JSW"},
        {xp, "100", true, "printerdriverdata", machine, Ident + settings + "GUI\\printerdriverdata"},
        {xp, "110", true, "JSW", machine, Ident32 + settings + "GUI\\JSW"},
        {xp, "101", true, "JSW", user, Ident + settings + "GUI\\JSW", " not opened"},
        {xp, "100", false, "JSW", user, UserKey},
        {xp, "100", false, "PrinterDriverData", user, "Printers\\" + Printer + "\\GUI\\PrinterDriverData"},
        {xp, "200", true, "Supplies", machine, Ident + "\\" + Model + "\\Supplies"},
        {xp, "201", true, "Supplies", user, Ident + "\\" + Model + "\\Supplies", " not opened"},
        {CRegistry::OS_WINNT4, "100", true, "JSW", machine, Ident + settings + "GUI\\JSW"},
        {CRegistry::OS_WIN95, "100", true, "JSW", machine, Driver + "\\GUI\\JSW"},
        {CRegistry::OS_WIN32S, "100", true, "PrinterDriverData", machine, Driver + "\\PrinterDriverData"},
        {CRegistry::OS_WINME, "110", false, "JSW", machine, Driver + "\\GUI\\JSW"},
    };
    for (const auto& row : rows)
    {
        const FakeVersion version(row.windows);
        RegistryWorld world;
        if (row.installed)
            world.Printer(Printer, Original);
        world.Claim(row.root, row.path);
        EXPECT_EQ(CreateMapped(row.options, row.subKey), row.path + row.opened) << row.windows << " " << row.options;
        EXPECT_TRUE(world.Exists(row.root, row.path));
    }
}

// Where a printer's key is looked for; it is not there.
std::string LookedUp(const std::string& printer)
{
    CRegistry registry;
    registry.SetFriendlyName(printer.c_str());
    EXPECT_EQ(registry.Open(nullptr, "JSW", 0, KEY_READ), 0);
    return std::string(registry.GetSubKey());
}

TEST(Mapping, OriginalNamesOfAnyShape)
{
    const auto machine = [](const std::string& name) { return Ident + "\\IJPrtSettings\\" + name + "\\GUI\\JSW"; };
    const struct
    {
        DWORD type;
        std::string bytes, path;
    } rows[] = {
        {REG_BINARY, "Unterminated", machine("Unterminated")},
        {REG_SZ, std::string(255, 'q'), machine(std::string(255, 'q'))},
        {REG_BINARY, std::string(256, 'q'), machine(std::string(256, 'q'))},
        {REG_SZ, std::string(256, 'q'), UserKey}, // with its NUL larger than the buffer
        {REG_BINARY, std::string(5000, 'q'), UserKey},
        {REG_DWORD, std::string("Q\0\0\0", 4), UserKey},
        {REG_SZ, "", machine("")},
    };
    const Product product;
    RegistryWorld world;
    for (const auto& [type, bytes, path] : rows)
    {
        world.Printer(Printer, bytes, type);
        EXPECT_EQ(LookedUp(Printer), path) << bytes.size() << " bytes of type " << type;
    }
    world.Printer(Printer, Original);
    world.Restrict(HKEY_LOCAL_MACHINE, Driver + "\\PrinterDriverData", 0);
    EXPECT_EQ(LookedUp(Printer), UserKey) << "an entry that may not be read is none";
}

TEST(Mapping, PrinterNamesOf300CharactersAndOfNone)
{
    EXPECT_EQ(CRegistry(nullptr, "JSW", 0, 0).GetSubKey(), "Printers\\\\GUI\\JSW") << "the key constructor maps";
    const std::string name(300, 'p');
    CRegistry registry;
    registry.SetFriendlyName(name.c_str());
    DWORD disposition = 0;
    EXPECT_NE(Thrown([&] { registry.Create(disposition, nullptr, "JSW", 0, KEY_READ, nullptr); }), 0);
    EXPECT_EQ(registry.GetSubKey(), ("Printers\\" + name + "\\GUI\\JSW").c_str());
}

TEST(Mapping, AnyOtherModeUsesTheMappedKeyAgain)
{
    const Product product;
    RegistryWorld world;
    const std::string path = Ident + "\\IJPrtSettings\\" + Original + "\\GUI\\JSW";
    world.Printer(Printer, Original);
    world.Claim(HKEY_CURRENT_USER, path);
    CRegistry registry;
    registry.SetFriendlyName(Printer.c_str());
    registry.SetPersonalSettings(1);
    DWORD disposition = 0;
    registry.Create(disposition, nullptr, "JSW", 0, KEY_ALL_ACCESS, nullptr);
    registry.InitMode(3);
    registry.SetFriendlyName("another");
    // The personal root is not what was stored: opening looks below the machine's, creating finds the user's again.
    EXPECT_EQ(registry.Open(HKEY_CURRENT_USER, "Software", 0, KEY_READ), 0);
    EXPECT_EQ(registry.GetSubKey(), path.c_str());
    registry.Create(disposition, HKEY_CURRENT_USER, "Software", 0, KEY_READ, nullptr);
    EXPECT_EQ(disposition, DWORD(REG_OPENED_EXISTING_KEY));
    registry.InitMode(1);
    EXPECT_EQ(registry.Open(HKEY_CURRENT_USER, "Software", 0, KEY_READ), 1);
}
} // namespace
