#include "dialogs/internal/SkinPreview.h"
#include <algorithm>
#include "controls/internal/Colours.h"
#include "dialogs/DialogIds.h"

namespace tvk
{
SkinPreview::SkinPreview() = default;

SkinPreview::~SkinPreview() = default;

bool SkinPreview::Load(HINSTANCE skin, CSize room)
{
    SetSaveBmp(TRUE); // the library is not there any more when the picture is drawn
    SetOverlap(TRUE); // the dialog erases before every draw: the background is always a fresh one
    bool loaded = LoadTransparent(skin, IDB_JSW_SKIN_PREVIEW, TransparentGreen, nullptr) != nullptr;
    const CSize size(ReturnWidth(), ReturnHeight());
    if (loaded && (size.cx > room.cx || size.cy > room.cy))
    {
        const double scale = std::min(static_cast<double>(room.cx) / size.cx, static_cast<double>(room.cy) / size.cy);
        CRect fitting(0, 0, std::max(1, static_cast<int>(size.cx * scale)),
                      std::max(1, static_cast<int>(size.cy * scale)));
        loaded = LoadTransparent(skin, IDB_JSW_SKIN_PREVIEW, TransparentGreen, &fitting) != nullptr;
    }
    m_palette.CreatePalette256(IDB_JSW_SKIN_PREVIEW);
    m_hInstance = nullptr; // nothing is looked for in it from now on
    return loaded;
}

void SkinPreview::Draw(CDC& context, const CRect& area)
{
    TransBlt(&context, area.left + (area.Width() - ReturnWidth()) / 2, area.top + (area.Height() - ReturnHeight()) / 2,
             0, 0);
}

void SkinPreview::CreateDrawingPalette()
{
    m_pPalette = &m_palette;
}

CPalette& SkinPreview::Palette()
{
    return m_palette;
}
} // namespace tvk
