// One picture as it arrives from a traced process, checked and turned into plain colours.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct Picture
{
    static constexpr std::size_t LargestSize = 64u << 20; ///< in pixels: 256 MB

    unsigned long number = 0; ///< in the sending process
    int type = 0;
    std::string label;
    std::string comment;
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
    std::vector<std::uint32_t> pixels; ///< 0x00RRGGBB, top line first

    /// Reads a picture message (diag/TracePicture.h). Its data come from another process: nothing in them is trusted.
    /// Nothing for a message that is none, or whose parts do not lie within it, and for a picture of more than
    /// `LargestSize`.
    static std::optional<Picture> FromMessage(const COPYDATASTRUCT& message);

    /// The description of `pixels` for StretchDIBits.
    BITMAPINFO Description() const;

    /// Writes a bitmap file of 24 bits per pixel. False when it cannot be written, or exists and `replace` is false.
    bool Save(const std::string& path, bool replace) const;
};
