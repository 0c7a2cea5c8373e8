// Real dialogs on the sample product's templates, driven by messages, and judged by what they show.
#pragma once

#include <afxwin.h>
#include <string>
#include <vector>

/// A resource library of the sample product, loaded and the framework's current one for as long as the object lives.
class CurrentLibrary
{
public:
    explicit CurrentLibrary(const std::string& name);
    ~CurrentLibrary();
    CurrentLibrary(const CurrentLibrary&) = delete;
    CurrentLibrary& operator=(const CurrentLibrary&) = delete;
    HMODULE Module() const { return m_module; }

private:
    HINSTANCE m_former;
    HMODULE m_module;
};

/// A file somewhere in the machine, gone with the object.
class PlacedFile
{
public:
    /// A copy of a file of the tests' folder, or of the sample product's components in its sub-folder dialogs.
    PlacedFile(const std::string& path, const std::string& source);
    /// A file of these bytes.
    static PlacedFile Of(const std::string& path, const std::string& bytes);
    PlacedFile(PlacedFile&& other) noexcept;
    ~PlacedFile();
    PlacedFile& operator=(const PlacedFile&) = delete;
    const std::string& Path() const { return m_path; }

private:
    explicit PlacedFile(const std::string& path) : m_path(path) {}
    std::string m_path;
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
/// Types a key into the window that has the focus.
void Type(WPARAM key);
/// A click on a button as the mouse makes it, on the screen.
void Click(HWND dialog, int id);

std::string TextOf(HWND dialog, int id);
bool IsShown(HWND dialog, int id);
bool IsEnabled(HWND dialog, int id);
/// The identifiers of the controls in the order of the Tab key, beginning with the one that has the focus.
std::vector<int> TabOrder(HWND dialog);
/// What is wrong with the layout: texts that do not fit, controls that overlap or leave the window, edges off the grid
/// of four pixels (those of the given controls aside).
std::vector<std::string> LayoutFaults(HWND dialog, int firstFreeControl = 0, int lastFreeControl = 0);
/// The pixels of a rectangle of the dialog's client area as the window shows them, row by row, from left to right also
/// in a mirrored window.
std::vector<COLORREF> ShownPixels(HWND dialog, const RECT& area);
/// The rectangle of a control in the dialog's client area, left smaller than right.
RECT AreaOf(HWND dialog, int id);

/// Numbers that must not grow: drawing objects, windows, kernel handles, loaded modules.
std::vector<std::size_t> SystemObjects();
