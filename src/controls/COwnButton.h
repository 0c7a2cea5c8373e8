// A bitmap button that paints itself.
#pragma once

#include "controls/CGUIButton.h"

/// A CGUIButton that needs nothing of its parent: it paints itself in its own window when the owner-draw notice comes,
/// over what the parent paints as its background (WM_ERASEBKGND, WM_PRINTCLIENT). The parent does not call
/// DrawButton(). It is the base of the links for hosts without product settings.
class AFX_EXT_CLASS COwnButton : public CGUIButton
{
    DECLARE_DYNAMIC(COwnButton)

public:
    COwnButton();
    ~COwnButton() override;

    /// Owner-draw notice: notes state and focus, and draws.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void Repaint() override;
    /// Where the button's window lies, in the coordinates of its rectangle: the rectangle's corner.
    virtual CPoint WindowOrigin() const;

    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()
};
