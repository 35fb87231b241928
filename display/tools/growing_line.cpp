#include "TAVIX20/display/tools/growing_line.h"

#include "TAVIX20/display/view_transform.h"

#include <QPainter>
#include <QRect>

namespace tavix {

namespace {

constexpr int WIDTH = 2;
constexpr int EDGES = 4; ///< Width of the line with both edges.

} // namespace

void GrowingLine::Draw(QPainter &painter, std::span<const POINT> points, const ViewTransform &view,
                       QSize client) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QSize size = (QSizeF(client) * ratio).toSize();
    const CPoint corner = view.ImageToClient({0, 0});
    const bool goesOn = m_picture.size() == size && m_picture.devicePixelRatio() == ratio &&
                        m_corner == corner && m_zoom == view.Zoom() && m_drawn <= points.size();
    if (!goesOn) {
        m_picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
        m_picture.setDevicePixelRatio(ratio);
        m_picture.fill(Qt::transparent);
        m_corner = corner;
        m_zoom = view.Zoom();
        m_drawn = 0;
    }
    DrawPieces(points, view);
    painter.drawImage(0, 0, m_picture);
}

// The edges of a piece go below the pieces before it.
void GrowingLine::DrawPieces(std::span<const POINT> points, const ViewTransform &view) {
    if (m_drawn == points.size() || m_picture.isNull())
        return;
    QPainter painter(&m_picture);
    const QPen edges(Qt::black, EDGES, Qt::SolidLine, Qt::RoundCap);
    const QPen line(Qt::green, WIDTH, Qt::SolidLine, Qt::RoundCap);
    const QRect visible = painter.window();
    CPoint from = view.ImageToClient(points[m_drawn > 0 ? m_drawn - 1 : 0]);
    for (; m_drawn < points.size(); ++m_drawn) {
        const CPoint to = view.ImageToClient(points[m_drawn]);
        if ((to != from || m_drawn == 0) && Reach(from, to).intersects(visible)) {
            painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
            painter.setPen(edges);
            painter.drawLine(from.x, from.y, to.x, to.y);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
            painter.setPen(line);
            painter.drawLine(from.x, from.y, to.x, to.y);
        }
        from = to;
    }
}

QRect GrowingLine::Reach(const CPoint &from, const CPoint &to) {
    return QRect(QPoint(from.x, from.y), QPoint(to.x, to.y))
        .normalized()
        .adjusted(-EDGES, -EDGES, EDGES, EDGES);
}

} // namespace tavix
