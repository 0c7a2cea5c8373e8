// The options dialog of the job status window: what it reads and writes, the skins, the ways of closing.
#include "dialogs/JSWOptionsDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "links/LaunchCalls.h"
#include "support/MessageBoxes.h"
#include "support/NothingLeft.h"
#include "support/RegistryWorld.h"
#include "support/TraceWorld.h"
#include <algorithm>
#include <array>
#include <fstream>

namespace
{
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
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
    using PlacedFiles::PlacedFiles;
    /// A library with this preview, or without any.
    void Add(const std::string& name, std::string preview = TwoHalves(40, 20, {Red, Blue}))
    {
        Copy(name, TestProduct::LibraryName());
        const HANDLE update = BeginUpdateResourceA(Path(name).c_str(), TRUE);
        UpdateResourceA(update, MAKEINTRESOURCEA(preview.empty() ? 10 : 2), MAKEINTRESOURCEA(IDB_JSW_SKIN_PREVIEW), 0,
                        preview.data(), static_cast<DWORD>(preview.size()));
        ASSERT_TRUE(EndUpdateResourceA(update, FALSE)) << name;
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
        EXPECT_TRUE(m_hWnd);
        SetForegroundWindow();
        Pump();
    }
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
        const CRect area = AreaOf(*this, IDC_JSW_SKIN_PREVIEW);
        const auto* middle = &pixels[static_cast<std::size_t>(area.Height() / 2 * area.Width() + area.Width() / 2)];
        return {middle[-10], middle[10]};
    }
};

std::vector<UINT> g_windows;    // what the next questions for the Windows directory are answered, then the truth
std::vector<Halves> g_palettes; // what the selected palettes hold of a preview's colours
UINT g_realized;                // how many colours a palette moves

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
    /// The text of the remembered skin; "none" without.
    static std::string StoredSkin() { return Stored("JSW", "JSW Skin").value_or("none").c_str(); }
    static void Forget() { RegDeleteTreeA(HKEY_CURRENT_USER, UserKey.c_str()); }

    const COLORREF m_face = GetSysColor(COLOR_3DFACE);
    const HINSTANCE m_host = GetModuleHandleA(nullptr);
    RegistryWorld m_registry;
    SkinFolder m_skins{TestFolder() + "skins\\"};
    SkinFolder m_added{"C:\\windows\\dlgt skins\\"};
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
        SCOPED_TRACE(testing::Message() << minimized << sound << skin);
        Product(settings);
        Options dialog(m_skins);
        EXPECT_EQ(dialog.ShowMode(), minimized ? IDC_JSW_SHOW_MINIMIZED : IDC_JSW_ALWAYS_SHOW);
        EXPECT_EQ(dialog.Checked(IDC_JSW_SOUND), sound != 0);
        dialog.Press(IDCANCEL);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(Stored("JSW", "Job Progress Minimized"), Number(minimized, 8)) << "eight bytes, on purpose";
        EXPECT_EQ(Stored("JSW", "Show Process Window"), Number(1));
        EXPECT_EQ(Stored("RZB", "Sound"), Number(sound));
        EXPECT_EQ(StoredSkin(), skin);
        EXPECT_EQ(Stored("JSW", "JSW Skin Change"), std::nullopt);
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
        SCOPED_TRACE(testing::PrintToString(minimized + show));
        Store("JSW", "Job Progress Minimized", minimized);
        Store("JSW", "Show Process Window", show);
        EXPECT_EQ(Options(m_skins).ShowMode(), mode);
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
        EXPECT_EQ(StoredSkin(), skin);
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
        EXPECT_EQ(dialog.m_bSkinChanged, 0);
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
    EXPECT_THAT(m_boxes.Shown(), IsEmpty());
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
    for (const auto& [index, path] : {std::pair{0, m_skins.Path("dlgt0.dll")},
                                      {99, m_skins.Path("dlgt99.dll")},
                                      {100, m_added.Path("dlgm0.dll")},
                                      {199, m_added.Path("dlgm99.dll")}})
        EXPECT_THAT(boxes[static_cast<std::size_t>(index)], StartsWith(path + "|Skin LoadLibrary Failed|"));
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
    const auto width = static_cast<std::size_t>(AreaOf(dialog, IDC_JSW_SKIN_PREVIEW).Width());
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
    // What is remembered; the answers (for the list, for the skin first shown if it is an added one, for the step); the
    // step; where the last answer is traced; how many skins there are.
    const std::tuple<std::string, std::vector<UINT>, int, std::string, std::size_t> cases[] = {
        {"dlgt1.dll", {0}, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", {300}, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", {261}, 0, "OnInitDialog1", 1},
        {"dlgt1.dll", {260}, 0, "", 3},
        {"dlgm1.dll", {Truth, 0}, 0, "OnInitDialog2", 3},
        {"dlgt1.dll", {Truth, 0}, IDC_JSW_SKIN_NEXT, "OnNext", 3},
        {"dlgm2.dll", {Truth, Truth, 0}, IDC_JSW_SKIN_PREVIOUS, "OnPrevious", 3}};
    const IatPatch patch(LibraryUnderTest(), "GetWindowsDirectoryA", &ScriptedWindowsDirectory);
    for (const auto& [remembered, answers, step, place, skins] : cases)
    {
        const std::string last = std::to_string(answers.back());
        SCOPED_TRACE(place + last);
        trace.Clear();
        Store("JSW", "JSW Skin", remembered, REG_SZ);
        g_windows = answers;
        Options dialog(m_skins);
        if (step)
            dialog.Press(step);
        EXPECT_THAT(g_windows, IsEmpty());
        EXPECT_EQ(dialog.Skins().size(), skins);
        EXPECT_EQ(dialog.Skin(), remembered) << "stays where it was";
        std::string found;
        const auto records = trace.Records();
        for (std::size_t i = 0; i + 1 < records.size(); ++i)
            if (records[i].find("GetWindowsDirectory") != std::string::npos)
                found += records[i] + records[i + 1];
        const std::string text = "(char)JSWOptionsDlg::" + place + ": GetWindowsDirectory failed.\n(DWORD)" + last;
        EXPECT_EQ(found, place.empty() ? "" : text);
    }
}

TEST_F(OptionsDialog, SettingsAndRetailerHideTheSkins)
{
    const std::tuple<SettingList, std::string, std::string> cases[] = {
        // directive; last digits of the controls shown
        {{}, "", "56789"},
        {{{"IDO_SKIN_URL_OVERRIDE", "1"}}, "", "5678"},
        {{{"IDO_HIDE_APPEARANCESTYLE_OPTION", 1ul}}, "", ""},
        {{{"IDO_ONECLICK_INK_ORDER", 1ul}}, "", ""},
        {{{"IDO_ONECLICK_INK_ORDER", 2ul}}, "", "56789"},
        {{}, "[Retailer]\r\nHideSkins=1\r\n", ""},
        {{}, "[Retailer]\r\nHideSkins=0\r\n", "56789"},
        {{}, "[Retailer]\r\nHideSkins=yes\r\n", "56789"}};
    for (const auto& [settings, retailer, expected] : cases)
    {
        SCOPED_TRACE(retailer + expected);
        Product(settings);
        PlacedFiles files;
        files.Write(std::string(Driver) + "dlgt.ini", retailer);
        const Options dialog(m_skins);
        std::string shown;
        for (int id = IDC_JSW_SKIN_LABEL; id <= IDC_JSW_SKIN_LINK; ++id)
            shown += dialog.Shows(id) ? std::to_string(id % 10) : "";
        EXPECT_EQ(shown, expected);
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
    EXPECT_EQ(window.top, 0);
    EXPECT_EQ(window.right, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(OptionsDialog, EveryWayOfClosingPutsTheResourceHandleBack)
{
    const std::pair<UINT, WPARAM> ways[] = {{WM_COMMAND, IDOK},      {WM_COMMAND, IDCANCEL},
                                            {WM_CLOSE, 0},           {WM_KEYDOWN, VK_ESCAPE},
                                            {WM_KEYDOWN, VK_RETURN}, {WM_SYSCOMMAND, SC_CLOSE}};
    for (const auto& [message, wParam] : ways)
    {
        SCOPED_TRACE(testing::Message() << message << " " << wParam);
        Options dialog(m_skins);
        AfxSetResourceHandle(m_host);
        dialog.PostMessage(message, wParam);
        Pump();
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(AfxGetResourceHandle(), m_library);
        dialog.InitModal(Printer, m_skins.Path("").c_str());
        EXPECT_EQ(RunModal(dialog, message, wParam), 1) << "hosts do not tell OK from Cancel";
        EXPECT_EQ(AfxGetResourceHandle(), m_library);
    }
    CWinApp application; // its main window owns what is opened without an owner
    for (const bool withOwner : {true, false})
    {
        CWnd owner;
        owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
        application.m_pMainWnd = &owner;
        Options dialog(m_skins);
        EXPECT_EQ(dialog.GetOwner(), &owner);
        application.m_pMainWnd = nullptr;
        AfxSetResourceHandle(m_host);
        if (withOwner)
            owner.DestroyWindow();
        EXPECT_EQ(dialog.m_hWnd == nullptr, withOwner);
        EXPECT_EQ(AfxGetResourceHandle(), withOwner ? m_library : m_host);
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
        for (const bool menu : {false, true})
        {
            SCOPED_TRACE(id);
            trace.Clear();
            const HWND control = GetDlgItem(dialog.m_hWnd, id);
            CRect rect;
            ::GetWindowRect(control, &rect);
            HELPINFO info = {sizeof info, HELPINFO_WINDOW, id, control, 0, {rect.left, rect.top}};
            if (menu)
                dialog.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog.m_hWnd),
                                   MAKELPARAM(rect.left + 4, rect.top + 4));
            else
                dialog.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
            const std::string command = "C:\\windows\\hh.exe  -mapid " + std::to_string(topic) + " help.chm\n";
            EXPECT_EQ(trace.Log().find(topic ? command : "hh.exe") != std::string::npos, topic != 0);
        }
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
    const auto self = reinterpret_cast<WPARAM>(dialog.m_hWnd), other = reinterpret_cast<WPARAM>(GetDesktopWindow());
    CClientDC context(&dialog);
    const auto surface = reinterpret_cast<WPARAM>(context.m_hDC);
    // The message; how many colours its palette moves; how often a palette is selected; the answer; what is repainted.
    const std::tuple<UINT, WPARAM, UINT, std::size_t, LRESULT, BOOL> cases[] = {
        {WM_QUERYNEWPALETTE, 0, 3, 1, TRUE, TRUE},           {WM_QUERYNEWPALETTE, 0, 0, 1, FALSE, FALSE},
        {WM_QUERYNEWPALETTE, 0, GDI_ERROR, 1, FALSE, FALSE}, {WM_PALETTECHANGED, other, 3, 1, FALSE, TRUE},
        {WM_PALETTECHANGED, self, 3, 0, FALSE, FALSE},       {WM_ERASEBKGND, surface, 0, 3, TRUE, FALSE}};
    for (const auto& [message, wParam, moved, selections, answer, repainted] : cases)
    {
        SCOPED_TRACE(testing::Message() << message << ", " << moved << " moved");
        g_realized = moved;
        g_palettes.clear();
        dialog.ValidateRect(nullptr);
        EXPECT_EQ(dialog.SendMessage(message, wParam), answer);
        EXPECT_EQ(dialog.GetUpdateRect(nullptr), repainted);
        EXPECT_EQ(g_palettes, std::vector(selections, Halves(Red, Blue)));
    }
}

TEST_F(OptionsDialog, IsLaidOutWellAndDrawsItsLink)
{
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Product({{"IDO_MORVAY_INKLOW_WARNING_OPTION", mirrored ? 0ul : 1ul}});
        Options dialog(m_skins);
        EXPECT_THAT(LayoutFaults(dialog), IsEmpty());
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
    EXPECT_THAT(TabOrder(dialog),
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
    m_skins.Add("dlgt4.dll");
    ExpectNothingLeftBehind(100,
                            [this](int number)
                            {
                                Options dialog(m_skins);
                                for (int i = 0; i < 4; ++i)
                                    dialog.SendMessage(WM_COMMAND, IDC_JSW_SKIN_NEXT);
                                dialog.RedrawWindow();
                                dialog.SendMessage(WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
                                dialog.InitModal(Printer, m_skins.Path("").c_str());
                                RunModal(dialog, WM_COMMAND, number % 2 ? IDOK : IDCANCEL);
                            });
}
