/// Connected components of runs: what the rectangle forms of blob analysis need, without a label
/// image.
///
/// Runs are the maximal stretches of class pixels in a row. Two runs of neighbouring rows belong
/// together when they share a column (4-connectivity). Each run points at a run of its component
/// that was found no later, and unions go towards the smaller number, so the first run of a
/// component, which holds its first pixel in raster order, becomes its root by itself. One pass
/// from the last run to the first then hands each run's box and count to the run it points at, and
/// roots end up with the whole.
///
/// Rows are bits. A word's run edges are the bits that differ from their neighbour. Where a row and
/// the row above are both set, each stretch of common bits is exactly one pair of touching runs,
/// and the runs' numbers are counts of starts up to there: no run is searched for. (After He et
/// al., "A run-based two-scan labeling algorithm", 2008.)
#pragma once

#include "TAVIX20/analysis/pixel_class.h"

#include <cstdint>
#include <vector>

namespace tavix {

class RunLabeling {
public:
    /// A run, and of a root the whole component.
    struct Run {
        std::int32_t left;   ///< Of the box.
        std::int32_t right;  ///< Of the box, inclusive.
        std::int32_t bottom; ///< Of the box, inclusive; the top is the root's own row.
        std::uint32_t pixelCount;
        std::uint32_t parent; ///< Itself for a root.
    };

    /// Labels the pixels of the class. Throws std::bad_alloc.
    RunLabeling(const PixelClass &pixels, int width, int height);

    /// The runs in raster order; roots hold their whole component.
    const std::vector<Run> &Runs() const { return m_runs; }
    bool IsRoot(std::uint32_t run) const { return m_runs[run].parent == run; }
    /// The first run of each row, and one past the last.
    const std::vector<std::uint32_t> &Rows() const { return m_rows; }

    /// Makes every run point at its root.
    void PointAtRoots();

private:
    void AddRow(const std::uint64_t *words, std::size_t wordCount, int y, int width);
    void Link(const std::uint64_t *above, const std::uint64_t *words, std::size_t wordCount, int y);
    std::uint32_t RootOf(std::uint32_t run);
    void Unite(std::uint32_t a, std::uint32_t b);
    void FoldIntoRoots();

    std::vector<Run> m_runs;
    std::vector<std::uint32_t> m_rows;
};

} // namespace tavix
