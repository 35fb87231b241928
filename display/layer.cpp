#include "TAVIX20/display/layer.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/image/image_interop.h"

#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace tavix {

namespace {

constexpr int OPAQUE = 255;
/// QPainter's coordinates end at 2^15.
constexpr int MAX_PART_SIDE = 1 << 14;
/// Pixels that are drawn apart before they are blended.
constexpr int MAX_DRAWN_PIXELS = 1 << 20;

std::atomic<int> s_alpha = OPAQUE;

QRgb Pixel(unsigned long colour, int alpha) {
    const auto value = static_cast<COLORREF>(colour);
    return qRgba(GetRValue(value), GetGValue(value), GetBValue(value), alpha);
}

/// Source over target by the rule of Porter and Duff, both with colours that are not multiplied by
/// the alpha, correctly rounded.
QRgb Over(QRgb source, int alpha, QRgb target) {
    const int kept = qAlpha(target) * (OPAQUE - alpha);
    const int laid = alpha * OPAQUE;
    const int total = kept + laid;
    if (total == 0)
        return target;
    const auto mix = [=](int over, int under) {
        return (over * laid + under * kept + total / 2) / total;
    };
    return qRgba(mix(qRed(source), qRed(target)), mix(qGreen(source), qGreen(target)),
                 mix(qBlue(source), qBlue(target)), (total + OPAQUE / 2) / OPAQUE);
}

/// The picture's place: whole pixels, which may lie outside the range of int.
QRectF FitInto(CPoint corner, CSize box, const QSize &picture) {
    const double width = std::abs(static_cast<double>(box.cx));
    const double height = std::abs(static_cast<double>(box.cy));
    const double left = corner.x + std::min(0.0, static_cast<double>(box.cx));
    const double top = corner.y + std::min(0.0, static_cast<double>(box.cy));
    const double scale = std::min(width / picture.width(), height / picture.height());
    const QSizeF fitted(std::max(1.0, std::round(picture.width() * scale)),
                        std::max(1.0, std::round(picture.height() * scale)));
    return {QPointF(left + std::floor((width - fitted.width()) / 2.0),
                    top + std::floor((height - fitted.height()) / 2.0)),
            fitted};
}

} // namespace

void Layer::SetAlpha(int alpha) {
    s_alpha = alpha & OPAQUE;
}

void Layer::Reset(CSize size) {
    Clear();
    m_size = size;
}

void Layer::Clear() {
    m_pixels = QImage();
}

/// Makes sure that there are pixels. The system gives pages that are 0 when they are first used.
bool Layer::Allocate() {
    if (!m_pixels.isNull())
        return true;
    if (m_size.cx < 1 || m_size.cy < 1)
        return false;
    const auto width = static_cast<std::size_t>(m_size.cx);
    void *const memory = std::calloc(static_cast<std::size_t>(m_size.cy), width * sizeof(QRgb));
    if (!memory)
        return false;
    m_pixels = QImage(static_cast<uchar *>(memory), m_size.cx, m_size.cy,
                      static_cast<qsizetype>(width * sizeof(QRgb)), QImage::Format_ARGB32,
                      std::free, memory);
    if (m_pixels.isNull())
        std::free(memory);
    return !m_pixels.isNull();
}

void Layer::SetPoints(std::span<const tagPOINT> points, unsigned long colour) {
    const auto isInside = [size = m_size](const tagPOINT &point) {
        return point.x >= 0 && point.y >= 0 && point.x < size.cx && point.y < size.cy;
    };
    const auto first = std::find_if(points.begin(), points.end(), isInside);
    if (first == points.end() || !Allocate())
        return;
    const QRgb value = Pixel(colour, s_alpha);
    auto *const pixels = reinterpret_cast<QRgb *>(m_pixels.bits());
    const std::ptrdiff_t width = m_size.cx;
    for (const tagPOINT &point : std::span(first, points.end()))
        if (isInside(point))
            pixels[point.y * width + point.x] = value;
}

void Layer::Paint(const CRect &bounds, const std::function<void(ObjectCanvas &canvas)> &draw) {
    const CPoint first(std::max(bounds.left, 0), std::max(bounds.top, 0));
    const CPoint last(std::min(bounds.right, m_size.cx - 1),
                      std::min(bounds.bottom, m_size.cy - 1));
    if (first.x > last.x || first.y > last.y)
        return;
    ViewTransform transform;
    transform.SetImageSize(m_size);
    transform.SetZoom(1.0);
    CanvasStorage storage;
    PaintParts({first, last}, [&](QPainter &painter, const QRect &part) {
        transform.SetClientSize(part.size());
        transform.SetScroll(part.topLeft());
        ObjectCanvas canvas(painter, transform, {QPoint(), part.size()}, storage);
        draw(canvas);
    });
}

void Layer::PaintPicture(CPoint corner, CSize size, const CTavixImage &picture) {
    QImage image = ViewAsQImage(picture);
    if (image.isNull() || size.cx == 0 || size.cy == 0)
        return;
    const QRectF place = FitInto(corner, size, image.size());
    const QRectF visible = place & QRectF(0, 0, m_size.cx, m_size.cy);
    if (visible.isEmpty())
        return;
    // QPainter only interpolates between neighbours, which leaves out pixels of larger pictures.
    if (place.width() < image.width() || place.height() < image.height())
        image =
            image.scaled(place.size().toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.convertTo(QImage::Format_RGB32);
    const double scaleX = image.width() / place.width();
    const double scaleY = image.height() / place.height();
    PaintParts(visible.toRect(), [&](QPainter &painter, const QRect &part) {
        const QPointF from = part.topLeft() - place.topLeft();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(QPointF(), part.size()), image,
                          QRectF(from.x() * scaleX, from.y() * scaleY, part.width() * scaleX,
                                 part.height() * scaleY));
    });
}

/// Has the area painted part by part, each by a painter of its own. Opaque shapes go straight into
/// the layer; others are drawn apart and then blended as a whole.
void Layer::PaintParts(const QRect &area,
                       const std::function<void(QPainter &painter, const QRect &part)> &paint) {
    const int alpha = s_alpha;
    if (alpha == 0 || !Allocate())
        return;
    const int width = std::min(area.width(), MAX_PART_SIDE);
    const int height = alpha == OPAQUE ? MAX_PART_SIDE : std::max(1, MAX_DRAWN_PIXELS / width);
    for (int y = area.top(); y <= area.bottom(); y += height)
        for (int x = area.left(); x <= area.right(); x += width) {
            const QRect part = area & QRect(x, y, width, height);
            if (alpha == OPAQUE) {
                QImage target(m_pixels.scanLine(y) + x * std::ptrdiff_t{sizeof(QRgb)}, part.width(),
                              part.height(), m_pixels.bytesPerLine(), m_pixels.format());
                QPainter painter(&target);
                paint(painter, part);
                continue;
            }
            QImage drawn(part.size(), QImage::Format_ARGB32_Premultiplied);
            if (drawn.isNull())
                return;
            drawn.fill(Qt::transparent);
            QPainter painter(&drawn);
            paint(painter, part);
            painter.end();
            Blend(drawn, part.topLeft(), alpha);
        }
}

/// Lays what was drawn over the pixels from the corner on.
void Layer::Blend(const QImage &drawn, const QPoint &corner, int alpha) {
    for (int y = 0; y < drawn.height(); ++y) {
        const auto *const source = reinterpret_cast<const QRgb *>(drawn.constScanLine(y));
        QRgb *const target =
            reinterpret_cast<QRgb *>(m_pixels.scanLine(corner.y() + y)) + corner.x();
        for (int x = 0; x < drawn.width(); ++x) {
            const int coverage = qAlpha(source[x]);
            if (coverage == 0)
                continue;
            const int covered = (alpha * coverage + OPAQUE / 2) / OPAQUE;
            target[x] = Over(qUnpremultiply(source[x]), covered, target[x]);
        }
    }
}

} // namespace tavix
