#include "Tour.h"
#include "InkReport.h"
#include "ScreenPicture.h"
#include "resource.h"
#include <cstdio>
#include <iterator>

namespace
{
constexpr UINT_PTR TourTimer = 1;
constexpr UINT StepMilliseconds = 500;

class TouringWindow;

/// A stop: what is done before, and the name of the picture taken when the window has settled.
struct Stop
{
    const char* name;
    void (*prepare)(TouringWindow& window);
    int roomBelow = 0; // pixels below the window that belong into the picture
};

constexpr int PickerRoom = 110;

class TouringWindow : public JobStatusWindow
{
public:
    TouringWindow(const std::string& folder, bool rightToLeft, int tanks, const Stop* stops, size_t count, int first)
        : JobStatusWindow(SampleInkReport(), tanks), m_prefix(folder + "\\" + (rightToLeft ? "rtl" : "ltr")),
          m_stops(stops), m_count(count), m_first(first)
    {
    }

    int Saved() const { return m_saved; }

    void MouseOver(int id)
    {
        CRect rect;
        GetDlgItem(id)->GetWindowRect(&rect);
        SetCursorPos(rect.CenterPoint().x, rect.CenterPoint().y);
        mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
    }
    void MouseDown() { mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0); }
    void MouseUp() { mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0); }
    void Click(int id)
    {
        MouseOver(id);
        MouseDown();
        MouseUp();
    }
    void MouseAway() { SetCursorPos(2, 2); }
    void KeyWithAlt(BYTE key)
    {
        keybd_event(VK_MENU, 0, 0, 0);
        Key(key);
        keybd_event(VK_MENU, 0, KEYEVENTF_KEYUP, 0);
    }
    /// Escape, as the user leaves a dialog that a stop has opened.
    void CloseDialog() { Key(VK_ESCAPE); }
    void Key(BYTE key)
    {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }

protected:
    BOOL OnInitDialog() override
    {
        JobStatusWindow::OnInitDialog();
        SetTimer(TourTimer, StepMilliseconds, nullptr);
        return TRUE;
    }

    afx_msg void OnTimer(UINT_PTR)
    {
        if (m_prepared)
        {
            CRect rect;
            GetWindowRect(&rect);
            rect.bottom += m_stops[m_next].roomBelow;
            char number[8];
            std::snprintf(number, sizeof number, "-%02d-", m_first + static_cast<int>(m_next));
            const std::string path = m_prefix + number + m_stops[m_next].name + ".bmp";
            if (!SaveScreen(rect, path))
            {
                m_saved = -1;
                PostQuitMessage(1); // also for the loop of a dialog that is open
                return;
            }
            ++m_saved;
            ++m_next;
            m_prepared = false;
        }
        if (m_next == m_count)
        {
            KillTimer(TourTimer);
            EndDialog(IDOK);
            return;
        }
        m_prepared = true; // first: what is prepared may run a loop of its own
        m_stops[m_next].prepare(*this);
    }
    DECLARE_MESSAGE_MAP()

private:
    const std::string m_prefix;
    const Stop* const m_stops;
    const size_t m_count;
    const int m_first;
    size_t m_next = 0;
    int m_saved = 0;
    bool m_prepared = false;
};

BEGIN_MESSAGE_MAP(TouringWindow, JobStatusWindow)
    ON_WM_TIMER()
END_MESSAGE_MAP()

constexpr Stop TwoTankStops[] = {
    {"window", [](TouringWindow& window) { window.MouseAway(); }},
    {"hover", [](TouringWindow& window) { window.MouseOver(IDC_ORDER); }},
    {"pressed", [](TouringWindow& window) { window.MouseDown(); }},
    {"round-hover",
     [](TouringWindow& window)
     {
         window.MouseAway(); // released outside its shape, the button reports no click
         window.MouseUp();
         window.MouseOver(IDC_OPTIONS);
     }},
    {"focus",
     [](TouringWindow& window)
     {
         window.MouseAway();
         window.GetDlgItem(IDC_OPTIONS)->SetFocus();
         window.Key(VK_TAB);
     }},
    {"picker-open", [](TouringWindow& window) { window.Click(IDC_COLOUR); }, PickerRoom},
    {"colour-chosen",
     [](TouringWindow& window)
     {
         for (const int key : {VK_UP, VK_LEFT, VK_LEFT, VK_RETURN})
             window.Key(static_cast<BYTE>(key));
     }},
    {"link-hover", [](TouringWindow& window) { window.MouseOver(IDC_FIRST_LINK); }},
    {"support", [](TouringWindow& window) { window.Click(IDC_SUPPORT); }},
    {"about",
     [](TouringWindow& window)
     {
         window.CloseDialog();
         window.Click(IDC_ABOUT);
     }},
    {"about-details", [](TouringWindow& window) { window.KeyWithAlt('D'); }},
    {"options",
     [](TouringWindow& window)
     {
         window.CloseDialog();
         window.Click(IDC_OPTIONS);
     }},
    {"disabled-unknown-ink",
     [](TouringWindow& window)
     {
         window.CloseDialog();
         window.MouseAway();
         INKINFO report = SampleInkReport();
         report.InkPercent1 = -101; // the printer's mark for a level it does not know
         report.iLogCartID1 = 32;   // no cartridge
         window.ShowReport(report);
         for (const int id : {IDC_ORDER, IDC_SUPPORT, IDC_ABOUT, IDC_SUPPLIES, IDC_OPTIONS, IDC_COLOUR})
             window.GetDlgItem(id)->EnableWindow(FALSE);
         window.Invalidate();
     }},
};

constexpr Stop FourTankStops[] = {
    {"four-tanks", [](TouringWindow& window) { window.MouseAway(); }},
};

int Tour(const std::string& folder, bool rightToLeft, int tanks, const Stop* stops, size_t count, int first)
{
    TouringWindow window(folder, rightToLeft, tanks, stops, count, first);
    window.DoModal();
    return window.Saved();
}
} // namespace

int TakeTour(const std::string& folder, bool rightToLeft)
{
    SetProcessDefaultLayout(rightToLeft ? LAYOUT_RTL : 0);
    const int two = Tour(folder, rightToLeft, 2, TwoTankStops, std::size(TwoTankStops), 1);
    const int four = Tour(folder, rightToLeft, 4, FourTankStops, std::size(FourTankStops), two + 1);
    SetProcessDefaultLayout(0);
    return two < 0 || four < 0 ? -1 : two + four;
}
