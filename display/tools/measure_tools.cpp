#include "TAVIX20/display/tools/measure_tools.h"

#include "TAVIX20/display/draw_measures.h"
#include "TAVIX20/display/object_geometry.h"

#include <array>

namespace {

template <typename Object, typename... Arguments>
std::unique_ptr<CDrawObj> New(const char *name, double calibration, const Arguments &...shape) {
    auto object = std::make_unique<Object>(shape...);
    object->SetName(name);
    object->SetCalibration(calibration);
    return object;
}

} // namespace

std::vector<POINT> CMeasurePointTool::PointsOf(CPoint start, CPoint) const {
    return {start};
}

MeasureTool::ObjectPtr CMeasurePointTool::NewObject(const std::vector<POINT> &points,
                                                    double calibration) const {
    return New<CMeasurePointObj>("MEASURE_POINT", calibration, points[0]);
}

MeasureTool::ObjectPtr CMsrDistanceTool::NewObject(const std::vector<POINT> &points,
                                                   double calibration) const {
    return New<CMeasureDistanceObj>("MEASURE_DISTANCE", calibration, points[0], points[1]);
}

bool CMeasureHLineTool::IsStroke(CPoint point) const {
    return !IsTooShort({point.x, State().press.y});
}

std::vector<POINT> CMeasureHLineTool::PointsOf(CPoint start, CPoint end) const {
    return {start, {end.x, start.y}};
}

MeasureTool::ObjectPtr CMeasureHLineTool::NewObject(const std::vector<POINT> &points,
                                                    double calibration) const {
    return New<CMeasureDistanceObj>("MEASURE_HLINE", calibration, points[0], points[1]);
}

bool CMeasureVLineTool::IsStroke(CPoint point) const {
    return !IsTooShort({State().press.x, point.y});
}

std::vector<POINT> CMeasureVLineTool::PointsOf(CPoint start, CPoint end) const {
    return {start, {start.x, end.y}};
}

MeasureTool::ObjectPtr CMeasureVLineTool::NewObject(const std::vector<POINT> &points,
                                                    double calibration) const {
    return New<CMeasureDistanceObj>("MEASURE_VLINE", calibration, points[0], points[1]);
}

MeasureTool::ObjectPtr CMeasureCycleTool::NewObject(const std::vector<POINT> &points,
                                                    double calibration) const {
    const POINT &centre = points[0];
    return New<CMeasureCycleObj>(
        "MEASURE_CYCLE", calibration,
        tagPOINTD{static_cast<double>(centre.x), static_cast<double>(centre.y)},
        tavix::Distance(centre, points[1]));
}

MeasureTool::ObjectPtr CMeasureRectTool::NewObject(const std::vector<POINT> &points,
                                                   double calibration) const {
    const auto [from, to] = std::array{points[0], points[1]};
    const std::array<POINT, 4> corners{from, {to.x, from.y}, to, {from.x, to.y}};
    return New<CMeasurePolygonObj>("MEASURE_RECT", calibration, corners);
}

MeasureTool::ObjectPtr CMeasurePolylineTool::NewObject(const std::vector<POINT> &points,
                                                       double calibration) const {
    return New<CMeasurePolylineObj>("MEASURE_POLYLINE", calibration, points);
}

MeasureTool::ObjectPtr CMeasurePolygonTool::NewObject(const std::vector<POINT> &points,
                                                      double calibration) const {
    return New<CMeasurePolygonObj>("MEASURE_POLYGON", calibration, points);
}
