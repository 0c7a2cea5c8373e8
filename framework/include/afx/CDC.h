// Device contexts.
#pragma once

#include "afx/CGdiObject.h"

class CWnd;

/// A device context. m_hDC takes the output, m_hAttribDC answers questions; they are the same unless set apart. The
/// destructor deletes an attached context.
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
    virtual void SetAttribDC(HDC dc);
    virtual void SetOutputDC(HDC dc);
    virtual void ReleaseAttribDC();
    virtual void ReleaseOutputDC();
    BOOL CreateDC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData);
    BOOL CreateIC(LPCSTR driver, LPCSTR device, LPCSTR output, const void* initData);
    BOOL CreateCompatibleDC(CDC* dc); ///< with the screen for null
    virtual BOOL DeleteDC();
    CWnd* GetWindow() const;
    int GetDeviceCaps(int index) const;
    virtual int SaveDC();
    virtual BOOL RestoreDC(int saved);

    /// Each answers the object selected before, as a temporary object.
    virtual CGdiObject* SelectStockObject(int index);
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    virtual CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    int SelectObject(CRgn* region);
    CGdiObject* SelectObject(CGdiObject* object);
    CPalette* SelectPalette(CPalette* palette, BOOL forceBackground);
    UINT RealizePalette();
    void UpdateColors();
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CPalette* GetCurrentPalette() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;

    COLORREF GetNearestColor(COLORREF colour) const;
    CPoint GetBrushOrg() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point);
    COLORREF GetBkColor() const;
    virtual COLORREF SetBkColor(COLORREF colour);
    int GetBkMode() const;
    int SetBkMode(int mode);
    int GetROP2() const;
    int SetROP2(int mode);
    int GetStretchBltMode() const;
    int SetStretchBltMode(int mode);
    COLORREF GetTextColor() const;
    virtual COLORREF SetTextColor(COLORREF colour);
    DWORD GetLayout() const;
    DWORD SetLayout(DWORD layout);

    int GetMapMode() const;
    virtual int SetMapMode(int mode);
    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point);
    virtual CPoint OffsetViewportOrg(int width, int height);
    CSize GetViewportExt() const;
    virtual CSize SetViewportExt(int width, int height);
    CSize SetViewportExt(SIZE size);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point);
    CSize GetWindowExt() const;
    virtual CSize SetWindowExt(int width, int height);
    CSize SetWindowExt(SIZE size);
    void DPtoLP(LPPOINT points, int count = 1) const;
    void DPtoLP(LPRECT rect) const;
    void LPtoDP(LPPOINT points, int count = 1) const;
    void LPtoDP(LPRECT rect) const;

    virtual int GetClipBox(LPRECT rect) const;
    virtual BOOL PtVisible(int x, int y) const;
    BOOL PtVisible(POINT point) const;
    virtual BOOL RectVisible(LPCRECT rect) const;
    int SelectClipRgn(CRgn* region);
    int SelectClipRgn(CRgn* region, int mode);
    int ExcludeClipRect(int left, int top, int right, int bottom);
    int ExcludeClipRect(LPCRECT rect);
    int IntersectClipRect(int left, int top, int right, int bottom);
    int IntersectClipRect(LPCRECT rect);
    int OffsetClipRgn(int x, int y);
    int OffsetClipRgn(SIZE size);

    CPoint GetCurrentPosition() const;
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point);
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point);
    BOOL Polyline(LPPOINT points, int count);
    BOOL Polygon(LPPOINT points, int count);
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(LPCRECT rect);
    BOOL RoundRect(int left, int top, int right, int bottom, int width, int height);
    BOOL RoundRect(LPCRECT rect, POINT point);
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(LPCRECT rect);
    void FillRect(LPCRECT rect, CBrush* brush);
    void FrameRect(LPCRECT rect, CBrush* brush);
    void InvertRect(LPCRECT rect);
    void FillSolidRect(LPCRECT rect, COLORREF colour); ///< leaves `colour` as the background colour
    void FillSolidRect(int x, int y, int width, int height, COLORREF colour);
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight);
    void DrawFocusRect(LPCRECT rect);
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags);
    BOOL DrawFrameControl(LPRECT rect, UINT type, UINT state);
    BOOL DrawIcon(int x, int y, HICON icon);
    BOOL DrawIcon(POINT point, HICON icon);
    BOOL FillRgn(CRgn* region, CBrush* brush);
    BOOL FrameRgn(CRgn* region, CBrush* brush, int width, int height);
    BOOL InvertRgn(CRgn* region);
    BOOL PaintRgn(CRgn* region);

    BOOL PatBlt(int x, int y, int width, int height, DWORD rop);
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop);
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                    int sourceHeight, DWORD rop);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const;
    COLORREF SetPixel(int x, int y, COLORREF colour);
    COLORREF SetPixel(POINT point, COLORREF colour);
    BOOL SetPixelV(int x, int y, COLORREF colour);
    BOOL SetPixelV(POINT point, COLORREF colour);

    virtual BOOL TextOut(int x, int y, LPCSTR text, int count);
    BOOL TextOut(int x, int y, const CString& text);
    virtual BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCSTR text, UINT count, LPINT widths);
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, LPINT widths);
    virtual int DrawText(LPCSTR text, int count, LPRECT rect, UINT format);
    int DrawText(const CString& text, LPRECT rect, UINT format);
    CSize GetTextExtent(LPCSTR text, int count) const;
    CSize GetTextExtent(const CString& text) const;
    UINT GetTextAlign() const;
    UINT SetTextAlign(UINT flags);
    BOOL GetTextMetrics(LPTEXTMETRICA metrics) const;
    int GetTextFace(int count, LPSTR faceName) const;
    int GetTextFace(CString& faceName) const;

    int StartDoc(LPDOCINFOA documentInfo);
    int StartPage();
    int EndPage();
    int EndDoc();
    int AbortDoc();
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

/// The whole area of a window (the screen for null). Throws a CResourceException without one.
class FRAMEWORK_API CWindowDC : public CDC
{
    DECLARE_DYNAMIC(CWindowDC)
  public:
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

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
