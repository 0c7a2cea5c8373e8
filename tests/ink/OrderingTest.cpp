// The ordering program, started for real: a recorder in its place writes down its command line.
#include "support/NothingLeft.h"
#include "support/RecordingProgram.h"
#include "support/TestProduct.h"
#include "support/Watch.h"
#include "ink/CGUIInkDisplay.h"
#include <gtest/gtest.h>

TEST(Ordering, StartsTheProgramWithItsArgumentsAndLeavesNoHandleBehind)
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
    constexpr char Folder[] = "spool\\drivers\\x64\\3\\";
    const std::string program = "inktest" + std::to_string(GetCurrentProcessId()) + ".exe";
    const RecordingProgram recorder(SystemFolder() + Folder + program);
    const auto launch = [&](int round)
    {
        const Order& order = orders[round];
        const TestProduct product({{"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", Folder},
                                   {"IDO_PSWX_NT", program.c_str()},
                                   {"IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS", "/order \"a page\""},
                                   {"IDO_DESKTOPICON_EXECUTABLENAME_ARGUMENTS", "/desktop"},
                                   {"IDO_PRINTER_MODEL", "T 100"},
                                   {"IDO_ONECLICK_INK_ORDER", order.oneClick},
                                   {"IDO_MORVAY_GUI_OPTION", order.guiOption}});
        CGUIInkDisplay display;
        const ProgramStart start = recorder.Recorded([&] { (display.*order.launch)(); });
        EXPECT_EQ(start.commandLine, recorder.Path() + order.arguments);
        EXPECT_EQ(start.process, "priority 20, no console");
    };
    ExpectNothingLeftBehind(static_cast<int>(std::size(orders)), launch, 1);
}

TEST(Ordering, StartsNothingWhenItIsNotKnownWhereTheProgramLies)
{
    const TestProduct product({{"IDO_RZB_EXECUTABLENAME_WIN2000_PATH", "spool\\"}, {"IDO_PSWX_NT", "order.exe"}});
    const Watch<decltype(&CreateProcessA)> started("CreateProcessA");
    for (const auto launch : {&CGUIInkDisplay::LaunchInkOrderApp, &CGUIInkDisplay::LaunchReorderInkApp,
                              &CGUIInkDisplay::LaunchReorderInkAppSilentMode})
    {
        const Watch<decltype(&GetSystemDirectoryA)> refused("GetSystemDirectoryA", 1);
        CGUIInkDisplay display;
        (display.*launch)();
    }
    EXPECT_EQ(started.Calls(), 0);
}
