// What the ink classes write to the trace log.
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "ink/CGUIInkDisplay.h"
#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// The records of a call, those of the look-ups of settings left out.
template <class Call>
std::vector<std::string> Traced(TraceWorld& trace, Call call)
{
    trace.Clear();
    call();
    std::vector<std::string> records = trace.Records();
    std::erase_if(records, [](const std::string& record) { return record.find("---->") != std::string::npos; });
    return records;
}
} // namespace

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

    EXPECT_THAT(Traced(trace, [&] { tank.SetInkPercent(9, nullptr); }), ElementsAre("(char)m_iCurrentBmpID: 193"));
    EXPECT_THAT(Traced(trace, [&] { tank.SetInkPercent(101, nullptr); }), ElementsAre("(char)m_iCurrentBmpID: 190"));
    EXPECT_THAT(Traced(trace, [&] { display.IsItWrongPosition(CGUIInkDisplay::Logical, CGUIInkDisplay::First); }),
                ElementsAre("(char)IsItWrongPosition() default = never error"));
    EXPECT_THAT(Traced(trace, [&] { display.GetDIMSValue(); }),
                ElementsAre("(char)CGUIInkDisplay::GetDIMSValue (dwRegVal) ...Called in BEW", "(DWORD)1"));
    EXPECT_THAT(Traced(trace, [&] { display.SetDIMSValue(7); }),
                ElementsAre("(char)CGUIInkDisplay::SetDIMSValue() ...In Install GUI", "(char)dwRegVal ==", "(DWORD)7"));
    EXPECT_THAT(Traced(trace, [&] { display.SetDIMSValue("Ink Trace Printer", 0); }),
                ElementsAre("(char)CGUIInkDisplay::SetDIMSValue()", "(char)dwRegVal ==", "(DWORD)0"));
    EXPECT_THAT(Traced(trace, [&] { display.GetDIMSValue("Ink Trace Printer"); }), IsEmpty());
    EXPECT_THAT(Traced(trace, [&] { display.LaunchInkOrderApp(); }),
                ElementsAre("(char)CreateProcess() Return Code", "(int)0"));
    EXPECT_THAT(Traced(trace, [&] { display.LaunchReorderInkApp(); }), IsEmpty());
    EXPECT_THAT(Traced(trace, [&] { display.LaunchReorderInkAppSilentMode(); }), IsEmpty());
}
