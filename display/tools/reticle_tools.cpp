#include "TAVIX20/display/tools/reticle_tools.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/reticle.h"
#include "TAVIX20/display/tavix_view.h"

#include <array>
#include <cmath>
#include <numbers>

namespace {

/// The direction of the client point as seen from the reticle's centre, in degrees; nothing so near
/// to it that a pixel more is a wild turn.
std::optional<double> DirectionTo(const CTavixView &view, CPoint point, int reach) {
    const tavix::ViewTransform &transform = view.Transform();
    const CPoint corner = transform.ImageToClient(view.Reticle().Centre());
    const double dx = point.x - (corner.x + transform.Zoom() / 2);
    const double dy = point.y - (corner.y + transform.Zoom() / 2);
    if (std::hypot(dx, dy) < reach)
        return std::nullopt;
    return std::atan2(-dy, dx) * 180 / std::numbers::pi;
}

} // namespace

void ReticleTool::OnLButtonDown(CTavixView &view, unsigned flags, CPoint point) {
    StrokeTool::OnLButtonDown(view, flags, point);
    m_before = {view.Reticle().Centre(), view.Reticle().Angle()};
    view.Reticle().Show(); // The host may have hidden it since the tool was chosen.
    Start(view, point);
    view.Repaint();
}

void ReticleTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isDrag = IsDragIn(view);
    if (isDrag)
        DragTo(view, point);
    StrokeTool::OnLButtonUp(view, flags, point);
    view.Repaint();
    if (isDrag)
        Report(view, point);
}

void ReticleTool::OnMouseMove(CTavixView &view, unsigned flags, CPoint point) {
    if (IsDragIn(view))
        DragTo(view, point);
    StrokeTool::OnMouseMove(view, flags, point);
}

void ReticleTool::DropDrag() {
    if (CTavixView *const view = State().view; view && IsDragIn(*view)) {
        view->Reticle().MoveTo(m_before.centre);
        view->Reticle().SetAngle(m_before.angle);
    }
    StrokeTool::DropDrag();
}

void CReticleMoveTool::Start(CTavixView &view, CPoint point) {
    m_start = view.Transform().ClientToImage(point);
}

void CReticleMoveTool::DragTo(CTavixView &view, CPoint point) {
    view.Reticle().MoveTo(Before().centre + (view.Transform().ClientToImage(point) - m_start));
}

void CReticleMoveTool::Report(CTavixView &view, CPoint point) const {
    const CPoint centre = view.Reticle().Centre();
    Finish(view, point, TavixArray::CPointArray(&centre, 1));
}

void CReticleRotateTool::Start(CTavixView &view, CPoint point) {
    m_last = DirectionTo(view, point, CLICK_REACH);
}

void CReticleRotateTool::DragTo(CTavixView &view, CPoint point) {
    const std::optional<double> now = DirectionTo(view, point, CLICK_REACH);
    if (now && m_last)
        view.Reticle().SetAngle(view.Reticle().Angle() + *now - *m_last);
    if (now)
        m_last = now;
}

void CReticleRotateTool::Report(CTavixView &view, CPoint point) const {
    const tavix::Reticle &reticle = view.Reticle();
    const std::array<POINT, 2> axis{reticle.Centre(), reticle.AxisEnd()};
    Finish(view, point, TavixArray::CPointArray(axis));
}
