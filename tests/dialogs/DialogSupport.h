// Real dialogs on the sample product's templates, driven by messages, and judged by what they show.
#pragma once

#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include <afxwin.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>

/// One of the sample product's resource libraries, the framework's current one, and a product of the test's own.
class DialogTest : public testing::Test
{
protected:
    DialogTest(const char* library, const SettingList& settings)
        : m_library(LoadLibraryA((TestFolder() + "dialogs\\" + library).c_str())), m_settings(settings)
    {
        AfxSetResourceHandle(m_library);
        Product();
    }
    ~DialogTest() override
    {
        EXPECT_EQ(AfxGetResourceHandle(), m_library) << "the dialog has left another resource handle behind";
        AfxSetResourceHandle(m_former);
        FreeLibrary(m_library);
    }
    /// Puts other settings besides the product's own or in their place.
    void Product(const SettingList& changes = {})
    {
        m_product.reset();
        SettingList settings = m_settings;
        settings.insert(settings.end(), changes.begin(), changes.end());
        m_product = std::make_unique<TestProduct>(settings);
    }

    const HINSTANCE m_former = AfxGetResourceHandle();
    const HINSTANCE m_library;

private:
    const SettingList m_settings;
    std::unique_ptr<TestProduct> m_product;
};

/// Files anywhere in the machine, gone with the object.
class PlacedFiles
{
public:
    /// In a folder of this path, with the backslash, that is made for them; without one their names are full paths.
    explicit PlacedFiles(const std::string& folder = "") : m_folder(folder)
    {
        if (!folder.empty())
            std::filesystem::remove_all(folder); // a run that was ended may have left it
        CreateDirectoryA(folder.c_str(), nullptr);
    }
    ~PlacedFiles()
    {
        while (!m_names.empty())
            Delete(std::string(m_names.back()));
        RemoveDirectoryA(m_folder.c_str());
    }

    std::string Path(const std::string& name) const { return m_folder + name; }
    /// A copy of a file of the tests' folder, or of the sample product's components in its sub-folder dialogs.
    void Copy(const std::string& name, const std::string& source)
    {
        EXPECT_TRUE(CopyFileA((TestFolder() + source).c_str(), Path(name).c_str(), FALSE)) << name << GetLastError();
        m_names.push_back(name);
    }
    void Write(const std::string& name, const std::string& bytes)
    {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        m_names.push_back(name);
    }
    void Delete(const std::string& name)
    {
        EXPECT_TRUE(DeleteFileA(Path(name).c_str())) << name << " is still loaded? " << GetLastError();
        std::erase(m_names, name);
    }

private:
    std::string m_folder;
    std::vector<std::string> m_names;
};

/// Right-to-left windows from now on, until the object is gone.
class RightToLeft
{
public:
    explicit RightToLeft(bool on = true) { SetProcessDefaultLayout(on ? LAYOUT_RTL : 0); }
    ~RightToLeft() { SetProcessDefaultLayout(0); }
};

/// Handles what waits, as the application's loop does.
inline void Pump()
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

/// Types a key into the window that has the focus, or with the message WM_SYSCHAR a mnemonic.
inline void Type(WPARAM key, UINT message = WM_KEYDOWN)
{
    PostMessageA(GetFocus(), message, key, 1);
    Pump();
}

/// Runs a modal dialog; the function is called once it is open.
inline INT_PTR RunModal(CDialog& dialog, std::function<void()> act)
{
    static std::function<void()> acting;
    acting = std::move(act);
    const auto once = [](HWND, UINT, UINT_PTR timer, DWORD)
    {
        KillTimer(nullptr, timer);
        acting();
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, once);
    const INT_PTR result = dialog.DoModal();
    KillTimer(nullptr, timer);
    return result;
}

/// Runs a modal dialog that is posted this message.
inline INT_PTR RunModal(CDialog& dialog, UINT message, WPARAM wParam)
{
    return RunModal(dialog, [&] { dialog.PostMessage(message, wParam); });
}

using Halves = std::pair<COLORREF, COLORREF>; // colours of the left and of the right half of a picture
/// The second and the third colour of a palette.
inline Halves ColoursOf(HPALETTE palette)
{
    COLORREF colours[2] = {};
    GetPaletteEntries(palette, 1, 2, reinterpret_cast<PALETTEENTRY*>(colours)); // the same bytes
    return {colours[0], colours[1]};
}

/// Expects that a dialog draws with a palette that has these colours, and answers the palette messages by it.
inline void ExpectPaletteUsed(CDialog& dialog, Halves colours)
{
    EXPECT_FALSE(dialog.SendMessage(WM_QUERYNEWPALETTE)) << "a true-colour screen has no palette to change";
    const HMODULE framework = GetModuleHandleA("tvkframe.dll");
    static std::vector<Halves> palettes;
    static UINT realized; // how many colours a palette moves
    const auto select = [](HDC context, HPALETTE palette, BOOL background)
    {
        if (palette != GetStockObject(DEFAULT_PALETTE))
            palettes.push_back(ColoursOf(palette));
        return SelectPalette(context, palette, background);
    };
    const IatPatch drawing(LibraryUnderTest(), "SelectPalette", +select);
    const IatPatch answering(framework, "SelectPalette", +select);
    const IatPatch realizing(
        framework, "RealizePalette", +[](HDC) { return realized; });
    const auto self = reinterpret_cast<WPARAM>(dialog.m_hWnd), other = reinterpret_cast<WPARAM>(GetDesktopWindow());
    CClientDC context(&dialog);
    const auto surface = reinterpret_cast<WPARAM>(context.m_hDC);
    // The message; how many colours its palette moves; how often a palette is selected; the answer; what is repainted.
    const std::tuple<UINT, WPARAM, UINT, std::size_t, LRESULT, BOOL> cases[] = {
        {WM_QUERYNEWPALETTE, 0, 3, 1, TRUE, TRUE},           {WM_QUERYNEWPALETTE, 0, 0, 1, FALSE, FALSE},
        {WM_QUERYNEWPALETTE, 0, GDI_ERROR, 1, FALSE, FALSE}, {WM_PALETTECHANGED, other, 3, 1, FALSE, TRUE},
        {WM_PALETTECHANGED, self, 3, 0, FALSE, FALSE},       {WM_ERASEBKGND, surface, 0, 3, TRUE, FALSE}};
    for (const auto& [message, wParam, moved, selections, answer, repainted] : cases)
    {
        SCOPED_TRACE(testing::Message() << message << ", " << moved << " moved");
        realized = moved;
        palettes.clear();
        dialog.ValidateRect(nullptr);
        EXPECT_EQ(dialog.SendMessage(message, wParam), answer);
        EXPECT_EQ(dialog.GetUpdateRect(nullptr), repainted);
        EXPECT_EQ(palettes, std::vector(selections, colours));
    }
}

/// What the user sees of a dialog and does with it.
template <class Dialog>
class Driven : public Dialog
{
public:
    /// A click on a button as the mouse makes it. Sent, not posted: the display's late news of the focus would come
    /// between the two messages and take the mouse away.
    void Press(int id)
    {
        const HWND control = ::GetDlgItem(this->m_hWnd, id);
        ::SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 8));
        ::SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(8, 8));
        Pump();
    }
    std::string Text(int id) const
    {
        CString text;
        this->GetDlgItemText(id, text);
        return std::string(text);
    }
    bool Shows(int id) const { return ::IsWindowVisible(::GetDlgItem(this->m_hWnd, id)) != FALSE; }
    bool Enables(int id) const { return ::IsWindowEnabled(::GetDlgItem(this->m_hWnd, id)) != FALSE; }
    bool Checked(int id) const { return this->IsDlgButtonChecked(id) == BST_CHECKED; }
};

/// The identifiers of the controls in the order of the Tab key, beginning with the one that has the focus.
inline std::vector<int> TabOrder()
{
    std::vector<int> order;
    const HWND first = GetFocus();
    for (; order.size() < 30 && (order.empty() || GetFocus() != first); Type(VK_TAB))
        order.push_back(GetDlgCtrlID(GetFocus()));
    return order;
}

/// The rectangle of a control in the dialog's client area.
inline CRect AreaOf(HWND control)
{
    CRect rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

/// Whether a control's text has its place, and this much room beside it.
inline bool TextFits(CWnd& control, bool button, int room, const CRect& area)
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

/// What is wrong with the layout: texts that do not fit, controls that overlap or leave the window, edges off the grid
/// of four pixels (those of the given controls aside).
inline std::vector<std::string> LayoutFaults(const CWnd& dialog, int firstFreeControl = 0, int lastFreeControl = 0)
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
        const CRect area = AreaOf(control->m_hWnd);
        char kind[32] = "";
        GetClassNameA(control->m_hWnd, kind, sizeof kind);
        const bool button = lstrcmpiA(kind, "Button") == 0;
        const DWORD type = button ? control->GetStyle() & BS_TYPEMASK : BS_PUSHBUTTON;
        const auto report = [&faults, id](bool fault, const char* what) // as often as it is true
        { faults.insert(faults.end(), fault ? 1 : 0, std::to_string(id) + " " + what); };
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

/// The pixels of a control's place as the painted window shows them, row by row, mirrored or not from left to right.
inline std::vector<COLORREF> ShownPixels(const CWnd& dialog, int id)
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
