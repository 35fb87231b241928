#include "TAVIX20/display/tools/pick_tools.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tools/tool_cursors.h"

namespace {

TavixArray::CPointArray ImagePointAt(const CTavixView &view, CPoint client) {
    const CPoint point = view.Transform().ClientToImage(client);
    return TavixArray::CPointArray(&point, 1);
}

} // namespace

void CClickTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isClick = State().view == &view && IsClick(point);
    CDrawTool::OnLButtonUp(view, flags, point);
    if (isClick)
        Finish(view, point, ImagePointAt(view, State().press));
}

void CSpoideTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isClick = State().view == &view && IsClick(point);
    CDrawTool::OnLButtonUp(view, flags, point);
    view.SetToolCursor(tavix::DropperCursor());
    if (isClick)
        Finish(view, point, ImagePointAt(view, point));
}

void CSpoideTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    CDrawTool::OnMouseMove(view, flags, point);
    view.SetToolCursor(tavix::DropperCursor());
}
