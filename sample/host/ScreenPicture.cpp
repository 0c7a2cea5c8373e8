#include "ScreenPicture.h"
#include <fstream>
#include <vector>

bool SaveScreen(const CRect& rect, const std::string& path)
{
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = rect.Width();
    info.biHeight = rect.Height();
    info.biPlanes = 1;
    info.biBitCount = 24;
    const DWORD lineBytes = (static_cast<DWORD>(rect.Width()) * 3 + 3) / 4 * 4;
    info.biSizeImage = lineBytes * static_cast<DWORD>(rect.Height());

    CClientDC screen(nullptr);
    CBitmap copy;
    CDC memory;
    if (!copy.CreateCompatibleBitmap(&screen, rect.Width(), rect.Height()) || !memory.CreateCompatibleDC(&screen))
        return false;
    CBitmap* const before = memory.SelectObject(&copy);
    memory.BitBlt(0, 0, rect.Width(), rect.Height(), &screen, rect.left, rect.top, SRCCOPY);
    memory.SelectObject(before);
    std::vector<char> pixels(info.biSizeImage);
    if (!GetDIBits(screen.GetSafeHdc(), static_cast<HBITMAP>(copy.GetSafeHandle()), 0, static_cast<UINT>(rect.Height()),
                   pixels.data(), reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS))
        return false;

    BITMAPFILEHEADER header = {};
    header.bfType = 0x4D42; // "BM"
    header.bfOffBits = sizeof header + sizeof info;
    header.bfSize = header.bfOffBits + info.biSizeImage;
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(reinterpret_cast<const char*>(&info), sizeof info);
    file.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    return file.good();
}
