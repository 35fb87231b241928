// The geometry of CStdlib that needs this floor's plane geometry and rasterisers.

#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/rasterizer.h"
#include "TAVIX20/support/stdlib.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace {

/// Truncated toward 0 and cut to 32 bits; 0 for no number.
int ToCoordinate(double value) {
    if (std::isnan(value))
        return 0;
    return static_cast<int>(
        std::clamp(value, static_cast<double>(INT32_MIN), static_cast<double>(INT32_MAX)));
}

/// Whether each of the points, no two in a row of which are equal, is needed to stay within the
/// tolerance.
std::vector<bool> NeededPoints(const std::vector<tagPOINT> &points, double tolerance) {
    std::vector<bool> isNeeded(points.size(), false);
    isNeeded.front() = isNeeded.back() = true;
    std::vector<std::pair<std::size_t, std::size_t>> open{{0, points.size() - 1}};
    while (!open.empty()) {
        const auto [first, last] = open.back();
        open.pop_back();
        std::size_t farthest = first;
        double distance = tolerance;
        for (std::size_t i = first + 1; i < last; ++i) {
            const double each = tavix::DistanceToSegment(points[i], points[first], points[last]);
            if (each > distance) {
                distance = each;
                farthest = i;
            }
        }
        if (farthest == first)
            continue;
        isNeeded[farthest] = true;
        open.emplace_back(first, farthest);
        open.emplace_back(farthest, last);
    }
    return isNeeded;
}

} // namespace

double CStdlib::GetDegree(int x1, int y1, int x2, int y2) {
    return tavix::Direction(x1, y1, x2, y2);
}

double CStdlib::GetDegree3Point(int x1, int y1, int cx, int cy, int x2, int y2) {
    const double apart =
        std::abs(tavix::Direction(cx, cy, x1, y1) - tavix::Direction(cx, cy, x2, y2));
    return std::min(apart, 360.0 - apart);
}

CPoint CStdlib::RotatePoint(const CPoint &point, double degrees, const CPoint &centre) {
    double x = 0.0;
    double y = 0.0;
    tavix::RotatePoint(point.x, point.y, degrees, centre.x, centre.y, &x, &y);
    return {ToCoordinate(x), ToCoordinate(y)};
}

void CStdlib::RotatePoint(double x, double y, double degrees, double cx, double cy, double *outX,
                          double *outY) {
    tavix::RotatePoint(x, y, degrees, cx, cy, outX, outY);
}

int CStdlib::GetLineSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    return tavix::RasterizeSegment(x1, y1, x2, y2, points);
}

int CStdlib::GetCycleSegment(int cx, int cy, int radius, TavixArray::CPointArray &points) {
    return GetEllipseSegment(cx, cy, radius, radius, points);
}

int CStdlib::GetEllipseSegment(int cx, int cy, int radiusX, int radiusY,
                               TavixArray::CPointArray &points) {
    return tavix::RasterizeEllipse(cx, cy, radiusX, radiusY, 0.0, 360.0, points);
}

int CStdlib::FreePointTuning(TavixArray::CPointArray &points, double tolerance) {
    const tagPOINT *const first = points.GetBufPtr();
    std::vector<tagPOINT> drawn;
    std::unique_copy(first, first + points.GetElementCount(), std::back_inserter(drawn),
                     [](const tagPOINT &a, const tagPOINT &b) { return a.x == b.x && a.y == b.y; });
    if (drawn.empty())
        return 0;
    const std::vector<bool> isNeeded = NeededPoints(drawn, std::max(0.0, tolerance));
    points.RemoveAll();
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (isNeeded[i])
            points.Add(drawn[i]);
    }
    return points.GetElementCount();
}
