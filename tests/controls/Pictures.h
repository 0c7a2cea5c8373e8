// Pictures whose every pixel is known, and the surfaces to draw them on.
#pragma once

#include <afxwin.h>
#include <string>
#include <vector>

/// A random picture of few colours; one of them is the hole. Every colour survives every depth.
class Picture
{
public:
    Picture(int width, int height, int depth, unsigned seed);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    COLORREF At(int x, int y) const { return m_colours[Index(x, y)]; }
    bool IsHole(int x, int y) const { return Index(x, y) == 0; }
    void Set(int x, int y, bool hole) { m_pixels[static_cast<size_t>(y * m_width + x)] = hole ? 0 : 1; }
    /// The key that makes the holes transparent: the hole's colour with red and blue exchanged.
    COLORREF Key() const;
    /// The same holes in another colour.
    void SetHoleColour(COLORREF colour) { m_colours[0] = colour; }
    /// Makes the palette black and white, black being the hole.
    void MakeBlackAndWhite();

    std::string Dib() const;  ///< as a bitmap resource holds it
    std::string File() const; ///< as a .bmp file
    HBITMAP Make() const;     ///< a DIB section of the picture's depth; the caller deletes it

private:
    size_t Index(int x, int y) const { return m_pixels[static_cast<size_t>(y * m_width + x)]; }

    int m_width;
    int m_height;
    int m_depth;
    std::vector<COLORREF> m_colours;
    std::vector<unsigned char> m_pixels;
};

/// A file in the tests' folder, gone with the object.
class ScratchFile
{
public:
    ScratchFile(const std::string& name, const std::string& bytes);
    ~ScratchFile();
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

/// A loaded resource-only library with bitmaps.
class PictureLibrary
{
public:
    struct Item
    {
        unsigned id;
        std::string dib;
    };
    explicit PictureLibrary(const std::vector<Item>& items);
    ~PictureLibrary();
    HINSTANCE Module() const { return m_module; }

private:
    std::string m_path;
    HMODULE m_module = nullptr;
};

/// A memory context with a true-colour bitmap full of noise.
class Surface
{
public:
    Surface(int width, int height, unsigned seed, DWORD layout = 0);
    HDC Context() const { return m_context.GetSafeHdc(); }
    void FillWithNoise(unsigned seed);
    /// All pixels in the context's own coordinates, row by row.
    std::vector<COLORREF> Pixels() const;
    int Width() const { return m_width; }

private:
    int m_width;
    int m_height;
    CBitmap m_bitmap;
    CDC m_context; // goes before the bitmap that is selected into it
};
