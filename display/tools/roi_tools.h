/// The tools that draw regions of interest: rectangle, ellipse, polygon, free line.
#pragma once

#include "TAVIX20/display/tools/draw_tool.h"

#include <vector>

/// Each stroke adds one element to the view's regions of interest; the tool stays current. Escape
/// drops a stroke that is not finished, as leaving the tool does, and leaves the tool where there
/// is none.
class RoiTool : public CDrawTool {
public:
    using CDrawTool::CDrawTool;

    void OnCancel(CTavixView &view) override;
    void OnReset(CTavixView &view) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    bool OnEscape(CTavixView &view) override;

protected:
    virtual bool IsStrokeUnderWay() const { return State().isDragging; }
    virtual void DropStroke() {}
};

/// The tools with guide lines: two green lines through the cursor across the whole image.
class GuidedRoiTool : public RoiTool {
public:
    using RoiTool::RoiTool;

    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnReset(CTavixView &view) override;
};

/// A drag between two opposite corners.
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
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    bool IsStrokeUnderWay() const override { return !m_corners.empty(); }
    void DropStroke() override { m_corners.clear(); }
    void Close(CTavixView &view);

    std::vector<POINT> m_corners; ///< Image coordinates.
};

/// The path of a drag, closed by the straight way back.
class CROIFreelineTool : public RoiTool {
public:
    CROIFreelineTool() : RoiTool(tavix::ROI_FREELINE) {}

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    void DropStroke() override { m_path.clear(); }
    void Append(CPoint imagePoint);

    std::vector<POINT> m_path; ///< Image coordinates.
};
