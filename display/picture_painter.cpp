#include "TAVIX20/display/picture_painter.h"

#include "TAVIX20/display/picture_kernels.h"

#include <QImage>
#include <QPainter>
#include <QRegion>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace tavix {

namespace {

/// Rows that are made and handed to the painter at a time: few enough to stay in the cache between
/// both.
constexpr int BAND_ROWS = 32;
/// Rows of picture and layer that are sampled before they are put together.
constexpr int LAYERED_ROWS = 128;

QImage AsImage(const PixelRows &pixels) {
    const QImage::Format format = pixels.kind == PixelKind::Grey     ? QImage::Format_Grayscale8
                                  : pixels.kind == PixelKind::Colour ? QImage::Format_BGR888
                                  : pixels.kind == PixelKind::Premultiplied
                                      ? QImage::Format_ARGB32_Premultiplied
                                      : QImage::Format_ARGB32;
    return {pixels.data, pixels.width, pixels.height, pixels.stride, format};
}

} // namespace

void PicturePainter::SetPicture(const PixelRows &picture) {
    const PixelRows &layer = m_layerPyramid.Picture();
    if (layer.width != picture.width || layer.height != picture.height)
        m_layerPyramid.Reset({});
    m_pyramid.Reset(picture);
    m_frame.Drop();
}

void PicturePainter::SetLayer(const QImage *layer) {
    PixelRows pixels;
    const PixelRows &picture = m_pyramid.Picture();
    if (layer && layer->width() == picture.width && layer->height() == picture.height) {
        if (layer->format() == QImage::Format_ARGB32)
            pixels.kind = PixelKind::Straight;
        else if (layer->format() == QImage::Format_ARGB32_Premultiplied)
            pixels.kind = PixelKind::Premultiplied;
        if (pixels.kind != PixelKind::Grey)
            pixels = {layer->constBits(), picture.width, picture.height, layer->bytesPerLine(),
                      pixels.kind};
    }
    m_layerPyramid.Reset(pixels);
    m_frame.Drop();
}

void PicturePainter::Paint(QPainter &painter, const QRegion &exposed, const QPointF &corner,
                           double zoom, QRgb background) {
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() <= 0.0 ||
        !qFuzzyCompare(toDevice.m11(), toDevice.m22())) {
        PaintTransformed(painter, exposed, corner, zoom, background);
        return;
    }
    QRegion deviceExposed;
    for (const QRect &rect : exposed)
        deviceExposed += toDevice.mapRect(QRectF(rect)).toAlignedRect();
    const QPointF origin = toDevice.map(corner);
    m_place = {origin.x(), origin.y(), zoom * toDevice.m11()};
    const QRectF client = toDevice.mapRect(QRectF(painter.window()));

    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    PaintDevice(painter, deviceExposed, client.toAlignedRect(), background);
    painter.restore();
}

void PicturePainter::PaintDevice(QPainter &painter, const QRegion &exposed, const QRect &client,
                                 QRgb background) {
    const PixelRows &picture = m_pyramid.Picture();
    const QRect target = picture.data ? m_place.Target(picture) : QRect();
    QRegion parts = exposed & target;
    m_image = PlainImage::Under(painter);
    if (m_image)
        parts &= m_image->Writable();
    if (!parts.isEmpty()) {
        if (m_place.scale >= 1.0)
            PaintBlocks(painter, parts);
        else
            PaintFrame(painter, parts, target & (client | parts.boundingRect()));
    }
    for (const QRect &rect : exposed - target)
        painter.fillRect(rect, QColor(background));
}

/// Under rotation, shear or unequal scales there are no pixel blocks to be exact about: QPainter
/// maps the picture.
void PicturePainter::PaintTransformed(QPainter &painter, const QRegion &exposed,
                                      const QPointF &corner, double zoom, QRgb background) const {
    for (const QRect &rect : exposed)
        painter.fillRect(rect, QColor(background));
    for (const PixelRows &pixels : {m_pyramid.Picture(), m_layerPyramid.Picture()})
        if (pixels.data)
            painter.drawImage(QRectF(corner, QSizeF(pixels.width * zoom, pixels.height * zoom)),
                              AsImage(pixels));
}

template <typename Render>
void PicturePainter::PaintPart(QPainter &painter, const QRect &part, Render render) {
    if (m_image) {
        render(0, part.height(), m_image->At(part.left(), part.top()), m_image->Stride());
        return;
    }
    m_band.resize(static_cast<std::size_t>(part.width()) * BAND_ROWS);
    for (int row = 0; row < part.height(); row += BAND_ROWS) {
        const int rows = std::min(BAND_ROWS, part.height() - row);
        render(row, rows, m_band.data(), part.width());
        painter.drawImage(part.topLeft() + QPoint(0, row),
                          QImage(reinterpret_cast<const uchar *>(m_band.data()), part.width(), rows,
                                 QImage::Format_RGB32));
    }
}

void PicturePainter::PaintBlocks(QPainter &painter, const QRegion &parts) {
    for (const QRect &part : parts) {
        BlockSampler sampler(m_pyramid.Picture(), m_layerPyramid.Picture(), m_place, part);
        PaintPart(painter, part,
                  [&](int first, int count, std::uint32_t *target, std::ptrdiff_t stride) {
                      sampler.Render(first, count, target, stride);
                  });
    }
}

/// The frame's coordinates begin at the device pixel that the picture's corner lies in.
void PicturePainter::PaintFrame(QPainter &painter, const QRegion &parts, const QRect &window) {
    const QPointF whole(std::floor(m_place.x), std::floor(m_place.y));
    const QPoint offset = whole.toPoint();
    const Placement place{m_place.x - whole.x(), m_place.y - whole.y(), m_place.scale};
    if (place.x != m_framePlace.x || place.y != m_framePlace.y || place.scale != m_framePlace.scale)
        m_frame.Drop();
    m_framePlace = place;

    const QRect shown = window.translated(-offset);
    if (m_pyramid.Picture().kind == PixelKind::Grey && !m_layerPyramid.Picture().data)
        m_frame.Show(shown, PictureFrame::FillGrey([this](auto &part, auto *target, auto stride) {
                         SampleArea(m_pyramid, m_framePlace, part, target, stride);
                     }));
    else
        m_frame.Show(shown, PictureFrame::FillScreen([this](auto &part, auto *target, auto stride) {
                         SampleLayered(part, target, stride);
                     }));
    for (const QRect &part : parts) {
        const QRect kept = part.translated(-offset);
        PaintPart(painter, part,
                  [&](int first, int count, std::uint32_t *target, std::ptrdiff_t stride) {
                      m_frame.Render({kept.left(), kept.top() + first, kept.width(), count}, target,
                                     stride);
                  });
    }
}

/// Screen pixels of picture and layer.
void PicturePainter::SampleLayered(const QRect &part, std::uint32_t *target,
                                   std::ptrdiff_t stride) {
    const auto width = static_cast<std::size_t>(part.width());
    const bool isGrey = m_pyramid.Picture().kind == PixelKind::Grey;
    const bool hasLayer = m_layerPyramid.Picture().data != nullptr;
    std::vector<std::uint8_t> grey(isGrey ? width * LAYERED_ROWS : 0);
    std::vector<std::uint32_t> layer(hasLayer ? width * LAYERED_ROWS : 0);
    for (int top = part.top(); top <= part.bottom(); top += LAYERED_ROWS) {
        const int rows = std::min(LAYERED_ROWS, part.bottom() + 1 - top);
        const QRect band(part.left(), top, part.width(), rows);
        if (isGrey)
            SampleArea(m_pyramid, m_framePlace, band, grey.data(), part.width());
        else
            SampleArea(m_pyramid, m_framePlace, band, target, stride);
        if (hasLayer)
            SampleArea(m_layerPyramid, m_framePlace, band, layer.data(), part.width());
        for (std::size_t row = 0; row < static_cast<std::size_t>(rows); ++row, target += stride) {
            if (isGrey)
                ExpandGrey(grey.data() + row * width, width, target);
            if (hasLayer)
                ComposeOver(layer.data() + row * width, width, target);
        }
    }
}

} // namespace tavix
