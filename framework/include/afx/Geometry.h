// Sizes, points and rectangles: the system's structures with operations. All of it is inline and needs no library.
#pragma once

#include "afx/Platform.h"

/// A width and a height, or a distance.
class CSize : public SIZE
{
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(SIZE size) : SIZE(size) {}
    explicit CSize(POINT point) : SIZE{point.x, point.y} {}
    /// The two signed halves of a message parameter, the width in the low one.
    explicit CSize(DWORD packed) : SIZE{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))} {}

    void SetSize(int width, int height) { *this = CSize(width, height); }
    bool operator==(const CSize& size) const { return cx == size.cx && cy == size.cy; }
    bool operator==(const SIZE& size) const { return cx == size.cx && cy == size.cy; }
    void operator+=(SIZE size)
    {
        cx += size.cx;
        cy += size.cy;
    }
    void operator-=(SIZE size)
    {
        cx -= size.cx;
        cy -= size.cy;
    }
    CSize operator+(SIZE size) const { return {cx + size.cx, cy + size.cy}; }
    CSize operator-(SIZE size) const { return {cx - size.cx, cy - size.cy}; }
    CSize operator-() const { return {-cx, -cy}; }
};

/// A position.
class CPoint : public POINT
{
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int horizontal, int vertical) : POINT{horizontal, vertical} {}
    CPoint(POINT point) : POINT(point) {}
    explicit CPoint(SIZE size) : POINT{size.cx, size.cy} {}
    /// The two signed halves of a message parameter, the horizontal one in the low half.
    explicit CPoint(LPARAM packed) : POINT{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))} {}

    void SetPoint(int horizontal, int vertical) { *this = CPoint(horizontal, vertical); }
    void Offset(int horizontal, int vertical) { *this += SIZE{horizontal, vertical}; }
    void Offset(POINT point) { *this += point; }
    void Offset(SIZE size) { *this += size; }
    bool operator==(const CPoint& point) const { return x == point.x && y == point.y; }
    bool operator==(const POINT& point) const { return x == point.x && y == point.y; }
    void operator+=(SIZE size)
    {
        x += size.cx;
        y += size.cy;
    }
    void operator+=(POINT point)
    {
        x += point.x;
        y += point.y;
    }
    void operator-=(SIZE size)
    {
        x -= size.cx;
        y -= size.cy;
    }
    void operator-=(POINT point)
    {
        x -= point.x;
        y -= point.y;
    }
    CPoint operator+(SIZE size) const { return {x + size.cx, y + size.cy}; }
    CPoint operator+(POINT point) const { return {x + point.x, y + point.y}; }
    CPoint operator-(SIZE size) const { return {x - size.cx, y - size.cy}; }
    CSize operator-(POINT point) const { return {x - point.x, y - point.y}; }
    CPoint operator-() const { return {-x, -y}; }
};

/// A rectangle: the right and bottom edges lie outside. Most operations want it normalised.
class CRect : public RECT
{
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(LPCRECT rect) : RECT(*rect) {}
    CRect(POINT point, SIZE size) : RECT{point.x, point.y, point.x + size.cx, point.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }
    CPoint& TopLeft() { return *reinterpret_cast<CPoint*>(this); }
    CPoint& BottomRight() { return *(reinterpret_cast<CPoint*>(this) + 1); }
    const CPoint& TopLeft() const { return *reinterpret_cast<const CPoint*>(this); }
    const CPoint& BottomRight() const { return *(reinterpret_cast<const CPoint*>(this) + 1); }
    CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); } ///< no width or no height
    BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const { return ::PtInRect(this, point); }

    void SetRect(int l, int t, int r, int b) { ::SetRect(this, l, t, r, b); }
    void SetRect(POINT topLeft, POINT bottomRight) { *this = CRect(topLeft, bottomRight); }
    void SetRectEmpty() { ::SetRectEmpty(this); }
    /// Exchanges left with right and top with bottom where they stand the wrong way round.
    void NormalizeRect()
    {
        if (left > right)
            SwapLeftRight();
        if (top > bottom)
        {
            const LONG upper = bottom;
            bottom = top;
            top = upper;
        }
    }
    void SwapLeftRight()
    {
        const LONG other = left;
        left = right;
        right = other;
    }

    void InflateRect(int horizontal, int vertical) { ::InflateRect(this, horizontal, vertical); }
    void InflateRect(SIZE size) { InflateRect(size.cx, size.cy); }
    void InflateRect(LPCRECT rect) { InflateRect(rect->left, rect->top, rect->right, rect->bottom); }
    void InflateRect(int l, int t, int r, int b) { *this = CRect(left - l, top - t, right + r, bottom + b); }
    void DeflateRect(int horizontal, int vertical) { ::InflateRect(this, -horizontal, -vertical); }
    void DeflateRect(SIZE size) { DeflateRect(size.cx, size.cy); }
    void DeflateRect(LPCRECT rect) { DeflateRect(rect->left, rect->top, rect->right, rect->bottom); }
    void DeflateRect(int l, int t, int r, int b) { *this = CRect(left + l, top + t, right - r, bottom - b); }
    void OffsetRect(int horizontal, int vertical) { ::OffsetRect(this, horizontal, vertical); }
    void OffsetRect(SIZE size) { OffsetRect(size.cx, size.cy); }
    void OffsetRect(POINT point) { OffsetRect(point.x, point.y); }
    void MoveToX(int position) { OffsetRect(position - left, 0); }
    void MoveToY(int position) { OffsetRect(0, position - top); }
    void MoveToXY(int horizontal, int vertical) { OffsetRect(horizontal - left, vertical - top); }
    void MoveToXY(POINT point) { MoveToXY(point.x, point.y); }

    /// The intersection or union of two rectangles; FALSE when it is empty.
    BOOL IntersectRect(LPCRECT first, LPCRECT second) { return ::IntersectRect(this, first, second); }
    BOOL UnionRect(LPCRECT first, LPCRECT second) { return ::UnionRect(this, first, second); }

    CRect& operator=(const RECT& rect)
    {
        ::CopyRect(this, &rect);
        return *this;
    }
    bool operator==(const CRect& rect) const { return ::EqualRect(this, &rect); }
    bool operator==(const RECT& rect) const { return ::EqualRect(this, &rect); }
    void operator+=(POINT point) { OffsetRect(point); }
    void operator+=(SIZE size) { OffsetRect(size); }
    void operator+=(LPCRECT rect) { InflateRect(rect); }
    void operator-=(POINT point) { OffsetRect(-point.x, -point.y); }
    void operator-=(SIZE size) { OffsetRect(-size.cx, -size.cy); }
    void operator-=(LPCRECT rect) { DeflateRect(rect); }
    void operator&=(const RECT& rect) { IntersectRect(this, &rect); }
    void operator|=(const RECT& rect) { UnionRect(this, &rect); }
    CRect operator+(POINT point) const
    {
        return Changed([&](CRect& result) { result += point; });
    }
    CRect operator+(SIZE size) const
    {
        return Changed([&](CRect& result) { result += size; });
    }
    CRect operator+(LPCRECT rect) const
    {
        return Changed([&](CRect& result) { result += rect; });
    }
    CRect operator-(POINT point) const
    {
        return Changed([&](CRect& result) { result -= point; });
    }
    CRect operator-(SIZE size) const
    {
        return Changed([&](CRect& result) { result -= size; });
    }
    CRect operator-(LPCRECT rect) const
    {
        return Changed([&](CRect& result) { result -= rect; });
    }
    CRect operator&(const RECT& rect) const
    {
        return Changed([&](CRect& result) { result &= rect; });
    }
    CRect operator|(const RECT& rect) const
    {
        return Changed([&](CRect& result) { result |= rect; });
    }
    CRect MulDiv(int multiplier, int divisor) const
    {
        return {::MulDiv(left, multiplier, divisor), ::MulDiv(top, multiplier, divisor),
                ::MulDiv(right, multiplier, divisor), ::MulDiv(bottom, multiplier, divisor)};
    }

private:
    template <class F>
    CRect Changed(F change) const
    {
        CRect result(*this);
        change(result);
        return result;
    }
};
