#include "TAVIX20/display/tools/drag_focus_tools.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/tavix_view.h"

#include <QPainter>

#include <array>

namespace {

QRect RectBetween(CPoint from, CPoint to) {
    return QRect(QPoint(from.x, from.y), QPoint(to.x, to.y)).normalized();
}

} // namespace

void DragFocusTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isDrag = IsDragIn(view) && !IsTooShort(point);
    PanningTool::OnLButtonUp(view, flags, point);
    view.Repaint();
    if (!isDrag)
        return;
    const std::array<POINT, 2> ends{State().imagePress, view.Transform().ClientToImage(point)};
    Finish(view, point, TavixArray::CPointArray(ends));
}

void DragFocusTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnMouseMove(view, flags, point);
    if (IsDragIn(view))
        view.Repaint();
}

void DragFocusTool::OnDraw(CTavixView &view, QPainter &painter) {
    if (IsTooShort(State().last))
        return;
    painter.setCompositionMode(QPainter::CompositionMode_Difference); // White inverts.
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Qt::NoBrush);
    const tavix::ViewTransform &transform = view.Transform();
    const bool isInPlace = transform.ClientToImage(State().press) == State().imagePress;
    DrawBand(painter, isInPlace ? State().press : transform.ImageToClient(State().imagePress),
             State().last);
}

void CLineFocusTool::DrawBand(QPainter &painter, CPoint from, CPoint to) const {
    painter.drawLine(from.x, from.y, to.x, to.y);
}

void CRectangleFocusTool::DrawBand(QPainter &painter, CPoint from, CPoint to) const {
    painter.drawRect(RectBetween(from, to).adjusted(0, 0, -1, -1));
}

void CEllipseFocusTool::DrawBand(QPainter &painter, CPoint from, CPoint to) const {
    painter.drawEllipse(RectBetween(from, to).adjusted(0, 0, -1, -1));
}
