// A palette of 256 colours for drawing one bitmap resource.
#include "controls/CPalette256.h"
#include <algorithm>
#include <array>
#include <cstring>

namespace
{
constexpr std::size_t Colours = 256;
constexpr WORD PaletteVersion = 0x300;

/// LOGPALETTE with room for all its entries.
struct PaletteDefinition
{
    WORD version;
    WORD count;
    std::array<PALETTEENTRY, Colours> entries;
};
static_assert(offsetof(PaletteDefinition, entries) == offsetof(LOGPALETTE, palPalEntry));

/// Six steps of red, green and blue each, then greys for what is left.
constexpr std::array<PALETTEENTRY, Colours> EvenSpread()
{
    constexpr std::size_t steps = 6;
    constexpr std::size_t cube = steps * steps * steps;
    std::array<PALETTEENTRY, Colours> entries = {};
    const auto level = [](std::size_t step, std::size_t last) { return static_cast<BYTE>(step * 255 / last); };
    for (std::size_t i = 0; i < cube; ++i)
        entries[i] = {level(i / (steps * steps), steps - 1), level(i / steps % steps, steps - 1),
                      level(i % steps, steps - 1), 0};
    for (std::size_t i = cube; i < Colours; ++i)
    {
        const BYTE grey = level(i - cube + 1, Colours - cube + 1);
        entries[i] = {grey, grey, grey, 0};
    }
    return entries;
}

/// Puts the colour table of a bitmap resource over the first entries; leaves them alone when there is none. The
/// resource is trusted no further than its own size.
void CopyColourTable(HINSTANCE module, UINT id, std::array<PALETTEENTRY, Colours>& entries)
{
    const HRSRC found = ::FindResourceA(module, MAKEINTRESOURCEA(id), reinterpret_cast<LPCSTR>(RT_BITMAP));
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    const auto* bytes = loaded ? static_cast<const BYTE*>(::LockResource(loaded)) : nullptr;
    const std::size_t size = found ? ::SizeofResource(module, found) : 0;
    BITMAPINFOHEADER header = {};
    if (!bytes || size < sizeof header)
        return;
    std::memcpy(&header, bytes, sizeof header);
    if (header.biSize < sizeof header || header.biSize > size || header.biBitCount == 0 || header.biBitCount > 8)
        return;
    const std::size_t full = std::size_t{1} << header.biBitCount;
    const std::size_t declared = header.biClrUsed ? header.biClrUsed : full;
    const std::size_t count = std::min({declared, full, (size - header.biSize) / sizeof(RGBQUAD)});
    for (std::size_t i = 0; i < count; ++i)
    {
        RGBQUAD colour = {};
        std::memcpy(&colour, bytes + header.biSize + i * sizeof colour, sizeof colour);
        entries[i] = {colour.rgbRed, colour.rgbGreen, colour.rgbBlue, 0};
    }
}
} // namespace

IMPLEMENT_DYNAMIC(CPalette256, CPalette)

CPalette256::CPalette256() = default;

CPalette256::~CPalette256() = default;

BOOL CPalette256::CreatePalette256(UINT nResourceID)
{
    static constexpr std::array<PALETTEENTRY, Colours> spread = EvenSpread();
    PaletteDefinition definition = {PaletteVersion, Colours, spread};
    CopyColourTable(AfxGetResourceHandle(), nResourceID, definition.entries);
    DeleteObject();
    return CreatePalette(reinterpret_cast<LOGPALETTE*>(&definition));
}
