#include "TAVIX20/display/tools/draw_tool.h"

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tools/tool_messages.h"

#include <QCoreApplication>

#include <cstdlib>
#include <utility>

tavix::ToolState &tavix::ToolState::Shared() {
    static ToolState state;
    return state;
}

void CDrawTool::OnLButtonDown(CTavixView &view, unsigned, CPoint point) {
    DropDrag(); // Its release has been lost.
    view.ReleaseMouse();
    view.CaptureMouse();
    State().press = State().last = point;
    State().imagePress = view.Transform().ClientToImage(point);
    State().isDragging = true;
    State().view = &view;
    view.TakeFocus();
}

void CDrawTool::OnLButtonUp(CTavixView &view, unsigned, CPoint point) {
    State().last = point;
    State().isDragging = false;
    view.ReleaseMouse();
    view.SetToolCursor(Qt::ArrowCursor);
}

void CDrawTool::OnMouseMove(CTavixView &view, unsigned, CPoint point) {
    State().last = point;
    view.SetToolCursor(Qt::ArrowCursor);
}

void CDrawTool::OnCancel(CTavixView &view) {
    DropDrag();
    State().currentTool = tavix::SELECT;
    view.SetToolNumber(tavix::SELECT);
    view.ReleaseMouse();
    view.SetToolCursor(Qt::ArrowCursor);
    QCoreApplication::postEvent(&view, new tavix::ToolCancelledEvent);
}

void CDrawTool::DropDrag() {
    CTavixView *const view = State().view;
    if (!std::exchange(State().isDragging, false) || !view)
        return;
    view->ReleaseMouse();
    view->Repaint();
}

void CDrawTool::OnRButtonDown(CTavixView &view, unsigned, CPoint point) {
    State().press = State().last = point;
    State().view = &view;
    view.CaptureMouse();
    view.TakeFocus();
}

void CDrawTool::OnRButtonUp(CTavixView &view, unsigned, CPoint point) {
    State().last = point;
    view.ReleaseMouse();
}

bool CDrawTool::IsClick(CPoint release) {
    const CPoint press = State().press;
    return std::abs(release.x - press.x) < CLICK_REACH &&
           std::abs(release.y - press.y) < CLICK_REACH;
}

bool CDrawTool::IsTooShort(CPoint point) {
    const CPoint press = State().press;
    return std::abs(point.x - press.x) < 2 && std::abs(point.y - press.y) < 2;
}

bool CDrawTool::IsDragIn(const CTavixView &view) {
    return State().isDragging && State().view == &view;
}

bool CDrawTool::Finish(CTavixView &view, CPoint point, const TavixArray::CPointArray &result) {
    const QPointer<CTavixView> alive(&view);
    tavix::ToolFinishEvent message(point, result);
    QCoreApplication::sendEvent(&view, &message);
    if (alive)
        view.RaiseStatusChanged();
    return alive != nullptr;
}
