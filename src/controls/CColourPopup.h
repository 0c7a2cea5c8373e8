// CColourPopup: the palette that a colour picker drops down.
#pragma once

#include <afxwin.h>
#include <afxcmn.h>

/// A borderless palette of 40 named colours in 8 columns, with a box for the automatic colour above and one for the
/// system's colour dialog below. It holds the mouse capture while it is open and ends with a click, Return or Space on
/// a cell, with Escape, a click elsewhere, or when the user turns to another window.
///
/// The pop-up tells its picker of every selected cell (COLOURPICKER_SELCHANGE) and once, at last, of its end
/// (COLOURPICKER_SELECTED_MESSAGE); it ends cancelled also when it is destroyed by others, such as its owner's end.
///
/// Make it with `new`; once created it deletes itself with its window. With a right-to-left picker it is mirrored, and
/// the left and right arrow keys follow what the eye sees.
class AFX_EXT_CLASS CColourPopup : public CWnd
{
    DECLARE_DYNAMIC(CColourPopup)

public:
    /// Cells that are no colours; the colours count from 0.
    enum
    {
        DefaultBox = -3, ///< the automatic colour
        CustomBox = -2,  ///< the colour dialog
        NoCell = -1
    };

    CColourPopup();
    ~CColourPopup() override;

    using CWnd::Create;
    /// Opens the pop-up.
    /// @param origin      upper left corner, in screen coordinates; the pop-up moves so as to stay on the screen
    /// @param colour      the colour to start with. The automatic one selects the default box, one that is in the table
    ///                    its cell, any other the custom box; a box that does not exist is not selected
    /// @param picker      the window that is told; its top-level window owns the pop-up
    /// @param defaultText text of the box above the palette; null or empty: no box
    /// @param customText  text of the box below the palette; null or empty: no box
    /// @return 0 when the window cannot be created; the object is then the caller's to delete.
    BOOL Create(CPoint origin, COLORREF colour, CWnd* picker, const char* defaultText, const char* customText);

protected:
    void PostNcDestroy() override;

    /// Makes the cell the initial one.
    void FindCellFromColour(COLORREF colour);
    /// Lays the pop-up out and brings it onto the screen that its origin is on.
    void SetWindowSize();
    void CreateToolTips();
    /// The rectangle of a cell or a box, in client coordinates; FALSE for a cell that does not exist.
    BOOL GetCellRect(int index, LPRECT rect) const;
    /// Selects a cell and tells the picker. The host may destroy the pop-up meanwhile.
    void ChangeSelection(int index);
    /// Ends with COLOURPICKER_SELENDOK (through the colour dialog, for the custom box) or COLOURPICKER_SELENDCANCEL.
    /// The object is gone when this returns.
    void EndSelection(int code);
    void DrawCell(CDC* dc, int index);

    afx_msg void OnPaint();
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnKillFocus(CWnd* newWindow);
    afx_msg void OnCaptureChanged(CWnd* newWindow);
    afx_msg void OnClose();
    afx_msg void OnDestroy();
    afx_msg BOOL OnQueryNewPalette();
    afx_msg void OnPaletteChanged(CWnd* focusWindow);
    DECLARE_MESSAGE_MAP()

private:
    int m_nNumColours;
    int m_nNumColumns;
    int m_nNumRows;
    int m_nBoxSize; // a cell's width and height
    int m_nMargin;
    int m_nCurrentSel;
    int m_nChosenColourSel;
    CRect m_CustomTextRect;
    CRect m_DefaultTextRect;
    CRect m_WindowRect; // in screen coordinates
    CFont m_Font;
    CPalette m_Palette;
    COLORREF m_crInitialColour;
    COLORREF m_crColour;
    HWND m_hPicker; // the owning picker, by its handle: the object may die first
    CString m_strDefaultText;
    CString m_strCustomText;
    BOOL m_bChildWindowVisible; // the colour dialog is open
    bool m_bCreated;            // the window owns the object
    bool m_bReported;           // the picker knows the end
    CToolTipCtrl m_ToolTip;

    int HitTest(CPoint point) const;
    int Neighbour(int distance) const;
    bool HasDefaultBox() const;
    bool HasCustomBox() const;
    bool AskColourDialog();
    void Report(COLORREF colour, UINT code);
    void CloseLater();
};
