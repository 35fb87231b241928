#include "TAVIX20/display/tools/panning_tool.h"

#include "TAVIX20/display/tavix_view.h"

#include <cstdlib>

void tavix::PanPicture(CTavixView &view, CPoint scrollAtPress, CPoint point) {
    const CSize way = point - ToolState::Shared().press;
    if (std::abs(way.cx) < 2 || std::abs(way.cy) < 2)
        return;
    view.SetToolCursor(Qt::ClosedHandCursor);
    view.ScrollTo(scrollAtPress - way);
}

void PanningTool::OnRButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnRButtonDown(view, flags, point);
    m_scrollAtPress = view.Transform().Scroll();
}

void PanningTool::OnRButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnRButtonUp(view, flags, point);
    view.SetToolCursor(Qt::ArrowCursor);
}

void PanningTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnMouseMove(view, flags, point);
    if ((flags & MK_RBUTTON) && view.IsMouseCaptured() && State().view == &view)
        tavix::PanPicture(view, m_scrollAtPress, point);
}
