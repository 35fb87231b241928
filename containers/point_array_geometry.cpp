// CPointArray as a point set and as a polygon: bounds, centre, shifts, region and clipping.

#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/containers/region_rects.h"
#include "TAVIX20/support/wrap.h"

#include <cmath>
#include <span>

namespace TavixArray {

namespace {

struct CoordinateSums {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

CoordinateSums SumOf(std::span<const tagPOINT> points) {
    CoordinateSums sums;
    for (const tagPOINT &point : points) {
        sums.x += point.x;
        sums.y += point.y;
    }
    return sums;
}

/// Nearest integer, halves away from 0, limited to 32 bits; 0 for no number.
LONG RoundToLong(double value) {
    if (std::isnan(value))
        return 0;
    return static_cast<LONG>(std::clamp(std::round(value), static_cast<double>(INT32_MIN),
                                        static_cast<double>(INT32_MAX)));
}

} // namespace

CRect CPointArray::GetBounds() const {
    return GetBounds(m_block.data(), m_count);
}

CRect CPointArray::GetBounds(const tagPOINT *points, int count) {
    if (!points || count <= 0)
        return {};
    CRect bounds(points[0].x, points[0].y, points[0].x, points[0].y);
    for (const tagPOINT &point : std::span(points, static_cast<std::size_t>(count))) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
    return bounds;
}

tagPOINT CPointArray::CenterPoint() const {
    if (m_count <= 0)
        return {0, 0};
    const CoordinateSums sums = SumOf({begin(), end()});
    return {RoundToLong(static_cast<double>(sums.x) / m_count),
            RoundToLong(static_cast<double>(sums.y) / m_count)};
}

int CPointArray::GetAverageX() const {
    return m_count <= 0 ? 0 : static_cast<int>(SumOf({begin(), end()}).x / m_count);
}

int CPointArray::GetAverageY() const {
    return m_count <= 0 ? 0 : static_cast<int>(SumOf({begin(), end()}).y / m_count);
}

void CPointArray::Offset(int dx, int dy) {
    for (tagPOINT &point : *this)
        point = {tavix::WrapAdd(point.x, dx), tavix::WrapAdd(point.y, dy)};
}

void CPointArray::Scale(double sx, double sy) {
    for (tagPOINT &point : *this)
        point = {RoundToLong(point.x * sx), RoundToLong(point.y * sy)};
}

HRGN CPointArray::CreatePolygonRgn() const {
    return ::CreatePolygonRgn(m_block.data(), m_count, WINDING);
}

int CPointArray::PtInPolygon(int x, int y) const {
    return PtInPolygon(m_block.data(), m_count, x, y);
}

int CPointArray::PtInPolygon(const tagPOINT *points, int count, int x, int y) {
    return tavix::WindingRegionContains(points, count, x, y) ? 1 : 0;
}

void CPointArray::SetROI(const tagRECT *rects, int count) {
    const std::span kept(rects, rects ? static_cast<std::size_t>(std::max(count, 0)) : 0);
    EraseIf([&](const tagPOINT &point) { return !tavix::InAnyInclusive(kept, point.x, point.y); });
}

void CPointArray::SetROI(HRGN region) {
    if (!region)
        return;
    const tavix::RegionRects rects(region);
    EraseIf([&](const tagPOINT &point) {
        return !tavix::InAnyInclusive(rects.Get(), point.x, point.y);
    });
}

} // namespace TavixArray
