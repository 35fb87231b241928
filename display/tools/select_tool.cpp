#include "TAVIX20/display/tools/select_tool.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/draw_obj.h"
#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tools/panning_tool.h"

void CSelectTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnLButtonDown(view, flags, point);
    m_scrollAtPress = view.Transform().Scroll();
    m_grabbed = NOTHING;
    const CDrawObj *const object = view.SelectedObject();
    if (!object)
        return view.SetToolCursor(Qt::OpenHandCursor);
    m_lastImagePoint = view.Transform().ClientToImage(point);
    if (object->HitTest(m_lastImagePoint))
        m_grabbed = object->HitTest(m_lastImagePoint.x, m_lastImagePoint.y);
}

void CSelectTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnMouseMove(view, flags, point);
    if (!view.IsMouseCaptured() || State().view != &view)
        return ShowCursorOver(view, point);
    if (!(flags & MK_LBUTTON))
        return;
    if (m_grabbed != NOTHING)
        return DragObject(view, point);
    view.SetToolCursor(Qt::OpenHandCursor);
    if (view.Transform().Zoom() > view.Transform().FitRatio())
        tavix::PanPicture(view, m_scrollAtPress, point);
}

void CSelectTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnLButtonUp(view, flags, point);
    m_grabbed = NOTHING;
    const POINT released = view.Transform().ClientToImage(point);
    Finish(view, point, TavixArray::CPointArray(&released, 1));
}

void CSelectTool::OnRButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnRButtonDown(view, flags, point);
    view.PopUpContextMenu();
}

/// The object may have been removed, or another one selected, since the press.
void CSelectTool::DragObject(CTavixView &view, CPoint point) {
    CDrawObj *const object = view.SelectedObject();
    if (!object)
        return;
    const CPoint now = view.Transform().ClientToImage(point);
    if (m_grabbed > 0)
        object->MoveHandleTo(m_grabbed, now);
    else
        object->Offset(POINT{now.x - m_lastImagePoint.x, now.y - m_lastImagePoint.y});
    m_lastImagePoint = now;
    view.Repaint();
}

void CSelectTool::ShowCursorOver(CTavixView &view, CPoint point) const {
    const CDrawObj *const object = view.SelectedObject();
    const CPoint imagePoint = view.Transform().ClientToImage(point);
    if (!object || !object->HitTest(imagePoint))
        return view.SetToolCursor(Qt::ArrowCursor);
    const int handle = object->HitTest(imagePoint.x, imagePoint.y);
    view.SetToolCursor(handle > 0 ? object->GetHandleCursor(handle) : Qt::SizeAllCursor);
}
