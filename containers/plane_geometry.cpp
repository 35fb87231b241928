#include "TAVIX20/containers/plane_geometry.h"

#include "TAVIX20/platform/region.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace tavix {

namespace {

struct Offset {
    std::int64_t x;
    std::int64_t y;
};

Offset Relative(const tagPOINT &point, const tagPOINT &origin) {
    return {std::int64_t{point.x} - origin.x, std::int64_t{point.y} - origin.y};
}

__extension__ typedef __int128 Wide; // Products of two 33-bit differences.

/// The cross product of the ways from origin to a and from origin to b.
Wide Cross(const tagPOINT &origin, const tagPOINT &a, const tagPOINT &b) {
    const Offset first = Relative(a, origin);
    const Offset second = Relative(b, origin);
    return Wide{first.x} * second.y - Wide{first.y} * second.x;
}

/// What the edge adds to the winding number of the pixel. The cross product fits into 64 bits,
/// since the coordinates of regions have 28; for others it wraps around and is not used in the end.
int WindingOf(const tagPOINT &start, const tagPOINT &end, const tagPOINT &pixel) {
    const bool startsAbove = start.y <= pixel.y;
    const bool endsAbove = end.y <= pixel.y;
    if (startsAbove == endsAbove)
        return 0;
    const Offset edge = Relative(end, start);
    const Offset way = Relative(pixel, start);
    const auto cross = static_cast<std::int64_t>(
        static_cast<std::uint64_t>(edge.x) * static_cast<std::uint64_t>(way.y) -
        static_cast<std::uint64_t>(way.x) * static_cast<std::uint64_t>(edge.y));
    if (startsAbove)
        return cross <= 0 ? 1 : 0;
    return cross >= 0 ? -1 : 0;
}

/// Marks with 1 the edges that belong to the pixel's row and do not lie right of it altogether;
/// edge i runs from ends[i - 1] to ends[i]. Returns whether all ends are points of a region.
bool SieveEdges(const tagPOINT *ends, int count, const tagPOINT &pixel,
                unsigned char *isCandidate) {
    unsigned char isOutside = 0;
    for (int i = 0; i < count; ++i) {
        const tagPOINT &a = ends[i - 1];
        const tagPOINT &b = ends[i];
        const auto crosses = static_cast<unsigned char>((a.y <= pixel.y) ^ (b.y <= pixel.y));
        const auto reaches = static_cast<unsigned char>((a.x <= pixel.x) | (b.x <= pixel.x));
        isCandidate[i] = crosses & reaches;
        isOutside |= static_cast<unsigned char>(!IsRegionPoint(b));
    }
    return isOutside == 0;
}

int SignOf(Wide value) {
    return (value > 0) - (value < 0);
}

/// For a point on the segment's line: whether it lies between the ends.
bool IsBetween(const tagPOINT &start, const tagPOINT &end, const tagPOINT &point) {
    return std::min(start.x, end.x) <= point.x && point.x <= std::max(start.x, end.x) &&
           std::min(start.y, end.y) <= point.y && point.y <= std::max(start.y, end.y);
}

} // namespace

double Distance(int x1, int y1, int x2, int y2) {
    const double dx = static_cast<double>(x2) - x1;
    const double dy = static_cast<double>(y2) - y1;
    return std::sqrt(dx * dx + dy * dy);
}

double Direction(int x1, int y1, int x2, int y2) {
    constexpr double pi = std::numbers::pi;
    const double dx = static_cast<double>(x2) - x1;
    const double dy = static_cast<double>(y2) - y1;

    double radians = 0.0;
    if (dx == 0.0)
        radians = dy < 0.0 ? pi / 2 : dy > 0.0 ? 3 * pi / 2 : 0.0;
    else if (dy == 0.0)
        radians = dx > 0.0 ? 0.0 : pi;
    else if (dx < 0.0)
        radians = pi - std::atan(dy / dx);
    else if (dy < 0.0)
        radians = -std::atan(dy / dx);
    else
        radians = 2 * pi - std::atan(dy / dx);

    const double degrees = radians * 180.0 / pi;
    return degrees >= 360.0 ? degrees - 360.0 : degrees;
}

bool CrossesOdd(const tagPOINT *points, unsigned int count, const tagPOINT &point) {
    if (!points || count == 0)
        return false;
    bool odd = false;
    Offset previous = Relative(points[count - 1], point);
    for (unsigned int i = 0; i < count; ++i) {
        const Offset current = Relative(points[i], point);
        const bool crosses = (current.y < 0 && previous.y > 0) || (current.y > 0 && previous.y < 0);
        if (crosses) {
            const double slope = static_cast<double>(current.x - previous.x) /
                                 static_cast<double>(current.y - previous.y);
            if (static_cast<double>(previous.x) < slope * static_cast<double>(previous.y))
                odd = !odd;
        }
        previous = current;
    }
    return odd;
}

// An edge belongs to row y when one end lies at or above it and the other below; of these edges
// those count that lie at or left of the pixel. Most edges do not belong to the row, so blocks of
// them are first sieved by comparisons that compilers turn into vector code, and only what is left
// is looked at one by one.
bool WindingRegionContains(const tagPOINT *points, int count, int x, int y) {
    if (!points || count < 2)
        return false;
    const tagPOINT pixel{x, y};
    std::array<unsigned char, 256> isCandidate;
    int winding = WindingOf(points[count - 1], points[0], pixel);
    bool isRegion = IsRegionPoint(points[0]);
    for (int start = 1; start < count; start += static_cast<int>(isCandidate.size())) {
        const int size = std::min(count - start, static_cast<int>(isCandidate.size()));
        const tagPOINT *const ends = points + start;
        isRegion &= SieveEdges(ends, size, pixel, isCandidate.data());
        const auto nextFrom = [&](int i) {
            const void *const found =
                std::memchr(isCandidate.data() + i, 1, static_cast<std::size_t>(size - i));
            return found ? static_cast<int>(static_cast<const unsigned char *>(found) -
                                            isCandidate.data())
                         : size;
        };
        for (int i = nextFrom(0); i < size; i = nextFrom(i + 1))
            winding += WindingOf(ends[i - 1], ends[i], pixel);
    }
    return isRegion && winding != 0;
}

// Each segment's ends lie on different sides of the other one, or an end lies on the other segment.
bool SegmentsMeet(const SegmentPair &pair) {
    const int start1 = SignOf(Cross(pair.start2, pair.end2, pair.start1));
    const int end1 = SignOf(Cross(pair.start2, pair.end2, pair.end1));
    const int start2 = SignOf(Cross(pair.start1, pair.end1, pair.start2));
    const int end2 = SignOf(Cross(pair.start1, pair.end1, pair.end2));
    if (start1 * end1 < 0 && start2 * end2 < 0)
        return true;
    return (start1 == 0 && IsBetween(pair.start2, pair.end2, pair.start1)) ||
           (end1 == 0 && IsBetween(pair.start2, pair.end2, pair.end1)) ||
           (start2 == 0 && IsBetween(pair.start1, pair.end1, pair.start2)) ||
           (end2 == 0 && IsBetween(pair.start1, pair.end1, pair.end2));
}

std::optional<tagPOINTD> CrossingOf(const SegmentPair &pair) {
    const Wide start = Cross(pair.start2, pair.end2, pair.start1);
    const Wide end = Cross(pair.start2, pair.end2, pair.end1);
    if (start == end || !SegmentsMeet(pair))
        return std::nullopt; // Parallel: both ends of one lie equally far from the other.
    const double along = static_cast<double>(start) / static_cast<double>(start - end);
    const Offset way = Relative(pair.end1, pair.start1);
    return tagPOINTD{pair.start1.x + along * static_cast<double>(way.x),
                     pair.start1.y + along * static_cast<double>(way.y)};
}

double DistanceToSegment(const tagPOINT &point, const tagPOINT &a, const tagPOINT &b) {
    const double dx = static_cast<double>(b.x) - a.x;
    const double dy = static_cast<double>(b.y) - a.y;
    const double px = static_cast<double>(point.x) - a.x;
    const double py = static_cast<double>(point.y) - a.y;
    const double square = dx * dx + dy * dy;
    const double along = square > 0 ? std::clamp((px * dx + py * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(px - along * dx, py - along * dy);
}

void RotatePoint(double x, double y, double degrees, double cx, double cy, double *outX,
                 double *outY) {
    const double radians = degrees * 0.017453292519943295;
    const double dx = x - cx;
    const double dy = y - cy;
    *outX = dx * std::cos(radians) - dy * std::sin(radians) + cx;
    *outY = dy * std::cos(radians) + dx * std::sin(radians) + cy;
}

} // namespace tavix
