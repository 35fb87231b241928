// The geometry of CStdlib that needs this floor's plane geometry and rasterisers.

#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/rasterizer.h"
#include "TAVIX20/support/stdlib.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

/// Truncated toward 0 and cut to 32 bits; 0 for no number.
int ToCoordinate(double value) {
    if (std::isnan(value))
        return 0;
    return static_cast<int>(
        std::clamp(value, static_cast<double>(INT32_MIN), static_cast<double>(INT32_MAX)));
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
