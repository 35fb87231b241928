// What CTavixView does with overlay objects.

#include "TAVIX20/display/draw_measures.h"
#include "TAVIX20/display/selection.h"
#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tool_types.h"

#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/platform/dc.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int MAX_SCALE_PARTS = 100;

} // namespace

void CTavixView::InitialiseObjects() {
    m_objects.SetChangeListener([this] { Repaint(); });
}

void CTavixView::PaintObjects(QPainter &painter, const tavix::ViewTransform &transform,
                              const QRect &visible) const {
    CDC dc(&painter);
    m_objects.Draw(dc, transform, visible);
}

bool CTavixView::SelectObject(const char *name) {
    CDrawObj *const object = m_objects.Find(name);
    if (object)
        tavix::Selection::Select(m_objects, *object);
    return object != nullptr;
}

void CTavixView::AddScaleBar(const CPoint &start, int length, int parts, int style, int penWidth,
                             COLORREF colour, const char *name) {
    parts = std::clamp(parts, 1, MAX_SCALE_PARTS);
    const auto mark = [&](int i) {
        return CPoint(tavix::Saturate(start.x + std::int64_t{length} * i / parts), start.y);
    };
    const auto add = [&](int from, int to, bool labelled) {
        auto bar = std::make_unique<CMeasureDistanceObj>(mark(from), mark(to));
        bar->SetCalibration(m_calibration);
        bar->SetStyle(penWidth, style, colour);
        bar->SetName(name);
        bar->ShowLabel(labelled);
        m_objects.Add(std::move(bar));
    };
    add(0, parts, true);
    for (int part = 0; parts > 1 && part < parts; ++part)
        add(part, part + 1, false);
}

bool CTavixView::SetObjectString(const char *name, const char *text) {
    CDrawObj *const object = m_objects.Find(name);
    if (object)
        object->SetObjectString(text ? text : "");
    return object != nullptr;
}

void CTavixView::ShowObject(bool show) {
    m_showObjects = show;
    Repaint();
}

void CTavixView::SetCalibration(double unitsPerPixel) {
    if (std::isfinite(unitsPerPixel) && unitsPerPixel > 0.0)
        m_calibration = unitsPerPixel;
}

void CTavixView::ReticleToolChosen(int type) {
    if (type != TOOL_TYPE_RETICLE_MOVE && type != TOOL_TYPE_RETICLE_ROTATE)
        return;
    m_reticle.SetMode(type);
    m_reticle.Show();
}
