/// Rows of a convolution: weighted sums of lines of pixels, divided, shifted and limited to
/// a byte. One body for every instruction set, chosen when the program runs.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavix {

/// Lines may be read, and results are written, up to this many pixels beyond the count.
inline constexpr std::size_t CONVOLUTION_OVERRUN = 1024;

/// sum / divisor, truncated toward 0, plus offset, limited to 0 to 255.
struct Scaling {
    std::int64_t divisor; ///< At least 1.
    std::int64_t offset;

    std::uint8_t Apply(std::int64_t sum) const;
};

/// Neighbours side by side: pixel x takes part with line[x] * weights[0] + line[x + 1] *
/// weights[1].
template <typename Pixel, typename Weight>
struct TapPair {
    const Pixel *line;
    Weight weights[2];
};
using BytePair = TapPair<std::uint8_t, std::int8_t>;
using WordPair = TapPair<std::int16_t, std::int16_t>;

/// The scaling of sums that fit 16 bits, with a multiplication in place of the division: for
/// magnitudes n below 2^15 and a divisor d with 2^s < d <= 2^(s + 1), n / d is
/// n * ceil(2^(16 + s) / d) >> (16 + s), since the multiplier is too large by less than
/// 2^(s + 1) / 2^(16 + s) of itself (Granlund and Montgomery, "Division by invariant integers using
/// multiplication", 1994).
struct TAVIX_API Scaling16 {
    /// Whether every sum of weights with this total magnitude can be scaled so.
    static bool Suits(std::int64_t weightMagnitude, const Scaling &scaling);
    /// Only where it suits; so below.
    explicit Scaling16(const Scaling &scaling);

    bool divides;
    std::uint16_t multiplier = 0;
    int shift = 0;
    std::int16_t offset;
};

/// The scaling of 32-bit sums. Sums are first limited to those whose result is in range or one
/// beyond. Where they and the divisor are at most 2^24, the quotient in single precision truncates
/// to the exact one: its rounding error is below the distance 1 / divisor to the next integer.
/// Where they are at most 2^21, a product does as well: the factor is 1 / divisor, too large by
/// 2^-22 of itself, which outweighs both roundings of at most 2^-24, and 2^21 times their sum is
/// below 1.
struct Scaling32 {
    static bool Suits(std::int64_t weightMagnitude, const Scaling &scaling);
    explicit Scaling32(const Scaling &scaling);

    bool multiplies;
    std::int32_t lowest;
    std::int32_t highest;
    float factor; ///< The reciprocal, or the divisor.
    std::int16_t offset;
};

/// out[x] for x < count; fast is what the scaling comes to.
void ConvolveRow(const std::vector<BytePair> &pairs, const Scaling &scaling, const Scaling16 &fast,
                 std::size_t count, std::uint8_t *out);
void ConvolveRow(const std::vector<WordPair> &pairs, const Scaling &scaling, const Scaling32 &fast,
                 std::size_t count, std::uint8_t *out);

/// Pixels of 1 or 3 channels as a line of each channel.
void SpreadRow(const std::uint8_t *pixels, std::size_t count, int channels,
               std::uint8_t *const lines[3]);
void SpreadRow(const std::uint8_t *pixels, std::size_t count, int channels,
               std::int16_t *const lines[3]);
/// Three channels side by side to pixels.
void JoinChannels(const std::uint8_t *const planes[3], std::size_t count, std::uint8_t *pixels);

} // namespace tavix
