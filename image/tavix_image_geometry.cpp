// The plane geometry that CTavixImage offers as static members.

#include "TAVIX20/containers/line_fit.h"
#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/rasterizer.h"
#include "TAVIX20/image/tavix_image.h"

#include <algorithm>
#include <cmath>
#include <vector>

double CTavixImage::Distance(int x1, int y1, int x2, int y2) {
    return tavix::Distance(x1, y1, x2, y2);
}

double CTavixImage::GetAngle(int x1, int y1, int x2, int y2) {
    return tavix::Direction(x1, y1, x2, y2);
}

int CTavixImage::PtInRectangle(int x1, int y1, int x2, int y2, int px, int py) {
    return px <= std::min(x1, x2) && py <= std::min(y1, y2) ? 1 : 0;
}

int CTavixImage::PtInPolygon(const tagPOINT *points, unsigned int count, const tagPOINT &point) {
    return tavix::CrossesOdd(points, count, point) ? 1 : 0;
}

int CTavixImage::PtInCycle(int cx, int cy, int radius, int px, int py) {
    TavixArray::CPointArray outline;
    GetArcSegment(cx, cy, radius, 0, 359, outline);
    return outline.PtInPolygon(px, py);
}

tagPOINT CTavixImage::GetCenterFromLine(int x1, int y1, int x2, int y2) {
    TavixArray::CPointArray points;
    const int count = GetLineSegment2(x1, y1, x2, y2, points);
    return count < 2 ? tagPOINT{0, 0} : points[count / 2];
}

void CTavixImage::RotatePoint(double x, double y, double degrees, double cx, double cy,
                              double *outX, double *outY) {
    tavix::RotatePoint(x, y, degrees, cx, cy, outX, outY);
}

// Rasterised from the end that comes first in raster order, so that the pixels do not depend on the
// direction.
int CTavixImage::GetLineSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    return tavix::RasterizeSegment(x1, y1, x2, y2, points);
}

int CTavixImage::GetLineSegment2(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    return tavix::RasterizeLine(x1, y1, x2, y2, points);
}

int CTavixImage::GetEllipseSegment(int cx, int cy, int radiusX, int radiusY,
                                   TavixArray::CPointArray &points) {
    return GetEllipseSegment(cx, cy, radiusX, radiusY, 0, 360, points);
}

int CTavixImage::GetEllipseSegment(int cx, int cy, int radiusX, int radiusY, double startDegrees,
                                   double endDegrees, TavixArray::CPointArray &points) {
    return tavix::RasterizeEllipse(cx, cy, radiusX, radiusY, startDegrees, endDegrees, points);
}

int CTavixImage::GetCycleSegment(int cx, int cy, int radius, TavixArray::CPointArray &points) {
    return GetArcSegment(cx, cy, radius, 0, 360, points);
}

int CTavixImage::GetArcSegment(int cx, int cy, int radius, double startDegrees, double endDegrees,
                               TavixArray::CPointArray &points) {
    return tavix::RasterizeEllipse(cx, cy, radius, radius, startDegrees, endDegrees, points);
}

int CTavixImage::GetBestStraightLine(const tagPOINTD *points, int count, tagPOINTD &start,
                                     tagPOINTD &end) {
    if (!points || count < 2)
        return 0;
    const auto line = tavix::FitLine({points, static_cast<std::size_t>(count)});
    if (!line)
        return 0;
    start = line->start;
    end = line->end;
    return 1;
}

int CTavixImage::GetBestStraightLine(const TavixArray::CPointArray &points,
                                     TavixArray::CPointArray &line) {
    std::vector<tagPOINTD> samples;
    for (int i = 0; i < points.GetElementCount(); ++i)
        samples.push_back({static_cast<double>(points[i].x), static_cast<double>(points[i].y)});
    const auto fitted = tavix::FitLine(samples);
    if (!fitted)
        return 0;
    const auto rounded = [](const tagPOINTD &point) {
        return tagPOINT{static_cast<LONG>(std::lround(point.x)),
                        static_cast<LONG>(std::lround(point.y))};
    };
    line.RemoveAll();
    line.Add(rounded(fitted->start));
    line.Add(rounded(fitted->end));
    return 1;
}

int CTavixImage::IntersectLine(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    return tavix::SegmentsMeet({{x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}}) ? 1 : 0;
}

int CTavixImage::GetCrossPoint(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                               double *x, double *y) {
    const auto crossing = tavix::CrossingOf({{x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}});
    if (!crossing)
        return 0;
    *x = crossing->x;
    *y = crossing->y;
    return 1;
}
