#include "TAVIX20/display/tools/chain_focus_tools.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/tavix_view.h"

#include <QPainter>
#include <QPolygon>

#include <span>

namespace {

constexpr int PEN_WIDTH = 2;

} // namespace

void ChainFocusTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnLButtonDown(view, flags, point);
    if (m_points.size() < MOST_POINTS)
        m_points.push_back(view.Transform().ClientToImage(point));
    view.Repaint();
}

void ChainFocusTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnMouseMove(view, flags, point);
    if (!m_points.empty())
        view.Repaint();
}

void ChainFocusTool::OnUndo(CTavixView &view) {
    if (!m_points.empty())
        m_points.pop_back();
    if (m_points.empty())
        OnReset(view);
    view.Repaint();
}

void ChainFocusTool::OnSendResult(CTavixView &view) {
    TavixArray::CPointArray result{std::span<const POINT>(m_points)};
    CPoint last;
    if (!m_points.empty()) {
        last = m_points.back();
        result.Add(m_points.front());
    }
    const QPointer<CTavixView> alive(&view);
    Finish(view, last, result);
    if (!alive)
        return m_points.clear();
    OnReset(view);
    view.Repaint();
}

void ChainFocusTool::OnReset(CTavixView &) {
    m_points.clear();
}

void ChainFocusTool::OnDraw(CTavixView &view, QPainter &painter) {
    if (m_points.empty() || !view.IsCurrentTool(Id()))
        return;
    QPolygon chain;
    for (const POINT &point : m_points) {
        const CPoint client = view.Transform().ImageToClient(point);
        chain << QPoint(client.x, client.y);
    }
    if (State().view == &view)
        chain << QPoint(State().last.x, State().last.y);
    painter.setPen(QPen(Qt::green, PEN_WIDTH));
    painter.drawPolyline(chain);
}
