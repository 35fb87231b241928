#include "TAVIX20/display/tools/tool_cursors.h"

#include <QCursor>
#include <QPainter>
#include <QPixmap>

namespace tavix {

namespace {

constexpr int SIDE = 32;

/// A cursor drawn twice, wide in white and fine in black, so that it shows on any picture.
template <typename Draw>
QCursor MakeCursor(QPoint hotSpot, Draw draw) {
    QPixmap pixmap(SIDE, SIDE);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    painter.setPen(QPen(Qt::black, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    painter.end();
    return QCursor(pixmap, hotSpot.x(), hotSpot.y());
}

} // namespace

QCursor EllipseCursor() {
    return MakeCursor({SIDE / 2, SIDE / 2}, [](QPainter &painter) {
        const QPointF centre(SIDE / 2 + 0.5, SIDE / 2 + 0.5);
        painter.drawEllipse(centre, 10, 10);
        painter.drawPoint(centre);
    });
}

QCursor DropperCursor() {
    return MakeCursor({2, SIDE - 3}, [](QPainter &painter) {
        painter.setBrush(Qt::white);
        painter.drawPolygon(
            QPolygonF{{2.5, 29.5}, {4.5, 23.5}, {14.5, 13.5}, {18.5, 17.5}, {8.5, 27.5}});
        painter.drawLine(QPointF(11.5, 10.5), QPointF(21.5, 20.5));
        painter.setBrush(Qt::black);
        painter.drawPolygon(
            QPolygonF{{14.5, 12.5}, {21.5, 4.5}, {26.5, 4.5}, {27.5, 9.5}, {19.5, 17.5}});
    });
}

} // namespace tavix
