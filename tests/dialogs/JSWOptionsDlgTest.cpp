// The options dialog of the job status window: what it reads and writes, the skins, the ways of closing.
#include "dialogs/JSWOptionsDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "links/LaunchCalls.h"
#include "support/FakeVersion.h"
#include "support/MessageBoxes.h"
#include "support/NothingLeft.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <algorithm>

namespace
{
using testing::ElementsAre;
using testing::HasSubstr;
using Bytes = std::optional<std::string>;

constexpr char Printer[] = "Dialog Test Printer";
const std::string UserKey = std::string("Printers\\") + Printer;
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
    using PlacedFiles::PlacedFiles;
    /// A library with this preview, or without any.
    void Add(const std::string& name, const std::string& preview = TwoHalves(40, 20, {Red, Blue}))
    {
        Write(name, "");
        const LPCSTR type = MAKEINTRESOURCEA(preview.empty() ? 10 : 2);
        WriteLibrary(Path(name), {{type, MAKEINTRESOURCEA(IDB_JSW_SKIN_PREVIEW), preview}});
    }
    void AddBroken(const std::string& name) { Write(name, "no library"); }
    /// A skin for another processor: the system refuses it as a library, its resources can still be read.
    void AddForeign(const std::string& name)
    {
        Add(name);
        std::fstream file(Path(name), std::ios::binary | std::ios::in | std::ios::out);
        LONG header = 0;
        file.seekg(60).read(reinterpret_cast<char*>(&header), sizeof header);
        file.seekp(header + 4).write("\xC4\x01", 2);
    }
};

/// The dialog, modeless so that the test goes on.
class Options : public Driven<JSWOptionsDlg>
{
public:
    using JSWOptionsDlg::m_bSkinChanged;
    using JSWOptionsDlg::m_nCurrentSkin;
    using JSWOptionsDlg::m_nPrimarySkins;

    explicit Options(const SkinFolder& skins, CString* caption = nullptr, unsigned long options = 0,
                     CRect* place = nullptr)
    {
        Init(Printer, skins.Path("").c_str(), caption, options, place);
        SetForegroundWindow();
        Pump();
    }
    /// Not set up, and not open yet.
    Options() { m_strPrinterName = Printer; }
    std::vector<std::string> Skins() const { return {m_astrSkins, m_astrSkins + m_nLastSkin + 1}; }
    std::string Skin() const { return std::string(m_strSkin); }
    int ShowMode() const { return GetCheckedRadioButton(IDC_JSW_ALWAYS_SHOW, IDC_JSW_NEVER_SHOW); }
    /// Which of Previous and Next can be pressed.
    std::string Ways() const
    {
        return std::string(Enables(IDC_JSW_SKIN_PREVIOUS) ? "<" : "") + (Enables(IDC_JSW_SKIN_NEXT) ? ">" : "");
    }
    /// The colours in the middle of the preview's place, as the window shows them.
    Halves Preview() const
    {
        const auto pixels = ShownPixels(*this, IDC_JSW_SKIN_PREVIEW);
        const CRect area = AreaOf(::GetDlgItem(m_hWnd, IDC_JSW_SKIN_PREVIEW));
        const auto* middle = &pixels[static_cast<std::size_t>(area.Height() / 2 * area.Width() + area.Width() / 2)];
        return {middle[-10], middle[10]};
    }
};

std::string g_written; // the registry values written: name, type, size, number or text

LSTATUS WINAPI RecordWrite(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    g_written += name + (" " + std::to_string(type)) + " " + std::to_string(size) + " " +
                 (type == REG_DWORD ? std::to_string(*reinterpret_cast<const DWORD*>(data)) : text) + "; ";
    return RegSetValueExA(key, name, reserved, type, data, size);
}

const SettingList Settings = {
    {"IDO_JSWDEFAULTSKINNAMECONVENTION", "dlgt"},       {"IDO_DEFAULT_SOUND", 1ul},
    {"IDO_JSWALTERNATESKINNAMECONVENTION", "dlgm"},     {"IDO_JSWDEFAULTSKIN", "dlgt1.dll"},
    {"IDO_JSWALTSKINDIRECTORY", "\\dlgt skins\\"},      {"IDO_JSWSKINEXTENSION", ".dll"},
    {"IDO_SKIN_URL_OVERRIDE", "http://skins.example/"}, {"IDO_SKIN_SUBURL", "skins"},
    {"IDO_KEY_NAME_COMPLETETOPRINT_FLAG", "First"},     {"IDO_PSW_HELPFILE", "help.chm"},
    {"IDO_KEY_NAME_COMPTOPRINT_PPRZB_FLAG", "Second"},  {"IDO_SUPPORT_COMPLETE_A_PRINT", 1ul},
    {"IDO_RETAILERSPECIFIC_INIFILE_NAME", "dlgt.ini"},  {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
    {"IDO_RETAILER_SPECIFIC_SECTION_NAME", "Retailer"}, {"IDO_SKIN_DIRECTIVE_KEY_NAME", "HideSkins"}};

class OptionsDialog : public DialogTest
{
protected:
    OptionsDialog() : DialogTest(PRODUCT_PREFIX "jres.dll", Settings) { m_registry.Claim(HKEY_CURRENT_USER, UserKey); }

    static std::string Key(const char* key) { return UserKey + "\\GUI\\" + key; }
    void Store(const char* key, const char* name, const std::string& bytes, DWORD type = REG_DWORD)
    {
        m_registry.Set(HKEY_CURRENT_USER, Key(key), name, type, bytes);
    }
    static Bytes Stored(const char* key, const char* name)
    {
        return RegistryWorld::Get(HKEY_CURRENT_USER, Key(key), name);
    }
    static void Forget() { RegDeleteTreeA(HKEY_CURRENT_USER, UserKey.c_str()); }

    const COLORREF m_face = GetSysColor(COLOR_3DFACE);
    const HINSTANCE m_host = GetModuleHandleA(nullptr);
    RegistryWorld m_registry;
    SkinFolder m_skins{TestFolder() + "skins\\"};
    SkinFolder m_added{"C:\\windows\\dlgt skins\\"};
    IatPatch m_writes{LibraryUnderTest(), "RegSetValueExA", &RecordWrite};
    MessageBoxes m_boxes{GetModuleHandleA("tvkframe.dll")};
};
} // namespace

TEST_F(OptionsDialog, DefaultsAreWrittenBack)
{
    const std::tuple<SettingList, DWORD, DWORD, std::string> cases[] = {
        {{}, 0, 1, "dlgt1.dll"},
        {{{"IDO_DEFAULT_JSW_MINIMIZED", 1ul}, {"IDO_DEFAULT_SOUND", 0ul}}, 1, 0, "dlgt1.dll"},
        {{{"IDO_DEFAULT_JSW_MINIMIZED", 2ul}, {"IDO_DEFAULT_SOUND", 2ul}}, 1, 0, "dlgt1.dll"},
        {{{"IDO_HIDE_SOUND_OPTION", 1ul}, {"IDO_JSWDEFAULTSKIN", ""}}, 0, 0, ""}};
    for (const auto& [settings, minimized, sound, skin] : cases)
    {
        Product(settings);
        g_written.clear();
        Options dialog(m_skins);
        EXPECT_EQ(g_written, "Job Progress Minimized 4 8 " + std::to_string(minimized) + // eight bytes, on purpose
                                 "; Show Process Window 4 4 1; Sound 4 4 " + std::to_string(sound) + "; JSW Skin 1 " +
                                 std::to_string(skin.size()) + " " + skin + "; "); // without a NUL
        EXPECT_EQ(dialog.ShowMode(), minimized ? IDC_JSW_SHOW_MINIMIZED : IDC_JSW_ALWAYS_SHOW);
        EXPECT_EQ(dialog.Checked(IDC_JSW_SOUND), sound != 0);
        g_written.clear();
        dialog.Press(IDCANCEL);
        EXPECT_EQ(g_written, "");
        EXPECT_FALSE(RegistryWorld::Exists(HKEY_CURRENT_USER, Key("PSW")));
        Forget();
    }
}

TEST_F(OptionsDialog, StoredValuesAreShownAndBadOnesReplaced)
{
    constexpr int Always = IDC_JSW_ALWAYS_SHOW, Minimized = IDC_JSW_SHOW_MINIMIZED, Never = IDC_JSW_NEVER_SHOW;
    Product({{"IDO_DEFAULT_JSW_MINIMIZED", 1ul}});
    const std::tuple<std::string, std::string, int, bool> modes[] = {
        // with the one replaced that is no number
        {Number(0), Number(1), Always, false},      {Number(0), Number(7), Always, false},
        {Number(2), Number(0), Never, false},       {Number(1), Number(0), Minimized, false},
        {Number(0, 8), Number(0), Never, false},    {Number(1, 8), Number(1), Minimized, false},
        {Number(0, 3), Number(0), Minimized, true}, {Number(0, 9), Number(0), Minimized, true},
        {Number(0), Number(0, 8), Always, true},    {Number(0), "", Always, true}};
    for (const auto& [minimized, show, mode, replaced] : modes)
    {
        Store("JSW", "Job Progress Minimized", minimized);
        Store("JSW", "Show Process Window", show);
        EXPECT_EQ(Options(m_skins).ShowMode(), mode) << testing::PrintToString(minimized + show);
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), replaced && mode == Minimized ? Number(1, 8) : minimized);
        EXPECT_EQ(Stored("JSW", "Show Process Window"), replaced && mode == Always ? Number(1) : show);
    }
    Store("RZB", "Sound", Number(5));
    EXPECT_TRUE(Options(m_skins).Checked(IDC_JSW_SOUND));
    Store("RZB", "Sound", std::string("on\0", 3), REG_SZ);
    EXPECT_TRUE(Options(m_skins).Checked(IDC_JSW_SOUND)) << "the default";
    EXPECT_EQ(Stored("RZB", "Sound"), Number(1));

    const std::tuple<std::string, DWORD, std::string> skins[] = {
        {std::string(49, 's'), REG_SZ, std::string(49, 's')}, // the system adds a NUL
        {std::string("my.dll\0rest", 11), REG_BINARY, "my.dll"},
        {std::string(50, 's'), REG_SZ, "dlgt1.dll"},
        {std::string(50, 'b'), REG_BINARY, std::string(50, 'b')},
        {Number(5), REG_DWORD, "dlgt1.dll"}};
    for (const auto& [bytes, type, skin] : skins)
    {
        Store("JSW", "JSW Skin", bytes, type);
        EXPECT_EQ(Options(m_skins).Skin(), skin);
        EXPECT_STREQ(Stored("JSW", "JSW Skin").value_or("none").c_str(), skin.c_str());
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
    EXPECT_FALSE(dialog.Enables(IDC_JSW_COLOR_CARTRIDGE)) << "a choice that could not be kept";
    dialog.Press(IDOK);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST_F(OptionsDialog, OkSavesTheChoices)
{
    m_skins.Add("dlgt1.dll");
    m_skins.Add("dlgt2.dll");
    bool sound = true;
    for (const int mode : {IDC_JSW_ALWAYS_SHOW, IDC_JSW_SHOW_MINIMIZED, IDC_JSW_NEVER_SHOW})
    {
        Options dialog(m_skins);
        dialog.Press(mode);
        dialog.Press(IDC_JSW_SOUND);
        g_written.clear();
        dialog.Press(IDOK);
        sound = !sound;
        const char* const modes[] = {"1; Job Progress Minimized 4 4 0; ", "1; Job Progress Minimized 4 4 1; ",
                                     "0; Job Progress Minimized 4 4 0; "};
        EXPECT_EQ(g_written, std::string("Show Process Window 4 4 ") + modes[mode - IDC_JSW_ALWAYS_SHOW] +
                                 (sound ? "Sound 4 4 1; " : "Sound 4 4 0; ") + "First 4 4 0; Second 4 4 0; ");
        const Options again(m_skins);
        EXPECT_EQ(again.ShowMode(), mode);
        EXPECT_EQ(again.Checked(IDC_JSW_SOUND), sound);
    }
    Options dialog(m_skins);
    g_written.clear();
    dialog.Press(IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(g_written, "") << "not before it is accepted";
    dialog.Press(IDOK);
    EXPECT_THAT(g_written, HasSubstr("Sound 4 4 0; JSW Skin 1 9 dlgt2.dll; JSW Skin Change 4 4 1; First"));
    EXPECT_EQ(Options(m_skins).m_nCurrentSkin, 1);
}

TEST_F(OptionsDialog, CartridgeChoiceComesBackAsItWasStored)
{
    const std::string none = Number(0), black = Number(1), color = Number(2), asked = Number(1), odd = Number(3),
                      wide = Number(1, 8);
    const Bytes missing;
    // The flags; the boxes they check (color, black; "-" for disabled ones); those pressed before OK; the flags then.
    const std::tuple<Bytes, Bytes, std::string, std::string, Bytes, Bytes> cases[] = {
        {missing, missing, "", "", none, none}, {none, none, "", "b", black, asked},
        {none, none, "", "cb", color, asked},   {black, asked, "b", "", black, asked},
        {black, asked, "b", "b", none, none},   {black, asked, "b", "c", color, asked},
        {color, asked, "c", "", color, asked},  {color, asked, "c", "cb", black, asked},
        {black, none, "", "", none, none},      {color, none, "", "", none, none},
        {none, asked, "", "c", color, asked},   {black, missing, "b", "", black, asked},
        {odd, asked, "-", "", odd, asked},      {black, color, "-", "", black, color},
        {wide, asked, "-", "", wide, asked},    {"", none, "-", "", "", none}};
    for (const auto& [first, second, shown, pressed, firstAfter, secondAfter] : cases)
    {
        SCOPED_TRACE(testing::PrintToString(first) + testing::PrintToString(second) + pressed);
        Forget();
        if (first)
            Store("PSW", "First", *first);
        if (second)
            Store("PSW", "Second", *second);
        Options dialog(m_skins);
        std::string boxes;
        for (const auto& [id, letter] : {std::pair{IDC_JSW_COLOR_CARTRIDGE, 'c'}, {IDC_JSW_BLACK_CARTRIDGE, 'b'}})
        {
            EXPECT_EQ(dialog.Enables(id), shown != "-");
            if (dialog.Checked(id))
                boxes += letter;
            if (pressed.find(letter) != std::string::npos)
                dialog.Press(id);
        }
        EXPECT_EQ(boxes, shown == "-" ? "" : shown);
        dialog.Press(IDOK);
        EXPECT_EQ(Stored("PSW", "First"), firstAfter);
        EXPECT_EQ(Stored("PSW", "Second"), secondAfter);
    }
    Product({{"IDO_SUPPORT_COMPLETE_A_PRINT", 0ul}});
    Store("PSW", "First", Number(9));
    Options dialog(m_skins);
    for (const int id : {IDC_JSW_CARTRIDGE_LABEL, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE})
        EXPECT_FALSE(dialog.Shows(id));
    dialog.Press(IDOK);
    EXPECT_EQ(Stored("PSW", "First"), Number(9));
}

TEST_F(OptionsDialog, SkinsAreFoundInOrderAndBrowsed)
{
    {
        Options dialog(m_skins);
        for (const WPARAM id : {IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT})
            dialog.SendMessage(WM_COMMAND, id);
        EXPECT_EQ(dialog.Ways(), "") << "no skin at all";
        EXPECT_EQ(dialog.Preview(), Halves(m_face, m_face));
    }
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
    std::string way;
    for (const int id : {IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT,
                         IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_PREVIOUS})
    {
        AfxSetResourceHandle(m_host);
        dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(id)); // also past a disabled button
        way += dialog.Skin() + dialog.Ways() + (AfxGetResourceHandle() == m_library ? " " : "! ");
    }
    EXPECT_EQ(way, "dlgt1.dll> dlgt1.dll>! dlgt10.dll<> dlgt99.dll<> dlgm0.dll<> dlgm7.dll< dlgm7.dll<! dlgm0.dll<> ")
        << "every step, but none that stays, puts back the resource handle";
    EXPECT_THAT(m_boxes.Shown(), testing::IsEmpty());
    RemoveDirectoryA(m_skins.Path("dlgt3.dll").c_str());
}

TEST_F(OptionsDialog, TwoHundredSkinsAreAll)
{
    for (int n = 0; n <= 100; ++n)
    {
        m_skins.AddBroken("dlgt" + std::to_string(n) + ".dll");
        m_added.AddBroken("dlgm" + std::to_string(n) + ".dll");
    }
    Store("JSW", "JSW Skin", "dlgm5.dll", REG_SZ);
    Options dialog(m_skins);
    EXPECT_EQ(dialog.m_nCurrentSkin, 0) << "only the first hundred are looked at";
    EXPECT_EQ(dialog.Skin(), "dlgm5.dll");
    for (int step = 0; step < 210; ++step)
        dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
    EXPECT_EQ(dialog.Ways(), "<");
    const std::vector<std::string> boxes = m_boxes.Shown();
    ASSERT_EQ(boxes.size(), 200u);
    EXPECT_THAT(boxes[99], testing::StartsWith(m_skins.Path("dlgt99.dll|Skin LoadLibrary Failed|")));
    EXPECT_THAT(boxes[199], testing::StartsWith(m_added.Path("dlgm99.dll|Skin LoadLibrary Failed|")));
}

TEST_F(OptionsDialog, SkinsMayGoBadWhileTheDialogIsOpen)
{
    m_skins.Add("dlgt1.dll");
    m_skins.AddBroken("dlgt2.dll");
    m_skins.Write("dlgt3.dll", "");
    m_skins.AddForeign("dlgt4.dll");
    m_skins.Add("dlgt5.dll", "");
    m_skins.Add("dlgt6.dll");
    m_skins.Add("dlgt7.dll", TwoHalves(900, 300, {Blue, Red}));
    Options dialog(m_skins);
    m_skins.Delete("dlgt1.dll"); // nothing holds the skin that is shown
    const std::tuple<std::string, std::string, Halves, bool, std::size_t> steps[] = {
        {"dlgt1.dll", ">", {Red, Blue}, false, 0},
        {"dlgt1.dll", "<>", {Red, Blue}, false, 1}, // no library
        {"dlgt1.dll", "<>", {Red, Blue}, false, 1}, // empty
        {"dlgt4.dll", "<>", {Red, Blue}, true, 0},  // read as a file
        {"dlgt5.dll", "<>", {m_face, m_face}, true, 0},
        {"dlgt5.dll", "<>", {m_face, m_face}, true, 0}, // the next one deleted, and back again
        {"dlgt6.dll", "<>", {Red, Blue}, true, 0},
        {"dlgt7.dll", "<", {Blue, Red}, true, 0}}; // made smaller
    int number = 0;
    for (const auto& [skin, ways, preview, changed, boxes] : steps)
    {
        SCOPED_TRACE(++number);
        if (number == 6)
            m_skins.Delete("dlgt6.dll");
        if (number > 1)
            dialog.Press(IDC_JSW_SKIN_NEXT);
        if (number == 6)
            m_skins.Add("dlgt6.dll");
        EXPECT_EQ(dialog.Skin(), skin);
        EXPECT_EQ(dialog.Ways(), ways);
        EXPECT_EQ(dialog.Preview(), preview);
        EXPECT_EQ(dialog.m_bSkinChanged, changed);
        EXPECT_EQ(m_boxes.Shown().size(), boxes);
    }
    const auto width = static_cast<std::size_t>(AreaOf(GetDlgItem(dialog.m_hWnd, IDC_JSW_SKIN_PREVIEW)).Width());
    EXPECT_EQ(ShownPixels(dialog, IDC_JSW_SKIN_PREVIEW)[8 * width + width / 2], m_face)
        << "above what was made smaller";
}

TEST_F(OptionsDialog, UnknownWindowsDirectoryIsTraced)
{
    m_skins.Add("dlgt1.dll");
    m_added.Add("dlgm1.dll");
    m_added.Add("dlgm2.dll");
    TraceWorld trace;
    Product();
    // What is remembered; which question for the directory is refused (for the list, for the skin first shown if it is
    // an added one, for the step), and the answer; the step; where that is traced; how many skins there are.
    const std::tuple<std::string, int, UINT, int, std::string, std::size_t> cases[] = {
        {"dlgt1.dll", 1, 0, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", 1, 300, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", 1, 261, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", 1, 260, 0, "", 1}, // the answer counts, an empty path
        {"dlgm1.dll", 2, 0, 0, "OnInitDialog2", 3},
        {"dlgt1.dll", 2, 0, IDC_JSW_SKIN_NEXT, "OnNext", 3},
        {"dlgm2.dll", 3, 0, IDC_JSW_SKIN_PREVIOUS, "OnPrevious", 3}};
    for (const auto& [remembered, question, answer, step, place, skins] : cases)
    {
        trace.Clear();
        Store("JSW", "JSW Skin", remembered, REG_SZ);
        const Watch<decltype(&GetWindowsDirectoryA)> watch("GetWindowsDirectoryA", question, LibraryUnderTest(),
                                                           answer);
        Options dialog(m_skins);
        dialog.Press(step);
        EXPECT_EQ(dialog.Skins().size(), skins) << place << answer;
        EXPECT_EQ(dialog.Skin(), remembered) << "stays where it was";
        const std::string steps = trace.Steps(), found = steps.substr(std::min(steps.find("(char)JSW"), steps.size())),
                          text = "(char)JSWOptionsDlg::" + place + ": GetWindowsDirectory failed.\n\n(DWORD)";
        EXPECT_EQ(found, place.empty() ? "" : text + std::to_string(answer) + "\n");
    }
}

TEST_F(OptionsDialog, SettingsAndRetailerHideTheSkins)
{
    const std::string system = "C:\\windows\\system32\\", drivers = system + "spool\\drivers\\x64\\",
                      driver = drivers + "3\\", older = drivers + "2\\";
    const PlacedFiles folder(older);
    const std::tuple<SettingList, int, std::string, std::string, std::string> cases[] = {
        // the Windows version; where the retailer's file lies; its directive; last digits of the controls shown
        {{}, 9, driver, "", "56789"},
        {{{"IDO_SKIN_URL_OVERRIDE", "1"}}, 9, driver, "", "5678"},
        {{{"IDO_HIDE_APPEARANCESTYLE_OPTION", 1ul}}, 9, driver, "", ""},
        {{{"IDO_ONECLICK_INK_ORDER", 1ul}}, 9, driver, "", ""},
        {{{"IDO_ONECLICK_INK_ORDER", 2ul}}, 9, driver, "", "56789"},
        {{}, 9, driver, "1", ""},
        {{}, 9, driver, "yes", "56789"},
        {{}, 7, older, "1", ""},
        {{}, 5, system, "1", ""},
        {{}, 0, "C:\\windows\\", "1", "56789"}}; // the system directory is not known
    for (const auto& [settings, version, place, directive, expected] : cases)
    {
        Product(settings);
        PlacedFiles files;
        for (const std::string& path : {place, std::string()}) // a bare name would be looked for here first
            files.Write(path + "dlgt.ini", "[Retailer]\r\nHideSkins=" + directive + "\r\n");
        const FakeVersion windows(version ? version : 9);
        std::optional<IatPatch> directory;
        if (!version)
            directory.emplace(
                LibraryUnderTest(), "GetSystemDirectoryA", +[](LPSTR, UINT) { return 0u; });
        const Options dialog(m_skins);
        std::string shown;
        for (int id = IDC_JSW_SKIN_LABEL; id <= IDC_JSW_SKIN_LINK; ++id)
            shown += dialog.Shows(id) ? std::to_string(id % 10) : "";
        EXPECT_EQ(shown, expected) << place << directive;
    }
}

TEST_F(OptionsDialog, TextsAndPlaceFollowTheHost)
{
    CRect window, place(40, 60, 41, 61), outside(5000, -300, 5001, -299);
    for (const bool own : {false, true})
    {
        Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", own ? 1ul : 0ul}});
        CString caption(own ? "Window options" : ""), shown;
        const Options dialog(m_skins, &caption, own ? JSWOptionsDlg::StayOnTop : 0ul, own ? &place : nullptr);
        dialog.GetWindowText(shown);
        EXPECT_EQ(shown, own ? "Window options" : Printer);
        EXPECT_EQ(dialog.Text(IDC_JSW_WARNING),
                  own ? "Warnings, such as ink running low, are always shown." : "Warnings are always shown.");
        EXPECT_EQ(dialog.Text(IDC_JSW_SKIN_LINK), "More skins online");
        EXPECT_EQ((dialog.GetExStyle() & WS_EX_TOPMOST) != 0, own);
        dialog.GetWindowRect(&window);
        EXPECT_EQ(window.TopLeft() == CPoint(40, 60), own);
    }
    const Options other(m_skins, nullptr, 0, &outside);
    other.GetWindowRect(&window);
    EXPECT_EQ(CPoint(window.right, window.top), CPoint(GetSystemMetrics(SM_CXSCREEN), 0));
}

TEST_F(OptionsDialog, EveryWayOfClosingPutsTheResourceHandleBack)
{
    const std::pair<UINT, WPARAM> ways[] = {{WM_COMMAND, IDOK},      {WM_COMMAND, IDCANCEL},
                                            {WM_CLOSE, 0},           {WM_KEYDOWN, VK_ESCAPE},
                                            {WM_KEYDOWN, VK_RETURN}, {WM_SYSCOMMAND, SC_CLOSE}};
    PlacedFiles files;
    files.Copy(TestFolder() + "dlgt-jres.dll", "dialogs\\" PRODUCT_PREFIX "jres.dll");
    const HMODULE copy = LoadLibraryA("dlgt-jres.dll");
    for (const auto& [message, wParam] : ways)
    {
        SCOPED_TRACE(testing::Message() << message << " " << wParam);
        Options dialog(m_skins), other(m_skins);
        AfxSetResourceHandle(copy);
        dialog.PostMessage(message, wParam);
        Pump();
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(AfxGetResourceHandle(), m_library);
        AfxSetResourceHandle(copy);
        other.InitModal(Printer, m_skins.Path("").c_str());
        EXPECT_EQ(other.m_hWnd, nullptr) << "the modeless one is closed";
        EXPECT_EQ(RunModal(other, message, wParam), 1) << "hosts do not tell OK from Cancel";
        EXPECT_EQ(AfxGetResourceHandle(), copy);
        AfxSetResourceHandle(m_library);
    }
    CWinApp application; // its main window owns what is opened without an owner
    CWnd owner;
    owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
    application.m_pMainWnd = &owner;
    {
        const Options dialog(m_skins);
        EXPECT_EQ(dialog.GetOwner(), &owner);
        AfxSetResourceHandle(m_host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), m_library) << "the object destroyed";
    Options modal, bare; // a bare one is not set up
    modal.InitModal(Printer, "");
    const auto destroyOwner = [&]
    {
        application.m_pMainWnd = nullptr; // or the program would end
        AfxSetResourceHandle(m_host);
        owner.DestroyWindow();
    };
    EXPECT_EQ(RunModal(modal, destroyOwner), -1);
    EXPECT_EQ(AfxGetResourceHandle(), m_library);
    EXPECT_EQ(RunModal(bare, WM_COMMAND, IDCANCEL), -1);
    EXPECT_EQ(AfxGetResourceHandle(), m_library);

    // Out of order: each puts back what it has saved.
    Options first(m_skins);
    AfxSetResourceHandle(copy);
    Options second(m_skins);
    first.Press(IDOK);
    EXPECT_EQ(AfxGetResourceHandle(), m_library);
    second.Press(IDCANCEL);
    EXPECT_EQ(AfxGetResourceHandle(), copy);
    AfxSetResourceHandle(m_host);
    second.InitModal(Printer, "");
    EXPECT_EQ(second.DoModal(), -1) << "no template";
    AfxSetResourceHandle(m_library);
    FreeLibrary(copy);
}

TEST_F(OptionsDialog, ControlsLeadToHelpAndToTheSkinPage)
{
    TraceWorld trace;
    LaunchCalls calls;
    calls.pretend = true;
    calls.shellResult = 33;
    Product();
    Options dialog(m_skins);
    const std::pair<int, int> topics[] = {{8030, 302}, {8031, 303}, {8032, 301}, {8034, 304},
                                          {8026, 305}, {8027, 305}, {8028, 305}, {IDOK, 0}};
    for (const auto& [id, topic] : topics)
    {
        const HWND control = GetDlgItem(dialog.m_hWnd, id);
        CRect rect;
        ::GetWindowRect(control, &rect);
        HELPINFO info = {sizeof info, HELPINFO_WINDOW, id, control, 0, {rect.left, rect.top}};
        const std::string number = std::to_string(topic);
        const std::tuple<UINT, HWND, LPARAM> ways[] = {
            {WM_HELP, nullptr, reinterpret_cast<LPARAM>(&info)},
            {WM_CONTEXTMENU, control, -1}, // asked for with a key
            {WM_CONTEXTMENU, dialog.m_hWnd, MAKELPARAM(rect.left + 4, rect.top + 4)}};
        for (const auto& [message, sender, place] : ways)
        {
            SCOPED_TRACE(testing::Message() << id << " " << message << " " << place);
            trace.Clear();
            dialog.SendMessage(message, reinterpret_cast<WPARAM>(sender), place);
            const std::string log = trace.Log();
            EXPECT_EQ(log.find("\\hh.exe  -mapid " + number + " help.chm\n") != std::string::npos, topic != 0);
            EXPECT_EQ(log.find("1, 1, Dialog Test Printer, " + number + ")\n") != std::string::npos, topic != 0);
        }
    }
    dialog.Init(std::string(400, 'p').c_str());
    dialog.Press(IDC_JSW_SKIN_LINK); // on its picture
    EXPECT_THAT(trace.Records(), testing::Contains("(char)http://skins.example/"));
    EXPECT_THAT(trace.Records(), testing::Contains(HasSubstr(std::string(259, 'p') + ")"))) << "the visit is recorded";
}

TEST_F(OptionsDialog, PreviewIsMirroredWithTheDialogInItsOwnColours)
{
    m_skins.Add("dlgt1.dll");
    const RightToLeft layout;
    Options dialog(m_skins);
    EXPECT_EQ(dialog.Preview(), Halves(Blue, Red));
    ExpectPaletteUsed(dialog, {Red, Blue});
}

TEST_F(OptionsDialog, IsLaidOutWellAndDrawsItsLink)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", mirrored ? 0ul : 1ul}});
        Options dialog(m_skins);
        EXPECT_THAT(LayoutFaults(dialog), testing::IsEmpty());
        const auto shown = ShownPixels(dialog, IDC_JSW_SKIN_LINK);
        EXPECT_GT(std::count(shown.begin(), shown.end(), RGB(255, 255, 255)), 200) << "white text";
        EXPECT_EQ(shown[0], m_face) << "round corners";
        dialog.SendDlgItemMessage(IDC_JSW_SKIN_LINK, WM_MOUSEMOVE, 0, MAKELPARAM(60, 12));
        EXPECT_EQ(ShownPixels(dialog, IDC_JSW_SKIN_LINK), shown) << "all states look alike";
        ReleaseCapture();
    }
}

TEST_F(OptionsDialog, KeysWork)
{
    for (const char* name : {"dlgt1.dll", "dlgt2.dll", "dlgt3.dll"})
        m_skins.Add(name);
    Options dialog(m_skins);
    dialog.Press(IDC_JSW_SKIN_NEXT);
    dialog.GetDlgItem(IDC_JSW_ALWAYS_SHOW)->SetFocus();
    EXPECT_THAT(TabOrder(),
                ElementsAre(IDC_JSW_ALWAYS_SHOW, IDC_JSW_SOUND, IDC_JSW_COLOR_CARTRIDGE, IDC_JSW_BLACK_CARTRIDGE,
                            IDC_JSW_SKIN_PREVIOUS, IDC_JSW_SKIN_NEXT, IDC_JSW_SKIN_LINK, IDOK, IDCANCEL));
    Type(VK_DOWN);
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_SHOW_MINIMIZED);
    Type('n', WM_SYSCHAR);
    EXPECT_EQ(dialog.ShowMode(), IDC_JSW_NEVER_SHOW);
    Type('c', WM_SYSCHAR);
    EXPECT_TRUE(dialog.Checked(IDC_JSW_COLOR_CARTRIDGE));
    // A button that is disabled under the focus hands it on.
    dialog.GetDlgItem(IDC_JSW_SKIN_NEXT)->SetFocus();
    Type('x', WM_SYSCHAR);
    EXPECT_EQ(dialog.Skin(), "dlgt3.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_PREVIOUS);
    Type('p', WM_SYSCHAR);
    Type('p', WM_SYSCHAR);
    EXPECT_EQ(dialog.Skin(), "dlgt1.dll");
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_JSW_SKIN_NEXT);
}

TEST_F(OptionsDialog, LeavesNothingBehind)
{
    m_skins.Add("dlgt1.dll");
    m_skins.AddForeign("dlgt2.dll");
    m_skins.AddBroken("dlgt3.dll");
    ExpectNothingLeftBehind(100,
                            [this](int number)
                            {
                                Options dialog(m_skins);
                                for (int i = 0; i < 3; ++i)
                                    dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
                                dialog.RedrawWindow();
                                dialog.SendMessage(WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
                                dialog.InitModal(Printer, m_skins.Path("").c_str());
                                RunModal(dialog, WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
                            });
}
