#include "TAVIX20/platform/geometry.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <utility>

CSize::CSize(const QSize &size) : CSize(size.width(), size.height()) {}

CSize::operator QSize() const {
    return {cx, cy};
}

CPoint::CPoint(const QPoint &point) : CPoint(point.x(), point.y()) {}

CPoint::operator QPoint() const {
    return {x, y};
}

// QRect::right() is left + width - 1, so the exclusive edges are computed from the size.
CRect::CRect(const QRect &rect)
    : CRect(rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()) {}

CRect::operator QRect() const {
    return {left, top, Width(), Height()};
}

void CRect::InflateRect(int l, int t, int r, int b) {
    *this = CRect(left - l, top - t, right + r, bottom + b);
}

void CRect::OffsetRect(int dx, int dy) {
    *this = CRect(left + dx, top + dy, right + dx, bottom + dy);
}

void CRect::NormalizeRect() {
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
}

bool CRect::IntersectRect(const tagRECT &a, const tagRECT &b) {
    const CRect common(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                       std::min(a.bottom, b.bottom));
    const bool any = !CRect(a).IsRectEmpty() && !CRect(b).IsRectEmpty() && !common.IsRectEmpty();
    *this = any ? common : CRect();
    return any;
}

bool CRect::UnionRect(const tagRECT &a, const tagRECT &b) {
    const bool emptyA = CRect(a).IsRectEmpty();
    const bool emptyB = CRect(b).IsRectEmpty();
    if (emptyA && emptyB)
        *this = CRect();
    else if (emptyA)
        *this = b;
    else if (emptyB)
        *this = a;
    else
        *this = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                      std::max(a.bottom, b.bottom));
    return !(emptyA && emptyB);
}

CRect CRect::operator+(const tagPOINT &delta) const {
    CRect moved(*this);
    moved.OffsetRect(delta);
    return moved;
}

CRect CRect::operator&(const tagRECT &other) const {
    CRect common;
    common.IntersectRect(*this, other);
    return common;
}

CRect CRect::operator|(const tagRECT &other) const {
    CRect joined;
    joined.UnionRect(*this, other);
    return joined;
}
