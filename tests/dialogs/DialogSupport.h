// Real dialogs on the sample product's templates, driven by messages, and judged by what they show.
#pragma once

#include "support/TestProduct.h"
#include <afxwin.h>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

/// One of the sample product's resource libraries, the framework's current one, and a product of the test's own.
class DialogTest : public testing::Test
{
protected:
    DialogTest(const char* library, const SettingList& settings);
    ~DialogTest() override;
    /// Puts other settings besides the product's own or in their place.
    void Product(const SettingList& changes = {});

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
    explicit PlacedFiles(const std::string& folder = "");
    ~PlacedFiles();
    PlacedFiles(const PlacedFiles&) = delete;
    PlacedFiles& operator=(const PlacedFiles&) = delete;

    std::string Path(const std::string& name) const { return m_folder + name; }
    /// A copy of a file of the tests' folder, or of the sample product's components in its sub-folder dialogs.
    void Copy(const std::string& name, const std::string& source);
    void Write(const std::string& name, const std::string& bytes);
    void Delete(const std::string& name);
    void Clear();

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
void Pump();
/// Types a key into the window that has the focus, or with the message WM_SYSCHAR a mnemonic.
void Type(WPARAM key, UINT message = WM_KEYDOWN);
/// Runs a modal dialog that is posted this message.
INT_PTR RunModal(CDialog& dialog, UINT message, WPARAM wParam);

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
std::vector<int> TabOrder(const CWnd& dialog);
/// What is wrong with the layout: texts that do not fit, controls that overlap or leave the window, edges off the grid
/// of four pixels (those of the given controls aside).
std::vector<std::string> LayoutFaults(const CWnd& dialog, int firstFreeControl = 0, int lastFreeControl = 0);
/// The rectangle of a control in the dialog's client area, left smaller than right.
CRect AreaOf(const CWnd& dialog, int id);
/// The pixels of a control's place as the window shows them once it has painted what it wants to, row by row, from left
/// to right also in a mirrored window.
std::vector<COLORREF> ShownPixels(const CWnd& dialog, int id);
