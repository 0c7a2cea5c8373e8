#include "DialogSupport.h"
#include "support/GdiObjects.h"
#include "support/OpenHandles.h"
#include <algorithm>
#include <array>
#include <fstream>

DialogTest::DialogTest(const char* library, const SettingList& settings)
    : m_library(LoadLibraryA((TestFolder() + "dialogs\\" + library).c_str())), m_settings(settings)
{
    EXPECT_TRUE(m_library) << library;
    AfxSetResourceHandle(m_library);
    Product();
}

DialogTest::~DialogTest()
{
    EXPECT_EQ(AfxGetResourceHandle(), m_library) << "the dialog has left another resource handle behind";
    AfxSetResourceHandle(m_former);
    FreeLibrary(m_library);
}

void DialogTest::Product(const SettingList& changes)
{
    m_product.reset();
    SettingList settings = m_settings;
    settings.insert(settings.end(), changes.begin(), changes.end());
    m_product = std::make_unique<TestProduct>(settings);
}

void PlacedFiles::Copy(const std::string& path, const std::string& source)
{
    EXPECT_TRUE(CopyFileA((TestFolder() + source).c_str(), path.c_str(), FALSE)) << path << ": " << GetLastError();
    m_paths.push_back(path);
}

void PlacedFiles::Write(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
    m_paths.push_back(path);
}

void PlacedFiles::Delete(const std::string& path)
{
    EXPECT_TRUE(DeleteFileA(path.c_str())) << path << " is still loaded? " << GetLastError();
    std::erase(m_paths, path);
}

void PlacedFiles::Clear()
{
    while (!m_paths.empty())
        Delete(std::string(m_paths.back()));
}

void Pump()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        if (!CWnd::WalkPreTranslateTree(nullptr, &message))
        {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    CWnd::DeleteTempMap();
    CGdiObject::DeleteTempMap();
    CDC::DeleteTempMap();
}

void Type(WPARAM key)
{
    PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
    Pump();
}

void TypeMnemonic(char key)
{
    PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(key), 1 << 29);
    Pump();
}

void Click(const CWnd& dialog, int id)
{
    // Sent, not posted: the display's late news of the focus would come between the two and take the mouse away.
    const HWND control = GetDlgItem(dialog.m_hWnd, id);
    SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
    SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
    Pump();
}

INT_PTR RunModal(CDialog& dialog, WPARAM key)
{
    static CDialog* open;
    static MSG typed;
    open = &dialog;
    typed = {
        nullptr, key ? static_cast<UINT>(WM_KEYDOWN) : static_cast<UINT>(WM_SYSCOMMAND), key ? key : SC_CLOSE, 0, 0,
        {}};
    const UINT_PTR timer = SetTimer(nullptr, 0, 10,
                                    [](HWND, UINT, UINT_PTR id, DWORD)
                                    {
                                        KillTimer(nullptr, id);
                                        open->PostMessage(typed.message, typed.wParam);
                                    });
    const INT_PTR result = dialog.DoModal();
    KillTimer(nullptr, timer);
    return result;
}

std::string TextOf(const CWnd& dialog, int id)
{
    char text[512] = "";
    GetDlgItemTextA(dialog.m_hWnd, id, text, sizeof text);
    return text;
}

bool IsShown(const CWnd& dialog, int id)
{
    return IsWindowVisible(GetDlgItem(dialog.m_hWnd, id)) != FALSE;
}

bool IsEnabled(const CWnd& dialog, int id)
{
    return IsWindowEnabled(GetDlgItem(dialog.m_hWnd, id)) != FALSE;
}

std::vector<int> TabOrder(const CWnd& dialog)
{
    std::vector<int> order;
    const HWND first = GetFocus();
    do
    {
        order.push_back(GetDlgCtrlID(GetFocus()));
        Type(VK_TAB);
    } while (GetFocus() != first && order.size() < 30 && IsChild(dialog.m_hWnd, GetFocus()));
    return order;
}

namespace
{
CRect PlaceOf(HWND control, HWND window)
{
    CRect rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&rect), 2);
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    return rect;
}

struct Control
{
    HWND window;
    CRect area;
    bool button, group, marked;
};

std::vector<Control> VisibleControls(HWND dialog)
{
    std::vector<Control> controls;
    for (HWND window = GetWindow(dialog, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT))
    {
        char name[32] = "";
        GetClassNameA(window, name, sizeof name);
        const bool button = lstrcmpiA(name, "Button") == 0;
        const LONG type = GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK;
        if (IsWindowVisible(window))
            controls.push_back({window, PlaceOf(window, dialog), button, button && type == BS_GROUPBOX,
                                button && (type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON)});
    }
    return controls;
}

bool TextFits(const Control& control)
{
    CWnd& window = *CWnd::FromHandle(control.window);
    CString text;
    window.GetWindowText(text);
    CClientDC context(&window);
    CFont* const former = context.SelectObject(window.GetFont());
    CRect needed(0, 0, control.area.Width(), 0);
    context.DrawText(text, &needed, DT_CALCRECT | (control.button ? DT_SINGLELINE : DT_WORDBREAK));
    context.SelectObject(former);
    const int extra = control.marked ? 20 : control.button ? 12 : 0; // the mark; the push button's margins
    return needed.right + extra <= control.area.Width() && (needed.bottom <= control.area.Height() || control.group);
}
} // namespace

std::vector<std::string> LayoutFaults(const CWnd& dialog, int firstFreeControl, int lastFreeControl)
{
    std::vector<std::string> faults;
    CRect inside, common;
    dialog.GetClientRect(&inside);
    inside.DeflateRect(8, 8);
    const std::vector<Control> controls = VisibleControls(dialog.m_hWnd);
    for (const Control& control : controls)
    {
        const int id = GetDlgCtrlID(control.window);
        const auto report = [&faults, id](bool fault, const char* what)
        {
            if (fault)
                faults.push_back(std::to_string(id) + " " + what);
        };
        const CRect& area = control.area;
        report(!TextFits(control), "is clipped");
        report(!UnionRect(&common, &inside, &area) || common != inside, "is too near to the edge of the window");
        report((area.left % 4 || area.top % 4) && (id < firstFreeControl || id > lastFreeControl), "is off the grid");
        for (const Control& other : controls)
            report(other.window != control.window && !control.group && !other.group &&
                       IntersectRect(&common, &area, &other.area),
                   "overlaps another");
    }
    return faults;
}

CRect AreaOf(const CWnd& dialog, int id)
{
    return PlaceOf(GetDlgItem(dialog.m_hWnd, id), dialog.m_hWnd);
}

std::vector<COLORREF> ShownPixels(const CWnd& dialog, int id)
{
    RedrawWindow(dialog.m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    CRect window, area;
    dialog.GetWindowRect(&window);
    GetWindowRect(GetDlgItem(dialog.m_hWnd, id), &area);
    area.OffsetRect(-window.left, -window.top);
    // The window's own surface: the screen follows in its own time.
    const HDC surface = GetWindowDC(dialog.m_hWnd);
    SetLayout(surface, 0);
    std::vector<COLORREF> pixels;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            pixels.push_back(GetPixel(surface, x, y));
    ReleaseDC(dialog.m_hWnd, surface);
    return pixels;
}

void ExpectNothingLeftBehind(const std::function<void(int)>& round)
{
    const auto count = []
    {
        std::size_t windows = 0;
        const auto add = [](HWND, LPARAM sum) -> BOOL { return ++*reinterpret_cast<std::size_t*>(sum) != 0; };
        EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&windows));
        return std::array{static_cast<std::size_t>(CountGdiObjects()), windows, OpenHandles(), LoadedModules()};
    };
    for (int i = 0; i < 10; ++i)
        round(i);
    const auto before = count();
    for (int i = 0; i < 90; ++i)
        round(i);
    EXPECT_EQ(count(), before);
}
