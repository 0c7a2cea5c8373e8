// CColourPicker: a button that shows a colour and drops down a palette to choose another.
#pragma once

#include <afxwin.h>

/// Messages that tell of a choice. The picker sends each to its parent window, with the colour as the first parameter
/// and its own control identifier as the second; the pop-up sends COLOURPICKER_SELCHANGE to the picker, with the
/// colour.
enum ColourPickerNotification : UINT
{
    COLOURPICKER_SELCHANGE = WM_USER + 1001,    ///< another cell is selected: the colour to preview
    COLOURPICKER_DROPDOWN = WM_USER + 1002,     ///< the pop-up has opened
    COLOURPICKER_CLOSEUP = WM_USER + 1003,      ///< the pop-up has closed; one of the next two follows
    COLOURPICKER_SELENDOK = WM_USER + 1004,     ///< the user has chosen the colour
    COLOURPICKER_SELENDCANCEL = WM_USER + 1005, ///< the user has chosen nothing: the colour is the original one
};

/// Name of the registered window message by which the pop-up tells the picker how it ended. First parameter: the
/// colour; second: COLOURPICKER_SELENDCANCEL when nothing was chosen, anything else when the colour was.
#define COLOURPICKER_SELECTED_MESSAGE "ColorSelected"

/// The colour that stands for "automatic", whatever the host takes that for.
constexpr COLORREF COLOURPICKER_AUTOMATIC = 0xFF000000;

/// An owner-drawn button. Its face shows the background colour, with the button's text in the text colour upon it;
/// clicking it drops down a CColourPopup. The parent must be a framework window, which hands the drawing and the clicks
/// back to the button; the button takes the owner-drawn style by itself.
///
/// The picker keeps two colours, background and text, and edits one of them. Any COLORREF will do, in the palette or
/// not.
class AFX_EXT_CLASS CColourPicker : public CButton
{
    DECLARE_DYNCREATE(CColourPicker)

public:
    /// Value of the selection mode that edits the text colour; every other value edits the background colour.
    enum
    {
        ModeText = 1
    };

    /// White background, black text, editing the background; the boxes "Automatic" and "More Colours...".
    CColourPicker();
    ~CColourPicker() override;

    /// The background colour, whatever the selection mode.
    COLORREF GetColour() const;
    void SetColour(COLORREF colour);
    COLORREF GetBkColour() const;
    void SetBkColour(COLORREF colour);
    COLORREF GetTextColour() const;
    void SetTextColour(COLORREF colour);

    /// Which colour the pop-up edits: ModeText or the background.
    void SetSelectionMode(UINT mode);
    UINT GetSelectionMode() const;
    /// Whether the button's face follows the selection while the pop-up is open; off at first.
    void SetTrackSelection(BOOL track = TRUE);
    BOOL GetTrackSelection() const;
    /// Texts of the pop-up's boxes above and below the palette; null or empty leaves a box out.
    void SetDefaultText(const char* text);
    void SetCustomText(const char* text);

    /// Draws the face: normal, pressed (also while the pop-up is open), focused, disabled; mirrored with its parent.
    void DrawItem(LPDRAWITEMSTRUCT item) override;

protected:
    void PreSubclassWindow() override;

    /// Opens the pop-up at the button's lower left corner and tells the parent (COLOURPICKER_DROPDOWN). Nothing happens
    /// when it is open already or cannot be created.
    afx_msg void OnClicked();
    /// The pop-up has ended: as COLOURPICKER_SELECTED_MESSAGE says.
    afx_msg LRESULT OnSelected(WPARAM colour, LPARAM code);
    /// The user has chosen: takes the colour over by the selection mode, redraws and tells the parent
    /// (COLOURPICKER_CLOSEUP, COLOURPICKER_SELENDOK).
    LRESULT OnSelEndOK(COLORREF colour);
    /// The user has not chosen: goes back to the original colour and tells the parent (COLOURPICKER_CLOSEUP,
    /// COLOURPICKER_SELENDCANCEL).
    LRESULT OnSelEndCancel(COLORREF colour);
    /// Another cell is selected: shows the colour if the selection is tracked and tells the parent.
    afx_msg LRESULT OnSelChange(WPARAM colour, LPARAM);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    COLORREF m_crColourBk;
    COLORREF m_crColourText;
    UINT m_nSelectionMode;
    BOOL m_bTrackSelection;
    BOOL m_bActive; // the pop-up is open
    CString m_strDefaultText;
    CString m_strCustomText;
    HWND m_hPopup; // closed with this button

    COLORREF EditedColour() const;
    void StoreEditedColour(COLORREF colour);
    void EndSelection(ColourPickerNotification end, COLORREF colour);
    void Notify(ColourPickerNotification notification, COLORREF colour);
    void Redraw();
    void DrawSwatch(CDC& dc, const CRect& rect, bool disabled);
};
