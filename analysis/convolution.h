/// Square convolutions of byte images with integer weights.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>

namespace tavix {

/// Rows of pixels of 1 or 3 channels, changed in place; what lies between the rows is left alone.
struct PixelRows {
    std::uint8_t *bytes;
    int width;
    int height;
    std::ptrdiff_t stride;
    int channels;
};

/// size * size weights in row order; the weight at row size / 2, column size / 2 is that of the
/// pixel itself. Only their low 32 bits count.
struct Kernel {
    const long *weights;
    int size; ///< At least 1.
    long divisor;
    long offset;
};

/// Replaces each channel of every pixel by the weighted sum of its neighbours, divided by the
/// divisor (truncated toward 0; not at all for 0), plus the offset, limited to 0 to 255. Neighbours
/// in row 0 and column 0 and outside the image do not take part; those in the last row and column
/// do. False, and nothing changed, when memory runs out.
TAVIX_API bool Convolve(const PixelRows &image, const Kernel &kernel);

} // namespace tavix
