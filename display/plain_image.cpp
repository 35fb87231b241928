#include "TAVIX20/display/plain_image.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QTransform>

#include <cmath>

namespace tavix {

namespace {

/// Positions this near to a whole number are meant to be one.
constexpr double TOLERANCE = 1e-6;

bool IsWhole(double value) {
    return std::abs(value - std::round(value)) < TOLERANCE;
}

} // namespace

std::optional<PlainImage> PlainImage::Under(const QPainter &painter) {
    const QPaintEngine *const engine = painter.paintEngine();
    const QTransform &toDevice = painter.deviceTransform();
    if (!engine || engine->type() != QPaintEngine::Raster ||
        engine->paintDevice()->devType() != QInternal::Image || painter.hasClipping() ||
        painter.opacity() != 1.0 ||
        painter.compositionMode() != QPainter::CompositionMode_SourceOver ||
        toDevice.type() > QTransform::TxTranslate || !IsWhole(toDevice.dx()) ||
        !IsWhole(toDevice.dy()))
        return std::nullopt;
    auto *const image = static_cast<QImage *>(engine->paintDevice());
    const bool hasScreenPixels = image->format() == QImage::Format_RGB32 ||
                                 image->format() == QImage::Format_ARGB32_Premultiplied;
    // A detached image hands out the very bits that the painter writes to.
    if (!hasScreenPixels || !image->isDetached())
        return std::nullopt;
    const QPoint origin(qRound(toDevice.dx()), qRound(toDevice.dy()));
    const QRegion clip = engine->systemClip(); // What a widget may touch in its window.
    PlainImage plain;
    plain.m_stride =
        static_cast<std::ptrdiff_t>(image->bytesPerLine()) / std::ptrdiff_t{sizeof(QRgb)};
    plain.m_origin =
        reinterpret_cast<std::uint32_t *>(image->bits()) + origin.y() * plain.m_stride + origin.x();
    plain.m_writable =
        (clip.isEmpty() ? QRegion(image->rect()) : clip & image->rect()).translated(-origin);
    return plain;
}

std::optional<PlainFiller> PlainFiller::Under(const QPainter &painter) {
    const std::optional<PlainImage> image = PlainImage::Under(painter);
    if (!image || image->Writable().rectCount() != 1)
        return std::nullopt;
    return PlainFiller(*image);
}

PlainFiller::PlainFiller(const PlainImage &image)
    : m_image(image),
      m_left(image.Writable().boundingRect().left()),
      m_top(image.Writable().boundingRect().top()),
      m_right(image.Writable().boundingRect().right()),
      m_bottom(image.Writable().boundingRect().bottom()) {}

} // namespace tavix
