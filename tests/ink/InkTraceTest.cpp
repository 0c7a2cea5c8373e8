// What the ink classes write to the trace log.
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "ink/CGUIInkDisplay.h"
#include <gtest/gtest.h>

TEST(InkTrace, NamesEachStep)
{
    RegistryWorld registry;
    registry.Claim(HKEY_LOCAL_MACHINE, "Software\\Torvane\\InkTrace\\T100");
    registry.Claim(HKEY_CURRENT_USER, "Printers\\Ink Trace Printer\\GUI\\PSW");
    const TestProduct product({{"IDO_MORVAY_SUPPLIES_REG_PATH", "Software\\Torvane\\InkTrace\\"},
                               {"IDO_PRINTER_MODEL", "T100"},
                               {"IDO_KEY_NAME_MORVAY_DIMS_SETTING", "DimsFlag"},
                               {"IDO_PSWX_NT", "no such program.exe"},
                               {"IDO_PRINTHEADFORMAT", 3ul}});
    TraceWorld trace;
    CGUIInkDisplay display;
    CGUIInkTank tank;
    tank.SetColor(CGUIInkTank::InkBlack);
    const auto traced = [&](auto call)
    {
        trace.Clear();
        call();
        return trace.Steps();
    };

    EXPECT_EQ(traced([&] { tank.SetInkPercent(9, nullptr); }), "(char)m_iCurrentBmpID: 193\n");
    EXPECT_EQ(traced([&] { tank.SetInkPercent(101, nullptr); }), "(char)m_iCurrentBmpID: 190\n");
    EXPECT_EQ(traced([&] { display.IsItWrongPosition(CGUIInkDisplay::Logical, CGUIInkDisplay::First); }),
              "(char)IsItWrongPosition() default = never error\n");
    EXPECT_EQ(traced([&] { display.GetDIMSValue(); }),
              "(char)CGUIInkDisplay::GetDIMSValue (dwRegVal) ...Called in BEW\n(DWORD)1\n");
    EXPECT_EQ(traced([&] { display.SetDIMSValue(7); }),
              "(char)CGUIInkDisplay::SetDIMSValue() ...In Install GUI\n(char)dwRegVal ==\n(DWORD)7\n");
    EXPECT_EQ(traced([&] { display.SetDIMSValue("Ink Trace Printer", 0); }),
              "(char)CGUIInkDisplay::SetDIMSValue()\n(char)dwRegVal ==\n(DWORD)0\n");
    EXPECT_EQ(traced([&] { display.GetDIMSValue("Ink Trace Printer"); }), "");
    EXPECT_EQ(traced([&] { display.LaunchInkOrderApp(); }), "(char)CreateProcess() Return Code\n(int)0\n");
    EXPECT_EQ(traced([&] { display.LaunchReorderInkApp(); }), "");
    EXPECT_EQ(traced([&] { display.LaunchReorderInkAppSilentMode(); }), "");
}
