// The demo's dialogs on the installed sample product, worked from outside as a user works them.
#include "dialogs/DialogIds.h"
#include "host/resource.h"
#include "support/Probe.h"
#include "support/RegistryWorld.h"
#include "support/Screen.h"
#include "system/internal/Handle.h"
#include <future>
#include <gmock/gmock.h>

namespace
{
/// The dialog that a window owns, once there is one; without a window, the one that nobody owns.
HWND OwnedBy(HWND owner)
{
    HWND dialog = nullptr;
    const auto next = [&dialog] { return dialog = FindWindowExA(nullptr, dialog, "#32770", nullptr); };
    const bool found = Until([&] { return next() && GetWindow(dialog, GW_OWNER) == owner && IsWindowVisible(dialog); });
    return found ? dialog : nullptr;
}

std::string Text(HWND window, int control)
{
    char text[MAX_PATH] = "";
    SendDlgItemMessageA(window, control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}
} // namespace

TEST(DemoDialogs, BelongToTheWindowAndShowTheInstalledProduct)
{
    EXPECT_EQ(RunProcess("productinstall.exe").exitCode, 0u);
    auto demo = std::async(std::launch::async, [] { return RunProcess("demohost.exe window", 60000); });
    const HWND window = OwnedBy(nullptr);
    const auto open = [window](WPARAM button)
    {
        PostMessageA(window, WM_COMMAND, button, 0);
        const HWND dialog = OwnedBy(window);
        EXPECT_TRUE(dialog && !IsWindowEnabled(window)) << "the window cannot be used now";
        return dialog;
    };
    const auto accept = [window](HWND dialog)
    {
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(Until([=] { return !IsWindow(dialog) && IsWindowEnabled(window); }));
    };
    const HWND about = open(IDC_ABOUT);
    std::string shown = Text(about, IDC_VERSION_PRODUCT);
    for (int row = 0; row < 6; ++row)
        shown += ", " + Text(about, IDC_VERSION_ROW_VALUE + row);
    EXPECT_EQ(shown, "1.4.0.2, 1.4.0.7, 2.1.0.3, 1.4.0.7, 3.0.1.12, 1.4.0.5, 1.0.0.0");
    accept(about);

    const std::string driver = "C:\\windows\\system32\\spool\\drivers\\x64\\3\\" PRODUCT_PREFIX;
    const std::string added = "C:\\windows\\Torvane Skins\\" PRODUCT_PREFIX;
    const HWND options = open(IDC_OPTIONS), next = GetDlgItem(options, IDC_JSW_SKIN_NEXT);
    for (const std::string& skin :
         {driver + "skin1.dll", driver + "skin2.dll", added + "more0.dll", added + "more1.dll"})
    {
        EXPECT_TRUE(IsWindowEnabled(next)) << skin;
        PostMessageA(next, BM_CLICK, 0, 0);
        const tvk::Module library(LoadLibraryExA(skin.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
        if (FindResourceA(library.Get(), MAKEINTRESOURCEA(IDB_JSW_SKIN_PREVIEW), MAKEINTRESOURCEA(2)))
            continue;
        const HWND box = OwnedBy(options);
        EXPECT_EQ(Text(box, 0xFFFF), driver + "skin2.dll") << "the one that is broken";
        PostMessageA(box, WM_COMMAND, IDOK, 0);
    }
    accept(options);
    const char* const key = "SOFTWARE\\Torvane\\Inkjet\\IJPrtSettings\\Torvane Larkmoor 460\\GUI\\JSW";
    EXPECT_STREQ(RegistryWorld::Get(HKEY_LOCAL_MACHINE, key, "JSW Skin").value_or("").c_str(),
                 PRODUCT_PREFIX "more1.dll");
    PostMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(demo.get().exitCode, 0u);
    EXPECT_EQ(RunProcess("productinstall.exe --remove").exitCode, 0u);
}
