#include "TAVIX20/containers/plane_geometry.h"

#include "TAVIX20/platform/region.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>

namespace tavix {

namespace {

struct Offset {
    std::int64_t x;
    std::int64_t y;
};

Offset Relative(const tagPOINT &point, const tagPOINT &origin) {
    return {std::int64_t{point.x} - origin.x, std::int64_t{point.y} - origin.y};
}

bool IsInRegionRange(const tagPOINT &point) {
    constexpr LONG limit = MAX_REGION_COORDINATE;
    return point.x >= -limit && point.x <= limit && point.y >= -limit && point.y <= limit;
}

/// First pixel column at or right of the edge from upper to lower on row y. Region coordinates have
/// 28 bits, so the product fits into 64.
std::int64_t EdgeColumn(const tagPOINT &upper, const tagPOINT &lower, int y) {
    const Offset edge = Relative(lower, upper);
    const std::int64_t product = (std::int64_t{y} - upper.y) * edge.x;
    return upper.x + product / edge.y + (product % edge.y > 0 ? 1 : 0);
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

bool WindingRegionContains(const tagPOINT *points, int count, int x, int y) {
    if (!points || count < 2)
        return false;
    int winding = 0;
    for (int i = 0, previous = count - 1; i < count; previous = i++) {
        const tagPOINT *upper = &points[previous];
        const tagPOINT *lower = &points[i];
        if (!IsInRegionRange(*lower))
            return false;
        const int turn = upper->y < lower->y ? 1 : -1;
        if (turn < 0)
            std::swap(upper, lower);
        if (y >= upper->y && y < lower->y && EdgeColumn(*upper, *lower, y) <= x)
            winding += turn;
    }
    return winding != 0;
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
