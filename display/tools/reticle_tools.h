/// CReticleMoveTool and CReticleRotateTool: the reticle of the view follows the mouse.
#pragma once

#include "TAVIX20/display/tools/stroke_tool.h"

#include <optional>

/// A drag from anywhere on the view. Each release reports what the drag has set, whatever the
/// distance moved; a drag that is dropped leaves the reticle as it was before.
class ReticleTool : public StrokeTool {
public:
    using StrokeTool::StrokeTool;

    void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) override;
    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnMouseMove(CTavixView &view, unsigned flags, CPoint point) override;
    void DropDrag() override;

protected:
    struct Pose {
        CPoint centre;
        double angle;
    };

    virtual void Start(CTavixView &view, CPoint point) = 0;
    virtual void DragTo(CTavixView &view, CPoint point) = 0;
    virtual void Report(CTavixView &view, CPoint point) const = 0;
    const Pose &Before() const { return m_before; }

private:
    Pose m_before{};
};

/// Moves the reticle's centre by the way of the drag, within the picture; reports the centre.
class CReticleMoveTool : public ReticleTool {
public:
    CReticleMoveTool() : ReticleTool(tavix::RETICLE_MOVE) {}

protected:
    void Start(CTavixView &view, CPoint point) override;
    void DragTo(CTavixView &view, CPoint point) override;
    void Report(CTavixView &view, CPoint point) const override;

private:
    CPoint m_start; ///< Image coordinates.
};

/// Turns the reticle with the mouse about its centre; reports the centre and the end of its first
/// line.
class CReticleRotateTool : public ReticleTool {
public:
    CReticleRotateTool() : ReticleTool(tavix::RETICLE_ROTATE) {}

protected:
    void Start(CTavixView &view, CPoint point) override;
    void DragTo(CTavixView &view, CPoint point) override;
    void Report(CTavixView &view, CPoint point) const override;

private:
    std::optional<double> m_last; ///< Where the mouse was, in degrees.
};
