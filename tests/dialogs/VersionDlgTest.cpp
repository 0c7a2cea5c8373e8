// The version dialog: what it reads, what it shows, what its buttons do.
#include "dialogs/VersionDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "support/FakeVersion.h"
#include "support/NothingLeft.h"
#include "support/IatPatch.h"
#include "support/RecordingProgram.h"
#include "support/TraceWorld.h"
#include <algorithm>

namespace
{
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string System = "C:\\windows\\system32\\";
const std::string Driver = System + "spool\\drivers\\x64\\3\\";
const std::string Processors = System + "spool\\prtprocs\\x64\\";
constexpr char Library[] = PRODUCT_PREFIX "util.dll";
constexpr int Windows98 = 5; // CRegistry::OSVersion

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

std::string g_opened; // what the shell was asked to open

HINSTANCE WINAPI RecordOpening(HWND, LPCSTR verb, LPCSTR file, LPCSTR arguments, LPCSTR folder, INT show)
{
    g_opened += std::string(verb) + " " + file + (arguments || folder ? " with more" : "") + ", show " +
                std::to_string(show) + ";";
    return reinterpret_cast<HINSTANCE>(33);
}

const SettingList Settings = {{"IDO_PRODVER", "dlgt-ver.ini"},        {"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", 1ul},
                              {"IDO_PRODVERKEYNAME", "Version"},      {"IDO_PRODVERSECTION", "Driver"},
                              {"IDO_DEFAULTSTRING", "Default"},       {"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                              {"IDO_UTILITIES_DLL", "dlgt-util.exe"}, {"IDO_UTIL_DLL", Library},
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
    /// One file for each row, of another version each.
    void PlaceComponents()
    {
        Place(Processors + "dlgt-pp.dll", "pp.dll");
        Place(Driver + "dlgt-psw.exe", "pswx.exe");
        Place(System + "dlgt-lcs.exe", "lcs.exe");
        Place(Driver + "dlgt-core.dll", "core.dll");
        Place(Driver + "dlgt-util.exe", "webu.exe");
    }

    PlacedFiles m_files;
};
} // namespace

TEST_F(VersionDialog, ShowsTheDriversVersionOrElseTheFiles)
{
    PlaceComponents();
    const std::tuple<unsigned long, std::string, std::string> cases[] = {
        {1, "[Driver]\r\nVersion=9.8.7\r\n", "9.8.7"},     {0, "[Driver]\r\nVersion=9.8.7\r\n", "1.0.2.0"},
        {1, "[Driver]\r\nVersion=Default\r\n", "1.0.2.0"}, {1, "[Driver]\r\nOther=1\r\n", "1.0.2.0"},
        {1, "[Driver]\r\nVersion=\r\n", "1.0.2.0"},        {1, "", "1.0.2.0"}}; // without a file
    for (const auto& [fromFile, ini, shown] : cases)
    {
        SCOPED_TRACE(ini);
        Product({{"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", fromFile}});
        PlacedFiles files;
        if (!ini.empty())
            files.Write(Driver + "dlgt-ver.ini", ini);
        EXPECT_EQ(Version().Text(IDC_VERSION_PRODUCT), shown);
    }
}

TEST_F(VersionDialog, RowsShowTheFilesWhereTheyBelong)
{
    PlaceComponents();
    const char* const versions[] = {"1.4.0.7", "2.1.0.3", "1.4.0.7", "3.0.1.12", "1.4.0.5", "1.0.2.0"};
    {
        const Version dialog;
        for (int row = 0; row < 6; ++row)
            EXPECT_EQ(dialog.Text(IDC_VERSION_ROW_VALUE + row), versions[row]);
    }
    m_files.Clear();
    for (const std::string& folder : {System, Driver, Processors})
        Place(folder + "dlgt-none.dll", "pp.dll");
    EXPECT_THAT(Version().Rows(), Each("Unknown"));
}

TEST_F(VersionDialog, RowsOfThe9xFamilyAreInTheSystemDirectory)
{
    const char* const files[][2] = {{"dlgt-pd.drv", "pp.dll"},     {"dlgt-psw.exe", "pswx.exe"},
                                    {"dlgt-pp9x.dll", "core.dll"}, {"dlgt-lcs.exe", "lcs.exe"},
                                    {"dlgt-co9x.dll", "webu.exe"}, {"dlgt-util.exe", "core.dll"}};
    for (const auto& [name, component] : files)
        Place(System + name, component);
    m_files.Write(System + "dlgt-ver.ini", "[Driver]\r\nVersion=9.8.7\r\n");
    Product({{"IDO_SOFTWARE2000COPYRIGHT", 1ul}});
    const FakeVersion windows(Windows98);
    const Version dialog;
    EXPECT_THAT(dialog.Rows(), ElementsAre("1.4.0.7", "2.1.0.3", "1.4.0.5", "3.0.1.12", "1.0.2.0", "1.4.0.5"));
    EXPECT_EQ(dialog.Text(IDC_VERSION_PRODUCT), "9.8.7");
    EXPECT_EQ(dialog.Text(IDC_VERSION_NOTICE), "This software is protected by copyright.") << "the template's own";
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
    const auto records = [&trace](std::size_t count)
    {
        std::vector<std::string> found;
        trace.Clear();
        const Version dialog;
        for (const std::string& record : trace.Records())
            if (record.find("---->") == std::string::npos && found.size() < count)
                found.push_back(record);
        return found;
    };
    const std::string ini = "(char)" + Driver + "dlgt-ver.ini", file = "(char)" + Driver + "dlgt-util.exe";
    EXPECT_THAT(records(9),
                ElementsAre("(char)VersionDlg::GetDriverVersion()", "(char)fileName ==", ini,
                            "(char)Failed to read file", "(char)VersionDlg::GetFileVersion()", "(char)dlgt-util.exe",
                            file, "(char)GetFileVersionInfo() failed...returning Unknown",
                            "(char)VersionDlg::GetFileVersion()"));
    PlaceComponents();
    m_files.Write(Driver + "dlgt-ver.ini", "[Driver]\r\nVersion=9.8.7\r\n");
    EXPECT_THAT(records(11), ElementsAre("(char)VersionDlg::GetDriverVersion()", "(char)fileName ==", ini,
                                         "(char)Success...driver version number:", "(char)9.8.7",
                                         "(char)VersionDlg::GetFileVersion()", "(char)dlgt-util.exe", file,
                                         "(char)Success...returning version info", "(char)1.0.2.0",
                                         "(char)VersionDlg::GetFileVersion()"));
}

TEST_F(VersionDialog, DetailsOpenAndClose)
{
    Version dialog;
    const auto state = [&dialog]
    {
        int shown = 0;
        for (int row = 0; row < 6; ++row)
            shown += dialog.Shows(IDC_VERSION_ROW_LABEL + row) + dialog.Shows(IDC_VERSION_ROW_VALUE + row);
        CRect window;
        dialog.GetWindowRect(&window);
        return std::make_tuple(shown, dialog.Text(IDC_VERSION_DETAILS), window.Height());
    };
    const auto closed = state();
    EXPECT_EQ(closed, std::make_tuple(0, std::string("&Details >>"), std::get<2>(closed)));
    for (int round = 0; round < 2; ++round)
    {
        dialog.Press(IDC_VERSION_DETAILS);
        const auto opened = state();
        EXPECT_EQ(opened, std::make_tuple(12, std::string("<< &Details"), std::get<2>(opened)));
        EXPECT_GT(std::get<2>(opened), std::get<2>(closed) + 100);
        dialog.Press(IDC_VERSION_DETAILS);
        EXPECT_EQ(state(), closed);
    }
}

TEST_F(VersionDialog, SettingsChooseTextsAndButtons)
{
    for (const bool plain : {true, false})
    {
        if (!plain)
            Product({{"IDO_USEHPE", 1ul},
                     {"IDO_SOFTWARE2000COPYRIGHT", 1ul}, // for the 9x family only
                     {"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 0ul},
                     {"IDO_SUPPORT_WEBUPDATE", 0ul}});
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
    const IatPatch shell(LibraryUnderTest(), "ShellExecuteA", &RecordOpening);
    const std::pair<SettingList, std::string> cases[] = {
        {{}, "open " + TestFolder() + "legal.txt, show 1;"},
        {{{"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 2ul}}, ""},
        {{{"IDO_UTIL_DLL", "no such module"}}, ""},
    };
    for (const auto& [settings, opened] : cases)
    {
        Product(settings);
        g_opened.clear();
        Version().Press(IDC_VERSION_LEGAL);
        EXPECT_EQ(g_opened, opened);
    }
}

TEST_F(VersionDialog, WebUpdateStartsTheProgramAndRecordsIt)
{
    const TraceWorld trace;
    Product();
    Version dialog;
    dialog.Press(IDC_VERSION_UPDATE); // nothing is there: nothing is said
    EXPECT_THAT(trace.Records(), testing::Contains("(char)ActivityTracker::WriteData(4101, 1, 1, )"));
    const auto started = [&dialog](const std::string& folder)
    {
        const RecordingProgram program(folder + "dlgt-web.exe");
        return program.Recorded([&dialog] { dialog.Press(IDC_VERSION_UPDATE); });
    };
    const ProgramStart start = started(Driver);
    EXPECT_EQ(start.commandLine, Driver + "dlgt-web.exe /check /printer=Larkmoor400");
    EXPECT_EQ(start.process, "priority 20, no console");
    const FakeVersion windows(Windows98);
    EXPECT_EQ(started(TestFolder()).commandLine, TestFolder() + "dlgt-web.exe /check /printer=Larkmoor400");
}

TEST_F(VersionDialog, KeysWork)
{
    {
        const Version dialog;
        EXPECT_THAT(TabOrder(dialog), ElementsAre(IDOK, IDC_VERSION_UPDATE, IDC_VERSION_DETAILS, IDC_VERSION_LEGAL));
        Type('d', WM_SYSCHAR);
        EXPECT_TRUE(dialog.Shows(IDC_VERSION_ROW_VALUE));
    }
    for (const auto& [key, result] : {std::pair{VK_ESCAPE, IDCANCEL}, std::pair{VK_RETURN, IDOK}})
    {
        VersionDlg dialog;
        EXPECT_EQ(RunModal(dialog, WM_KEYDOWN, static_cast<WPARAM>(key)), result);
    }
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
            SCOPED_TRACE(testing::Message() << "mirrored " << mirrored << ", details " << details);
            if (details)
                dialog.Press(IDC_VERSION_DETAILS);
            // The rows follow each other at equal distances, which no grid of the font's units allows.
            EXPECT_THAT(LayoutFaults(dialog, IDC_VERSION_ROW_LABEL, IDC_VERSION_ROW_VALUE + 5), IsEmpty());
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

TEST_F(VersionDialog, LeavesNothingBehind)
{
    PlaceComponents();
    ExpectNothingLeftBehind(100,
                            [](int number)
                            {
                                Version dialog;
                                dialog.Press(IDC_VERSION_DETAILS);
                                if (number % 2)
                                {
                                    dialog.DestroyWindow();
                                    RunModal(dialog, WM_CLOSE, 0);
                                }
                            });
}

TEST_F(VersionDialog, GoesWithItsOwnerAndLeavesTheResourceHandleAlone)
{
    const HINSTANCE host = GetModuleHandleA(nullptr);
    CWnd owner;
    owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
    {
        VersionDlg dialog(&owner);
        ASSERT_TRUE(dialog.Create(IDD_VERSION, &owner));
        owner.DestroyWindow();
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        ASSERT_TRUE(dialog.Create(IDD_VERSION)) << "and can be opened again";
        dialog.DestroyWindow();
        AfxSetResourceHandle(host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), host) << "the settings objects put back what was current at their last look-up";
    AfxSetResourceHandle(m_library);
}
