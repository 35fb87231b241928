#include "TAVIX20/display/draw_points.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include <algorithm>

using tavix::Saturate;

void CDrawPointObj::Draw(tavix::ObjectCanvas &canvas) const {
    const QPointF centre = canvas.Centre(m_anchor);
    canvas.Line(centre, centre, {m_colour, 1, PS_SOLID});
}

void CDrawPointObj::WriteKeys(tavix::KeyWriter &writer) const {
    writer.Text("SHAPE", "POINT");
    writer.Pair("POINT", m_anchor.x, m_anchor.y);
    WritePenKeys(writer);
}

void CDrawPointObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "POINT")
        tavix::ReadPoint(entry.value, m_anchor);
    else
        CDrawObj::ReadKey(entry);
}

CDrawCrossPointObj::CDrawCrossPointObj(const tagPOINT &centre, const tagSIZE &arms)
    : Cloneable(centre), m_arms(std::max(0, arms.cx), std::max(0, arms.cy)) {}

void CDrawCrossPointObj::Draw(tavix::ObjectCanvas &canvas) const {
    const tavix::Pen pen{m_colour, m_penWidth, m_penStyle};
    const QPointF centre = canvas.Centre(m_anchor, m_penWidth);
    const CRect bounds = GetBoundRect();
    const QPointF first = canvas.Centre({bounds.left, bounds.top}, m_penWidth);
    const QPointF last = canvas.Centre({bounds.right, bounds.bottom}, m_penWidth);
    if (m_arms.cx > 0)
        canvas.Line({std::min(first.x(), centre.x() - MIN_ARM), centre.y()},
                    {std::max(last.x(), centre.x() + MIN_ARM), centre.y()}, pen);
    if (m_arms.cy > 0)
        canvas.Line({centre.x(), std::min(first.y(), centre.y() - MIN_ARM)},
                    {centre.x(), std::max(last.y(), centre.y() + MIN_ARM)}, pen);
    if (m_arms.cx <= 0 && m_arms.cy <= 0)
        canvas.Line(centre, centre, pen);
}

CRect CDrawCrossPointObj::GetBoundRect() const {
    const std::int64_t x = m_anchor.x;
    const std::int64_t y = m_anchor.y;
    return {Saturate(x - m_arms.cx), Saturate(y - m_arms.cy), Saturate(x + m_arms.cx),
            Saturate(y + m_arms.cy)};
}

void CDrawCrossPointObj::CopyShape(const CDrawObj &other) {
    if (const auto *cross = dynamic_cast<const CDrawCrossPointObj *>(&other))
        m_arms = cross->m_arms;
}

void CDrawCrossPointObj::WriteKeys(tavix::KeyWriter &writer) const {
    writer.Text("SHAPE", "CROSS_POINT");
    writer.Pair("POINT", m_anchor.x, m_anchor.y);
    writer.Pair("SIZE", m_arms.cx, m_arms.cy);
    WritePenKeys(writer);
}

void CDrawCrossPointObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "POINT") {
        tavix::ReadPoint(entry.value, m_anchor);
    } else if (CSize arms; entry.key == "SIZE") {
        if (tavix::ReadSize(entry.value, arms) && arms.cx >= 0 && arms.cy >= 0)
            m_arms = arms;
    } else {
        CDrawObj::ReadKey(entry);
    }
}
