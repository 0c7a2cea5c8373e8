// The colour picker and its pop-up as a user meets them: real windows, messages and input, pixels read from the screen.
#include "controls/CColourPicker.h"
#include "controls/CColourPopup.h"
#include "support/NothingLeft.h"
#include "support/Screen.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <commctrl.h>
#include <algorithm>
#include <cmath>
#include <functional>

namespace
{
constexpr COLORREF Automatic = 0xFF000000;
constexpr COLORREF Outside = RGB(1, 2, 3); // in no cell
constexpr int Default = -3, Custom = -2;
constexpr int PickerId = 7;

struct Cell
{
    unsigned rgb; // red first
    const char* name;

    constexpr COLORREF Colour() const { return RGB(rgb >> 16, rgb >> 8 & 0xFF, rgb & 0xFF); }
};
// clang-format off
const Cell Cells[] = {
    {0x000000, "Black"},          {0xA52A00, "Brown"},        {0x004040, "Dark Olive Green"}, {0x005500, "Dark Green"},
    {0x00005E, "Dark Teal"},      {0x00008B, "Dark blue"},    {0x4B0082, "Indigo"},       {0x282828, "Dark grey"},
    {0x8B0000, "Dark red"},       {0xFF6820, "Orange"},       {0x8B8B00, "Dark yellow"},  {0x009300, "Green"},
    {0x388E8E, "Teal"},           {0x0000FF, "Blue"},         {0x7B7BC0, "Blue-grey"},    {0x666666, "Grey - 40"},
    {0xFF0000, "Red"},            {0xFFAD5B, "Light orange"}, {0x32CD32, "Lime"},         {0x3CB371, "Sea green"},
    {0x7FFFD4, "Aqua"},           {0x7D9EC0, "Light blue"},   {0x800080, "Violet"},       {0x7F7F7F, "Grey - 50"},
    {0xFFC0CB, "Pink"},           {0xFFD700, "Gold"},         {0xFFFF00, "Yellow"},       {0x00FF00, "Bright green"},
    {0x40E0D0, "Turquoise"},      {0xC0FFFF, "Skyblue"},      {0x480048, "Plum"},         {0xC0C0C0, "Light grey"},
    {0xFFE4E1, "Rose"},           {0xD2B48C, "Tan"},          {0xFFFFE0, "Light yellow"}, {0x98FB98, "Pale green "},
    {0xAFEEEE, "Pale turquoise"}, {0x68838B, "Pale blue"},    {0xE6E6FA, "Lavender"},     {0xFFFFFF, "White"},
};
// clang-format on
static_assert(std::size(Cells) == 40);

using Notifications = std::vector<std::string>;

/// What the picker tells, in words: the message, the colour and the picker's id.
std::string Words(UINT message, WPARAM colour, LPARAM id)
{
    return (testing::Message() << "WM_USER+" << message - WM_USER << std::hex << " colour 0x" << colour << " id " << id)
        .GetString();
}
constexpr auto Told = [](UINT number)
{ return [number](COLORREF colour) { return Words(WM_USER + number, colour, PickerId); }; };
constexpr auto Change = Told(1001), Opened = Told(1002), Closed = Told(1003), Ok = Told(1004), Cancelled = Told(1005);

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
        PumpMessages();
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
            heard.push_back(Words(message, wParam, lParam));
            whenTold(message);
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

/// The client rectangle of a cell, or of the custom box, of a pop-up with both boxes.
CRect CellRect(HWND popup, int index)
{
    RECT client;
    GetClientRect(popup, &client);
    const int margin = GetSystemMetrics(SM_CXEDGE), grid = 5 * 18;
    const int box = (client.bottom - 2 * margin - grid) / 2; // with its margin
    if (index == Custom)
        return {margin, 2 * margin + box + grid, client.right - margin, client.bottom - margin};
    return {CPoint(margin + 18 * (index % 8), margin + box + 18 * (index / 8)), CSize(18, 18)};
}

void Mouse(HWND window, UINT message, POINT point)
{
    SendMessageA(window, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void Key(HWND window, int code, LPARAM lParam = 0)
{
    SendMessageA(window, WM_KEYDOWN, code, lParam);
}

/// Clicks the box that opens the colour dialog; the dialog's own message loop then runs the answer, from a timer.
void ClickCustomBox(HWND popup, std::function<void(HWND dialog)> answer)
{
    static std::function<void(HWND)> atDialog;
    atDialog = std::move(answer);
    SetTimer(nullptr, 0, 20,
             [](HWND, UINT, UINT_PTR timer, DWORD)
             {
                 if (const HWND dialog = FindWindowA("#32770", nullptr))
                 {
                     KillTimer(nullptr, timer);
                     atDialog(dialog);
                 }
             });
    Mouse(popup, WM_LBUTTONUP, CellRect(popup, Custom).CenterPoint());
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
            EXPECT_EQ(ShownPixel(popup, centre), colour) << index;
            const CPoint frame(centre.x, centre.y - 9); // the middle of its upper edge
            const COLORREF plainFrame = ShownPixel(popup, frame);
            Mouse(popup, WM_MOUSEMOVE, centre);
            EXPECT_NE(ShownPixel(popup, frame), plainFrame) << index << " does not show that it is selected";
            EXPECT_EQ(host.picker.GetColour(), before) << "not tracked";
            Mouse(popup, WM_LBUTTONDOWN, centre);
            Mouse(popup, WM_LBUTTONUP, centre);
            EXPECT_FALSE(IsWindow(popup));
            EXPECT_EQ(host.heard, (Notifications{Opened(before), Change(colour), Closed(colour), Ok(colour)})) << index;
            EXPECT_EQ(host.picker.GetColour(), colour);
        }
    }
}

TEST(ColourPickerTest, ArrowKeysLeadThroughTheGridAndTheBoxes)
{
    const auto cell = [](int index) { return Cells[index].Colour(); };
    // From a cell (or the automatic colour, or a colour of no cell), the keys L R U D, and the cells that they lead to.
    const auto expect = [&](bool hasDefault, bool hasCustom, COLORREF start, const char* keys,
                            const std::vector<int>& cells, bool mirrored = false)
    {
        SCOPED_TRACE(std::string(keys) + " from " + std::to_string(start) + (hasDefault ? " D" : "") +
                     (hasCustom ? " C" : ""));
        Host host(mirrored ? WS_EX_LAYOUTRTL : 0);
        host.picker.SetDefaultText(hasDefault ? "Automatic" : "");
        host.picker.SetCustomText(hasCustom ? "More..." : nullptr);
        host.picker.SetColour(start);
        const HWND popup = host.Open();
        for (const char* key = keys; *key; ++key)
            Key(popup, *key == 'L' ? VK_LEFT : *key == 'R' ? VK_RIGHT : *key == 'U' ? VK_UP : VK_DOWN);
        Notifications expected = {Opened(start)};
        for (const int index : cells)
            expected.push_back(Change(index == Default ? Automatic : index == Custom ? start : cell(index)));
        Key(popup, VK_ESCAPE);
        expected.push_back(Closed(start));
        expected.push_back(Cancelled(start));
        EXPECT_EQ(host.heard, expected);
        EXPECT_EQ(host.picker.GetColour(), start);
        EXPECT_FALSE(IsWindow(popup));
    };
    expect(true, true, cell(9), "RDLULLR", {10, 18, 17, 9, 8, 7, 8});
    expect(true, true, cell(0), "LRUD", {Default, 0, Default, 0});
    expect(true, true, cell(5), "U", {Default});
    expect(true, true, cell(33), "DLRR", {Custom, 39, Custom, Default});
    expect(true, false, cell(39), "RL", {Default, 39});
    expect(false, true, cell(0), "LR", {Custom, 0});
    expect(false, false, cell(0), "LRDL", {39, 38});
    expect(true, true, Automatic, "LU", {Custom, 39});
    expect(true, false, Automatic, "L", {39});
    expect(false, true, Automatic, "R", {0}); // no box for it: the custom one
    expect(true, true, Outside, "R", {Default});
    expect(false, false, Outside, "R", {0});
    expect(false, false, Outside, "L", {39});
    expect(true, true, cell(0), "RLLDR", {Default, 0, 1, 9, 8}, true);
}

TEST(ColourPickerTest, EndsOnceWhicheverWay)
{
    const COLORREF start = Cells[4].Colour(), other = Cells[5].Colour();
    const Notifications chosen = {Opened(start), Closed(start), Ok(start)};
    const Notifications cancelled = {Opened(start), Closed(start), Cancelled(start)};
    const Notifications automatic = {Opened(start), Change(Automatic), Closed(Automatic), Ok(Automatic)};
    const Notifications sameThenCancelled = {Opened(start), Change(start), Closed(start), Cancelled(start)};
    const Notifications changedThenCancelled = {Opened(start), Change(other), Closed(start), Cancelled(start)};
    const auto expect = [&](const char* what, void (*end)(Host&, HWND popup), const Notifications& expected)
    {
        SCOPED_TRACE(what);
        Host host;
        host.picker.SetColour(start);
        host.picker.SetTrackSelection();
        const HWND popup = host.Open();
        end(host, popup);
        PumpMessages();
        EXPECT_EQ(host.heard, expected);
        EXPECT_FALSE(IsWindow(popup));
        EXPECT_FALSE(::GetCapture());
        EXPECT_EQ(host.picker.GetColour(), &expected == &automatic ? Automatic : start);
    };
    // clang-format off
    expect("Return", [](Host&, HWND popup) { Key(popup, VK_RETURN); }, chosen);
    expect("Space", [](Host&, HWND popup) { Key(popup, VK_SPACE); }, chosen);
    expect("the automatic box", [](Host&, HWND popup) { Mouse(popup, WM_LBUTTONUP, {60, 10}); }, automatic);
    expect("Escape", [](Host&, HWND popup) { Key(popup, VK_ESCAPE); }, cancelled);
    expect("Escape later", [](Host&, HWND popup) { Key(popup, VK_RIGHT); Key(popup, VK_ESCAPE); }, changedThenCancelled);
    expect("a click outside", [](Host&, HWND popup) { Mouse(popup, WM_LBUTTONUP, {-5, 30}); }, cancelled);
    expect("WM_CLOSE", [](Host&, HWND popup) { SendMessageA(popup, WM_CLOSE, 0, 0); }, cancelled);
    expect("lost focus", [](Host& host, HWND) { host.SetFocus(); }, cancelled);
    expect("lost capture", [](Host&, HWND) { ReleaseCapture(); }, cancelled);
    expect("destroyed by others", [](Host&, HWND popup) { DestroyWindow(popup); }, cancelled);
    expect("the picker dies", [](Host& host, HWND) { host.picker.DestroyWindow(); }, cancelled);
    expect("the parent dies", [](Host& host, HWND) { host.DestroyWindow(); }, cancelled);
    expect("the parent dies behind the colour dialog",
           [](Host& host, HWND popup) { ClickCustomBox(popup, [&](HWND) { host.DestroyWindow(); }); }, sameThenCancelled);
    // clang-format on
}

TEST(ColourPickerTest, OpensOnceAndWhatIsHeldDownOrMissesACellEndsNothing)
{
    Host host;
    {
        const Watch<decltype(&CreateWindowExA)> refuse("CreateWindowExA", 1, GetModuleHandleA("tvkframe.dll"));
        EXPECT_FALSE(host.Open());
        EXPECT_EQ(host.heard, Notifications{}) << "without a window nothing opens";
    }
    const HWND popup = host.Open();
    Key(popup, VK_SPACE, 0x40000001);   // the key that opened the pop-up repeats
    Mouse(popup, WM_LBUTTONUP, {0, 0}); // on the edge
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
        PumpMessages();
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
            const auto other = [&] { return mode == 1 ? host.picker.GetBkColour() : host.picker.GetTextColour(); };
            const int cell = static_cast<int>(8 + 2 * mode) + track;
            const COLORREF before = edited(), untouched = other(), chosen = Cells[cell].Colour();
            const HWND popup = host.Open();
            EXPECT_EQ(host.heard.back(), Opened(before));
            const CPoint centre = CellRect(popup, cell).CenterPoint();
            Mouse(popup, WM_MOUSEMOVE, centre);
            EXPECT_EQ(edited(), track ? chosen : before);
            Mouse(popup, WM_LBUTTONUP, centre);
            EXPECT_EQ(edited(), chosen);
            EXPECT_EQ(other(), untouched);
        }
    EXPECT_EQ(host.picker.GetColour(), host.picker.GetBkColour());
    EXPECT_EQ(host.picker.GetSelectionMode(), 2u);
    EXPECT_TRUE(host.picker.GetTrackSelection());
}

TEST(ColourPickerTest, TheCustomBoxAsksTheColourDialog)
{
    for (const COLORREF start : {Outside, Cells[3].Colour(), Automatic})
        for (const bool ok : {true, false})
        {
            Host host;
            host.picker.SetColour(start);
            const HWND popup = host.Open();
            bool asked = false;
            ClickCustomBox(popup,
                           [&](HWND dialog)
                           {
                               asked = true;
                               for (const int field : {0, 1, 2}) // red, green and blue
                                   SetDlgItemInt(dialog, 706 + field, 11 * (field + 1), FALSE);
                               PostMessageA(dialog, WM_COMMAND, ok ? IDOK : IDCANCEL, 0);
                           });
            EXPECT_TRUE(asked);
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
    const CSize bare = size("", nullptr), oneBox = size("A", ""), both = size("A", "B");
    EXPECT_EQ(bare, CSize(8 * 18 + 2 * margin, 5 * 18 + 2 * margin));
    EXPECT_EQ(oneBox, size("", "B"));
    EXPECT_EQ(both.cy - bare.cy, 2 * (oneBox.cy - bare.cy));

    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    CFont font;
    font.CreateFontIndirect(&metrics.lfMessageFont);
    const std::string longText(60, 'W');
    CClientDC dc(&host);
    dc.SelectObject(&font);
    const CSize text = dc.GetTextExtent(longText.c_str());
    EXPECT_EQ(size("A", longText.c_str()).cx, text.cx + 2 * margin);
    EXPECT_GE(oneBox.cy - bare.cy, text.cy + margin);

    const IatPatch edges(
        LibraryUnderTest(), "GetSystemMetrics",
        +[](int index) -> int { return index == SM_CXEDGE ? 6 : GetSystemMetrics(index); });
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
    HWND tips = nullptr;
    do
        tips = FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr);
    while (tips && GetWindow(tips, GW_OWNER) != popup);
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
    CPoint screen = CellRect(popup, 9).CenterPoint();
    ClientToScreen(popup, &screen);
    SetCursorPos(screen.x, screen.y);
    EXPECT_TRUE(Until([tips] { return IsWindowVisible(tips); }));
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
        };
        const auto press = [](BYTE key)
        {
            keybd_event(key, 0, 0, 0);
            keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
            PumpMessages(20);
        };
        const auto isOpen = [] { return ::GetCapture() != nullptr; };
        const auto isChosen = [&host](int cell)
        { return [&host, cell] { return host.picker.GetColour() == Cells[cell].Colour(); }; };
        click(host.picker, {10, 10});
        ASSERT_TRUE(Until(isOpen));
        click(::GetCapture(), CellRect(::GetCapture(), 26).CenterPoint());
        EXPECT_TRUE(Until(isChosen(26)));
        EXPECT_TRUE(Until([&host] { return ::GetFocus() == host.picker.m_hWnd; }))
            << "the keyboard goes back to the button";
        press(VK_SPACE);
        ASSERT_TRUE(Until(isOpen));
        for (const int key : {VK_DOWN, exStyle ? VK_LEFT : VK_RIGHT, VK_RETURN})
            press(static_cast<BYTE>(key));
        EXPECT_TRUE(Until(isChosen(35)));
        press(VK_SPACE);
        ASSERT_TRUE(Until(isOpen));
        click(host, {5, 5});
        EXPECT_TRUE(Until([&] { return !isOpen(); }));
        EXPECT_EQ(host.heard.back(), Cancelled(Cells[35].Colour()));
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
        return ShownPixel(host.picker, {20, 8});
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
        const double paper = Luminance(ShownPixel(host.picker, {8, 7}));
        double best = 1;
        for (int x = 8; x < 56; ++x)
            for (int y = 7; y < 17; ++y)
            {
                const double ink = Luminance(ShownPixel(host.picker, {x, y}));
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

TEST(ColourPickerTest, AThousandPopUpsLeaveNothingBehind)
{
    Host host;
    ExpectNothingLeftBehind(
        [&](int round)
        {
            const HWND popup = host.Open();
            UpdateWindow(popup);
            const CPoint centre = CellRect(popup, round % 40).CenterPoint();
            Mouse(popup, WM_MOUSEMOVE, centre);
            if (round % 2)
                Mouse(popup, WM_LBUTTONUP, centre);
            else
                Key(popup, VK_ESCAPE);
            PumpMessages();
        });
}
} // namespace
