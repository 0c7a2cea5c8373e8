// The message box: reading order by the driver's language, and the library that names the language.
#include "settings/TvkMessageBox.h"
#include "support/MessageBoxes.h"
#include <afxwin.h>
#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;

const char* const LeftToRight = "text|caption|30|5";
const char* const RightToLeft = "text|caption|180030|5";

class TvkMessageBoxTest : public testing::Test
{
protected:
    /// What is shown, the library's own boxes included.
    static std::vector<std::string> Show()
    {
        const HINSTANCE before = AfxGetResourceHandle();
        EXPECT_EQ(IDRETRY, TvkMessageBox(reinterpret_cast<HWND>(5), "text", "caption", MB_ICONWARNING));
        EXPECT_EQ(before, AfxGetResourceHandle());
        return MessageBoxes::Shown();
    }

    const MessageBoxes m_boxes;
};
} // namespace

TEST_F(TvkMessageBoxTest, ReadsRightToLeftInExactlySpelledLanguages)
{
    const std::pair<const char*, const char*> languages[] = {{"hebrew", RightToLeft},  {"arabic", RightToLeft},
                                                             {"Arabic", LeftToRight},  {"HEBREW", LeftToRight},
                                                             {"english", LeftToRight}, {"", LeftToRight}};
    for (const auto& [language, box] : languages)
    {
        // The resource library that is loaded already comes first, here the settings library itself.
        const TestProduct product({{"IDO_JSW_RESDLL", TestProduct::LibraryName().c_str()}}, language);
        EXPECT_THAT(Show(), ElementsAre(box)) << language;
        TvkMessageBox(nullptr, nullptr, nullptr, MB_YESNO);
        EXPECT_THAT(MessageBoxes::Shown(), ElementsAre(box == RightToLeft ? "null|null|180004|0" : "null|null|4|0"));
    }
}

TEST_F(TvkMessageBoxTest, LoadsTheResourceLibraryBesideTheUtilitiesLibraryForTheCall)
{
    const TestLibrary resources("tvkboxres.dll", {}, "arabic");
    const auto missing = [](const std::string& path) { return path + "|ERROR|0|0"; };
    const auto expect = [](const char* utilities, const char* resourceLibrary, const std::vector<std::string>& boxes)
    {
        const TestProduct product(
            {{"IDO_JSW_RESDLL", "jobstatus.dll"}, {"IDO_UTIL_RESDLL", resourceLibrary}, {"IDO_UTIL_DLL", utilities}},
            "english");
        EXPECT_EQ(Show(), boxes);
        EXPECT_FALSE(GetModuleHandleA("tvkboxres.dll"));
    };
    expect(PRODUCT_PREFIX "util.dll", "tvkboxres.dll", {RightToLeft});
    // The language comes from the program's own strings then; it has none.
    expect(PRODUCT_PREFIX "util.dll", "nowhere.dll", {missing(TestFolder() + "nowhere.dll"), LeftToRight});
    // Without a folder the library is not searched for, though it lies beside the program.
    expect("notloaded.dll", "tvkboxres.dll", {missing("tvkboxres.dll"), LeftToRight});
}
