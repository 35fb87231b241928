/// Polygons painted one over the other.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/run_region.h"

#include <span>

namespace tavix {

/// A closed polygon, filled by the even-odd rule, that covers what is below it.
struct PolygonLayer {
    std::span<const POINT> points;
    RECT bounds; ///< Of the points: their smallest and largest coordinates. They are a region's.
    bool isSet;  ///< Whether its pixels belong to the set.
};

/// The pixels of the area whose topmost layer is set; the last one lies on top. In time linear in
/// the pixels of the area, of which 64 count as one, and in the runs of the layers; an area of any
/// height needs little memory, one of any width a row of bits.
TAVIX_API RunRegion PaintPolygons(std::span<const PolygonLayer> layers, const RECT &area);

} // namespace tavix
