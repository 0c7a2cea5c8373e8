// The preview of a skin, drawn when the skin's library is already gone.
#pragma once

#include "controls/CPalette256.h"
#include "controls/CTransparentBmp.h"

namespace tvk
{
class SkinPreview : private CTransparentBmp
{
public:
    SkinPreview();
    ~SkinPreview() override;

    /// Loads preview and palette from the skin's library, which must be the current resource handle. False when it has
    /// no preview; nothing is drawn then. A preview larger than the room is made smaller.
    bool Load(HINSTANCE skin, CSize room);
    /// Draws the preview into the middle of an area; in a mirrored context mirrored, as the window it shows would be.
    void Draw(CDC& context, const CRect& area);
    CPalette& Palette();

private:
    /// The skin's own palette: what stands in its bitmap cannot be read any more.
    void CreateDrawingPalette() override;

    CPalette256 m_palette;
};
} // namespace tvk
