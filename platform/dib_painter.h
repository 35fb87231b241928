/// Draws a device-independent bitmap through a QPainter, pixel by pixel as the display rule says.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>

class QPainter;
class QRectF;

namespace tavix {

/// A bitmap in memory, not owned. Row y of the picture, counted from its top, starts at
/// bits + y * stride; the stride is negative for bitmaps that are stored bottom-up.
struct DibView {
    const unsigned char *bits;
    int width;
    int height;
    std::ptrdiff_t stride;
    int bitCount;                 ///< 8 (through the palette), 24 (blue, green, red) or 32.
    const std::uint32_t *palette; ///< 256 colours 0xFFRRGGBB of an 8-bit bitmap.
};

/// How a target pixel gets its colour.
enum class DibSampling {
    Nearest, ///< The source pixel under the target pixel's centre; always sharp.
    Average, ///< Where the target is smaller: the mean of the source pixels it covers.
};

/// First target pixel of source pixel i where source pixel 0 starts at origin and each is scale
/// wide: pixel i covers the target pixels whose centres lie in [origin + i * scale,
/// origin + (i + 1) * scale). Everything that must meet the picture's pixels exactly uses this.
TAVIX_API int FirstTargetPixel(double origin, double scale, int i);

/// Draws the bitmap into the target rectangle (logical coordinates of the painter). Only the part
/// inside the painter's clip is touched. Under a painter that scales, as on a high-resolution
/// screen, the rule holds for device pixels.
TAVIX_API void DrawDib(QPainter &painter, const DibView &dib, const QRectF &target,
                       DibSampling sampling);

} // namespace tavix
