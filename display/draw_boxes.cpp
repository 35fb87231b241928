#include "TAVIX20/display/draw_boxes.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include <algorithm>

namespace {

using tavix::Saturate;

/// Which edges a handle moves: -1 the left or top one, 1 the right or bottom one.
struct HandleSides {
    int x;
    int y;
};
constexpr HandleSides SIDES[tavix::BoxObj::HANDLES] = {{-1, -1}, {0, -1}, {1, -1}, {1, 0},
                                                       {1, 1},   {0, 1},  {-1, 1}, {-1, 0}};

/// The first and last pixel of a side; one pixel for a size of 0.
struct Side {
    std::int64_t first;
    std::int64_t last;

    Side(std::int64_t start, std::int64_t size)
        : first(size < 0 ? start + size : start),
          last(std::max(first, (size < 0 ? start : start + size) - 1)) {}
};

std::int32_t Along(std::int32_t first, std::int32_t last, int side) {
    if (side != 0)
        return side < 0 ? first : last;
    return static_cast<std::int32_t>((std::int64_t{first} + last) / 2);
}

/// Moves one edge of a side as far as it may go.
void MoveEdge(std::int32_t &first, std::int32_t &last, int side, std::int32_t to) {
    if (side < 0)
        first = std::min(to, last);
    else if (side > 0)
        last = std::max(to, first);
}

/// The block of the box on the screen.
QRect ClientBox(const tavix::ObjectCanvas &canvas, const CPoint &anchor, const CSize &size) {
    const Side x(anchor.x, size.cx);
    const Side y(anchor.y, size.cy);
    // A box without pixels has a block without width; the canvas gives it one client pixel.
    return canvas.Block(x.first, y.first, size.cx == 0 ? x.first : x.last + 1,
                        size.cy == 0 ? y.first : y.last + 1);
}

} // namespace

namespace tavix {

CRect BoxObj::GetBoundRect() const {
    const Side x(m_anchor.x, m_size.cx);
    const Side y(m_anchor.y, m_size.cy);
    return {Saturate(x.first), Saturate(y.first), Saturate(x.last), Saturate(y.last)};
}

/// Handles of a small box keep to themselves, so that there is a middle by which it is moved.
int BoxObj::HitTest(int x, int y) const {
    const int handle = CDrawObj::HitTest(x, y);
    if (handle == 0)
        return 0;
    const CRect bounds = GetBoundRect();
    const std::int64_t side = std::min(std::int64_t{bounds.right} - bounds.left,
                                       std::int64_t{bounds.bottom} - bounds.top);
    const std::int64_t radius = std::clamp<std::int64_t>(side / 4, 1, HIT_RADIUS);
    const CPoint at = GetHandle(handle);
    const bool near =
        std::abs(std::int64_t{x} - at.x) <= radius && std::abs(std::int64_t{y} - at.y) <= radius;
    const bool inside =
        x >= bounds.left && x <= bounds.right && y >= bounds.top && y <= bounds.bottom;
    return near || !inside ? handle : 0;
}

bool BoxObj::HitTest(const tagPOINT &point) const {
    const CRect bounds = GetBoundRect();
    const bool inside = point.x >= bounds.left && point.x <= bounds.right &&
                        point.y >= bounds.top && point.y <= bounds.bottom;
    return inside || HitTest(point.x, point.y) != 0;
}

Qt::CursorShape BoxObj::GetHandleCursor(int handle) const {
    if (handle < 1 || handle > HANDLES)
        return Qt::ArrowCursor;
    const HandleSides sides = SIDES[handle - 1];
    if (sides.x == 0)
        return Qt::SizeVerCursor;
    if (sides.y == 0)
        return Qt::SizeHorCursor;
    return sides.x == sides.y ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

CPoint BoxObj::GetHandle(int index) const {
    if (index > HANDLES)
        return {-1, -1};
    const CRect bounds = GetBoundRect();
    const HandleSides sides = SIDES[std::max(index, 1) - 1];
    return {Along(bounds.left, bounds.right, sides.x), Along(bounds.top, bounds.bottom, sides.y)};
}

void BoxObj::MoveTo(const tagPOINT &point) {
    Shift(std::int64_t{point.x} - m_anchor.x, std::int64_t{point.y} - m_anchor.y);
}

void BoxObj::Offset(const tagPOINT &delta) {
    Shift(delta.x, delta.y);
}

void BoxObj::Shift(std::int64_t dx, std::int64_t dy) {
    const CRect bounds = GetBoundRect();
    m_anchor = {Saturate(m_anchor.x + LimitShift(dx, bounds.left, bounds.right)),
                Saturate(m_anchor.y + LimitShift(dy, bounds.top, bounds.bottom))};
    Changed();
}

void BoxObj::MoveHandleTo(int handle, const tagPOINT &point) {
    if (handle < 1 || handle > HANDLES)
        return;
    CRect bounds = GetBoundRect();
    const HandleSides sides = SIDES[handle - 1];
    MoveEdge(bounds.left, bounds.right, sides.x, point.x);
    MoveEdge(bounds.top, bounds.bottom, sides.y, point.y);
    m_anchor = bounds.TopLeft();
    m_size = {Saturate(std::int64_t{bounds.right} - bounds.left + 1),
              Saturate(std::int64_t{bounds.bottom} - bounds.top + 1)};
    Changed();
}

void BoxObj::CopyShape(const CDrawObj &other) {
    if (const auto *box = dynamic_cast<const BoxObj *>(&other))
        m_size = box->m_size;
}

void BoxObj::WriteKeys(KeyWriter &writer) const {
    writer.Text("SHAPE", Shape());
    writer.Pair("POINT", m_anchor.x, m_anchor.y);
    writer.Pair("SIZE", m_size.cx, m_size.cy);
    WritePenKeys(writer);
}

void BoxObj::ReadKey(const KeyEntry &entry) {
    if (entry.key == "POINT")
        ReadPoint(entry.value, m_anchor);
    else if (entry.key == "SIZE")
        ReadSize(entry.value, m_size);
    else
        CDrawObj::ReadKey(entry);
}

} // namespace tavix

void CDrawRectObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.Frame(ClientBox(canvas, m_anchor, m_size), {m_colour, m_penWidth, m_penStyle});
}

void CFillRectObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.Fill(ClientBox(canvas, m_anchor, m_size), m_colour);
}

void CDrawEllipseObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.Ellipse(ClientBox(canvas, m_anchor, m_size), {m_colour, m_penWidth, m_penStyle});
}

void CFillEllipseObj::Draw(tavix::ObjectCanvas &canvas) const {
    canvas.FillEllipse(ClientBox(canvas, m_anchor, m_size), m_colour);
}
