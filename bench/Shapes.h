// The bitmaps that the rows of regions and drawing work on.
#pragma once

#include <windows.h>
#include <cstdlib>
#include <random>
#include <vector>

namespace bench
{
/// Magenta: behaves the same with red and blue exchanged.
constexpr COLORREF ShapeKey = RGB(255, 0, 255);

/// A 32-bit DIB section, row 0 on top, and its pixels.
struct Shape
{
    Shape(int width, int height) : width(width), height(height)
    {
        const BITMAPINFO format = {{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
        void* bits = nullptr;
        bitmap = CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels = static_cast<DWORD*>(bits);
    }
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;
    ~Shape() { DeleteObject(bitmap); }

    void Set(int x, int y, bool visible) { pixels[y * width + x] = visible ? 0x336699 : ShapeKey; }

    int width;
    int height;
    HBITMAP bitmap = nullptr;
    DWORD* pixels = nullptr;
};

/// Every second pixel, by chance: the worst that a region can be made of.
inline void MakeNoise(Shape& shape)
{
    std::mt19937 random(1);
    for (int y = 0; y < shape.height; ++y)
        for (int x = 0; x < shape.width; ++x)
            shape.Set(x, y, random() % 2 != 0);
}

/// Two half discs and what lies between them.
inline void MakeButton(Shape& shape)
{
    const int radius = shape.height / 2;
    for (int y = 0; y < shape.height; ++y)
        for (int x = 0; x < shape.width; ++x)
        {
            const int nearest = x < radius ? radius : x >= shape.width - radius ? shape.width - radius - 1 : x;
            shape.Set(x, y, (x - nearest) * (x - nearest) + (y - radius) * (y - radius) < radius * radius);
        }
}

/// The visible runs, row by row.
inline std::vector<RECT> Runs(const Shape& shape)
{
    std::vector<RECT> runs;
    for (int y = 0; y < shape.height; ++y)
        for (int x = 0; x < shape.width; ++x)
        {
            const int start = x;
            while (x < shape.width && shape.pixels[y * shape.width + x] != ShapeKey)
                ++x;
            if (x > start)
                runs.push_back({start, y, x, y + 1});
        }
    return runs;
}
} // namespace bench
