#include "TAVIX20/display/draw_obj.h"

#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/support/wrap.h"

#include <QColor>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cstring>

namespace {

QColor ToQColor(COLORREF colour) {
    return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

Qt::PenStyle ToQtStyle(int style) {
    switch (style) {
    case PS_DASH:
        return Qt::DashLine;
    case PS_DOT:
        return Qt::DotLine;
    case PS_DASHDOT:
        return Qt::DashDotLine;
    case PS_DASHDOTDOT:
        return Qt::DashDotDotLine;
    case PS_NULL:
        return Qt::NoPen;
    default:
        return Qt::SolidLine;
    }
}

/// The frame of the given thickness along the inside of the rectangle's edges, pixel by pixel.
void FillFrame(QPainter &painter, const QRect &outer, int thickness, const QColor &colour) {
    const QRect inner = outer.adjusted(thickness, thickness, -thickness, -thickness);
    if (inner.width() <= 0 || inner.height() <= 0) {
        painter.fillRect(outer, colour);
        return;
    }
    painter.fillRect(outer.x(), outer.y(), outer.width(), thickness, colour);
    painter.fillRect(outer.x(), inner.bottom() + 1, outer.width(), thickness, colour);
    painter.fillRect(outer.x(), inner.y(), thickness, inner.height(), colour);
    painter.fillRect(inner.right() + 1, inner.y(), thickness, inner.height(), colour);
}

} // namespace

void CDrawObj::SetStyle(int width, int style, COLORREF colour) {
    m_penWidth = std::max(1, width);
    m_penStyle = style;
    m_colour = colour;
}

void CDrawObj::SetName(const char *name) {
    std::strncpy(m_name, name ? name : "", sizeof m_name - 1);
    m_name[sizeof m_name - 1] = '\0';
}

CDrawRectObj::CDrawRectObj(int left, int top, int width, int height)
    : CDrawObj(CPoint(left, top)), m_size(width, height) {}

void CDrawRectObj::Draw(CDC &dc, const tavix::ViewTransform &view) const {
    CRect pixels(m_anchor.x, m_anchor.y, tavix::WrapAdd(m_anchor.x, m_size.cx),
                 tavix::WrapAdd(m_anchor.y, m_size.cy));
    pixels.NormalizeRect();
    CRect painted = view.PaintedRect(pixels);
    // Far below one client pixel per image pixel a small rectangle would vanish.
    painted.right = std::max(painted.right, painted.left + 1);
    painted.bottom = std::max(painted.bottom, painted.top + 1);

    QPainter &painter = *dc.GetPainter();
    if (m_penStyle == PS_SOLID) {
        FillFrame(painter, painted, m_penWidth, ToQColor(m_colour));
        return;
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(ToQColor(m_colour), m_penWidth, ToQtStyle(m_penStyle), Qt::FlatCap, Qt::MiterJoin));
    const int before = m_penWidth / 2;
    const int behind = m_penWidth - before;
    painter.drawRect(QRect(painted).adjusted(before, before, -behind, -behind));
}
