#include "Journey.h"
#include "../install/InstalledFiles.h"
#include "JobStatusWindow.h"
#include "LinkAddress.h"
#include "Links.h"
#include "TraceLog.h"
#include "resource.h"
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include "settings/TvkProduct.h"

namespace
{
constexpr UINT_PTR ClickTimer = 1;
constexpr UINT SettleMilliseconds = 600;
constexpr int WaitTicks = 20;
constexpr char Arrow[] = "---->";

/// The lines of a file that have something in them; none when it is not there.
std::vector<std::string> LinesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

/// The command line that the supplies link must give to the browser.
std::string ExpectedCommand(const std::string& browser, INKINFO report)
{
    CString subUrl;
    TvkProduct().GetSetting(LinkKinds[SuppliesLink].subUrlKey, subUrl);
    // The command's placeholder leaves its blank, the address brings another one.
    return "\"" + browser + "\"  " + static_cast<LPCSTR>(LinkAddress().Of(subUrl, report));
}

bool SetClassDefault(const char* key, const std::string& value)
{
    return RegSetKeyValueA(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, value.c_str(),
                           static_cast<DWORD>(value.size() + 1)) == ERROR_SUCCESS;
}

bool RegisterBrowser(const std::string& program)
{
    return SetClassDefault(".htm", "TorvaneDemoPage") &&
           SetClassDefault("TorvaneDemoPage\\shell\\open\\command", "\"" + program + "\" \"%1\"");
}

/// Clicks the supplies link once the window has settled, and closes the window when the browser has been there.
class JourneyWindow : public JobStatusWindow
{
public:
    JourneyWindow(const INKINFO& report, const std::string& record) : JobStatusWindow(report, 2), m_record(record) {}

protected:
    BOOL OnInitDialog() override
    {
        JobStatusWindow::OnInitDialog();
        SetTimer(ClickTimer, SettleMilliseconds, nullptr);
        return TRUE;
    }

    afx_msg void OnTimer(UINT_PTR)
    {
        CRect rect;
        CWnd* const link = GetDlgItem(IDC_FIRST_LINK + SuppliesLink);
        link->GetWindowRect(&rect);
        const POINT text = {rect.left + 8, rect.CenterPoint().y};
        ++m_ticks;
        if (!m_clicked && ::WindowFromPoint(text) == link->m_hWnd)
        {
            m_clicked = true;
            SetCursorPos(text.x, text.y);
            mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        }
        else if (m_ticks > WaitTicks || !LinesOf(m_record).empty())
        {
            KillTimer(ClickTimer);
            EndDialog(IDOK);
        }
    }
    DECLARE_MESSAGE_MAP()

private:
    const std::string m_record;
    int m_ticks = 0;
    bool m_clicked = false;
};

BEGIN_MESSAGE_MAP(JourneyWindow, JobStatusWindow)
    ON_WM_TIMER()
END_MESSAGE_MAP()

void PrintLines(const char* heading, const std::vector<std::string>& lines)
{
    std::printf("%s\n", heading);
    for (const std::string& line : lines)
        std::printf("  %s\n", line.c_str());
    if (lines.empty())
        std::printf("  nothing\n");
}

void PrintJourney(const std::vector<std::string>& records)
{
    bool begun = false;
    for (const std::string& record : records)
    {
        const std::string body = RecordBody(record);
        begun = begun || body.find("FollowLink") != std::string::npos;
        const size_t tag = body.find(')') + 1;
        const size_t first = body.find(Arrow);
        const size_t second = first == std::string::npos ? first : body.find(Arrow, first + 1);
        if (!begun)
            continue;
        if (second == std::string::npos)
        {
            std::printf("  %s\n", body.substr(tag).c_str());
            continue;
        }
        const size_t length = sizeof Arrow - 1;
        const std::string key = body.substr(first + length, second - first - length);
        std::printf("      %-36s %-46s %s\n", key.c_str(), ("\"" + body.substr(second + length) + "\"").c_str(),
                    body.substr(tag, first - tag).c_str());
    }
}
} // namespace

bool ReportJourney(const INKINFO& report)
{
    const std::string folder(ProgramFolder()), browser = folder + "recordingbrowser.exe";
    const std::string record = folder + "recordingbrowser.txt";
    DeleteFileA(record.c_str());
    if (!RegisterBrowser(browser))
    {
        std::printf("The recording browser could not be registered.\n");
        return false;
    }
    // The usage recorder keeps its records below all that it has ever been given.
    const std::string usageFile(DriverFolder() + "usage.txt"), expected = ExpectedCommand(browser, report);
    const size_t olderUsage = LinesOf(usageFile).size();
    std::vector<std::string> records;
    {
        TraceLog trace;
        JourneyWindow(report, record).DoModal();
        records = trace.NewRecords();
    }
    const std::vector<std::string> received = LinesOf(record);
    std::vector<std::string> usage = LinesOf(usageFile);
    usage.erase(usage.begin(), usage.begin() + static_cast<std::ptrdiff_t>(std::min(olderUsage, usage.size())));
    PrintLines("The browser received:", received);
    PrintLines("The usage recorder kept:", usage);
    std::printf("The trace of the journey, with the settings that were asked on the way and where each came from:\n");
    PrintJourney(records);
    const bool arrived = received == std::vector<std::string>{expected};
    if (!arrived)
        std::printf("The browser should have received this, once:\n  %s\n", expected.c_str());
    if (usage.empty())
        std::printf("The visit was not recorded.\n");
    return arrived && !usage.empty();
}
