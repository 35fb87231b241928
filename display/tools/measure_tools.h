/// The tools that measure: point, distance, lines along an axis, circle, rectangle, chains.
#pragma once

#include "TAVIX20/display/tools/measure_tool.h"

/// A press and release less than 3 pixels apart; reports the image point of the press.
class CMeasurePointTool : public DragMeasureTool {
public:
    CMeasurePointTool() : DragMeasureTool(tavix::MEASURE_POINT) {}

protected:
    bool IsStroke(CPoint point) const override { return IsClick(point); }
    std::vector<POINT> PointsOf(CPoint start, CPoint end) const override;
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// Reports the two ends.
class CMsrDistanceTool : public DragMeasureTool {
public:
    CMsrDistanceTool() : DragMeasureTool(tavix::MSR_DISTANCE) {}

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// A level line, from the press to the column of the release; reports its two ends. Only the way
/// along the line counts, also for whether it is long enough.
class CMeasureHLineTool : public DragMeasureTool {
public:
    CMeasureHLineTool() : DragMeasureTool(tavix::MEASURE_HLINE) {}

protected:
    bool IsStroke(CPoint point) const override;
    std::vector<POINT> PointsOf(CPoint start, CPoint end) const override;
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// The same upright, to the row of the release.
class CMeasureVLineTool : public DragMeasureTool {
public:
    CMeasureVLineTool() : DragMeasureTool(tavix::MEASURE_VLINE) {}

protected:
    bool IsStroke(CPoint point) const override;
    std::vector<POINT> PointsOf(CPoint start, CPoint end) const override;
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// A circle from its centre to its rim; reports both. Within one image pixel it measures nothing.
class CMeasureCycleTool : public DragMeasureTool {
public:
    CMeasureCycleTool() : DragMeasureTool(tavix::MEASURE_CYCLE) {}

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// The area between two opposite corners; reports these.
class CMeasureRectTool : public DragMeasureTool {
public:
    CMeasureRectTool() : DragMeasureTool(tavix::MEASURE_RECT) {}

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// The length of a way through at least two points; reports all points.
class CMeasurePolylineTool : public ChainMeasureTool {
public:
    CMeasurePolylineTool() : ChainMeasureTool(tavix::MEASURE_POLYLINE, 2) {}

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};

/// The area of a polygon of at least three corners; reports the corners, the first one once.
class CMeasurePolygonTool : public ChainMeasureTool {
public:
    CMeasurePolygonTool() : ChainMeasureTool(tavix::MEASURE_POLYGON, 3) {}

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
};
