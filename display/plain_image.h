/// The pixels under a painter, for what writes them faster than QPainter.
#pragma once

#include "TAVIX20/platform/types.h"

#include <QRegion>
#include <QRgb>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

class QPainter;

namespace tavix {

/// An image in memory that a painter paints on, in the painter's logical coordinates. Whoever
/// writes opaque pixels within Writable changes what QPainter would change, and nothing else. Good
/// for as long as the painter's state and its device stay as they are.
class PlainImage {
public:
    /// Nothing unless each logical pixel is one pixel 0xFFRRGGBB of an image and opaque painting
    /// just replaces it: not on pixmaps and printers, nor for painters that clip, scale or blend.
    /// What the painter's widget may not touch in its window is no clip in this sense.
    static std::optional<PlainImage> Under(const QPainter &painter);

    const QRegion &Writable() const { return m_writable; }
    std::uint32_t *At(int x, int y) const { return m_origin + y * m_stride + x; }
    /// Pixels from row to row.
    std::ptrdiff_t Stride() const { return m_stride; }

private:
    PlainImage() = default;

    std::uint32_t *m_origin = nullptr; ///< Of the logical pixel (0, 0), which may lie outside.
    std::ptrdiff_t m_stride = 0;
    QRegion m_writable;
};

/// Fills rectangles and sets pixels in a plain image of which all of one rectangle is writable.
class PlainFiller {
public:
    /// Nothing where QPainter has to be used.
    static std::optional<PlainFiller> Under(const QPainter &painter);

    void Fill(const QRect &pixels, QRgb colour) const {
        const int left = std::max(pixels.left(), m_left);
        const int right = std::min(pixels.right(), m_right);
        const int bottom = std::min(pixels.bottom(), m_bottom);
        if (left > right)
            return;
        for (int y = std::max(pixels.top(), m_top); y <= bottom; ++y)
            std::fill(m_image.At(left, y), m_image.At(right, y) + 1, colour);
    }

    void Set(const QPoint &pixel, QRgb colour) const {
        if (pixel.x() >= m_left && pixel.x() <= m_right && pixel.y() >= m_top &&
            pixel.y() <= m_bottom)
            *m_image.At(pixel.x(), pixel.y()) = colour;
    }

private:
    explicit PlainFiller(const PlainImage &image);

    PlainImage m_image;
    int m_left;
    int m_top;
    int m_right;
    int m_bottom;
};

} // namespace tavix
