/// Small geometry that overlay objects share: arithmetic that stays in the 32-bit range, distances.
#pragma once

#include "TAVIX20/platform/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

namespace tavix {

/// The nearest 32-bit value.
constexpr std::int32_t Saturate(std::int64_t value) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, lowest, highest));
}

/// The part of a shift from first by delta that keeps low to high in the 32-bit range, so that a
/// shape that reaches the range's end keeps its form.
constexpr std::int64_t LimitShift(std::int64_t delta, std::int32_t low, std::int32_t high) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    return std::clamp(delta, lowest - low, highest - high);
}

/// The points of a host's list; none for null and counts below 1.
constexpr std::span<const tagPOINT> PointsOf(const tagPOINT *points, int count) {
    if (!points || count <= 0)
        return {};
    return {points, static_cast<std::size_t>(count)};
}

/// The smallest rectangle, all edges inclusive, around the points; null without any.
inline CRect BoundsOf(std::span<const tagPOINT> points) {
    if (points.empty())
        return {};
    CRect bounds(points[0].x, points[0].y, points[0].x, points[0].y);
    for (const tagPOINT &point : points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
    return bounds;
}

inline double Distance(const tagPOINT &a, const tagPOINT &b) {
    return std::hypot(static_cast<double>(b.x) - a.x, static_cast<double>(b.y) - a.y);
}

} // namespace tavix
