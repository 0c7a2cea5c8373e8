#include "DialogSupport.h"
#include "support/OpenHandles.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <psapi.h>
#include <algorithm>
#include <fstream>
#include <iterator>

CurrentLibrary::CurrentLibrary(const std::string& name)
    : m_former(AfxGetResourceHandle()), m_module(LoadLibraryA((TestFolder() + "dialogs\\" + name).c_str()))
{
    EXPECT_TRUE(m_module) << name;
    AfxSetResourceHandle(m_module);
}

CurrentLibrary::~CurrentLibrary()
{
    EXPECT_EQ(AfxGetResourceHandle(), m_module) << "the dialog has left another resource handle behind";
    AfxSetResourceHandle(m_former);
    FreeLibrary(m_module);
}

PlacedFile::PlacedFile(const std::string& path, const std::string& source) : m_path(path)
{
    EXPECT_TRUE(CopyFileA((TestFolder() + source).c_str(), path.c_str(), FALSE)) << path << ": " << GetLastError();
}

PlacedFile PlacedFile::Of(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
    return PlacedFile(path);
}

PlacedFile::PlacedFile(PlacedFile&& other) noexcept : m_path(std::move(other.m_path))
{
    other.m_path.clear();
}

PlacedFile::~PlacedFile()
{
    if (!m_path.empty())
        DeleteFileA(m_path.c_str());
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

void Click(HWND dialog, int id)
{
    const HWND control = GetDlgItem(dialog, id);
    PostMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
    PostMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
    Pump();
}

std::string TextOf(HWND dialog, int id)
{
    char text[512] = "";
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

bool IsShown(HWND dialog, int id)
{
    return (GetWindowLongA(GetDlgItem(dialog, id), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool IsEnabled(HWND dialog, int id)
{
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

std::vector<int> TabOrder(HWND dialog)
{
    std::vector<int> order;
    const HWND first = GetFocus();
    do
    {
        order.push_back(GetDlgCtrlID(GetFocus()));
        Type(VK_TAB);
    } while (GetFocus() != first && order.size() < 30 && IsChild(dialog, GetFocus()));
    return order;
}

RECT AreaOf(HWND dialog, int id)
{
    RECT rect;
    GetWindowRect(GetDlgItem(dialog, id), &rect);
    POINT corners[2] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
    for (POINT& corner : corners)
        ScreenToClient(dialog, &corner);
    return {std::min(corners[0].x, corners[1].x), corners[0].y, std::max(corners[0].x, corners[1].x), corners[1].y};
}

namespace
{
struct Control
{
    HWND window;
    int id;
    RECT area;
    DWORD style;
    bool button;

    bool IsGroupBox() const { return button && (style & BS_TYPEMASK) == BS_GROUPBOX; }
    bool HasMark() const
    {
        const DWORD type = style & BS_TYPEMASK;
        return button && (type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON);
    }
};

std::vector<Control> VisibleControls(HWND dialog)
{
    std::vector<Control> controls;
    for (HWND window = GetWindow(dialog, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT))
    {
        char name[32] = "";
        GetClassNameA(window, name, sizeof name);
        const int id = GetDlgCtrlID(window);
        RECT area = id == -1 ? RECT() : AreaOf(dialog, id);
        if (id == -1)
        {
            GetWindowRect(window, &area);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
        }
        const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
        if (style & WS_VISIBLE)
            controls.push_back({window, id, area, style, lstrcmpiA(name, "Button") == 0});
    }
    return controls;
}

bool TextFits(const Control& control)
{
    char text[512] = "";
    GetWindowTextA(control.window, text, sizeof text);
    const int width = control.area.right - control.area.left, height = control.area.bottom - control.area.top;
    const HDC dc = GetDC(control.window);
    const HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(control.window, WM_GETFONT, 0, 0)));
    RECT needed = {0, 0, width, 0};
    DrawTextA(dc, text, -1, &needed, DT_CALCRECT | (control.button ? DT_SINGLELINE : DT_WORDBREAK));
    SelectObject(dc, former);
    ReleaseDC(control.window, dc);
    const int extra = control.HasMark() ? 20 : control.button ? 12 : 0; // the mark; the push button's margins
    return needed.right + extra <= width && (needed.bottom <= height || control.IsGroupBox());
}
} // namespace

std::vector<std::string> LayoutFaults(HWND dialog, int firstFreeControl, int lastFreeControl)
{
    std::vector<std::string> faults;
    RECT client;
    GetClientRect(dialog, &client);
    const std::vector<Control> controls = VisibleControls(dialog);
    const auto report = [&faults](const Control& control, const char* what)
    { faults.push_back(std::to_string(control.id) + " " + what); };
    for (const Control& control : controls)
    {
        const RECT& area = control.area;
        if (!TextFits(control))
            report(control, "is clipped");
        if (area.left < 8 || area.top < 8 || area.right > client.right - 8 || area.bottom > client.bottom - 8)
            report(control, "is too near to the edge of the window");
        const bool free = control.id >= firstFreeControl && control.id <= lastFreeControl;
        for (const LONG edge : {area.left, area.top})
            if (edge % 4 != 0 && !free)
                report(control, "is off the grid");
        for (const Control& other : controls)
        {
            RECT common;
            if (other.window != control.window && !control.IsGroupBox() && !other.IsGroupBox() &&
                IntersectRect(&common, &area, &other.area))
                report(control, "overlaps another");
        }
    }
    return faults;
}

std::vector<COLORREF> ShownPixels(HWND dialog, const RECT& area)
{
    RECT rect = area;
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    const int width = rect.right - rect.left, height = rect.bottom - rect.top;
    BITMAPINFO format = {{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    void* bits = nullptr;
    // The window's own surface: the screen follows in its own time.
    RECT window;
    GetWindowRect(dialog, &window);
    const HDC surface = GetWindowDC(dialog), memory = CreateCompatibleDC(nullptr);
    SetLayout(surface, 0);
    const HBITMAP copy = CreateDIBSection(memory, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(memory, copy);
    BitBlt(memory, 0, 0, width, height, surface, rect.left - window.left, rect.top - window.top, SRCCOPY);
    GdiFlush();
    std::vector<COLORREF> pixels;
    const auto* colours = static_cast<const RGBQUAD*>(bits);
    std::transform(colours, colours + width * height, std::back_inserter(pixels),
                   [](const RGBQUAD& colour) { return RGB(colour.rgbRed, colour.rgbGreen, colour.rgbBlue); });
    SelectObject(memory, former);
    DeleteObject(copy);
    DeleteDC(memory);
    ReleaseDC(dialog, surface);
    return pixels;
}

std::vector<std::size_t> SystemObjects()
{
    std::size_t drawing = 0, windows = 0;
    for (std::size_t handle = 1; handle <= 0xFFFF; ++handle)
        drawing += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND, LPARAM count)
        {
            ++*reinterpret_cast<std::size_t*>(count);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    HMODULE modules[512];
    DWORD size = 0;
    EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size);
    return {drawing, windows, OpenHandles(), size / sizeof(HMODULE)};
}
