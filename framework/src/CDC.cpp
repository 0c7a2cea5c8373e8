// Device contexts.
#include "afx/CDC.h"
#include "afx/CException.h"
#include "afx/CWnd.h"
#include "ThreadState.h"

using framework::State;

IMPLEMENT_DYNCREATE(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

namespace
{
HDC ContextOf(const CDC* dc)
{
    return dc ? dc->m_hDC : nullptr;
}

HGDIOBJ ObjectOf(const CGdiObject* object)
{
    return object ? object->m_hObject : nullptr;
}
} // namespace

CDC::CDC() : m_hDC(nullptr), m_hAttribDC(nullptr) {}

CDC::~CDC()
{
    if (m_hDC)
        ::DeleteDC(CDC::Detach());
}

CDC::operator HDC() const
{
    return GetSafeHdc();
}

HDC CDC::GetSafeHdc() const
{
    const auto* volatile self = this; // documented to answer for a null object
    return self ? m_hDC : nullptr;
}

CDC* CDC::FromHandle(HDC dc)
{
    CDC* object = State().contexts.Find<CDC>(dc);
    if (object && !object->m_hAttribDC)
        object->m_hAttribDC = dc;
    return object;
}

void CDC::DeleteTempMap()
{
    State().contexts.DeleteTemporary();
}

BOOL CDC::Attach(HDC dc)
{
    ASSERT(!m_hDC);
    if (!dc)
        return FALSE;
    m_hDC = dc;
    State().contexts.Set(dc, this);
    m_hAttribDC = dc;
    return TRUE;
}

HDC CDC::Detach()
{
    const HDC dc = m_hDC;
    if (dc && State().contexts.Permanent(dc) == this)
        State().contexts.Remove(dc);
    m_hDC = nullptr;
    m_hAttribDC = nullptr;
    return dc;
}

BOOL CDC::CreateDC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData)
{
    return Attach(::CreateDCA(driver, device, output, static_cast<const DEVMODEA*>(initData)));
}

BOOL CDC::CreateCompatibleDC(CDC* dc)
{
    return Attach(::CreateCompatibleDC(ContextOf(dc)));
}

BOOL CDC::DeleteDC()
{
    return m_hDC && ::DeleteDC(Detach());
}

CWnd* CDC::GetWindow() const
{
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

int CDC::GetDeviceCaps(int index) const
{
    return ::GetDeviceCaps(m_hDC, index);
}

int CDC::SaveDC()
{
    return ::SaveDC(m_hDC);
}

BOOL CDC::RestoreDC(int saved)
{
    return ::RestoreDC(m_hDC, saved);
}

CPen* CDC::SelectObject(CPen* pen)
{
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, ObjectOf(pen))));
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, ObjectOf(brush))));
}

CFont* CDC::SelectObject(CFont* font)
{
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, ObjectOf(font))));
}

CBitmap* CDC::SelectObject(CBitmap* bitmap)
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, ObjectOf(bitmap))));
}

int CDC::SelectObject(CRgn* region)
{
    return SelectClipRgn(region);
}

CGdiObject* CDC::SelectObject(CGdiObject* object)
{
    return CGdiObject::FromHandle(::SelectObject(m_hDC, ObjectOf(object)));
}

CPalette* CDC::SelectPalette(CPalette* palette, BOOL forceBackground)
{
    return CPalette::FromHandle(::SelectPalette(m_hDC, static_cast<HPALETTE>(ObjectOf(palette)), forceBackground));
}

UINT CDC::RealizePalette()
{
    return ::RealizePalette(m_hDC);
}

CBitmap* CDC::GetCurrentBitmap() const
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP)));
}

COLORREF CDC::GetBkColor() const
{
    return ::GetBkColor(m_hDC);
}

COLORREF CDC::SetBkColor(COLORREF colour)
{
    return ::SetBkColor(m_hDC, colour);
}

int CDC::GetBkMode() const
{
    return ::GetBkMode(m_hDC);
}

int CDC::SetBkMode(int mode)
{
    return ::SetBkMode(m_hDC, mode);
}

int CDC::SetStretchBltMode(int mode)
{
    return ::SetStretchBltMode(m_hDC, mode);
}

COLORREF CDC::GetTextColor() const
{
    return ::GetTextColor(m_hDC);
}

COLORREF CDC::SetTextColor(COLORREF colour)
{
    return ::SetTextColor(m_hDC, colour);
}

DWORD CDC::GetLayout() const
{
    return ::GetLayout(m_hDC);
}

DWORD CDC::SetLayout(DWORD layout)
{
    return ::SetLayout(m_hDC, layout);
}

int CDC::GetClipBox(LPRECT rect) const
{
    return ::GetClipBox(m_hDC, rect);
}

int CDC::SelectClipRgn(CRgn* region)
{
    return ::SelectClipRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)));
}

int CDC::SelectClipRgn(CRgn* region, int mode)
{
    return ::ExtSelectClipRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)), mode);
}

int CDC::IntersectClipRect(int left, int top, int right, int bottom)
{
    return ::IntersectClipRect(m_hDC, left, top, right, bottom);
}

int CDC::IntersectClipRect(LPCRECT rect)
{
    return IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom);
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom)
{
    return ::Rectangle(m_hDC, left, top, right, bottom);
}

BOOL CDC::Rectangle(LPCRECT rect)
{
    return Rectangle(rect->left, rect->top, rect->right, rect->bottom);
}

void CDC::FillRect(LPCRECT rect, CBrush* brush)
{
    ::FillRect(m_hDC, rect, static_cast<HBRUSH>(ObjectOf(brush)));
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF colour)
{
    ::SetBkColor(m_hDC, colour);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF colour)
{
    FillSolidRect(CRect(x, y, x + width, y + height), colour);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight)
{
    Draw3dRect(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, topLeft, bottomRight);
}

void CDC::Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight)
{
    FillSolidRect(x, y, width - 1, 1, topLeft);
    FillSolidRect(x, y, 1, height - 1, topLeft);
    FillSolidRect(x + width - 1, y, 1, height, bottomRight);
    FillSolidRect(x, y + height - 1, width, 1, bottomRight);
}

void CDC::DrawFocusRect(LPCRECT rect)
{
    ::DrawFocusRect(m_hDC, rect);
}

BOOL CDC::DrawEdge(LPRECT rect, UINT edge, UINT flags)
{
    return ::DrawEdge(m_hDC, rect, edge, flags);
}

BOOL CDC::DrawFrameControl(LPRECT rect, UINT type, UINT state)
{
    return ::DrawFrameControl(m_hDC, rect, type, state);
}

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop)
{
    return ::BitBlt(m_hDC, x, y, width, height, ContextOf(source), sourceX, sourceY, rop);
}

BOOL CDC::StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                     int sourceHeight, DWORD rop)
{
    return ::StretchBlt(m_hDC, x, y, width, height, ContextOf(source), sourceX, sourceY, sourceWidth, sourceHeight,
                        rop);
}

COLORREF CDC::GetPixel(int x, int y) const
{
    return ::GetPixel(m_hDC, x, y);
}

COLORREF CDC::GetPixel(POINT point) const
{
    return GetPixel(point.x, point.y);
}

BOOL CDC::SetPixelV(int x, int y, COLORREF colour)
{
    return ::SetPixelV(m_hDC, x, y, colour);
}

BOOL CDC::SetPixelV(POINT point, COLORREF colour)
{
    return SetPixelV(point.x, point.y, colour);
}

int CDC::DrawText(LPCSTR text, int count, LPRECT rect, UINT format)
{
    return ::DrawTextA(m_hDC, text, count, rect, format);
}

int CDC::DrawText(const CString& text, LPRECT rect, UINT format)
{
    return DrawText(text, text.GetLength(), rect, format);
}

CSize CDC::GetTextExtent(LPCSTR text, int count) const
{
    CSize size;
    ::GetTextExtentPoint32A(m_hDC, text, count, &size);
    return size;
}

CSize CDC::GetTextExtent(const CString& text) const
{
    return GetTextExtent(text, text.GetLength());
}

CClientDC::CClientDC(CWnd* window) : m_hWnd(window ? window->m_hWnd : nullptr)
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* window) : m_hWnd(window->m_hWnd)
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}
