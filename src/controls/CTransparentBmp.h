// A bitmap with a colour key: its region, and drawing that lets the background show through.
#pragma once

#include <afxwin.h>

class CPalette256;

/// A bitmap of which one colour is transparent.
///
/// Load it from a resource or from a file; loading builds the region of all pixels that are not of the transparent
/// colour and keeps it. TransBlt() then draws the picture clipped to that region. The region may also shape a window
/// or answer whether the mouse is on the picture.
///
/// **The colour key** is compared without tolerance and with red and blue exchanged: the key 0x0000FF (red as a
/// COLORREF) makes the blue pixels transparent. Keys of equal red and blue, such as magenta (0xFF00FF) or green
/// (0x00FF00), behave either way.
///
/// **Save-bitmap mode** (SetSaveBmp() or the `bSaveBmp` argument) keeps the bitmap loaded, and captures the background
/// under it once; without it every draw loads the bitmap anew and reads the background back.
class AFX_EXT_CLASS CTransparentBmp : public CBitmap
{
    DECLARE_DYNAMIC(CTransparentBmp)

public:
    CTransparentBmp();
    /// Frees the kept bitmaps and the regions: none that this object handed out may be in use any more.
    ~CTransparentBmp() override;

    /// Loads a bitmap resource and builds its region. What an earlier load made is freed first, whatever comes of
    /// this one; the next draw captures a fresh background.
    /// @param hInst          module of the resource; null searches the framework's resource modules
    /// @param nID            resource identifier of the bitmap
    /// @param crTransparent  colour key (red and blue exchanged, see above)
    /// @param pRect          size to stretch the bitmap to (its position does not matter); null for its own size.
    ///                       Stretching may blend the edges of the picture with the key: make pictures of the size in
    ///                       which they are shown.
    /// @return the region, in pixels from the bitmap's top left corner. It stays this object's own: do not delete it,
    ///         do not hand it to SetWindowRgn. Null when the bitmap cannot be loaded or the region cannot be built.
    HRGN LoadTransparent(HINSTANCE hInst, UINT nID, COLORREF crTransparent, CRect* pRect);
    /// The same, searching the framework's resource modules.
    HRGN LoadTransparent(UINT nID, COLORREF crTransparent, CRect* pRect);
    /// The same, after setting save-bitmap mode to `bSaveBmp`.
    HRGN LoadTransparent(UINT nID, COLORREF crTransparent, int bSaveBmp, CRect* pRect);
    /// Loads a .bmp file. A file's bitmap is never kept loaded: save-bitmap mode does not apply to it.
    /// @param nID      resource identifier whose colours the palette is made for
    /// @param strFile  path of the file; it is read again at every draw
    /// @return as above
    HRGN LoadTransparent(UINT nID, CString strFile, COLORREF crTransparent, CRect* pRect);

    /// Builds the region of all pixels that are not of the transparent colour.
    /// @param hBmp           any bitmap that is not selected into a context
    /// @param crTransparent  colour key (red and blue exchanged, see above)
    /// @param pRect          size to stretch the picture to before it is looked at; null for its own size
    /// @return a region that the caller deletes: empty for a bitmap that is wholly of the key colour, null when it
    ///         cannot be built (a failing memory call is written to the trace log).
    HRGN BitmapToRegion(HBITMAP hBmp, COLORREF crTransparent, CRect* pRect);

    /// Draws the bitmap with its background.
    ///
    /// The area (x, y, width, height) of the context is copied aside, the picture is drawn over the copy within the
    /// region (or the clip region, see SetClipRgn()), and the copy goes back in one piece, so nothing flickers.
    /// In save-bitmap mode the copy of the background is made at the first draw after loading only (see
    /// SetOverlap() and SetBkgnd()), and a clip region of the context is removed.
    /// @param x, y    top left corner, in pixels of the context
    /// @param cx, cy  size to stretch to; both 0 for the loaded size. The region and the copied area keep the loaded
    ///                size, whatever is given here.
    /// Nothing is drawn when no bitmap is loaded or the system refuses a context or bitmap.
    void TransBlt(CDC* pDC, int x, int y, int cx, int cy);

    /// Supplies the background instead of the next draw capturing it: copies the rectangle of the context into the
    /// background buffer. It holds until the next load, also where SetOverlap() is set. Only save-bitmap mode has a
    /// buffer; elsewhere nothing happens.
    void SetBkgnd(CPaintDC* pDC, CRect* pRect);
    /// The same. @return whether there is a buffer and it was filled.
    bool SetBkgnd(CDC* pDC, CRect* pRect);

    /// Draws within the common part of this region and the bitmap's own from now on. The region is copied; one set
    /// earlier is freed. Null, or an object without a region, goes back to the bitmap's own region.
    void SetClipRgn(HRGN hRgn);

    /// Notes that the region has been set up by the caller.
    void SetRgnDefined();
    /// Nonzero: save-bitmap mode captures the background at every draw, for pictures that lie over others.
    void SetOverlap(int bOverlap);
    /// Nonzero: save-bitmap mode, from the next load on.
    void SetSaveBmp(int bSaveBmp);
    /// The size, in pixels, at which the bitmap is drawn; loading sets it.
    void SetWidth(int nWidth);
    void SetHeight(int nHeight);
    int ReturnWidth();
    int ReturnHeight();
    /// TRUE: shades of grey in the bitmap become the user's three-dimensional colours from the next load on.
    /// FALSE: no load flags at all, so that bitmaps load in the screen's own format.
    void SetMapSystemColors(int bMap);

protected:
    /// Gives m_pPalette, an empty palette, the colours that a draw is to use: those of the bitmap resource, looked for
    /// in the bitmap's module. A derived class whose module is gone by then points it to a palette that it has kept.
    virtual void CreateDrawingPalette();

    int m_nWidth = 0;
    int m_nHeight = 0;
    HBITMAP m_hSavedBmp = nullptr;
    COLORREF m_crTransparent = 0;
    HRGN m_hRgn = nullptr;
    CPalette256* m_pPalette = nullptr; ///< while drawing
    HBITMAP m_hBkgndBmp = nullptr;
    int m_bOverlap = 0;
    int m_bNeedBkgnd = 1;
    int m_bBkgndSet = 0;
    int m_bRgnDefined = 0;
    HRGN m_hClipRgn = nullptr;
    int m_bSaveBmp = 0;
    UINT m_nResourceID = 0;
    CBitmap* m_pDrawBmp = nullptr; ///< while drawing
    CRect* m_pRect;
    UINT m_nLoadFlags = LR_SHARED | LR_CREATEDIBSECTION;
    HINSTANCE m_hInstance = nullptr;
    int m_nBmpWidth = 0;
    int m_nBmpHeight = 0;
    int m_bWin9x = 0;
    int m_bFromFile = 0;
    CString m_strFileName;

private:
    void FreeLoaded();
    void StartLoading(HINSTANCE module, UINT nID, COLORREF crTransparent, const CRect* pRect);
    HRGN LoadResource(CRect* pRect);
    HRGN FinishLoading(HBITMAP bitmap, CRect* pRegionRect, const CRect* pRect);
    HBITMAP LoadPicture(UINT flags, int width, int height) const;
    HRGN DrawingRegion() const;
    void DrawSaved(HDC context, HDC work, HDC source, int x, int y, int cx, int cy);
    void DrawFresh(CDC* pDC, HDC work, HDC source, int x, int y, int cx, int cy);
};
