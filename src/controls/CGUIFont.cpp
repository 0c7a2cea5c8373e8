// The font of a control's caption.
#include "controls/CGUIFont.h"
#include "system/internal/Handle.h"

namespace
{
LOGFONTA DefaultFont()
{
    LOGFONTA font = {};
    ::GetObjectA(::GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
    return font;
}
} // namespace

IMPLEMENT_DYNAMIC(CGUIFont, CFont)

CGUIFont::CGUIFont() : m_logFont(DefaultFont())
{
    Remake();
}

CGUIFont::~CGUIFont() = default;

void CGUIFont::SetTextBold()
{
    m_logFont.lfWeight = FW_BOLD;
    Remake();
}

void CGUIFont::SetTextUnderline()
{
    m_logFont.lfUnderline = TRUE;
    Remake();
}

void CGUIFont::SetTextSize(int nSize)
{
    constexpr int pointsPerInch = 72;
    const tvk::DeviceContext screen(::CreateCompatibleDC(nullptr));
    m_logFont.lfHeight =
        nSize > 0 ? -::MulDiv(nSize, ::GetDeviceCaps(screen.Get(), LOGPIXELSY), pointsPerInch) : DefaultFont().lfHeight;
    Remake();
}

void CGUIFont::Remake()
{
    // A font that the system refuses leaves the one before.
    if (const HFONT made = ::CreateFontIndirectA(&m_logFont))
    {
        DeleteObject();
        Attach(made);
    }
}
