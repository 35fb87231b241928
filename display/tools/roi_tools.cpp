#include "TAVIX20/display/tools/roi_tools.h"

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/platform/run_region.h"

#include <QPainter>
#include <QPolygon>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int PEN_WIDTH = 2;
constexpr std::size_t LEAST_CORNERS = 3;

/// The outline as it is drawn in the making: legible on bright and dark pictures.
void DrawStroke(QPainter &painter, const QPolygon &line) {
    painter.setPen(QPen(Qt::black, PEN_WIDTH + 2));
    painter.drawPolyline(line);
    painter.setPen(QPen(Qt::green, PEN_WIDTH));
    painter.drawPolyline(line);
}

QPolygon ToClient(const CTavixView &view, const std::vector<POINT> &points) {
    QPolygon line;
    line.reserve(static_cast<qsizetype>(points.size()) + 2);
    for (const POINT &point : points) {
        const CPoint client = view.Transform().ImageToClient(point);
        if (const QPoint next(client.x, client.y); line.isEmpty() || line.back() != next)
            line << next;
    }
    return line;
}

} // namespace

// The guide lines

void GuidedRoiTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    StrokeTool::OnMouseMove(view, flags, point);
    if (m_guided != &view)
        RemoveGuideLines();
    m_guided = &view;
    view.ShowGuideLines(view.Transform().ClientToImage(point));
}

void GuidedRoiTool::OnReset(CTavixView &view) {
    StrokeTool::OnReset(view);
    RemoveGuideLines();
}

void GuidedRoiTool::RemoveGuideLines() {
    if (m_guided)
        m_guided->RemoveGuideLines();
    m_guided.clear();
}

// Rectangle and ellipse

void BoxRoiTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isDrag = IsDragIn(view);
    GuidedRoiTool::OnLButtonUp(view, flags, point);
    view.Repaint();
    if (!isDrag)
        return;
    const std::vector<POINT> outline =
        OutlineBetween(State().imagePress, view.Transform().ClientToImage(point));
    if (!outline.empty())
        view.AddRoiStroke(outline);
}

void BoxRoiTool::OnDraw(CTavixView &view, QPainter &painter) {
    std::vector<POINT> outline =
        OutlineBetween(State().imagePress, view.Transform().ClientToImage(State().last));
    if (outline.empty())
        return;
    outline.push_back(outline.front());
    DrawStroke(painter, ToClient(view, outline));
}

std::vector<POINT> CROIRectangleTool::OutlineBetween(CPoint from, CPoint to) const {
    if (from.x == to.x || from.y == to.y)
        return {};
    return {{from.x, from.y}, {to.x, from.y}, {to.x, to.y}, {from.x, to.y}};
}

// Row by row: a row's pixels lie on both sides of the axis as far as the ellipse reaches at the
// height of their centres.
std::vector<POINT> CROIEllipseTool::OutlineBetween(CPoint from, CPoint to) const {
    const auto [left, right] = std::minmax(from.x, to.x);
    const auto [top, bottom] = std::minmax(from.y, to.y);
    const double axisX = (static_cast<double>(right) - left) / 2;
    const double axisY = (static_cast<double>(bottom) - top) / 2;
    const double centreX = left + axisX;
    const double centreY = top + axisY;
    tavix::RunRegion ellipse;
    for (LONG y = top; y < bottom; ++y) {
        const double height = (y + 0.5 - centreY) / axisY;
        const double reach = axisX * std::sqrt(std::max(0.0, 1 - height * height));
        const tavix::PixelRun run{static_cast<LONG>(std::ceil(centreX - reach - 0.5)),
                                  static_cast<LONG>(std::floor(centreX + reach - 0.5)) + 1};
        if (run.left < run.right)
            ellipse.AppendBand(y, y + 1, {&run, 1});
    }
    std::vector<tavix::Outline> outlines = tavix::TraceOutlines(ellipse.Rects());
    return outlines.empty() ? std::vector<POINT>() : std::move(outlines.front().corners);
}

// Polygon

void CROIPolygonTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    GuidedRoiTool::OnLButtonDown(view, flags, point);
    const tavix::ViewTransform &transform = view.Transform();
    if (m_corners.IsIn(view) && m_corners.Points().size() >= LEAST_CORNERS) {
        const CSize way = point - transform.ImageToClient(m_corners.Points().front());
        if (std::abs(way.cx) < CLICK_REACH && std::abs(way.cy) < CLICK_REACH)
            return Close(view);
    }
    m_corners.Add(view, transform.ClientToImage(point));
}

// The first click of a double click has added its corner already.
void CROIPolygonTool::OnLButtonDblClk(CTavixView &view, unsigned, CPoint) {
    Close(view);
}

void CROIPolygonTool::OnSendResult(CTavixView &view) {
    Close(view);
}

void CROIPolygonTool::Close(CTavixView &view) {
    const std::vector<POINT> corners = m_corners.Take(view);
    if (corners.size() >= LEAST_CORNERS)
        view.AddRoiStroke(corners);
}

void CROIPolygonTool::OnDraw(CTavixView &view, QPainter &painter) {
    DrawStroke(painter, ToClient(view, m_corners.Points())
                            << QPoint(State().last.x, State().last.y));
    const CPoint first = view.Transform().ImageToClient(m_corners.Points().front());
    painter.setPen(QPen(Qt::green, 1));
    painter.setBrush(Qt::black);
    painter.drawRect(first.x - CLICK_REACH, first.y - CLICK_REACH, 2 * CLICK_REACH,
                     2 * CLICK_REACH);
}

// Free line

void CROIFreelineTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    StrokeTool::OnLButtonDown(view, flags, point);
    DropStroke();
    Append(view.Transform().ClientToImage(point));
}

void CROIFreelineTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    if (IsDragIn(view))
        Append(view.Transform().ClientToImage(point));
    StrokeTool::OnMouseMove(view, flags, point);
}

void CROIFreelineTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isDrag = IsDragIn(view);
    if (isDrag)
        Append(view.Transform().ClientToImage(point));
    StrokeTool::OnLButtonUp(view, flags, point);
    const std::vector<POINT> path = std::exchange(m_path, {});
    DropStroke();
    view.Repaint();
    if (isDrag && path.size() >= 3)
        view.AddRoiStroke(path);
}

void CROIFreelineTool::DropStroke() {
    m_path.clear();
    m_shown = 0;
    m_line.Clear();
}

void CROIFreelineTool::Append(CPoint imagePoint) {
    if (m_path.empty() || imagePoint != m_path.back())
        m_path.push_back(imagePoint);
}

void CROIFreelineTool::RepaintMove(CTavixView &view) {
    const tavix::ViewTransform &transform = view.Transform();
    for (; m_shown < m_path.size(); ++m_shown) {
        const POINT &from = m_path[m_shown > 0 ? m_shown - 1 : 0];
        view.RepaintPart(tavix::GrowingLine::Reach(transform.ImageToClient(from),
                                                   transform.ImageToClient(m_path[m_shown])));
    }
}

void CROIFreelineTool::OnDraw(CTavixView &view, QPainter &painter) {
    m_line.Draw(painter, m_path, view.Transform(), view.viewport()->size());
}
