// Marked dialogs found from this and from another process; the system's word on device installations.
#include "system/WindowLookup.h"
#include "IatPatch.h"
#include "Probe.h"
#include "TestProduct.h"
#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <tuple>

namespace
{
const char* const Title = "A dialog of the window look-up's test";

HWND MakeWindow(const char* windowClass, const char* title = Title)
{
    return CreateWindowExA(0, windowClass, title, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
}

PROBE(FindDialog)
{
    std::printf("%llu", reinterpret_cast<unsigned long long>(FindDlgWindow(Title, std::strtoul(argv[0], nullptr, 10))));
    return argc != 1;
}

TEST(DialogWindows, AreFoundByTitleAndMark)
{
    const HWND first = MakeWindow("#32770"), second = MakeWindow("#32770"), other = MakeWindow("#32770", "Another"),
               notDialog = MakeWindow("STATIC");
    EXPECT_EQ(SetUserDefinedData(first, 1), 1);
    EXPECT_EQ(SetUserDefinedData(second, 0xFFFFFFFF), 1);
    EXPECT_EQ(SetUserDefinedData(other, 2), 1);
    EXPECT_EQ(SetUserDefinedData(notDialog, 3), 1);
    const std::tuple<const char*, unsigned long, HWND> cases[] = {
        {Title, 1, first},   {Title, 0xFFFFFFFF, second},   {"Another", 2, other}, {"ANOTHER", 2, other},
        {Title, 2, nullptr}, {"Another", 1, nullptr},       {Title, 3, nullptr},   {Title, 0, nullptr},
        {nullptr, 2, other}, {"no such title", 0, nullptr},
    };
    for (const auto& [title, data, expected] : cases)
    {
        EXPECT_EQ(FindDlgWindow(title, data), expected) << (title ? title : "any") << ' ' << data;
        if (title == Title)
        {
            EXPECT_EQ(RunProbeProcess("FindDialog", {std::to_string(data)}).output,
                      std::to_string(reinterpret_cast<unsigned long long>(expected)));
        }
    }
    EXPECT_EQ(SetUserDefinedData(first, 0), 1);
    EXPECT_EQ(FindDlgWindow(Title, 0), first) << "unmarked";
    EXPECT_EQ(SetUserDefinedData(first, 7), 1);
    EXPECT_EQ(FindDlgWindow(Title, 7), first) << "marked anew";
    for (const HWND window : {first, second, other, notDialog})
        DestroyWindow(window);
    EXPECT_EQ(FindDlgWindow(Title, 7), nullptr);
    EXPECT_EQ(SetUserDefinedData(first, 7), 0);
    EXPECT_EQ(SetUserDefinedData(first, 0), 0);
}

DWORD g_answer, g_waited;
bool g_found;
FARPROC WINAPI FindAnswer(HMODULE, LPCSTR)
{
    const auto answer = +[](DWORD milliseconds) { return g_waited = milliseconds, g_answer; };
    return g_found ? reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(answer)) : nullptr;
}

TEST(DeviceInstallation, IsInProgressWhenTheSystemSaysSo)
{
    EXPECT_EQ(IsDeviceInstallInProgress(), 0);
    const IatPatch patch(LibraryUnderTest(), "GetProcAddress", FindAnswer);
    const std::tuple<bool, DWORD, int> cases[] = {
        {true, WAIT_TIMEOUT, 1}, {true, WAIT_OBJECT_0, 0}, {true, WAIT_FAILED, 0}, {false, WAIT_TIMEOUT, 0}};
    for (const auto& [found, answer, expected] : cases)
    {
        g_found = found;
        g_answer = answer;
        g_waited = 0;
        EXPECT_EQ(IsDeviceInstallInProgress(), expected) << answer;
        EXPECT_EQ(g_waited, 0u) << "the caller does not wait";
    }
}
} // namespace
