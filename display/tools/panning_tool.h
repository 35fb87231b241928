/// What the tools have in common with which the right button moves the picture.
#pragma once

#include "TAVIX20/display/tools/draw_tool.h"

namespace tavix {

/// Moves the picture by the way from the press to the point, once that is at least 2 pixels long on
/// both axes; a drag along one axis does not pan, operators know it so.
void PanPicture(CTavixView &view, CPoint scrollAtPress, CPoint point);

} // namespace tavix

/// While the right button is held the image follows the mouse.
class PanningTool : public CDrawTool {
public:
    using CDrawTool::CDrawTool;

    void OnRButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnRButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;

private:
    CPoint m_scrollAtPress;
};
