// The font of a control's caption.
#pragma once

#include <afxwin.h>

/// A font that starts as the system's default for controls and can be made bold, underlined or of another size. Each
/// change makes the system font anew, so the object must not be selected into a context meanwhile.
class AFX_EXT_CLASS CGUIFont : public CFont
{
    DECLARE_DYNAMIC(CGUIFont)

public:
    /// The default font of controls (DEFAULT_GUI_FONT): regular, not underlined.
    CGUIFont();
    /// Deletes the system font.
    ~CGUIFont() override;

    void SetTextBold();
    void SetTextUnderline();
    /// @param nSize  size in points; 0 or less goes back to the default font's size
    void SetTextSize(int nSize);

protected:
    LOGFONTA m_logFont = {};

private:
    void Remake();
};
