// Lines step along their longer axis with an integer error term. Ellipses are made from one
// quadrant, decided in exact integers, and mirrored into a closed outline in angular order; an arc
// is a run of that outline. No floating-point value decides which pixel is taken, only which are in
// the arc.

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

__extension__ typedef __int128 Wide; // Products of four factors of 28 bits.

/// The outline from the right to the top axis point, for half axes of at least 1.
///
/// A pixel is nearest in its row when its inner edge is the last one that does not lie beyond the
/// curve: the largest x with (x - 1/2)^2 / a^2 + y^2 / b^2 <= 1. Columns go by the same rule. Rows
/// are taken while the curve is steep, that is y a^2 <= x b^2.
std::vector<Offset> EllipseQuadrant(int radiusX, int radiusY) {
    const Wide a2 = Wide{radiusX} * radiusX;
    const Wide b2 = Wide{radiusY} * radiusY;
    const auto innerEdgeIsInside = [](Wide along, Wide other, Wide alongSquare, Wide otherSquare) {
        return (2 * along - 1) * (2 * along - 1) * otherSquare <=
               4 * alongSquare * (otherSquare - other * other);
    };
    std::vector<Offset> rows;
    int x = radiusX;
    const auto stepToRow = [&](int row) {
        while (x > 1 && !innerEdgeIsInside(x, row, a2, b2))
            --x;
        return Offset{x, row};
    };
    for (int row = 0; row < radiusY; ++row) {
        const Offset pixel = stepToRow(row);
        if (row * a2 > pixel.x * b2)
            break;
        rows.push_back(pixel);
    }
    std::vector<Offset> columns{{0, radiusY}};
    int y = radiusY;
    for (int column = 1; column < rows.back().x; ++column) {
        while (y > 1 && !innerEdgeIsInside(y, column, b2, a2))
            --y;
        columns.push_back({column, y});
    }
    // Where rows and columns meet, the first column may begin more than one row up.
    for (int row = rows.back().y + 1; row < columns.back().y; ++row)
        rows.push_back(stepToRow(row));
    rows.insert(rows.end(), columns.rbegin(), columns.rend());
    return rows;
}

/// The closed outline, counter-clockwise from the right axis point.
std::vector<Offset> EllipseOutline(int radiusX, int radiusY) {
    const std::vector<Offset> quadrant = EllipseQuadrant(radiusX, radiusY);
    std::vector<Offset> outline(quadrant);
    for (std::size_t i = quadrant.size() - 1; i-- > 0;)
        outline.push_back({-quadrant[i].x, quadrant[i].y});
    for (std::size_t i = 1; i < quadrant.size(); ++i)
        outline.push_back({-quadrant[i].x, -quadrant[i].y});
    for (std::size_t i = quadrant.size() - 1; i-- > 1;)
        outline.push_back({quadrant[i].x, -quadrant[i].y});
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

int RasterizeSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    const bool isInOrder = y1 < y2 || (y1 == y2 && x1 <= x2);
    if (isInOrder)
        return RasterizeLine(x1, y1, x2, y2, points);
    TavixArray::CPointArray reversed;
    const int count = RasterizeLine(x2, y2, x1, y1, reversed);
    reversed.ReverseElements();
    points.Add(reversed);
    return count;
}

int RasterizeEllipse(int cx, int cy, int radiusX, int radiusY, double startDegrees,
                     double endDegrees, TavixArray::CPointArray &points) {
    if (radiusX < 0 || radiusX > MAX_RASTERIZED_RADIUS || radiusY < 0 ||
        radiusY > MAX_RASTERIZED_RADIUS || !std::isfinite(startDegrees) ||
        !std::isfinite(endDegrees))
        return 0;
    if (radiusX == 0 || radiusY == 0)
        return RasterizeLine(WrapAdd(cx, radiusX), WrapSubtract(cy, radiusY),
                             WrapSubtract(cx, radiusX), WrapAdd(cy, radiusY), points);
    constexpr double tolerance = 1e-9;
    const std::vector<Offset> outline = EllipseOutline(radiusX, radiusY);
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
