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
    if (!m_chain.IsIn(view) || m_chain.Points().size() < MOST_POINTS)
        m_chain.Add(view, view.Transform().ClientToImage(point));
}

void ChainFocusTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnMouseMove(view, flags, point);
    if (m_chain.IsIn(view))
        view.Repaint();
}

void ChainFocusTool::OnUndo(CTavixView &view) {
    m_chain.DropLast();
    if (m_chain.IsEmpty())
        OnReset(view);
}

void ChainFocusTool::OnSendResult(CTavixView &view) {
    const std::vector<POINT> &points = m_chain.Points();
    TavixArray::CPointArray result{std::span<const POINT>(points)};
    CPoint last;
    if (!points.empty()) {
        last = points.back();
        result.Add(points.front());
    }
    if (Finish(view, last, result))
        OnReset(view);
    else
        m_chain.Clear();
}

void ChainFocusTool::OnReset(CTavixView &) {
    m_chain.Clear();
}

void ChainFocusTool::OnDraw(CTavixView &view, QPainter &painter) {
    QPolygon chain;
    for (const POINT &point : m_chain.Points()) {
        const CPoint client = view.Transform().ImageToClient(point);
        chain << QPoint(client.x, client.y);
    }
    chain << QPoint(State().last.x, State().last.y);
    painter.setPen(QPen(Qt::green, PEN_WIDTH));
    painter.drawPolyline(chain);
}
