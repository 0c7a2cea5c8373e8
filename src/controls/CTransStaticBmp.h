// A static picture control with a transparent colour.
#pragma once

#include "controls/CTransparentBmp.h"
#include <afxwin.h>

/// A picture in a dialog through whose transparent pixels the dialog's background shows. Subclass a static control
/// of the dialog with it (SubclassDlgItem) or create it, then call Initialize(), again and again for a picture that
/// changes. The parent's background is what the parent paints when it erases its own (WM_ERASEBKGND) and what it
/// paints as a picture of itself (WM_PRINTCLIENT).
class AFX_EXT_CLASS CTransStaticBmp : public CStatic
{
    DECLARE_DYNAMIC(CTransStaticBmp)

public:
    /// Bits of the drawing mode.
    enum Mode
    {
        Plain = 0,   ///< the bitmap at its own size, loaded at every paint
        Stretch = 1, ///< the bitmap stretched to the control
        Keep = 2     ///< the bitmap stays loaded between paints
    };

    /// No picture yet; the control paints nothing but its background.
    CTransStaticBmp();
    ~CTransStaticBmp() override;

    /// Shows a bitmap in place of the one before, and repaints the control when it has a window.
    /// @param nID            resource identifier of the bitmap
    /// @param crTransparent  transparent colour, matched with red and blue exchanged (see CTransparentBmp)
    /// @param nMode          bits of Mode
    /// @param hModule        module of the resource; null searches the framework's resource modules
    /// @return 1, or 0 when there is no such bitmap: nothing is shown then.
    int Initialize(UINT nID, COLORREF crTransparent, int nMode, HINSTANCE hModule);

protected:
    CTransparentBmp m_bmp; ///< the picture

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()
};
