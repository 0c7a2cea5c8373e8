#include "DialogSupport.h"
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

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

PlacedFiles::PlacedFiles(const std::string& folder) : m_folder(folder)
{
    if (!folder.empty())
        std::filesystem::remove_all(folder); // a run that was ended may have left it
    CreateDirectoryA(folder.c_str(), nullptr);
}

PlacedFiles::~PlacedFiles()
{
    Clear();
    RemoveDirectoryA(m_folder.c_str());
}

void PlacedFiles::Copy(const std::string& name, const std::string& source)
{
    EXPECT_TRUE(CopyFileA((TestFolder() + source).c_str(), Path(name).c_str(), FALSE)) << name << GetLastError();
    m_names.push_back(name);
}

void PlacedFiles::Write(const std::string& name, const std::string& bytes)
{
    std::ofstream(Path(name), std::ios::binary) << bytes;
    m_names.push_back(name);
}

void PlacedFiles::Delete(const std::string& name)
{
    EXPECT_TRUE(DeleteFileA(Path(name).c_str())) << name << " is still loaded? " << GetLastError();
    std::erase(m_names, name);
}

void PlacedFiles::Clear()
{
    while (!m_names.empty())
        Delete(std::string(m_names.back()));
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

void Type(WPARAM key, UINT message)
{
    PostMessageA(GetFocus(), message, key, 1);
    Pump();
}

INT_PTR RunModal(CDialog& dialog, UINT message, WPARAM wParam)
{
    static std::function<void()> post;
    post = [&] { dialog.PostMessage(message, wParam); };
    const auto once = [](HWND, UINT, UINT_PTR timer, DWORD)
    {
        KillTimer(nullptr, timer);
        post();
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, once);
    const INT_PTR result = dialog.DoModal();
    KillTimer(nullptr, timer);
    return result;
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

bool TextFits(CWnd& control, bool button, int room, const CRect& area)
{
    CString text;
    control.GetWindowText(text);
    CClientDC context(&control);
    CFont* const former = context.SelectObject(control.GetFont());
    CRect needed(0, 0, area.Width(), 0);
    context.DrawText(text, &needed, DT_CALCRECT | (button ? DT_SINGLELINE : DT_WORDBREAK));
    context.SelectObject(former);
    return needed.right + room <= area.Width() && needed.bottom <= area.Height();
}
} // namespace

std::vector<std::string> LayoutFaults(const CWnd& dialog, int firstFreeControl, int lastFreeControl)
{
    std::vector<std::string> faults;
    std::vector<CRect> areas; // of the controls so far, group boxes aside
    CRect inside, common;
    dialog.GetClientRect(&inside);
    inside.DeflateRect(8, 8);
    for (CWnd* control = dialog.GetWindow(GW_CHILD); control; control = control->GetWindow(GW_HWNDNEXT))
    {
        if (!control->IsWindowVisible())
            continue;
        const int id = control->GetDlgCtrlID();
        const CRect area = PlaceOf(control->m_hWnd, dialog.m_hWnd);
        char kind[32] = "";
        GetClassNameA(control->m_hWnd, kind, sizeof kind);
        const bool button = lstrcmpiA(kind, "Button") == 0;
        const DWORD type = button ? control->GetStyle() & BS_TYPEMASK : BS_PUSHBUTTON;
        const auto report = [&faults, id](bool fault, const char* what)
        {
            if (fault)
                faults.push_back(std::to_string(id) + " " + what);
        };
        // The mark; the push button's margins.
        const int room = type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON ? 20 : button ? 12 : 0;
        report(!TextFits(*control, button, room, area), "is clipped");
        report(!UnionRect(&common, &inside, &area) || common != inside, "is too near to the edge of the window");
        report((area.left % 4 || area.top % 4) && (id < firstFreeControl || id > lastFreeControl), "is off the grid");
        if (type == BS_GROUPBOX)
            continue;
        for (const CRect& other : areas)
            report(IntersectRect(&common, &area, &other), "overlaps another");
        areas.push_back(area);
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
