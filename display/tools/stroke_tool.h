/// StrokeTool: what the tools that collect a stroke on the picture have in common.
#pragma once

#include "TAVIX20/display/tools/draw_tool.h"

/// Shows a cross as cursor and what it has of the stroke meanwhile. Escape drops a stroke that is
/// not finished, as leaving the tool does, and leaves the tool where there is none.
class StrokeTool : public CDrawTool {
public:
    using CDrawTool::CDrawTool;

    void OnCancel(CTavixView &view) override;
    void OnReset(CTavixView &view) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    bool OnEscape(CTavixView &view) override;

protected:
    virtual void DropStroke() {}
    /// Schedules a repaint of what a move has changed of the stroke: by default all there is.
    virtual void RepaintMove(CTavixView &view);
};
