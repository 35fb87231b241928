/// An exact slow reference for the pixels of a filled polygon.
#pragma once

#include "TAVIX20/platform/region.h"

#include <cstdint>
#include <vector>

namespace reference {

/// Looks at the edges of the closed polygon that cross row y at or left of column x. An edge covers
/// its upper end's row but not its lower end's; a downward one winds by 1, an upward one by -1.
inline bool IsInPolygon(const std::vector<POINT> &polygon, int fillMode, int x, int y) {
    int count = 0, winding = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        POINT a = polygon[i];
        POINT b = polygon[(i + 1) % polygon.size()];
        const int turn = a.y < b.y ? 1 : -1;
        if (turn < 0)
            std::swap(a, b);
        // a.x + (y - a.y) (b.x - a.x) / (b.y - a.y) <= x, without the division.
        if (a.y <= y && y < b.y &&
            (std::int64_t{y} - a.y) * (std::int64_t{b.x} - a.x) <=
                (std::int64_t{x} - a.x) * (std::int64_t{b.y} - a.y)) {
            ++count;
            winding += turn;
        }
    }
    return fillMode == WINDING ? winding != 0 : count % 2 != 0;
}

} // namespace reference
