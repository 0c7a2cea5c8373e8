// Dialogs from a resource-only library: modal and modeless, and the exchange of values.
#include "ids.h"
#include <afxcmn.h>
#include <gtest/gtest.h>
#include <array>

namespace
{
class CValues : public CDialog
{
public:
    explicit CValues(CWnd* parent = nullptr) : CDialog(IDD_MODAL, parent) {}

    CString m_text{"start"};
    int m_number = 42, m_check = 1, m_radio = 2, m_combo = 1, m_list = 0;
    CButton m_owner;
    void (*m_atStart)(CValues&) = nullptr;
    bool m_translated = false;

    // On a timer, so that it runs in the dialog's loop when the dialog has been shown.
    using Step = void (*)(CValues&);
    void Later(Step step) { SetTimer(reinterpret_cast<UINT_PTR>(step), 1, nullptr); }

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        CDialog::DoDataExchange(exchange);
        DDX_Control(exchange, IDC_OWNER, m_owner);
        DDX_Text(exchange, IDC_TEXT, m_text);
        DDV_MaxChars(exchange, m_text, 20);
        DDX_Text(exchange, IDC_NUMBER, m_number);
        DDX_Check(exchange, IDC_CHECK, m_check);
        DDX_Radio(exchange, IDC_RADIO1, m_radio);
        DDX_CBIndex(exchange, IDC_COMBO, m_combo);
        DDX_LBIndex(exchange, IDC_LIST, m_list);
    }
    BOOL OnInitDialog() override
    {
        for (LPCSTR item : {"a", "b", "c"})
        {
            SendDlgItemMessage(IDC_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
            SendDlgItemMessage(IDC_LIST, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        }
        CDialog::OnInitDialog();
        if (m_atStart)
            m_atStart(*this);
        return TRUE;
    }
    BOOL PreTranslateMessage(MSG* message) override
    {
        m_translated = m_translated || message->message == WM_TIMER;
        return CDialog::PreTranslateMessage(message);
    }
    void OnTimer(UINT_PTR step)
    {
        KillTimer(step);
        reinterpret_cast<Step>(step)(*this);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CValues, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()

class Dialogs : public testing::Test
{
protected:
    Dialogs() { AfxSetResourceHandle(m_module); }
    ~Dialogs() override
    {
        AfxSetResourceHandle(m_saved);
        FreeLibrary(m_module);
    }
    const HINSTANCE m_saved = AfxGetResourceHandle();
    const HMODULE m_module = LoadLibraryA("framework_first.dll");
};
} // namespace

TEST_F(Dialogs, ModalDialogExchangesItsValues)
{
    CValues dialog;
    dialog.m_atStart = [](CValues& d)
    {
        CString text;
        d.GetDlgItemText(IDC_TEXT, text);
        EXPECT_EQ(text, "start");
        EXPECT_EQ(d.GetDlgItemInt(IDC_NUMBER), 42u);
        EXPECT_EQ(d.IsDlgButtonChecked(IDC_CHECK), 1u);
        EXPECT_EQ(d.GetCheckedRadioButton(IDC_RADIO1, IDC_RADIO3), IDC_RADIO3);
        EXPECT_EQ(d.SendDlgItemMessage(IDC_COMBO, CB_GETCURSEL), 1);
        EXPECT_EQ(CWnd::FromHandlePermanent(d.GetDlgItem(IDC_OWNER)->m_hWnd), &d.m_owner);
        d.Later(
            [](CValues& later)
            {
                EXPECT_TRUE(later.IsWindowVisible());
                later.SetDlgItemText(IDC_TEXT, "changed");
                later.SetDlgItemInt(IDC_NUMBER, static_cast<UINT>(-7));
                later.CheckDlgButton(IDC_CHECK, 0);
                later.CheckRadioButton(IDC_RADIO1, IDC_RADIO3, IDC_RADIO2);
                later.SendDlgItemMessage(IDC_COMBO, CB_SETCURSEL, 2);
                later.SendDlgItemMessage(IDC_LIST, LB_SETCURSEL, 1);
                later.SendDlgItemMessage(IDOK, BM_CLICK);
            });
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(dialog.m_translated);
    EXPECT_EQ(dialog.m_text, "changed");
    EXPECT_EQ((std::array{dialog.m_number, dialog.m_check, dialog.m_radio, dialog.m_combo, dialog.m_list}),
              (std::array{-7, 0, 1, 2, 1}));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.m_owner.m_hWnd, nullptr) << "the control's object outlives its window";
}

TEST_F(Dialogs, KeysWorkAsInADialog)
{
    CValues dialog;
    dialog.m_atStart = [](CValues& d)
    {
        d.Later(
            [](CValues& later)
            {
                EXPECT_EQ(CWnd::GetFocus()->GetDlgCtrlID(), IDC_TEXT);
                ::PostMessageA(CWnd::GetFocus()->m_hWnd, WM_KEYDOWN, VK_TAB, 0x000F0001);
                later.Later(
                    [](CValues&)
                    {
                        EXPECT_EQ(CWnd::GetFocus()->GetDlgCtrlID(), IDC_NUMBER);
                        ::PostMessageA(CWnd::GetFocus()->m_hWnd, WM_KEYDOWN, VK_ESCAPE, 0x00010001);
                    });
            });
    };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.m_text, "start");
}

// A program whose windows are all modal dialogs has no other loop to be idle in.
TEST_F(Dialogs, TemporaryObjectsGoWhenTheLoopIsIdle)
{
    static const HDC screen = ::GetDC(nullptr);
    static int looks = 0;
    static CValues::Step look = [](CValues& dialog)
    {
        const bool fresh = CDC::FromHandle(screen)->m_hAttribDC == screen;
        if (fresh || ++looks == 500)
            dialog.EndDialog(fresh ? IDOK : IDABORT);
        else
            dialog.Later(look);
    };
    CValues dialog;
    dialog.m_atStart = [](CValues& d)
    {
        CDC::FromHandle(screen)->m_hAttribDC = HDC(1); // a mark: it lasts as long as the object
        d.Later(look);
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    ::ReleaseDC(nullptr, screen);
}

TEST_F(Dialogs, EndsEvenBeforeItIsShown)
{
    CValues dialog;
    dialog.m_atStart = [](CValues& d) { d.EndDialog(33); };
    EXPECT_EQ(dialog.DoModal(), 33);
    dialog.m_atStart = [](CValues&) { AfxThrowUserException(); };
    EXPECT_EQ(dialog.DoModal(), -1);
    CDialog missing(9999u);
    EXPECT_EQ(missing.DoModal(), -1);
    EXPECT_FALSE(missing.Create(9999u));
}

TEST_F(Dialogs, ModalDialogDisablesItsOwner)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "owner", WS_POPUP | WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 0));
    CButton child; // a child's dialog belongs to its top-level window
    ASSERT_TRUE(child.Create("c", WS_CHILD, CRect(0, 0, 5, 5), &owner, 1));
    CValues dialog(&child);
    dialog.m_atStart = [](CValues& d)
    {
        EXPECT_FALSE(d.GetOwner()->IsWindowEnabled());
        d.Later([](CValues& later) { later.EndDialog(IDCANCEL); });
    };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(Dialogs, ModelessDialog)
{
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(IDD_PLAIN));
    CString title;
    dialog.GetWindowText(title);
    EXPECT_EQ(title, "Plain");
    EXPECT_FALSE(dialog.IsWindowVisible());
    dialog.ShowWindow(SW_SHOW);
    dialog.SendDlgItemMessage(IDOK, BM_CLICK);
    EXPECT_FALSE(dialog.IsWindowVisible()) << "the default answer to OK hides it";
    EXPECT_TRUE(dialog.DestroyWindow());
    CRect rect(0, 0, 4, 8);
    ASSERT_TRUE(dialog.Create(IDD_PLAIN));
    dialog.MapDialogRect(&rect);
    EXPECT_GT(rect.right, 4);
}

TEST_F(Dialogs, ToolTipsKnowTheirTools)
{
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "tools", WS_POPUP, CRect(0, 0, 100, 100), nullptr, 0));
    CButton button;
    ASSERT_TRUE(button.Create("b", WS_CHILD, CRect(0, 0, 20, 20), &window, 1));
    CToolTipCtrl tips;
    ASSERT_TRUE(tips.Create(&window, TTS_ALWAYSTIP));
    EXPECT_TRUE(tips.AddTool(&button, "the button"));
    EXPECT_TRUE(tips.AddTool(&window, IDS_SHARED, CRect(60, 60, 70, 70), 8));
    CString text;
    tips.GetText(text, &window, 8);
    EXPECT_EQ(text, "from the first");
    tips.UpdateTipText("another", &button);
    tips.GetText(text, &button);
    EXPECT_EQ(text, "another");
    tips.DelTool(&window, 8);
    EXPECT_EQ(tips.GetToolCount(), 1);
}
