/// A set of pixels as bands of runs, for what regions are too slow for: filling polygons and
/// combining many shapes.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/region.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavix {

/// The pixels left <= x < right of a row.
struct PixelRun {
    LONG left;
    LONG right;

    bool operator==(const PixelRun &) const = default;
};

/// Bands from the top down, each the rows [top, bottom) with the same runs; the runs of a band go
/// from left to right and do not touch. Equal neighbouring bands are one, so equal sets have equal
/// bands.
class TAVIX_API RunRegion {
public:
    struct Band {
        LONG top;
        LONG bottom;
        std::size_t firstRun;

        bool operator==(const Band &) const = default;
    };

    bool IsEmpty() const { return m_bands.empty(); }
    void Clear();
    std::span<const Band> Bands() const { return m_bands; }
    std::span<const PixelRun> RunsOf(std::size_t band) const;

    /// Adds the rows [top, bottom) below all others; empty rows and rows without runs add nothing.
    void AppendBand(LONG top, LONG bottom, std::span<const PixelRun> runs);

    /// Adds count bands of another region below all others.
    void AppendBands(const RunRegion &other, std::size_t first, std::size_t count);
    /// AppendBand for at most mostRuns runs that write(PixelRun *out) writes; it returns their end.
    template <typename Write>
    void WriteBand(LONG top, LONG bottom, std::size_t mostRuns, const Write &write);

    void Unite(const RunRegion &other);
    void Subtract(const RunRegion &other);

    /// Number of pixels.
    std::int64_t Area() const;
    /// The runs of all bands as rectangles with exclusive right and bottom edges, in the order in
    /// which a region's data holds them.
    std::vector<RECT> Rects() const;
    /// The same set as a region, which the caller deletes. The coordinates must be those of
    /// regions.
    HRGN CreateRegion() const;

    bool operator==(const RunRegion &) const = default;

private:
    std::vector<Band> m_bands;
    std::vector<PixelRun> m_runs;
};

template <typename Write>
void RunRegion::WriteBand(LONG top, LONG bottom, std::size_t mostRuns, const Write &write) {
    const std::size_t first = m_runs.size();
    if (m_runs.capacity() < first + mostRuns)
        m_runs.reserve(2 * first + mostRuns);
    m_runs.resize(first + mostRuns);
    const PixelRun *const end = write(m_runs.data() + first);
    m_runs.resize(static_cast<std::size_t>(end - m_runs.data()));
    if (top >= bottom || m_runs.size() == first) {
        m_runs.resize(first);
        return;
    }
    const std::span<const PixelRun> runs(m_runs.data() + first, m_runs.size() - first);
    if (!m_bands.empty() && m_bands.back().bottom == top) {
        const std::size_t last = m_bands.back().firstRun;
        if (first - last == runs.size() &&
            std::ranges::equal(runs, std::span(m_runs).subspan(last, runs.size()))) {
            m_bands.back().bottom = bottom;
            m_runs.resize(first);
            return;
        }
    }
    m_bands.push_back({top, bottom, first});
}

/// The pixels inside the closed contours, taken together as one polygon, by the fill mode
/// (ALTERNATE or WINDING), cut to the clip rectangle (exclusive right and bottom edges). A pixel is
/// inside when its centre is; centres on a left or top edge are inside, on a right or bottom edge
/// outside. Contours of fewer than 3 points hold nothing. All coordinates, the clip's too, must be
/// those of regions.
TAVIX_API RunRegion FillPolygons(std::span<const std::span<const POINT>> contours, int fillMode,
                                 const RECT &clip);

} // namespace tavix
