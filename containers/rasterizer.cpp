// Lines step along their longer axis with an integer error term. Circles are made from one octant,
// decided in exact integers, and mirrored into a closed outline in angular order; an arc is a run
// of that outline. No floating-point value decides which pixel is taken, only which are in the arc.

#include "TAVIX20/containers/rasterizer.h"

#include "TAVIX20/support/wrap.h"

#include <cmath>
#include <numbers>

namespace tavix {

namespace {

/// A pixel relative to the centre, y upwards.
struct Offset {
    int x;
    int y;
};

/// The outline from the right axis point to 45 degrees. The pixel of row y is the one nearest to
/// the circle: the largest x with x - 1/2 <= sqrt(r^2 - y^2), that is x (x - 1) < r^2 - y^2.
std::vector<Offset> FirstOctant(int radius) {
    std::vector<Offset> octant;
    const std::int64_t square = std::int64_t{radius} * radius;
    std::int64_t x = radius;
    for (std::int64_t y = 0;; ++y) {
        const std::int64_t rest = square - y * y;
        while (x > 0 && x * (x - 1) >= rest)
            --x;
        if (y > x)
            return octant;
        octant.push_back({static_cast<int>(x), static_cast<int>(y)});
    }
}

/// The closed outline, counter-clockwise from the right axis point.
std::vector<Offset> CircleOutline(int radius) {
    if (radius == 0)
        return {{0, 0}};
    std::vector<Offset> quadrant = FirstOctant(radius);
    for (std::size_t i = quadrant.size(); i-- > 0;)
        if (quadrant[i].x != quadrant[i].y)
            quadrant.push_back({quadrant[i].y, quadrant[i].x});
    quadrant.pop_back(); // The top axis point begins the next quadrant.

    std::vector<Offset> outline;
    outline.reserve(4 * quadrant.size());
    const auto append = [&](auto turn) {
        for (const Offset &pixel : quadrant)
            outline.push_back(turn(pixel));
    };
    append([](Offset p) { return p; });
    append([](Offset p) { return Offset{-p.y, p.x}; });
    append([](Offset p) { return Offset{-p.x, -p.y}; });
    append([](Offset p) { return Offset{p.y, -p.x}; });
    return outline;
}

double DegreesOf(const Offset &pixel) {
    const double degrees = std::atan2(pixel.y, pixel.x) * 180.0 / std::numbers::pi;
    return degrees < 0.0 ? degrees + 360.0 : degrees;
}

/// The angle reduced to 0 <= result < 360.
double Reduce(double degrees) {
    const double rest = std::fmod(degrees, 360.0);
    return rest < 0.0 ? rest + 360.0 : rest;
}

} // namespace

int RasterizeLine(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    const std::int64_t dx = std::abs(std::int64_t{x2} - x1);
    const std::int64_t dy = std::abs(std::int64_t{y2} - y1);
    const std::int64_t longer = std::max(dx, dy);
    const std::int64_t shorter = std::min(dx, dy);
    if (longer >= INT32_MAX)
        return 0;
    const tagPOINT step{x2 >= x1 ? 1 : -1, y2 >= y1 ? 1 : -1};
    tagPOINT pixel{x1, y1};
    std::int64_t error = longer;
    for (std::int64_t i = 0; i <= longer; ++i) {
        points.Add(pixel);
        error += 2 * shorter;
        const bool sidestep = error >= 2 * longer && longer > 0;
        if (sidestep)
            error -= 2 * longer;
        if (dx >= dy || sidestep)
            pixel.x = WrapAdd(pixel.x, step.x);
        if (dx < dy || sidestep)
            pixel.y = WrapAdd(pixel.y, step.y);
    }
    return static_cast<int>(longer) + 1;
}

int RasterizeArc(int cx, int cy, int radius, double startDegrees, double endDegrees,
                 TavixArray::CPointArray &points) {
    if (radius < 0 || radius > MAX_ARC_RADIUS || !std::isfinite(startDegrees) ||
        !std::isfinite(endDegrees))
        return 0;
    constexpr double tolerance = 1e-9;
    const std::vector<Offset> outline = CircleOutline(radius);
    const bool whole = endDegrees - startDegrees >= 360.0;
    const double start = Reduce(startDegrees);
    const double sweep = Reduce(endDegrees - startDegrees);

    const auto first = std::find_if(outline.begin(), outline.end(), [&](const Offset &pixel) {
        return DegreesOf(pixel) >= start - tolerance;
    });
    const std::size_t begin =
        first == outline.end() ? 0 : static_cast<std::size_t>(first - outline.begin());
    int added = 0;
    for (; added < static_cast<int>(outline.size()); ++added) {
        const Offset &pixel = outline[(begin + static_cast<std::size_t>(added)) % outline.size()];
        const double along = Reduce(DegreesOf(pixel) - start + tolerance);
        if (added > 0 && !whole && along > sweep + 2 * tolerance)
            break;
        points.Add({WrapAdd(cx, pixel.x), WrapSubtract(cy, pixel.y)});
    }
    return added;
}

} // namespace tavix
