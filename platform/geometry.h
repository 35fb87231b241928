/// CPoint, CSize and CRect: the plain records POINT, SIZE and RECT with constructors and
/// arithmetic.
///
/// A CRect is four edges and nothing more. Its own members (Width, PtInRect, intersections) treat
/// right and bottom as exclusive; functions that take inclusive rectangles say so themselves.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

class QPoint;
class QRect;
class QSize;

class CPoint;
class CRect;

/// A width and a height in pixels.
class TAVIX_API CSize : public tagSIZE {
public:
    constexpr CSize() : tagSIZE{0, 0} {}
    constexpr CSize(int width, int height) : tagSIZE{width, height} {}
    constexpr CSize(const tagSIZE &size) : tagSIZE(size) {}
    CSize(const QSize &size);
    operator QSize() const;

    void SetSize(int width, int height) { *this = CSize(width, height); }
    constexpr CSize operator-() const { return {-cx, -cy}; }
    constexpr CSize operator+(const tagSIZE &other) const { return {cx + other.cx, cy + other.cy}; }
    constexpr CSize operator-(const tagSIZE &other) const { return {cx - other.cx, cy - other.cy}; }
    CSize &operator+=(const tagSIZE &other) { return *this = *this + other; }
    CSize &operator-=(const tagSIZE &other) { return *this = *this - other; }
};

/// A point in pixels.
class TAVIX_API CPoint : public tagPOINT {
public:
    constexpr CPoint() : tagPOINT{0, 0} {}
    constexpr CPoint(int px, int py) : tagPOINT{px, py} {}
    constexpr CPoint(const tagPOINT &point) : tagPOINT(point) {}
    constexpr explicit CPoint(const tagSIZE &size) : tagPOINT{size.cx, size.cy} {}
    CPoint(const QPoint &point);
    operator QPoint() const;

    void SetPoint(int px, int py) { *this = CPoint(px, py); }
    void Offset(int dx, int dy) { *this = CPoint(x + dx, y + dy); }
    void Offset(const tagPOINT &delta) { Offset(delta.x, delta.y); }
    void Offset(const tagSIZE &delta) { Offset(delta.cx, delta.cy); }
    constexpr CPoint operator-() const { return {-x, -y}; }
    constexpr CPoint operator+(const tagPOINT &other) const { return {x + other.x, y + other.y}; }
    constexpr CPoint operator+(const tagSIZE &size) const { return {x + size.cx, y + size.cy}; }
    constexpr CPoint operator-(const tagSIZE &size) const { return {x - size.cx, y - size.cy}; }
    /// The way from other to this point.
    constexpr CSize operator-(const tagPOINT &other) const { return {x - other.x, y - other.y}; }
    CPoint &operator+=(const tagPOINT &other) { return *this = *this + other; }
    CPoint &operator+=(const tagSIZE &size) { return *this = *this + size; }
    CPoint &operator-=(const tagPOINT &other) { return *this = {x - other.x, y - other.y}; }
    CPoint &operator-=(const tagSIZE &size) { return *this = *this - size; }
};

/// A rectangle by its edges left, top, right and bottom.
class TAVIX_API CRect : public tagRECT {
public:
    constexpr CRect() : tagRECT{0, 0, 0, 0} {}
    constexpr CRect(int l, int t, int r, int b) : tagRECT{l, t, r, b} {}
    constexpr CRect(const tagRECT &rect) : tagRECT(rect) {}
    constexpr CRect(const tagPOINT &origin, const tagSIZE &size)
        : tagRECT{origin.x, origin.y, origin.x + size.cx, origin.y + size.cy} {}
    constexpr CRect(const tagPOINT &topLeft, const tagPOINT &bottomRight)
        : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}
    /// The exclusive edges of the Qt rectangle: right = x + width, bottom = y + height.
    CRect(const QRect &rect);
    operator QRect() const;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CSize Size() const { return {Width(), Height()}; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CPoint BottomRight() const { return {right, bottom}; }
    /// The middle, each coordinate (first edge + second edge) / 2 truncated toward 0.
    constexpr CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }

    /// True when the width or the height is 0 or negative.
    constexpr bool IsRectEmpty() const { return left >= right || top >= bottom; }
    constexpr bool IsRectNull() const { return *this == CRect(); }
    /// True for left <= x < right and top <= y < bottom; the rectangle must be normalised.
    constexpr bool PtInRect(const tagPOINT &point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    constexpr bool EqualRect(const tagRECT &rect) const { return *this == rect; }

    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(const tagRECT *rect) { *this = *rect; }

    /// Moves each edge outwards; negative values move it inwards.
    void InflateRect(int l, int t, int r, int b);
    void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    void InflateRect(const tagSIZE &size) { InflateRect(size.cx, size.cy); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    void DeflateRect(const tagSIZE &size) { InflateRect(-size.cx, -size.cy); }
    void OffsetRect(int dx, int dy);
    void OffsetRect(const tagPOINT &delta) { OffsetRect(delta.x, delta.y); }
    void OffsetRect(const tagSIZE &delta) { OffsetRect(delta.cx, delta.cy); }
    void MoveToX(int l) { OffsetRect(l - left, 0); }
    void MoveToY(int t) { OffsetRect(0, t - top); }
    void MoveToXY(int l, int t) { OffsetRect(l - left, t - top); }
    /// Exchanges edges so that left <= right and top <= bottom.
    void NormalizeRect();

    /// Becomes the common part of a and b. False, and the null rectangle, when there is none.
    bool IntersectRect(const tagRECT &a, const tagRECT &b);
    /// Becomes the smallest rectangle around a and b; an empty one does not count. False, and the
    /// null rectangle, when both are empty.
    bool UnionRect(const tagRECT &a, const tagRECT &b);

    CRect operator+(const tagPOINT &delta) const;
    CRect operator+(const tagSIZE &delta) const { return *this + CPoint(delta); }
    CRect operator-(const tagPOINT &delta) const { return *this + -CPoint(delta); }
    CRect operator-(const tagSIZE &delta) const { return *this - CPoint(delta); }
    CRect operator&(const tagRECT &other) const;
    CRect operator|(const tagRECT &other) const;
    CRect &operator+=(const tagPOINT &delta) { return *this = *this + delta; }
    CRect &operator+=(const tagSIZE &delta) { return *this = *this + delta; }
    CRect &operator-=(const tagPOINT &delta) { return *this = *this - delta; }
    CRect &operator-=(const tagSIZE &delta) { return *this = *this - delta; }
    CRect &operator&=(const tagRECT &other) { return *this = *this & other; }
    CRect &operator|=(const tagRECT &other) { return *this = *this | other; }
};
