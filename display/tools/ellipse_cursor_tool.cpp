#include "TAVIX20/display/tools/ellipse_cursor_tool.h"

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tools/tool_cursors.h"

void CEllipseCursorTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnMouseMove(view, flags, point);
    if (!(flags & MK_RBUTTON))
        view.SetToolCursor(tavix::EllipseCursor());
}

void CEllipseCursorTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    PanningTool::OnLButtonUp(view, flags, point);
    view.SetToolCursor(tavix::EllipseCursor());
}
