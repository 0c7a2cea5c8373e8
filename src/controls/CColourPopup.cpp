#include "controls/CColourPopup.h"
#include <afxdlgs.h>
#include <algorithm>
#include <array>
#include <cstring>
#include "controls/CColourPicker.h"
#include "system/internal/Tables.h"

namespace
{
struct NamedColour
{
    COLORREF colour;
    const char* name;
};

constexpr int Columns = 8;

// In the order of the cells. "Pale green " ends in a blank and "Light blue" is greyish: hosts know them so.
constexpr auto Colours = std::to_array<NamedColour>({
    {0x000000, "Black"},
    {0x002AA5, "Brown"},
    {0x404000, "Dark Olive Green"},
    {0x005500, "Dark Green"},
    {0x5E0000, "Dark Teal"},
    {0x8B0000, "Dark blue"},
    {0x82004B, "Indigo"},
    {0x282828, "Dark grey"},
    {0x00008B, "Dark red"},
    {0x2068FF, "Orange"},
    {0x008B8B, "Dark yellow"},
    {0x009300, "Green"},
    {0x8E8E38, "Teal"},
    {0xFF0000, "Blue"},
    {0xC07B7B, "Blue-grey"},
    {0x666666, "Grey - 40"},
    {0x0000FF, "Red"},
    {0x5BADFF, "Light orange"},
    {0x32CD32, "Lime"},
    {0x71B33C, "Sea green"},
    {0xD4FF7F, "Aqua"},
    {0xC09E7D, "Light blue"},
    {0x800080, "Violet"},
    {0x7F7F7F, "Grey - 50"},
    {0xCBC0FF, "Pink"},
    {0x00D7FF, "Gold"},
    {0x00FFFF, "Yellow"},
    {0x00FF00, "Bright green"},
    {0xD0E040, "Turquoise"},
    {0xFFFFC0, "Skyblue"},
    {0x480048, "Plum"},
    {0xC0C0C0, "Light grey"},
    {0xE1E4FF, "Rose"},
    {0x8CB4D2, "Tan"},
    {0xE0FFFF, "Light yellow"},
    {0x98FB98, "Pale green "},
    {0xEEEEAF, "Pale turquoise"},
    {0x8B8368, "Pale blue"},
    {0xFAE6E6, "Lavender"},
    {0xFFFFFF, "White"},
});

static_assert(Colours.size() == 40 && Colours.size() % Columns == 0);
static_assert(tvk::AreUnique(Colours, &NamedColour::colour));
static_assert(std::all_of(Colours.begin(), Colours.end(),
                          [](const NamedColour& row) { return row.colour <= 0xFFFFFF && row.name[0] != '\0'; }));
static_assert(Colours[21].colour == RGB(125, 158, 192) && Colours[1].colour == RGB(165, 42, 0));

constexpr int InitialSize = 100; // of the window, until it is laid out
constexpr int CellSize = 18;     // unless the margins leave too little of it
constexpr int SmallestSwatch = 5;
constexpr UINT KeyWasDown = 0x4000; // of a key message's flags: the keyboard repeats it

/// The font of the system's messages.
void CreateMessageFont(CFont& font)
{
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    // Systems before Vista do not know the last member and want the size without it.
    if (!::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0))
        metrics.cbSize = offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth);
    if (metrics.cbSize == sizeof metrics ||
        ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0))
        font.CreateFontIndirect(&metrics.lfMessageFont);
    else
        font.CreateStockObject(DEFAULT_GUI_FONT);
}

void CreatePaletteOfColours(CPalette& palette)
{
    struct
    {
        LOGPALETTE header;
        PALETTEENTRY furtherEntries[Colours.size() - 1];
    } description = {};
    description.header.palVersion = 0x300;
    description.header.palNumEntries = static_cast<WORD>(Colours.size());
    std::transform(Colours.begin(), Colours.end(), description.header.palPalEntry,
                   [](const NamedColour& row) {
                       return PALETTEENTRY{GetRValue(row.colour), GetGValue(row.colour), GetBValue(row.colour), 0};
                   });
    palette.CreatePalette(&description.header);
}

/// The colour in the logical palette, on displays that have one.
COLORREF PaletteColour(COLORREF colour)
{
    return PALETTERGB(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

/// The screen that a point is on, or the nearest one.
CRect ScreenAt(POINT point)
{
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (::GetMonitorInfoA(::MonitorFromPoint(point, MONITOR_DEFAULTTONEAREST), &info))
        return info.rcMonitor;
    return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

bool IsMirrored(const CWnd& window)
{
    return (window.GetExStyle() & WS_EX_LAYOUTRTL) != 0;
}
} // namespace

IMPLEMENT_DYNAMIC(CColourPopup, CWnd)

BEGIN_MESSAGE_MAP(CColourPopup, CWnd)
    ON_WM_PAINT()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONUP()
    ON_WM_KEYDOWN()
    ON_WM_ACTIVATE()
    ON_WM_KILLFOCUS()
    ON_WM_CAPTURECHANGED()
    ON_WM_CLOSE()
    ON_WM_DESTROY()
    ON_WM_QUERYNEWPALETTE()
    ON_WM_PALETTECHANGED()
END_MESSAGE_MAP()

CColourPopup::CColourPopup()
    : m_nNumColours(static_cast<int>(Colours.size())), m_nNumColumns(Columns), m_nNumRows(m_nNumColours / Columns),
      m_nBoxSize(CellSize), m_nMargin(::GetSystemMetrics(SM_CXEDGE)), m_nCurrentSel(NoCell), m_nChosenColourSel(NoCell),
      m_crInitialColour(0), m_crColour(0), m_hPicker(nullptr), m_bChildWindowVisible(FALSE), m_bCreated(false),
      m_bReported(false)
{
    if (m_nBoxSize - 2 * m_nMargin - 2 < SmallestSwatch)
        m_nBoxSize = 2 * m_nMargin + 2 + SmallestSwatch;
    CreateMessageFont(m_Font);
    CreatePaletteOfColours(m_Palette);
}

CColourPopup::~CColourPopup() = default;

BOOL CColourPopup::Create(CPoint origin, COLORREF colour, CWnd* picker, const char* defaultText, const char* customText)
{
    m_hPicker = picker->GetSafeHwnd();
    m_crInitialColour = m_crColour = colour;
    const LPCSTR windowClass =
        AfxRegisterWndClass(CS_VREDRAW | CS_HREDRAW | CS_CLASSDC | CS_SAVEBITS, ::LoadCursorA(nullptr, IDC_ARROW),
                            reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), nullptr);
    const DWORD mirrored = picker && IsMirrored(*picker) ? WS_EX_LAYOUTRTL : 0;
    if (!CreateEx(mirrored, windowClass, "", WS_POPUP | WS_VISIBLE, origin.x, origin.y, InitialSize, InitialSize,
                  m_hPicker, nullptr))
        return FALSE;
    m_bCreated = true;
    m_strDefaultText = defaultText;
    m_strCustomText = customText;
    m_WindowRect = CRect(origin, CSize(InitialSize, InitialSize));
    SetWindowSize();
    CreateToolTips();
    FindCellFromColour(colour);
    SetFocus();
    SetCapture();
    return TRUE;
}

void CColourPopup::PostNcDestroy()
{
    // While the colour dialog is open its caller still stands in this object and deletes it.
    if (m_bCreated && !m_bChildWindowVisible)
        delete this;
}

void CColourPopup::FindCellFromColour(COLORREF colour)
{
    const auto row = std::find_if(Colours.begin(), Colours.end(),
                                  [colour](const NamedColour& known) { return known.colour == colour; });
    if (colour == COLOURPICKER_AUTOMATIC && HasDefaultBox())
        m_nChosenColourSel = DefaultBox;
    else if (row != Colours.end())
        m_nChosenColourSel = static_cast<int>(row - Colours.begin());
    else
        m_nChosenColourSel = HasCustomBox() ? CustomBox : NoCell;
    m_nCurrentSel = m_nChosenColourSel;
    Invalidate();
}

void CColourPopup::SetWindowSize()
{
    CSize text(0, 0);
    {
        CClientDC dc(this);
        CFont* oldFont = dc.SelectObject(&m_Font);
        for (const CString& boxText : {m_strDefaultText, m_strCustomText})
        {
            const CSize extent = dc.GetTextExtent(boxText);
            text = CSize(std::max(text.cx, extent.cx), std::max(text.cy, extent.cy));
        }
        dc.SelectObject(oldFont);
    }
    const int boxHeight = text.cy + 4 * m_nMargin;
    const int width = std::max<int>(text.cx, m_nNumColumns * m_nBoxSize) + 2 * m_nMargin;
    int bottom = m_nMargin;
    if (HasDefaultBox())
    {
        m_DefaultTextRect = CRect(m_nMargin, bottom, width - m_nMargin, bottom + boxHeight);
        bottom += boxHeight + m_nMargin;
    }
    bottom += m_nNumRows * m_nBoxSize + m_nMargin;
    if (HasCustomBox())
    {
        m_CustomTextRect = CRect(m_nMargin, bottom, width - m_nMargin, bottom + boxHeight);
        bottom += boxHeight + m_nMargin;
    }
    m_WindowRect = CRect(m_WindowRect.TopLeft(), CSize(width, bottom));

    const CRect screen = ScreenAt(m_WindowRect.TopLeft());
    if (m_WindowRect.right > screen.right)
        m_WindowRect.MoveToX(screen.right - m_WindowRect.Width());
    if (m_WindowRect.left < screen.left)
        m_WindowRect.MoveToX(screen.left);
    if (m_WindowRect.bottom > screen.bottom)
    {
        CRect picker;
        ::GetWindowRect(m_hPicker, picker);
        m_WindowRect.MoveToY(picker.top - m_WindowRect.Height());
    }
    MoveWindow(m_WindowRect);
}

void CColourPopup::CreateToolTips()
{
    if (!m_ToolTip.Create(this))
        return;
    for (int index = 0; index < m_nNumColours; ++index)
    {
        CRect rect;
        if (GetCellRect(index, rect))
            m_ToolTip.AddTool(this, Colours[index].name, rect, index + 1);
    }
}

BOOL CColourPopup::GetCellRect(int index, LPRECT rect) const
{
    if (index == DefaultBox || index == CustomBox)
    {
        *rect = index == DefaultBox ? m_DefaultTextRect : m_CustomTextRect;
        return !::IsRectEmpty(rect);
    }
    if (index < 0 || index >= m_nNumColours)
        return FALSE;
    rect->left = m_nBoxSize * (index % m_nNumColumns) + m_nMargin;
    rect->top = m_nBoxSize * (index / m_nNumColumns) + m_nMargin;
    if (HasDefaultBox())
        rect->top += m_DefaultTextRect.Height() + m_nMargin;
    rect->right = rect->left + m_nBoxSize;
    rect->bottom = rect->top + m_nBoxSize;
    return TRUE;
}

int CColourPopup::HitTest(CPoint point) const
{
    for (int index = DefaultBox; index < m_nNumColours; ++index)
    {
        CRect rect;
        if (GetCellRect(index, rect) && rect.PtInRect(point))
            return index;
    }
    return NoCell;
}

void CColourPopup::ChangeSelection(int index)
{
    CClientDC dc(this);
    const int oldSelection = m_nCurrentSel;
    m_nCurrentSel = index;
    DrawCell(&dc, oldSelection);
    DrawCell(&dc, index);
    COLORREF colour = m_crInitialColour; // what the colour dialog would start with
    if (index == DefaultBox)
        colour = m_crColour = COLOURPICKER_AUTOMATIC;
    else if (index >= 0)
        colour = m_crColour = Colours[index].colour;
    ::SendMessageA(m_hPicker, COLOURPICKER_SELCHANGE, colour, 0);
}

void CColourPopup::EndSelection(int code)
{
    if (m_bChildWindowVisible || m_bReported)
        return;
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    if (code != COLOURPICKER_SELENDCANCEL && m_nCurrentSel == CustomBox && !AskColourDialog())
        code = COLOURPICKER_SELENDCANCEL;
    if (!m_hWnd) // the window, and the picker's with it, went down while the dialog was open
    {
        delete this;
        return;
    }
    if (code == COLOURPICKER_SELENDCANCEL)
        m_crColour = m_crInitialColour;
    // The host may do anything when it is told, also destroy this window.
    const HWND window = m_hWnd;
    if (::GetFocus() == window)
        ::SetFocus(m_hPicker);
    Report(m_crColour, code);
    if (::IsWindow(window))
        ::DestroyWindow(window);
}

/// Lets the user mix a colour; false when there is none.
bool CColourPopup::AskColourDialog()
{
    m_bChildWindowVisible = TRUE;
    CColorDialog dialog(m_crInitialColour, CC_FULLOPEN | CC_ANYCOLOR, this);
    const bool accepted = dialog.DoModal() == IDOK;
    m_bChildWindowVisible = FALSE;
    if (accepted)
        m_crColour = dialog.GetColor();
    return accepted;
}

/// Tells the picker how the pop-up ends, once.
void CColourPopup::Report(COLORREF colour, UINT code)
{
    m_bReported = true;
    ::SendMessageA(m_hPicker, ::RegisterWindowMessageA(COLOURPICKER_SELECTED_MESSAGE), colour, code);
}

/// Closes when the messages at work are through: a window that loses focus or capture must not be destroyed meanwhile.
void CColourPopup::CloseLater()
{
    if (m_bCreated && !m_bReported && !m_bChildWindowVisible)
        PostMessage(WM_CLOSE);
}

void CColourPopup::DrawCell(CDC* dc, int index)
{
    CRect rect;
    if (!GetCellRect(index, rect))
        return;
    const bool current = index == m_nCurrentSel;
    const bool chosen = index == m_nChosenColourSel;
    const int saved = dc->SaveDC();
    dc->FillSolidRect(rect, ::GetSysColor(current || chosen ? COLOR_3DHILIGHT : COLOR_BTNFACE));
    const COLORREF frame = ::GetSysColor(current ? COLOR_HIGHLIGHT : COLOR_3DSHADOW);
    if (current || chosen || index < 0)
        dc->Draw3dRect(rect, frame, frame);
    if (index >= 0)
    {
        dc->SelectPalette(&m_Palette, FALSE);
        dc->RealizePalette();
        rect.DeflateRect(m_nMargin, m_nMargin);
        const COLORREF border = ::GetSysColor(COLOR_3DSHADOW);
        dc->Draw3dRect(rect, border, border);
        rect.DeflateRect(1, 1);
        dc->FillSolidRect(rect, PaletteColour(Colours[index].colour));
    }
    else
    {
        dc->SelectObject(&m_Font);
        dc->SetBkMode(TRANSPARENT);
        dc->SetTextColor(::GetSysColor(current || chosen ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
        dc->DrawText(index == DefaultBox ? m_strDefaultText : m_strCustomText, rect,
                     DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    dc->RestoreDC(saved);
}

void CColourPopup::OnPaint()
{
    CPaintDC dc(this);
    for (int index = DefaultBox; index < m_nNumColours; ++index)
        DrawCell(&dc, index);
    CRect client;
    GetClientRect(client);
    dc.DrawEdge(client, EDGE_RAISED, BF_RECT);
}

void CColourPopup::OnMouseMove(UINT flags, CPoint point)
{
    // The capture sends the mouse here also while it is elsewhere; tips are for the pop-up's own area.
    MSG message = {m_hWnd, WM_MOUSEMOVE, flags, MAKELPARAM(point.x, point.y), 0, {}};
    ::GetCursorPos(&message.pt);
    if (m_ToolTip.GetSafeHwnd())
        m_ToolTip.RelayEvent(&message);
    const int index = HitTest(point);
    if (index != NoCell && index != m_nCurrentSel)
        ChangeSelection(index);
}

void CColourPopup::OnLButtonUp(UINT, CPoint point)
{
    const int index = HitTest(point);
    CRect client;
    GetClientRect(client);
    if (index == NoCell)
    {
        if (!client.PtInRect(point)) // between the cells: the user has missed one
            EndSelection(COLOURPICKER_SELENDCANCEL);
        return;
    }
    const HWND window = m_hWnd;
    if (index != m_nCurrentSel)
        ChangeSelection(index);
    if (::IsWindow(window))
        EndSelection(COLOURPICKER_SELENDOK);
}

/// The cell that the arrow keys lead to from the current one; `distance` is 1 or a row's length, negative backwards.
int CColourPopup::Neighbour(int distance) const
{
    const int last = m_nNumColours - 1;
    const int beforeFirst = HasDefaultBox() ? DefaultBox : HasCustomBox() ? CustomBox : last;
    if (m_nCurrentSel >= 0)
    {
        const int next = m_nCurrentSel + distance;
        if (next < 0)
            return beforeFirst;
        if (next <= last)
            return next;
        return HasCustomBox() ? CustomBox : HasDefaultBox() ? DefaultBox : m_nCurrentSel;
    }
    if (distance > 0)
        return m_nCurrentSel == CustomBox && HasDefaultBox() ? DefaultBox : 0;
    if (m_nCurrentSel == DefaultBox)
        return HasCustomBox() ? CustomBox : last;
    return m_nCurrentSel == CustomBox ? last : beforeFirst;
}

void CColourPopup::OnKeyDown(UINT key, UINT, UINT flags)
{
    const int forward = IsMirrored(*this) ? -1 : 1;
    int distance = 0;
    switch (key)
    {
    case VK_LEFT:
        distance = -forward;
        break;
    case VK_RIGHT:
        distance = forward;
        break;
    case VK_UP:
        distance = -m_nNumColumns;
        break;
    case VK_DOWN:
        distance = m_nNumColumns;
        break;
    case VK_ESCAPE:
        EndSelection(COLOURPICKER_SELENDCANCEL);
        return;
    case VK_RETURN:
    case VK_SPACE:
        if (!(flags & KeyWasDown)) // the key that opened the pop-up is still held
            EndSelection(COLOURPICKER_SELENDOK);
        return;
    default:
        return;
    }
    const int index = Neighbour(distance);
    if (index != m_nCurrentSel)
        ChangeSelection(index);
}

void CColourPopup::OnActivate(UINT state, CWnd* other, BOOL minimized)
{
    CWnd::OnActivate(state, other, minimized);
    // Like a menu, the pop-up leaves its owner's title bar as that of the active window.
    ::SendMessageA(::GetWindow(m_hWnd, GW_OWNER), WM_NCACTIVATE, state != WA_INACTIVE, 0);
}

void CColourPopup::OnKillFocus(CWnd* newWindow)
{
    CWnd::OnKillFocus(newWindow);
    CloseLater();
}

void CColourPopup::OnCaptureChanged(CWnd* newWindow)
{
    CWnd::OnCaptureChanged(newWindow);
    CloseLater();
}

void CColourPopup::OnClose()
{
    EndSelection(COLOURPICKER_SELENDCANCEL);
}

void CColourPopup::OnDestroy()
{
    if (!m_bReported && m_bCreated)
        Report(m_crInitialColour, COLOURPICKER_SELENDCANCEL);
    CWnd::OnDestroy();
}

BOOL CColourPopup::OnQueryNewPalette()
{
    Invalidate();
    return CWnd::OnQueryNewPalette();
}

void CColourPopup::OnPaletteChanged(CWnd* focusWindow)
{
    CWnd::OnPaletteChanged(focusWindow);
    if (focusWindow->GetSafeHwnd() != m_hWnd)
        Invalidate();
}

bool CColourPopup::HasDefaultBox() const
{
    return !m_strDefaultText.IsEmpty();
}

bool CColourPopup::HasCustomBox() const
{
    return !m_strCustomText.IsEmpty();
}
