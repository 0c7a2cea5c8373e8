#include "Pictures.h"
#include "support/TestProduct.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <fstream>
#include <random>

namespace
{
template <class T>
void Append(std::string& bytes, const T& value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

COLORREF RandomColour(std::mt19937& random)
{
    // Five bits a channel, widened as the system widens them: the same colour in 16, 24 and 32 bits.
    const auto channel = [&]
    {
        const unsigned five = random() % 32;
        return static_cast<BYTE>(five << 3 | five >> 2);
    };
    const BYTE red = channel(), green = channel(), blue = channel();
    return RGB(red, green, blue);
}
} // namespace

Picture::Picture(int width, int height, int depth, unsigned seed)
    : m_width(width), m_height(height), m_depth(depth), m_pixels(static_cast<size_t>(width * height))
{
    std::mt19937 random(seed);
    while (m_colours.size() < (depth == 1 ? 2 : 5))
        if (const COLORREF colour = RandomColour(random);
            std::find(m_colours.begin(), m_colours.end(), colour) == m_colours.end())
            m_colours.push_back(colour);
    const unsigned holes = random() % 9; // of ten pixels
    for (auto& pixel : m_pixels)
        pixel = static_cast<unsigned char>(random() % 10 < holes ? 0 : 1 + random() % (m_colours.size() - 1));
}

COLORREF Picture::Key() const
{
    return RGB(GetBValue(m_colours[0]), GetGValue(m_colours[0]), GetRValue(m_colours[0]));
}

void Picture::MakeBlackAndWhite()
{
    m_colours = {RGB(0, 0, 0), RGB(255, 255, 255)};
    for (auto& pixel : m_pixels)
        pixel = pixel != 0;
}

std::string Picture::Dib() const
{
    BITMAPINFOHEADER header = {sizeof header, m_width, m_height, 1, static_cast<WORD>(m_depth), BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes;
    Append(bytes, header);
    if (m_depth <= 8)
        for (size_t i = 0; i < size_t{1} << m_depth; ++i)
        {
            const COLORREF colour = i < m_colours.size() ? m_colours[i] : 0;
            Append(bytes, RGBQUAD{GetBValue(colour), GetGValue(colour), GetRValue(colour), 0});
        }
    for (int y = m_height - 1; y >= 0; --y)
    {
        std::string row(static_cast<size_t>((m_width * m_depth + 31) / 32 * 4), '\0');
        for (int x = 0; x < m_width; ++x)
        {
            const COLORREF colour = At(x, y);
            unsigned value = static_cast<unsigned>(Index(x, y));
            if (m_depth == 16)
                value = GetRValue(colour) >> 3 << 10 | GetGValue(colour) >> 3 << 5 | GetBValue(colour) >> 3;
            else if (m_depth > 16)
                value = 0xA5u << 24 | GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour);
            if (m_depth < 8)
            {
                const int bit = x * m_depth;
                row[static_cast<size_t>(bit / 8)] |= static_cast<char>(value << (8 - m_depth - bit % 8));
            }
            else
                std::memcpy(&row[static_cast<size_t>(x * m_depth / 8)], &value, static_cast<size_t>(m_depth / 8));
        }
        bytes += row;
    }
    return bytes;
}

std::string Picture::File() const
{
    const std::string dib = Dib();
    const DWORD colours = m_depth <= 8 ? 4u << m_depth : 0;
    std::string bytes("BM");
    Append(bytes, static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + dib.size()));
    Append(bytes, DWORD{0});
    Append(bytes, static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + colours));
    return bytes + dib;
}

HBITMAP Picture::Make() const
{
    const std::string dib = Dib();
    const size_t head = sizeof(BITMAPINFOHEADER) + (m_depth <= 8 ? 4u << m_depth : 0);
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(dib.data()), DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap)
        std::memcpy(bits, dib.data() + head, dib.size() - head);
    return bitmap;
}

ScratchFile::ScratchFile(const std::string& name, const std::string& bytes)
    : m_path(TestFolder() + std::to_string(GetCurrentProcessId()) + name)
{
    std::ofstream(m_path, std::ios::binary) << bytes;
}

ScratchFile::~ScratchFile()
{
    DeleteFileA(m_path.c_str());
}

PictureLibrary::PictureLibrary(const std::vector<Item>& items)
{
    static int count = 0;
    m_path =
        TestFolder() + "pictures-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count) + ".dll";
    std::vector<TestResource> resources;
    for (const Item& item : items)
        resources.push_back({MAKEINTRESOURCEA(2), MAKEINTRESOURCEA(item.id), item.dib}); // RT_BITMAP
    WriteLibrary(m_path, resources);
    m_module = LoadLibraryA(m_path.c_str());
    EXPECT_TRUE(m_module) << m_path << ": " << GetLastError();
}

PictureLibrary::~PictureLibrary()
{
    FreeLibrary(m_module);
    EXPECT_TRUE(DeleteFileA(m_path.c_str())) << m_path;
}

Surface::Surface(int width, int height, unsigned seed, DWORD layout) : m_width(width), m_height(height)
{
    CClientDC screen(nullptr);
    m_bitmap.CreateCompatibleBitmap(&screen, width, height);
    m_context.CreateCompatibleDC(nullptr);
    m_context.SelectObject(&m_bitmap);
    SetLayout(m_context, layout);
    FillWithNoise(seed);
}

void Surface::FillWithNoise(unsigned seed)
{
    std::mt19937 random(seed);
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            SetPixelV(m_context, x, y, random() & 0xFFFFFF);
}

std::vector<COLORREF> Surface::Pixels() const
{
    std::vector<COLORREF> pixels;
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            pixels.push_back(GetPixel(m_context, x, y));
    return pixels;
}
