// Support numbers from a real INI file, the remembered country in the real registry, the combo box and the dialog as
// real windows.
#include "locale/CSelectCountryDlg.h"
#include "locale/OEMTeleIni.h"
#include "locale/SelectCountryResources.h"
#include "support/FakeVersion.h"
#include "support/MessageBoxes.h"
#include "support/NothingLeft.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <filesystem>
#include <functional>
#include <thread>
#include <tuple>

namespace
{
namespace fs = std::filesystem;
using testing::ElementsAre;

const std::string DriverRoot = "C:\\windows\\system32\\telephone test\\";
const char* const Supplies = "SOFTWARE\\Telephone test\\Store\\M1";
const char* const OwnSupplies = "SOFTWARE\\Telephone test\\Own\\M1";
const char* const International = "Control Panel\\International";
const char* const Resources = PRODUCT_PREFIX "cres.dll"; // beside the library, with a name as long as its own
const char* const MirroredResources = PRODUCT_PREFIX "crtl.dll";

void WriteNumber(const std::string& locale, const char* number, const std::string& folder = DriverRoot + "3\\")
{
    const std::string key = "  0x" + locale.substr(4);
    ASSERT_TRUE(WritePrivateProfileStringA("Numbers", key.c_str(), number, (folder + "tele.ini").c_str()));
}

/// What derived classes may use.
class Telephones : public OEMTeleIni
{
public:
    using OEMTeleIni::GetLocalizedCountryString;

    std::vector<std::string> List()
    {
        GetPhoneNumberList();
        std::vector<std::string> list;
        for (int i = 0; i < m_nCount; ++i)
            list.push_back(std::string(m_strLocale[i].Mid(4)) + " " + std::string(m_strDisplay[i]));
        return list;
    }
    std::string DefaultNumber()
    {
        CString country = "unchanged";
        const CString number = GetDefaultPhoneNumber(country);
        return std::string(number + "|" + country);
    }
};

class TelephoneList : public testing::Test
{
protected:
    TelephoneList()
    {
        fs::create_directories(DriverRoot + "3");
        m_registry.Claim(HKEY_LOCAL_MACHINE, Supplies);
        m_registry.Claim(HKEY_LOCAL_MACHINE, OwnSupplies);
        UseProduct();
        m_registry.Keep(HKEY_CURRENT_USER, International, "Locale");
        SetUserLocale("00000407");
    }
    ~TelephoneList() override
    {
        fs::remove_all(DriverRoot);
        EXPECT_FALSE(GetModuleHandleA(Resources)) << "still loaded";
    }
    void UseProduct(unsigned long attachNumber = 0, const char* resources = Resources,
                    const char* residentResources = "notloaded.dll", const char* utilities = PRODUCT_PREFIX "util.dll",
                    unsigned long oneClick = 0)
    {
        // clang-format off
        const SettingList settings = {
            {"IDO_PHONENUMBER_INIFILE_NAME", "tele.ini"}, {"IDO_PHONENUMBER_SECTION_NAME", "Numbers"},
            {"IDO_DEFAULTSTRING", "Default"}, {"IDO_DEFAULT_PHONENUMBER_STRING", "Worldwide"},
            {"IDO_ATTACH_PHONE_NUMBER_OPTION", attachNumber}, {"IDO_KEY_NAME_MYLOCALE", "MyLocale"},
            {"IDO_ONECLICK_INK_ORDER", oneClick}, {"IDO_PRINTER_MODEL", "M1"},
            {"IDO_SUPPLIES_REG_PATH", "SOFTWARE\\Telephone test\\Own\\"},
            {"IDO_MORVAY_SUPPLIES_REG_PATH", "SOFTWARE\\Telephone test\\Store\\"},
            {"IDO_WINNTPATH", "\\telephone test\\"}, {"IDO_UTIL_DLL", utilities},
            {"IDO_UTIL_RESDLL", resources}, {"IDO_JSW_RESDLL", residentResources}};
        // clang-format on
        m_product.reset();
        m_product = std::make_unique<TestProduct>(settings);
    }
    void SetUserLocale(const char* locale) { m_registry.SetText(HKEY_CURRENT_USER, International, "Locale", locale); }
    void Remember(const std::string& locale) { m_registry.SetText(HKEY_LOCAL_MACHINE, Supplies, "MyLocale", locale); }
    static std::string Remembered(const char* path = Supplies)
    {
        char text[100];
        DWORD size = sizeof text;
        return RegGetValueA(HKEY_LOCAL_MACHINE, path, "MyLocale", RRF_RT_REG_SZ, nullptr, text, &size) ? "nothing"
                                                                                                       : text;
    }

    RegistryWorld m_registry;

private:
    std::unique_ptr<TestProduct> m_product;
};

TEST_F(TelephoneList, HasMyCountryFirstThenTheOthersInTheSuitesOrder)
{
    UseProduct(1);
    Remember("of no country");
    std::string section; // every number that could be a locale's
    for (unsigned int language = 1; language < 0x40; ++language)
        for (unsigned int country = 1; country < 0x20; ++country)
        {
            CString line;
            line.Format("  0x%04X=%04X", country << 10 | language, country << 10 | language);
            section += std::string(line) + '\0';
        }
    WritePrivateProfileSectionA("Numbers", section.c_str(), (DriverRoot + "3\\tele.ini").c_str());
    std::string order =
        "0436 041C 1401 2C0A 0C09 0C07 3C01 042D 0423 080C 0813 2809 400A 0416 0402 1009 0C0C 2409 0403 340A 0804 0C04 "
        "1404 240A 140A 041A 0405 0406 1C0A 300A 0C01 440A 0425 040B 081D 040C 0438 0407 0408 100A 480A 040E 040D 040F "
        "0421 0801 1809 0410 2009 0411 2C01 0412 0812 3401 0426 3001 1001 1407 0427 140C 1007 042F 080A 1801 0413 1409 "
        "4C0A 0414 0814 2001 180A 3C0A 280A 0415 0816 500A 4001 0418 0419 0401 0C1A 081A 1004 041B 0424 1C09 040A 0C0A "
        "100C 0810 0807 041D 2801 0404 041E 2C09 1C01 041F 0422 3801 0809 0409 380A 200A 042A 2401 ";
    Telephones telephones;
    const auto locales = [&telephones]
    {
        std::string list;
        for (const std::string& entry : telephones.List())
            list += entry.substr(0, 5);
        return list;
    };
    EXPECT_EQ(locales(), order);
    Remember("00000409");
    order = "0409 " + order.erase(order.find("0409 "), 5);
    EXPECT_EQ(locales(), order) << "made anew";
    EXPECT_STREQ(telephones.m_strDisplay[0], "0409 - United States");
    EXPECT_EQ(Remembered(), "00000409");
}

TEST_F(TelephoneList, ShowsEachCountryOnce)
{
    for (const char* locale : {"0000040A", "00000C0A", "00000807", "0000100C", "00000810", "00000409"})
        WriteNumber(locale, "1");
    const std::pair<const char*, const char*> spanish[] = {
        {"0000040A", "040A Spain"}, {"00000C0A", "0C0A Spain"}, {"00000407", "040A Spain"}}; // the last has no number
    Telephones telephones;
    for (const auto& [myLocale, spain] : spanish)
    {
        Remember(myLocale);
        EXPECT_THAT(telephones.List(), ElementsAre(spain, "100C Switzerland", "0409 United States"));
    }
}

TEST_F(TelephoneList, TellsNumbersFromTheirAbsence)
{
    const std::string longNumber(400, '7');
    const std::tuple<const char*, const char*, int, std::string> cases[] = {
        // locale, INI value, answer
        {"00000401", "", 0, ""},
        {"00000402", "Default", 0, "Default"},
        {"00000403", "default", 1, "default"},
        {"00000404", "0800 (1) 22", 1, "0800 (1) 22"},
        {"00000405", longNumber.c_str(), 1, longNumber.substr(0, 255)},
        {"0000040c", "France's", 1, "France's"},
        {"00000406", nullptr, 0, "Default"},
        {"0404", nullptr, 0, "Default"}, // no such key: only what is behind the fourth character counts
        {"abcd0404", nullptr, 1, "0800 (1) 22"},
        {"040", nullptr, 0, ""},
    };
    OEMTeleIni telephones;
    CString read = "unchanged";
    for (const auto& [locale, stored, result, number] : cases)
    {
        if (stored)
            WriteNumber(locale, stored);
        EXPECT_EQ(telephones.GetPhoneNumber(locale, read), result) << locale;
        EXPECT_EQ(std::string(read), number) << locale;
    }
    EXPECT_EQ(telephones.GetPhoneNumber(CString('4', 300), read), 0);
    fs::remove(DriverRoot + "3\\tele.ini");
    EXPECT_EQ(telephones.GetPhoneNumber("00000404", read), 0);
    EXPECT_STREQ(read, "");
}

TEST_F(TelephoneList, LiesInTheDriversDirectoryOfTheWindowsFamily)
{
    for (const auto& [windows, folder] :
         {std::pair{CRegistry::OS_WIN98, SystemFolder()}, {CRegistry::OS_WINNT4, DriverRoot + "2\\"}})
    {
        const FakeVersion version(windows);
        fs::create_directories(folder);
        WriteNumber("00000404", "1", folder);
        CString number;
        EXPECT_TRUE(OEMTeleIni().GetPhoneNumber("00000404", number)) << folder;
        fs::remove(folder + "tele.ini");
    }
}

TEST_F(TelephoneList, NamesCountriesAsTheSystemDoes)
{
    Telephones telephones;
    const std::pair<const char*, const char*> cases[] = {
        {"00000407", "Germany"},  {"0000040c", "France"}, {"00002C0a", "Argentina"},     {"00001234", "United States"},
        {"407", "United States"}, {"", "United States"},  {"00000407 ", "United States"}};
    for (const auto& [locale, country] : cases)
        EXPECT_STREQ(telephones.GetLocalizedCountryString(locale), country) << locale;
}

TEST_F(TelephoneList, RemembersTheSystemsLocaleWhenThereIsNone)
{
    WriteNumber("00000407", "1");
    WriteNumber("00000409", "2");
    EXPECT_EQ(Telephones().List().at(0), "0407 Germany");
    EXPECT_EQ(Remembered(), "00000407") << "no key";
    m_registry.SetNumber(HKEY_LOCAL_MACHINE, Supplies, "MyLocale", 0x409);
    EXPECT_EQ(Telephones().List().at(0), "0407 Germany");
    EXPECT_EQ(Remembered(), "00000407") << "no text";
    const char* const cases[][3] = {{"", "00000407", "0407 Germany"},
                                    {"MyLocale", "00000407", "0407 Germany"}, // only prepared
                                    {"00000409", "00000409", "0409 United States"},
                                    {"mine", "mine", "0407 Germany"}}; // whatever it is
    for (const auto& [before, after, first] : cases)
    {
        Remember(before);
        EXPECT_EQ(Telephones().List().at(0), first);
        EXPECT_EQ(Remembered(), after);
    }
    SetUserLocale("of no country");
    Remember("");
    Telephones().List();
    EXPECT_EQ(Remembered(), "0000040C") << "the suite's default";
}

TEST_F(TelephoneList, GoesOnWithoutRightsToTheKey)
{
    WriteNumber("00000407", "1");
    Remember("00000409");
    m_registry.Restrict(HKEY_LOCAL_MACHINE, Supplies, KEY_READ);
    EXPECT_STREQ(OEMTeleIni().ReadMyLocaleKey("MyLocale"), "");
    EXPECT_THAT(Telephones().List(), ElementsAre("0407 Germany"));
    EXPECT_EQ(Remembered(), "00000409");
}

TEST_F(TelephoneList, RemembersUnderTheKeyOfTheOrderingTool)
{
    UseProduct(0, Resources, "notloaded.dll", PRODUCT_PREFIX "util.dll", 1);
    OEMTeleIni telephones;
    telephones.WriteMyLocaleKey("00000411");
    EXPECT_EQ(Remembered(OwnSupplies), "00000411");
    EXPECT_STREQ(telephones.ReadMyLocaleKey("MyLocale"), "00000411");
    EXPECT_STREQ(telephones.ReadMyLocaleKey("another value"), "");
    EXPECT_EQ(Remembered(), "nothing");
    // The buffer's 260 bytes, and one more.
    const std::pair<std::string, int> values[] = {
        {std::string(259, '4') + '\0', 259}, {std::string(260, '4'), 260}, {std::string(260, '4') + '\0', 0}};
    for (const auto& [bytes, length] : values)
    {
        m_registry.Set(HKEY_LOCAL_MACHINE, OwnSupplies, "MyLocale", REG_BINARY, bytes);
        EXPECT_EQ(telephones.ReadMyLocaleKey("MyLocale").GetLength(), length);
    }
}

TEST_F(TelephoneList, HasADefaultNumber)
{
    const char* const cases[][4] = {
        {"030 1", "555 1", "030 1|Germany", "00000407"},
        {"WORLDWIDE", "555 1", "Worldwide support|Germany", "00000407"},
        {"Default", "555 1", "555 1|United States", "00000409"},
        {"", "worldwide", "Worldwide support|United States", "00000409"},
        {"Default", "Default", "Default|United States", "00000409"},
    };
    for (const auto& [german, american, number, remembered] : cases)
    {
        WriteNumber("00000407", german);
        WriteNumber("00000409", american);
        Remember("00000407");
        EXPECT_EQ(Telephones().DefaultNumber(), number) << german;
        EXPECT_EQ(Remembered(), remembered) << german;
    }
    fs::remove(DriverRoot + "3\\tele.ini");
    EXPECT_EQ(Telephones().DefaultNumber(), "|United States");
}

TEST_F(TelephoneList, TakesTextsFromAResidentLibraryOrTheOneBesideTheUtilitiesLibrary)
{
    const MessageBoxes boxes;
    const HINSTANCE resource = AfxGetResourceHandle();
    WriteNumber("00000407", "Worldwide");
    const char *own = PRODUCT_PREFIX "util.dll", *generic = "Worldwide support|Germany";
    // The library's own path less eleven characters, as many as the missing name has: its first letter stays.
    const std::string missing = TestFolder() + std::string(PRODUCT_PREFIX, 1) + "nowhere.dll|ERROR|0|0";
    using Boxes = std::vector<std::string>;
    const std::tuple<const char*, const char*, const char*, const char*, Boxes> cases[] = {
        {MirroredResources, own, "nowhere.dll", generic, {}},
        {"notloaded.dll", own, Resources, generic, {}},
        {"notloaded.dll", own, "nowhere.dll", "|Germany", {missing}},
        // Without a folder the library is not searched for, though it lies beside the program.
        {"notloaded.dll", "notloaded.dll", Resources, "|Germany", {std::string(Resources) + "|ERROR|0|0"}},
    };
    for (const auto& [residentName, utilities, resources, number, shown] : cases)
    {
        UseProduct(0, resources, residentName, utilities);
        const HMODULE resident = LoadLibraryA(residentName);
        Telephones telephones;
        for (int round = 0; round < 2; ++round)
        {
            EXPECT_EQ(telephones.DefaultNumber(), number) << resources;
            EXPECT_EQ(MessageBoxes::Shown(), shown);
        }
        EXPECT_EQ(AfxGetResourceHandle(), resource);
        FreeLibrary(resident);
        EXPECT_FALSE(GetModuleHandleA(residentName)) << "one load too many";
    }
    UseProduct();
    const TraceWorld trace;
    Telephones().DefaultNumber();
    const std::string log = trace.Log();
    EXPECT_LT(log.find("IDO_JSW_RESDLL"), log.find("IDO_UTIL_DLL"));
    EXPECT_LT(log.find("IDO_UTIL_DLL"), log.find("IDO_UTIL_RESDLL"));
}

/// A window with a combo box that has two items, the longer one too long for it.
struct Combo
{
    explicit Combo(DWORD layout = 0)
    {
        parent.CreateEx(layout, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 100, 100, 600, 300, nullptr,
                        nullptr);
        box.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, CRect(40, 30, 161, 200), &parent, 1);
    }
    CRect Place()
    {
        RECT rect;
        box.GetWindowRect(&rect);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
        return CRect(std::min(rect.left, rect.right), rect.top, std::max(rect.left, rect.right), rect.bottom);
    }
    CWnd parent;
    CComboBox box;
};
const char* const LongestItem = "Saint Vincent and the Grenadines, a country with a long name";

TEST_F(TelephoneList, WidensAComboBoxByHalfOfWhatIsMissing)
{
    OEMTeleIni telephones;
    for (const DWORD layout : {0L, WS_EX_LAYOUTRTL})
    {
        SCOPED_TRACE(layout);
        Combo combo(layout);
        const CRect before = combo.Place();
        telephones.ExpandCombobox(&combo.box);
        combo.box.AddString("i");
        telephones.ExpandCombobox(&combo.box);
        EXPECT_EQ(combo.Place(), before) << "everything fits";
        combo.box.AddString(LongestItem);
        combo.box.AddString("short");
        CDC* dc = combo.box.GetDC();
        SIZE extent;
        GetTextExtentPoint32A(dc->m_hDC, LongestItem, static_cast<int>(strlen(LongestItem)), &extent);
        combo.box.ReleaseDC(dc);
        const int missing = extent.cx - static_cast<int>(combo.box.SendMessage(CB_GETDROPPEDWIDTH));
        ASSERT_GT(missing, 10);
        telephones.ExpandCombobox(&combo.box);
        EXPECT_EQ(combo.Place(), CRect(before.left, before.top, before.right + missing / 2, before.bottom));
    }
}

TEST_F(TelephoneList, LeavesNothingOpen)
{
    WriteNumber("00000407", "1");
    Combo combo;
    combo.box.AddString(LongestItem);
    ExpectNothingLeftBehind(
        [&](int round)
        {
            Telephones telephones;
            telephones.DefaultNumber();
            telephones.ExpandCombobox(&combo.box);
            if (round % 50 == 0) // the slow one
                telephones.List();
        });
}

/// What a user does in the dialog, from another thread, once it is there; then it must be gone.
void InDialog(OEMTeleIni& telephones, const std::function<void(HWND dialog, HWND list)>& act)
{
    HWND dialog = nullptr;
    std::thread user(
        [&]
        {
            for (int i = 0; i < 500 && !(dialog && IsWindowVisible(dialog)); ++i)
            {
                Sleep(10);
                dialog = FindWindowA("#32770", "Telephone Support");
            }
            if (dialog)
                act(dialog, GetDlgItem(dialog, IDC_SELECT_COUNTRY_LIST));
        });
    const HINSTANCE resource = AfxGetResourceHandle();
    telephones.OnSelectCountryLink();
    user.join();
    EXPECT_EQ(AfxGetResourceHandle(), resource);
    EXPECT_TRUE(dialog && !IsWindow(dialog));
    EXPECT_FALSE(GetModuleHandleA(Resources));
}

void Command(HWND dialog, int command)
{
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(command),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, LOWORD(command))));
}

std::string Chosen(HWND list)
{
    char text[100] = "";
    SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(SendMessageA(list, LB_GETCURSEL, 0, 0)),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

TEST_F(TelephoneList, LetsTheUserChooseACountry)
{
    UseProduct(1);
    for (const char* locale : {"00000407", "00000409", "0000040C"})
        WriteNumber(locale, locale + 4);
    OEMTeleIni telephones;
    Remember("00000411"); // no number
    InDialog(telephones,
             [](HWND dialog, HWND list)
             {
                 EXPECT_EQ(SendMessageA(list, LB_GETCURSEL, 0, 0), LB_ERR);
                 EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
                 Command(dialog, IDOK);
                 EXPECT_TRUE(IsWindow(dialog)) << "nothing is chosen";
                 SendMessageA(list, LB_SETCURSEL, 0, 0);
                 Command(dialog, MAKELONG(IDC_SELECT_COUNTRY_LIST, LBN_SELCHANGE));
                 EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
                 Command(dialog, IDCANCEL);
             });
    EXPECT_EQ(Remembered(), "00000411");
    const std::tuple<const char*, const char*, WPARAM, int, const char*> cases[] = {
        {"00000409", "0409 - United States", 2, IDCANCEL, "00000409"},
        {"00000409", "0409 - United States", 2, IDOK, "00000407"},
        {"00000407", "0407 - Germany", 1, MAKELONG(IDC_SELECT_COUNTRY_LIST, LBN_DBLCLK), "0000040C"},
        {"0000040c", "040C - France", 0, IDOK, "0000040c"},
        {nullptr, "0407 - Germany", 2, IDOK, "0000040c"}}; // no rights to the key
    for (const auto& [before, chosen, choice, command, remembered] : cases)
    {
        if (before)
            Remember(before);
        else
            m_registry.Restrict(HKEY_LOCAL_MACHINE, Supplies, KEY_READ);
        InDialog(telephones,
                 [&, chosen = chosen, choice = choice, command = command](HWND dialog, HWND list)
                 {
                     EXPECT_EQ(SendMessageA(list, LB_GETCOUNT, 0, 0), 3);
                     EXPECT_EQ(Chosen(list), chosen);
                     EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
                     SendMessageA(list, LB_SETCURSEL, choice, 0);
                     Command(dialog, command);
                 });
        EXPECT_EQ(Remembered(), remembered);
    }
}
} // namespace
