/// Plane geometry on integer pixels: distances, directions, point-in-shape tests, rotation.
/// y grows downwards; angles run counter-clockwise as the picture is seen.
#pragma once

#include "TAVIX20/containers/line_fit.h"
#include "TAVIX20/platform/types.h"

#include <optional>

namespace tavix {

/// Euclidean distance in double precision.
double Distance(int x1, int y1, int x2, int y2);

/// Direction from the first to the second point in degrees, 0 <= result < 360; 0 for equal points.
double Direction(int x1, int y1, int x2, int y2);

/// Even-odd rule on the closed polygon: counts the edges that strictly cross the horizontal line
/// through the point on its left side. An edge that ends on that line does not count.
bool CrossesOdd(const tagPOINT *points, unsigned int count, const tagPOINT &point);

/// True when the pixel (x, y) belongs to the region that CreatePolygonRgn makes of the points with
/// the winding rule, false when it makes none; answers from the edges that cross row y, without
/// building the region.
bool WindingRegionContains(const tagPOINT *points, int count, int x, int y);

/// Two segments, each from its first to its second end.
struct SegmentPair {
    tagPOINT start1;
    tagPOINT end1;
    tagPOINT start2;
    tagPOINT end2;
};

/// True when the segments have a point in common; ends and overlaps count. A segment whose ends
/// coincide is a point. Exact for all coordinates.
bool SegmentsMeet(const SegmentPair &pair);

/// The one point that both segments have in common. Nothing when they have none, or more than one,
/// and when they are parallel or one of them is a point.
std::optional<tagPOINTD> CrossingOf(const SegmentPair &pair);

/// From the point to the nearest point of the segment from a to b.
double DistanceToSegment(const tagPOINT &point, const tagPOINT &a, const tagPOINT &b);

/// (x, y) turned about (cx, cy); positive degrees turn clockwise as the picture is seen.
void RotatePoint(double x, double y, double degrees, double cx, double cy, double *outX,
                 double *outY);

} // namespace tavix
