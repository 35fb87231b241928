/// The tools that pull a rubber band from the press to the release: line, rectangle, ellipse.
#pragma once

#include "TAVIX20/display/tools/panning_tool.h"

/// The band inverts what lies under it. A drag of at least 2 pixels on an axis gives two image
/// points: press, then release; the first one stays when the picture is zoomed or scrolled. The
/// right button moves the picture.
class DragFocusTool : public PanningTool {
public:
    using PanningTool::PanningTool;

    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    virtual void DrawBand(QPainter &painter, CPoint from, CPoint to) const = 0;
};

class CLineFocusTool : public DragFocusTool {
public:
    CLineFocusTool() : DragFocusTool(tavix::LINE_FOCUS) {}

private:
    void DrawBand(QPainter &painter, CPoint from, CPoint to) const override;
};

class CRectangleFocusTool : public DragFocusTool {
public:
    CRectangleFocusTool() : DragFocusTool(tavix::RECTANGLE_FOCUS) {}

private:
    void DrawBand(QPainter &painter, CPoint from, CPoint to) const override;
};

class CEllipseFocusTool : public DragFocusTool {
public:
    CEllipseFocusTool() : DragFocusTool(tavix::ELLIPSE_FOCUS) {}

private:
    void DrawBand(QPainter &painter, CPoint from, CPoint to) const override;
};
