// The colour picker and its pop-up as a user meets them: real windows, messages and input, pixels read from the screen.
#include "controls/CColourPicker.h"
#include "controls/CColourPopup.h"
#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <commctrl.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace
{
constexpr COLORREF Automatic = 0xFF000000;
constexpr COLORREF Outside = RGB(1, 2, 3); // in no cell
constexpr int Default = -3, Custom = -2;
constexpr int PickerId = 7;

struct Cell
{
    int red, green, blue;
    const char* name;

    COLORREF Colour() const { return RGB(red, green, blue); }
};
const Cell Cells[] = {
    {0, 0, 0, "Black"},
    {165, 42, 0, "Brown"},
    {0, 64, 64, "Dark Olive Green"},
    {0, 85, 0, "Dark Green"},
    {0, 0, 94, "Dark Teal"},
    {0, 0, 139, "Dark blue"},
    {75, 0, 130, "Indigo"},
    {40, 40, 40, "Dark grey"},
    {139, 0, 0, "Dark red"},
    {255, 104, 32, "Orange"},
    {139, 139, 0, "Dark yellow"},
    {0, 147, 0, "Green"},
    {56, 142, 142, "Teal"},
    {0, 0, 255, "Blue"},
    {123, 123, 192, "Blue-grey"},
    {102, 102, 102, "Grey - 40"},
    {255, 0, 0, "Red"},
    {255, 173, 91, "Light orange"},
    {50, 205, 50, "Lime"},
    {60, 179, 113, "Sea green"},
    {127, 255, 212, "Aqua"},
    {125, 158, 192, "Light blue"},
    {128, 0, 128, "Violet"},
    {127, 127, 127, "Grey - 50"},
    {255, 192, 203, "Pink"},
    {255, 215, 0, "Gold"},
    {255, 255, 0, "Yellow"},
    {0, 255, 0, "Bright green"},
    {64, 224, 208, "Turquoise"},
    {192, 255, 255, "Skyblue"},
    {72, 0, 72, "Plum"},
    {192, 192, 192, "Light grey"},
    {255, 228, 225, "Rose"},
    {210, 180, 140, "Tan"},
    {255, 255, 224, "Light yellow"},
    {152, 251, 152, "Pale green "},
    {175, 238, 238, "Pale turquoise"},
    {104, 131, 139, "Pale blue"},
    {230, 230, 250, "Lavender"},
    {255, 255, 255, "White"},
};
static_assert(std::size(Cells) == 40);

struct Notification
{
    UINT message;
    COLORREF colour;
    int id;

    bool operator==(const Notification&) const = default;
};
using Notifications = std::vector<Notification>;
std::ostream& operator<<(std::ostream& out, const Notification& notification)
{
    return out << "WM_USER+" << notification.message - WM_USER << " colour 0x" << std::hex << notification.colour
               << std::dec << " id " << notification.id;
}
Notification Change(COLORREF colour)
{
    return {WM_USER + 1001, colour, PickerId};
}
Notification Opened(COLORREF colour)
{
    return {WM_USER + 1002, colour, PickerId};
}
Notification Closed(COLORREF colour)
{
    return {WM_USER + 1003, colour, PickerId};
}
Notification Ok(COLORREF colour)
{
    return {WM_USER + 1004, colour, PickerId};
}
Notification Cancelled(COLORREF colour)
{
    return {WM_USER + 1005, colour, PickerId};
}

/// Handles the messages that are there, and those that real input brings within a moment.
void Pump(DWORD milliseconds = 0)
{
    const DWORD end = GetTickCount() + milliseconds;
    do
    {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        if (milliseconds)
            Sleep(5);
    } while (GetTickCount() < end);
}

/// A window with a picker that writes down what the picker tells it.
class Host : public CWnd
{
  public:
    explicit Host(DWORD exStyle = 0, CPoint place = CPoint(300, 200))
    {
        EXPECT_TRUE(CreateEx(exStyle, AfxRegisterWndClass(0, nullptr, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1)),
                             "Host", WS_POPUP | WS_VISIBLE, place.x, place.y, 200, 100, nullptr, nullptr));
        EXPECT_TRUE(picker.Create("", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(20, 20, 100, 44), this, PickerId));
        UpdateWindow();
        Pump();
    }
    ~Host() override { DestroyWindow(); }

    /// Opens the pop-up; its window.
    HWND Open()
    {
        heard.clear();
        picker.SendMessage(BM_CLICK);
        return ::GetCapture();
    }

    CColourPicker picker;
    Notifications heard;
    std::function<void(UINT message)> whenTold = [](UINT) {};

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message > WM_USER + 1000 && message <= WM_USER + 1005)
        {
            heard.push_back({message, static_cast<COLORREF>(wParam), static_cast<int>(lParam)});
            whenTold(message);
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

/// The client rectangle of a cell of the given pop-up, worked out from the pop-up's size.
CRect CellRect(HWND popup, int index, bool hasDefault = true, bool hasCustom = true)
{
    RECT client;
    GetClientRect(popup, &client);
    const int margin = GetSystemMetrics(SM_CXEDGE), grid = 5 * 18, boxes = hasDefault + hasCustom;
    const int box = boxes ? (client.bottom - 2 * margin - grid) / boxes : 0; // with its margin
    const int top = margin + (hasDefault ? box : 0);
    if (index == Default)
        return {margin, margin, client.right - margin, box};
    if (index == Custom)
        return {margin, top + grid + margin, client.right - margin, client.bottom - margin};
    return {CPoint(margin + 18 * (index % 8), top + 18 * (index / 8)), CSize(18, 18)};
}

void Mouse(HWND window, UINT message, POINT point)
{
    SendMessageA(window, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

/// A pixel of a window's client area, as it has been drawn.
COLORREF Pixel(HWND window, POINT client)
{
    const HDC dc = GetDC(window);
    const COLORREF pixel = GetPixel(dc, client.x, client.y);
    ReleaseDC(window, dc);
    return pixel;
}

TEST(ColourPickerTest, EveryCellIsDrawnHoveredAndChosen)
{
    for (const DWORD exStyle : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        Host host(exStyle);
        host.picker.SetColour(Outside);
        for (int index = 0; index < 40; ++index)
        {
            const COLORREF colour = Cells[index].Colour(), before = host.picker.GetColour();
            const HWND popup = host.Open();
            UpdateWindow(popup);
            const CPoint centre = CellRect(popup, index).CenterPoint();
            EXPECT_EQ(Pixel(popup, centre), colour) << index;
            const CPoint frame(centre.x, centre.y - 9); // the middle of its upper edge
            const COLORREF plainFrame = Pixel(popup, frame);
            Mouse(popup, WM_MOUSEMOVE, centre);
            EXPECT_NE(Pixel(popup, frame), plainFrame) << index << " does not show that it is selected";
            EXPECT_EQ(host.picker.GetColour(), before) << "not tracked";
            Mouse(popup, WM_LBUTTONDOWN, centre);
            Mouse(popup, WM_LBUTTONUP, centre);
            EXPECT_FALSE(IsWindow(popup));
            EXPECT_EQ(host.heard, (Notifications{Opened(before), Change(colour), Closed(colour), Ok(colour)})) << index;
            EXPECT_EQ(host.picker.GetColour(), colour);
        }
    }
}

// Starting from a cell (or the automatic colour, or a colour of no cell), the keys L R U D, and the cells that they
// lead to, one after the other.
struct KeyCase
{
    bool hasDefault, hasCustom;
    COLORREF start;
    const char* keys;
    std::vector<int> cells;
    bool mirrored = false;
};

TEST(ColourPickerTest, ArrowKeysLeadThroughTheGridAndTheBoxes)
{
    const auto cell = [](int index) { return Cells[index].Colour(); };
    const KeyCase cases[] = {
        {true, true, cell(9), "RDLU", {10, 18, 17, 9}},
        {true, true, cell(7), "RL", {8, 7}},
        {true, true, cell(0), "LRUD", {Default, 0, Default, 0}},
        {true, true, cell(5), "U", {Default}},
        {false, true, cell(0), "LR", {Custom, 0}},
        {false, true, cell(3), "U", {Custom}},
        {false, false, cell(0), "L", {39}},
        {false, false, cell(6), "U", {39}},
        {true, false, cell(1), "U", {Default}},
        {true, true, cell(39), "RR", {Custom, Default}},
        {true, true, cell(33), "DL", {Custom, 39}},
        {true, false, cell(39), "R", {Default}},
        {true, false, cell(32), "D", {Default}},
        {false, false, cell(39), "RDL", {38}},
        {true, true, Automatic, "R", {0}},
        {true, true, Automatic, "LU", {Custom, 39}},
        {true, false, Automatic, "L", {39}},
        {false, true, Automatic, "R", {0}}, // no box for it: the custom one
        {true, true, Outside, "R", {Default}},
        {false, true, Outside, "D", {0}},
        {false, false, Outside, "R", {0}},
        {false, false, Outside, "L", {39}},
        {true, true, cell(0), "RL", {Default, 0}, true},
        {true, true, cell(7), "LDR", {8, 16, 15}, true},
    };
    for (const KeyCase& row : cases)
    {
        SCOPED_TRACE(std::string(row.keys) + " from " + std::to_string(row.start) + (row.hasDefault ? " D" : "") +
                     (row.hasCustom ? " C" : ""));
        Host host(row.mirrored ? WS_EX_LAYOUTRTL : 0);
        host.picker.SetDefaultText(row.hasDefault ? "Automatic" : "");
        host.picker.SetCustomText(row.hasCustom ? "More..." : nullptr);
        host.picker.SetColour(row.start);
        const HWND popup = host.Open();
        for (const char* key = row.keys; *key; ++key)
            SendMessageA(popup, WM_KEYDOWN,
                         *key == 'L'   ? VK_LEFT
                         : *key == 'R' ? VK_RIGHT
                         : *key == 'U' ? VK_UP
                                       : VK_DOWN,
                         0);
        Notifications expected = {Opened(row.start)};
        for (const int index : row.cells)
            expected.push_back(Change(index == Default ? Automatic : index == Custom ? row.start : cell(index)));
        EXPECT_EQ(host.heard, expected);
        SendMessageA(popup, WM_KEYDOWN, VK_ESCAPE, 0);
        expected.push_back(Closed(row.start));
        expected.push_back(Cancelled(row.start));
        EXPECT_EQ(host.heard, expected);
        EXPECT_EQ(host.picker.GetColour(), row.start);
        EXPECT_FALSE(IsWindow(popup));
    }
}

TEST(ColourPickerTest, EndsOnceWhicheverWay)
{
    const COLORREF start = Cells[4].Colour(), other = Cells[5].Colour();
    const Notifications chosen = {Opened(start), Closed(start), Ok(start)};
    const Notifications cancelled = {Opened(start), Closed(start), Cancelled(start)};
    const Notifications automatic = {Opened(start), Change(Automatic), Closed(Automatic), Ok(Automatic)};
    const Notifications changedThenCancelled = {Opened(start), Change(other), Closed(start), Cancelled(start)};
    const auto key = [](HWND popup, int code) { SendMessageA(popup, WM_KEYDOWN, code, 0); };
    const struct
    {
        const char* what;
        std::function<void(Host&, HWND popup)> end;
        const Notifications& expected;
    } ends[] = {
        {"Return", [&](Host&, HWND popup) { key(popup, VK_RETURN); }, chosen},
        {"Space", [&](Host&, HWND popup) { key(popup, VK_SPACE); }, chosen},
        {"the automatic box",
         [](Host&, HWND popup) {
             Mouse(popup, WM_LBUTTONUP, {60, 10});
         },
         automatic},
        {"Escape", [&](Host&, HWND popup) { key(popup, VK_ESCAPE); }, cancelled},
        {"Escape after a move",
         [&](Host&, HWND popup)
         {
             key(popup, VK_RIGHT);
             key(popup, VK_ESCAPE);
         },
         changedThenCancelled},
        {"a click outside",
         [](Host&, HWND popup) {
             Mouse(popup, WM_LBUTTONUP, {-5, 30});
         },
         cancelled},
        {"WM_CLOSE", [](Host&, HWND popup) { SendMessageA(popup, WM_CLOSE, 0, 0); }, cancelled},
        {"lost focus", [](Host& host, HWND) { host.SetFocus(); }, cancelled},
        {"lost capture", [](Host&, HWND) { ReleaseCapture(); }, cancelled},
        {"destroyed by others", [](Host&, HWND popup) { DestroyWindow(popup); }, cancelled},
        {"the picker dies", [](Host& host, HWND) { host.picker.DestroyWindow(); }, cancelled},
        {"the parent dies", [](Host& host, HWND) { host.DestroyWindow(); }, cancelled},
    };
    for (const auto& [what, end, expected] : ends)
    {
        SCOPED_TRACE(what);
        Host host;
        host.picker.SetColour(start);
        host.picker.SetTrackSelection();
        const HWND popup = host.Open();
        ASSERT_TRUE(IsWindow(popup));
        end(host, popup);
        Pump();
        EXPECT_EQ(host.heard, expected);
        EXPECT_FALSE(IsWindow(popup));
        EXPECT_FALSE(::GetCapture());
        EXPECT_EQ(host.picker.GetColour(), expected.back().colour);
    }
}

TEST(ColourPickerTest, WhatIsHeldDownOrMissesACellEndsNothing)
{
    Host host;
    const HWND popup = host.Open();
    SendMessageA(popup, WM_KEYDOWN, VK_SPACE, 0x40000001); // the key that opened the pop-up repeats
    Mouse(popup, WM_LBUTTONUP, {0, 0});                    // on the edge
    host.picker.SendMessage(BM_CLICK);
    EXPECT_EQ(host.heard, Notifications{Opened(0xFFFFFF)}) << "one pop-up only";
    EXPECT_TRUE(IsWindow(popup));
}

TEST(ColourPickerTest, TheHostMayDestroyEverythingWhenItIsTold)
{
    for (UINT message = WM_USER + 1001; message <= WM_USER + 1004; ++message)
    {
        Host host;
        host.whenTold = [&](UINT told)
        {
            if (told == message)
                host.DestroyWindow();
        };
        const HWND popup = host.Open();
        if (IsWindow(popup))
            Mouse(popup, WM_LBUTTONUP, CellRect(popup, 12).CenterPoint());
        Pump();
        EXPECT_FALSE(IsWindow(popup)) << message;
        EXPECT_FALSE(host.m_hWnd) << message;
    }
}

TEST(ColourPickerTest, ModeSaysWhichColourIsEditedAndTrackingShowsIt)
{
    Host host;
    host.picker.SetBkColour(Outside);
    host.picker.SetTextColour(Cells[2].Colour());
    for (const UINT mode : {1u, 0u, 2u})
        for (const BOOL track : {FALSE, TRUE})
        {
            host.picker.SetSelectionMode(mode);
            host.picker.SetTrackSelection(track);
            const auto edited = [&] { return mode == 1 ? host.picker.GetTextColour() : host.picker.GetBkColour(); };
            const COLORREF before = edited();
            const COLORREF untouched = mode == 1 ? host.picker.GetBkColour() : host.picker.GetTextColour();
            const HWND popup = host.Open();
            EXPECT_EQ(host.heard.back(), Opened(before));
            const CPoint centre = CellRect(popup, 8 + 2 * mode + track).CenterPoint();
            Mouse(popup, WM_MOUSEMOVE, centre);
            EXPECT_EQ(edited(), track ? Cells[8 + 2 * mode + track].Colour() : before);
            Mouse(popup, WM_LBUTTONUP, centre);
            EXPECT_EQ(edited(), Cells[8 + 2 * mode + track].Colour());
            EXPECT_EQ(mode == 1 ? host.picker.GetBkColour() : host.picker.GetTextColour(), untouched);
        }
    EXPECT_EQ(host.picker.GetColour(), host.picker.GetBkColour());
    EXPECT_EQ(host.picker.GetSelectionMode(), 2u);
    EXPECT_TRUE(host.picker.GetTrackSelection());
}

// The colour dialog is answered from a timer: its own message loop runs it.
bool AnswerOk;
HWND FoundDialog;

void CALLBACK AnswerDialog(HWND, UINT, UINT_PTR timer, DWORD)
{
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM) -> BOOL
        {
            char name[32] = "";
            GetClassNameA(window, name, sizeof name);
            if (std::string(name) == "#32770")
                FoundDialog = window;
            return TRUE;
        },
        0);
    if (!FoundDialog)
        return;
    KillTimer(nullptr, timer);
    constexpr int red = 706, green = 707, blue = 708; // the dialog's number fields
    SetDlgItemInt(FoundDialog, red, 11, FALSE);
    SetDlgItemInt(FoundDialog, green, 22, FALSE);
    SetDlgItemInt(FoundDialog, blue, 33, FALSE);
    PostMessageA(FoundDialog, WM_COMMAND, AnswerOk ? IDOK : IDCANCEL, 0);
}

TEST(ColourPickerTest, TheCustomBoxAsksTheColourDialog)
{
    for (const COLORREF start : {Outside, Cells[3].Colour(), Automatic})
        for (const bool ok : {true, false})
        {
            Host host;
            host.picker.SetColour(start);
            const HWND popup = host.Open();
            AnswerOk = ok;
            FoundDialog = nullptr;
            SetTimer(nullptr, 0, 20, AnswerDialog);
            Mouse(popup, WM_LBUTTONUP, CellRect(popup, Custom).CenterPoint());
            EXPECT_TRUE(FoundDialog);
            Notifications expected = {Opened(start)};
            if (start != Outside) // the box is selected already
                expected.push_back(Change(start));
            const COLORREF end = ok ? RGB(11, 22, 33) : start;
            expected.push_back(Closed(end));
            expected.push_back(ok ? Ok(end) : Cancelled(end));
            EXPECT_EQ(host.heard, expected) << start << ok;
            EXPECT_EQ(host.picker.GetColour(), end);
            EXPECT_FALSE(IsWindow(popup));
        }
}

TEST(ColourPickerTest, TheParentMayDieBehindTheColourDialog)
{
    static Host* dying;
    Host host;
    dying = &host;
    host.picker.SetColour(Outside);
    const HWND popup = host.Open();
    SetTimer(nullptr, 0, 20,
             [](HWND, UINT, UINT_PTR timer, DWORD)
             {
                 KillTimer(nullptr, timer);
                 dying->DestroyWindow();
             });
    SendMessageA(popup, WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_FALSE(IsWindow(popup));
    EXPECT_FALSE(host.m_hWnd);
    EXPECT_EQ(host.heard, (Notifications{Opened(Outside), Closed(Outside), Cancelled(Outside)}));
}

int WINAPI WideEdges(int index)
{
    return index == SM_CXEDGE ? 6 : GetSystemMetrics(index);
}

TEST(ColourPickerTest, IsLaidOutByItsTextsAndMargins)
{
    const int margin = GetSystemMetrics(SM_CXEDGE);
    Host host;
    const auto size = [&](const char* defaultText, const char* customText)
    {
        host.picker.SetDefaultText(defaultText);
        host.picker.SetCustomText(customText);
        const HWND popup = host.Open();
        CRect rect;
        GetWindowRect(popup, rect);
        EXPECT_EQ(GetClassLongPtrA(popup, GCL_STYLE), CS_VREDRAW | CS_HREDRAW | CS_CLASSDC | CS_SAVEBITS);
        SendMessageA(popup, WM_CLOSE, 0, 0);
        return rect.Size();
    };
    const CSize bare = size("", nullptr), oneBox = size("A", ""), otherBox = size("", "B"), both = size("A", "B");
    EXPECT_EQ(bare, CSize(8 * 18 + 2 * margin, 5 * 18 + 2 * margin));
    EXPECT_EQ(oneBox, otherBox);
    EXPECT_EQ(both.cy - bare.cy, 2 * (oneBox.cy - bare.cy));

    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    CFont font;
    font.CreateFontIndirect(&metrics.lfMessageFont);
    CSize text;
    const std::string longText(60, 'W');
    {
        CClientDC dc(&host);
        CFont* old = dc.SelectObject(&font);
        text = dc.GetTextExtent(longText.c_str());
        dc.SelectObject(old);
    }
    EXPECT_EQ(size("A", longText.c_str()).cx, text.cx + 2 * margin);
    EXPECT_GE(oneBox.cy - bare.cy, text.cy + margin);

    const IatPatch edges(LibraryUnderTest(), "GetSystemMetrics", WideEdges);
    EXPECT_EQ(size("", ""), CSize(8 * 19 + 12, 5 * 19 + 12)) << "no room for a swatch in 18 pixels";
}

TEST(ColourPickerTest, StaysOnTheScreen)
{
    const int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
    for (const CPoint place : {CPoint(300, 200), CPoint(width - 110, 200), CPoint(-90, 200), CPoint(300, height - 60)})
    {
        Host host(0, place);
        CRect popup, picker;
        GetWindowRect(host.Open(), popup);
        host.picker.GetWindowRect(picker);
        const int left = std::max(0, std::min<int>(picker.left, width - popup.Width()));
        const int top = picker.bottom + popup.Height() > height ? picker.top - popup.Height() : picker.bottom;
        EXPECT_EQ(popup.TopLeft(), CPoint(left, top)) << place.x << ' ' << place.y;
    }
}

TEST(ColourPickerTest, ToolTipsNameTheColours)
{
    Host host;
    const HWND popup = host.Open();
    static HWND tips;
    tips = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM owner) -> BOOL
        {
            char name[32] = "";
            GetClassNameA(window, name, sizeof name);
            if (std::string(name) == TOOLTIPS_CLASSA && GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(owner))
                tips = window;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(popup));
    ASSERT_TRUE(tips);
    ASSERT_EQ(SendMessageA(tips, TTM_GETTOOLCOUNT, 0, 0), 40);
    for (int index = 0; index < 40; ++index)
    {
        char text[80] = "";
        TTTOOLINFOA tool = {};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        tool.lpszText = text;
        EXPECT_TRUE(SendMessageA(tips, TTM_ENUMTOOLSA, index, reinterpret_cast<LPARAM>(&tool)));
        EXPECT_STREQ(text, Cells[index].name);
        EXPECT_EQ(CRect(tool.rect), CellRect(popup, index)) << index;
    }
    // The pointer rests on a cell: its name appears.
    const CPoint centre = CellRect(popup, 9).CenterPoint();
    POINT screen = centre;
    ClientToScreen(popup, &screen);
    SetCursorPos(screen.x, screen.y);
    Pump(1500);
    EXPECT_TRUE(IsWindowVisible(tips));
}

TEST(ColourPickerTest, WorksByRealInput)
{
    for (const DWORD exStyle : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        Host host(exStyle);
        host.SetForegroundWindow();
        const auto click = [](HWND window, POINT point)
        {
            ClientToScreen(window, &point);
            SetCursorPos(point.x, point.y);
            mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
            Pump(100);
        };
        const auto press = [](BYTE key)
        {
            keybd_event(key, 0, 0, 0);
            keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
            Pump(100);
        };
        click(host.picker, {10, 10});
        HWND popup = ::GetCapture();
        ASSERT_TRUE(IsWindow(popup));
        click(popup, CellRect(popup, 26).CenterPoint());
        EXPECT_EQ(host.picker.GetColour(), Cells[26].Colour());
        EXPECT_EQ(::GetFocus(), host.picker.m_hWnd) << "the keyboard goes back to the button";
        press(VK_SPACE);
        popup = ::GetCapture();
        ASSERT_TRUE(IsWindow(popup));
        press(VK_DOWN);
        press(exStyle ? VK_LEFT : VK_RIGHT);
        press(VK_RETURN);
        EXPECT_EQ(host.picker.GetColour(), Cells[35].Colour());
        press(VK_SPACE);
        click(host, {5, 5});
        EXPECT_EQ(host.heard.back(), Cancelled(Cells[35].Colour()));
        EXPECT_FALSE(::GetCapture());
    }
}

/// The relative luminance of a colour, from which contrasts are told.
double Luminance(COLORREF colour)
{
    const auto linear = [](int value)
    { return value <= 10 ? value / 255.0 / 12.92 : std::pow((value / 255.0 + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) + 0.0722 * linear(GetBValue(colour));
}

TEST(ColourPickerTest, TheFaceShowsTheColour)
{
    Host host;
    const COLORREF red = RGB(255, 0, 0), blue = RGB(0, 0, 255), face = GetSysColor(COLOR_BTNFACE);
    const auto shown = [&]
    {
        host.picker.RedrawWindow();
        return Pixel(host.picker, {20, 8});
    };
    host.picker.SetBkColour(red);
    EXPECT_EQ(shown(), red);
    host.picker.SetTextColour(blue);
    EXPECT_EQ(shown(), red);
    host.picker.SetSelectionMode(1);
    EXPECT_EQ(shown(), blue) << "the colour that is edited";
    host.picker.SetWindowText(".");
    EXPECT_EQ(shown(), red) << "the text shows the text colour";
    host.picker.EnableWindow(FALSE);
    EXPECT_EQ(shown(), RGB((255 + GetRValue(face)) / 2, GetGValue(face) / 2, GetBValue(face) / 2));
    host.picker.SetWindowText("MMM");
    for (const COLORREF field : {RGB(0, 0, 0), RGB(31, 95, 168), red, RGB(128, 128, 128), RGB(255, 255, 255)})
    {
        host.picker.SetBkColour(field);
        host.picker.RedrawWindow();
        const double paper = Luminance(Pixel(host.picker, {8, 7}));
        double best = 1;
        for (int x = 8; x < 56; ++x)
            for (int y = 7; y < 17; ++y)
            {
                const double ink = Luminance(Pixel(host.picker, {x, y}));
                best = std::max(best, (std::max(ink, paper) + 0.05) / (std::min(ink, paper) + 0.05));
            }
        EXPECT_GE(best, 3) << "a disabled text can still be read on " << std::hex << field;
    }
    host.picker.SetWindowText(".");
    host.picker.EnableWindow(TRUE);
    host.picker.SetBkColour(Automatic);
    EXPECT_EQ(shown(), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetWindowLongPtrA(host.picker, GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
}

HWND WINAPI NoWindow(DWORD, LPCSTR, LPCSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE, LPVOID)
{
    return nullptr;
}

TEST(ColourPickerTest, WithoutAWindowNothingOpens)
{
    Host host;
    {
        const IatPatch refuse(GetModuleHandleA("tvkframe.dll"), "CreateWindowExA", NoWindow);
        EXPECT_FALSE(host.Open());
        EXPECT_EQ(host.heard, Notifications{});
    }
    EXPECT_TRUE(host.Open());
    EXPECT_EQ(host.heard, Notifications{Opened(0xFFFFFF)});
}

struct Objects
{
    int drawing = 0, windows = 0;

    bool operator==(const Objects&) const = default;
};

Objects CountObjects()
{
    Objects count;
    for (ULONG_PTR handle = 1; handle <= 0xFFFF; ++handle)
    {
        count.drawing += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
        count.windows += IsWindow(reinterpret_cast<HWND>(handle)) != 0;
    }
    return count;
}

TEST(ColourPickerTest, AThousandPopUpsLeaveNothingBehind)
{
    Host host;
    Objects afterTen;
    for (int round = 0; round < 1000; ++round)
    {
        const HWND popup = host.Open();
        UpdateWindow(popup);
        const CPoint centre = CellRect(popup, round % 40).CenterPoint();
        Mouse(popup, WM_MOUSEMOVE, centre);
        if (round % 2)
            Mouse(popup, WM_LBUTTONUP, centre);
        else
            SendMessageA(popup, WM_KEYDOWN, VK_ESCAPE, 0);
        Pump();
        if (round == 9)
            afterTen = CountObjects();
    }
    const Objects afterAThousand = CountObjects();
    EXPECT_EQ(afterAThousand.drawing, afterTen.drawing);
    EXPECT_EQ(afterAThousand.windows, afterTen.windows);
}
} // namespace
