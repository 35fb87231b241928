/// Pixel outlines of plane shapes, appended to point arrays: 8-connected, no point twice in a row.
#pragma once

#include "TAVIX20/containers/point_array.h"

namespace tavix {

/// The pixels of the segment from (x1, y1) to (x2, y2), both ends included, in that order: one per
/// step along the longer axis, the nearest on the other (halves move on). Returns the number of
/// points appended; 0 when the segment has more than 2^31 - 1 pixels.
/// Bresenham, "Algorithm for computer control of a digital plotter", 1965.
int RasterizeLine(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);

/// The largest radius that RasterizeArc takes.
inline constexpr int MAX_ARC_RADIUS = 1 << 27;

/// The pixels of the circle about (cx, cy) from startDegrees to endDegrees, counter-clockwise as
/// the picture is seen, 0 at the right; both limits included, from 360 degrees on the whole circle.
/// On each octant the nearest pixel to the circle is taken; the four axis points are exact. An arc
/// too short to hold a pixel's centre gives the pixel next to its start; radius 0 gives the centre.
/// Returns the number of points appended; 0 when radius is negative or above MAX_ARC_RADIUS.
int RasterizeArc(int cx, int cy, int radius, double startDegrees, double endDegrees,
                 TavixArray::CPointArray &points);

} // namespace tavix
