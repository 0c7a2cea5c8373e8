// Real dialogs on the sample product's templates, driven by messages, and judged by what they show.
#pragma once

#include "support/TestProduct.h"
#include <afxwin.h>
#include <gmock/gmock.h>
#include <functional>
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
    PlacedFiles() = default;
    ~PlacedFiles() { Clear(); }
    PlacedFiles(const PlacedFiles&) = delete;
    PlacedFiles& operator=(const PlacedFiles&) = delete;

    /// A copy of a file of the tests' folder, or of the sample product's components in its sub-folder dialogs.
    void Copy(const std::string& path, const std::string& source);
    void Write(const std::string& path, const std::string& bytes);
    void Delete(const std::string& path);
    void Clear();

private:
    std::vector<std::string> m_paths;
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
/// Types a key, or a mnemonic with the Alt key, into the window that has the focus.
void Type(WPARAM key);
void TypeMnemonic(char key);
/// A click on a button as the mouse makes it.
void Click(const CWnd& dialog, int id);
/// Runs a modal dialog, in which a key is typed; 0 for the system menu's command that closes it.
INT_PTR RunModal(CDialog& dialog, WPARAM key);

std::string TextOf(const CWnd& dialog, int id);
bool IsShown(const CWnd& dialog, int id);
bool IsEnabled(const CWnd& dialog, int id);
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

/// Runs rounds, with their numbers, that must leave behind no drawing object, window, kernel handle or module.
void ExpectNothingLeftBehind(const std::function<void(int)>& round);
