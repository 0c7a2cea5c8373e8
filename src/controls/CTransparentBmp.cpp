// A bitmap with a colour key: its region, and drawing that lets the background show through.
#include "controls/CTransparentBmp.h"
#include "controls/CPalette256.h"
#include "controls/internal/RegionBuilder.h"
#include "system/internal/Handle.h"
#include "settings/internal/ResourceHandleScope.h"

using tvk::DeviceContext;
using tvk::GdiObject;
using tvk::SelectGuard;

namespace
{
/// Blue, green and red of a pixel in memory; the fourth byte is no colour.
constexpr DWORD ColourBytes = 0x00FFFFFF;

void Delete(HGDIOBJ object)
{
    if (object)
        ::DeleteObject(object);
}

/// The second copy of a black and white picture comes back monochrome, and could hold no background but one of black
/// and white: a bitmap of the screen's own format takes its place.
HBITMAP BackgroundBuffer(HBITMAP copy)
{
    BITMAP format = {};
    if (!copy || !::GetObjectA(copy, sizeof format, &format) || format.bmBitsPixel != 1)
        return copy;
    ::DeleteObject(copy);
    const HDC screen = ::GetDC(nullptr);
    const HBITMAP buffer = ::CreateCompatibleBitmap(screen, format.bmWidth, format.bmHeight);
    ::ReleaseDC(nullptr, screen);
    return buffer;
}

/// Selects a palette as a background palette, realizes it, and puts back the previous one.
class PaletteSelection
{
public:
    PaletteSelection(HDC context, HPALETTE palette)
        : m_context(context), m_previous(palette ? ::SelectPalette(context, palette, TRUE) : nullptr)
    {
        if (m_previous)
            ::RealizePalette(context);
    }
    PaletteSelection(const PaletteSelection&) = delete;
    PaletteSelection& operator=(const PaletteSelection&) = delete;
    ~PaletteSelection()
    {
        if (m_previous)
            ::SelectPalette(m_context, m_previous, TRUE);
    }

private:
    HDC m_context;
    HPALETTE m_previous;
};

/// A 32-bit picture whose rows, stored from the bottom up, can be read in memory.
class ReadablePicture
{
public:
    /// Copies the bitmap, stretched to the rectangle's size when there is one. False when the system refuses.
    bool Copy(HBITMAP bitmap, const CRect* rect)
    {
        const DeviceContext memory(::CreateCompatibleDC(nullptr));
        BITMAP original = {};
        if (!memory || !::GetObjectA(bitmap, sizeof original, &original))
            return false;
        m_width = rect ? rect->Width() : original.bmWidth;
        m_height = rect ? rect->Height() : original.bmHeight;
        BITMAPINFO format = {};
        format.bmiHeader.biSize = sizeof format.bmiHeader;
        format.bmiHeader.biWidth = m_width;
        format.bmiHeader.biHeight = m_height;
        format.bmiHeader.biPlanes = 1;
        format.bmiHeader.biBitCount = 32;
        format.bmiHeader.biCompression = BI_RGB;
        void* bits = nullptr;
        m_dib.Reset(::CreateDIBSection(memory.Get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
        BITMAP copy = {};
        if (!m_dib || !::GetObjectA(m_dib.Get(), sizeof copy, &copy) || copy.bmHeight != m_height || m_height <= 0)
            return false;
        const DeviceContext source(::CreateCompatibleDC(memory.Get()));
        if (!source)
            return false;
        const SelectGuard target(memory.Get(), m_dib.Get());
        const SelectGuard picture(source.Get(), bitmap);
        if (!target || !picture)
            return false;
        const BOOL copied = rect ? ::StretchBlt(memory.Get(), 0, 0, m_width, m_height, source.Get(), 0, 0,
                                                original.bmWidth, original.bmHeight, SRCCOPY)
                                 : ::BitBlt(memory.Get(), 0, 0, m_width, m_height, source.Get(), 0, 0, SRCCOPY);
        ::GdiFlush();
        m_bits = static_cast<const BYTE*>(bits);
        m_stride = (static_cast<std::size_t>(copy.bmWidthBytes) + 3) / 4 * 4;
        return copied != FALSE;
    }

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// The pixels of a row; row 0 is the top one.
    const DWORD* Row(int y) const
    {
        return reinterpret_cast<const DWORD*>(m_bits + static_cast<std::size_t>(m_height - 1 - y) * m_stride);
    }

private:
    GdiObject<HBITMAP> m_dib;
    const BYTE* m_bits = nullptr;
    std::size_t m_stride = 0;
    int m_width = 0;
    int m_height = 0;
};
} // namespace

IMPLEMENT_DYNAMIC(CTransparentBmp, CBitmap)

CTransparentBmp::CTransparentBmp() : m_pRect(new CRect(0, 0, 0, 0))
{
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    m_bWin9x = ::GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

CTransparentBmp::~CTransparentBmp()
{
    FreeLoaded();
    Delete(m_hClipRgn);
    delete m_pRect;
}

void CTransparentBmp::FreeLoaded()
{
    Delete(m_hSavedBmp);
    Delete(m_hRgn);
    Delete(m_hBkgndBmp);
    m_hSavedBmp = nullptr;
    m_hRgn = nullptr;
    m_hBkgndBmp = nullptr;
    m_nBmpWidth = 0;
    m_nBmpHeight = 0;
}

HRGN CTransparentBmp::LoadTransparent(HINSTANCE hInst, UINT nID, COLORREF crTransparent, CRect* pRect)
{
    if (!hInst)
    {
        CString name;
        name.Format("#%u", nID);
        hInst = AfxFindResourceHandle(name, reinterpret_cast<LPCSTR>(RT_BITMAP));
    }
    m_bFromFile = 0;
    m_strFileName.Empty();
    StartLoading(hInst, nID, crTransparent, pRect);
    return LoadResource(pRect);
}

HRGN CTransparentBmp::LoadTransparent(UINT nID, COLORREF crTransparent, CRect* pRect)
{
    return LoadTransparent(static_cast<HINSTANCE>(nullptr), nID, crTransparent, pRect);
}

HRGN CTransparentBmp::LoadTransparent(UINT nID, COLORREF crTransparent, int bSaveBmp, CRect* pRect)
{
    m_bSaveBmp = bSaveBmp;
    return LoadTransparent(static_cast<HINSTANCE>(nullptr), nID, crTransparent, pRect);
}

HRGN CTransparentBmp::LoadTransparent(UINT nID, CString strFile, COLORREF crTransparent, CRect* pRect)
{
    m_bFromFile = 1;
    m_strFileName = strFile;
    StartLoading(nullptr, nID, crTransparent, pRect);
    const GdiObject<HBITMAP> bitmap(pRect ? LoadPicture(0, pRect->Width(), pRect->Height()) : LoadPicture(0, 0, 0));
    return FinishLoading(bitmap.Get(), pRect, pRect);
}

void CTransparentBmp::StartLoading(HINSTANCE module, UINT nID, COLORREF crTransparent, const CRect* pRect)
{
    FreeLoaded();
    m_hInstance = module;
    m_nResourceID = nID;
    m_crTransparent = crTransparent;
    if (pRect)
        *m_pRect = *pRect;
}

HRGN CTransparentBmp::LoadResource(CRect* pRect)
{
    const int width = pRect ? pRect->Width() : 0;
    const int height = pRect ? pRect->Height() : 0;
    GdiObject<HBITMAP> bitmap(LoadPicture(m_nLoadFlags, width, height));
    if (!m_bSaveBmp)
        return FinishLoading(bitmap.Get(), pRect, pRect);
    m_hSavedBmp = bitmap.Release();
    m_hBkgndBmp = BackgroundBuffer(LoadPicture(LR_SHARED, width, height));
    // The kept bitmap already has the size it is drawn at: nothing is left to stretch.
    return FinishLoading(m_hSavedBmp, nullptr, pRect);
}

HRGN CTransparentBmp::FinishLoading(HBITMAP bitmap, CRect* pRegionRect, const CRect* pRect)
{
    BITMAP loaded = {};
    if (bitmap)
        ::GetObjectA(bitmap, sizeof loaded, &loaded);
    m_nBmpWidth = loaded.bmWidth;
    m_nBmpHeight = loaded.bmHeight;
    m_hRgn = BitmapToRegion(bitmap, m_crTransparent, pRegionRect);
    m_nWidth = pRect ? pRect->Width() : m_nBmpWidth;
    m_nHeight = pRect ? pRect->Height() : m_nBmpHeight;
    m_bNeedBkgnd = 1;
    m_bBkgndSet = 0;
    return m_hRgn;
}

/// Loads the bitmap from where it comes from; width and height 0 for its own size. Null when that fails.
HBITMAP CTransparentBmp::LoadPicture(UINT flags, int width, int height) const
{
    if (m_bFromFile)
        return static_cast<HBITMAP>(
            ::LoadImageA(nullptr, m_strFileName, IMAGE_BITMAP, width, height, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
    // Without a module the system would take the identifier for one of its own bitmaps.
    if (!m_hInstance)
        return nullptr;
    return static_cast<HBITMAP>(
        ::LoadImageA(m_hInstance, MAKEINTRESOURCEA(m_nResourceID), IMAGE_BITMAP, width, height, flags));
}

HRGN CTransparentBmp::BitmapToRegion(HBITMAP hBmp, COLORREF crTransparent, CRect* pRect)
{
    ReadablePicture picture;
    tvk::RegionBuilder region;
    if (!hBmp || !picture.Copy(hBmp, pRect) || !region.Begin())
        return nullptr;
    // A pixel's bytes lie in memory as blue, green, red; a key's as red, green, blue. Comparing them as they lie is
    // intended: callers pass keys with red and blue exchanged.
    const DWORD key = crTransparent & ColourBytes;
    const int width = picture.Width();
    for (int y = 0; y < picture.Height(); ++y)
    {
        const DWORD* row = picture.Row(y);
        for (int x = 0; x < width; ++x)
        {
            const int start = x;
            while (x < width && (row[x] & ColourBytes) != key)
                ++x;
            if (x > start && !region.AddRun(start, x, y))
                return nullptr;
        }
    }
    return region.Finish();
}

HRGN CTransparentBmp::DrawingRegion() const
{
    return m_hClipRgn ? m_hClipRgn : m_hRgn;
}

void CTransparentBmp::CreateDrawingPalette()
{
    if (m_hInstance && m_hInstance != AfxGetResourceHandle())
    {
        const tvk::ResourceHandleScope module(m_hInstance);
        m_pPalette->CreatePalette256(m_nResourceID);
    }
    else
        m_pPalette->CreatePalette256(m_nResourceID);
}

void CTransparentBmp::TransBlt(CDC* pDC, int x, int y, int cx, int cy)
{
    if (!pDC || !pDC->GetSafeHdc())
        return;
    const HDC context = pDC->GetSafeHdc();
    CPalette256 palette;
    m_pPalette = &palette;
    CreateDrawingPalette();
    {
        const DeviceContext work(::CreateCompatibleDC(context));
        const DeviceContext source(::CreateCompatibleDC(nullptr));
        const auto colours = static_cast<HPALETTE>(m_pPalette->GetSafeHandle());
        const PaletteSelection onContext(context, colours), onWork(work.Get(), colours),
            onSource(source.Get(), colours);
        if (work && source)
        {
            // The 9x family copies between mirrored contexts one pixel off: there the work context is not mirrored.
            if (m_bWin9x && (::GetLayout(context) & LAYOUT_RTL))
            {
                ::SetLayout(work.Get(), ::GetLayout(work.Get()) & ~static_cast<DWORD>(LAYOUT_RTL));
                ++x;
            }
            if (m_bSaveBmp && m_hSavedBmp)
                DrawSaved(context, work.Get(), source.Get(), x, y, cx, cy);
            else
                DrawFresh(pDC, work.Get(), source.Get(), x, y, cx, cy);
        }
    }
    m_pPalette = nullptr;
}

void CTransparentBmp::DrawSaved(HDC context, HDC work, HDC source, int x, int y, int cx, int cy)
{
    const SelectGuard buffer(work, m_hBkgndBmp);
    const SelectGuard picture(source, m_hSavedBmp);
    if (!buffer || !picture)
        return;
    if (m_bNeedBkgnd == 1 || m_bOverlap)
    {
        m_bNeedBkgnd = 0;
        if (!m_bBkgndSet)
            ::BitBlt(work, 0, 0, m_nWidth, m_nHeight, context, x, y, SRCCOPY);
    }
    ::SelectClipRgn(work, DrawingRegion());
    if (cx == 0 && cy == 0)
        ::BitBlt(work, 0, 0, m_nWidth, m_nHeight, source, 0, 0, SRCCOPY);
    else
        ::StretchBlt(work, 0, 0, cx, cy, source, 0, 0, m_nBmpWidth, m_nBmpHeight, SRCCOPY);
    ::SelectClipRgn(context, nullptr);
    ::BitBlt(context, x, y, m_nWidth, m_nHeight, work, 0, 0, SRCCOPY);
}

void CTransparentBmp::DrawFresh(CDC* pDC, HDC work, HDC source, int x, int y, int cx, int cy)
{
    const GdiObject<HBITMAP> image(LoadPicture(m_nLoadFlags, m_nWidth, m_nHeight));
    CBitmap buffer;
    if (!image || !buffer.CreateCompatibleBitmap(pDC, m_nWidth, m_nHeight))
        return;
    m_pDrawBmp = &buffer;
    {
        const HDC context = pDC->GetSafeHdc();
        const SelectGuard background(work, m_pDrawBmp->GetSafeHandle());
        const SelectGuard picture(source, image.Get());
        if (background && picture)
        {
            ::BitBlt(work, 0, 0, m_nWidth, m_nHeight, context, x, y, SRCCOPY);
            ::SelectClipRgn(work, DrawingRegion());
            const bool loadedSize = cx == 0 && cy == 0;
            ::StretchBlt(work, 0, 0, loadedSize ? m_nWidth : cx, loadedSize ? m_nHeight : cy, source, 0, 0, m_nBmpWidth,
                         m_nBmpHeight, SRCCOPY);
            ::BitBlt(context, x, y, m_nWidth, m_nHeight, work, 0, 0, SRCCOPY);
        }
    }
    m_pDrawBmp = nullptr;
}

void CTransparentBmp::SetBkgnd(CPaintDC* pDC, CRect* pRect)
{
    SetBkgnd(static_cast<CDC*>(pDC), pRect);
}

bool CTransparentBmp::SetBkgnd(CDC* pDC, CRect* pRect)
{
    if (!pDC || !pRect || !m_hBkgndBmp)
        return false;
    const DeviceContext work(::CreateCompatibleDC(pDC->GetSafeHdc()));
    if (!work)
        return false;
    const SelectGuard buffer(work.Get(), m_hBkgndBmp);
    if (!buffer || !::BitBlt(work.Get(), 0, 0, pRect->Width(), pRect->Height(), pDC->GetSafeHdc(), pRect->left,
                             pRect->top, SRCCOPY))
        return false;
    m_bBkgndSet = 1;
    return true;
}

void CTransparentBmp::SetClipRgn(HRGN hRgn)
{
    // The rectangle is only a handle to receive the result.
    GdiObject<HRGN> common(::CreateRectRgn(0, 0, m_nWidth, m_nHeight));
    if (::CombineRgn(common.Get(), m_hRgn, hRgn, RGN_AND) == ERROR)
        common.Reset();
    Delete(m_hClipRgn);
    m_hClipRgn = common.Release();
}

void CTransparentBmp::SetRgnDefined()
{
    m_bRgnDefined = 1;
}

void CTransparentBmp::SetOverlap(int bOverlap)
{
    m_bOverlap = bOverlap;
}

void CTransparentBmp::SetSaveBmp(int bSaveBmp)
{
    m_bSaveBmp = bSaveBmp;
}

void CTransparentBmp::SetWidth(int nWidth)
{
    m_nWidth = nWidth;
}

void CTransparentBmp::SetHeight(int nHeight)
{
    m_nHeight = nHeight;
}

int CTransparentBmp::ReturnWidth()
{
    return m_nWidth;
}

int CTransparentBmp::ReturnHeight()
{
    return m_nHeight;
}

void CTransparentBmp::SetMapSystemColors(int bMap)
{
    m_nLoadFlags = bMap ? m_nLoadFlags | LR_LOADMAP3DCOLORS : 0;
}
