// Windows versions, and where the settings of a printer or product lie: on both system families, on the real registry.
#include "RegistrySupport.h"
#include <gtest/gtest.h>
#include <cstdio>
#include "IatPatch.h"
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

PROBE(OsCodes)
{
    CRegistry registry;
    std::printf("%d %d", registry.GetOSVer(), registry.GetOSPlatform());
    return 0;
}

TEST(Mapping, OsCodesOfTenWindowsVersions)
{
    const struct
    {
        const char* windows;
        const char* codes;
    } rows[] = {{"win31", "3 1"}, {"win95", "4 1"}, {"win98", "5 1"}, {"winme", "6 1"}, {"nt40", "7 2"},
                {"win2k", "8 2"}, {"winxp", "9 2"}, {"vista", "9 2"}, {"win7", "9 2"},  {"win10", "9 2"}};
    for (const auto& row : rows)
        EXPECT_EQ(RunProbeUnder(row.windows, "OsCodes").output, row.codes) << row.windows;
}

TEST(Mapping, OsCodesOfOtherAnswers)
{
    static OSVERSIONINFOA reported;
    const IatPatch patch(
        LibraryUnderTest(), "GetVersionExA",
        +[](OSVERSIONINFOA* version) -> BOOL
        {
            if (version->dwOSVersionInfoSize != 148 || !reported.dwOSVersionInfoSize)
                return FALSE;
            *version = reported;
            return TRUE;
        });
    const struct
    {
        DWORD platform, major, minor;
        int version, family;
    } rows[] = {{2, 3, 51, 7, 2}, {2, 5, 2, 9, 2}, {2, 6, 0, 9, 2}, {3, 1, 0, 9, 2}, {1, 4, 3, 6, 1}};
    for (const auto& row : rows)
    {
        reported = {148, row.major, row.minor, 0, row.platform, ""};
        EXPECT_EQ(CRegistry().GetOSVer(), row.version) << row.platform << " " << row.major << "." << row.minor;
        EXPECT_EQ(CRegistry().GetOSPlatform(), row.family) << row.platform << " " << row.major << "." << row.minor;
    }
    reported = {};
    EXPECT_EQ(CRegistry().GetOSVer(), CRegistry::OS_UNKNOWN);
    EXPECT_EQ(CRegistry().GetOSPlatform(), CRegistry::OS_PLATFORM_NT);
}

// Creates the key that a null root stands for, opens it again, and tells where it was.
std::string CreateMapped(int mode, int use32, int personal, const char* subKey)
{
    const Product product;
    CRegistry registry;
    registry.InitMode(mode);
    registry.Use32BitRegPath(use32);
    registry.SetPersonalSettings(personal);
    registry.SetFriendlyName(Printer.c_str());
    DWORD disposition = 0;
    registry.Create(disposition, nullptr, subKey, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr);
    const std::string created = static_cast<LPCSTR>(registry.GetSubKey());
    return created + (registry.Open(nullptr, subKey, 0, KEY_READ) ? " opened" : " not opened");
}

PROBE(CreateMapped)
{
    std::printf("%s", CreateMapped(argv[0][0] - '0', argv[0][1] - '0', argv[0][2] - '0', argv[1]).c_str());
    return 0;
}

TEST(Mapping, PathsOfBothFamiliesAndBothModes)
{
    const HKEY machine = HKEY_LOCAL_MACHINE, user = HKEY_CURRENT_USER;
    const struct
    {
        const char* windows; // null: this process
        const char* options; // mode, 32-bit path, personal settings
        bool installed;      // the printer's entry names the original
        const char* subKey;
        HKEY root;
        std::string path;
        bool opened = true;
    } rows[] = {
        {nullptr, "100", true, "PrinterDriverData", machine,
         Ident + "\\IJPrtSettings\\" + Original + "\\PrinterDriverData"},
        {nullptr, "100", true, "JSW", machine, Ident + "\\IJPrtSettings\\" + Original + "\\GUI\\JSW"},
        {nullptr, "100", true, "printerdriverdata", machine,
         Ident + "\\IJPrtSettings\\" + Original + "\\GUI\\printerdriverdata"},
        {nullptr, "110", true, "JSW", machine, Ident32 + "\\IJPrtSettings\\" + Original + "\\GUI\\JSW"},
        {nullptr, "101", true, "JSW", user, Ident + "\\IJPrtSettings\\" + Original + "\\GUI\\JSW", false},
        {nullptr, "100", false, "JSW", user, "Printers\\" + Printer + "\\GUI\\JSW"},
        {nullptr, "100", false, "PrinterDriverData", user, "Printers\\" + Printer + "\\GUI\\PrinterDriverData"},
        {nullptr, "200", true, "Supplies", machine, Ident + "\\" + Model + "\\Supplies"},
        {nullptr, "201", true, "Supplies", user, Ident + "\\" + Model + "\\Supplies", false},
        {"nt40", "100", true, "JSW", machine, Ident + "\\IJPrtSettings\\" + Original + "\\GUI\\JSW"},
        {"win95", "100", true, "JSW", machine, Driver + "\\GUI\\JSW"},
        {"win31", "100", true, "PrinterDriverData", machine, Driver + "\\PrinterDriverData"},
        {"winme", "110", false, "JSW", machine, Driver + "\\GUI\\JSW"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(std::string(row.windows ? row.windows : "here") + " " + row.options + " " + row.subKey);
        RegistryWorld world;
        if (row.installed)
            world.Printer(Printer, Original);
        world.Claim(row.root, row.path);
        const std::string answer =
            row.windows ? RunProbeUnder(row.windows, "CreateMapped", {row.options, row.subKey}).output
                        : CreateMapped(row.options[0] - '0', row.options[1] - '0', row.options[2] - '0', row.subKey);
        EXPECT_EQ(answer, row.path + (row.opened ? " opened" : " not opened"));
        EXPECT_TRUE(world.Exists(row.root, row.path));
    }
}

TEST(Mapping, OriginalNamesOfAnyShape)
{
    const std::string user = "Printers\\" + Printer + "\\GUI\\JSW", machine = Ident + "\\IJPrtSettings\\";
    const struct
    {
        DWORD type;
        std::string bytes, path;
    } rows[] = {
        {REG_BINARY, "Unterminated", machine + "Unterminated\\GUI\\JSW"},
        {REG_SZ, std::string(255, 'q'), machine + std::string(255, 'q') + "\\GUI\\JSW"},
        {REG_BINARY, std::string(256, 'q'), machine + std::string(256, 'q') + "\\GUI\\JSW"},
        {REG_SZ, std::string(256, 'q'), user}, // with its NUL larger than the buffer
        {REG_BINARY, std::string(5000, 'q'), user},
        {REG_DWORD, std::string("Q\0\0\0", 4), user},
        {REG_SZ, "", machine + "\\GUI\\JSW"},
    };
    const Product product;
    for (const auto& row : rows)
    {
        RegistryWorld world;
        world.Printer(Printer, row.bytes, row.type);
        CRegistry registry;
        registry.SetFriendlyName(Printer.c_str());
        EXPECT_EQ(registry.Open(nullptr, "JSW", 0, KEY_READ), 0);
        EXPECT_EQ(registry.GetSubKey(), row.path.c_str()) << row.bytes.size() << " bytes of type " << row.type;
    }
}

TEST(Mapping, APrinterEntryThatMayNotBeReadIsNoEntry)
{
    RegistryWorld world;
    world.Printer(Printer, Original);
    world.Restrict(HKEY_LOCAL_MACHINE, Driver + "\\PrinterDriverData", 0);
    CRegistry registry;
    registry.SetFriendlyName(Printer.c_str());
    EXPECT_EQ(registry.Open(nullptr, "JSW", 0, KEY_READ), 0);
    EXPECT_EQ(registry.GetSubKey(), ("Printers\\" + Printer + "\\GUI\\JSW").c_str());
}

TEST(Mapping, PrinterNamesOf300Characters)
{
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

TEST(Mapping, TheKeyConstructorMaps)
{
    EXPECT_EQ(CRegistry(nullptr, "JSW", 0, 0).GetSubKey(), "Printers\\\\GUI\\JSW"); // no printer named yet
}
} // namespace
