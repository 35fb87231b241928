/// CEllipseCursorTool: looks at the picture through a round cursor.
#pragma once

#include "TAVIX20/display/tools/panning_tool.h"

/// It has no result; the right button moves the picture.
class CEllipseCursorTool : public PanningTool {
public:
    CEllipseCursorTool() : PanningTool(tavix::ELLIPSE_CURSOR) {}
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
};
