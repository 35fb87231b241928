#include "TAVIX20/display/draw_polygons.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include "TAVIX20/containers/plane_geometry.h"

#include <algorithm>

namespace tavix {

PointListObj::PointListObj(std::span<const tagPOINT> points)
    : m_points(points.begin(), points.end()) {
    PointsMoved();
}

Pen PointListObj::LinePen() const {
    return {m_colour, m_penWidth, m_penStyle};
}

void PointListObj::PointsMoved() {
    m_bounds.reset();
    if (!m_points.empty())
        m_anchor = m_points.front();
}

CRect PointListObj::GetBoundRect() const {
    if (m_points.empty())
        return CDrawObj::GetBoundRect();
    if (!m_bounds)
        m_bounds = BoundsOf(m_points);
    return *m_bounds;
}

Qt::CursorShape PointListObj::GetHandleCursor(int handle) const {
    return handle >= 1 && handle <= GetHandleCount() ? Qt::SizeAllCursor : Qt::ArrowCursor;
}

CPoint PointListObj::GetHandle(int index) const {
    if (index > GetHandleCount() || m_points.empty())
        return {-1, -1};
    return m_points[static_cast<std::size_t>(std::max(index, 1) - 1)];
}

void PointListObj::MoveTo(const tagPOINT &point) {
    Shift(std::int64_t{point.x} - m_anchor.x, std::int64_t{point.y} - m_anchor.y);
}

void PointListObj::Offset(const tagPOINT &delta) {
    Shift(delta.x, delta.y);
}

void PointListObj::Shift(std::int64_t dx, std::int64_t dy) {
    const CRect bounds = GetBoundRect();
    dx = LimitShift(dx, bounds.left, bounds.right);
    dy = LimitShift(dy, bounds.top, bounds.bottom);
    const auto shift = [dx, dy](tagPOINT &point) {
        point = {Saturate(point.x + dx), Saturate(point.y + dy)};
    };
    std::for_each(m_points.begin(), m_points.end(), shift);
    shift(m_anchor);
    PointsMoved();
    Changed();
}

void PointListObj::MoveHandleTo(int handle, const tagPOINT &point) {
    if (handle < 1 || handle > GetHandleCount())
        return;
    m_points[static_cast<std::size_t>(handle - 1)] = point;
    PointsMoved();
    Changed();
}

bool PointListObj::HitTest(const tagPOINT &point) const {
    const std::size_t count = m_points.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t next = i + 1 < count ? i + 1 : IsClosed() ? 0 : i;
        if (DistanceToSegment(point, m_points[i], m_points[next]) <= HIT_RADIUS)
            return true;
    }
    return IsClosed() && count > 2 &&
           CrossesOdd(m_points.data(), static_cast<unsigned>(count), point);
}

void PointListObj::CopyShape(const CDrawObj &other) {
    if (const auto *list = dynamic_cast<const PointListObj *>(&other)) {
        m_points = list->m_points;
        m_bounds = list->m_bounds;
    }
}

std::span<const QPointF> PointListObj::ClientPoints(ObjectCanvas &canvas, int penWidth) const {
    std::vector<QPointF> &points = canvas.Points();
    points.reserve(m_points.size());
    for (const tagPOINT &point : m_points) {
        const QPointF client = canvas.Centre(point, penWidth);
        // Points that fall together on the screen add nothing.
        if (points.empty() || client != points.back())
            points.push_back(client);
    }
    return points;
}

double PointListObj::Length() const {
    double length = 0.0;
    for (std::size_t i = 1; i < m_points.size(); ++i)
        length += Distance(m_points[i - 1], m_points[i]);
    if (IsClosed() && m_points.size() > 2)
        length += Distance(m_points.back(), m_points.front());
    return length;
}

void PointListObj::WriteKeys(KeyWriter &writer) const {
    writer.Text("SHAPE", Shape());
    for (const tagPOINT &point : m_points)
        writer.Pair("POINT", point.x, point.y);
    WritePenKeys(writer);
}

void PointListObj::ReadKey(const KeyEntry &entry) {
    if (entry.key != "POINT") {
        CDrawObj::ReadKey(entry);
        return;
    }
    tagPOINT point{};
    if (!ReadPoint(entry.value, point))
        return;
    const auto index = static_cast<std::size_t>(entry.occurrence);
    if (index < m_points.size())
        m_points[index] = point;
    else
        m_points.push_back(point);
    PointsMoved();
}

} // namespace tavix

void CDrawPolylineObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.Polyline(ClientPoints(canvas, m_penWidth), false, LinePen());
}

void CDrawPolygonObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.Polyline(ClientPoints(canvas, m_penWidth), true, LinePen());
}

void CFillPolygonObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.FillPolygon(ClientPoints(canvas, 1), m_colour);
}

void CFillHatchPolygonObj::Draw(tavix::ObjectCanvas &canvas) const {
    const std::span<const QPointF> points = ClientPoints(canvas, m_penWidth);
    canvas.HatchPolygon(points, m_hatch, m_colour);
    canvas.Polyline(points, true, {m_colour, m_penWidth, PS_SOLID});
}

void CFillHatchPolygonObj::CopyShape(const CDrawObj &other) {
    PointListObj::CopyShape(other);
    if (const auto *polygon = dynamic_cast<const CFillHatchPolygonObj *>(&other))
        m_hatch = polygon->m_hatch;
}

void CFillHatchPolygonObj::WriteKeys(tavix::KeyWriter &writer) const {
    PointListObj::WriteKeys(writer);
    writer.Integer("HATCH", m_hatch);
}

void CFillHatchPolygonObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "HATCH")
        tavix::ReadInteger(entry.value, m_hatch);
    else
        PointListObj::ReadKey(entry);
}
