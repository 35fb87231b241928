// The plane geometry that CTavixImage offers as static members.

#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/rasterizer.h"
#include "TAVIX20/image/tavix_image.h"

#include <utility>

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

int CTavixImage::GetLineSegment2(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points) {
    return tavix::RasterizeLine(x1, y1, x2, y2, points);
}

int CTavixImage::GetArcSegment(int cx, int cy, int radius, double startDegrees, double endDegrees,
                               TavixArray::CPointArray &points) {
    return tavix::RasterizeArc(cx, cy, radius, startDegrees, endDegrees, points);
}
