// The options dialog of the job status window: what it reads and writes, the skins, the ways of closing.
#include "dialogs/JSWOptionsDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "links/LaunchCalls.h"
#include "support/IatPatch.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include <algorithm>
#include <filesystem>
#include <fstream>

namespace
{
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Bytes = std::optional<std::string>;
using Halves = std::pair<COLORREF, COLORREF>; // colours of the left and of the right half of a preview

constexpr char Printer[] = "Dialog Test Printer";
const std::string UserKey = std::string("Printers\\") + Printer;
constexpr char Driver[] = "C:\\windows\\system32\\spool\\drivers\\x64\\3\\";
constexpr COLORREF Red = RGB(200, 10, 20), Blue = RGB(20, 30, 210), Key = RGB(0, 255, 0);

std::string Number(DWORD number, std::size_t size = sizeof(DWORD))
{
    std::string bytes(reinterpret_cast<const char*>(&number), sizeof number);
    bytes.resize(size, '\0');
    return bytes;
}

/// A bitmap resource with a palette: two halves of one colour each, the first column the hole.
std::string TwoHalves(int width, int height, Halves colours)
{
    const BITMAPINFOHEADER header = {sizeof header, width, height, 1, 8, BI_RGB, 0, 0, 0, 3, 0};
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    for (const COLORREF colour : {Key, colours.first, colours.second})
        bytes += {static_cast<char>(GetBValue(colour)), static_cast<char>(GetGValue(colour)),
                  static_cast<char>(GetRValue(colour)), '\0'};
    std::string row(static_cast<std::size_t>((width + 3) / 4 * 4), '\2');
    std::fill_n(row.begin(), width / 2, '\1');
    row[0] = '\0';
    for (int y = 0; y < height; ++y)
        bytes += row;
    return bytes;
}

/// A folder of skins, gone with the object.
class SkinFolder : public PlacedFiles
{
public:
    explicit SkinFolder(const std::string& path) : m_path(path)
    {
        std::filesystem::remove_all(path); // a run that was ended may have left it
        CreateDirectoryA(path.c_str(), nullptr);
    }
    ~SkinFolder()
    {
        Clear();
        RemoveDirectoryA(m_path.c_str());
    }

    std::string Path(const std::string& name) const { return m_path + name; }
    /// A library with this preview, or without any.
    void Add(const std::string& name, std::string preview = TwoHalves(40, 20, {Red, Blue}))
    {
        Copy(Path(name), TestProduct::LibraryName());
        const HANDLE update = BeginUpdateResourceA(Path(name).c_str(), TRUE);
        UpdateResourceA(update, MAKEINTRESOURCEA(preview.empty() ? 10 : 2), MAKEINTRESOURCEA(IDB_JSW_SKIN_PREVIEW), 0,
                        preview.data(), static_cast<DWORD>(preview.size()));
        ASSERT_TRUE(EndUpdateResourceA(update, FALSE)) << name;
    }
    void AddBroken(const std::string& name) { Write(Path(name), "no library"); }
    /// A skin for another processor: the system refuses it as a library, its resources can still be read.
    void AddForeign(const std::string& name)
    {
        Add(name);
        std::fstream file(Path(name), std::ios::binary | std::ios::in | std::ios::out);
        LONG header = 0;
        file.seekg(60).read(reinterpret_cast<char*>(&header), sizeof header);
        file.seekp(header + 4).write("\xC4\x01", 2);
    }

private:
    std::string m_path;
};

/// The dialog, modeless so that the test goes on.
class Options : public JSWOptionsDlg
{
public:
    using JSWOptionsDlg::m_bSkinChanged;
    using JSWOptionsDlg::m_nCurrentSkin;
    using JSWOptionsDlg::m_nPrimarySkins;

    explicit Options(const SkinFolder& skins, CString* caption = nullptr, unsigned long options = 0,
                     CRect* place = nullptr)
    {
        Init(Printer, skins.Path("").c_str(), caption, options, place);
        EXPECT_TRUE(m_hWnd);
        SetForegroundWindow();
        Pump();
    }
    std::vector<std::string> Skins() const { return {m_astrSkins, m_astrSkins + m_nLastSkin + 1}; }
    std::string Skin() const { return std::string(m_strSkin); }
    void Press(int id) { Click(*this, id); }
    bool Checked(int id) const { return IsDlgButtonChecked(id) == BST_CHECKED; }
    int ShowMode() const { return GetCheckedRadioButton(IDC_JSW_ALWAYS_SHOW, IDC_JSW_NEVER_SHOW); }
    /// Which of Previous and Next can be pressed.
    std::string Ways() const
    {
        return std::string(IsEnabled(*this, IDC_JSW_SKIN_PREVIOUS) ? "<" : "") +
               (IsEnabled(*this, IDC_JSW_SKIN_NEXT) ? ">" : "");
    }
    /// The colours in the middle of the preview's place, as the window shows them.
    Halves Preview() const
    {
        const auto pixels = ShownPixels(*this, IDC_JSW_SKIN_PREVIEW);
        const CRect area = AreaOf(*this, IDC_JSW_SKIN_PREVIEW);
        const auto* middle = &pixels[static_cast<std::size_t>(area.Height() / 2 * area.Width() + area.Width() / 2)];
        return {middle[-10], middle[10]};
    }
};

std::vector<std::string> g_boxes; // the message boxes shown
std::vector<UINT> g_windows;      // what the next questions for the Windows directory are answered, then the truth
std::vector<Halves> g_palettes;   // what the selected palettes hold of a preview's colours
UINT g_realized;                  // how many colours a palette moves

int WINAPI RecordBox(HWND, LPCSTR text, LPCSTR caption, UINT)
{
    g_boxes.push_back(std::string(caption) + ": " + text);
    return IDOK;
}

constexpr UINT Truth = ~0u;

UINT WINAPI ScriptedWindowsDirectory(LPSTR buffer, UINT size)
{
    UINT result = GetWindowsDirectoryA(buffer, size);
    if (!g_windows.empty())
    {
        result = g_windows.front() == Truth ? result : g_windows.front();
        g_windows.erase(g_windows.begin());
    }
    return result;
}

HPALETTE WINAPI RecordPalette(HDC context, HPALETTE palette, BOOL background)
{
    std::array<PALETTEENTRY, 3> entries = {};
    GetPaletteEntries(palette, 0, 3, entries.data());
    const auto colour = [](const PALETTEENTRY& entry) { return RGB(entry.peRed, entry.peGreen, entry.peBlue); };
    if (palette != GetStockObject(DEFAULT_PALETTE))
        g_palettes.emplace_back(colour(entries[1]), colour(entries[2]));
    return SelectPalette(context, palette, background);
}

UINT WINAPI ScriptedRealize(HDC)
{
    return g_realized;
}

class OptionsDialog : public DialogTest
{
protected:
    OptionsDialog()
        : DialogTest(PRODUCT_PREFIX "jres.dll", {{"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
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
                                                 {"IDO_PSW_HELPFILE", "help.chm"}})
    {
        m_registry.Claim(HKEY_CURRENT_USER, UserKey);
        g_boxes.clear();
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
    /// The text of the remembered skin; "none" without.
    static std::string StoredSkin() { return Stored("JSW", "JSW Skin").value_or("none").c_str(); }
    static void Forget() { RegDeleteTreeA(HKEY_CURRENT_USER, UserKey.c_str()); }

    const COLORREF m_face = GetSysColor(COLOR_3DFACE);
    const HINSTANCE m_host = GetModuleHandleA(nullptr);
    RegistryWorld m_registry;
    SkinFolder m_skins{TestFolder() + "skins\\"};
    SkinFolder m_added{"C:\\windows\\dlgt skins\\"};
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
        EXPECT_EQ(StoredSkin(), test.skin);
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
        bool replaced = false; // the one that is no number
    } modes[] = {{Number(0), Number(1), Always},          {Number(0), Number(7), Always},
                 {Number(2), Number(0), Never},           {Number(1), Number(0), Minimized},
                 {Number(0, 8), Number(0), Never},        {Number(1, 8), Number(1), Minimized},
                 {Number(0, 3), Number(0), Minimized, 1}, {Number(0, 9), Number(0), Minimized, 1},
                 {Number(0), Number(0, 8), Always, 1},    {Number(0), "", Always, 1}};
    for (const auto& test : modes)
    {
        SCOPED_TRACE(&test - modes);
        Store("JSW", "Job Progress Minimized", test.minimized);
        Store("JSW", "Show Process Window", test.show);
        EXPECT_EQ(Options(m_skins).ShowMode(), test.mode);
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"),
                  test.replaced && test.mode == Minimized ? Number(1, 8) : test.minimized);
        EXPECT_EQ(Stored("JSW", "Show Process Window"), test.replaced && test.mode == Always ? Number(1) : test.show);
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
        EXPECT_EQ(Options(m_skins).Skin(), test.skin);
        EXPECT_EQ(StoredSkin(), test.skin);
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
    EXPECT_FALSE(IsEnabled(dialog, IDC_JSW_COLOR_CARTRIDGE)) << "a choice that could not be kept";
    dialog.Press(IDOK);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(OptionsDialog, OkSavesTheChoices)
{
    m_skins.Add("dlgt1.dll");
    m_skins.Add("dlgt2.dll");
    DWORD sound = 1;
    for (const int mode : {IDC_JSW_ALWAYS_SHOW, IDC_JSW_SHOW_MINIMIZED, IDC_JSW_NEVER_SHOW})
    {
        Options dialog(m_skins);
        dialog.Press(mode);
        dialog.Press(IDC_JSW_SOUND);
        dialog.Press(IDOK);
        sound = !sound;
        EXPECT_EQ(Stored("JSW", "Show Process Window"), Number(mode != IDC_JSW_NEVER_SHOW));
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), Number(mode == IDC_JSW_SHOW_MINIMIZED));
        EXPECT_EQ(Stored("RZB", "Sound"), Number(sound));
        EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt) << "no other skin";
        EXPECT_EQ(Options(m_skins).ShowMode(), mode);
    }
    Options dialog(m_skins);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt) << "not before it is accepted";
    dialog.Press(IDOK);
    EXPECT_EQ(StoredSkin(), "dlgt2.dll");
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), Number(1));
    EXPECT_EQ(Options(m_skins).m_nCurrentSkin, 1);
}

TEST_F(OptionsDialog, CartridgeChoiceComesBackAsItWasStored)
{
    const std::string none = Number(0), black = Number(1), color = Number(2), asked = Number(1);
    const struct
    {
        Bytes first, second;
        std::string shown;   // the boxes that are checked: color, black; "-" disabled
        std::string pressed; // those pressed before OK
        Bytes firstAfter, secondAfter;
    } cases[] = {
        {std::nullopt, std::nullopt, "", "", none, none},
        {none, none, "", "b", black, asked},
        {none, none, "", "cb", color, asked},
        {black, asked, "b", "", black, asked},
        {black, asked, "b", "b", none, none},
        {black, asked, "b", "c", color, asked},
        {color, asked, "c", "", color, asked},
        {color, asked, "c", "cb", black, asked},
        {black, none, "", "", none, none},
        {color, none, "", "", none, none},
        {none, asked, "", "c", color, asked},
        {black, std::nullopt, "b", "", black, asked},
        {Number(3), asked, "-", "", Number(3), asked},
        {black, Number(2), "-", "", black, Number(2)},
        {Number(1, 8), asked, "-", "", Number(1, 8), asked},
        {"", none, "-", "", "", none},
    };
    for (const auto& test : cases)
    {
        SCOPED_TRACE(&test - cases);
        Forget();
        if (test.first)
            Store("PSW", "First", *test.first);
        if (test.second)
            Store("PSW", "Second", *test.second);
        Options dialog(m_skins);
        std::string shown = IsEnabled(dialog, IDC_JSW_COLOR_CARTRIDGE) ? "" : "-";
        EXPECT_EQ(IsEnabled(dialog, IDC_JSW_COLOR_CARTRIDGE), IsEnabled(dialog, IDC_JSW_BLACK_CARTRIDGE));
        for (const auto& [id, letter] : {std::pair{IDC_JSW_COLOR_CARTRIDGE, 'c'}, {IDC_JSW_BLACK_CARTRIDGE, 'b'}})
        {
            if (dialog.Checked(id))
                shown += letter;
            if (test.pressed.find(letter) != std::string::npos)
                dialog.Press(id);
        }
        EXPECT_EQ(shown, test.shown);
        dialog.Press(IDOK);
        EXPECT_EQ(Stored("PSW", "First"), test.firstAfter);
        EXPECT_EQ(Stored("PSW", "Second"), test.secondAfter);
    }
    Product({{"IDO_SUPPORT_COMPLETE_A_PRINT", 0ul}});
    Store("PSW", "First", Number(9));
    Options dialog(m_skins);
    for (const int id : {IDC_JSW_CARTRIDGE_LABEL, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE})
        EXPECT_FALSE(IsShown(dialog, id));
    dialog.Press(IDOK);
    EXPECT_EQ(Stored("PSW", "First"), Number(9));
}

TEST_F(OptionsDialog, SkinsAreFoundInOrderAndBrowsed)
{
    for (const char* name : {"dlgt1.dll", "dlgt99.dll", "dlgt100.dll", "dlgt2.txt", "dlgt01.dll", "dlgt10.dll"})
        m_skins.Add(name);
    CreateDirectoryA(m_skins.Path("dlgt3.dll").c_str(), nullptr);
    m_added.Add("dlgm0.dll");
    m_added.Add("dlgm7.dll");
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
        way += dialog.Skin() + dialog.Ways() + " ";
    }
    EXPECT_EQ(way, "dlgt1.dll> dlgt1.dll> dlgt10.dll<> dlgt99.dll<> dlgm0.dll<> dlgm7.dll< dlgm7.dll< dlgm0.dll<> ");
    EXPECT_EQ(dialog.m_bSkinChanged, 1);
    EXPECT_THAT(g_boxes, IsEmpty());
    RemoveDirectoryA(m_skins.Path("dlgt3.dll").c_str());
}

TEST_F(OptionsDialog, TwoHundredSkinsAreAll)
{
    std::vector<std::string> tried[2];
    for (int n = 0; n <= 100; ++n)
        for (const bool added : {false, true})
        {
            SkinFolder& folder = added ? m_added : m_skins;
            const std::string name = (added ? "dlgm" : "dlgt") + std::to_string(n) + ".dll";
            folder.AddBroken(name);
            if (n < 100)
                tried[added].push_back("Skin LoadLibrary Failed: " + folder.Path(name));
        }
    tried[0].insert(tried[0].end(), tried[1].begin(), tried[1].end());
    Store("JSW", "JSW Skin", "dlgm5.dll", REG_SZ);
    Options dialog(m_skins);
    EXPECT_EQ(dialog.m_nCurrentSkin, 0) << "only the first hundred are looked at";
    EXPECT_EQ(dialog.Skin(), "dlgm5.dll");
    while (dialog.Ways() == ">" || dialog.Ways() == "<>")
        dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
    dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(dialog.m_nCurrentSkin, 199);
    EXPECT_EQ(g_boxes, tried[0]);
}

TEST_F(OptionsDialog, NoSkinAtAll)
{
    Options dialog(m_skins);
    EXPECT_THAT(dialog.Skins(), IsEmpty());
    EXPECT_EQ(dialog.Ways(), "");
    for (const int id : {IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT})
        dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(id));
    EXPECT_EQ(dialog.Preview(), Halves(m_face, m_face));
    dialog.Press(IDOK);
    EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt);
}

TEST_F(OptionsDialog, SkinsMayGoBadWhileTheDialogIsOpen)
{
    m_skins.Add("dlgt1.dll");
    m_skins.AddBroken("dlgt2.dll");
    m_skins.Write(m_skins.Path("dlgt3.dll"), "");
    m_skins.AddForeign("dlgt4.dll");
    m_skins.Add("dlgt5.dll", "");
    m_skins.Add("dlgt6.dll");
    m_skins.Add("dlgt7.dll", TwoHalves(900, 300, {Blue, Red}));
    Options dialog(m_skins);
    m_skins.Delete(m_skins.Path("dlgt1.dll")); // nothing holds the skin that is shown
    const struct
    {
        const char *skin, *ways;
        Halves preview;
        bool changed, reported;
        bool deleted = false; // the next skin's file, for this step
    } steps[] = {{"dlgt1.dll", ">", {Red, Blue}, false, false},
                 {"dlgt1.dll", "<>", {Red, Blue}, false, true}, // no library
                 {"dlgt1.dll", "<>", {Red, Blue}, false, true}, // empty
                 {"dlgt4.dll", "<>", {Red, Blue}, true, false}, // read as a file
                 {"dlgt5.dll", "<>", {m_face, m_face}, true, false},
                 {"dlgt5.dll", "<>", {m_face, m_face}, true, false, true},
                 {"dlgt6.dll", "<>", {Red, Blue}, true, false},
                 {"dlgt7.dll", "<", {Blue, Red}, true, false}}; // made smaller
    for (const auto& step : steps)
    {
        SCOPED_TRACE(&step - steps);
        g_boxes.clear();
        if (step.deleted)
            m_skins.Delete(m_skins.Path("dlgt6.dll"));
        if (&step != steps)
            dialog.Press(IDC_JSW_SKIN_NEXT);
        if (step.deleted)
            m_skins.Add("dlgt6.dll");
        EXPECT_EQ(dialog.Skin(), step.skin);
        EXPECT_EQ(dialog.Ways(), step.ways);
        EXPECT_EQ(dialog.Preview(), step.preview);
        EXPECT_EQ(dialog.m_bSkinChanged, step.changed);
        EXPECT_THAT(g_boxes, testing::SizeIs(step.reported));
    }
    const CRect frame = AreaOf(dialog, IDC_JSW_SKIN_LABEL), area = AreaOf(dialog, IDC_JSW_SKIN_PREVIEW);
    const int beside = (area.top - frame.top) * frame.Width() + area.right - frame.left;
    EXPECT_EQ(ShownPixels(dialog, IDC_JSW_SKIN_LABEL)[static_cast<std::size_t>(beside)], m_face);
}

TEST_F(OptionsDialog, UnknownWindowsDirectoryIsTraced)
{
    m_skins.Add("dlgt1.dll");
    m_added.Add("dlgm1.dll");
    m_added.Add("dlgm2.dll");
    TraceWorld trace;
    Product();
    const struct
    {
        const char* remembered;
        std::vector<UINT> answers; // for the list; for the skin first shown, if it is an added one; for the step
        int step;
        std::string record; // and the length
        int skins = 3;
    } cases[] = {{"dlgt1.dll", {0}, 0, "OnInitDialog1|0", 1},
                 {"dlgt1.dll", {300}, 0, "OnInitDialog1|300", 1},
                 {"dlgt1.dll", {261}, 0, "OnInitDialog1|261", 1},
                 {"dlgt1.dll", {260}, 0, ""},
                 {"dlgm1.dll", {Truth, 0}, 0, "OnInitDialog2|0"},
                 {"dlgt1.dll", {Truth, 0}, IDC_JSW_SKIN_NEXT, "OnNext|0"},
                 {"dlgm2.dll", {Truth, Truth, 0}, IDC_JSW_SKIN_PREVIOUS, "OnPrevious|0"}};
    const IatPatch patch(LibraryUnderTest(), "GetWindowsDirectoryA", &ScriptedWindowsDirectory);
    for (const auto& test : cases)
    {
        SCOPED_TRACE(test.record);
        trace.Clear();
        Store("JSW", "JSW Skin", test.remembered, REG_SZ);
        g_windows = test.answers;
        Options dialog(m_skins);
        if (test.step)
            dialog.Press(test.step);
        EXPECT_THAT(g_windows, IsEmpty());
        EXPECT_EQ(dialog.Skins().size(), static_cast<std::size_t>(test.skins));
        EXPECT_EQ(dialog.Skin(), test.remembered) << "stays where it was";
        std::string found;
        const auto records = trace.Records();
        for (std::size_t i = 0; i + 1 < records.size(); ++i)
            if (records[i].ends_with(": GetWindowsDirectory failed.\n"))
                found += records[i] + records[i + 1];
        const std::size_t bar = test.record.find('|');
        EXPECT_EQ(found, test.record.empty()
                             ? ""
                             : "(char)JSWOptionsDlg::" + test.record.substr(0, bar) +
                                   ": GetWindowsDirectory failed.\n(DWORD)" + test.record.substr(bar + 1));
    }
}

TEST_F(OptionsDialog, SettingsAndRetailerHideTheSkins)
{
    const struct
    {
        SettingList settings;
        const char* directive; // null: no retailer file
        const char* shown;     // last digits of the controls' identifiers
    } cases[] = {{{}, nullptr, "56789"},
                 {{{"IDO_SKIN_URL_OVERRIDE", "1"}}, nullptr, "5678"},
                 {{{"IDO_HIDE_APPEARANCESTYLE_OPTION", 1ul}}, nullptr, ""},
                 {{{"IDO_ONECLICK_INK_ORDER", 1ul}}, nullptr, ""},
                 {{{"IDO_ONECLICK_INK_ORDER", 2ul}}, nullptr, "56789"},
                 {{}, "1", ""},
                 {{}, "0", "56789"},
                 {{}, "yes", "56789"}};
    for (const auto& test : cases)
    {
        SCOPED_TRACE(&test - cases);
        Product(test.settings);
        PlacedFiles files;
        if (test.directive)
            files.Write(std::string(Driver) + "dlgt-shop.ini",
                        std::string("[Retailer]\r\nHideSkins=") + test.directive);
        const Options dialog(m_skins);
        std::string shown;
        for (int id = IDC_JSW_SKIN_LABEL; id <= IDC_JSW_SKIN_LINK; ++id)
            shown += IsShown(dialog, id) ? std::to_string(id % 10) : "";
        EXPECT_EQ(shown, test.shown);
    }
}

TEST_F(OptionsDialog, TextsAndPlaceFollowTheHost)
{
    CString caption;
    CRect window;
    {
        const Options dialog(m_skins);
        dialog.GetWindowText(caption);
        EXPECT_EQ(caption, Printer);
        EXPECT_EQ(TextOf(dialog, IDC_JSW_WARNING), "Warnings are always shown.");
        EXPECT_EQ(TextOf(dialog, IDC_JSW_SKIN_LINK), "More skins online");
        EXPECT_FALSE(dialog.GetExStyle() & WS_EX_TOPMOST);
    }
    Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", 1ul}});
    caption = "Window options";
    CRect place(40, 60, 41, 61), outside(5000, -300, 5001, -299);
    const Options dialog(m_skins, &caption, JSWOptionsDlg::StayOnTop, &place);
    dialog.GetWindowRect(&window);
    EXPECT_EQ(window.TopLeft(), CPoint(40, 60));
    dialog.GetWindowText(caption);
    EXPECT_EQ(caption, "Window options");
    EXPECT_TRUE(dialog.GetExStyle() & WS_EX_TOPMOST);
    EXPECT_EQ(TextOf(dialog, IDC_JSW_WARNING), "Warnings, such as ink running low, are always shown.");
    const Options other(m_skins, nullptr, 0, &outside);
    other.GetWindowRect(&window);
    EXPECT_EQ(window.top, 0);
    EXPECT_EQ(window.right, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(OptionsDialog, EveryWayOfClosingPutsTheResourceHandleBack)
{
    void (*const ways[])(Options&) = {
        [](Options& dialog) { dialog.Press(IDOK); },
        [](Options& dialog) { dialog.Press(IDCANCEL); },
        [](Options& dialog) { dialog.SendMessage(WM_CLOSE); },
        [](Options& dialog) { dialog.SendMessage(WM_SYSCOMMAND, SC_CLOSE); },
        [](Options&) { Type(VK_ESCAPE); },
        [](Options&) { Type(VK_RETURN); },
        [](Options& dialog) { dialog.DestroyWindow(); },
    };
    for (const auto& close : ways)
    {
        SCOPED_TRACE(&close - ways);
        Options dialog(m_skins);
        AfxSetResourceHandle(m_host);
        close(dialog);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(AfxGetResourceHandle(), m_library);
    }
    {
        const Options dialog(m_skins);
        AfxSetResourceHandle(m_host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), m_library) << "the object destroyed";

    // Out of order: each puts back what it has saved.
    PlacedFiles files;
    files.Copy(TestFolder() + "dlgt-jres.dll", "dialogs\\" PRODUCT_PREFIX "jres.dll");
    const HMODULE copy = LoadLibraryA("dlgt-jres.dll");
    Options first(m_skins);
    AfxSetResourceHandle(copy);
    Options second(m_skins);
    first.Press(IDOK);
    EXPECT_EQ(AfxGetResourceHandle(), m_library);
    second.Press(IDCANCEL);
    EXPECT_EQ(AfxGetResourceHandle(), copy);
    AfxSetResourceHandle(m_library);
    FreeLibrary(copy);
}

TEST_F(OptionsDialog, ModalDialogsEndWith1HoweverTheyAreClosed)
{
    const auto run = [this](WPARAM key)
    {
        JSWOptionsDlg dialog;
        dialog.InitModal(Printer, m_skins.Path("").c_str());
        return RunModal(dialog, key);
    };
    for (const int key : {VK_RETURN, VK_ESCAPE, 0})
    {
        EXPECT_EQ(run(static_cast<WPARAM>(key)), 1);
        EXPECT_EQ(AfxGetResourceHandle(), m_library);
    }
    AfxSetResourceHandle(m_host);
    EXPECT_EQ(run(0), -1) << "no template";
    AfxSetResourceHandle(m_library);
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
    AfxSetResourceHandle(m_host);
    application.m_pMainWnd = nullptr;
    owner.DestroyWindow();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), m_library);
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
            CRect rect;
            dialog.GetDlgItem(id)->GetWindowRect(&rect);
            HELPINFO info = {sizeof info, HELPINFO_WINDOW, id, GetDlgItem(dialog.m_hWnd, id), 0, {rect.left, rect.top}};
            if (menu)
                dialog.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog.m_hWnd),
                                   MAKELPARAM(rect.left + 4, rect.top + 4));
            else
                dialog.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
            std::vector<std::string> started;
            for (const std::string& record : trace.Records())
                if (record.find("hh.exe  ") != std::string::npos)
                    started.push_back(record);
            EXPECT_EQ(started.empty(), topic == 0);
            EXPECT_THAT(started, Each("(char)C:\\windows\\hh.exe  -mapid " + std::to_string(topic) + " help.chm"));
        }
}

TEST_F(OptionsDialog, LinkLeadsToTheSkinPage)
{
    TraceWorld trace;
    LaunchCalls calls;
    calls.shellResult = 33;
    Product();
    Options dialog(m_skins);
    dialog.Init(std::string(400, 'p').c_str());
    dialog.Press(IDC_JSW_SKIN_LINK); // on its picture
    EXPECT_THAT(trace.Records(), Contains("(char)http://skins.example/"));
    EXPECT_THAT(trace.Records(), Contains(HasSubstr(std::string(259, 'p') + ")"))) << "the visit is recorded";
}

TEST_F(OptionsDialog, PreviewIsMirroredWithTheDialogInItsOwnColours)
{
    m_skins.Add("dlgt1.dll");
    const RightToLeft layout;
    Options dialog(m_skins);
    EXPECT_EQ(dialog.Preview(), Halves(Blue, Red));
    EXPECT_FALSE(dialog.SendMessage(WM_QUERYNEWPALETTE)) << "a true-colour screen has no palette to change";

    const HMODULE framework = GetModuleHandleA("tvkframe.dll");
    const IatPatch drawing(LibraryUnderTest(), "SelectPalette", &RecordPalette);
    const IatPatch answering(framework, "SelectPalette", &RecordPalette);
    const IatPatch realizing(framework, "RealizePalette", &ScriptedRealize);
    const auto realized = [&dialog](UINT message, WPARAM wParam)
    {
        g_palettes.clear();
        dialog.ValidateRect(nullptr);
        const LRESULT result = dialog.SendMessage(message, wParam);
        EXPECT_THAT(g_palettes, Each(Halves(Red, Blue)));
        return std::make_tuple(g_palettes.empty(), result != 0, dialog.GetUpdateRect(nullptr) != FALSE);
    };
    const auto self = reinterpret_cast<WPARAM>(dialog.m_hWnd), other = reinterpret_cast<WPARAM>(GetDesktopWindow());
    const struct
    {
        UINT moved, message;
        WPARAM window;
        bool ignored, result, repainted;
    } cases[] = {{3, WM_QUERYNEWPALETTE, 0, false, true, true},
                 {0, WM_QUERYNEWPALETTE, 0, false, false, false},
                 {GDI_ERROR, WM_QUERYNEWPALETTE, 0, false, false, false},
                 {3, WM_PALETTECHANGED, other, false, false, true},
                 {3, WM_PALETTECHANGED, self, true, false, false}};
    for (const auto& test : cases)
    {
        SCOPED_TRACE(&test - cases);
        g_realized = test.moved;
        EXPECT_EQ(realized(test.message, test.window), std::make_tuple(test.ignored, test.result, test.repainted));
    }
    CClientDC context(&dialog);
    EXPECT_EQ(realized(WM_ERASEBKGND, reinterpret_cast<WPARAM>(context.m_hDC)), std::make_tuple(false, true, false));
}

TEST_F(OptionsDialog, LinkIsDrawnByTheDialog)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Options dialog(m_skins);
        const auto shown = ShownPixels(dialog, IDC_JSW_SKIN_LINK);
        EXPECT_GT(std::count(shown.begin(), shown.end(), RGB(255, 255, 255)), 200) << "white text";
        EXPECT_EQ(shown[0], m_face) << "round corners";
        dialog.SendDlgItemMessage(IDC_JSW_SKIN_LINK, WM_MOUSEMOVE, 0, MAKELPARAM(60, 12));
        EXPECT_EQ(ShownPixels(dialog, IDC_JSW_SKIN_LINK), shown) << "all states look alike";
        ReleaseCapture();
    }
}

TEST_F(OptionsDialog, IsLaidOutWell)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", mirrored ? 0ul : 1ul}});
        EXPECT_THAT(LayoutFaults(Options(m_skins)), IsEmpty());
    }
}

TEST_F(OptionsDialog, KeysWork)
{
    for (const char* name : {"dlgt1.dll", "dlgt2.dll", "dlgt3.dll"})
        m_skins.Add(name);
    Options dialog(m_skins);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    dialog.GetDlgItem(IDC_JSW_ALWAYS_SHOW)->SetFocus();
    EXPECT_THAT(TabOrder(dialog),
                ElementsAre(IDC_JSW_ALWAYS_SHOW, IDC_JSW_SOUND, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE,
                            IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_LINK, IDOK, IDCANCEL));
    Type(VK_DOWN);
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_SHOW_MINIMIZED);
    TypeMnemonic('n');
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_NEVER_SHOW);
    TypeMnemonic('c');
    EXPECT_TRUE(dialog.Checked(IDC_JSW_COLOR_CARTRIDGE));
    // A button that is disabled under the focus hands it on.
    dialog.GetDlgItem(IDC_JSW_SKIN_NEXT)->SetFocus();
    TypeMnemonic('x');
    EXPECT_EQ(dialog.Skin(), "dlgt3.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_PREVIOUS);
    TypeMnemonic('p');
    TypeMnemonic('p');
    EXPECT_EQ(dialog.Skin(), "dlgt1.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_NEXT);
}

TEST_F(OptionsDialog, LeavesNothingBehind)
{
    m_skins.Add("dlgt1.dll");
    m_skins.AddForeign("dlgt2.dll");
    m_skins.AddBroken("dlgt3.dll");
    m_skins.Add("dlgt4.dll");
    ExpectNothingLeftBehind(
        [this](int number)
        {
            Options dialog(m_skins);
            for (int i = 0; i < 4; ++i)
                dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
            dialog.RedrawWindow();
            dialog.SendMessage(WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
            dialog.InitModal(Printer, m_skins.Path("").c_str());
            RunModal(dialog, number % 2 ? VK_RETURN : VK_ESCAPE);
        });
}
