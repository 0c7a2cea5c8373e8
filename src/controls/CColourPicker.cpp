#include "controls/CColourPicker.h"
#include <algorithm>
#include <memory>
#include "controls/CColourPopup.h"

namespace
{
constexpr int FaceMargin = 4;  // between the button's edge and the swatch
constexpr int ArrowWidth = 7;  // of the drop-down arrow, an odd number
constexpr int ArrowMargin = 4; // on both sides of it

/// The number of the message by which the pop-up tells its end.
UINT& SelectedMessage()
{
    static UINT message = ::RegisterWindowMessageA(COLOURPICKER_SELECTED_MESSAGE);
    return message;
}

/// What a colour looks like: the automatic one is the system's own.
COLORREF VisibleColour(COLORREF colour, int systemColour)
{
    return colour == COLOURPICKER_AUTOMATIC ? ::GetSysColor(systemColour) : colour & 0xFFFFFF;
}

/// A colour between two others, with so many quarters of the first.
COLORREF Mix(COLORREF first, COLORREF second, int quarters)
{
    const auto channel = [quarters](int one, int other) { return (one * quarters + other * (4 - quarters)) / 4; };
    return RGB(channel(GetRValue(first), GetRValue(second)), channel(GetGValue(first), GetGValue(second)),
               channel(GetBValue(first), GetBValue(second)));
}

/// Half of the button's face: what is disabled keeps a trace of its colour.
COLORREF Pale(COLORREF colour)
{
    return Mix(colour, ::GetSysColor(COLOR_BTNFACE), 2);
}

void FillWith(CDC& dc, const CRect& rect, COLORREF frame, COLORREF colour)
{
    CRect inner = rect;
    dc.Draw3dRect(inner, frame, frame);
    inner.DeflateRect(1, 1);
    dc.FillSolidRect(inner, colour);
}

/// A triangle that points down, row by row, so that it looks the same mirrored.
void DrawArrow(CDC& dc, CPoint topMiddle, COLORREF colour)
{
    for (int half = ArrowWidth / 2, row = 0; half >= 0; --half, ++row)
        dc.FillSolidRect(topMiddle.x - half, topMiddle.y + row, 2 * half + 1, 1, colour);
}
} // namespace

IMPLEMENT_DYNCREATE(CColourPicker, CButton)

BEGIN_MESSAGE_MAP(CColourPicker, CButton)
    ON_CONTROL_REFLECT(BN_CLICKED, &CColourPicker::OnClicked)
    ON_REGISTERED_MESSAGE(SelectedMessage(), &CColourPicker::OnSelected)
    ON_MESSAGE(COLOURPICKER_SELCHANGE, &CColourPicker::OnSelChange)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CColourPicker::CColourPicker()
    : m_crColourBk(RGB(255, 255, 255)), m_crColourText(RGB(0, 0, 0)), m_nSelectionMode(0), m_bTrackSelection(FALSE),
      m_bActive(FALSE), m_strDefaultText("Automatic"), m_strCustomText("More Colours..."), m_hPopup(nullptr)
{
}

CColourPicker::~CColourPicker() = default;

COLORREF CColourPicker::GetColour() const
{
    return GetBkColour();
}

void CColourPicker::SetColour(COLORREF colour)
{
    SetBkColour(colour);
}

COLORREF CColourPicker::GetBkColour() const
{
    return m_crColourBk;
}

void CColourPicker::SetBkColour(COLORREF colour)
{
    m_crColourBk = colour;
    Redraw();
}

COLORREF CColourPicker::GetTextColour() const
{
    return m_crColourText;
}

void CColourPicker::SetTextColour(COLORREF colour)
{
    m_crColourText = colour;
    Redraw();
}

void CColourPicker::SetSelectionMode(UINT mode)
{
    m_nSelectionMode = mode;
}

UINT CColourPicker::GetSelectionMode() const
{
    return m_nSelectionMode;
}

void CColourPicker::SetTrackSelection(BOOL track)
{
    m_bTrackSelection = track;
}

BOOL CColourPicker::GetTrackSelection() const
{
    return m_bTrackSelection;
}

void CColourPicker::SetDefaultText(const char* text)
{
    m_strDefaultText = text;
}

void CColourPicker::SetCustomText(const char* text)
{
    m_strCustomText = text;
}

COLORREF CColourPicker::EditedColour() const
{
    return m_nSelectionMode == ModeText ? m_crColourText : m_crColourBk;
}

void CColourPicker::StoreEditedColour(COLORREF colour)
{
    (m_nSelectionMode == ModeText ? m_crColourText : m_crColourBk) = colour;
    Redraw();
}

void CColourPicker::Redraw()
{
    if (m_hWnd)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void CColourPicker::PreSubclassWindow()
{
    ModifyStyle(BS_TYPEMASK, BS_OWNERDRAW);
    CButton::PreSubclassWindow();
}

void CColourPicker::OnClicked()
{
    if (m_bActive)
        return;
    CRect rect;
    GetWindowRect(rect);
    auto popup = std::make_unique<CColourPopup>();
    m_bActive = TRUE;
    if (!popup->Create(CPoint(rect.left, rect.bottom), EditedColour(), this, m_strDefaultText, m_strCustomText))
    {
        m_bActive = FALSE;
        return;
    }
    m_hPopup = popup.release()->m_hWnd; // from now on the window owns the object
    Redraw();
    Notify(COLOURPICKER_DROPDOWN, EditedColour());
}

LRESULT CColourPicker::OnSelected(WPARAM colour, LPARAM code)
{
    const COLORREF selected = static_cast<COLORREF>(colour);
    return code == COLOURPICKER_SELENDCANCEL ? OnSelEndCancel(selected) : OnSelEndOK(selected);
}

LRESULT CColourPicker::OnSelEndOK(COLORREF colour)
{
    EndSelection(COLOURPICKER_SELENDOK, colour);
    return 0;
}

LRESULT CColourPicker::OnSelEndCancel(COLORREF colour)
{
    EndSelection(COLOURPICKER_SELENDCANCEL, colour);
    return 0;
}

/// Both ends alike: the colour is the chosen or the original one, which a tracked selection has overwritten.
void CColourPicker::EndSelection(ColourPickerNotification end, COLORREF colour)
{
    m_bActive = FALSE;
    m_hPopup = nullptr;
    StoreEditedColour(colour);
    // The parent may destroy this button when it is told for the first time.
    const HWND parent = ::GetParent(m_hWnd);
    const int id = GetDlgCtrlID();
    ::SendMessageA(parent, COLOURPICKER_CLOSEUP, colour, id);
    ::SendMessageA(parent, end, colour, id);
}

LRESULT CColourPicker::OnSelChange(WPARAM colour, LPARAM)
{
    if (m_bTrackSelection)
        StoreEditedColour(static_cast<COLORREF>(colour));
    Notify(COLOURPICKER_SELCHANGE, static_cast<COLORREF>(colour));
    return 0;
}

void CColourPicker::OnDestroy()
{
    if (m_hPopup && ::IsWindow(m_hPopup))
        ::DestroyWindow(m_hPopup); // ends cancelled
    CButton::OnDestroy();
}

void CColourPicker::Notify(ColourPickerNotification notification, COLORREF colour)
{
    ::SendMessageA(::GetParent(m_hWnd), notification, colour, GetDlgCtrlID());
}

void CColourPicker::DrawItem(LPDRAWITEMSTRUCT item)
{
    CDC& dc = *CDC::FromHandle(item->hDC);
    const int saved = dc.SaveDC();
    const bool disabled = (item->itemState & ODS_DISABLED) != 0;
    const bool pressed = m_bActive || (item->itemState & ODS_SELECTED) != 0;
    CRect rect = item->rcItem;
    dc.DrawFrameControl(rect, DFC_BUTTON,
                        DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0) | (disabled ? DFCS_INACTIVE : 0));
    rect.DeflateRect(FaceMargin, FaceMargin);
    if (pressed)
        rect.OffsetRect(1, 1);

    const int arrowLeft = std::max<int>(rect.left, rect.right - ArrowWidth - 2 * ArrowMargin);
    const CPoint arrow(arrowLeft + ArrowMargin + ArrowWidth / 2, rect.CenterPoint().y - ArrowWidth / 4);
    if (disabled)
        DrawArrow(dc, arrow + CSize(1, 1), ::GetSysColor(COLOR_3DHILIGHT));
    DrawArrow(dc, arrow, ::GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    DrawSwatch(dc, CRect(rect.left, rect.top, arrowLeft, rect.bottom), disabled);

    if ((item->itemState & ODS_FOCUS) && !(item->itemState & ODS_NOFOCUSRECT))
    {
        rect.InflateRect(1, 1);
        dc.SetTextColor(::GetSysColor(COLOR_BTNTEXT));
        dc.SetBkColor(::GetSysColor(COLOR_BTNFACE));
        dc.DrawFocusRect(rect);
    }
    dc.RestoreDC(saved);
}

/// The colour itself: a framed field of the background colour, with the button's text in the text colour. A text colour
/// without a text to show it on fills the field.
void CColourPicker::DrawSwatch(CDC& dc, const CRect& rect, bool disabled)
{
    CString text;
    GetWindowText(text);
    const bool fillWithText = text.IsEmpty() && m_nSelectionMode == ModeText;
    COLORREF field =
        fillWithText ? VisibleColour(m_crColourText, COLOR_WINDOWTEXT) : VisibleColour(m_crColourBk, COLOR_WINDOW);
    if (disabled)
        field = Pale(field);
    FillWith(dc, rect, ::GetSysColor(COLOR_3DSHADOW), field);
    if (text.IsEmpty())
        return;
    CRect inside = rect;
    inside.DeflateRect(2, 1);
    dc.SelectObject(GetFont());
    dc.SetBkMode(TRANSPARENT);
    // The system's grey would be lost on most fields.
    dc.SetTextColor(disabled ? Mix(field, ::GetSysColor(COLOR_BTNTEXT), 1)
                             : VisibleColour(m_crColourText, COLOR_WINDOWTEXT));
    dc.DrawText(text, inside, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
}
