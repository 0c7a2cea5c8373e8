#include "Journey.h"
#include "JobStatusWindow.h"
#include "Links.h"
#include "TraceLog.h"
#include "resource.h"
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

std::string ProgramFolder()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string program = path;
    return program.substr(0, program.rfind('\\') + 1);
}

std::string LastLine(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string last;
    for (std::string line; std::getline(file, line);)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            last = line;
    }
    return last;
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
        if (m_ticks++ == 0)
        {
            CRect rect;
            GetDlgItem(IDC_FIRST_LINK + SuppliesLink)->GetWindowRect(&rect);
            SetCursorPos(rect.left + 8, rect.CenterPoint().y); // on the text
            mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        }
        else if (m_ticks > WaitTicks || !LastLine(m_record).empty())
        {
            KillTimer(ClickTimer);
            EndDialog(IDOK);
        }
    }
    DECLARE_MESSAGE_MAP()

private:
    const std::string m_record;
    int m_ticks = 0;
};

BEGIN_MESSAGE_MAP(JourneyWindow, JobStatusWindow)
    ON_WM_TIMER()
END_MESSAGE_MAP()

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
    const std::string browser = ProgramFolder() + "recordingbrowser.exe";
    const std::string record = ProgramFolder() + "recordingbrowser.txt";
    DeleteFileA(record.c_str());
    if (!RegisterBrowser(browser))
    {
        std::printf("The recording browser could not be registered.\n");
        return false;
    }
    std::vector<std::string> records;
    {
        TraceLog trace;
        JourneyWindow(report, record).DoModal();
        records = trace.NewRecords();
    }
    const std::string received = LastLine(record);
    std::printf("The browser received:\n  %s\n", received.empty() ? "nothing" : received.c_str());

    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, MAX_PATH);
    CString path;
    TvkProduct().GetSetting("IDO_WINNTPATH", path);
    const std::string usage = LastLine(std::string(system) + static_cast<LPCSTR>(path) + "3\\usage.txt");
    std::printf("The usage recorder kept:\n  %s\n", usage.empty() ? "nothing" : usage.c_str());
    std::printf("The trace of the journey, with the settings that were asked on the way and where each came from:\n");
    PrintJourney(records);
    return !received.empty();
}
