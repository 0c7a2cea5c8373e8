// Link controls on real windows, by real mouse and keyboard: looks, places that answer, clicks, both families.
#include "links/CGUIHelpLink.h"
#include "links/CGUIUrlLink.h"
#include "links/CGUIWizardLink.h"
#include "links/CHelpLink.h"
#include "links/CUrlLink.h"
#include "links/CWizardLink.h"
#include "controls/Pictures.h"
#include "support/IatPatch.h"
#include "support/NothingLeft.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

namespace
{
constexpr UINT Link = 100;
const CRect Place(20, 10, 220, 50); ///< the control in its parent
constexpr int HostWidth = 260;
constexpr COLORREF Paper = RGB(250, 240, 200);
constexpr COLORREF Blue = 0xFF0000;
constexpr COLORREF Black = 0;
constexpr COLORREF Red = RGB(200, 0, 0);
constexpr COLORREF Grey = 0xA0A0A0;
constexpr COLORREF Green = 0x00FF00;

enum FaceId : UINT
{
    Normal = 1,
    Hover,
    Disabled
};

/// A face of one colour, 32 x 32, with a hole of two pixels all around.
const Picture& Face(FaceId id)
{
    static std::map<FaceId, Picture> faces;
    const auto [face, isNew] = faces.try_emplace(id, 32, 32, 24, 40 + id);
    if (isNew)
    {
        face->second.SetHoleColour(Green);
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x)
                face->second.Set(x, y, x < 2 || y < 2 || x >= 30 || y >= 30);
    }
    return face->second;
}

/// The host's application: notes what help it is asked for.
class Application : public CWinApp
{
public:
    std::string help;
    void WinHelp(DWORD_PTR data, UINT command) override
    {
        help += std::to_string(data) + " " + std::to_string(command) + ";";
    }
} application;

/// A host's window: paints paper and the link on it, and counts the link's clicks.
class Host : public CWnd
{
public:
    int clicks = 0;
    CGUILink* painted = nullptr;
    std::function<void()> clicked = [] {};

protected:
    afx_msg void OnPaint()
    {
        CPaintDC context(this);
        OnEraseBkgnd(&context);
        if (painted)
            painted->DrawButton(&context);
    }
    afx_msg BOOL OnEraseBkgnd(CDC* context)
    {
        context->FillSolidRect(CRect(-1, 0, HostWidth + 1, 80), Paper);
        return TRUE;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (LOWORD(wParam) == Link && HIWORD(wParam) == BN_CLICKED)
        {
            ++clicks;
            clicked();
        }
        return CWnd::OnCommand(wParam, lParam);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Host, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

template <class Kind>
class World
{
public:
    explicit World(DWORD exStyle = 0) : m_mirrored(exStyle & WS_EX_LAYOUTRTL)
    {
        host.CreateEx(exStyle, AfxRegisterWndClass(0), "host", WS_POPUP, 50, 60, HostWidth, 80, nullptr, nullptr);
        host.ShowWindow(SW_SHOWNOACTIVATE);
        SetForegroundWindow(host.m_hWnd);
        CreateWindowExA(0, "BUTTON", "&Order ink", WS_CHILD | WS_VISIBLE | WS_TABSTOP, Place.left, Place.top,
                        Place.Width(), Place.Height(), host.m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(Link)), nullptr, nullptr);
        link.SubclassDlgItem(Link, &host);
        if constexpr (std::is_base_of_v<CGUILink, Kind>)
            host.painted = &link;
        SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &m_hoverTime, 0);
        SystemParametersInfoA(SPI_SETMOUSEHOVERTIME, 10, nullptr, 0); // so often Wine looks whether the mouse has left
        SetCursorPos(5, 5);
        Pump();
    }
    ~World()
    {
        host.DestroyWindow();
        SystemParametersInfoA(SPI_SETMOUSEHOVERTIME, m_hoverTime, nullptr, 0);
    }

    /// Handles the messages that are there: input comes at once, only the mouse's leaving is told later.
    static void Pump()
    {
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
            if (!IsDialogMessageA(GetActiveWindow(), &message))
            {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        Sleep(5);
    }
    /// Waits until something is so, once all that has been done shows.
    static bool Wait(const std::function<bool()>& isSo)
    {
        Pump();
        for (int i = 0; Pump(), i < 200 && !isSo(); ++i)
            ;
        return isSo();
    }

    /// To a point of the parent's client area.
    void MoveTo(CPoint point)
    {
        SetCursorPos(50 + (m_mirrored ? HostWidth - 1 - point.x : point.x), 60 + point.y);
        Pump();
    }
    static void Mouse(DWORD flags)
    {
        mouse_event(flags, 0, 0, 0, 0);
        Pump();
    }
    /// A key, while another one is held.
    static void Key(BYTE key, BYTE held = 0)
    {
        for (const BYTE code : {held, key})
            if (code)
                keybd_event(code, 0, 0, 0);
        for (const BYTE code : {key, held})
            if (code)
                keybd_event(code, 0, KEYEVENTF_KEYUP, 0);
        Pump();
    }

    /// The parent's client area as it stands on the screen, row by row.
    static std::vector<COLORREF> Snapshot()
    {
        const HDC screen = GetDC(nullptr);
        Surface copy(HostWidth, 80, 1);
        BitBlt(copy.Context(), 0, 0, HostWidth, 80, screen, 50, 60, SRCCOPY);
        ReleaseDC(nullptr, screen);
        return copy.Pixels();
    }
    /// Which points of the parent's client area have this colour on the screen.
    static std::vector<CPoint> Coloured(COLORREF colour)
    {
        std::vector<CPoint> points;
        CPoint point(0, 0);
        for (const COLORREF pixel : Snapshot())
        {
            if (pixel == colour)
                points.push_back(point);
            if (++point.x == HostWidth)
                point = CPoint(0, point.y + 1);
        }
        return points;
    }
    /// The face's letter and the text's, an underscore for the captured mouse, and new clicks.
    std::string Seen()
    {
        const auto pixels = Snapshot();
        std::string seen;
        for (const auto& [colour, letter] : {std::pair(Face(Normal).At(16, 16), 'N'),
                                             {Face(Hover).At(16, 16), 'H'},
                                             {Face(Disabled).At(16, 16), 'D'},
                                             {Blue, 'b'},
                                             {Black, 'B'},
                                             {Red, 'r'},
                                             {Grey, 'g'}})
            if (std::find(pixels.begin(), pixels.end(), colour) != pixels.end())
                seen += letter;
        return seen + (link.m_hWnd && GetCapture() == link.m_hWnd ? "_" : "") +
               std::string(static_cast<size_t>(host.clicks - m_seenClicks), '!');
    }
    /// Plays groups of events, "events=expected", and looks after each group whether what is seen is as expected.
    void Play(const std::string& groups)
    {
        const std::map<char, CSize> places = {
            {'p', {16, 16}},  // the picture
            {'t', {50, 20}},  // the text
            {'k', {1, 1}},    // the picture's transparent corner
            {'e', {190, 20}}, // an empty place of the control
            {'E', {192, 22}}, {'o', {-50, -40}},
        };
        std::istringstream input(groups);
        std::string played;
        for (std::string group; !testing::Test::HasFailure() && input >> group; m_seenClicks = host.clicks)
        {
            const std::string events = group.substr(0, group.find('=')), expected = group.substr(events.size() + 1);
            for (const char event : events)
                if (const auto place = places.find(event); place != places.end())
                    MoveTo(Place.TopLeft() + place->second);
                else
                    Mouse(event == 'd' ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
            played += " " + events;
            Wait([&] { return Seen() == expected; });
            EXPECT_EQ(Seen(), expected) << "after" << played << (m_mirrored ? ", mirrored" : "");
        }
    }

    Host host;
    Kind link;
    const PictureLibrary art{
        {{Normal, Face(Normal).Dib()}, {Hover, Face(Hover).Dib()}, {Disabled, Face(Disabled).Dib()}}};

private:
    const bool m_mirrored;
    UINT m_hoverTime = 0;
    int m_seenClicks = 0;
};

template <class Kind>
class Links : public testing::Test
{
};
using Families = testing::Types<CGUIWizardLink, CWizardLink>;
TYPED_TEST_SUITE(Links, Families);

constexpr UINT Middle = DT_VCENTER | DT_SINGLELINE;

TYPED_TEST(Links, WithoutHoverPictureLookPressedUnderTheMouse)
{
    for (const DWORD exStyle : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        World<TypeParam> world(exStyle);
        EXPECT_EQ(world.link.Initialize(Normal, world.art.Module()), 1);
        world.Play("o=Nb t=NB e=Nb p=NB k=Nb t=NB o=Nb");
        world.Play("t=NB d=NB_ up=NB! d=NB_ ut=NB! dup=NB!"); // two in quick succession: each counts
        world.Play("ed=Nb u=Nb td=NB_ e=NB_ u=Nb!");          // pressed beside the link; released there
        world.Play("td=NB_ o=NB_ u=Nb p=NB o=Nb");
        EXPECT_EQ(world.link.SetDisabledBitmap(Disabled, world.art.Module(), Green), 1);
        world.Play("td=NB_ eu=Nb tdup=NB! o=Nb");
    }
}

TYPED_TEST(Links, WithHoverPictureHoldTheMouseWhileItIsOnThem)
{
    for (const DWORD exStyle : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        World<TypeParam> world(exStyle);
        world.link.SetLinkHoverColor(Red);
        EXPECT_EQ(world.link.Initialize(Normal, Hover, 0, world.art.Module(), Middle), 1);
        world.Play("o=Nb t=Hr_ e=Nb p=Hr_ k=Nb p=Hr_ o=Nb");
        world.Play("t=Hr_ d=Hr_ u=Hr_! du=Hr_! o=Nb");
        world.Play("tdeE=Nb u=Nb td=Hr_ o=Nb u=Nb t=Hr_"); // dragged off
        world.host.SetCapture();
        world.Play("=Nb");
        ReleaseCapture();
        world.Play("p=Hr_ o=Nb");
        EXPECT_EQ(world.link.Initialize(Normal, 0, world.art.Module(), Middle), 1);
        world.link.SetLinkTextColor(Grey);
        world.Play("=Ng t=Nr o=Ng");
    }
}

TYPED_TEST(Links, ShowTheHandWhereTheyAnswer)
{
    for (const DWORD exStyle : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        World<TypeParam> world(exStyle);
        world.link.Initialize(Normal, world.art.Module());
        for (const auto& [x, y, on] : {std::tuple(2, 2, true),
                                       {1, 2, false},
                                       {29, 29, true},
                                       {30, 15, false},
                                       {34, 20, false},
                                       {37, 20, true},
                                       {45, 2, false},
                                       {150, 20, false}})
        {
            world.MoveTo(CPoint(-30, -30));
            world.MoveTo(Place.TopLeft() + CSize(x, y));
            const HCURSOR expected = LoadCursorA(nullptr, on ? IDC_HAND : IDC_ARROW);
            EXPECT_TRUE(world.Wait([&] { return GetCursor() == expected; })) << x << ", " << y << ", " << exStyle;
        }
    }
}

TYPED_TEST(Links, AnswerTheKeyboardAndScreenReadersLikeButtons)
{
    World<TypeParam> world;
    world.link.Initialize(Normal, Disabled, world.art.Module(), Middle);
    CreateWindowExA(0, "BUTTON", "other", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 100, 50, 20, world.host.m_hWnd,
                    nullptr, nullptr, nullptr);
    world.Play("=Nb");
    const auto plain = world.Coloured(Blue);
    world.Key(VK_TAB);
    EXPECT_TRUE(world.Wait([&] { return GetFocus() == world.link.m_hWnd; }));
    EXPECT_TRUE(world.Wait([&] { return world.Coloured(Blue).size() > plain.size() + 20; })) << "no frame";
    const auto framed = world.Coloured(Blue);
    if (world.host.painted)
        world.host.painted->DrawButton(CDC::FromHandle(GetDC(world.host.m_hWnd)));
    EXPECT_EQ(world.Coloured(Blue).size(), framed.size()) << "the frame does not last";
    world.Key(VK_SPACE);
    EXPECT_TRUE(world.Wait([&] { return world.host.clicks == 1; }));
    world.Key(VK_RETURN);
    EXPECT_TRUE(world.Wait([&] { return world.host.clicks == 2; }));
    world.Key(VK_TAB);
    EXPECT_TRUE(world.Wait([&] { return world.Coloured(Blue).size() == plain.size(); })) << "the frame stays";
    world.Key('O', VK_MENU);
    EXPECT_TRUE(world.Wait([&] { return world.host.clicks == 3; }));
    char text[20];
    EXPECT_EQ(std::string(text, static_cast<size_t>(
                                    world.link.SendMessage(WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text)))),
              "&Order ink");
    EXPECT_TRUE(world.link.SendMessage(WM_GETDLGCODE) & DLGC_BUTTON);
    world.link.SendMessage(BM_CLICK);
    EXPECT_EQ(world.host.clicks, 4);
    world.link.EnableWindow(FALSE);
    EXPECT_TRUE(world.Wait([&] { return world.Seen() == "Dg!!!!"; })) << world.Seen();
    world.link.SendMessage(BM_CLICK);
    world.Play("tdu=Dg!!!!");
    world.link.EnableWindow();
    world.Play("o=Nb");
}

TYPED_TEST(Links, PutTheirTextWhereItIsWanted)
{
    World<TypeParam> world;
    CGUIFont larger;
    larger.SetTextSize(14);
    larger.SetTextUnderline();
    CGUIFont own;
    own.SetTextUnderline();
    // The text stands within this place by these flags, in this font, and there it answers.
    const auto expectText = [&](const char* name, CRect within, UINT flags, CGUIFont& font)
    {
        SCOPED_TRACE(name);
        const CClientDC context(&world.host);
        const HGDIOBJ former = SelectObject(context.m_hDC, font);
        CRect size;
        DrawTextA(context.m_hDC, "&Order ink", -1, &size, DT_CALCRECT | DT_SINGLELINE);
        SelectObject(context.m_hDC, former);
        const auto room = [flags](int space, UINT end, UINT middle) {
            return flags & end ? space : flags & middle ? space / 2 : 0;
        };
        const CRect expected(within.TopLeft() + CSize(room(within.Width() - size.Width(), DT_RIGHT, DT_CENTER),
                                                      room(within.Height() - size.Height(), DT_BOTTOM, DT_VCENTER)),
                             size.Size());
        EXPECT_TRUE(world.Wait(
            [&]
            {
                const auto text = world.Coloured(Blue);
                return text.size() > static_cast<size_t>(expected.Width()) &&
                       std::all_of(text.begin(), text.end(), [&](CPoint point) { return expected.PtInRect(point); });
            }));
        EXPECT_TRUE(world.link.HitTest(expected.TopLeft()));
        EXPECT_TRUE(world.link.HitTest(expected.BottomRight() - CSize(1, 1)));
        EXPECT_FALSE(world.link.HitTest(expected.BottomRight()));
        EXPECT_FALSE(world.link.HitTest(CPoint(expected.left - 1, expected.bottom - 1)));
    };
    world.link.Initialize(0, nullptr);
    expectText("text alone", Place, Middle, own);
    world.link.Initialize(Normal, world.art.Module());
    expectText("beside a picture", CRect(Place.left + 36, Place.top, Place.right, Place.bottom), Middle, own);
    constexpr UINT corner = DT_RIGHT | DT_BOTTOM | DT_SINGLELINE, top = DT_CENTER | DT_SINGLELINE;
    world.link.Initialize(0, 0, nullptr, corner);
    expectText("right, bottom", Place, corner, own);
    world.link.SetTextAlignmentFlags(top);
    expectText("centre, top", Place, top, own);
    const CRect started(Place.left + 12, Place.top + 5, Place.right, Place.bottom);
    world.link.SetTextStart(12, 5);
    expectText("start", started, top, own);
    world.link.Initialize(0, 0, nullptr, DT_SINGLELINE);
    expectText("start stays", started, DT_SINGLELINE, own);
    CRect other(60, 20, 180, 48);
    world.link.SetRect(std::make_unique<CClientDC>(&world.host).get(), other, top | Middle);
    expectText("other place", other, top | Middle, own);
    other.OffsetRect(3, -2);
    world.link.OffsetTopLeft(3, -2);
    expectText("moved", other, top | Middle, own);
    world.link.SetFont(&larger);
    expectText("larger", other, top | Middle, larger);
    world.link.SetFont(nullptr);
    world.link.SetTextStart(0, 0);
    world.link.SetTextAlignmentFlags(DT_WORDBREAK | DT_RIGHT);
    world.link.SetWindowText("A text that is by far too long for a single line of the link");
    const auto isInLines = [](const auto& text) { return !text.empty() && text.back().y - text.front().y > 14; };
    EXPECT_TRUE(world.Wait([&] { return isInLines(world.Coloured(Blue)); }));
}

TYPED_TEST(Links, MayEndByTheirClick)
{
    World<TypeParam> world;
    world.link.Initialize(Normal, Hover, 0, world.art.Module(), Middle);
    world.host.painted = nullptr;
    world.host.clicked = [&] { world.link.DestroyWindow(); };
    world.Play("tdu=!");
    EXPECT_EQ(world.link.m_hWnd, nullptr);
}

TYPED_TEST(Links, LeaveNoObjectBehind)
{
    World<TypeParam> world;
    Surface surface(HostWidth, 80, 1);
    CGUIFont font;
    ExpectNothingLeftBehind(
        [&](int i)
        {
            world.link.Initialize(Normal, i % 2 ? Hover : 0u, Disabled, world.art.Module(), Middle);
            world.link.SetDisabledBitmap(Disabled, world.art.Module(), Green);
            world.link.SetFont(i % 3 ? &font : nullptr);
            world.link.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(i % 2 ? 10 : 190, 10));
            world.link.SendMessage(WM_SETFOCUS);
            world.link.DrawButton(CDC::FromHandle(surface.Context()));
            world.link.SendMessage(WM_MOUSELEAVE);
            TypeParam other;
        });
}

/// What the first link loads as its cursor.
std::vector<std::pair<HINSTANCE, ULONG_PTR>> loadedCursors;
HCURSOR(WINAPI* loadCursor)(HINSTANCE, LPCSTR);
HCURSOR WINAPI NoteCursor(HINSTANCE module, LPCSTR name)
{
    loadedCursors.emplace_back(module, reinterpret_cast<ULONG_PTR>(name));
    return loadCursor(module, name);
}

TEST(LinkCursor, IsTheSystemsHandLoadedOnce)
{
    const TestLibrary resources("linkcursor.dll", {});
    const TestProduct product({{"IDO_JSW_RESDLL", resources.Path().c_str()}});
    const IatPatch patch(LibraryUnderTest(), "LoadCursorA", &NoteCursor);
    loadCursor = patch.Original<decltype(loadCursor)>();
    CGUIButton::g_hLinkCursor = nullptr;
    for (int i = 0; i < 2; ++i)
        CGUIHelpLink link;
    EXPECT_EQ(CGUIButton::g_hLinkCursor, LoadCursorA(nullptr, IDC_HAND));
    ASSERT_EQ(loadedCursors.size(), 2u);
    EXPECT_EQ(loadedCursors[0], std::pair(HINSTANCE{}, ULONG_PTR{32649}));
    EXPECT_TRUE(loadedCursors[1].first);
    EXPECT_EQ(loadedCursors[1].second, ULONG_PTR{30977});
    EXPECT_FALSE(GetModuleHandleA("linkcursor.dll")) << "still loaded";
}

TEST(FollowedLinks, LeadToTheApplicationsHelpOrNowhere)
{
    CGUIHelpLink().FollowLink(20);
    CHelpLink().FollowLink(0xFFFF);
    CGUIWizardLink().FollowLink(20);
    CWizardLink().FollowLink(20);
    EXPECT_EQ(application.help, "65556 1;131071 1;");
}

template <class Kind>
void ExpectUnderlined(COLORREF underTheMouse)
{
    World<Kind> world;
    world.link.Initialize(0, nullptr);
    for (const COLORREF colour : {Blue, underTheMouse})
    {
        const auto isUnderlined = [&]
        {
            const auto pixels = world.Snapshot();
            return std::search_n(pixels.begin(), pixels.end(), 40, colour) != pixels.end();
        };
        EXPECT_TRUE(world.Wait(isUnderlined)) << typeid(Kind).name() << " in " << colour;
        world.MoveTo(Place.TopLeft() + CSize(10, 20));
    }
}

TEST(FollowedLinks, AreUnderlinedAndChangeTheirColourUnlessTheyLeadToAnAddress)
{
    ExpectUnderlined<CGUIHelpLink>(Black);
    ExpectUnderlined<CGUIUrlLink>(Blue);
    ExpectUnderlined<CGUIWizardLink>(Black);
    ExpectUnderlined<CHelpLink>(Black);
    ExpectUnderlined<CUrlLink>(Blue);
    ExpectUnderlined<CWizardLink>(Black);
}
} // namespace
