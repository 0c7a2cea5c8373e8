// What the two families of link controls have in common.
#pragma once

#include "controls/COwnButton.h"

/// A button that looks like a link: text, a picture, or both, with the hand cursor over them.
///
/// Subclass a button of a dialog with a link (SubclassDlgItem) and call Initialize(), also for a link without pictures.
/// The window's text is the link's text, with "&" before its mnemonic: it is what screen readers read. Give the button
/// the style WS_TABSTOP. A click of the mouse, Space, Return, the mnemonic or a screen reader reaches the parent as of
/// any button (BN_CLICKED); the parent then calls FollowLink() of the link's class.
///
/// What is seen answers the mouse: the shape of the normal picture, and the text. The rest of the button's window does
/// not. Links without a hover picture look pressed, which is in the hover colour, as long as the mouse is on them.
/// Pictures are drawn at their own size at the link's top left corner; hover and pressed state share one.
///
/// All coordinates are pixels of the parent's client area; in a mirrored (right-to-left) parent they run from its
/// right edge, so that picture and text change sides by themselves.
///
/// Two classes are made of it: CLinkT<CGUIButton> (see CGUILink) and CLinkT<COwnButton> (see CLink).
template <class Button>
class AFX_EXT_CLASS CLinkT : public Button
{
public:
    /// Text in blue (0xFF0000), in black while hovered, in grey (0xA0A0A0) when disabled; at the left, in the middle of
    /// the height; beside a picture 36 pixels from the link's left edge.
    CLinkT();
    ~CLinkT() override;

    // Initialisers. Each makes the control owner-drawn, takes the control's rectangle as the link's, deletes all
    // pictures of an earlier initialisation and loads new ones, keyed with green (0x00FF00). An identifier of 0 stands
    // for no picture, a null module for the framework's resource modules. Each may be called again, as it must be when
    // the control was moved. The result is 1, or 0 when a picture could not be loaded; the others are in place then.

    /// @param nHover  picture while hovered or pressed
    /// @param nFlags  as of SetTextAlignmentFlags()
    int Initialize(UINT nNormal, UINT nHover, UINT nDisabled, HINSTANCE hInst, UINT nFlags);
    int Initialize(UINT nNormal, UINT nDisabled, HINSTANCE hInst, UINT nFlags);
    int Initialize(UINT nNormal, HINSTANCE hInst);

    /// Replaces the picture of the disabled link.
    /// @param crKey  its transparent colour, with red and blue exchanged (see CTransparentBmp)
    /// @return 1, or 0 when it could not be loaded
    int SetDisabledBitmap(UINT nID, HINSTANCE hInst, COLORREF crKey);

    /// Draws the text in this font from now on; it stays the caller's and must outlive its use. Null goes back to the
    /// link's own font, the one that SetTextBold(), SetTextUnderline() and SetTextSize() change.
    void SetFont(CGUIFont* pFont);
    /// The colour while the link is enabled and the mouse is elsewhere.
    void SetLinkTextColor(COLORREF crText);
    /// The colour while the mouse is on the link, or it is pressed.
    void SetLinkHoverColor(COLORREF crHover);
    /// Lets the text's place begin this far from the link's left and top edge; also for later initialisations.
    void SetTextStart(int x, int y);
    /// @param nFlags  flags of DrawText: DT_CENTER, DT_RIGHT, DT_VCENTER and DT_BOTTOM place the text, of one line or
    ///                several (DT_WORDBREAK); DT_VCENTER | DT_SINGLELINE unless set
    void SetTextAlignmentFlags(UINT nFlags);
    /// Moves the link away from the control's own place, with its text.
    void OffsetTopLeft(int dx, int dy);
    /// Gives the text another place than the link's rectangle, until the next initialisation or SetTextStart(), and
    /// other flags; measures it in the context.
    void SetRect(CDC* pDC, const CRect& rect, UINT nFlags);

    /// Draws the text at its place, in the colour of the link's state, and a dotted frame around it when the link has
    /// the focus and can be reached with Tab. The context stays as it was.
    void DisplayText(CDC* pDC);

    /// Takes notice of the mouse of a link with a hover picture: sets the cursor, takes or gives back the mouse.
    /// @param point  in the link's own client coordinates
    void CheckHover(CPoint point);
    /// Asks for no notice any more of the mouse leaving the link's window.
    void KillMouseTracking();
    /// Sees to it that the hand cursor, which all links and buttons share, is loaded.
    virtual void SetDefaultCursor();

protected:
    using Button::m_bCaptured;
    using Button::m_bFocus;
    using Button::m_bHasDisabledBmp;
    using Button::m_bHover;
    using Button::m_bPressed;
    using Button::m_bToggle;
    using Button::m_crText;
    using Button::m_font;
    using Button::m_hDisabledRgn;
    using Button::m_hHoverRgn;
    using Button::m_hNormalRgn;
    using Button::m_nHoverID;
    using Button::m_nItemState;
    using Button::m_nNormalID;
    using Button::m_pDisabledBmp;
    using Button::m_pHoverBmp;
    using Button::m_pNormalBmp;
    using Button::m_rcButton;
    using Button::m_rcText; ///< the text's place

    UINT m_nDisabledID = 0;
    CRect m_rcLink; ///< the text as it was last placed: answers the mouse
    COLORREF m_crHover = 0;
    COLORREF m_crDisabled = 0xA0A0A0;
    int m_nTextIndent = 36;
    UINT m_nTextFlags = DT_VCENTER | DT_SINGLELINE;
    CPoint m_ptTextStart;
    int m_bTextStartSet = 0;
    CGUIFont* m_pFont = nullptr; ///< the host's font
    int m_bTracking = 0;

    CTransparentBmp* CurrentFace(bool disabled) const override;
    void DrawFace(CDC* pDC, CTransparentBmp* face) override;
    bool InShape(CPoint point) const override;
    /// Shows a changed state without waiting for the next paint message.
    virtual void ShowAtOnce() = 0;

    // For the message maps of both families.
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg LRESULT OnLeave(WPARAM wParam, LPARAM lParam);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);

private:
    bool IsHot() const;
    bool IsOnLink(CPoint point);
    void PlaceTextArea();
    void PlaceText(HDC context);
    HGDIOBJ TextFont() const;
    void DrawFocus(HDC context, CRect frame, COLORREF colour) const;
    void TrackMouse(CPoint point);
    void SetLookedPressed(bool pressed);
};

extern template class CLinkT<CGUIButton>;
extern template class CLinkT<COwnButton>;
