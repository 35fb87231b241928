/// Pixel outlines of plane shapes, appended to point arrays: 8-connected, no point twice.
#pragma once

#include "TAVIX20/containers/point_array.h"

namespace tavix {

/// The pixels of the segment from (x1, y1) to (x2, y2), both ends included, in that order: one per
/// step along the longer axis, the nearest on the other (halves move on). Returns the number of
/// points appended; 0 when the segment has more than 2^31 - 1 pixels.
/// Bresenham, "Algorithm for computer control of a digital plotter", 1965.
int RasterizeLine(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);

/// As RasterizeLine, but with the same pixels whichever end comes first.
int RasterizeSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);

/// The largest radius that RasterizeEllipse takes.
inline constexpr int MAX_RASTERIZED_RADIUS = 1 << 27;

/// The pixels of the ellipse with centre (cx, cy) and the given half axes from startDegrees to
/// endDegrees, counter-clockwise as the picture is seen, 0 at the right; both limits included, from
/// 360 degrees on the whole ellipse. Angles are directions from the centre.
///
/// Where the curve is steep the nearest pixel of each row is taken, elsewhere that of each column;
/// the four axis points are exact, and no other pixel lies on an axis, which keeps the outline of a
/// thin ellipse open to its tips. With a half axis of 0 the shape is the segment between the two
/// ends of the other, and the limits are not looked at. An arc too short to hold a pixel's centre
/// gives the pixel next to its start. Returns the number of points appended; 0 for half axes below
/// 0 or above MAX_RASTERIZED_RADIUS and for limits that are not finite.
TAVIX_API int RasterizeEllipse(int cx, int cy, int radiusX, int radiusY, double startDegrees,
                               double endDegrees, TavixArray::CPointArray &points);

} // namespace tavix
