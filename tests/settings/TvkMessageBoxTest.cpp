// The message box: reading order by the driver's language, and the library that names the language.
#include "settings/TvkMessageBox.h"
#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include <afxwin.h>
#include <gmock/gmock.h>

namespace
{
constexpr unsigned int RightToLeft = 0x180000;

struct Box
{
    HWND owner;
    std::string text;
    std::string caption;
    unsigned int style;
    bool operator==(const Box&) const = default;
};
std::vector<Box> Boxes;

int WINAPI NoteBox(HWND owner, LPCSTR text, LPCSTR caption, UINT style)
{
    Boxes.push_back({owner, text ? text : "null", caption ? caption : "null", style});
    return IDRETRY;
}

/// Message boxes are noted in place of being shown.
class TvkMessageBoxTest : public testing::Test
{
protected:
    TvkMessageBoxTest() : m_patch(LibraryUnderTest(), "MessageBoxA", &NoteBox) { Boxes.clear(); }

    /// The style that a box asked for with MB_ICONWARNING gets.
    static unsigned int StyleShown()
    {
        Boxes.clear();
        EXPECT_EQ(IDRETRY, TvkMessageBox(nullptr, "text", "caption", MB_ICONWARNING));
        EXPECT_FALSE(Boxes.empty());
        return Boxes.empty() ? 0 : Boxes.back().style & ~MB_ICONWARNING;
    }

    IatPatch m_patch;
};

std::string UtilitiesName()
{
    return TestProduct::LibraryName().substr(0, 4) + "util.dll";
}
} // namespace

TEST_F(TvkMessageBoxTest, ReadsRightToLeftInExactlySpelledLanguages)
{
    const struct
    {
        const char* language;
        unsigned int added;
    } table[] = {{"hebrew", RightToLeft}, {"arabic", RightToLeft}, {"Arabic", 0},
                 {"HEBREW", 0},           {"english", 0},          {"", 0}};
    for (const auto& row : table)
    {
        SCOPED_TRACE(row.language);
        // The resource library that is loaded already comes first, here the settings library itself.
        const TestProduct product({{"IDO_JSW_RESDLL", TestProduct::LibraryName().c_str()}}, row.language);
        const HINSTANCE before = AfxGetResourceHandle();
        EXPECT_EQ(row.added, StyleShown());
        EXPECT_EQ(before, AfxGetResourceHandle());
        const Box expected{reinterpret_cast<HWND>(5), "text", "null", MB_YESNO | row.added};
        Boxes.clear();
        TvkMessageBox(expected.owner, "text", nullptr, MB_YESNO);
        EXPECT_THAT(Boxes, testing::ElementsAre(expected));
    }
}

TEST_F(TvkMessageBoxTest, LoadsTheResourceLibraryBesideTheUtilitiesLibraryForTheCall)
{
    const TestProduct product({{"IDO_JSW_RESDLL", "jobstatus.dll"},
                               {"IDO_UTIL_RESDLL", "tvkboxres.dll"},
                               {"IDO_UTIL_DLL", UtilitiesName().c_str()}},
                              "english");
    const TestLibrary resources("tvkboxres.dll", {}, "arabic");
    EXPECT_EQ(RightToLeft, StyleShown());
    EXPECT_EQ(1u, Boxes.size());
    EXPECT_FALSE(GetModuleHandleA("tvkboxres.dll"));
}

TEST_F(TvkMessageBoxTest, TellsOfAResourceLibraryThatCannotBeLoaded)
{
    const struct
    {
        std::string utilities;
        std::string path;
    } table[] = {{UtilitiesName(), TestFolder() + "nowhere.dll"}, {"notloaded.dll", "nowhere.dll"}};
    for (const auto& row : table)
    {
        const TestProduct product({{"IDO_JSW_RESDLL", "jobstatus.dll"},
                                   {"IDO_UTIL_RESDLL", "nowhere.dll"},
                                   {"IDO_UTIL_DLL", row.utilities.c_str()}},
                                  "hebrew");
        const HINSTANCE before = AfxGetResourceHandle();
        // The language comes from the program's own strings then; it has none.
        EXPECT_EQ(0u, StyleShown());
        EXPECT_EQ(before, AfxGetResourceHandle());
        EXPECT_THAT(Boxes, testing::ElementsAre(Box{nullptr, row.path, "ERROR", 0},
                                                Box{nullptr, "text", "caption", MB_ICONWARNING}));
    }
}
