#include "TAVIX20/display/draw_obj.h"

#include "TAVIX20/display/draw_obj_array.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include <algorithm>
#include <cstring>

namespace {

/// Cut to the field, which always ends with a zero.
template <std::size_t Size>
void SetField(std::array<char, Size> &field, const char *text) {
    std::array<char, Size> cut{}; // The text may be the field's own.
    if (text)
        std::memcpy(cut.data(), text, strnlen(text, Size - 1));
    field = cut;
}

} // namespace

void CDrawObj::CopyFrom(const CDrawObj &other) {
    if (this == &other)
        return;
    SetName(other.GetName());
    m_anchor = other.m_anchor;
    m_penWidth = other.m_penWidth;
    m_penStyle = other.m_penStyle;
    m_colour = other.m_colour;
    m_fontSize = other.m_fontSize;
    m_fontFace = other.m_fontFace;
    CopyShape(other);
    Changed();
}

void CDrawObj::Draw(tavix::ObjectCanvas &) const {}

std::unique_ptr<CDrawObj> CDrawObj::Clone() const {
    std::unique_ptr<CDrawObj> copy(new CDrawObj);
    copy->CopyFrom(*this);
    return copy;
}

int CDrawObj::HitTest(int x, int y) const {
    const int count = GetHandleCount();
    int nearest = 0;
    std::int64_t least = HIT_RADIUS + 1;
    for (int handle = 1; handle <= count; ++handle) {
        const CPoint at = GetHandle(handle);
        const std::int64_t dx = static_cast<std::int64_t>(x) - at.x;
        const std::int64_t dy = static_cast<std::int64_t>(y) - at.y;
        const std::int64_t distance = std::max(std::abs(dx), std::abs(dy));
        if (distance < least) {
            least = distance;
            nearest = handle;
        }
    }
    return nearest;
}

bool CDrawObj::HitTest(const tagPOINT &point) const {
    return HitTest(point.x, point.y) != 0;
}

Qt::CursorShape CDrawObj::GetHandleCursor(int handle) const {
    return handle == 1 ? Qt::SizeAllCursor : Qt::ArrowCursor;
}

CPoint CDrawObj::GetHandle(int index) const {
    return index <= GetHandleCount() ? m_anchor : CPoint(-1, -1);
}

void CDrawObj::MoveTo(const tagPOINT &point) {
    m_anchor = point;
    Changed();
}

void CDrawObj::Offset(const tagPOINT &delta) {
    m_anchor = {tavix::Saturate(std::int64_t{m_anchor.x} + delta.x),
                tavix::Saturate(std::int64_t{m_anchor.y} + delta.y)};
    Changed();
}

void CDrawObj::MoveHandleTo(int handle, const tagPOINT &point) {
    if (handle == 1)
        MoveTo(point);
}

CRect CDrawObj::GetBoundRect() const {
    return {m_anchor.x, m_anchor.y, m_anchor.x, m_anchor.y};
}

int CDrawObj::GetDrawMargin() const {
    return std::min<int>(m_penWidth, tavix::Pen::MAX_WIDTH);
}

CString CDrawObj::GetObjectString() const {
    tavix::KeyWriter writer;
    WriteKeys(writer);
    return writer.Take();
}

void CDrawObj::SetObjectString(std::string_view list) {
    const CString current = GetObjectString();
    for (const tavix::KeyEntry &entry : tavix::ChangedKeys(list, current.GetString()))
        ReadKey(entry);
    Changed();
}

void CDrawObj::WriteKeys(tavix::KeyWriter &) const {}

void CDrawObj::WritePenKeys(tavix::KeyWriter &writer) const {
    writer.Colour("STROKE_COLOR", m_colour);
    writer.Integer("PEN_WIDTH", m_penWidth);
    writer.Integer("PEN_STYLE", m_penStyle);
}

void CDrawObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "STROKE_COLOR") {
        tavix::ReadColour(entry.value, m_colour);
    } else if (entry.key == "PEN_STYLE") {
        tavix::ReadInteger(entry.value, m_penStyle);
    } else if (std::int32_t width = 0;
               entry.key == "PEN_WIDTH" && tavix::ReadInteger(entry.value, width) && width >= 1) {
        m_penWidth = width;
    }
}

void CDrawObj::SetStyle(int width, int style, COLORREF colour) {
    m_penWidth = std::max(1, width);
    m_penStyle = style;
    m_colour = colour;
    Changed();
}

void CDrawObj::SetColor(COLORREF colour) {
    m_colour = colour;
    Changed();
}

void CDrawObj::SetName(const char *name) {
    CDrawObjArray *const array = m_array;
    if (array)
        array->UnlinkName(*this);
    SetField(m_name, name);
    if (array)
        array->LinkName(*this);
}

void CDrawObj::SetFont(int size, const char *face) {
    m_fontSize = size;
    SetField(m_fontFace, face);
    Changed();
}

void CDrawObj::Changed() {
    if (m_array)
        m_array->ObjectChanged(*this);
}
