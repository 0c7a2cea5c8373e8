// Drawing objects.
#include "afx/CGdiObject.h"
#include "afx/CDC.h"
#include "afx/CException.h"
#include "afx/Resources.h"
#include "ThreadState.h"

using framework::State;

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace
{
template <class T>
T As(const CGdiObject& object)
{
    return static_cast<T>(object.m_hObject);
}

template <class T>
T HandleOf(const CGdiObject* object)
{
    return object ? As<T>(*object) : nullptr;
}

// The height in logical units of a size in tenths of a point.
LONG LogicalHeight(LONG tenthsOfPoint, CDC* dc)
{
    const HDC screen = dc ? nullptr : GetDC(nullptr);
    const HDC context = dc ? dc->m_hAttribDC : screen;
    POINT origin = {0, 0};
    POINT extent = {0, MulDiv(GetDeviceCaps(context, LOGPIXELSY), tenthsOfPoint, 720)};
    DPtoLP(context, &extent, 1);
    DPtoLP(context, &origin, 1);
    if (screen)
        ReleaseDC(nullptr, screen);
    return -labs(extent.y - origin.y);
}
} // namespace

CGdiObject::CGdiObject() : m_hObject(nullptr) {}

CGdiObject::~CGdiObject()
{
    CGdiObject::DeleteObject();
}

CGdiObject::operator HGDIOBJ() const
{
    return GetSafeHandle();
}

HGDIOBJ CGdiObject::GetSafeHandle() const
{
    // documented to answer for a null object, which the compiler may not be told
    const auto* volatile self = this;
    return self ? m_hObject : nullptr;
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ object)
{
    return State().gdiObjects.Find<CGdiObject>(object);
}

void CGdiObject::DeleteTempMap()
{
    State().gdiObjects.DeleteTemporary();
}

BOOL CGdiObject::Attach(HGDIOBJ object)
{
    ASSERT(!m_hObject);
    if (!object)
        return FALSE;
    m_hObject = object;
    State().gdiObjects.Set(object, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    const HGDIOBJ object = m_hObject;
    if (object && State().gdiObjects.Permanent(object) == this)
        State().gdiObjects.Remove(object);
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject()
{
    return m_hObject && ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int count, LPVOID object) const
{
    return ::GetObjectA(m_hObject, count, object);
}

UINT CGdiObject::GetObjectType() const
{
    return ::GetObjectType(m_hObject);
}

BOOL CGdiObject::CreateStockObject(int index)
{
    return Attach(::GetStockObject(index));
}

BOOL CGdiObject::operator==(const CGdiObject& object) const
{
    return m_hObject == object.m_hObject;
}

BOOL CGdiObject::operator!=(const CGdiObject& object) const
{
    return m_hObject != object.m_hObject;
}

CPen::CPen() = default;
CPen::~CPen() = default;

CPen::CPen(int style, int width, COLORREF colour)
{
    if (!CreatePen(style, width, colour))
        AfxThrowResourceException();
}

CPen::operator HPEN() const
{
    return As<HPEN>(*this);
}

CPen* CPen::FromHandle(HPEN pen)
{
    return State().gdiObjects.Find<CPen>(pen);
}

BOOL CPen::CreatePen(int style, int width, COLORREF colour)
{
    return Attach(::CreatePen(style, width, colour));
}

CBrush::CBrush() = default;
CBrush::~CBrush() = default;

CBrush::CBrush(COLORREF colour)
{
    if (!CreateSolidBrush(colour))
        AfxThrowResourceException();
}

CBrush::operator HBRUSH() const
{
    return As<HBRUSH>(*this);
}

CBrush* CBrush::FromHandle(HBRUSH brush)
{
    return State().gdiObjects.Find<CBrush>(brush);
}

BOOL CBrush::CreateSolidBrush(COLORREF colour)
{
    return Attach(::CreateSolidBrush(colour));
}

int CBrush::GetLogBrush(LOGBRUSH* brush)
{
    return GetObject(sizeof *brush, brush);
}

CFont::CFont() = default;
CFont::~CFont() = default;

CFont::operator HFONT() const
{
    return As<HFONT>(*this);
}

CFont* CFont::FromHandle(HFONT font)
{
    return State().gdiObjects.Find<CFont>(font);
}

BOOL CFont::CreateFontIndirect(const LOGFONTA* font)
{
    return Attach(::CreateFontIndirectA(font));
}

BOOL CFont::CreatePointFont(int pointSize, LPCSTR faceName, CDC* dc)
{
    LOGFONTA font = {};
    font.lfHeight = pointSize;
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpynA(font.lfFaceName, faceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, dc);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONTA* font, CDC* dc)
{
    LOGFONTA logical = *font;
    logical.lfHeight = LogicalHeight(font->lfHeight, dc);
    return CreateFontIndirect(&logical);
}

int CFont::GetLogFont(LOGFONTA* font)
{
    return GetObject(sizeof *font, font);
}

CBitmap::CBitmap() = default;
CBitmap::~CBitmap() = default;

CBitmap::operator HBITMAP() const
{
    return As<HBITMAP>(*this);
}

CBitmap* CBitmap::FromHandle(HBITMAP bitmap)
{
    return State().gdiObjects.Find<CBitmap>(bitmap);
}

BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits)
{
    return Attach(::CreateBitmap(width, height, planes, bitCount, bits));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    return Attach(::CreateCompatibleBitmap(dc->m_hDC, width, height));
}

DWORD CBitmap::GetBitmapBits(DWORD count, LPVOID bits) const
{
    return static_cast<DWORD>(::GetBitmapBits(As<HBITMAP>(*this), static_cast<LONG>(count), bits));
}

CPalette::CPalette() = default;
CPalette::~CPalette() = default;

CPalette::operator HPALETTE() const
{
    return As<HPALETTE>(*this);
}

CPalette* CPalette::FromHandle(HPALETTE palette)
{
    return State().gdiObjects.Find<CPalette>(palette);
}

BOOL CPalette::CreatePalette(LPLOGPALETTE palette)
{
    return Attach(::CreatePalette(palette));
}

CRgn::CRgn() = default;
CRgn::~CRgn() = default;

CRgn::operator HRGN() const
{
    return As<HRGN>(*this);
}

CRgn* CRgn::FromHandle(HRGN region)
{
    return State().gdiObjects.Find<CRgn>(region);
}

BOOL CRgn::CreateRectRgn(int left, int top, int right, int bottom)
{
    return Attach(::CreateRectRgn(left, top, right, bottom));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT rect)
{
    return Attach(::CreateRectRgnIndirect(rect));
}

BOOL CRgn::CreateEllipticRgn(int left, int top, int right, int bottom)
{
    return Attach(::CreateEllipticRgn(left, top, right, bottom));
}

int CRgn::CombineRgn(const CRgn* first, const CRgn* second, int mode)
{
    return ::CombineRgn(As<HRGN>(*this), HandleOf<HRGN>(first), HandleOf<HRGN>(second), mode);
}

int CRgn::CopyRgn(const CRgn* source)
{
    return CombineRgn(source, nullptr, RGN_COPY);
}

BOOL CRgn::EqualRgn(const CRgn* region) const
{
    return ::EqualRgn(As<HRGN>(*this), HandleOf<HRGN>(region)) == TRUE;
}

int CRgn::GetRgnBox(LPRECT rect) const
{
    return ::GetRgnBox(As<HRGN>(*this), rect);
}

BOOL CRgn::PtInRegion(int horizontal, int vertical) const
{
    return ::PtInRegion(As<HRGN>(*this), horizontal, vertical);
}

BOOL CRgn::PtInRegion(POINT point) const
{
    return PtInRegion(point.x, point.y);
}
