// Device contexts.
#pragma once

#include "afx/CGdiObject.h"

class CWnd;

/// A device context. m_hDC takes the output, m_hAttribDC answers questions: the same context here, which never sets the
/// two apart. The destructor deletes an attached context.
class FRAMEWORK_API CDC : public CObject
{
    DECLARE_DYNCREATE(CDC)
public:
    CDC();
    ~CDC() override;

    HDC m_hDC;
    HDC m_hAttribDC;
    operator HDC() const;
    HDC GetSafeHdc() const;

    static CDC* FromHandle(HDC dc); ///< temporary unless attached
    static void DeleteTempMap();
    BOOL Attach(HDC dc);
    HDC Detach();
    BOOL CreateDC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData);
    BOOL CreateCompatibleDC(CDC* dc); ///< with the screen for null
    virtual BOOL DeleteDC();
    CWnd* GetWindow() const;
    int GetDeviceCaps(int index) const;
    virtual int SaveDC();
    virtual BOOL RestoreDC(int saved);

    /// Each answers the object selected before, as a temporary object.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    virtual CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    int SelectObject(CRgn* region);
    CGdiObject* SelectObject(CGdiObject* object);
    CPalette* SelectPalette(CPalette* palette, BOOL forceBackground);
    UINT RealizePalette();
    CBitmap* GetCurrentBitmap() const;

    COLORREF GetBkColor() const;
    virtual COLORREF SetBkColor(COLORREF colour);
    int GetBkMode() const;
    int SetBkMode(int mode);
    int SetStretchBltMode(int mode);
    COLORREF GetTextColor() const;
    virtual COLORREF SetTextColor(COLORREF colour);
    DWORD GetLayout() const;
    DWORD SetLayout(DWORD layout);

    virtual int GetClipBox(LPRECT rect) const;
    int SelectClipRgn(CRgn* region);
    int SelectClipRgn(CRgn* region, int mode);
    int IntersectClipRect(int left, int top, int right, int bottom);
    int IntersectClipRect(LPCRECT rect);

    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(LPCRECT rect);
    void FillRect(LPCRECT rect, CBrush* brush);
    void FillSolidRect(LPCRECT rect, COLORREF colour); ///< leaves `colour` as the background colour
    void FillSolidRect(int x, int y, int width, int height, COLORREF colour);
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight);
    void DrawFocusRect(LPCRECT rect);
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags);
    BOOL DrawFrameControl(LPRECT rect, UINT type, UINT state);

    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop);
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                    int sourceHeight, DWORD rop);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const;
    BOOL SetPixelV(int x, int y, COLORREF colour);
    BOOL SetPixelV(POINT point, COLORREF colour);

    virtual int DrawText(LPCSTR text, int count, LPRECT rect, UINT format);
    int DrawText(const CString& text, LPRECT rect, UINT format);
    CSize GetTextExtent(LPCSTR text, int count) const;
    CSize GetTextExtent(const CString& text) const;
};

/// The client area of a window (the screen for null), outside of painting. Throws a CResourceException without one.
class FRAMEWORK_API CClientDC : public CDC
{
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

/// What a window draws to while it answers WM_PAINT: begins the painting, and ends it in the destructor.
class FRAMEWORK_API CPaintDC : public CDC
{
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps;

protected:
    HWND m_hWnd;
};
