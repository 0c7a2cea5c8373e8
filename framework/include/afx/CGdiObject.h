// Drawing objects: owners of the system's handles. Each deletes its handle in the destructor, except the objects that
// FromHandle makes: those only stand for a handle, last until the program is idle, and own nothing.
#pragma once

#include "afx/CObject.h"
#include "afx/CString.h"
#include "afx/Geometry.h"

class CDC;

/// Any drawing object.
class FRAMEWORK_API CGdiObject : public CObject
{
    DECLARE_DYNCREATE(CGdiObject)
public:
    CGdiObject();
    ~CGdiObject() override;

    HGDIOBJ m_hObject;
    operator HGDIOBJ() const;
    HGDIOBJ GetSafeHandle() const; ///< the handle; null for a null object

    /// The object that stands for a handle: the one attached to it, otherwise a temporary one; null for null.
    static CGdiObject* FromHandle(HGDIOBJ object);
    static void DeleteTempMap();
    /// Takes a handle over; FALSE for null.
    BOOL Attach(HGDIOBJ object);
    /// Gives the handle up.
    HGDIOBJ Detach();
    BOOL DeleteObject();

    int GetObject(int count, LPVOID object) const;
    UINT GetObjectType() const;
    BOOL CreateStockObject(int index);
    BOOL operator==(const CGdiObject& object) const;
    BOOL operator!=(const CGdiObject& object) const;
};

class FRAMEWORK_API CPen : public CGdiObject
{
    DECLARE_DYNAMIC(CPen)
public:
    CPen();
    /// Throws a CResourceException when there is no pen.
    CPen(int style, int width, COLORREF colour);
    ~CPen() override;
    operator HPEN() const;
    static CPen* FromHandle(HPEN pen);
    BOOL CreatePen(int style, int width, COLORREF colour);
};

class FRAMEWORK_API CBrush : public CGdiObject
{
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush();
    /// Throws a CResourceException when there is no brush.
    explicit CBrush(COLORREF colour);
    ~CBrush() override;
    operator HBRUSH() const;
    static CBrush* FromHandle(HBRUSH brush);
    BOOL CreateSolidBrush(COLORREF colour);
    int GetLogBrush(LOGBRUSH* brush);
};

class FRAMEWORK_API CFont : public CGdiObject
{
    DECLARE_DYNAMIC(CFont)
public:
    CFont();
    ~CFont() override;
    operator HFONT() const;
    static CFont* FromHandle(HFONT font);
    BOOL CreateFontIndirect(const LOGFONTA* font);
    /// `pointSize` in tenths of a point, for the given context or the screen.
    BOOL CreatePointFont(int pointSize, LPCSTR faceName, CDC* dc = nullptr);
    BOOL CreatePointFontIndirect(const LOGFONTA* font, CDC* dc = nullptr);
    int GetLogFont(LOGFONTA* font);
};

class FRAMEWORK_API CBitmap : public CGdiObject
{
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap();
    ~CBitmap() override;
    operator HBITMAP() const;
    static CBitmap* FromHandle(HBITMAP bitmap);
    /// From a resource that AfxFindResourceHandle finds.
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    DWORD GetBitmapBits(DWORD count, LPVOID bits) const;
};

class FRAMEWORK_API CPalette : public CGdiObject
{
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette();
    ~CPalette() override;
    operator HPALETTE() const;
    static CPalette* FromHandle(HPALETTE palette);
    BOOL CreatePalette(LPLOGPALETTE palette);
};

class FRAMEWORK_API CRgn : public CGdiObject
{
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn();
    ~CRgn() override;
    operator HRGN() const;
    static CRgn* FromHandle(HRGN region);
    BOOL CreateRectRgn(int left, int top, int right, int bottom);
    BOOL CreateRectRgnIndirect(LPCRECT rect);
    BOOL CreateEllipticRgn(int left, int top, int right, int bottom);
    int CombineRgn(const CRgn* first, const CRgn* second, int mode);
    int CopyRgn(const CRgn* source);
    BOOL EqualRgn(const CRgn* region) const;
    int GetRgnBox(LPRECT rect) const;
    BOOL PtInRegion(int horizontal, int vertical) const;
    BOOL PtInRegion(POINT point) const;
};
