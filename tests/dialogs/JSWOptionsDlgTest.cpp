// The options dialog of the job status window: what it reads and writes, the skins, the ways of closing.
#include "dialogs/JSWOptionsDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "links/LaunchCalls.h"
#include "support/IatPatch.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

namespace
{
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::optional<std::string>;

constexpr char Printer[] = "Dialog Test Printer";
const std::string UserKey = std::string("Printers\\") + Printer;
constexpr char Driver[] = "C:\\windows\\system32\\spool\\drivers\\x64\\3\\";
constexpr char AddedSkins[] = "C:\\windows\\dlgt skins\\";
constexpr COLORREF Red = RGB(200, 10, 20), Blue = RGB(20, 30, 210), Key = RGB(0, 255, 0);

std::string Number(DWORD number, std::size_t size = sizeof(DWORD))
{
    std::string bytes(reinterpret_cast<const char*>(&number), sizeof number);
    bytes.resize(size, '\0');
    return bytes;
}

/// A 24-bit bitmap resource: the left half of one colour, the right half of another, its first column the hole.
std::string TwoHalves(int width, int height, COLORREF left, COLORREF right)
{
    const BITMAPINFOHEADER header = {sizeof header, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    for (int y = 0; y < height; ++y)
    {
        std::string row;
        for (int x = 0; x < width; ++x)
        {
            const COLORREF colour = x == 0 ? Key : x < width / 2 ? left : right;
            row += {static_cast<char>(GetBValue(colour)), static_cast<char>(GetGValue(colour)),
                    static_cast<char>(GetRValue(colour))};
        }
        row.resize(static_cast<std::size_t>((width * 3 + 3) / 4 * 4), '\0');
        bytes += row;
    }
    return bytes;
}

/// A folder of skins, gone with the object.
class SkinFolder
{
public:
    explicit SkinFolder(const std::string& path) : m_path(path)
    {
        std::filesystem::remove_all(path); // a run that was ended may have left it
        CreateDirectoryA(path.c_str(), nullptr);
    }
    ~SkinFolder()
    {
        while (!m_names.empty())
            Delete(m_names.back());
        RemoveDirectoryA(m_path.c_str());
    }
    SkinFolder(const SkinFolder&) = delete;
    SkinFolder& operator=(const SkinFolder&) = delete;

    std::string Path(const std::string& name) const { return m_path + name; }
    /// A library with a preview of these halves, or without any.
    void Add(const std::string& name, const std::string& preview = TwoHalves(40, 20, Red, Blue))
    {
        m_names.push_back(name);
        const std::string path = Path(name), seed = TestFolder() + TestProduct::LibraryName();
        ASSERT_TRUE(CopyFileA(seed.c_str(), path.c_str(), FALSE)) << path;
        const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
        std::string bytes = preview;
        const auto type = [](WORD id) { return reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(id)); };
        UpdateResourceA(update, type(preview.empty() ? 10 : 2), type(IDB_JSW_SKIN_PREVIEW), 0, bytes.data(),
                        static_cast<DWORD>(bytes.size()));
        ASSERT_TRUE(EndUpdateResourceA(update, FALSE)) << path;
    }
    void AddBytes(const std::string& name, const std::string& bytes)
    {
        m_names.push_back(name);
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }
    /// A skin for another processor: the system refuses it as a library, its resources can still be read.
    void AddForeign(const std::string& name)
    {
        Add(name);
        std::fstream file(Path(name), std::ios::binary | std::ios::in | std::ios::out);
        LONG header = 0;
        file.seekg(60).read(reinterpret_cast<char*>(&header), sizeof header);
        file.seekp(header + 4).write("\xC4\x01", 2);
    }
    void Delete(const std::string& name)
    {
        m_names.erase(std::remove(m_names.begin(), m_names.end(), name), m_names.end());
        EXPECT_TRUE(DeleteFileA(Path(name).c_str())) << name << " is still loaded? " << GetLastError();
    }

private:
    std::string m_path;
    std::vector<std::string> m_names;
};

/// The dialog, modeless so that the test goes on.
class Options : public JSWOptionsDlg
{
public:
    using JSWOptionsDlg::m_bSkinChanged;
    using JSWOptionsDlg::m_nCurrentSkin;
    using JSWOptionsDlg::m_nPrimarySkins;
    using JSWOptionsDlg::m_strSkin;

    explicit Options(const SkinFolder& skins, CString* caption = nullptr, unsigned long options = 0,
                     CRect* place = nullptr)
    {
        Init(Printer, skins.Path("").c_str(), caption, options, place);
        EXPECT_TRUE(m_hWnd);
        SetForegroundWindow();
        Pump();
    }
    std::vector<std::string> Skins() const
    {
        std::vector<std::string> skins;
        for (int i = 0; i <= m_nLastSkin; ++i)
            skins.emplace_back(m_astrSkins[i]);
        return skins;
    }
    void Press(int id) { Click(m_hWnd, id); }
    bool Checked(int id) const { return IsDlgButtonChecked(id) == BST_CHECKED; }
    int ShowMode() const { return GetCheckedRadioButton(IDC_JSW_ALWAYS_SHOW, IDC_JSW_NEVER_SHOW); }
    /// Which of Previous and Next can be pressed.
    std::string Ways() const
    {
        return std::string(IsEnabled(m_hWnd, IDC_JSW_SKIN_PREVIOUS) ? "<" : "") +
               (IsEnabled(m_hWnd, IDC_JSW_SKIN_NEXT) ? ">" : "");
    }
    /// The colours in the left and right half of the preview's place, as the screen shows them.
    std::pair<COLORREF, COLORREF> Preview()
    {
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        const RECT area = AreaOf(m_hWnd, IDC_JSW_SKIN_PREVIEW);
        const int width = area.right - area.left, middle = (area.bottom - area.top) / 2 * width + width / 2;
        const std::vector<COLORREF> pixels = ShownPixels(m_hWnd, area);
        return {pixels[static_cast<std::size_t>(middle - 10)], pixels[static_cast<std::size_t>(middle + 10)]};
    }
};
using Halves = std::pair<COLORREF, COLORREF>;

std::vector<std::string> g_boxes; // the message boxes shown

int WINAPI RecordBox(HWND, LPCSTR text, LPCSTR caption, UINT)
{
    g_boxes.push_back(std::string(caption) + ": " + text);
    return IDOK;
}

UINT g_windowsResult; // what the Windows directory's query returns

UINT WINAPI NoWindowsDirectory(LPSTR, UINT)
{
    return g_windowsResult;
}

class OptionsDialog : public testing::Test
{
protected:
    OptionsDialog()
    {
        m_registry.Claim(HKEY_CURRENT_USER, UserKey);
        g_boxes.clear();
    }
    void SetUp() override { Product(); }
    /// The settings, and those that a test has besides or in place of them.
    void Product(const SettingList& own = {})
    {
        m_product.reset();
        SettingList settings = {{"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                                {"IDO_DEFAULTSTRING", "Default"},
                                {"IDO_DEFAULT_SOUND", 1ul},
                                {"IDO_JSWDEFAULTSKIN", "dlgt1.dll"},
                                {"IDO_JSWDEFAULTSKINNAMECONVENTION", "dlgt"},
                                {"IDO_JSWALTERNATESKINNAMECONVENTION", "dlgm"},
                                {"IDO_JSWSKINEXTENSION", ".dll"},
                                {"IDO_JSWALTSKINDIRECTORY", "\\dlgt skins\\"},
                                {"IDO_SKIN_SUBURL", "skins"},
                                {"IDO_SKIN_URL_OVERRIDE", "http://skins.example/"},
                                {"IDO_SUPPORT_COMPLETE_A_PRINT", 1ul},
                                {"IDO_KEY_NAME_COMPLETETOPRINT_FLAG", "First"},
                                {"IDO_KEY_NAME_COMPTOPRINT_PPRZB_FLAG", "Second"},
                                {"IDO_RETAILERSPECIFIC_INIFILE_NAME", "dlgt-shop.ini"},
                                {"IDO_RETAILER_SPECIFIC_SECTION_NAME", "Retailer"},
                                {"IDO_SKIN_DIRECTIVE_KEY_NAME", "HideSkins"},
                                {"IDO_PSW_HELPFILE", "help.chm"}};
        settings.insert(settings.end(), own.begin(), own.end());
        m_product = std::make_unique<TestProduct>(settings);
    }

    static std::string Key(const char* key) { return UserKey + "\\GUI\\" + key; }
    void Store(const char* key, const char* name, const std::string& bytes, DWORD type = REG_DWORD)
    {
        m_registry.Set(HKEY_CURRENT_USER, Key(key), name, type, bytes);
    }
    static Bytes Stored(const char* key, const char* name)
    {
        return RegistryWorld::Get(HKEY_CURRENT_USER, Key(key), name);
    }
    void Forget() { RegDeleteTreeA(HKEY_CURRENT_USER, UserKey.c_str()); }

    CurrentLibrary m_library{PRODUCT_PREFIX "jres.dll"};
    std::unique_ptr<TestProduct> m_product;
    RegistryWorld m_registry;
    SkinFolder m_skins{TestFolder() + "skins\\"};
    SkinFolder m_added{AddedSkins};
    IatPatch m_boxes{GetModuleHandleA("tvkframe.dll"), "MessageBoxA", &RecordBox};
};
} // namespace

TEST_F(OptionsDialog, DefaultsAreWrittenBack)
{
    const struct
    {
        SettingList settings;
        DWORD minimized, sound;
        std::string skin;
    } cases[] = {
        {{}, 0, 1, "dlgt1.dll"},
        {{{"IDO_DEFAULT_JSW_MINIMIZED", 1ul}, {"IDO_DEFAULT_SOUND", 0ul}}, 1, 0, "dlgt1.dll"},
        {{{"IDO_DEFAULT_JSW_MINIMIZED", 2ul}, {"IDO_DEFAULT_SOUND", 2ul}}, 1, 0, "dlgt1.dll"},
        {{{"IDO_HIDE_SOUND_OPTION", 1ul}, {"IDO_JSWDEFAULTSKIN", ""}}, 0, 0, ""},
    };
    for (const auto& test : cases)
    {
        SCOPED_TRACE(&test - cases);
        Product(test.settings);
        Options dialog(m_skins);
        EXPECT_EQ(dialog.ShowMode(), test.minimized ? IDC_JSW_SHOW_MINIMIZED : IDC_JSW_ALWAYS_SHOW);
        EXPECT_EQ(dialog.Checked(IDC_JSW_SOUND), test.sound != 0);
        dialog.Press(IDCANCEL);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), Number(test.minimized, 8)) << "eight bytes, on purpose";
        EXPECT_EQ(Stored("JSW", "Show Process Window"), Number(1));
        EXPECT_EQ(Stored("RZB", "Sound"), Number(test.sound));
        EXPECT_EQ(std::string(Stored("JSW", "JSW Skin").value_or("none").c_str()), test.skin);
        EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt);
        EXPECT_FALSE(RegistryWorld::Exists(HKEY_CURRENT_USER, Key("PSW")));
        Forget();
    }
}

TEST_F(OptionsDialog, StoredValuesAreShownAndBadOnesReplaced)
{
    constexpr int Always = IDC_JSW_ALWAYS_SHOW, Minimized = IDC_JSW_SHOW_MINIMIZED, Never = IDC_JSW_NEVER_SHOW;
    Product({{"IDO_DEFAULT_JSW_MINIMIZED", 1ul}});
    const struct
    {
        std::string minimized, show;
        int mode;
        std::string minimizedAfter, showAfter;
    } cases[] = {
        {Number(0), Number(1), Always, Number(0), Number(1)},
        {Number(0), Number(7), Always, Number(0), Number(7)},
        {Number(2), Number(0), Never, Number(2), Number(0)},
        {Number(1), Number(0), Minimized, Number(1), Number(0)},
        {Number(0, 8), Number(0), Never, Number(0, 8), Number(0)},
        {Number(1, 8), Number(1), Minimized, Number(1, 8), Number(1)},
        {Number(0, 3), Number(0), Minimized, Number(1, 8), Number(0)},
        {Number(0, 9), Number(0), Minimized, Number(1, 8), Number(0)},
        {Number(0), Number(0, 8), Always, Number(0), Number(1)},
        {Number(0), "", Always, Number(0), Number(1)},
    };
    for (const auto& test : cases)
    {
        SCOPED_TRACE(&test - cases);
        Store("JSW", "Job Progress Minimized", test.minimized);
        Store("JSW", "Show Process Window", test.show);
        EXPECT_EQ(Options(m_skins).ShowMode(), test.mode);
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), test.minimizedAfter);
        EXPECT_EQ(Stored("JSW", "Show Process Window"), test.showAfter);
    }
    Store("RZB", "Sound", Number(5));
    EXPECT_TRUE(Options(m_skins).Checked(IDC_JSW_SOUND));
    Store("RZB", "Sound", std::string("on\0", 3), REG_SZ);
    EXPECT_TRUE(Options(m_skins).Checked(IDC_JSW_SOUND)) << "the default";
    EXPECT_EQ(Stored("RZB", "Sound"), Number(1));

    const struct
    {
        std::string bytes;
        DWORD type;
        std::string skin;
    } skins[] = {{std::string(49, 's'), REG_SZ, std::string(49, 's')}, // the system adds a NUL
                 {std::string("my.dll\0rest", 11), REG_BINARY, "my.dll"},
                 {std::string(50, 's'), REG_SZ, "dlgt1.dll"},
                 {std::string(50, 'b'), REG_BINARY, std::string(50, 'b')},
                 {Number(5), REG_DWORD, "dlgt1.dll"}};
    for (const auto& test : skins)
    {
        Store("JSW", "JSW Skin", test.bytes, test.type);
        EXPECT_EQ(std::string(Options(m_skins).m_strSkin), test.skin);
        EXPECT_EQ(std::string(Stored("JSW", "JSW Skin")->c_str()), std::string(test.skin.c_str()));
    }
}

TEST_F(OptionsDialog, KeysThatMayNotBeUsedLeaveTheDefaults)
{
    for (const char* key : {"JSW", "RZB", "PSW"})
    {
        m_registry.Key(HKEY_CURRENT_USER, Key(key));
        m_registry.Restrict(HKEY_CURRENT_USER, Key(key), 0);
    }
    Options dialog(m_skins);
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_ALWAYS_SHOW);
    EXPECT_TRUE(dialog.Checked(IDC_JSW_SOUND));
    dialog.Press(IDOK);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(OptionsDialog, OkSavesTheChoices)
{
    const struct
    {
        int mode;
        DWORD show, minimized;
    } cases[] = {{IDC_JSW_ALWAYS_SHOW, 1, 0}, {IDC_JSW_SHOW_MINIMIZED, 1, 1}, {IDC_JSW_NEVER_SHOW, 0, 0}};
    m_skins.Add("dlgt1.dll");
    m_skins.Add("dlgt2.dll");
    DWORD sound = 1;
    for (const auto& test : cases)
    {
        Options dialog(m_skins);
        dialog.Press(test.mode);
        dialog.Press(IDC_JSW_SOUND);
        dialog.Press(IDOK);
        sound = !sound;
        EXPECT_EQ(Stored("JSW", "Show Process Window"), Number(test.show));
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), Number(test.minimized));
        EXPECT_EQ(Stored("RZB", "Sound"), Number(sound));
        EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt) << "no other skin";
        EXPECT_EQ(Options(m_skins).ShowMode(), test.mode);
    }
    Options dialog(m_skins);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    dialog.Press(IDC_JSW_NEVER_SHOW);
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt) << "not before it is accepted";
    dialog.Press(IDOK);
    EXPECT_STREQ(Stored("JSW", "JSW Skin")->c_str(), "dlgt2.dll");
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), Number(1));
    EXPECT_EQ(Options(m_skins).m_nCurrentSkin, 1);
}

TEST_F(OptionsDialog, CartridgeChoiceComesBackAsItWasStored)
{
    const struct
    {
        bool color, black;
        DWORD first, second;
    } states[] = {{false, false, 0, 0}, {false, true, 1, 1}, {true, false, 2, 1}, {true, true, 2, 1}};
    for (const auto& state : states)
    {
        Options dialog(m_skins);
        for (const auto& [id, wanted] :
             {std::pair{IDC_JSW_COLOR_CARTRIDGE, state.color}, std::pair{IDC_JSW_BLACK_CARTRIDGE, state.black}})
            if (dialog.Checked(id) != wanted)
                dialog.Press(id);
        for (int round = 0; round < 2; ++round) // what it has written, it writes again
        {
            if (!dialog.m_hWnd)
                dialog.Init(Printer, "", nullptr, 0, nullptr);
            dialog.Press(IDOK);
            EXPECT_EQ(Stored("PSW", "First"), Number(state.first));
            EXPECT_EQ(Stored("PSW", "Second"), Number(state.second));
        }
    }
    const struct
    {
        std::string first, second;
        const char* boxes; // checked ones; "-" disabled
    } stored[] = {{Number(1), Number(0), ""},  {Number(2), Number(0), ""},     {Number(0), Number(1), ""},
                  {Number(1), Number(1), "b"}, {Number(2), Number(1), "c"},    {Number(3), Number(1), "-"},
                  {Number(1), Number(2), "-"}, {Number(1, 8), Number(1), "-"}, {"", Number(0), "-"}};
    for (const auto& test : stored)
    {
        SCOPED_TRACE(&test - stored);
        Store("PSW", "First", test.first);
        Store("PSW", "Second", test.second);
        Options dialog(m_skins);
        std::string boxes = IsEnabled(dialog.m_hWnd, IDC_JSW_COLOR_CARTRIDGE) ? "" : "-";
        EXPECT_EQ(IsEnabled(dialog.m_hWnd, IDC_JSW_COLOR_CARTRIDGE), IsEnabled(dialog.m_hWnd, IDC_JSW_BLACK_CARTRIDGE));
        boxes += dialog.Checked(IDC_JSW_COLOR_CARTRIDGE) ? "c" : "";
        boxes += dialog.Checked(IDC_JSW_BLACK_CARTRIDGE) ? "b" : "";
        EXPECT_EQ(boxes, test.boxes);
        dialog.Press(IDOK);
        if (boxes == "-")
        {
            EXPECT_EQ(Stored("PSW", "First"), test.first) << "left alone";
            EXPECT_EQ(Stored("PSW", "Second"), test.second);
        }
    }
    Product({{"IDO_SUPPORT_COMPLETE_A_PRINT", 0ul}});
    Store("PSW", "First", Number(9));
    Options dialog(m_skins);
    for (const int id : {IDC_JSW_CARTRIDGE_LABEL, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE})
        EXPECT_FALSE(IsShown(dialog.m_hWnd, id));
    dialog.Press(IDOK);
    EXPECT_EQ(Stored("PSW", "First"), Number(9));
}

TEST_F(OptionsDialog, SkinsAreFoundInOrderAndBrowsed)
{
    for (const char* name : {"dlgt1.dll", "dlgt99.dll", "dlgt100.dll", "dlgt2.txt", "dlgt01.dll", "dlgt10.dll"})
        m_skins.Add(name);
    CreateDirectoryA(m_skins.Path("dlgt3.dll").c_str(), nullptr);
    m_added.Add("dlgm0.dll");
    m_added.Add("dlgm7.dll", TwoHalves(40, 20, Blue, Red));
    Store("JSW", "JSW Skin", "DLGT10.dll", REG_SZ);
    Options dialog(m_skins);
    EXPECT_THAT(dialog.Skins(), ElementsAre("dlgt1.dll", "dlgt10.dll", "dlgt99.dll", "dlgm0.dll", "dlgm7.dll"));
    EXPECT_EQ(dialog.m_nPrimarySkins, 3);
    EXPECT_EQ(dialog.m_nCurrentSkin, 1);
    EXPECT_EQ(dialog.m_bSkinChanged, 0);
    std::string way;
    for (const int id : {IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT,
                         IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_PREVIOUS})
    {
        dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(id)); // also past a disabled button
        way += std::string(dialog.m_strSkin) + dialog.Ways() + " ";
    }
    EXPECT_EQ(way, "dlgt1.dll> dlgt1.dll> dlgt10.dll<> dlgt99.dll<> dlgm0.dll<> dlgm7.dll< dlgm7.dll< dlgm0.dll<> ");
    EXPECT_EQ(dialog.m_bSkinChanged, 1);
    EXPECT_THAT(g_boxes, IsEmpty());
    RemoveDirectoryA(m_skins.Path("dlgt3.dll").c_str());
}

TEST_F(OptionsDialog, TwoHundredSkinsAreAll)
{
    for (int n = 0; n <= 100; ++n)
    {
        m_skins.AddBytes("dlgt" + std::to_string(n) + ".dll", "no library");
        m_added.AddBytes("dlgm" + std::to_string(n) + ".dll", "no library");
    }
    Store("JSW", "JSW Skin", "dlgm5.dll", REG_SZ);
    Options dialog(m_skins);
    EXPECT_EQ(dialog.Skins().size(), 200u);
    EXPECT_EQ(dialog.m_nCurrentSkin, 0) << "only the first hundred are looked at";
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgm5.dll");
    EXPECT_THAT(g_boxes, ElementsAre("Skin LoadLibrary Failed: " + m_skins.Path("dlgt0.dll")));
}

TEST_F(OptionsDialog, NoSkinAtAll)
{
    Options dialog(m_skins);
    EXPECT_THAT(dialog.Skins(), IsEmpty());
    EXPECT_EQ(dialog.Ways(), "");
    for (const int id : {IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT})
        dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(id));
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    EXPECT_EQ(dialog.Preview(), Halves(face, face));
    dialog.Press(IDOK);
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt);
}

TEST_F(OptionsDialog, SkinsMayGoBadWhileTheDialogIsOpen)
{
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    m_skins.Add("dlgt1.dll");
    m_skins.AddBytes("dlgt2.dll", "no library");
    m_skins.AddBytes("dlgt3.dll", "");
    m_skins.AddForeign("dlgt4.dll");
    m_skins.Add("dlgt5.dll", "");
    m_skins.Add("dlgt6.dll");
    m_skins.Add("dlgt7.dll", TwoHalves(900, 300, Blue, Red));
    Options dialog(m_skins);
    ASSERT_EQ(dialog.Preview(), Halves(Red, Blue));
    m_skins.Delete("dlgt1.dll"); // nothing holds the skin that is shown
    EXPECT_EQ(dialog.Preview(), Halves(Red, Blue));

    for (const char* broken : {"dlgt2.dll", "dlgt3.dll"})
    {
        g_boxes.clear();
        dialog.Press(IDC_JSW_SKIN_NEXT);
        EXPECT_THAT(g_boxes, ElementsAre("Skin LoadLibrary Failed: " + m_skins.Path(broken)));
        EXPECT_EQ(dialog.Preview(), Halves(Red, Blue)) << "unchanged";
        EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt1.dll");
        EXPECT_EQ(dialog.m_bSkinChanged, 0);
    }
    g_boxes.clear();
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt4.dll") << "read as a file";
    EXPECT_EQ(dialog.Preview(), Halves(Red, Blue));
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt5.dll");
    EXPECT_EQ(dialog.Preview(), Halves(face, face)) << "a skin without preview";
    m_skins.Delete("dlgt6.dll");
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt5.dll") << "stays where it was";
    EXPECT_EQ(dialog.Ways(), "<>");
    m_skins.Add("dlgt6.dll");
    dialog.Press(IDC_JSW_SKIN_NEXT);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(dialog.Preview(), Halves(Blue, Red)) << "made smaller";
    const RECT area = AreaOf(dialog.m_hWnd, IDC_JSW_SKIN_PREVIEW);
    EXPECT_EQ(ShownPixels(dialog.m_hWnd, {area.right, area.top, area.right + 1, area.top + 1})[0], face);
    EXPECT_THAT(g_boxes, IsEmpty());
}

TEST_F(OptionsDialog, UnknownWindowsDirectoryIsTraced)
{
    m_skins.Add("dlgt1.dll");
    m_added.Add("dlgm1.dll");
    TraceWorld trace;
    Product();
    const auto failures = [&trace]
    {
        std::string found;
        const auto records = trace.Records();
        for (auto record = records.begin(); record != records.end(); ++record)
            if (record->find("GetWindowsDirectory failed.\n") != std::string::npos)
                found += record->substr(record->find("::") + 2, record->find(':', 25) - record->find("::") - 2) +
                         *std::next(record) + " ";
        trace.Clear();
        return found;
    };
    for (const UINT result : {0u, 300u})
    {
        g_windowsResult = result;
        const std::string number = "(DWORD)" + std::to_string(result) + " ";
        auto patch = std::make_unique<IatPatch>(LibraryUnderTest(), "GetWindowsDirectoryA", &NoWindowsDirectory);
        Store("JSW", "JSW Skin", "dlgm1.dll", REG_SZ);
        EXPECT_THAT(Options(m_skins).Skins(), ElementsAre("dlgt1.dll"));
        EXPECT_EQ(failures(), "OnInitDialog1" + number);
        patch.reset();
        Options dialog(m_skins);
        dialog.Press(IDC_JSW_SKIN_PREVIOUS);
        EXPECT_EQ(failures(), "");
        patch = std::make_unique<IatPatch>(LibraryUnderTest(), "GetWindowsDirectoryA", &NoWindowsDirectory);
        dialog.Press(IDC_JSW_SKIN_NEXT);
        EXPECT_EQ(failures(), "OnNext" + number);
        EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt1.dll");
    }
}

TEST_F(OptionsDialog, SettingsAndRetailerHideTheSkins)
{
    const auto shown = [this]
    {
        const Options dialog(m_skins);
        std::string ids;
        for (int id = IDC_JSW_SKIN_LABEL; id <= IDC_JSW_SKIN_LINK; ++id)
            ids += IsShown(dialog.m_hWnd, id) ? std::to_string(id % 10) : "";
        return ids;
    };
    EXPECT_EQ(shown(), "56789");
    const std::pair<SettingList, std::string> cases[] = {{{{"IDO_SKIN_URL_OVERRIDE", "1"}}, "5678"},
                                                         {{{"IDO_HIDE_APPEARANCESTYLE_OPTION", 1ul}}, ""},
                                                         {{{"IDO_ONECLICK_INK_ORDER", 1ul}}, ""},
                                                         {{{"IDO_ONECLICK_INK_ORDER", 2ul}}, "56789"}};
    for (const auto& [settings, expected] : cases)
    {
        Product(settings);
        EXPECT_EQ(shown(), expected);
    }
    Product();
    for (const auto& [directive, expected] : {std::pair{"1", ""}, std::pair{"0", "56789"}, std::pair{"yes", "56789"}})
    {
        const PlacedFile ini = PlacedFile::Of(std::string(Driver) + "dlgt-shop.ini",
                                              std::string("[Retailer]\r\nHideSkins=") + directive + "\r\n");
        EXPECT_EQ(shown(), expected) << directive;
    }
}

TEST_F(OptionsDialog, TextsAndPlaceFollowTheHost)
{
    {
        const Options dialog(m_skins);
        CString caption;
        dialog.GetWindowText(caption);
        EXPECT_EQ(caption, Printer);
        EXPECT_EQ(TextOf(dialog.m_hWnd, IDC_JSW_WARNING), "Warnings are always shown.");
        EXPECT_EQ(TextOf(dialog.m_hWnd, IDC_JSW_SKIN_LINK), "More skins online");
        EXPECT_FALSE(dialog.GetExStyle() & WS_EX_TOPMOST);
    }
    Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", 1ul}});
    CString caption("Window options");
    CRect place(40, 60, 41, 61), outside(5000, -300, 5001, -299);
    Options dialog(m_skins, &caption, JSWOptionsDlg::StayOnTop, &place);
    CRect window;
    dialog.GetWindowRect(&window);
    EXPECT_EQ(window.TopLeft(), CPoint(40, 60));
    dialog.GetWindowText(caption);
    EXPECT_EQ(caption, "Window options");
    EXPECT_TRUE(dialog.GetExStyle() & WS_EX_TOPMOST);
    EXPECT_EQ(TextOf(dialog.m_hWnd, IDC_JSW_WARNING), "Warnings, such as ink running low, are always shown.");
    const Options other(m_skins, nullptr, 0, &outside);
    other.GetWindowRect(&window);
    EXPECT_EQ(window.top, 0);
    EXPECT_EQ(window.right, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(OptionsDialog, EveryWayOfClosingPutsTheResourceHandleBack)
{
    const HINSTANCE host = GetModuleHandleA(nullptr);
    const std::function<void(Options&)> ways[] = {[](Options& d) { d.Press(IDOK); },
                                                  [](Options& d) { d.Press(IDCANCEL); },
                                                  [](Options& d)
                                                  {
                                                      d.PostMessage(WM_CLOSE);
                                                      Pump();
                                                  },
                                                  [](Options& d)
                                                  {
                                                      d.PostMessage(WM_SYSCOMMAND, SC_CLOSE);
                                                      Pump();
                                                  },
                                                  [](Options&) { Type(VK_ESCAPE); },
                                                  [](Options&) { Type(VK_RETURN); },
                                                  [](Options& d) { d.DestroyWindow(); }};
    for (const auto& close : ways)
    {
        SCOPED_TRACE(&close - ways);
        Options dialog(m_skins);
        AfxSetResourceHandle(host);
        close(dialog);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(AfxGetResourceHandle(), m_library.Module());
    }
    {
        Options dialog(m_skins);
        AfxSetResourceHandle(host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), m_library.Module()) << "the object destroyed";

    // Out of order: each puts back what it has saved.
    Options first(m_skins);
    AfxSetResourceHandle(host);
    AfxSetResourceHandle(m_library.Module());
    Options second(m_skins);
    first.Press(IDOK);
    EXPECT_EQ(second.m_hWnd != nullptr, true);
    second.Press(IDCANCEL);
    AfxSetResourceHandle(host);
    EXPECT_EQ(AfxGetResourceHandle(), host);
    AfxSetResourceHandle(m_library.Module());
}

TEST_F(OptionsDialog, ModalDialogsEndWith1HoweverTheyAreClosed)
{
    static WPARAM message;
    for (const WPARAM key : {static_cast<WPARAM>(VK_RETURN), static_cast<WPARAM>(VK_ESCAPE), static_cast<WPARAM>(0)})
    {
        message = key;
        JSWOptionsDlg dialog;
        dialog.InitModal(Printer, m_skins.Path("").c_str());
        SetTimer(nullptr, 0, 20,
                 [](HWND, UINT, UINT_PTR id, DWORD)
                 {
                     KillTimer(nullptr, id);
                     if (message)
                         PostMessageA(GetFocus(), WM_KEYDOWN, message, 1);
                     else
                         PostMessageA(GetActiveWindow(), WM_CLOSE, 0, 0);
                 });
        EXPECT_EQ(dialog.DoModal(), 1);
        EXPECT_EQ(AfxGetResourceHandle(), m_library.Module());
    }
    AfxSetResourceHandle(GetModuleHandleA(nullptr));
    JSWOptionsDlg dialog;
    dialog.InitModal(Printer, "");
    EXPECT_EQ(dialog.DoModal(), -1) << "no template";
    AfxSetResourceHandle(m_library.Module());
}

TEST_F(OptionsDialog, GoesWithItsOwner)
{
    CWinApp application; // its main window owns what is opened without an owner
    CWnd owner;
    owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
    application.m_pMainWnd = &owner;
    m_skins.Add("dlgt1.dll");
    Options dialog(m_skins);
    ASSERT_EQ(dialog.GetOwner(), &owner);
    AfxSetResourceHandle(GetModuleHandleA(nullptr));
    application.m_pMainWnd = nullptr;
    owner.DestroyWindow();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), m_library.Module());
}

TEST_F(OptionsDialog, HelpTopicsOfTheControls)
{
    TraceWorld trace;
    LaunchCalls calls;
    calls.pretend = true;
    Product();
    Options dialog(m_skins);
    const std::pair<int, int> topics[] = {{8030, 302}, {8031, 303}, {8032, 301}, {8034, 304},
                                          {8026, 305}, {8027, 305}, {8028, 305}, {IDOK, 0}};
    for (const auto& [id, topic] : topics)
        for (const bool menu : {false, true})
        {
            SCOPED_TRACE(id);
            trace.Clear();
            const HWND control = GetDlgItem(dialog.m_hWnd, id);
            RECT rect;
            GetWindowRect(control, &rect);
            HELPINFO info = {sizeof info, HELPINFO_WINDOW, id, control, 0, {rect.left, rect.top}};
            if (menu)
                dialog.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog.m_hWnd),
                                   MAKELPARAM(rect.left + 4, rect.top + 4));
            else
                dialog.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
            const std::string command = "(char)C:\\windows\\hh.exe  -mapid " + std::to_string(topic) + " help.chm";
            EXPECT_THAT(trace.Records(), topic ? testing::Matcher<std::vector<std::string>>(Contains(command))
                                               : Not(Contains(testing::HasSubstr("hh.exe"))));
        }
}

TEST_F(OptionsDialog, LinkLeadsToTheSkinPage)
{
    TraceWorld trace;
    LaunchCalls calls;
    calls.pretend = true;
    calls.shellResult = 33;
    Product();
    Options dialog(m_skins);
    dialog.Init(std::string(400, 'p').c_str());
    dialog.Press(IDC_JSW_SKIN_LINK); // on its picture
    EXPECT_THAT(trace.Records(), Contains("(char)http://skins.example/"));
    EXPECT_THAT(trace.Records(), Contains(testing::HasSubstr(std::string(259, 'p') + ")"))) << "the visit is recorded";
}

TEST_F(OptionsDialog, PreviewIsMirroredWithTheDialog)
{
    m_skins.Add("dlgt1.dll");
    const RightToLeft layout;
    Options dialog(m_skins);
    EXPECT_EQ(dialog.Preview(), Halves(Blue, Red));
    EXPECT_FALSE(dialog.SendMessage(WM_QUERYNEWPALETTE)) << "a true-colour screen has no palette to change";
}

TEST_F(OptionsDialog, LinkIsDrawnByTheDialog)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Options dialog(m_skins);
        const auto pixels = [&dialog]
        {
            dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
            return ShownPixels(dialog.m_hWnd, AreaOf(dialog.m_hWnd, IDC_JSW_SKIN_LINK));
        };
        const auto shown = pixels();
        EXPECT_GT(std::count(shown.begin(), shown.end(), RGB(255, 255, 255)), 200) << "white text";
        EXPECT_EQ(shown[0], GetSysColor(COLOR_3DFACE)) << "round corners";
        dialog.SendDlgItemMessage(IDC_JSW_SKIN_LINK, WM_MOUSEMOVE, 0, MAKELPARAM(60, 12));
        EXPECT_EQ(pixels(), shown) << "all states look alike";
        ReleaseCapture();
    }
}

TEST_F(OptionsDialog, IsLaidOutWell)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", mirrored ? 0ul : 1ul}});
        EXPECT_THAT(LayoutFaults(Options(m_skins).m_hWnd), IsEmpty());
    }
}

TEST_F(OptionsDialog, KeysWork)
{
    for (const char* name : {"dlgt1.dll", "dlgt2.dll", "dlgt3.dll"})
        m_skins.Add(name);
    Options dialog(m_skins);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    ::SetFocus(GetDlgItem(dialog.m_hWnd, IDC_JSW_ALWAYS_SHOW));
    EXPECT_THAT(TabOrder(dialog.m_hWnd),
                ElementsAre(IDC_JSW_ALWAYS_SHOW, IDC_JSW_SOUND, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE,
                            IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_LINK, IDOK, IDCANCEL));
    Type(VK_DOWN);
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_SHOW_MINIMIZED);
    const auto mnemonic = [](char key)
    {
        PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(key), 1 << 29);
        Pump();
    };
    mnemonic('n');
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_NEVER_SHOW);
    mnemonic('c');
    EXPECT_TRUE(dialog.Checked(IDC_JSW_COLOR_CARTRIDGE));
    // A button that is disabled under the focus hands it on.
    ::SetFocus(GetDlgItem(dialog.m_hWnd, IDC_JSW_SKIN_NEXT));
    mnemonic('x');
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt3.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_PREVIOUS);
    mnemonic('p');
    mnemonic('p');
    EXPECT_EQ(std::string(dialog.m_strSkin), "dlgt1.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_NEXT);
}

TEST_F(OptionsDialog, LeavesNothingBehind)
{
    m_skins.Add("dlgt1.dll");
    m_skins.AddForeign("dlgt2.dll");
    m_skins.AddBytes("dlgt3.dll", "no library");
    m_skins.Add("dlgt4.dll");
    const auto round = [this](int number)
    {
        Options dialog(m_skins);
        for (int i = 0; i < 4; ++i)
            dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
        dialog.RedrawWindow();
        dialog.SendMessage(WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
    };
    for (int i = 0; i < 10; ++i)
        round(i);
    const auto before = SystemObjects();
    for (int i = 0; i < 90; ++i)
        round(i);
    EXPECT_EQ(SystemObjects(), before);
}
