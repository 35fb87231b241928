/// Kernels over rows of pixels, of which the picture on the screen is made. Each has one body for
/// every instruction set, chosen when the program runs; none needs alignment.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>

namespace tavix {

/// Fractional bits of the weights of rows and of columns: the weights of a target pixel sum to
/// 1 << that.
inline constexpr int ROW_WEIGHT_BITS = 8;
inline constexpr int COLUMN_WEIGHT_BITS = 14;

/// Grey levels, or pixels of blue, green and red, as opaque screen pixels 0xFFRRGGBB.
TAVIX_API void ExpandGrey(const std::uint8_t *grey, std::size_t count, std::uint32_t *target);
TAVIX_API void ExpandColour(const std::uint8_t *pixels, std::size_t count, std::uint32_t *target);

/// Multiplies the colours of pixels 0xAARRGGBB by their alpha, as QImage converts them.
TAVIX_API void Premultiply(const std::uint32_t *pixels, std::size_t count, std::uint32_t *target);
/// Lays pixels with premultiplied alpha over opaque ones, as QPainter does.
TAVIX_API void ComposeOver(const std::uint32_t *premultiplied, std::size_t count,
                           std::uint32_t *target);

/// Takes rows of 1, 3 or 4 channels apart into one plane each, and puts them together.
TAVIX_API void SplitChannels(const std::uint8_t *pixels, std::size_t count, int channels,
                             std::uint8_t *const planes[]);
TAVIX_API void JoinChannels(const std::uint8_t *const planes[], std::size_t count, int channels,
                            std::uint8_t *pixels);

/// The sums of blocks of two by two out of two rows of 2 * count values.
TAVIX_API void SumBlocks(const std::uint8_t *upper, const std::uint8_t *lower, std::size_t count,
                         std::uint16_t *sums);
TAVIX_API void SumBlocks(const std::uint16_t *upper, const std::uint16_t *lower, std::size_t count,
                         std::uint16_t *sums);
/// sums / 2^shift rounded to the nearest, halves up. The shift is 1 to 8 and the means fit bytes.
TAVIX_API void MeanOfSums(const std::uint16_t *sums, std::size_t count, int shift,
                          std::uint8_t *means);

/// The weighted sum of rows, less 32768. The weights sum to 1 << ROW_WEIGHT_BITS.
TAVIX_API void WeighRows(const std::uint8_t *const *rows, const std::uint16_t *weights,
                         std::size_t rowCount, std::size_t count, std::int16_t *sums);

/// Which columns make a run of target pixels: pixel i is made of 4 * quads neighbours from first[i]
/// on. Quad q has its weights from weights[(q * count + i) * 4] on; the weights of a pixel sum to
/// 1 << COLUMN_WEIGHT_BITS.
struct ColumnWeights {
    const std::int32_t *first;
    const std::int16_t *weights;
    std::size_t quads;
    std::size_t count;
};

/// The grey levels of the target pixels from weighted rows of one channel.
TAVIX_API void WeighGreyColumns(const std::int16_t *sums, const ColumnWeights &columns,
                                std::uint8_t *target);
/// The screen pixels from weighted rows of 3 channels (then opaque) or 4. Reads up to two values
/// behind the last quad's.
TAVIX_API void WeighColourColumns(const std::int16_t *sums, const ColumnWeights &columns,
                                  int channels, std::uint32_t *target);

} // namespace tavix
