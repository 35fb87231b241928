/// CPolylineFocusTool and CPolygonFocusTool: a chain of clicks.
#pragma once

#include "TAVIX20/display/tools/click_chain.h"
#include "TAVIX20/display/tools/panning_tool.h"

#include <cstddef>

/// Each click adds an image point, up to 1,000; clicks beyond are dropped. The host finishes the
/// chain with SendToolResult and takes the last point back with Undo. The result of both tools ends
/// with the first point again; callers rely on that. The right button moves the picture.
class ChainFocusTool : public PanningTool {
public:
    static constexpr std::size_t MOST_POINTS = 1000;

    using PanningTool::PanningTool;

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void OnUndo(CTavixView &view) override;
    void OnSendResult(CTavixView &view) override;
    void OnReset(CTavixView &view) override;
    bool HasStrokeIn(const CTavixView &view) const override { return m_chain.IsIn(view); }
    void OnDraw(CTavixView &view, QPainter &painter) override;

private:
    tavix::ClickChain m_chain;
};

class CPolylineFocusTool : public ChainFocusTool {
public:
    CPolylineFocusTool() : ChainFocusTool(tavix::POLYLINE_FOCUS) {}
};

class CPolygonFocusTool : public ChainFocusTool {
public:
    CPolygonFocusTool() : ChainFocusTool(tavix::POLYGON_FOCUS) {}
};
