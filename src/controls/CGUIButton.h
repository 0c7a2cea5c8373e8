// A push button whose face is a set of bitmaps with a transparent colour.
#pragma once

#include "controls/CGUIFont.h"
#include "controls/CPalette256.h"
#include "controls/CTransparentBmp.h"
#include <afxwin.h>

/// An owner-drawn push button shaped by its bitmap.
///
/// Subclass a button of a dialog with it (SubclassDlgItem), then call one of the initialisers. The picture is painted
/// by the parent, so that the parent's background shows through its transparent pixels:
///
///     void CMyDialog::OnPaint()
///     {
///         CPaintDC context(this);
///         PaintBackground(context);
///         m_button.DrawButton(&context);
///     }
///
/// The parent must not have the style WS_CLIPCHILDREN. Whenever the face changes, the button invalidates its
/// rectangle in the parent, with erasing. Clicks reach the parent as of any button (BN_CLICKED).
///
/// The faces are: normal, hover, pressed, disabled. All but the first may be missing; the normal face is shown then.
/// The shape of the normal face is the area that answers the mouse. Colour keys are matched with red and blue exchanged
/// (see CTransparentBmp).
class AFX_EXT_CLASS CGUIButton : public CStatic
{
    DECLARE_DYNAMIC(CGUIButton)

public:
    CGUIButton();
    /// Deletes the bitmaps and with them their regions.
    ~CGUIButton() override;

    // Initialisers. Each makes the control owner-drawn, deletes all bitmaps of an earlier initialisation (the disabled
    // one too) and loads new ones, from the framework's resource modules unless a module is given. Each may be called
    // again. The result is 1, or 0 when a bitmap could not be loaded; the others are in place then.

    /// Normal face alone, stretched to the control.
    int Initialize(UINT nID, COLORREF crKey);
    /// Normal, hover and pressed face, stretched to the control.
    /// @param crKey   colour key of the normal face; the other two have green (0x00FF00)
    /// @param crText  colour of the caption; 0 for the system's button text
    int Initialize(UINT nNormal, UINT nHover, UINT nPressed, COLORREF crKey, COLORREF crText);
    /// Normal and pressed face, stretched to the control, keyed with green (0x00FF00).
    /// @param hInst  module of the bitmaps; null searches the framework's resource modules
    /// @param crKey  noted only
    int Initialize(HINSTANCE hInst, UINT nNormal, UINT nPressed, COLORREF crKey, COLORREF crText);
    /// The same from the framework's resource modules.
    int Initialize(UINT nNormal, UINT nPressed, COLORREF crKey, COLORREF crText);
    /// Normal face alone, at the bitmap's own size. The button's rectangle stays what it was: empty at first.
    int InitializeNoStretch(UINT nID, COLORREF crKey);
    /// Normal, hover and pressed face, all with the same key, at the bitmaps' own size. Also makes the control a
    /// visible child. The button's rectangle becomes the window's rectangle on the screen moved by (-3, -22), which
    /// suits a dialog in the screen's corner with a border and caption of that size.
    int InitializeNoStretch(UINT nNormal, UINT nHover, UINT nPressed, COLORREF crKey, COLORREF crText);

    /// Adds the face shown while the button is disabled, stretched to the button's rectangle; call it after an
    /// initialiser. @return 1, or 0 when the bitmap could not be loaded.
    int SetDisabledBitmap(UINT nID, COLORREF crKey);

    /// Keeps the bitmaps loaded from the next initialisation on (see CTransparentBmp's save-bitmap mode).
    void SetSaveBmp();
    /// Passed on to every bitmap there is: CTransparentBmp::SetOverlap.
    void SetOverlap(int bOverlap);
    /// Passed on to every bitmap there is: CTransparentBmp::SetMapSystemColors.
    void SetMapSystemColors(int bMap);

    /// Whether a point, in the parent's client coordinates, lies within the shape of the normal face.
    BOOL HitTest(CPoint point);

    /// The rectangle, in the parent's client coordinates, that the caption is centred in.
    void SetTextRect(const CRect& rect);
    CRect GetTextRect();
    void SetTextBold();
    void SetTextUnderline();
    /// @param nSize  in points
    void SetTextSize(int nSize);

    /// Nonzero: the hand cursor is shown over the button.
    void EnableCursorMorph(int bEnable);
    /// Shows the hand cursor now.
    void MorphCursor();

    /// Paints the button at its rectangle; nothing when it is hidden. Whether it is disabled is asked of the window.
    /// The context keeps the caption's colour, the stock black pen and the default GUI font.
    void DrawButton(CDC* pDC);
    /// The same while the parent paints: the background is taken from this context, and whether the button is
    /// disabled from the last owner-draw notice.
    void DrawButton(CPaintDC* pDC);

    /// Owner-draw notice: notes state and focus. It draws nothing, the parent does.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

    /// The hand cursor, shared by all buttons; loaded at its first use.
    static HCURSOR g_hLinkCursor;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Has the button painted anew.
    virtual void Repaint();
    /// The face to show now; null for none.
    virtual CTransparentBmp* CurrentFace(bool disabled) const;
    /// Draws a face and the caption.
    virtual void DrawFace(CDC* pDC, CTransparentBmp* face);
    /// Whether a point, relative to the button's top left corner, is one that answers the mouse.
    virtual bool InShape(CPoint point) const;

    /// Loads a face and answers its region in `region`, null when that fails. No face for the identifier 0.
    CTransparentBmp* LoadFace(HINSTANCE hInst, UINT nID, COLORREF crKey, bool stretch, HRGN& region);
    void FreeFaces();
    /// Takes the mouse, unless the button has it.
    void Capture();
    /// Changes the pressed state, and shows it.
    void SetPressed(int bPressed);
    /// Tells the parent that the button was clicked.
    void SendClick();

    CGUIFont m_font;
    int m_bFocus = 0;
    int m_nPressOffsetX = 2;
    int m_nPressOffsetY = 2;
    CRect m_rcButton;
    CRect m_rcText;
    COLORREF m_crText = 0;
    COLORREF m_crKey = 0;
    CTransparentBmp* m_pNormalBmp = nullptr;
    CTransparentBmp* m_pHoverBmp = nullptr;
    CTransparentBmp* m_pPressedBmp = nullptr;
    CTransparentBmp* m_pDisabledBmp = nullptr;
    UINT m_nNormalID = 0;
    UINT m_nHoverID = 0;
    UINT m_nPressedID = 0;
    int m_bHover = 0;
    int m_bCaptured = 0;
    int m_bInitialized = 0;
    int m_bPressed = 0;
    int m_bToggle = 0;
    int m_bThreeState = 0;
    int m_bHasDisabledBmp = 0;
    int m_bSaveBmp = 0;
    HRGN m_hNormalRgn = nullptr; // the regions belong to the bitmaps
    HRGN m_hHoverRgn = nullptr;
    HRGN m_hPressedRgn = nullptr;
    HRGN m_hDisabledRgn = nullptr;
    CPalette256 m_palette;
    UINT m_nItemState = 0;
    int m_bMorphCursor = 0;

    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()

private:
    struct Face;
    int LoadFaces(HINSTANCE hInst, const Face& normal, const Face& hover, const Face& pressed, bool stretch);
    void PlaceStretched();
    void DrawCaption(CDC* pDC);
    bool IsShown() const;
    void TrackHover(bool inside);
    void TrackPress(bool inside);
};
