/// MeasureTool: what the tools that measure the picture have in common.
#pragma once

#include "TAVIX20/display/tools/click_chain.h"
#include "TAVIX20/display/tools/stroke_tool.h"

#include <memory>
#include <vector>

class CDrawObj;

/// Each stroke leaves an overlay object that shows the measured value by the view's calibration,
/// and tells the host the image points that define it; the tool stays current. In the making the
/// stroke is shown as the object that it would be.
class MeasureTool : public StrokeTool {
public:
    using StrokeTool::StrokeTool;

protected:
    using ObjectPtr = std::unique_ptr<CDrawObj>;

    /// The object for these image points, named after the tool.
    virtual ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const = 0;
    /// Adds the object and reports the points; neither where the object is not valid. The view may
    /// be gone then.
    void Measure(CTavixView &view, CPoint point, const std::vector<POINT> &points) const;
    void DrawLive(CTavixView &view, QPainter &painter, const std::vector<POINT> &points) const;
};

/// A drag from the press to the release, which may leave the picture. It starts at the image point
/// of the press, also when the picture is zoomed or scrolled before the release. A drag shorter
/// than 2 pixels on both axes measures nothing.
class DragMeasureTool : public MeasureTool {
public:
    using MeasureTool::MeasureTool;

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

protected:
    /// Whether a drag to the client point is one for this tool.
    virtual bool IsStroke(CPoint point) const;
    /// The image points of a drag, in the order in which the host gets them.
    virtual std::vector<POINT> PointsOf(CPoint start, CPoint end) const;
    /// Does with the points of a finished drag what the tool is for. The view may be gone then.
    virtual void Take(CTavixView &view, CPoint point, const std::vector<POINT> &points);

private:
    std::vector<POINT> PointsTo(const CTavixView &view, CPoint point) const;
};

/// A point a click, up to 1,000; clicks beyond are dropped. A double click ends the chain, and the
/// host does with SendToolResult. That always answers: with the points there are, even where they
/// are too few for an object.
class ChainMeasureTool : public MeasureTool {
public:
    static constexpr std::size_t MOST_POINTS = 1000;

    ChainMeasureTool(tavix::ToolId id, std::size_t leastPoints)
        : MeasureTool(id), m_leastPoints(leastPoints) {}

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonDblClk(CTavixView &view, unsigned flags, CPoint point) override;
    void OnSendResult(CTavixView &view) override;
    bool HasStrokeIn(const CTavixView &view) const override { return m_chain.IsIn(view); }
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    void DropStroke() override { m_chain.Clear(); }

    const std::size_t m_leastPoints;
    tavix::ClickChain m_chain;
};
