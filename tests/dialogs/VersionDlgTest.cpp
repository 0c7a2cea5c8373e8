// The version dialog: what it reads, what it shows, what its buttons do.
#include "dialogs/VersionDlg.h"
#include "DialogSupport.h"
#include "dialogs/DialogIds.h"
#include "support/FakeVersion.h"
#include "support/IatPatch.h"
#include "support/RecordingProgram.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gmock/gmock.h>
#include <array>
#include <fstream>
#include <memory>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char System[] = "C:\\windows\\system32\\";
constexpr char Driver[] = "C:\\windows\\system32\\spool\\drivers\\x64\\3\\";
constexpr char Processors[] = "C:\\windows\\system32\\spool\\prtprocs\\x64\\";
constexpr int Windows98 = 5; // CRegistry::OSVersion

/// The dialog, modeless so that the test goes on.
class Version : public VersionDlg
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
    std::string Text(int id) const { return TextOf(m_hWnd, id); }
    bool Shows(int id) const { return IsShown(m_hWnd, id); }
    std::vector<std::string> Rows() const
    {
        std::vector<std::string> rows;
        for (int row = 0; row < DetailRows; ++row)
            rows.push_back(Text(IDC_VERSION_ROW_VALUE + row));
        return rows;
    }
};

std::string g_opened; // what the shell was asked to open

HINSTANCE WINAPI RecordOpening(HWND, LPCSTR verb, LPCSTR file, LPCSTR arguments, LPCSTR folder, INT show)
{
    g_opened += std::string(verb) + " " + file + (arguments || folder ? " with more" : "") + ", show " +
                std::to_string(show) + ";";
    return reinterpret_cast<HINSTANCE>(33);
}

/// A product whose components are installed. The dialogs of the tests use the sample product's resources.
class VersionDialog : public testing::Test
{
protected:
    /// The settings, and those that a test has besides or in place of them.
    void Product(const std::vector<TestSetting>& own = {})
    {
        m_product.reset();
        std::vector<TestSetting> settings = {{"IDO_WINNTPATH", "\\spool\\drivers\\x64\\"},
                                             {"IDO_DEFAULTSTRING", "Default"},
                                             {"IDO_UTILITIES_DLL", "dlgt-util.exe"},
                                             {"IDO_UTIL_DLL", PRODUCT_PREFIX "util.dll"},
                                             {"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", 1ul},
                                             {"IDO_PRODVER", "dlgt-ver.ini"},
                                             {"IDO_PRODVERSECTION", "Driver"},
                                             {"IDO_PRODVERKEYNAME", "Version"},
                                             {"IDO_PRTPROCSPATH", "\\spool\\prtprocs\\x64\\"},
                                             {"IDO_FILEPD_9X", "dlgt-pd.drv"},
                                             {"IDO_FILEPP_9X", "dlgt-pp9x.dll"},
                                             {"IDO_FILEPP_NT", "dlgt-pp.dll"},
                                             {"IDO_FILEPSWX", "dlgt-psw.exe"},
                                             {"IDO_FILELCS", "dlgt-lcs.exe"},
                                             {"IDO_CORE_9X", "dlgt-co9x.dll"},
                                             {"IDO_CORE_NT", "dlgt-core.dll"},
                                             {"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 1ul},
                                             {"IDO_LEGALNOTICEFILE", "legal.txt"},
                                             {"IDO_SUPPORT_WEBUPDATE", 1ul},
                                             {"IDO_WEBUPDATE_EXE", "dlgt-web.exe"}};
        settings.insert(settings.end(), own.begin(), own.end());
        m_product = std::make_unique<TestProduct>(settings);
    }
    void Place(const std::string& path, const char* component) { m_files.emplace_back(path, component); }
    /// One file for each row, of another version each.
    void PlaceComponents()
    {
        Place(std::string(Processors) + "dlgt-pp.dll", "dialogs\\" PRODUCT_PREFIX "pp.dll");
        Place(std::string(Driver) + "dlgt-psw.exe", "dialogs\\" PRODUCT_PREFIX "pswx.exe");
        Place(std::string(System) + "dlgt-lcs.exe", "dialogs\\" PRODUCT_PREFIX "lcs.exe");
        Place(std::string(Driver) + "dlgt-core.dll", "dialogs\\" PRODUCT_PREFIX "core.dll");
        Place(std::string(Driver) + "dlgt-util.exe", "dialogs\\" PRODUCT_PREFIX "webu.exe");
    }
    void SetUp() override { Product(); }

    CurrentLibrary m_library{PRODUCT_PREFIX "vres.dll"};
    std::unique_ptr<TestProduct> m_product;
    std::vector<PlacedFile> m_files;
};
} // namespace

TEST_F(VersionDialog, ShowsTheDriversVersionOrElseTheFiles)
{
    PlaceComponents();
    const struct
    {
        unsigned long fromFile;
        const char* ini; // null: no file
        const char* shown;
    } cases[] = {{1, "[Driver]\r\nVersion=9.8.7\r\n", "9.8.7"},     {0, "[Driver]\r\nVersion=9.8.7\r\n", "1.0.2.0"},
                 {1, "[Driver]\r\nVersion=Default\r\n", "1.0.2.0"}, {1, "[Driver]\r\nOther=1\r\n", "1.0.2.0"},
                 {1, "[Driver]\r\nVersion=\r\n", "1.0.2.0"},        {1, nullptr, "1.0.2.0"}};
    for (const auto& test : cases)
    {
        SCOPED_TRACE(testing::Message() << test.fromFile << " " << (test.ini ? test.ini : "no file"));
        Product({{"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", test.fromFile}});
        std::vector<PlacedFile> ini;
        if (test.ini)
            ini.push_back(PlacedFile::Of(std::string(Driver) + "dlgt-ver.ini", test.ini));
        EXPECT_EQ(Version().Text(IDC_VERSION_PRODUCT), test.shown);
    }
}

TEST_F(VersionDialog, RowsShowTheFilesWhereTheyBelong)
{
    PlaceComponents();
    EXPECT_THAT(Version().Rows(), ElementsAre("1.4.0.7", "2.1.0.3", "1.4.0.7", "3.0.1.12", "1.4.0.5", "1.0.2.0"));

    m_files.clear();
    for (const char* folder : {System, Driver, Processors})
        Place(std::string(folder) + "dlgt-none.dll", "dialogs\\" PRODUCT_PREFIX "pp.dll");
    EXPECT_THAT(Version().Rows(), testing::Each("Unknown"));
}

TEST_F(VersionDialog, RowsOfThe9xFamilyAreInTheSystemDirectory)
{
    const char* const files[][2] = {{"dlgt-pd.drv", "pp.dll"},     {"dlgt-psw.exe", "pswx.exe"},
                                    {"dlgt-pp9x.dll", "core.dll"}, {"dlgt-lcs.exe", "lcs.exe"},
                                    {"dlgt-co9x.dll", "webu.exe"}, {"dlgt-util.exe", "core.dll"}};
    for (const auto& [name, component] : files)
        Place(std::string(System) + name, (std::string("dialogs\\" PRODUCT_PREFIX) + component).c_str());
    const PlacedFile ini = PlacedFile::Of(std::string(System) + "dlgt-ver.ini", "[Driver]\r\nVersion=9.8.7\r\n");
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
    const PlacedFile text = PlacedFile::Of(std::string(Driver) + "dlgt-text.dll", "no library");
    EXPECT_EQ(dialog.GetFileVersion("dlgt-text.dll"), "Unknown");
    EXPECT_EQ(dialog.GetFileVersion(""), "Unknown");
    EXPECT_EQ(dialog.GetFileVersion(CString('x', 300)), "Unknown");
    for (const char* damaged : {"dialogs_no_translation.dll", "dialogs_other_language.dll", "dialogs_no_version.dll"})
    {
        const PlacedFile file(std::string(Driver) + "dlgt-odd.dll", damaged);
        EXPECT_EQ(dialog.GetFileVersion("dlgt-odd.dll"), "Unknown") << damaged;
    }
    EXPECT_EQ(Version().Text(IDC_VERSION_PRODUCT), "Unknown");
}

TEST_F(VersionDialog, TracesWhatItReads)
{
    PlaceComponents();
    const TraceWorld trace;
    Product({{"IDO_DISPLAY_PRODUCT_VERSION_FROM_FILE", 1ul}});
    Version dialog;
    std::vector<std::string> records;
    for (const std::string& record : trace.Records())
        if (record.find("---->") == std::string::npos)
            records.push_back(record);
    ASSERT_GT(records.size(), 10u);
    records.resize(10);
    const std::string ini = std::string(Driver) + "dlgt-ver.ini", file = std::string(Driver) + "dlgt-util.exe";
    EXPECT_THAT(records, ElementsAre("(char)VersionDlg::GetDriverVersion()", "(char)fileName ==", "(char)" + ini,
                                     "(char)Failed to read file", "(char)VersionDlg::GetFileVersion()",
                                     "(char)dlgt-util.exe", "(char)" + file, "(char)Success...returning version info",
                                     "(char)1.0.2.0", "(char)VersionDlg::GetFileVersion()"));
    trace.Records();
    m_files.clear();
    EXPECT_EQ(dialog.GetFileVersion("dlgt-util.exe"), "Unknown");
    EXPECT_EQ(trace.Records().back(), "(char)GetFileVersionInfo() failed...returning Unknown");
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
    const auto [shown, text, height] = state();
    EXPECT_EQ(shown, 0);
    for (int round = 0; round < 2; ++round)
    {
        Click(dialog.m_hWnd, IDC_VERSION_DETAILS);
        const auto [openShown, openText, openHeight] = state();
        EXPECT_EQ(openShown, 12);
        EXPECT_EQ(openText, "<< &Details");
        EXPECT_GT(openHeight, height + 100);
        Click(dialog.m_hWnd, IDC_VERSION_DETAILS);
        EXPECT_EQ(state(), std::make_tuple(0, std::string("&Details >>"), height));
    }
}

TEST_F(VersionDialog, SettingsChooseTextsAndButtons)
{
    {
        const Version dialog;
        EXPECT_EQ(dialog.Text(IDC_VERSION_LABEL), "Printer software");
        EXPECT_THAT(dialog.Text(IDC_VERSION_NOTICE), testing::StartsWith("Portions"));
        for (const int id : {IDC_VERSION_LEGAL, IDC_VERSION_UPDATE, IDC_VERSION_UPDATE_LABEL})
            EXPECT_TRUE(dialog.Shows(id) && IsEnabled(dialog.m_hWnd, id)) << id;
    }
    Product({{"IDO_USEHPE", 1ul},
             {"IDO_SOFTWARE2000COPYRIGHT", 1ul},
             {"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 0ul},
             {"IDO_SUPPORT_WEBUPDATE", 0ul}});
    const Version dialog;
    EXPECT_EQ(dialog.Text(IDC_VERSION_LABEL), "Printer software, enterprise edition");
    EXPECT_THAT(dialog.Text(IDC_VERSION_NOTICE), testing::StartsWith("Portions")) << "not on the NT family";
    for (const int id : {IDC_VERSION_LEGAL, IDC_VERSION_UPDATE, IDC_VERSION_UPDATE_LABEL})
        EXPECT_FALSE(dialog.Shows(id)) << id;
    EXPECT_FALSE(IsEnabled(dialog.m_hWnd, IDC_VERSION_UPDATE));
}

TEST_F(VersionDialog, LegalNoticeOpensBesideTheLibrary)
{
    const IatPatch shell(LibraryUnderTest(), "ShellExecuteA", &RecordOpening);
    const std::vector<TestSetting> none;
    const struct
    {
        std::vector<TestSetting> settings;
        std::string opened;
    } cases[] = {{none, "open " + TestFolder() + "legal.txt, show 1;"},
                 {{{"IDO_VERSIONDLGLEGALWARRANTYBUTTON", 2ul}}, ""},
                 {{{"IDO_UTIL_DLL", "no such module"}}, ""}};
    for (const auto& test : cases)
    {
        Product(test.settings);
        Version dialog;
        g_opened.clear();
        Click(dialog.m_hWnd, IDC_VERSION_LEGAL);
        EXPECT_EQ(g_opened, test.opened);
    }
}

TEST_F(VersionDialog, WebUpdateStartsTheProgramAndRecordsIt)
{
    const TraceWorld trace;
    Product();
    Version dialog;
    Click(dialog.m_hWnd, IDC_VERSION_UPDATE); // nothing is there: nothing is said
    EXPECT_THAT(trace.Records(), testing::Contains("(char)ActivityTracker::WriteData(4101, 1, 1, )"));
    const auto started = [&dialog](const std::string& folder)
    {
        const RecordingProgram program(folder + "dlgt-web.exe");
        return program.Recorded([&dialog] { Click(dialog.m_hWnd, IDC_VERSION_UPDATE); });
    };
    const ProgramStart start = started(Driver);
    EXPECT_EQ(start.commandLine, std::string(Driver) + "dlgt-web.exe /check /printer=Larkmoor400");
    EXPECT_EQ(start.process, "priority 20, no console");
    const FakeVersion windows(Windows98);
    EXPECT_EQ(started(TestFolder()).commandLine, TestFolder() + "dlgt-web.exe /check /printer=Larkmoor400");
}

TEST_F(VersionDialog, KeysWork)
{
    {
        const Version dialog;
        EXPECT_THAT(TabOrder(dialog.m_hWnd),
                    ElementsAre(IDOK, IDC_VERSION_UPDATE, IDC_VERSION_DETAILS, IDC_VERSION_LEGAL));
        PostMessageA(GetFocus(), WM_SYSCHAR, 'd', 1 << 29);
        Pump();
        EXPECT_TRUE(dialog.Shows(IDC_VERSION_ROW_VALUE)) << "the mnemonic";
    }
    for (const auto& [key, result] : {std::pair{VK_ESCAPE, IDCANCEL}, std::pair{VK_RETURN, IDOK}})
    {
        VersionDlg modal;
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
        const UINT_PTR timer =
            SetTimer(nullptr, 0, 20,
                     [](HWND, UINT, UINT_PTR id, DWORD)
                     {
                         KillTimer(nullptr, id);
                         PostMessageA(GetFocus(), WM_KEYDOWN, g_opened.empty() ? VK_ESCAPE : VK_RETURN, 1);
                     });
        g_opened = key == VK_ESCAPE ? "" : "return";
        EXPECT_EQ(modal.DoModal(), result);
        KillTimer(nullptr, timer);
    }
}

TEST_F(VersionDialog, IsLaidOutWell)
{
    PlaceComponents();
    for (const bool mirrored : {false, true})
        for (const bool details : {false, true})
        {
            SCOPED_TRACE(testing::Message() << "mirrored " << mirrored << ", details " << details);
            const RightToLeft layout(mirrored);
            Version dialog;
            if (details)
                Click(dialog.m_hWnd, IDC_VERSION_DETAILS);
            // The rows follow each other at equal distances, which no grid of the font's units allows.
            EXPECT_THAT(LayoutFaults(dialog.m_hWnd, IDC_VERSION_ROW_LABEL, IDC_VERSION_ROW_VALUE + 5), IsEmpty());
        }
}

TEST_F(VersionDialog, ShowsThePictureInBothLayouts)
{
    std::vector<COLORREF> pictures[2];
    for (const bool mirrored : {false, true})
    {
        const RightToLeft layout(mirrored);
        const Version dialog;
        RedrawWindow(dialog.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        pictures[mirrored] = ShownPixels(dialog.m_hWnd, AreaOf(dialog.m_hWnd, IDC_VERSION_PICTURE));
        const COLORREF face = GetSysColor(COLOR_3DFACE);
        const auto background = std::count(pictures[mirrored].begin(), pictures[mirrored].end(), face);
        EXPECT_EQ(pictures[mirrored][0], face) << "the corner is transparent";
        EXPECT_GT(background, 2000);
        EXPECT_LT(background, 10000) << "there is a picture";
    }
    constexpr std::size_t Side = 112;
    for (std::size_t row = 0; row < Side; ++row)
        std::reverse(pictures[1].begin() + static_cast<long>(row * Side),
                     pictures[1].begin() + static_cast<long>((row + 1) * Side));
    EXPECT_EQ(pictures[0], pictures[1]);
}

TEST_F(VersionDialog, LeavesNothingBehind)
{
    PlaceComponents();
    const auto round = []
    {
        Version dialog;
        Click(dialog.m_hWnd, IDC_VERSION_DETAILS);
        if (rand() % 2)
            dialog.DestroyWindow();
    };
    for (int i = 0; i < 10; ++i)
        round();
    const auto before = SystemObjects();
    for (int i = 0; i < 90; ++i)
        round();
    EXPECT_EQ(SystemObjects(), before);
}

TEST_F(VersionDialog, LeavesTheHostsResourceHandleAlone)
{
    const HINSTANCE host = GetModuleHandleA(nullptr);
    {
        Version dialog;
        dialog.DestroyWindow();
        AfxSetResourceHandle(host);
    }
    EXPECT_EQ(AfxGetResourceHandle(), host) << "the settings objects put back what was current at their last look-up";
    AfxSetResourceHandle(m_library.Module());
}

TEST_F(VersionDialog, GoesWithItsOwner)
{
    CWnd owner;
    owner.CreateEx(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr);
    VersionDlg dialog(&owner);
    ASSERT_TRUE(dialog.Create(IDD_VERSION, &owner));
    owner.DestroyWindow();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    Product();
    ASSERT_TRUE(dialog.Create(IDD_VERSION)) << "and can be opened again";
}
