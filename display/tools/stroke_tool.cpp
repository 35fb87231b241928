#include "TAVIX20/display/tools/stroke_tool.h"

#include "TAVIX20/display/tavix_view.h"

void StrokeTool::OnMouseMove(CTavixView &view, unsigned, CPoint point) {
    State().last = point;
    view.SetToolCursor(Qt::CrossCursor);
    if (HasStrokeIn(view))
        RepaintMove(view);
}

void StrokeTool::RepaintMove(CTavixView &view) {
    view.Repaint();
}

void StrokeTool::OnReset(CTavixView &view) {
    DropDrag();
    DropStroke();
    view.Repaint();
}

void StrokeTool::OnCancel(CTavixView &view) {
    OnReset(view);
    CDrawTool::OnCancel(view);
}

bool StrokeTool::OnEscape(CTavixView &view) {
    if (HasStrokeIn(view))
        OnReset(view);
    else
        OnCancel(view);
    return true;
}
