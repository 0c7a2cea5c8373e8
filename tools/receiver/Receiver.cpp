// Trace receiver: a dialog that lists the pictures which traced processes send, and shows the selected one.
//
//   tracereceiver [--save DIR] [--count N]
//
//   --save DIR   also writes every picture to DIR, as <four-digit number of reception>-<label>.bmp
//   --count N    ends after N pictures
#include "Picture.h"
#include "diag/TracePicture.h"
#include "resource.h"
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <new>

namespace
{
struct Options
{
    std::string folder;      // empty: not saved
    unsigned long count = 0; // 0: until the window is closed
};

constexpr char Usage[] = "tracereceiver [--save DIR] [--count N]\n"
                         "  --save DIR   also writes every picture to DIR as a bitmap file\n"
                         "  --count N    ends after N pictures\n";

// To whoever started the program: a script reads standard error, a user a message box.
void Complain(const std::string& text)
{
    DWORD written = 0;
    if (!WriteFile(GetStdHandle(STD_ERROR_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        MessageBoxA(nullptr, text.c_str(), TRACE_RECEIVER_TITLE, MB_OK | MB_ICONERROR);
}

bool ReadOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; i += 2)
    {
        if (i + 1 == argc)
            return false;
        const std::string name = argv[i];
        char* end = nullptr;
        if (name == "--save" && *argv[i + 1])
            options.folder = argv[i + 1];
        else if (name == "--count" && (options.count = std::strtoul(argv[i + 1], &end, 10)) > 0 && !*end)
            continue;
        else
            return false;
    }
    return true;
}

// A label as part of a file name.
std::string FileName(unsigned long index, const std::string& label)
{
    std::string name = std::to_string(index);
    name.insert(0, name.size() < 4 ? 4 - name.size() : 0, '0');
    name += '-';
    for (const unsigned char character : label.substr(0, 40))
        name += std::isalnum(character) || character == '-' ? static_cast<char>(character) : '_';
    return name + ".bmp";
}

// The largest place of the picture's proportions in the area, in its middle; small pictures grow by whole factors, so
// that their pixels stay square.
RECT FitInto(const RECT& area, int width, int height)
{
    const int areaWidth = area.right - area.left, areaHeight = area.bottom - area.top;
    int toWidth = width, toHeight = height;
    if (width <= areaWidth && height <= areaHeight)
    {
        const int factor = std::min(areaWidth / width, areaHeight / height);
        toWidth *= factor;
        toHeight *= factor;
    }
    else if (static_cast<long long>(width) * areaHeight > static_cast<long long>(height) * areaWidth)
    {
        toWidth = areaWidth;
        toHeight = std::max(1, MulDiv(height, areaWidth, width));
    }
    else
    {
        toHeight = areaHeight;
        toWidth = std::max(1, MulDiv(width, areaHeight, height));
    }
    const int left = area.left + (areaWidth - toWidth) / 2, top = area.top + (areaHeight - toHeight) / 2;
    return {left, top, left + toWidth, top + toHeight};
}

class Receiver
{
public:
    explicit Receiver(const Options& options) : m_options(options) {}

    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept
    {
        if (message == WM_INITDIALOG)
            SetWindowLongPtrA(dialog, DWLP_USER, lParam);
        auto* const receiver = reinterpret_cast<Receiver*>(GetWindowLongPtrA(dialog, DWLP_USER));
        try
        {
            return receiver ? receiver->Handle(dialog, message, wParam, lParam) : FALSE;
        }
        catch (const std::bad_alloc&)
        {
            return FALSE; // nothing shown, nothing answered; the next message may be smaller
        }
    }

private:
    static constexpr int CommentColumn = 3;

    HWND Item(int id) const { return GetDlgItem(m_dialog, id); }

    void Initialise(HWND dialog)
    {
        m_dialog = dialog;
        RECT frame;
        GetWindowRect(dialog, &frame);
        m_smallest = {frame.right - frame.left, frame.bottom - frame.top};
        struct Column
        {
            const char* title;
            int width; // in dialog units
            int format;
        };
        static constexpr Column Columns[] = {{"Number", 34, LVCFMT_LEFT},
                                             {"Label", 52, LVCFMT_LEFT},
                                             {"Type", 26, LVCFMT_RIGHT},
                                             {"Comment", 0, LVCFMT_LEFT}, // what the others leave
                                             {"Size", 44, LVCFMT_LEFT}};
        const HWND list = Item(IDC_PICTURES);
        ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
        int index = 0;
        for (const Column& column : Columns)
        {
            RECT units = {0, 0, column.width, 8};
            MapDialogRect(dialog, &units);
            LVCOLUMNA description = {};
            description.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
            description.pszText = const_cast<char*>(column.title);
            description.cx = units.right;
            description.fmt = column.format;
            SendMessageA(list, LVM_INSERTCOLUMNA, index++, reinterpret_cast<LPARAM>(&description));
        }
        ShowStatus();
        PlaceControls();
    }

    INT_PTR Handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
    {
        switch (message)
        {
        case WM_INITDIALOG:
            Initialise(dialog);
            return TRUE;
        case WM_COPYDATA:
            // A sender waits for the answer: TRUE when the picture was taken.
            SetWindowLongPtrA(m_dialog, DWLP_MSGRESULT, Receive(*reinterpret_cast<const COPYDATASTRUCT*>(lParam)));
            return TRUE;
        case WM_SIZE:
            PlaceControls();
            return TRUE;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = m_smallest;
            return TRUE;
        case WM_DRAWITEM:
            Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case WM_NOTIFY:
            if (reinterpret_cast<const NMHDR*>(lParam)->code == LVN_ITEMCHANGED)
                ShowSelected();
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_SAVE)
                SaveSelected();
            else if (LOWORD(wParam) == IDC_CLEAR)
                Clear();
            return TRUE; // Escape closes nothing: a log is being taken
        case WM_CLOSE:
            EndDialog(m_dialog, 0);
            return TRUE;
        default:
            return FALSE;
        }
    }

    BOOL Receive(const COPYDATASTRUCT& message)
    {
        std::optional<Picture> picture = Picture::FromMessage(message);
        if (picture)
        {
            ++m_received;
            SaveByItself(*picture);
            Add(std::move(*picture));
        }
        else
        {
            ++m_refused;
        }
        ShowStatus();
        if (m_options.count && m_received == m_options.count)
            PostMessageA(m_dialog, WM_CLOSE, 0, 0); // after the sender has its answer
        return picture.has_value();
    }

    void Add(Picture picture)
    {
        const HWND list = Item(IDC_PICTURES);
        // Who looks at the newest picture wants to see the next one as well.
        const bool follow = Selected() == static_cast<int>(m_pictures.size()) - 1;
        m_kept += picture.pixels.size();
        m_pictures.push_back(std::move(picture));
        // Older pictures make room for newer ones.
        while (m_kept > Picture::LargestSize && m_pictures.size() > 1)
        {
            m_kept -= m_pictures.front().pixels.size();
            m_pictures.pop_front();
            ListView_DeleteItem(list, 0);
        }
        const Picture& added = m_pictures.back();
        const std::string texts[] = {std::to_string(added.number), added.label, std::to_string(added.type),
                                     added.comment, std::to_string(added.width) + " x " + std::to_string(added.height)};
        LVITEMA row = {};
        row.iItem = static_cast<int>(m_pictures.size()) - 1;
        for (const std::string& text : texts)
        {
            row.mask = LVIF_TEXT;
            row.pszText = const_cast<char*>(text.c_str());
            SendMessageA(list, row.iSubItem ? LVM_SETITEMA : LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
            ++row.iSubItem;
        }
        if (follow)
        {
            ListView_SetItemState(list, row.iItem, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
            ListView_EnsureVisible(list, row.iItem, FALSE);
        }
        EnableWindow(Item(IDC_CLEAR), TRUE);
    }

    // Never over a file of an earlier run.
    void SaveByItself(const Picture& picture)
    {
        if (m_options.folder.empty())
            return;
        const std::string folder = m_options.folder + "\\";
        do
            ++m_fileNumber;
        while (m_fileNumber < 9999 &&
               GetFileAttributesA((folder + FileName(m_fileNumber, picture.label)).c_str()) != INVALID_FILE_ATTRIBUTES);
        if (!picture.Save(folder + FileName(m_fileNumber, picture.label), false))
            ++m_notSaved;
    }

    int Selected() const { return ListView_GetNextItem(Item(IDC_PICTURES), -1, LVNI_SELECTED); }

    const Picture* SelectedPicture() const
    {
        const int index = Selected();
        return index >= 0 && index < static_cast<int>(m_pictures.size()) ? &m_pictures[index] : nullptr;
    }

    void ShowSelected()
    {
        const Picture* const picture = SelectedPicture();
        std::string details;
        if (picture)
        {
            details = picture->label + ", " + std::to_string(picture->width) + " x " + std::to_string(picture->height) +
                      ", " + std::to_string(picture->bitsPerPixel) + "-bit\n" + picture->comment;
        }
        SetDlgItemTextA(m_dialog, IDC_DETAILS, details.c_str());
        EnableWindow(Item(IDC_SAVE), picture != nullptr);
        InvalidateRect(Item(IDC_PREVIEW), nullptr, FALSE);
    }

    void ShowStatus()
    {
        std::string text = m_received == 1 ? "1 picture received" : std::to_string(m_received) + " pictures received";
        if (m_refused)
            text += ", " + std::to_string(m_refused) + " faulty messages refused";
        if (m_notSaved)
            text += ", " + std::to_string(m_notSaved) + " could not be saved";
        SetDlgItemTextA(m_dialog, IDC_STATUS, text.c_str());
    }

    void Draw(const DRAWITEMSTRUCT& item) const
    {
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_APPWORKSPACE));
        if (const Picture* const picture = SelectedPicture())
        {
            RECT area = item.rcItem;
            InflateRect(&area, -4, -4);
            const RECT place = FitInto(area, picture->width, picture->height);
            const BITMAPINFO description = picture->Description();
            const bool smaller = place.right - place.left < picture->width;
            SetStretchBltMode(item.hDC, smaller ? HALFTONE : COLORONCOLOR);
            StretchDIBits(item.hDC, place.left, place.top, place.right - place.left, place.bottom - place.top, 0, 0,
                          picture->width, picture->height, picture->pixels.data(), &description, DIB_RGB_COLORS,
                          SRCCOPY);
        }
        RECT frame = item.rcItem;
        DrawEdge(item.hDC, &frame, BDR_SUNKENOUTER, BF_RECT);
    }

    void SaveSelected()
    {
        const Picture* const picture = SelectedPicture();
        if (!picture)
            return;
        char path[MAX_PATH] = "";
        FileName(picture->number, picture->label).copy(path, sizeof path - 1);
        OPENFILENAMEA dialog = {};
        dialog.lStructSize = sizeof dialog;
        dialog.hwndOwner = m_dialog;
        dialog.lpstrFilter = "Bitmaps (*.bmp)\0*.bmp\0";
        dialog.lpstrFile = path;
        dialog.nMaxFile = sizeof path;
        dialog.lpstrDefExt = "bmp";
        dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
        const Picture copy = *picture; // the list goes on growing while the user chooses
        if (GetSaveFileNameA(&dialog) && !copy.Save(path, true))
            MessageBoxA(m_dialog, "The picture could not be saved.", TRACE_RECEIVER_TITLE, MB_OK | MB_ICONERROR);
    }

    void Clear()
    {
        m_pictures.clear();
        m_kept = 0;
        ListView_DeleteAllItems(Item(IDC_PICTURES));
        EnableWindow(Item(IDC_CLEAR), FALSE);
        ShowSelected();
        SetFocus(Item(IDC_PICTURES)); // not on the button that has just gone grey
    }

    // The list takes the left half, the picture the right one; buttons and status line stay at the bottom.
    void PlaceControls() const
    {
        RECT client;
        GetClientRect(m_dialog, &client);
        RECT units = {6, 16, 80, 20}; // margin, height of a button, its width, height of the details
        MapDialogRect(m_dialog, &units);
        const int margin = units.left, buttonHeight = units.top, buttonWidth = units.right;
        const int detailsHeight = units.bottom;
        const int buttonTop = client.bottom - margin - buttonHeight;
        const int bottom = buttonTop - margin;
        const int middle = client.right * 52 / 100;
        const int right = client.right - margin;
        const auto place = [this](int id, int left, int top, int toRight, int toBottom)
        {
            SetWindowPos(Item(id), nullptr, left, top, toRight - left, toBottom - top, SWP_NOZORDER | SWP_NOACTIVATE);
            InvalidateRect(Item(id), nullptr, TRUE);
        };
        place(IDC_PICTURES, margin, margin, middle - margin / 2, bottom);
        const HWND list = Item(IDC_PICTURES);
        RECT inside;
        GetClientRect(list, &inside);
        int left = inside.right;
        for (const int column : {0, 1, 2, 4})
            left -= ListView_GetColumnWidth(list, column);
        ListView_SetColumnWidth(list, CommentColumn, std::max(left, buttonWidth));
        place(IDC_PREVIEW, middle + margin / 2, margin, right, bottom - detailsHeight - margin);
        place(IDC_DETAILS, middle + margin / 2, bottom - detailsHeight, right, bottom);
        place(IDC_CLEAR, right - buttonWidth, buttonTop, right, buttonTop + buttonHeight);
        place(IDC_SAVE, right - 2 * buttonWidth - margin, buttonTop, right - buttonWidth - margin,
              buttonTop + buttonHeight);
        place(IDC_STATUS, margin, buttonTop + buttonHeight / 4, right - 2 * buttonWidth - 2 * margin,
              buttonTop + buttonHeight);
    }

    const Options m_options;
    HWND m_dialog = nullptr;
    POINT m_smallest = {};
    std::deque<Picture> m_pictures;
    std::size_t m_kept = 0; // pixels in m_pictures
    unsigned long m_received = 0;
    unsigned long m_refused = 0;
    unsigned long m_notSaved = 0;
    unsigned long m_fileNumber = 0;
};
} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    Options options;
    if (!ReadOptions(__argc, __argv, options))
    {
        Complain(Usage);
        return 2;
    }
    const DWORD attributes =
        options.folder.empty() ? FILE_ATTRIBUTE_DIRECTORY : GetFileAttributesA(options.folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY))
    {
        Complain("tracereceiver: no such folder: " + options.folder + "\n");
        return 2;
    }
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    Receiver receiver(options);
    return DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_RECEIVER), nullptr, Receiver::Procedure,
                           reinterpret_cast<LPARAM>(&receiver)) == 0
               ? 0
               : 1;
}
