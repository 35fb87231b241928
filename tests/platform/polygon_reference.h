/// An exact slow reference for the pixels of a filled polygon.
#pragma once

#include "TAVIX20/platform/region.h"

#include <cstdint>
#include <vector>

namespace reference {

/// Edges of the closed polygon that cross row y at or left of column x. An edge covers its upper
/// end's row but not its lower end's; downward edges count +1 and upward ones -1 in winding.
struct Crossings {
    int count = 0;
    int winding = 0;
};

inline Crossings CrossingsAt(const std::vector<POINT> &polygon, int x, int y) {
    Crossings crossings;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        POINT a = polygon[i];
        POINT b = polygon[(i + 1) % polygon.size()];
        const int turn = a.y < b.y ? 1 : -1;
        if (turn < 0)
            std::swap(a, b);
        if (y < a.y || y >= b.y)
            continue;
        // a.x + (y - a.y) (b.x - a.x) / (b.y - a.y) <= x, without the division.
        const std::int64_t left = (std::int64_t{y} - a.y) * (std::int64_t{b.x} - a.x);
        const std::int64_t right = (std::int64_t{x} - a.x) * (std::int64_t{b.y} - a.y);
        if (left <= right) {
            ++crossings.count;
            crossings.winding += turn;
        }
    }
    return crossings;
}

inline bool IsInPolygon(const std::vector<POINT> &polygon, int fillMode, int x, int y) {
    const Crossings crossings = CrossingsAt(polygon, x, y);
    return fillMode == WINDING ? crossings.winding != 0 : crossings.count % 2 != 0;
}

} // namespace reference
