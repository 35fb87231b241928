#include "TAVIX20/display/pixel_grid.h"

#include "TAVIX20/platform/dib_painter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <cmath>

namespace tavix {

namespace {

/// Tells itself from every grey level, and from most colours.
constexpr QRgb LINE = qRgb(70, 110, 170);

struct Range {
    int first;
    int last;
};

/// The picture pixels that show between two device positions.
Range PixelsBetween(double origin, double scale, int size, int begin, int last) {
    const auto at = [=](int position) {
        const double pixel = std::floor((position + 0.5 - origin) / scale);
        return static_cast<int>(std::clamp(pixel, 0.0, size - 1.0));
    };
    return {at(begin), at(last)};
}

/// Three digits fit the width, and the numbers of all channels the height.
int FontSize(double scale, int channels) {
    constexpr double largest = 60.0;
    const double fitting = channels == 1 ? std::min(scale * 0.42, 0.3 * scale + 8.0) : scale * 0.3;
    return static_cast<int>(std::min(fitting, largest));
}

} // namespace

void PixelGrid::Paint(QPainter &painter, const QRegion &exposed, const PixelRows &picture,
                      const QPointF &corner, double zoom) {
    const QTransform toDevice = painter.deviceTransform();
    const double scale = zoom * toDevice.m11();
    if (!picture.data || toDevice.type() > QTransform::TxScale || scale < LEAST_SCALE)
        return;
    const QPointF origin = toDevice.map(corner);
    const int fontSize = FontSize(scale, picture.Channels());
    if (fontSize != m_fontSize) {
        m_fontSize = fontSize;
        m_numbers = {};
    }

    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    const auto left = [&](int x) { return FirstTargetPixel(origin.x(), scale, x); };
    const auto top = [&](int y) { return FirstTargetPixel(origin.y(), scale, y); };
    const QRect whole(left(0), top(0), left(picture.width) - left(0), top(picture.height) - top(0));
    for (const QRect &rect : exposed) {
        const QRect part = toDevice.mapRect(QRectF(rect)).toAlignedRect() & whole;
        if (part.isEmpty())
            continue;
        const Range columns =
            PixelsBetween(origin.x(), scale, picture.width, part.left(), part.right());
        const Range rows =
            PixelsBetween(origin.y(), scale, picture.height, part.top(), part.bottom());
        painter.setClipRect(part);
        for (int x = columns.first; x <= columns.last; ++x)
            painter.fillRect(left(x), part.top(), 1, part.height(), QColor(LINE));
        for (int y = rows.first; y <= rows.last; ++y) {
            painter.fillRect(part.left(), top(y), part.width(), 1, QColor(LINE));
            for (int x = columns.first; x <= columns.last; ++x)
                PaintValues(
                    painter, picture.Row(y) + std::ptrdiff_t{x} * picture.Channels(),
                    picture.Channels(),
                    {left(x) + 1, top(y) + 1, left(x + 1) - left(x) - 1, top(y + 1) - top(y) - 1});
        }
    }
    painter.restore();
}

void PixelGrid::PaintValues(QPainter &painter, const std::uint8_t *pixel, int channels,
                            const QRect &block) {
    const bool isBright = (channels == 1 ? pixel[0] : qGray(pixel[2], pixel[1], pixel[0])) > 127;
    for (int line = 0; line < channels; ++line) {
        // Blue is stored first and written last.
        const QImage &number = Number(pixel[channels - 1 - line], isBright);
        const int middle =
            block.top() + static_cast<int>(block.height() * ((line + 0.5) / channels));
        painter.drawImage(block.left() + (block.width() - number.width() + 1) / 2,
                          middle - number.height() / 2, number);
    }
}

/// The value in digits, cut to its ink from top to bottom.
const QImage &PixelGrid::Number(int value, bool isBright) {
    QImage &number = m_numbers[isBright ? 1 : 0][static_cast<std::size_t>(value)];
    if (!number.isNull())
        return number;
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, m_fontSize));
    const QFontMetrics metrics(font);
    const QString text = QString::number(value);
    // All digits are as high as a zero, give or take a pixel.
    const QRect ink = metrics.tightBoundingRect(QStringLiteral("0")).adjusted(0, -1, 0, 1);
    number =
        QImage(metrics.horizontalAdvance(text), ink.height(), QImage::Format_ARGB32_Premultiplied);
    number.fill(Qt::transparent);
    QPainter painter(&number);
    painter.setFont(font);
    painter.setPen(isBright ? Qt::black : Qt::white);
    painter.drawText(0, -ink.top(), text);
    return number;
}

} // namespace tavix
