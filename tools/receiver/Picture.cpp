#include "Picture.h"
#include "diag/TracePicture.h"
#include <algorithm>
#include <array>
#include <cstring>

namespace
{
constexpr int LargestSide = 32767; // what a device context can address

// The NUL-terminated text in [begin, end) of the message; nothing when it has no NUL.
std::optional<std::string> TextWithin(const char* message, unsigned long begin, unsigned long end)
{
    const char* const nul = std::find(message + begin, message + end, '\0');
    if (nul == message + end)
        return std::nullopt;
    return std::string(message + begin, nul);
}

std::uint32_t Grey(unsigned value, unsigned largest)
{
    return value * 255 / largest * 0x010101u;
}

// Messages carry no colour table: few colours are shown as shades of grey.
std::uint32_t ColourAt(const unsigned char* line, int x, int bitsPerPixel)
{
    switch (bitsPerPixel)
    {
    case 1:
        return Grey(line[x / 8] >> (7 - x % 8) & 1u, 1);
    case 4:
        return Grey(x % 2 ? line[x / 2] & 15u : line[x / 2] >> 4, 15);
    case 8:
        return Grey(line[x], 255);
    case 16:
    {
        const unsigned value = line[2 * x] | line[2 * x + 1] << 8;
        const auto widen = [](unsigned five) { return five << 3 | five >> 2; };
        return widen(value >> 10 & 31u) << 16 | widen(value >> 5 & 31u) << 8 | widen(value & 31u);
    }
    default:
    {
        const unsigned char* const pixel = line + x * (bitsPerPixel / 8);
        return static_cast<std::uint32_t>(pixel[2] << 16 | pixel[1] << 8 | pixel[0]);
    }
    }
}
} // namespace

std::optional<Picture> Picture::FromMessage(const COPYDATASTRUCT& message)
{
    TracePictureHeader header;
    if (message.dwData != 0 || !message.lpData || message.cbData < sizeof header)
        return std::nullopt;
    const char* const data = static_cast<const char*>(message.lpData);
    std::memcpy(&header, data, sizeof header);

    const bool ordered = header.commentOffset >= sizeof header && header.labelOffset > header.commentOffset &&
                         header.pixelOffset > header.labelOffset && header.pixelOffset <= message.cbData;
    if (!ordered || header.pixelBytes > message.cbData - header.pixelOffset)
        return std::nullopt;
    std::optional<std::string> comment = TextWithin(data, header.commentOffset, header.labelOffset);
    std::optional<std::string> label = TextWithin(data, header.labelOffset, header.pixelOffset);
    if (!comment || !label)
        return std::nullopt;

    static constexpr std::array Depths = {1, 4, 8, 16, 24, 32};
    const BITMAP& bitmap = header.bitmap;
    const bool known = std::find(Depths.begin(), Depths.end(), bitmap.bmBitsPixel) != Depths.end();
    if (!known || bitmap.bmPlanes != 1 || bitmap.bmWidth < 1 || bitmap.bmWidth > LargestSide || bitmap.bmHeight < 1 ||
        bitmap.bmHeight > LargestSide)
        return std::nullopt;
    // Lines are padded to two bytes, whatever padding the sender's own bitmap has.
    const std::size_t lineBytes = (static_cast<std::size_t>(bitmap.bmWidth) * bitmap.bmBitsPixel + 15) / 16 * 2;
    const std::size_t size = static_cast<std::size_t>(bitmap.bmWidth) * bitmap.bmHeight;
    if (lineBytes * bitmap.bmHeight > header.pixelBytes || size > LargestSize)
        return std::nullopt;

    Picture picture;
    picture.number = header.number;
    picture.type = header.type;
    picture.label = std::move(*label);
    picture.comment = std::move(*comment);
    picture.width = bitmap.bmWidth;
    picture.height = bitmap.bmHeight;
    picture.bitsPerPixel = bitmap.bmBitsPixel;
    picture.pixels.reserve(size);
    for (int y = 0; y < picture.height; ++y)
    {
        const auto* const line = reinterpret_cast<const unsigned char*>(data + header.pixelOffset + y * lineBytes);
        for (int x = 0; x < picture.width; ++x)
            picture.pixels.push_back(ColourAt(line, x, picture.bitsPerPixel));
    }
    return picture;
}

BITMAPINFO Picture::Description() const
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // top line first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

bool Picture::Save(const std::string& path, bool replace) const
{
    const std::size_t lineBytes = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
    BITMAPFILEHEADER file = {};
    file.bfType = 0x4D42; // "BM"
    file.bfOffBits = sizeof file + sizeof(BITMAPINFOHEADER);
    file.bfSize = static_cast<DWORD>(file.bfOffBits + lineBytes * height);
    BITMAPINFOHEADER info = Description().bmiHeader;
    info.biHeight = height; // bottom line first: every viewer reads that
    info.biBitCount = 24;

    std::vector<char> bytes(file.bfSize);
    std::memcpy(bytes.data(), &file, sizeof file);
    std::memcpy(bytes.data() + sizeof file, &info, sizeof info);
    for (int y = 0; y < height; ++y)
    {
        char* out = bytes.data() + file.bfOffBits + (height - 1 - y) * lineBytes;
        for (int x = 0; x < width; ++x, out += 3)
            std::memcpy(out, &pixels[static_cast<std::size_t>(y) * width + x], 3); // blue, green, red
    }

    const HANDLE handle = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      replace ? CREATE_ALWAYS : CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool whole = WriteFile(handle, bytes.data(), file.bfSize, &written, nullptr) && written == file.bfSize;
    CloseHandle(handle);
    return whole;
}
