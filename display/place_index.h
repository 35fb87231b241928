/// Finds overlay objects by place.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavix {

class ViewTransform;

/// Where an object is drawn: image pixels, all edges inclusive, and client pixels around their
/// block.
struct Placed {
    CRect pixels;
    int margin;
};

/// A part of the screen, and what lies there.
class TAVIX_API PlaceQuery {
public:
    /// The client pixels left <= x < right, top <= y < bottom under the view's mapping.
    PlaceQuery(const ViewTransform &view, const CRect &client);

    /// True for everything that may touch the part; rounding errs on that side.
    bool Touches(const Placed &placed) const;

private:
    double m_zoom;
    CPoint m_corner; ///< Where image pixel (0, 0) starts.
    CRect m_client;
};

/// A packed R-tree over a fixed set: the boxes in the order of a Morton curve through their
/// centres, and above them, 16 to a node, the boxes around them (after Roussopoulos and Leifker,
/// "Direct spatial search on pictorial databases using packed R-trees", 1985). Boxes of any size
/// share it, and only nodes that touch the part are opened.
class TAVIX_API PlaceIndex {
public:
    void Clear();
    /// Box i belongs to number numbers[i].
    void Build(std::span<const Placed> boxes, std::span<const std::uint32_t> numbers);
    std::size_t Size() const { return m_numbers.size(); }
    /// Sets bit n for the number n of every box that touches the part.
    void Find(const PlaceQuery &query, std::span<std::uint64_t> bits) const;

private:
    void FindBelow(std::size_t level, std::size_t node, const PlaceQuery &query,
                   std::span<std::uint64_t> bits) const;

    std::vector<std::uint32_t> m_numbers; ///< Of the boxes of level 0.
    std::vector<std::vector<Placed>>
        m_levels; ///< Level 0 has all boxes, the last one a single one.
};

} // namespace tavix
