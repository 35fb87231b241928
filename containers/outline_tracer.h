/// Turns a set of pixels, given as rectangles, into the closed outlines of its parts and holes.
#pragma once

#include "TAVIX20/platform/types.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace tavix {

/// One closed outline: the corners, in order, of a path along the edges between pixels. Coordinates
/// are those of the corners: pixel (x, y) spans x to x + 1 and y to y + 1. The set lies on the
/// right of the path as the picture is seen, so the outline of a part runs clockwise and that of a
/// hole counter-clockwise.
struct Outline {
    std::vector<POINT> corners;
    bool isHole;
};

/// The outlines of a pixel set, each starting at its top-left corner, in raster order of these.
///
/// The rectangles have exclusive right and bottom edges and come in bands, as a region's data does:
/// sorted by top, then left; those of a band share top and bottom and neither overlap nor touch;
/// bands do not overlap. Parts are 4-connected and holes 8-connected: parts that touch only at a
/// corner have outlines of their own. Filling all outlines together by the even-odd rule, or by the
/// winding rule, gives back exactly the set.
std::vector<Outline> TraceOutlines(std::span<const RECT> rects);

/// The same, one after the other; the corners are there during the call only.
void TraceOutlines(std::span<const RECT> rects,
                   const std::function<void(std::span<const POINT> corners, bool isHole)> &visit);

/// All outlines as one polygon that both fill rules fill to the same set: each further outline is
/// reached from the first corner and left again on the same way, so that the ways cancel out.
std::vector<POINT> JoinOutlines(std::span<const Outline> outlines);

/// Calls visit for the set's pixel at each unit step along the outline, the same pixel only once
/// for steps in a row: an 8-connected closed path along the border of the set.
void WalkBorderPixels(const Outline &outline, const std::function<void(POINT)> &visit);

} // namespace tavix
