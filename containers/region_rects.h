/// The rectangles of a region, and the inclusive point test that masks use on them.
#pragma once

#include "TAVIX20/platform/region.h"

#include <span>
#include <vector>

namespace tavix {

/// True when one of the rectangles has left <= x <= right and top <= y <= bottom. All four edges
/// count as inside, one pixel more than a region's own test.
inline bool InAnyInclusive(std::span<const RECT> rects, int x, int y) {
    for (const RECT &rect : rects)
        if (x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom)
            return true;
    return false;
}

/// A snapshot of a region's rectangles.
class RegionRects {
public:
    explicit RegionRects(HRGN region);
    std::span<const RECT> Get() const;

private:
    std::vector<char> m_data; ///< A RGNDATAHEADER with its rectangles.
};

} // namespace tavix
