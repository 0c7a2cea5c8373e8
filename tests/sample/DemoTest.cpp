// The demo host's commands, run as a user runs them, on the installed sample product.
#include "locale/OEMTeleIni.h"
#include "support/Probe.h"
#include "support/RegistryWorld.h"
#include <gmock/gmock.h>

namespace
{
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

/// The sample product, and whatever browser the machine had, for as long as a test runs.
class Demo : public testing::Test
{
protected:
    Demo()
    {
        EXPECT_EQ(RunProcess("productinstall.exe").exitCode, 0u);
        m_world.Claim(HKEY_CLASSES_ROOT, "TorvaneDemoPage\\shell\\open\\command");
        m_world.Keep(HKEY_CLASSES_ROOT, ".htm", "");
    }
    ~Demo() override { EXPECT_EQ(RunProcess("productinstall.exe --remove").exitCode, 0u); }

private:
    RegistryWorld m_world;
};
} // namespace

TEST_F(Demo, ReportsSupportNumbersPapersAndInk)
{
    OEMTeleIni().WriteMyLocaleKey("00000807");
    const ProcessResult report = RunProcess("demohost.exe report", 60000);
    EXPECT_EQ(report.exitCode, 0u) << report.output;
    for (const char* lines :
         {"Your country: Switzerland, support Worldwide support: www.torvane.example/support\n"
          "  Worldwide support - Switzerland\n  02 5550 0142 - Australia\n",
          "\nA4                            2404 x 3320 at (37, 38), 300 dpi    A4 borderless\nUS Letter ",
          "\nA4 borderless                 2479 x 3508 at (0, 0), 300 dpi      A4 borderless\nPhoto ",
          "\nPrinter LM460-0142-7, cartridges 82 and 50\n  ink 1: 62 %\n  ink 2: 35 %\n  ink 3: 71 %\n  ink 4: 8 %\n"})
        EXPECT_THAT(report.output, HasSubstr(lines));
}

TEST_F(Demo, PrintsTheAddressOfALink)
{
    const std::string supplies = "http://www.torvane.example/go?page=supplies&lang=0&printer=LM46&country=00000409";
    const struct
    {
        const char* arguments;
        unsigned long exitCode;
        std::string output; // its beginning
    } table[] = {
        {"home", 0, "http://www.torvane.example/\n"},
        {"supplies InkPercent2=7 InkPercent1=9", 0,
         supplies + "&os=wxp&from=jsw&partner=HARBOUR7&c1=52&l1=7&c2=32&l2=9\n"},
        {"nonsense", 2, "no link of the kind nonsense; the kinds are: home supplies "},
        {"supplies Ink=7", 2, "not a field of the ink report and a number: Ink=7\n"},
        {"", 2, "demohost report "},
    };
    for (const auto& row : table)
    {
        const ProcessResult result = RunProcess(std::string("demohost.exe link ") + row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << row.arguments;
        EXPECT_THAT(result.output, StartsWith(row.output));
    }
}

TEST_F(Demo, FollowsAClickToTheBrowserAndTheRecorder)
{
    const std::string supplies = RunProcess("demohost.exe link supplies").output;
    for (int run = 0; run < 2; ++run) // the second run must not show what the first one left
    {
        const ProcessResult journey = RunProcess("demohost.exe journey", 60000);
        EXPECT_EQ(journey.exitCode, 0u);
        const size_t kept = journey.output.find("recordingbrowser.exe\"  " + supplies + "The usage recorder kept:\n  ");
        ASSERT_NE(kept, std::string::npos) << journey.output;
        const std::string rest = journey.output.substr(journey.output.find("kept:\n", kept) + 6);
        EXPECT_NE(rest.find("  Torvane Larkmoor 460  item 0x6001: 1, 1 times\nThe trace"), std::string::npos) << rest;
        EXPECT_EQ(rest.find("The trace"), rest.find('\n') + 1) << "more than one record";
        EXPECT_THAT(rest, HasSubstr("  CGUIUrlLink::ConstructStandardURL\n  " + supplies));
    }
    ASSERT_TRUE(DeleteFileA("C:\\windows\\system32\\spool\\drivers\\x64\\3\\" PRODUCT_PREFIX "port.dll"));
    const ProcessResult unrecorded = RunProcess("demohost.exe journey", 60000);
    EXPECT_EQ(unrecorded.exitCode, 1u);
    EXPECT_THAT(unrecorded.output, AllOf(HasSubstr("kept:\n  nothing\n"), HasSubstr("The visit was not recorded.\n")));
}
