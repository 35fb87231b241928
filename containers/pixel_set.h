/// A set of pixels made from a list of points: sorted, without duplicates, as runs along the rows.
#pragma once

#include "TAVIX20/containers/outline_tracer.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavix {

class PixelSet {
public:
    /// Points beyond the coordinates of regions (27 bits) are left out.
    explicit PixelSet(std::span<const tagPOINT> points);

    /// The runs: rectangles one pixel high, exclusive right and bottom edges, sorted by row and
    /// column, none touching another in its row.
    std::span<const RECT> Runs() const { return m_runs; }
    bool Contains(int x, int y) const;

    /// The holes, in raster order of their first pixels, each as the runs that fill it. A hole is
    /// an 8-connected area of pixels that do not belong to the set and from which no such way
    /// leads out.
    std::vector<std::vector<RECT>> Holes() const;

private:
    std::vector<RECT> m_runs;
};

/// Number of pixels in the runs.
std::int64_t AreaOf(std::span<const RECT> runs);

} // namespace tavix
