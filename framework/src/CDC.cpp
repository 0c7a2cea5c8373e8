// Device contexts: output goes to m_hDC, questions to m_hAttribDC, settings to both where they differ.
#include "afx/CDC.h"
#include "afx/CException.h"
#include "afx/CWnd.h"
#include "ThreadState.h"

using framework::State;

IMPLEMENT_DYNCREATE(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
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

// Selects into both contexts where they differ, and answers what the output context (else the other) had.
HGDIOBJ SelectIntoBoth(const CDC& dc, HGDIOBJ object)
{
    HGDIOBJ old = nullptr;
    if (dc.m_hDC != dc.m_hAttribDC)
        old = ::SelectObject(dc.m_hDC, object);
    if (dc.m_hAttribDC)
        old = ::SelectObject(dc.m_hAttribDC, object);
    return old;
}

// Sets a property of both contexts where they differ, and answers the old one.
template <class Result, class Argument>
Result SetInBoth(const CDC& dc, Result(WINAPI* function)(HDC, Argument), Argument argument)
{
    Result old = {};
    if (dc.m_hDC != dc.m_hAttribDC)
        old = function(dc.m_hDC, argument);
    if (dc.m_hAttribDC)
        old = function(dc.m_hAttribDC, argument);
    return old;
}

template <class Old>
Old SetPairInBoth(const CDC& dc, BOOL(WINAPI* function)(HDC, int, int, decltype(static_cast<Old*>(nullptr))), int x,
                  int y)
{
    Old old = {};
    if (dc.m_hDC != dc.m_hAttribDC)
        function(dc.m_hDC, x, y, &old);
    if (dc.m_hAttribDC)
        function(dc.m_hAttribDC, x, y, &old);
    return old;
}

template <class Value>
Value GetPair(const CDC& dc, BOOL(WINAPI* function)(HDC, Value*))
{
    Value value = {};
    function(dc.m_hAttribDC, &value);
    return value;
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
    SetAttribDC(dc);
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

void CDC::SetAttribDC(HDC dc)
{
    m_hAttribDC = dc;
}

void CDC::SetOutputDC(HDC dc)
{
    m_hDC = dc;
}

void CDC::ReleaseAttribDC()
{
    m_hAttribDC = nullptr;
}

void CDC::ReleaseOutputDC()
{
    m_hDC = nullptr;
}

BOOL CDC::CreateDC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData)
{
    return Attach(::CreateDCA(driver, device, output, static_cast<const DEVMODEA*>(initData)));
}

BOOL CDC::CreateIC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData)
{
    return Attach(::CreateICA(driver, device, output, static_cast<const DEVMODEA*>(initData)));
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
    return ::GetDeviceCaps(m_hAttribDC, index);
}

int CDC::SaveDC()
{
    int saved = 0;
    if (m_hAttribDC)
        saved = ::SaveDC(m_hAttribDC);
    if (m_hDC != m_hAttribDC && ::SaveDC(m_hDC) != 0)
        saved = -1; // the numbers of the two may differ: only "the last one" holds for both
    return saved;
}

BOOL CDC::RestoreDC(int saved)
{
    BOOL restored = TRUE;
    if (m_hDC != m_hAttribDC)
        restored = ::RestoreDC(m_hDC, saved);
    if (m_hAttribDC)
        restored = restored && ::RestoreDC(m_hAttribDC, saved);
    return restored;
}

CGdiObject* CDC::SelectStockObject(int index)
{
    return CGdiObject::FromHandle(SelectIntoBoth(*this, ::GetStockObject(index)));
}

CPen* CDC::SelectObject(CPen* pen)
{
    return CPen::FromHandle(static_cast<HPEN>(SelectIntoBoth(*this, ObjectOf(pen))));
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    return CBrush::FromHandle(static_cast<HBRUSH>(SelectIntoBoth(*this, ObjectOf(brush))));
}

CFont* CDC::SelectObject(CFont* font)
{
    return CFont::FromHandle(static_cast<HFONT>(SelectIntoBoth(*this, ObjectOf(font))));
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

void CDC::UpdateColors()
{
    ::UpdateColors(m_hDC);
}

CPen* CDC::GetCurrentPen() const
{
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hAttribDC, OBJ_PEN)));
}

CBrush* CDC::GetCurrentBrush() const
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hAttribDC, OBJ_BRUSH)));
}

CPalette* CDC::GetCurrentPalette() const
{
    return CPalette::FromHandle(static_cast<HPALETTE>(::GetCurrentObject(m_hAttribDC, OBJ_PAL)));
}

CFont* CDC::GetCurrentFont() const
{
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hAttribDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hAttribDC, OBJ_BITMAP)));
}

COLORREF CDC::GetNearestColor(COLORREF colour) const
{
    return ::GetNearestColor(m_hAttribDC, colour);
}

CPoint CDC::GetBrushOrg() const
{
    CPoint origin;
    ::GetBrushOrgEx(m_hDC, &origin);
    return origin;
}

CPoint CDC::SetBrushOrg(int x, int y)
{
    CPoint old;
    ::SetBrushOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::SetBrushOrg(POINT point)
{
    return SetBrushOrg(point.x, point.y);
}

COLORREF CDC::GetBkColor() const
{
    return ::GetBkColor(m_hAttribDC);
}

COLORREF CDC::SetBkColor(COLORREF colour)
{
    return SetInBoth(*this, ::SetBkColor, colour);
}

int CDC::GetBkMode() const
{
    return ::GetBkMode(m_hAttribDC);
}

int CDC::SetBkMode(int mode)
{
    return SetInBoth(*this, ::SetBkMode, mode);
}

int CDC::GetROP2() const
{
    return ::GetROP2(m_hAttribDC);
}

int CDC::SetROP2(int mode)
{
    return SetInBoth(*this, ::SetROP2, mode);
}

int CDC::GetStretchBltMode() const
{
    return ::GetStretchBltMode(m_hAttribDC);
}

int CDC::SetStretchBltMode(int mode)
{
    return SetInBoth(*this, ::SetStretchBltMode, mode);
}

COLORREF CDC::GetTextColor() const
{
    return ::GetTextColor(m_hAttribDC);
}

COLORREF CDC::SetTextColor(COLORREF colour)
{
    return SetInBoth(*this, ::SetTextColor, colour);
}

DWORD CDC::GetLayout() const
{
    return ::GetLayout(m_hDC);
}

DWORD CDC::SetLayout(DWORD layout)
{
    return ::SetLayout(m_hDC, layout);
}

int CDC::GetMapMode() const
{
    return ::GetMapMode(m_hAttribDC);
}

int CDC::SetMapMode(int mode)
{
    return SetInBoth(*this, ::SetMapMode, mode);
}

CPoint CDC::GetViewportOrg() const
{
    return GetPair<POINT>(*this, ::GetViewportOrgEx);
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    return SetPairInBoth<POINT>(*this, ::SetViewportOrgEx, x, y);
}

CPoint CDC::SetViewportOrg(POINT point)
{
    return SetViewportOrg(point.x, point.y);
}

CPoint CDC::OffsetViewportOrg(int width, int height)
{
    return SetPairInBoth<POINT>(*this, ::OffsetViewportOrgEx, width, height);
}

CSize CDC::GetViewportExt() const
{
    return GetPair<SIZE>(*this, ::GetViewportExtEx);
}

CSize CDC::SetViewportExt(int width, int height)
{
    return SetPairInBoth<SIZE>(*this, ::SetViewportExtEx, width, height);
}

CSize CDC::SetViewportExt(SIZE size)
{
    return SetViewportExt(size.cx, size.cy);
}

CPoint CDC::GetWindowOrg() const
{
    return GetPair<POINT>(*this, ::GetWindowOrgEx);
}

CPoint CDC::SetWindowOrg(int x, int y)
{
    return SetPairInBoth<POINT>(*this, ::SetWindowOrgEx, x, y);
}

CPoint CDC::SetWindowOrg(POINT point)
{
    return SetWindowOrg(point.x, point.y);
}

CSize CDC::GetWindowExt() const
{
    return GetPair<SIZE>(*this, ::GetWindowExtEx);
}

CSize CDC::SetWindowExt(int width, int height)
{
    return SetPairInBoth<SIZE>(*this, ::SetWindowExtEx, width, height);
}

CSize CDC::SetWindowExt(SIZE size)
{
    return SetWindowExt(size.cx, size.cy);
}

void CDC::DPtoLP(LPPOINT points, int count) const
{
    ::DPtoLP(m_hAttribDC, points, count);
}

void CDC::DPtoLP(LPRECT rect) const
{
    DPtoLP(reinterpret_cast<LPPOINT>(rect), 2);
}

void CDC::LPtoDP(LPPOINT points, int count) const
{
    ::LPtoDP(m_hAttribDC, points, count);
}

void CDC::LPtoDP(LPRECT rect) const
{
    LPtoDP(reinterpret_cast<LPPOINT>(rect), 2);
}

int CDC::GetClipBox(LPRECT rect) const
{
    return ::GetClipBox(m_hDC, rect);
}

BOOL CDC::PtVisible(int x, int y) const
{
    return ::PtVisible(m_hDC, x, y);
}

BOOL CDC::PtVisible(POINT point) const
{
    return PtVisible(point.x, point.y);
}

BOOL CDC::RectVisible(LPCRECT rect) const
{
    return ::RectVisible(m_hDC, rect);
}

int CDC::SelectClipRgn(CRgn* region)
{
    return SetInBoth(*this, ::SelectClipRgn, static_cast<HRGN>(ObjectOf(region)));
}

int CDC::SelectClipRgn(CRgn* region, int mode)
{
    const auto handle = static_cast<HRGN>(ObjectOf(region));
    int kind = ERROR;
    if (m_hDC != m_hAttribDC)
        kind = ::ExtSelectClipRgn(m_hDC, handle, mode);
    if (m_hAttribDC)
        kind = ::ExtSelectClipRgn(m_hAttribDC, handle, mode);
    return kind;
}

int CDC::ExcludeClipRect(int left, int top, int right, int bottom)
{
    int kind = ERROR;
    if (m_hDC != m_hAttribDC)
        kind = ::ExcludeClipRect(m_hDC, left, top, right, bottom);
    if (m_hAttribDC)
        kind = ::ExcludeClipRect(m_hAttribDC, left, top, right, bottom);
    return kind;
}

int CDC::ExcludeClipRect(LPCRECT rect)
{
    return ExcludeClipRect(rect->left, rect->top, rect->right, rect->bottom);
}

int CDC::IntersectClipRect(int left, int top, int right, int bottom)
{
    int kind = ERROR;
    if (m_hDC != m_hAttribDC)
        kind = ::IntersectClipRect(m_hDC, left, top, right, bottom);
    if (m_hAttribDC)
        kind = ::IntersectClipRect(m_hAttribDC, left, top, right, bottom);
    return kind;
}

int CDC::IntersectClipRect(LPCRECT rect)
{
    return IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom);
}

int CDC::OffsetClipRgn(int x, int y)
{
    int kind = ERROR;
    if (m_hDC != m_hAttribDC)
        kind = ::OffsetClipRgn(m_hDC, x, y);
    if (m_hAttribDC)
        kind = ::OffsetClipRgn(m_hAttribDC, x, y);
    return kind;
}

int CDC::OffsetClipRgn(SIZE size)
{
    return OffsetClipRgn(size.cx, size.cy);
}

CPoint CDC::GetCurrentPosition() const
{
    return GetPair<POINT>(*this, ::GetCurrentPositionEx);
}

CPoint CDC::MoveTo(int x, int y)
{
    return SetPairInBoth<POINT>(*this, ::MoveToEx, x, y);
}

CPoint CDC::MoveTo(POINT point)
{
    return MoveTo(point.x, point.y);
}

BOOL CDC::LineTo(int x, int y)
{
    if (m_hAttribDC && m_hDC != m_hAttribDC)
        ::MoveToEx(m_hAttribDC, x, y, nullptr);
    return ::LineTo(m_hDC, x, y);
}

BOOL CDC::LineTo(POINT point)
{
    return LineTo(point.x, point.y);
}

BOOL CDC::Polyline(LPPOINT points, int count)
{
    return ::Polyline(m_hDC, points, count);
}

BOOL CDC::Polygon(LPPOINT points, int count)
{
    return ::Polygon(m_hDC, points, count);
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom)
{
    return ::Rectangle(m_hDC, left, top, right, bottom);
}

BOOL CDC::Rectangle(LPCRECT rect)
{
    return Rectangle(rect->left, rect->top, rect->right, rect->bottom);
}

BOOL CDC::RoundRect(int left, int top, int right, int bottom, int width, int height)
{
    return ::RoundRect(m_hDC, left, top, right, bottom, width, height);
}

BOOL CDC::RoundRect(LPCRECT rect, POINT point)
{
    return RoundRect(rect->left, rect->top, rect->right, rect->bottom, point.x, point.y);
}

BOOL CDC::Ellipse(int left, int top, int right, int bottom)
{
    return ::Ellipse(m_hDC, left, top, right, bottom);
}

BOOL CDC::Ellipse(LPCRECT rect)
{
    return Ellipse(rect->left, rect->top, rect->right, rect->bottom);
}

void CDC::FillRect(LPCRECT rect, CBrush* brush)
{
    ::FillRect(m_hDC, rect, static_cast<HBRUSH>(ObjectOf(brush)));
}

void CDC::FrameRect(LPCRECT rect, CBrush* brush)
{
    ::FrameRect(m_hDC, rect, static_cast<HBRUSH>(ObjectOf(brush)));
}

void CDC::InvertRect(LPCRECT rect)
{
    ::InvertRect(m_hDC, rect);
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

BOOL CDC::DrawIcon(int x, int y, HICON icon)
{
    return ::DrawIcon(m_hDC, x, y, icon);
}

BOOL CDC::DrawIcon(POINT point, HICON icon)
{
    return DrawIcon(point.x, point.y, icon);
}

BOOL CDC::FillRgn(CRgn* region, CBrush* brush)
{
    return ::FillRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)), static_cast<HBRUSH>(ObjectOf(brush)));
}

BOOL CDC::FrameRgn(CRgn* region, CBrush* brush, int width, int height)
{
    return ::FrameRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)), static_cast<HBRUSH>(ObjectOf(brush)), width, height);
}

BOOL CDC::InvertRgn(CRgn* region)
{
    return ::InvertRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)));
}

BOOL CDC::PaintRgn(CRgn* region)
{
    return ::PaintRgn(m_hDC, static_cast<HRGN>(ObjectOf(region)));
}

BOOL CDC::PatBlt(int x, int y, int width, int height, DWORD rop)
{
    return ::PatBlt(m_hDC, x, y, width, height, rop);
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

COLORREF CDC::SetPixel(int x, int y, COLORREF colour)
{
    return ::SetPixel(m_hDC, x, y, colour);
}

COLORREF CDC::SetPixel(POINT point, COLORREF colour)
{
    return SetPixel(point.x, point.y, colour);
}

BOOL CDC::SetPixelV(int x, int y, COLORREF colour)
{
    return ::SetPixelV(m_hDC, x, y, colour);
}

BOOL CDC::SetPixelV(POINT point, COLORREF colour)
{
    return SetPixelV(point.x, point.y, colour);
}

BOOL CDC::TextOut(int x, int y, LPCSTR text, int count)
{
    return ::TextOutA(m_hDC, x, y, text, count);
}

BOOL CDC::TextOut(int x, int y, const CString& text)
{
    return TextOut(x, y, text, text.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCSTR text, UINT count, LPINT widths)
{
    return ::ExtTextOutA(m_hDC, x, y, options, rect, text, count, widths);
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, LPINT widths)
{
    return ExtTextOut(x, y, options, rect, text, static_cast<UINT>(text.GetLength()), widths);
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
    ::GetTextExtentPoint32A(m_hAttribDC, text, count, &size);
    return size;
}

CSize CDC::GetTextExtent(const CString& text) const
{
    return GetTextExtent(text, text.GetLength());
}

UINT CDC::GetTextAlign() const
{
    return ::GetTextAlign(m_hAttribDC);
}

UINT CDC::SetTextAlign(UINT flags)
{
    return SetInBoth(*this, ::SetTextAlign, flags);
}

BOOL CDC::GetTextMetrics(LPTEXTMETRICA metrics) const
{
    return ::GetTextMetricsA(m_hAttribDC, metrics);
}

int CDC::GetTextFace(int count, LPSTR faceName) const
{
    return ::GetTextFaceA(m_hAttribDC, count, faceName);
}

int CDC::GetTextFace(CString& faceName) const
{
    const int size = GetTextFace(0, nullptr);
    const int length = GetTextFace(size, faceName.GetBuffer(size));
    faceName.ReleaseBuffer();
    return length;
}

int CDC::StartDoc(LPDOCINFOA documentInfo)
{
    return ::StartDocA(m_hDC, documentInfo);
}

int CDC::StartPage()
{
    return ::StartPage(m_hDC);
}

int CDC::EndPage()
{
    return ::EndPage(m_hDC);
}

int CDC::EndDoc()
{
    return ::EndDoc(m_hDC);
}

int CDC::AbortDoc()
{
    return ::AbortDoc(m_hDC);
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

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(window ? window->m_hWnd : nullptr)
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
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
