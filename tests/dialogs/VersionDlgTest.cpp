// The version dialog: what it reads, what it shows, what its buttons do.
#include "dialogs/VersionDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "links/LaunchCalls.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/RecordingProgram.h"
#include "support/TraceWorld.h"
#include <algorithm>

namespace
{
using testing::StartsWith;

const std::string System = "C:\\windows\\system32\\";
const std::string Driver = System + "spool\\drivers\\x64\\3\\";
const std::string OlderDriver = System + "spool\\drivers\\x64\\2\\";
const std::string Processors = System + "spool\\prtprocs\\x64\\";
constexpr char VersionFile[] = "[Driver]\r\nVersion=9.8.7\r\n";
constexpr int Windows98 = 5, WindowsNT4 = 7; // CRegistry::OSVersion

/// The dialog, modeless so that the test goes on.
class Version : public Driven<VersionDlg>
{
public:
    using VersionDlg::GetFileVersion;
    Version()
    {
        EXPECT_TRUE(Create(IDD_VERSION));
        ShowWindow(SW_SHOW);
        SetForegroundWindow();
        Pump();
    }
    std::vector<std::string> Rows() const { return {m_astrRowVersion, m_astrRowVersion + DetailRows}; }
};

const SettingList Settings = {{"IDO_PRODVER", "dlgt-ver.ini"},        {"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", 1ul},
                              {"IDO_PRODVERKEYNAME", "Version"},      {"IDO_PRODVERSECTION", "Driver"},
                              {"IDO_DEFAULTSTRING", "Default"},       {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                              {"IDO_UTILITIES_DLL", "dlgt-util.exe"}, {"IDO_UTIL_DLL", PRODUCT_PREFIX "util.dll"},
                              {"IDO_FILEPD_9X", "dlgt-pd.drv"},       {"IDO_PRTPROCSPATH", "\\spool\\prtprocs\\x64\\"},
                              {"IDO_FILEPP_9X", "dlgt-pp9x.dll"},     {"IDO_FILEPP_NT", "dlgt-pp.dll"},
                              {"IDO_FILEPSWX", "dlgt-psw.exe"},       {"IDO_CORE_NT", "dlgt-core.dll"},
                              {"IDO_FILELCS", "dlgt-lcs.exe"},        {"IDO_CORE_9X", "dlgt-co9x.dll"},
                              {"IDO_LEGALNOTICEFILE", "legal.txt"},   {"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 1ul},
                              {"IDO_WEBUPDATE_EXE", "dlgt-web.exe"},  {"IDO_SUPPORT_WEBUPDATE", 1ul}};

class VersionDialog : public DialogTest
{
protected:
    VersionDialog() : DialogTest(PRODUCT_PREFIX "vres.dll", Settings) {}
    void Place(const std::string& path, const std::string& component)
    {
        m_files.Copy(path, "dialogs\\" PRODUCT_PREFIX + component);
    }
    /// One file for each row, of another version each, and the version file.
    void PlaceComponents(const std::string& driver = Driver)
    {
        Place(Processors + "dlgt-pp.dll", "pp.dll");
        Place(driver + "dlgt-psw.exe", "pswx.exe");
        Place(System + "dlgt-lcs.exe", "lcs.exe");
        Place(driver + "dlgt-core.dll", "core.dll");
        Place(driver + "dlgt-util.exe", "webu.exe");
        m_files.Write(driver + "dlgt-ver.ini", VersionFile);
    }

    const PlacedFiles m_olderDriver{OlderDriver};
    PlacedFiles m_files;
};
} // namespace

TEST_F(VersionDialog, ShowsTheDriversVersionOrElseTheFiles)
{
    PlaceComponents();
    const std::tuple<unsigned long, std::string, std::string> cases[] = {
        {1, "Version=9.8.7", "9.8.7"}, {0, "Version=9.8.7", "1.0.2.0"}, {1, "Version=Default", "1.0.2.0"},
        {1, "Other=1", "1.0.2.0"},     {1, "Version=", "1.0.2.0"},      {2, "Version=9.8.7", "1.0.2.0"}};
    for (const auto& [fromFile, ini, shown] : cases)
    {
        Product({{"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", fromFile}});
        m_files.Write(Driver + "dlgt-ver.ini", "[Driver]\r\n" + ini + "\r\n");
        EXPECT_EQ(Version().Text(IDC_VERSION_PRODUCT), shown) << ini;
    }
}

TEST_F(VersionDialog, RowsShowTheFilesWhereTheyBelong)
{
    EXPECT_THAT(Version().Rows(), testing::Each("Unknown"));
    const char* const versions[] = {"1.4.0.7", "2.1.0.3", "1.4.0.7", "3.0.1.12", "1.4.0.5", "1.0.2.0"};
    for (const auto& [version, driver] : {std::pair{WindowsNT4, OlderDriver}, {9, Driver}})
    {
        PlaceComponents(driver);
        const FakeVersion windows(version);
        const Version dialog;
        EXPECT_EQ(dialog.Text(IDC_VERSION_PRODUCT), "9.8.7");
        for (int row = 0; row < 6; ++row)
            EXPECT_EQ(dialog.Text(IDC_VERSION_ROW_VALUE + row), versions[row]) << driver;
    }
}

TEST_F(VersionDialog, RowsOfThe9xFamilyAreInTheSystemDirectory)
{
    const char* const files[][2] = {{"dlgt-pd.drv", "pp.dll"},     {"dlgt-psw.exe", "pswx.exe"},
                                    {"dlgt-pp9x.dll", "core.dll"}, {"dlgt-lcs.exe", "lcs.exe"},
                                    {"dlgt-co9x.dll", "webu.exe"}, {"dlgt-util.exe", "core.dll"}};
    for (const auto& [name, component] : files)
        Place(System + name, component);
    m_files.Write(System + "dlgt-ver.ini", VersionFile);
    const FakeVersion windows(Windows98);
    for (const bool own : {false, true})
    {
        Product({{"IDO_SOFTWARE2000COPYRIGHT", own ? 1ul : 0ul}});
        const Version dialog;
        EXPECT_THAT(dialog.Rows(),
                    testing::ElementsAre("1.4.0.7", "2.1.0.3", "1.4.0.5", "3.0.1.12", "1.0.2.0", "1.4.0.5"));
        EXPECT_EQ(dialog.Text(IDC_VERSION_PRODUCT), "9.8.7");
        EXPECT_THAT(dialog.Text(IDC_VERSION_NOTICE), StartsWith(own ? "This software" : "Portions"));
    }
}

TEST_F(VersionDialog, NothingIsFoundWithoutTheSystemDirectory)
{
    for (const char* path : {"C:\\windows\\dlgt-ver.ini", "dlgt-ver.ini"}) // where a bare name is looked for
        m_files.Write(path, VersionFile);
    const IatPatch directory(
        LibraryUnderTest(), "GetSystemDirectoryA", +[](LPSTR, UINT) { return 0u; });
    static std::vector<std::string> asked;
    const auto note = [](LPCSTR file, DWORD*)
    {
        asked.push_back(file);
        return DWORD{0};
    };
    const IatPatch reading(LibraryUnderTest(), "GetFileVersionInfoSizeA", +note);
    for (const int version : {Windows98, WindowsNT4})
    {
        const FakeVersion windows(version);
        EXPECT_EQ(Version().Text(IDC_VERSION_PRODUCT), "Unknown");
    }
    EXPECT_EQ(asked, std::vector<std::string>(12)) << "no file that only has the name";
}

TEST_F(VersionDialog, FilesWithoutAVersionShowAsUnknown)
{
    Version dialog;
    EXPECT_EQ(dialog.Text(IDC_VERSION_PRODUCT), "Unknown");
    m_files.Write(Driver + "dlgt-text.dll", "no library");
    for (const CString& name : {CString("dlgt-text.dll"), CString(), CString('x', 300)})
        EXPECT_EQ(dialog.GetFileVersion(name), "Unknown");
    for (const char* damaged : {"dialogs_no_translation.dll", "dialogs_other_language.dll", "dialogs_no_version.dll"})
    {
        PlacedFiles files;
        files.Copy(Driver + "dlgt-odd.dll", damaged);
        EXPECT_EQ(dialog.GetFileVersion("dlgt-odd.dll"), "Unknown") << damaged;
    }
}

TEST_F(VersionDialog, TracesWhatItReads)
{
    TraceWorld trace;
    Product();
    const std::string reading = "(char)VersionDlg::GetFileVersion()\n", file = "dlgt-util.exe\n(char)" + Driver,
                      begin = "(char)VersionDlg::GetDriverVersion()\n(char)fileName ==\n(char)" + Driver;
    const auto steps = [&](const std::string& ini, const std::string& version)
    { return begin + "dlgt-ver.ini\n" + ini + reading + "(char)" + file + "dlgt-util.exe\n" + version + reading; };
    Version();
    EXPECT_THAT(trace.Steps(), StartsWith(steps("(char)Failed to read file\n",
                                                "(char)GetFileVersionInfo() failed...returning Unknown\n")));
    trace.Clear();
    PlaceComponents();
    Version();
    EXPECT_THAT(trace.Steps(), StartsWith(steps("(char)Success...driver version number:\n(char)9.8.7\n",
                                                "(char)Success...returning version info\n(char)1.0.2.0\n")));
}

TEST_F(VersionDialog, DetailsOpenAndClose)
{
    Version dialog;
    CRect closed, window;
    dialog.GetWindowRect(&closed);
    for (int round = 0; round < 4; ++round)
    {
        const bool open = round % 2;
        int shown = 0;
        for (int row = 0; row < 6; ++row)
            shown += dialog.Shows(IDC_VERSION_ROW_LABEL + row) + dialog.Shows(IDC_VERSION_ROW_VALUE + row);
        EXPECT_EQ(shown, open ? 12 : 0);
        EXPECT_EQ(dialog.Text(IDC_VERSION_DETAILS), open ? "<< &Details" : "&Details >>");
        dialog.GetWindowRect(&window);
        EXPECT_TRUE(open ? window.Height() > closed.Height() + 100 : window == closed);
        dialog.Press(IDC_VERSION_DETAILS);
    }
}

TEST_F(VersionDialog, SettingsChooseTextsAndButtons)
{
    for (const bool plain : {true, false})
    {
        Product({{"IDO_USEHPE", plain ? 0ul : 1ul},
                 {"IDO_SOFTWARE2000COPYRIGHT", 1ul}, // for the 9x family only
                 {"IDO_VERSIONDLGLEGALWARRANTYBUTTON", plain ? 1ul : 0ul},
                 {"IDO_SUPPORT_WEBUPDATE", plain ? 1ul : 0ul}});
        const Version dialog;
        EXPECT_EQ(dialog.Text(IDC_VERSION_LABEL), plain ? "Printer software" : "Printer software, enterprise edition");
        EXPECT_THAT(dialog.Text(IDC_VERSION_NOTICE), StartsWith("Portions"));
        for (const int id : {IDC_VERSION_LEGAL, IDC_VERSION_UPDATE, IDC_VERSION_UPDATE_LABEL})
        {
            EXPECT_EQ(dialog.Shows(id), plain) << id;
            EXPECT_EQ(dialog.Enables(id), plain || id == IDC_VERSION_LEGAL) << id;
        }
    }
}

TEST_F(VersionDialog, LegalNoticeOpensBesideTheLibrary)
{
    const std::pair<SettingList, std::string> cases[] = {
        {{}, "shell with more open " + TestFolder() + "legal.txt 1; "},
        {{{"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 2ul}}, ""},
        {{{"IDO_UTIL_DLL", "no such module"}}, ""},
    };
    for (const auto& [settings, opened] : cases)
    {
        Product(settings);
        LaunchCalls calls;
        calls.shellResult = 33;
        Version().Press(IDC_VERSION_LEGAL);
        EXPECT_EQ(calls.log, opened);
    }
}

TEST_F(VersionDialog, WebUpdateStartsTheProgramAndRecordsIt)
{
    const TraceWorld trace;
    Product();
    Version dialog;
    dialog.Press(IDC_VERSION_UPDATE); // nothing is there: nothing is said
    EXPECT_THAT(trace.Records(), testing::Contains("(char)ActivityTracker::WriteData(4101, 1, 1, )"));
    for (const auto& [version, folder] : {std::pair{9, Driver}, {WindowsNT4, OlderDriver}, {Windows98, TestFolder()}})
    {
        const FakeVersion windows(version);
        const RecordingProgram program(folder + "dlgt-web.exe");
        const ProgramStart start = program.Recorded([&dialog] { dialog.Press(IDC_VERSION_UPDATE); });
        EXPECT_EQ(start.commandLine, folder + "dlgt-web.exe /check /printer=Larkmoor400");
        EXPECT_EQ(start.process, "priority 20, no console");
    }
}

TEST_F(VersionDialog, KeysWork)
{
    for (const auto& [key, result] : {std::pair{VK_ESCAPE, IDCANCEL}, std::pair{VK_RETURN, IDOK}})
    {
        VersionDlg dialog;
        EXPECT_EQ(RunModal(dialog, WM_KEYDOWN, static_cast<WPARAM>(key)), result);
    }
    const Version dialog;
    EXPECT_THAT(TabOrder(), testing::ElementsAre(IDOK, IDC_VERSION_UPDATE, IDC_VERSION_DETAILS, IDC_VERSION_LEGAL));
    Type('d', WM_SYSCHAR);
    EXPECT_TRUE(dialog.Shows(IDC_VERSION_ROW_VALUE));
}

TEST_F(VersionDialog, IsLaidOutWellInBothLayouts)
{
    PlaceComponents();
    std::vector<COLORREF> pictures[2];
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        Version dialog;
        pictures[mirrored] = ShownPixels(dialog, IDC_VERSION_PICTURE);
        for (const bool details : {false, true})
        {
            if (details)
                dialog.Press(IDC_VERSION_DETAILS);
            // The rows follow each other at equal distances, which no grid of the font's units allows.
            EXPECT_THAT(LayoutFaults(dialog, IDC_VERSION_ROW_LABEL, IDC_VERSION_ROW_VALUE + 5), testing::IsEmpty())
                << mirrored << details;
        }
    }
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    EXPECT_EQ(pictures[0][0], face) << "the corner is transparent";
    const auto background = std::count(pictures[0].begin(), pictures[0].end(), face);
    EXPECT_TRUE(background > 2000 && background < 10000) << "there is a picture";
    constexpr long Side = 112;
    for (auto row = pictures[1].begin(); row != pictures[1].end(); row += Side)
        std::reverse(row, row + Side);
    EXPECT_EQ(pictures[0], pictures[1]);
}

TEST_F(VersionDialog, UsesItsPaletteAndItsFonts)
{
    Version dialog;
    CPalette256 palette;
    palette.CreatePalette256(IDB_VERSION_IMAGE);
    ExpectPaletteUsed(dialog, ColoursOf(palette));
    for (const int id : {IDC_VERSION_LABEL, IDC_VERSION_PRODUCT, IDC_VERSION_ROW_LABEL + 5, IDC_VERSION_NOTICE,
                         IDC_VERSION_ROW_VALUE, IDC_VERSION_DETAILS})
    {
        LOGFONTA font = {};
        dialog.GetDlgItem(id)->GetFont()->GetLogFont(&font);
        const bool bold = id < IDC_VERSION_NOTICE || id == IDC_VERSION_ROW_LABEL + 5;
        EXPECT_EQ(font.lfWeight == FW_BOLD, bold) << id;
    }
}

TEST_F(VersionDialog, LeavesNothingBehind)
{
    PlaceComponents();
    ExpectNothingLeftBehind(100,
                            [](int number)
                            {
                                Version dialog;
                                dialog.Press(IDC_VERSION_DETAILS);
                                if (number % 2)
                                    dialog.DestroyWindow();
                                VersionDlg modal;
                                RunModal(modal, WM_CLOSE, 0);
                            });
}

TEST_F(VersionDialog, GoesWithItsOwnerAndLeavesTheResourceHandleAlone)
{
    const HINSTANCE host = GetModuleHandleA(nullptr);
    CWnd owner;
    owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
    {
        VersionDlg dialog(&owner);
        EXPECT_EQ(RunModal(dialog, [&owner] { owner.DestroyWindow(); }), -1);
        ASSERT_TRUE(dialog.Create(IDD_VERSION)) << "and can be opened again";
        dialog.DestroyWindow();
        AfxSetResourceHandle(host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), host) << "the settings objects put back what was current at their last look-up";
    AfxSetResourceHandle(m_library);
}
