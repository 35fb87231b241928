/// The tools that draw regions of interest: rectangle, ellipse, polygon, free line. Each stroke
/// adds one element to the view's regions; the tool stays current.
#pragma once

#include "TAVIX20/display/tools/click_chain.h"
#include "TAVIX20/display/tools/growing_line.h"
#include "TAVIX20/display/tools/stroke_tool.h"

#include <vector>

/// The tools with guide lines: two green lines through the cursor across the whole image, in the
/// view in which the cursor was last.
class GuidedRoiTool : public StrokeTool {
public:
    using StrokeTool::StrokeTool;

    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnReset(CTavixView &view) override;

private:
    void RemoveGuideLines();

    QPointer<CTavixView> m_guided; ///< Which has the lines.
};

/// A drag between two opposite corners; the first stays on its image point, also when the picture
/// is zoomed or scrolled before the release.
class BoxRoiTool : public GuidedRoiTool {
public:
    using GuidedRoiTool::GuidedRoiTool;

    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    /// The outline of the stroke between two image points; empty for a drag that holds no pixel.
    virtual std::vector<POINT> OutlineBetween(CPoint from, CPoint to) const = 0;
};

/// The four corners of the drag as they stand.
class CROIRectangleTool : public BoxRoiTool {
public:
    CROIRectangleTool() : BoxRoiTool(tavix::ROI_RECTANGLE) {}

private:
    std::vector<POINT> OutlineBetween(CPoint from, CPoint to) const override;
};

/// The outline of the pixels whose centres lie in the ellipse that is inscribed in the drag's box.
class CROIEllipseTool : public BoxRoiTool {
public:
    CROIEllipseTool() : BoxRoiTool(tavix::ROI_ELLIPSE) {}

private:
    std::vector<POINT> OutlineBetween(CPoint from, CPoint to) const override;
};

/// A corner a click. A double click, a click on the first corner or the host's SendToolResult
/// closes the polygon; fewer than three corners make none.
class CROIPolygonTool : public GuidedRoiTool {
public:
    CROIPolygonTool() : GuidedRoiTool(tavix::ROI_POLYGON) {}

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonDblClk(CTavixView &view, unsigned flags, CPoint point) override;
    void OnSendResult(CTavixView &view) override;
    bool HasStrokeIn(const CTavixView &view) const override { return m_corners.IsIn(view); }
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    void DropStroke() override { m_corners.Clear(); }
    void Close(CTavixView &view);

    tavix::ClickChain m_corners;
};

/// The path of a drag, closed by the straight way back.
class CROIFreelineTool : public StrokeTool {
public:
    CROIFreelineTool() : StrokeTool(tavix::ROI_FREELINE) {}

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    void DropStroke() override;
    void RepaintMove(CTavixView &view) override;
    void Append(CPoint imagePoint);

    std::vector<POINT> m_path; ///< Image coordinates.
    std::size_t m_shown = 0;   ///< So many of them are drawn, or a repaint is scheduled that does.
    tavix::GrowingLine m_line;
};
