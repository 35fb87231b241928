#include "TAVIX20/display/reticle.h"

#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/view_transform.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tavix {

namespace {

constexpr double WHOLE_TURN = 360.0;
constexpr Pen RIM{0x000000, 3, PS_SOLID};

} // namespace

void Reticle::MoveTo(CPoint centre) {
    m_centre = {std::clamp(centre.x, 0, std::max(0, m_image.cx - 1)),
                std::clamp(centre.y, 0, std::max(0, m_image.cy - 1))};
}

void Reticle::SetAngle(double degrees) {
    const double turn = std::fmod(degrees, WHOLE_TURN);
    m_angle = turn < 0 ? turn + WHOLE_TURN : turn;
    if (m_angle >= WHOLE_TURN) // The smallest negative turns round up to it.
        m_angle = 0;
}

void Reticle::SetImageSize(CSize size) {
    m_image = size;
    const CRect picture(0, 0, size.cx, size.cy);
    if (size.cx > 0 && size.cy > 0 && !picture.PtInRect(m_centre))
        m_centre = {size.cx / 2, size.cy / 2};
}

/// From the centre to the end of the first line: as far as the picture's corners are apart.
CSize Reticle::Arm() const {
    const double reach = std::hypot(m_image.cx, m_image.cy);
    const double radians = m_angle * std::numbers::pi / (WHOLE_TURN / 2);
    return {static_cast<int>(std::lround(reach * std::cos(radians))),
            static_cast<int>(std::lround(-reach * std::sin(radians)))};
}

CPoint Reticle::AxisEnd() const {
    return m_centre + Arm();
}

void Reticle::Draw(QPainter &painter, const ViewTransform &view, const QRect &visible) const {
    const CSize image = view.ImageSize();
    const QRect picture = view.PaintedRect(CRect(0, 0, image.cx, image.cy));
    const QRect clip = picture & visible;
    painter.save();
    painter.setClipRect(clip, Qt::IntersectClip);
    {
        CanvasStorage storage;
        ObjectCanvas canvas(painter, view, clip, storage);
        const CSize arm = Arm();
        const std::array ways{arm, CSize(arm.cy, -arm.cx)};
        // Dark rims under both, so that they are legible on bright pictures, too.
        for (const CSize &way : ways)
            canvas.Line(canvas.Centre(m_centre - way), canvas.Centre(m_centre + way), RIM);
        for (const CSize &way : ways)
            CDrawReticleLineObj(m_centre - way, m_centre + way).Draw(canvas);
    }
    painter.restore();
}

} // namespace tavix
