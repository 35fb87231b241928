/// Lines between the pixels of a picture and their values, where pixels are shown large enough.
#pragma once

#include "TAVIX20/display/picture_pyramid.h"

#include <QImage>
#include <QPointF>

#include <array>

class QPainter;
class QRegion;

namespace tavix {

/// Lines lie on the first row and column of device pixels of each picture pixel. A grey level is
/// one number, a colour three, red, green and blue from the top down; black on bright pixels, white
/// on dark ones. Numbers are drawn once a size and then copied.
class TAVIX_API PixelGrid {
public:
    /// Device pixels a picture pixel needs for its values; nothing is painted below.
    static constexpr double LEAST_SCALE = 24.0;

    /// Paints the exposed part (logical coordinates) over a picture, grey or colour, that stands as
    /// PicturePainter::Paint put it. Nothing on a painter that rotates or shears.
    void Paint(QPainter &painter, const QRegion &exposed, const PixelRows &picture,
               const QPointF &corner, double zoom);

private:
    const QImage &Number(int value, bool isBright);
    void PaintValues(QPainter &painter, const std::uint8_t *pixel, int channels,
                     const QRect &block);

    int m_fontSize = 0;                               ///< Of the numbers kept, in device pixels.
    std::array<std::array<QImage, 256>, 2> m_numbers; ///< White, then black.
};

} // namespace tavix
