#include "TAVIX20/display/tools/measure_tool.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/tavix_view.h"

#include <QPainter>

#include <span>

// What all of them share

void MeasureTool::Measure(CTavixView &view, CPoint point, const std::vector<POINT> &points) const {
    ObjectPtr object = NewObject(points, view.Calibration());
    if (!object->IsValid())
        return;
    view.Objects().Add(std::move(object));
    Finish(view, point, TavixArray::CPointArray(std::span<const POINT>(points)));
}

void MeasureTool::DrawLive(CTavixView &view, QPainter &painter,
                           const std::vector<POINT> &points) const {
    const ObjectPtr object = NewObject(points, view.Calibration());
    const int width = object->GetPenWidth();
    const COLORREF colour = object->GetColor();
    tavix::CanvasStorage storage;
    tavix::ObjectCanvas canvas(painter, view.Transform(), view.viewport()->rect(), storage);
    // On a dark rim, so that it is legible on bright pictures, too.
    object->SetStyle(width + 2, PS_SOLID, 0x000000);
    object->Draw(canvas);
    object->SetStyle(width, PS_SOLID, colour);
    object->Draw(canvas);
}

// Drags

void DragMeasureTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    MeasureTool::OnLButtonDown(view, flags, point);
    view.Repaint();
}

void DragMeasureTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isStroke = IsDragIn(view) && IsStroke(point);
    MeasureTool::OnLButtonUp(view, flags, point);
    view.Repaint();
    if (isStroke)
        Take(view, point, PointsTo(view, point));
}

void DragMeasureTool::OnDraw(CTavixView &view, QPainter &painter) {
    if (IsStroke(State().last))
        DrawLive(view, painter, PointsTo(view, State().last));
}

bool DragMeasureTool::IsStroke(CPoint point) const {
    return !IsTooShort(point);
}

std::vector<POINT> DragMeasureTool::PointsOf(CPoint start, CPoint end) const {
    return {start, end};
}

void DragMeasureTool::Take(CTavixView &view, CPoint point, const std::vector<POINT> &points) {
    Measure(view, point, points);
}

std::vector<POINT> DragMeasureTool::PointsTo(const CTavixView &view, CPoint point) const {
    return PointsOf(State().imagePress, view.Transform().ClientToImage(point));
}

// Chains

void ChainMeasureTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    MeasureTool::OnLButtonDown(view, flags, point);
    if (!m_chain.IsIn(view) || m_chain.Points().size() < MOST_POINTS)
        m_chain.Add(view, view.Transform().ClientToImage(point));
}

// The first click of a double click has added its point already.
void ChainMeasureTool::OnLButtonDblClk(CTavixView &view, unsigned, CPoint point) {
    const std::vector<POINT> points = m_chain.Take(view);
    if (points.size() >= m_leastPoints)
        Measure(view, point, points);
}

void ChainMeasureTool::OnSendResult(CTavixView &view) {
    const std::vector<POINT> points = m_chain.Take(view);
    const CPoint last = points.empty() ? CPoint() : CPoint(points.back());
    if (points.size() >= m_leastPoints)
        Measure(view, last, points);
    else
        Finish(view, last, TavixArray::CPointArray(std::span<const POINT>(points)));
}

void ChainMeasureTool::OnDraw(CTavixView &view, QPainter &painter) {
    std::vector<POINT> points = m_chain.Points();
    if (points.size() < MOST_POINTS)
        points.push_back(view.Transform().ClientToImage(State().last));
    DrawLive(view, painter, points);
}
