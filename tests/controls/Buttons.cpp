// Bitmap buttons: faces, mouse, keyboard, captions, places.
#include "Pictures.h"
#include "controls/CGUIButton.h"
#include "controls/COwnButton.h"
#include "support/IatPatch.h"
#include "support/NothingLeft.h"
#include "support/Screen.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <functional>
#include <map>

namespace
{
constexpr UINT Button = 100;
constexpr int Width = 60, Height = 24, Left = 20, Top = 10;
constexpr COLORREF Green = 0x00FF00;
constexpr COLORREF Paper = RGB(250, 240, 200);
const CPoint Inside(Width / 2, Height / 2), Corner(0, 0); ///< the corner: within the window, outside the shape

constexpr UINT Normal = 1, Hover = 2, Pressed = 3, Disabled = 4, BlueKeyed = 5; ///< faces

/// A face of one colour with a hole of two pixels all around.
Picture MakeFace(UINT id)
{
    Picture face(Width, Height, 24, 40 + (id == BlueKeyed ? Normal : id));
    face.SetHoleColour(id == BlueKeyed ? RGB(0, 0, 255) : Green);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x)
            face.Set(x, y, x < 2 || y < 2 || x >= Width - 2 || y >= Height - 2);
    return face;
}

/// A dialog's part: paints paper, then the button, and counts its clicks.
class Host : public CWnd
{
public:
    int clicks = 0;
    CGUIButton* painted = nullptr;

protected:
    afx_msg void OnPaint()
    {
        CPaintDC context(this);
        if (painted)
            painted->DrawButton(&context);
    }
    afx_msg BOOL OnEraseBkgnd(CDC* context)
    {
        CRect client;
        GetClientRect(&client);
        context->FillSolidRect(&client, Paper);
        return TRUE;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        clicks += LOWORD(wParam) == Button && HIWORD(wParam) == BN_CLICKED;
        return CWnd::OnCommand(wParam, lParam);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Host, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

/// What the tests may look at besides the outside.
template <class Base>
class Opened : public Base
{
public:
    using Base::m_bCaptured;
    using Base::m_bToggle;
    using Base::m_rcButton;
};

template <class Kind>
class ButtonWorld : public testing::Test
{
protected:
    explicit ButtonWorld(DWORD exStyle = 0) : m_formerModule(AfxGetResourceHandle())
    {
        AfxSetResourceHandle(m_library.Module());
        m_host.CreateEx(exStyle, AfxRegisterWndClass(0), "host", WS_POPUP, 50, 60, 200, 80, nullptr, nullptr);
        // Activated from the start it would wait for a window manager when it goes.
        m_host.ShowWindow(SW_SHOWNOACTIVATE);
        CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, Left, Top, Width, Height, m_host.m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(Button)), nullptr, nullptr);
        m_button.SubclassDlgItem(Button, &m_host);
        Pump();
    }
    ~ButtonWorld() override
    {
        m_host.DestroyWindow();
        AfxSetResourceHandle(m_formerModule);
    }

    static void Pump() { PumpMessages(0, GetActiveWindow()); }
    template <class F>
    static bool Until(F condition)
    {
        return ::Until(condition, GetActiveWindow());
    }

    /// The face that DrawButton shows now: a letter; its holes show the surface, or the host's paper
    /// that was captured before.
    std::string Shown()
    {
        Surface surface(200, 80, 1);
        const auto before = surface.Pixels();
        m_button.DrawButton(CDC::FromHandle(surface.Context()));
        const COLORREF hole = GetPixel(surface.Context(), Left, Top);
        EXPECT_TRUE(hole == before[static_cast<size_t>(Top * 200 + Left)] || hole == Paper) << std::hex << hole;
        return Letter(GetPixel(surface.Context(), Left + 4, Top + 4));
    }
    std::string Letter(COLORREF colour) const
    {
        for (const UINT id : {Normal, Hover, Pressed, Disabled})
            if (colour == m_faces[id].At(Width / 2, Height / 2))
                return {"?NHPD"[id]};
        return "?";
    }
    static COLORREF OnScreen(int x, int y) { return ShownPixel(nullptr, {50 + x, 60 + y}); }
    static bool IsPaperAt(int x, int y)
    {
        return Until([&] { return OnScreen(x, y) == Paper; });
    }
    /// The face on the screen, once it is as expected or has had its time.
    std::string Seen(const std::string& expected, int x = Left + 4) const
    {
        const auto now = [&] { return Letter(OnScreen(x, Top + 4)); };
        return Until([&] { return now() == expected; }) ? expected : now();
    }

    const std::vector<Picture> m_faces = {MakeFace(0),       MakeFace(Normal),   MakeFace(Hover),
                                          MakeFace(Pressed), MakeFace(Disabled), MakeFace(BlueKeyed)};
    const PictureLibrary m_library{{{Normal, m_faces[Normal].Dib()},
                                    {Hover, m_faces[Hover].Dib()},
                                    {Pressed, m_faces[Pressed].Dib()},
                                    {Disabled, m_faces[Disabled].Dib()},
                                    {BlueKeyed, m_faces[BlueKeyed].Dib()}}};
    const HINSTANCE m_formerModule;
    Host m_host;
    Opened<Kind> m_button;
};

class Buttons : public ButtonWorld<CGUIButton>
{
public:
    /// Plays events and writes after each what is shown, an underscore for a mouse in captivity, and new clicks.
    std::string Play(const std::string& events)
    {
        const std::map<char, std::function<void()>> players = {
            {'i', [&] { Mouse(WM_MOUSEMOVE, Inside); }},     {'o', [&] { Mouse(WM_MOUSEMOVE, Corner); }},
            {'d', [&] { Mouse(WM_LBUTTONDOWN, Inside); }},   {'D', [&] { Mouse(WM_LBUTTONDOWN, Corner); }},
            {'2', [&] { Mouse(WM_LBUTTONDBLCLK, Inside); }}, {'u', [&] { Mouse(WM_LBUTTONUP, Inside); }},
            {'U', [&] { Mouse(WM_LBUTTONUP, Corner); }},     {'c', [&] { ReleaseCapture(); }},
        };
        std::string seen;
        for (const char event : events)
        {
            const int before = m_host.clicks;
            players.at(event)();
            EXPECT_TRUE(!m_button.m_bCaptured || GetCapture() == m_button.m_hWnd) << events;
            seen += Shown() + (GetCapture() == m_button.m_hWnd ? "_" : "") +
                    std::string(static_cast<size_t>(m_host.clicks - before), '!') + " ";
        }
        return seen;
    }
    void Draw(const Surface& surface) { m_button.DrawButton(CDC::FromHandle(surface.Context())); }
    void Mouse(UINT message, CPoint point) { m_button.SendMessage(message, 0, MAKELPARAM(point.x, point.y)); }
};

TEST_F(Buttons, ShowTheFaceOfTheirState)
{
    const auto expect = [&](const char* name, int initialized, const char* events, const char* seen)
    {
        EXPECT_EQ(initialized, 1) << name;
        EXPECT_EQ(Play(events), seen) << name;
        ReleaseCapture();
        Mouse(WM_MOUSEMOVE, Corner);
    };
    expect("one face", m_button.Initialize(Normal, Green), "iduDUdoUdoiu2u",
           "N N_ N! N_ N! N_ N_ N! N_ N_ N_ N! N_ N! ");
    expect("two faces", m_button.Initialize(HINSTANCE{}, Normal, Pressed, 0, 0), "iduDUdoUdoiudc",
           "N P_ N! N_ N P_ N_ N P_ N_ P_ N! P_ N ");
    expect("two faces of a module", m_button.Initialize(m_library.Module(), Normal, Pressed, 0, 0), "du", "P_ N! ");
    expect("two faces, no module", m_button.Initialize(Normal, Pressed, Green, 0u), "du", "P_ N! ");
    expect("three faces", m_button.Initialize(Normal, Hover, Pressed, Green, 0), "oioidoUiduiic",
           "N H_ N H_ P_ N N H_ P_ N! H_ H_ N ");
    expect("three faces, keyed apart", m_button.Initialize(BlueKeyed, Hover, Pressed, RGB(255, 0, 0), 0), "id",
           "H_ P_ ");
}

TEST_F(Buttons, RepaintTheirPlaceInTheParentWhenTheFaceChanges)
{
    m_button.Initialize(Normal, Hover, Pressed, Green, 0);
    for (const char* event : {"i", "d", "u", "i", "o"})
    {
        m_host.ValidateRect(nullptr);
        const int toggle = m_button.m_bToggle;
        Play(event);
        CRect dirty;
        EXPECT_TRUE(m_host.GetUpdateRect(&dirty)) << event;
        EXPECT_EQ(dirty, CRect(Left, Top, Left + Width, Top + Height)) << event;
        EXPECT_EQ(m_button.m_bToggle != toggle, std::string("duo").find(event) != std::string::npos) << event;
    }
}

TEST_F(Buttons, ShowThatTheyAreDisabled)
{
    m_host.painted = &m_button;
    for (const bool save : {false, true})
    {
        if (save)
            m_button.SetSaveBmp();
        m_button.Initialize(Normal, Green); // takes the disabled face away
        m_button.EnableWindow(FALSE);
        EXPECT_EQ(Shown() + Seen("N"), "NN") << "no such face";
        m_button.EnableWindow();
        EXPECT_EQ(m_button.SetDisabledBitmap(Disabled, Green), 1);
        EXPECT_EQ(Shown() + Seen("N"), "NN");
        m_button.EnableWindow(FALSE);
        EXPECT_EQ(Shown() + Seen("D"), "DD");
        EXPECT_TRUE(IsPaperAt(Left, Top)) << "the parent's background shows through";
        m_button.EnableWindow();
        EXPECT_EQ(Shown() + Seen("N"), "NN");
    }
    m_button.ShowWindow(SW_HIDE);
    EXPECT_EQ(Shown(), "?") << "hidden, nothing is drawn";
}

TEST_F(Buttons, DrawTheCaptionInTheColourOfTheirState)
{
    constexpr COLORREF own = RGB(1, 2, 3);
    for (const auto& [given, enabled, expected] : {std::tuple(own, TRUE, own),
                                                   {0u, TRUE, GetSysColor(COLOR_BTNTEXT)},
                                                   {own, FALSE, GetSysColor(COLOR_GRAYTEXT)}})
    {
        const Surface surface(200, 80, 1);
        m_button.Initialize(Normal, Hover, Pressed, Green, given);
        m_button.EnableWindow(enabled);
        SetBkMode(surface.Context(), OPAQUE);
        Draw(surface);
        EXPECT_EQ(GetTextColor(surface.Context()), expected);
        EXPECT_EQ(GetBkMode(surface.Context()), OPAQUE);
        EXPECT_EQ(GetCurrentObject(surface.Context(), OBJ_FONT), GetStockObject(DEFAULT_GUI_FONT));
    }
}

TEST_F(Buttons, PutCaptionAndFocusWhereTheyBelong)
{
    static CRect focusRect, textRect;
    static UINT textFormat;
    static LOGFONTA textFont;
    const IatPatch focus(
        LibraryUnderTest(), "DrawFocusRect", +[](HDC, const RECT* rect) -> BOOL { return focusRect = *rect, TRUE; });
    const IatPatch text(
        LibraryUnderTest(), "DrawTextA",
        +[](HDC context, LPCSTR text, int count, LPRECT rect, UINT format) -> int
        {
            if (!(format & DT_CALCRECT))
            {
                textRect = *rect;
                textFormat = format;
                GetObjectA(GetCurrentObject(context, OBJ_FONT), sizeof textFont, &textFont);
            }
            return DrawTextA(context, text, count, rect, format);
        });
    m_button.Initialize(Normal, Pressed, Green, 0u);
    EXPECT_EQ(m_button.GetTextRect(), CRect(Left, Top, Left + Width, Top + Height));
    CRect given(31, 12, 76, 33);
    m_button.SetTextRect(given);
    m_button.SetTextBold();
    m_button.SetTextUnderline();
    m_button.SetTextSize(11);
    Surface surface(200, 80, 1);
    const CPoint centre((31 + 76) / 2, (12 + 33) / 2);
    for (const char* caption : {"", "Wi"})
        for (const bool pressed : {false, true})
        {
            SCOPED_TRACE(testing::Message() << '"' << caption << "\", pressed " << pressed);
            const POINT moved = {pressed ? 2 : 0, pressed ? 2 : 0};
            m_button.SetWindowText(caption);
            m_button.SetFocus();
            Pump();
            Mouse(pressed ? WM_LBUTTONDOWN : WM_LBUTTONUP, Inside);
            Draw(surface);
            EXPECT_EQ(textRect, given + moved);
            EXPECT_EQ(textFormat, UINT{DT_CENTER | DT_VCENTER | DT_SINGLELINE});
            EXPECT_EQ(textFont.lfWeight, FW_BOLD);
            EXPECT_TRUE(textFont.lfUnderline);
            EXPECT_EQ(textFont.lfHeight, -MulDiv(11, GetDeviceCaps(surface.Context(), LOGPIXELSY), 72));
            CRect expected(given.left + 1, given.top + 1, given.right - 2, given.bottom - 2);
            if (*caption)
            {
                CFont font;
                font.CreateFontIndirect(&textFont);
                CClientDC context(&m_host);
                context.SelectObject(&font);
                const CSize extent = context.GetTextExtent(caption);
                expected.SetRect(centre.x - extent.cx / 2 - 1, centre.y - extent.cy / 2 - 1,
                                 centre.x + extent.cx / 2 + 2, centre.y + extent.cy / 2 + 2);
            }
            EXPECT_EQ(focusRect, expected + moved);
            focusRect.SetRectEmpty();
        }
    Mouse(WM_LBUTTONUP, Inside);
    m_button.ModifyStyle(WS_TABSTOP, 0);
    Draw(surface);
    EXPECT_TRUE(focusRect.IsRectNull()) << "not reached by Tab";
    m_button.ModifyStyle(0, WS_TABSTOP);
    m_host.SetFocus();
    Pump();
    Draw(surface);
    EXPECT_TRUE(focusRect.IsRectNull()) << "no focus";
}

TEST_F(Buttons, KnowTheirShapeAndPlace)
{
    m_button.Initialize(Normal, Green);
    for (const auto& [x, y, hit] : {std::tuple(Left, Top, false),
                                    {Left + 2, Top + 2, true},
                                    {2, 2, false},
                                    {Left + Width - 3, Top + Height - 3, true},
                                    {Left + Width - 2, Top + 5, false}})
        EXPECT_EQ(m_button.HitTest(CPoint(x, y)) != 0, hit) << x << ", " << y;
    EXPECT_EQ(m_button.GetStyle() & 0x0F, DWORD{BS_OWNERDRAW});

    const CRect shifted(CPoint(50 + Left - 3, 60 + Top - 22), CSize(Width, Height));
    EXPECT_EQ(m_button.InitializeNoStretch(Normal, Hover, Pressed, Green, 0), 1);
    EXPECT_EQ(m_button.m_rcButton, shifted);
    EXPECT_EQ(m_button.GetTextRect(), shifted);
    EXPECT_EQ(m_button.GetStyle() & 0x5000008B, DWORD{0x5000008B});

    m_button.MoveWindow(1, 2, Width * 2, Height * 2);
    EXPECT_EQ(m_button.InitializeNoStretch(Normal, Green), 1);
    EXPECT_EQ(m_button.m_rcButton, shifted) << "not refreshed";
    EXPECT_EQ(m_button.Initialize(Normal, Green), 1);
    EXPECT_EQ(m_button.m_rcButton, CRect(1, 2, 1 + Width * 2, 2 + Height * 2));
    EXPECT_TRUE(m_button.HitTest(CPoint(1 + Width * 2 - 8, 2 + Height)));

    Opened<CGUIButton> fresh;
    EXPECT_EQ(fresh.m_rcButton, CRect(0, 0, 0, 0));
    EXPECT_EQ(m_button.Initialize(77, Green), 0) << "no such bitmap";
    EXPECT_FALSE(m_button.HitTest(CPoint(Left + 5, Top + 5)));
    EXPECT_EQ(Play("du").substr(0, 1), "?");
}

struct MirroredButtons : ButtonWorld<CGUIButton>
{
    MirroredButtons() : ButtonWorld(WS_EX_LAYOUTRTL) {}
};

TEST_F(MirroredButtons, LieWhereTheParentSeesThem)
{
    m_button.Initialize(Normal, Hover, Pressed, Green, 0);
    EXPECT_EQ(m_button.m_rcButton, CRect(Left, Top, Left + Width, Top + Height));
    m_host.painted = &m_button;
    m_host.Invalidate();
    EXPECT_EQ(Seen("N", 200 - 1 - (Left + 4)), "N");
    EXPECT_TRUE(IsPaperAt(Left + 4, Top + 4));
    EXPECT_TRUE(IsPaperAt(200 - 1 - Left, Top));
    EXPECT_TRUE(m_button.HitTest(CPoint(Left + 4, Top + 4)));
}

TEST_F(Buttons, AnswerRealMouseAndKeyboard)
{
    m_button.Initialize(Normal, Hover, Pressed, Green, 0);
    m_button.EnableCursorMorph(5);
    m_host.painted = &m_button;
    m_host.Invalidate();
    SetForegroundWindow(m_host.m_hWnd);
    const auto key = [](BYTE code)
    {
        keybd_event(code, 0, 0, 0);
        keybd_event(code, 0, KEYEVENTF_KEYUP, 0);
    };
    const auto clicked = [&](int times) { return Until([&] { return m_host.clicks == times; }); };
    SetCursorPos(5, 5);
    EXPECT_EQ(Seen("N"), "N");
    SetCursorPos(50 + Left + 10, 60 + Top + 10);
    EXPECT_EQ(Seen("H"), "H");
    EXPECT_TRUE(Until([] { return GetCursor() == LoadCursorA(nullptr, IDC_HAND); }));
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    EXPECT_EQ(Seen("P"), "P");
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    EXPECT_TRUE(clicked(1));
    SetCursorPos(5, 5);
    EXPECT_EQ(Seen("N"), "N");

    SetFocus(m_host.m_hWnd);
    key(VK_TAB);
    EXPECT_TRUE(Until([&] { return GetFocus() == m_button.m_hWnd; }));
    key(VK_SPACE);
    EXPECT_TRUE(clicked(2));
    key(VK_RETURN);
    EXPECT_TRUE(clicked(3));
}

TEST_F(Buttons, LeaveNoObjectBehind)
{
    Surface surface(200, 80, 1);
    ExpectNothingLeftBehind(
        [&](int round)
        {
            m_button.InitializeNoStretch(Normal, Green);
            m_button.Initialize(Normal, Hover, Pressed, Green, 0);
            m_button.SetDisabledBitmap(Disabled, Green);
            m_button.SetTextSize(8 + round % 2);
            Draw(surface);
            CGUIButton other;
        });
}

using OwnButtons = ButtonWorld<COwnButton>;

TEST_F(OwnButtons, PaintThemselvesOverTheParentsBackground)
{
    m_host.ModifyStyle(0, WS_CLIPCHILDREN);
    m_button.Initialize(Normal, Hover, Pressed, Green, 0);
    m_button.SetDisabledBitmap(Disabled, Green);
    m_button.Invalidate();
    EXPECT_EQ(Seen("N"), "N");
    EXPECT_TRUE(IsPaperAt(Left, Top));
    m_button.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(Seen("H"), "H");
    m_button.EnableWindow(FALSE);
    EXPECT_EQ(Seen("D"), "D");
}
} // namespace
