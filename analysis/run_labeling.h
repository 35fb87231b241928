/// Connected components of runs: what the rectangle forms of blob analysis need, without a label
/// image.
///
/// Runs are the maximal stretches of class pixels in a row. Two runs of neighbouring rows belong
/// together when they share a column (4-connectivity). A run that touches none above begins a
/// component; components are numbered in that order, and where two meet, the larger number points
/// at the smaller one. So the first run of a component, which holds its first pixel in raster
/// order, has the number that the whole component ends up with. Boxes and counts are summed up by
/// number as runs are found; one pass from the last number to the first then hands each one's on to
/// the one it points at.
///
/// Rows are bits. A word's run edges are the bits that differ from their neighbour. Rows of few
/// runs, as objects have them, are merged run by run: mostly one run lies under one, so that the
/// branches are foretold. Noise would make them fail; there, each stretch of bits that a row and
/// the row above have in common is exactly one pair of touching runs, whose places in their rows
/// are counts of starts up to there, and no run is searched for. Of noise, too, are most pixels
/// that have no neighbour; in rows of many runs they are found by their bits, and only their places
/// are kept. Only two rows of runs are held, and as many components as begin. (After He et al., "A
/// run-based two-scan labeling algorithm", 2008.)
#pragma once

#include "TAVIX20/analysis/pixel_class.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavix {

class RunLabeling {
public:
    /// An inclusive box, held so that the smaller of each of two boxes' sides make the box of both:
    /// left, top, and right and bottom negated.
    struct Box {
        std::int32_t sides[4];

        std::int32_t Left() const { return sides[0]; }
        std::int32_t Top() const { return sides[1]; }
        std::int32_t Right() const { return -sides[2]; }
        std::int32_t Bottom() const { return -sides[3]; }
    };

    struct Component {
        Box box;
        std::uint32_t pixelCount;
        std::uint32_t parent; ///< Its own number when it is whole.
    };

    /// Whether the component of every run is noted, too. If so, no pixel is kept apart.
    enum class Runs { Forgotten, Noted };

    /// The memory of a labeling, kept for the next one.
    struct Scratch;

    /// Labels the pixels of the class. Throws std::bad_alloc.
    RunLabeling(const PixelClass &pixels, int width, int height, Runs runs, Scratch &scratch);

    /// Pixels without a neighbour that are kept apart, and are in no component: columns, in raster
    /// order, and where the columns of each row end. Other such pixels are components.
    struct LonePixels {
        std::vector<std::int32_t> columns; ///< With room for more.
        std::vector<std::size_t> rowEnds;
    };
    const LonePixels &Lone() const { return m_lone; }

    /// In raster order of their first pixels; whole ones among those that met another.
    std::span<const Component> Components() const { return {m_components.data(), m_count}; }
    bool IsWhole(std::uint32_t component) const {
        return m_components[component].parent == component;
    }
    /// The columns of the components' first pixels.
    const std::int32_t *FirstColumns() const { return m_firstColumns.data(); }
    /// The whole component of each run, in raster order, and each row's first run; where they are
    /// noted.
    const std::vector<std::uint32_t> &ComponentsOfRuns() const { return m_noted.components; }
    const std::vector<std::size_t> &Rows() const { return m_noted.rows; }

    struct Noted {
        std::vector<std::uint32_t> components; ///< Of each run.
        std::vector<std::size_t> rows;         ///< The first run of each row.
    };

private:
    std::vector<Component> &m_components; ///< With room for more.
    std::vector<std::int32_t> &m_firstColumns;
    LonePixels &m_lone;
    std::size_t m_count = 0;
    Noted m_noted;
};

struct RunLabeling::Scratch {
    std::vector<Component> components;
    std::vector<std::int32_t> firstColumns;
    LonePixels lone;
    std::vector<std::uint32_t> accepted; ///< For whoever chooses among them.
};

/// The whole component that this one belongs to, with every second pointer on the way moved up by
/// one (path halving).
inline std::uint32_t FindWhole(RunLabeling::Component *components, std::uint32_t component) {
    while (components[component].parent != component) {
        std::uint32_t &parent = components[component].parent;
        parent = components[parent].parent;
        component = parent;
    }
    return component;
}

} // namespace tavix
