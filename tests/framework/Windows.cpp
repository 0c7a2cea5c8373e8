// Windows: message maps, subclassing, reflection, and what happens when handlers throw or windows end.
#include "ids.h"
#include <afxwin.h>
#include "support/NothingLeft.h"
#include "support/Screen.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <string>
#include <vector>

namespace
{
const UINT RegisteredMessage = RegisterWindowMessageA("framework test message");
constexpr UINT TestMessage = WM_APP + 1;

// Writes down which handlers ran.
class CRecorder : public CWnd
{
    DECLARE_DYNAMIC(CRecorder)
public:
    std::vector<std::string> m_calls;
    bool m_refuse = false;

    BOOL Make(DWORD style = WS_POPUP, CWnd* parent = nullptr)
    {
        return CreateEx(0, nullptr, "recorder", style, CRect(10, 10, 210, 110), parent, 0);
    }
    using CWnd::DefWindowProc;

protected:
    using Text = testing::Message;
    void Note(const Text& call) { m_calls.push_back(call.GetString()); }
    int OnCreate(LPCREATESTRUCT parameters)
    {
        Note(Text() << "create " << parameters->lpszName);
        return m_refuse ? -1 : CWnd::OnCreate(parameters);
    }
    void OnDestroy()
    {
        m_calls.push_back("destroy");
        CWnd::OnDestroy();
    }
    void OnLButtonDown(UINT flags, CPoint at) { Note(Text() << "down " << flags << ' ' << at.x << ',' << at.y); }
    void OnKeyDown(UINT key, UINT repeat, UINT) { Note(Text() << "key " << key << 'x' << repeat); }
    void OnSize(UINT, int width, int height) { Note(Text() << "size " << width << 'x' << height); }
    BOOL OnEraseBkgnd(CDC* dc)
    {
        CRect rect;
        GetClientRect(&rect);
        dc->FillSolidRect(&rect, RGB(10, 20, 30));
        return TRUE;
    }
    void OnPaint()
    {
        CPaintDC dc(this);
        m_calls.push_back("paint");
    }
    void OnTimer(UINT_PTR id)
    {
        Note(Text() << "timer " << id);
        KillTimer(id);
    }
    LRESULT OnTest(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }
    LRESULT OnRegistered(WPARAM, LPARAM) { return 77; }
    void OnChoice() { m_calls.push_back("choice"); }
    void OnRange(UINT id) { Note(Text() << "range " << id); }
    void PostNcDestroy() override { m_calls.push_back("gone"); }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNAMIC(CRecorder, CWnd)

BEGIN_MESSAGE_MAP(CRecorder, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_LBUTTONDOWN()
    ON_WM_KEYDOWN()
    ON_WM_SIZE()
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_TIMER()
    ON_MESSAGE(TestMessage, &CRecorder::OnTest)
    ON_REGISTERED_MESSAGE(RegisteredMessage, &CRecorder::OnRegistered)
    ON_COMMAND(500, &CRecorder::OnChoice)
    ON_COMMAND_RANGE(501, 509, &CRecorder::OnRange)
    ON_BN_CLICKED(600, &CRecorder::OnChoice)
END_MESSAGE_MAP()

// Inherits the recorder's handlers and replaces one.
class CDerived : public CRecorder
{
protected:
    void OnChoice() { m_calls.push_back("derived choice"); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CDerived, CRecorder)
    ON_COMMAND(500, &CDerived::OnChoice)
END_MESSAGE_MAP()

class CCountingEdit : public CEdit
{
public:
    int m_characters = 0;

protected:
    void OnChar(UINT character, UINT repeat, UINT flags)
    {
        ++m_characters;
        CEdit::OnChar(character, repeat, flags);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CCountingEdit, CEdit)
    ON_WM_CHAR()
END_MESSAGE_MAP()

// A button that handles what its parent hands back.
class CReflecting : public CButton
{
public:
    int m_clicks = 0, m_draws = 0;
    bool m_pass = false;
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        ++m_draws;
        CDC::FromHandle(item->hDC)->FillSolidRect(&item->rcItem, RGB(200, 0, 0));
    }

protected:
    BOOL OnClicked() { return ++m_clicks > 0 && !m_pass; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CReflecting, CButton)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &CReflecting::OnClicked)
END_MESSAGE_MAP()
} // namespace

TEST(Windows, MessagesReachTheirHandlers)
{
    CRecorder window;
    ASSERT_TRUE(window.Make());
    EXPECT_EQ(CWnd::FromHandle(window), &window);
    window.m_calls.clear();
    window.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(-3, 5));
    window.SendMessage(WM_KEYDOWN, VK_SPACE, MAKELPARAM(2, 0));
    window.SendMessage(WM_COMMAND, 500);
    window.SendMessage(WM_COMMAND, 505);
    window.SendMessage(WM_COMMAND, 510);
    EXPECT_EQ(window.m_calls, (std::vector<std::string>{"down 1 -3,5", "key 32x2", "choice", "range 505"}));
    EXPECT_EQ(window.SendMessage(TestMessage, 40, 2), 42);
    EXPECT_EQ(window.SendMessage(RegisteredMessage), 77);
    window.SetTimer(9, 10, nullptr);
    PumpMessages(200);
    EXPECT_EQ(window.m_calls.back(), "timer 9");
    window.ShowWindow(SW_SHOWNOACTIVATE);
    window.UpdateWindow();
    EXPECT_EQ(window.m_calls.back(), "paint");
    EXPECT_EQ(ShownPixel(window, {100, 50}), RGB(10, 20, 30));
    window.MoveWindow(0, 0, 120, 90);
    EXPECT_NE(std::find(window.m_calls.begin(), window.m_calls.end(), "size 120x90"), window.m_calls.end());

    CDerived derived;
    ASSERT_TRUE(derived.Make());
    derived.m_calls.clear();
    derived.SendMessage(WM_COMMAND, 500);
    derived.SendMessage(WM_COMMAND, 501);
    EXPECT_EQ(derived.m_calls, (std::vector<std::string>{"derived choice", "range 501"}));
}

TEST(Windows, LifeFromCreationToTheEnd)
{
    CRecorder window;
    window.m_refuse = true;
    EXPECT_FALSE(window.Make());
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(window.m_calls.front() + window.m_calls.back(), "create recordergone");
    window.m_refuse = false;
    window.m_calls.clear();
    ASSERT_TRUE(window.Make());
    const HWND handle = window;
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_EQ(window.m_calls, (std::vector<std::string>{"create recorder", "size 200x100", "destroy", "gone"}));
    EXPECT_FALSE(IsWindow(handle));

    // An object that deletes itself with its window.
    struct CSelfDeleting : CRecorder
    {
        explicit CSelfDeleting(bool& deleted) : m_flag(deleted) {}
        ~CSelfDeleting() override { m_flag = true; }
        void PostNcDestroy() override { delete this; }
        bool& m_flag;
    };
    bool deleted = false;
    auto* self = new CSelfDeleting(deleted);
    ASSERT_TRUE(self->Make());
    ::DestroyWindow(*self);
    EXPECT_TRUE(deleted);
}

TEST(Windows, ManyRoundsLeaveNothing)
{
    ExpectNothingLeftBehind(300,
                            [](int)
                            {
                                CRecorder window;
                                ASSERT_TRUE(window.Make());
                                CButton button;
                                ASSERT_TRUE(button.Create("b", WS_CHILD, CRect(0, 0, 10, 10), &window, 600));
                                EXPECT_NE(window.GetDlgItem(600), nullptr);
                            });
    CWnd::DeleteTempMap();
}

TEST(Windows, SubclassedControlKeepsItsOwnBehaviour)
{
    CRecorder parent;
    ASSERT_TRUE(parent.Make());
    const HWND plain = CreateWindowA("EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 80, 20, parent,
                                     reinterpret_cast<HMENU>(700), nullptr, nullptr);
    const auto procedure = GetWindowLongPtrA(plain, GWLP_WNDPROC);
    CCountingEdit edit;
    ASSERT_TRUE(edit.SubclassDlgItem(700, &parent));
    EXPECT_FALSE(CEdit().SubclassWindow(plain)) << "it has an object";
    edit.SendMessage(WM_CHAR, 'x', 1);
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(text, "x");
    EXPECT_EQ(edit.m_characters, 1);
    EXPECT_EQ(edit.UnsubclassWindow(), plain);
    EXPECT_EQ(GetWindowLongPtrA(plain, GWLP_WNDPROC), procedure);
    SendMessageA(plain, WM_CHAR, 'y', 1);
    EXPECT_EQ(edit.m_characters, 1);
    // Detached only: the control still works as itself.
    ASSERT_TRUE(edit.SubclassWindow(plain));
    edit.Detach();
    SendMessageA(plain, WM_CHAR, 'z', 1);
    EXPECT_EQ(edit.m_characters, 1);
    char content[10];
    GetWindowTextA(plain, content, sizeof content);
    EXPECT_STREQ(content, "xyz");
}

TEST(Windows, ControlsAnswerWhatTheySentToTheirParent)
{
    CRecorder parent;
    ASSERT_TRUE(parent.Make());
    CReflecting button;
    ASSERT_TRUE(button.Create("b", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, CRect(0, 0, 50, 20), &parent, 600));
    parent.m_calls.clear();
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(button.m_clicks, 1);
    EXPECT_EQ(std::count(parent.m_calls.begin(), parent.m_calls.end(), "choice"), 0);
    button.m_pass = true;
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(button.m_clicks, 2);
    EXPECT_EQ(std::count(parent.m_calls.begin(), parent.m_calls.end(), "choice"), 1);

    parent.ShowWindow(SW_SHOWNOACTIVATE);
    button.RedrawWindow();
    EXPECT_GT(button.m_draws, 0);
    EXPECT_EQ(ShownPixel(button, {5, 5}), RGB(200, 0, 0));
}

// Exceptions end in the window procedure; creation fails, painting counts as done, the rest tells the user.
TEST(Windows, ExceptionsStayInTheWindowProcedure)
{
    class CTellingApp : public CWinApp
    {
    public:
        int m_told = 0;
        LRESULT ProcessWndProcException(CException* exception, const MSG* message) override
        {
            if (message->message == WM_CREATE || message->message == WM_PAINT)
                return CWinApp::ProcessWndProcException(exception, message);
            ++m_told;
            return 99;
        }
    } app;
    struct CThrowing : CWnd
    {
        UINT m_when = 0;
        int m_paints = 0;
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == WM_PAINT)
                ++m_paints;
            if (message == m_when)
                AfxThrowNotSupportedException();
            return CWnd::WindowProc(message, wParam, lParam);
        }
    } window;
    window.m_when = WM_CREATE;
    EXPECT_FALSE(window.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
    window.m_when = WM_PAINT;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
    window.ShowWindow(SW_SHOWNOACTIVATE);
    PumpMessages(100);
    EXPECT_GE(window.m_paints, 1);
    EXPECT_LT(window.m_paints, 10) << "the area was never validated";
    window.m_when = TestMessage;
    EXPECT_EQ(window.SendMessage(TestMessage), 99);
    EXPECT_EQ(app.m_told, 1);
}

TEST(Windows, LoopEndsWithTheMainWindow)
{
    class CLoopApp : public CWinApp
    {
    public:
        int m_idle = 0;
        BOOL OnIdle(LONG count) override
        {
            ++m_idle;
            m_pMainWnd->PostMessage(WM_CLOSE);
            return CWinApp::OnIdle(count);
        }
    } app;
    struct CTranslating : CRecorder
    {
        int m_seen = 0;
        BOOL PreTranslateMessage(MSG* message) override
        {
            m_seen += message->message == TestMessage;
            return message->message == TestMessage && message->wParam == 1;
        }
    } window;
    ASSERT_TRUE(window.Make());
    app.m_pMainWnd = &window;
    EXPECT_EQ(AfxGetMainWnd(), &window);
    CButton child;
    ASSERT_TRUE(child.Create("c", WS_CHILD, CRect(0, 0, 5, 5), &window, 600));
    child.PostMessage(TestMessage, 1); // seen by the parent, and taken
    window.PostMessage(TestMessage, 2);
    EXPECT_EQ(app.Run(), 0);
    EXPECT_EQ(window.m_seen, 2);
    EXPECT_EQ(app.m_idle, 1);
    EXPECT_EQ(app.m_pMainWnd, nullptr);
}
