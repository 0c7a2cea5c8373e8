// The ordering program, started for real: a recorder in its place writes down its command line.
#include "support/TestProduct.h"
#include "ink/CGUIInkDisplay.h"
#include <gtest/gtest.h>
#include <fstream>
#include <iterator>
#include <optional>

namespace
{
constexpr char Folder[] = "spool\\drivers\\x64\\3\\";

std::string ProgramName()
{
    return "inktest" + std::to_string(GetCurrentProcessId()) + ".exe";
}

/// The recorder in the suite's folder of programs.
class InstalledRecorder
{
  public:
    InstalledRecorder()
    {
        char system[MAX_PATH];
        GetSystemDirectoryA(system, MAX_PATH);
        m_path = std::string(system) + "\\" + Folder + ProgramName();
        EXPECT_TRUE(CopyFileA((TestFolder() + "ink_recorder.exe").c_str(), m_path.c_str(), FALSE)) << m_path;
    }
    ~InstalledRecorder()
    {
        for (int tries = 0; !DeleteFileA(m_path.c_str()) && tries < 100; ++tries) // the last one may still be running
            Sleep(20);
        DeleteFileA((m_path + ".txt").c_str());
    }

    const std::string& Path() const { return m_path; }

    /// What the program started by the call wrote down.
    template <class Call>
    std::string Recorded(Call call)
    {
        const std::string report = m_path + ".txt";
        DeleteFileA(report.c_str());
        call();
        for (int tries = 0; tries < 500; ++tries)
        {
            std::ifstream file(report, std::ios::binary);
            if (file)
                return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            Sleep(20);
        }
        return "nothing was started";
    }

  private:
    std::string m_path;
};

size_t OpenHandles()
{
    size_t count = 0;
    DWORD flags = 0;
    for (ULONG_PTR handle = 4; handle < 0x1000; handle += 4)
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return count;
}
} // namespace

TEST(Ordering, StartsTheProgramWithItsArguments)
{
    struct Order
    {
        unsigned long oneClick, guiOption;
        void (CGUIInkDisplay::*launch)();
        const char* arguments;
    };
    const Order orders[] = {
        {0, 0, &CGUIInkDisplay::LaunchInkOrderApp, " /order \"a page\""},
        {1, 1, &CGUIInkDisplay::LaunchInkOrderApp, " /order \"a page\""},
        {0, 1, &CGUIInkDisplay::LaunchReorderInkApp, " /desktop"},
        {1, 1, &CGUIInkDisplay::LaunchReorderInkApp, " /F=\"T 100\" /T=700 /L=a"},
        {1, 0, &CGUIInkDisplay::LaunchReorderInkApp, " /F=\"T 100\" /T=203 /L=a"},
        {1, 2, &CGUIInkDisplay::LaunchReorderInkApp, " /F=\"T 100\" /T=203 /L=a"},
        {2, 1, &CGUIInkDisplay::LaunchReorderInkApp, " /desktop"},
        {0, 0, &CGUIInkDisplay::LaunchReorderInkAppSilentMode, " /M=T 100 /T=701 /L=a"},
        {1, 1, &CGUIInkDisplay::LaunchReorderInkAppSilentMode, " /M=T 100 /T=701 /L=a"},
    };
    InstalledRecorder recorder;
    for (const Order& order : orders)
    {
        const TestProduct product({{"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", Folder},
                                   {"IDO_PSWX_NT", ProgramName().c_str()},
                                   {"IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS", "/order \"a page\""},
                                   {"IDO_DESKTOPICON_EXECUTABLENAME_ARGUMENTS", "/desktop"},
                                   {"IDO_PRINTER_MODEL", "T 100"},
                                   {"IDO_ONECLICK_INK_ORDER", order.oneClick},
                                   {"IDO_MORVAY_GUI_OPTION", order.guiOption}});
        CGUIInkDisplay display;
        EXPECT_EQ(recorder.Recorded([&] { (display.*order.launch)(); }),
                  recorder.Path() + order.arguments + "\npriority 20, no console\n");
    }
}

TEST(Ordering, LeavesNoHandlesBehind)
{
    InstalledRecorder recorder;
    const TestProduct product({{"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", Folder},
                               {"IDO_PSWX_NT", ProgramName().c_str()},
                               {"IDO_DESKTOPICON_EXECUTABLENAME_ARGUMENTS", "/desktop"}});
    CGUIInkDisplay display;
    const auto launch = [&] { display.LaunchReorderInkApp(); };
    EXPECT_NE(recorder.Recorded(launch), "nothing was started");
    const size_t before = OpenHandles();
    for (int i = 0; i < 10; ++i)
        launch();
    EXPECT_EQ(OpenHandles(), before);
    EXPECT_NE(recorder.Recorded(launch), "nothing was started");
}
