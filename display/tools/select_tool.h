/// CSelectTool: moves the picture, and the overlay object that the host has selected.
#pragma once

#include "TAVIX20/display/tools/draw_tool.h"

/// The current tool where no other is. A press on the selected object or one of its handles drags
/// it; a press elsewhere moves a picture that is larger than the window. Every release of the left
/// button gives its image point, whatever the distance moved. The right button opens the menu.
class CSelectTool : public CDrawTool {
public:
    CSelectTool() : CDrawTool(tavix::SELECT) {}

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnRButtonDown(CTavixView &view, unsigned flags, CPoint point) override;

private:
    static constexpr int NOTHING = -1;

    void DragObject(CTavixView &view, CPoint point);
    void ShowCursorOver(CTavixView &view, CPoint point) const;

    CPoint m_scrollAtPress;
    CPoint m_lastImagePoint;
    int m_grabbed = NOTHING; ///< The handle being dragged; 0 for the whole object.
};
