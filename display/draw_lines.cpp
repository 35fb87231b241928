#include "TAVIX20/display/draw_lines.h"

#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int MAX_TICK = 2000; ///< Client pixels.
/// Graduation marks: the least distance between them and half their lengths, in client pixels.
constexpr double MARK_DISTANCE = 6.0;
constexpr double SHORT_MARK = 3.0;
constexpr double LONG_MARK = 6.0;
constexpr int MARKS_PER_LONG_MARK = 5;
constexpr double MOST_MARKS = 9007199254740992.0; ///< 2^53; a double counts no further.

QPointF UnitVector(const QPointF &from, const QPointF &to) {
    const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
    return length > 0 ? (to - from) / length : QPointF(1.0, 0.0);
}

/// The smallest of 1, 2, 5, 10, 20 ... that is at least the given value.
double RoundStep(double least) {
    for (double decade = 1.0;; decade *= 10.0)
        for (const double digit : {1.0, 2.0, 5.0})
            if (digit * decade >= least)
                return digit * decade;
}

} // namespace

namespace tavix {

Pen SegmentObj::LinePen() const {
    return {m_colour, m_penWidth, m_penStyle};
}

Qt::CursorShape SegmentObj::GetHandleCursor(int handle) const {
    return handle == 1 || handle == 2 ? Qt::SizeAllCursor : Qt::ArrowCursor;
}

CPoint SegmentObj::GetHandle(int index) const {
    return index == 2 ? m_end : CDrawObj::GetHandle(index);
}

void SegmentObj::MoveTo(const tagPOINT &point) {
    Shift(std::int64_t{point.x} - m_anchor.x, std::int64_t{point.y} - m_anchor.y);
}

void SegmentObj::Offset(const tagPOINT &delta) {
    Shift(delta.x, delta.y);
}

void SegmentObj::Shift(std::int64_t dx, std::int64_t dy) {
    const CRect bounds = SegmentObj::GetBoundRect();
    dx = LimitShift(dx, bounds.left, bounds.right);
    dy = LimitShift(dy, bounds.top, bounds.bottom);
    m_anchor = {Saturate(m_anchor.x + dx), Saturate(m_anchor.y + dy)};
    m_end = {Saturate(m_end.x + dx), Saturate(m_end.y + dy)};
    Changed();
}

void SegmentObj::MoveHandleTo(int handle, const tagPOINT &point) {
    if (handle == 1)
        m_anchor = point;
    else if (handle == 2)
        m_end = point;
    Changed();
}

bool SegmentObj::HitTest(const tagPOINT &point) const {
    return DistanceToSegment(point, m_anchor, m_end) <= HIT_RADIUS || CDrawObj::HitTest(point);
}

CRect SegmentObj::GetBoundRect() const {
    const tagPOINT ends[] = {m_anchor, m_end};
    return BoundsOf(ends);
}

void SegmentObj::CopyShape(const CDrawObj &other) {
    if (const auto *segment = dynamic_cast<const SegmentObj *>(&other))
        m_end = segment->m_end;
}

void SegmentObj::WriteKeys(KeyWriter &writer) const {
    writer.Text("SHAPE", Shape());
    writer.Pair("START", m_anchor.x, m_anchor.y);
    writer.Pair("END", m_end.x, m_end.y);
    WritePenKeys(writer);
}

void SegmentObj::ReadKey(const KeyEntry &entry) {
    if (entry.key == "START")
        ReadPoint(entry.value, m_anchor);
    else if (entry.key == "END")
        ReadPoint(entry.value, m_end);
    else
        CDrawObj::ReadKey(entry);
}

void SegmentObj::DrawTick(ObjectCanvas &canvas, const QPointF &at, double halfLength) const {
    const QPointF along =
        UnitVector(canvas.Position(m_anchor.x, m_anchor.y), canvas.Position(m_end.x, m_end.y));
    const QPointF across(-along.y() * halfLength, along.x() * halfLength);
    canvas.Line(at - across, at + across, {m_colour, m_penWidth, PS_SOLID});
}

} // namespace tavix

using tavix::ObjectCanvas;
using tavix::SegmentObj;

void CDrawLineObj::Draw(ObjectCanvas &canvas) const {
    canvas.Line(canvas.Centre(m_anchor, m_penWidth), canvas.Centre(m_end, m_penWidth), LinePen());
}

CDrawHStyleLineObj::CDrawHStyleLineObj(const tagPOINT &start, const tagPOINT &end, int tick)
    : Cloneable(start, end), m_tick(std::max(0, tick)) {}

void CDrawHStyleLineObj::Draw(ObjectCanvas &canvas) const {
    const QPointF start = canvas.Centre(m_anchor, m_penWidth);
    const QPointF end = canvas.Centre(m_end, m_penWidth);
    canvas.Line(start, end, LinePen());
    if (m_tick <= 0 || m_penStyle == PS_NULL)
        return;
    const double half = std::min(m_tick, MAX_TICK) / 2;
    DrawTick(canvas, start, half);
    DrawTick(canvas, end, half);
}

void CDrawHStyleLineObj::CopyShape(const CDrawObj &other) {
    SegmentObj::CopyShape(other);
    if (const auto *line = dynamic_cast<const CDrawHStyleLineObj *>(&other))
        m_tick = line->m_tick;
}

int CDrawHStyleLineObj::GetDrawMargin() const {
    return SegmentObj::GetDrawMargin() + std::min(m_tick, MAX_TICK);
}

void CDrawHStyleLineObj::WriteKeys(tavix::KeyWriter &writer) const {
    SegmentObj::WriteKeys(writer);
    writer.Integer("TICK", m_tick);
}

void CDrawHStyleLineObj::ReadKey(const tavix::KeyEntry &entry) {
    if (std::int32_t tick = 0; entry.key == "TICK") {
        if (tavix::ReadInteger(entry.value, tick) && tick >= 0)
            m_tick = tick;
    } else {
        SegmentObj::ReadKey(entry);
    }
}

CDrawArrowLineObj::CDrawArrowLineObj(const tagPOINT &start, const tagPOINT &end, int headLength,
                                     int headBreadth, int heads)
    : Cloneable(start, end),
      m_head(std::clamp(headLength, 1, MAX_HEAD), std::clamp(headBreadth, 1, MAX_HEAD)),
      m_heads(heads & (HEAD_AT_END | HEAD_AT_START)) {}

void CDrawArrowLineObj::Draw(ObjectCanvas &canvas) const {
    if (m_penStyle == PS_NULL)
        return;
    const int width = std::min(m_penWidth, tavix::Pen::MAX_WIDTH);
    QPointF start = canvas.Centre(m_anchor, width);
    QPointF end = canvas.Centre(m_end, width);
    const QPointF along = UnitVector(start, end);
    const QPointF across(-along.y(), along.x());
    const bool atEnd = (m_heads & HEAD_AT_END) != 0;
    const bool atStart = (m_heads & HEAD_AT_START) != 0;
    // Heads never outgrow the line: two of them meet in its middle.
    const double whole = std::hypot(end.x() - start.x(), end.y() - start.y());
    const double wanted = static_cast<double>(m_head.cx) * width;
    const double length = std::min(wanted, atEnd && atStart ? whole / 2.0 : whole);
    const double half =
        wanted > 0.0 ? static_cast<double>(m_head.cy) * width / 2.0 * (length / wanted) : 0.0;
    const QPointF back = along * length;
    const auto head = [&](const QPointF &tip, const QPointF &base) {
        const QPointF triangle[] = {tip, base + across * half, base - across * half};
        canvas.FillPolygon(triangle, m_colour);
    };
    if (atEnd)
        head(end, end - back);
    if (atStart)
        head(start, start + back);
    // The shaft ends inside the heads: a thick one would blunt their tips.
    if (atEnd)
        end -= back;
    if (atStart)
        start += back;
    if (whole > 0.0 && length < whole && (start != end))
        canvas.Line(start, end, LinePen());
    else if (m_heads == 0 || whole <= 0.0)
        canvas.Line(start, end, LinePen());
}

void CDrawArrowLineObj::CopyShape(const CDrawObj &other) {
    SegmentObj::CopyShape(other);
    if (const auto *arrow = dynamic_cast<const CDrawArrowLineObj *>(&other)) {
        m_head = arrow->m_head;
        m_heads = arrow->m_heads;
    }
}

int CDrawArrowLineObj::GetDrawMargin() const {
    const int width = std::min(m_penWidth, tavix::Pen::MAX_WIDTH);
    return width + width * m_head.cy;
}

void CDrawArrowLineObj::WriteKeys(tavix::KeyWriter &writer) const {
    SegmentObj::WriteKeys(writer);
    writer.Pair("HEAD", m_head.cx, m_head.cy);
    writer.Integer("HEADS", m_heads);
}

void CDrawArrowLineObj::ReadKey(const tavix::KeyEntry &entry) {
    if (CSize head; entry.key == "HEAD") {
        if (tavix::ReadSize(entry.value, head) && std::min(head.cx, head.cy) >= 1 &&
            std::max(head.cx, head.cy) <= MAX_HEAD)
            m_head = head;
    } else if (std::int32_t heads = 0; entry.key == "HEADS") {
        if (tavix::ReadInteger(entry.value, heads) && heads >= 0 &&
            heads <= (HEAD_AT_END | HEAD_AT_START))
            m_heads = heads;
    } else {
        SegmentObj::ReadKey(entry);
    }
}

void CDrawReticleLineObj::Draw(ObjectCanvas &canvas) const {
    if (m_penStyle == PS_NULL)
        return;
    const QPointF start = canvas.Centre(m_anchor, m_penWidth);
    const QPointF end = canvas.Centre(m_end, m_penWidth);
    canvas.Line(start, end, LinePen());

    const QPointF middle = (start + end) / 2.0;
    const QPointF along = UnitVector(start, end);
    const double half = std::hypot(end.x() - start.x(), end.y() - start.y()) / 2.0;
    const double step = RoundStep((MARK_DISTANCE + m_penWidth - 1) / canvas.Zoom()) * canvas.Zoom();
    // Only the marks near the repainted part: the line may be of any length.
    const QPointF near = QPointF(canvas.Clip().center()) - middle;
    const double place = near.x() * along.x() + near.y() * along.y();
    const double reach =
        std::hypot(canvas.Clip().width(), canvas.Clip().height()) / 2.0 + LONG_MARK + m_penWidth;
    const double first = std::ceil(std::max(-half, place - reach) / step);
    const double last = std::floor(std::min(half, place + reach) / step);
    // At an enormous zoom the marks are nowhere that can be counted to.
    if (!std::isfinite(place) || !(std::abs(first) < MOST_MARKS && std::abs(last) < MOST_MARKS))
        return;
    const double snap = (m_penWidth % 2) / 2.0;
    const auto lastMark = static_cast<std::int64_t>(last);
    for (auto i = static_cast<std::int64_t>(first); i <= lastMark; ++i) {
        const bool isLong = i % MARKS_PER_LONG_MARK == 0;
        QPointF at = middle + along * (static_cast<double>(i) * step);
        at = {std::floor(at.x()) + snap, std::floor(at.y()) + snap};
        DrawTick(canvas, at, isLong ? LONG_MARK : SHORT_MARK);
    }
}

int CDrawReticleLineObj::GetDrawMargin() const {
    return SegmentObj::GetDrawMargin() + static_cast<int>(LONG_MARK) + 1;
}
