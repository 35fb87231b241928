/// CClickTool and CSpoideTool: one click, one image point.
#pragma once

#include "TAVIX20/display/tools/draw_tool.h"

/// A release less than 3 pixels from the last press gives the image point of the press. Both
/// releases of a double click do; callers rely on that.
class CClickTool : public CDrawTool {
public:
    CClickTool() : CDrawTool(tavix::CLICK) {}
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
};

/// The same with the image point of the release, and a cursor shaped as a dropper.
class CSpoideTool : public CDrawTool {
public:
    CSpoideTool() : CDrawTool(tavix::SPOIDE) {}
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
};
