// Each kernel is a loop over whole vectors and a plain loop over the rest. Where one lane
// cannot do the former, the plain loop does all.

#include "TAVIX20/display/picture_kernels.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/display/picture_kernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using PixelTag = hn::ScalableTag<std::uint32_t>;

constexpr std::uint32_t OPAQUE = 0xFF000000U;

void GreyToScreen(const std::uint8_t *grey, std::size_t count, std::uint32_t *target) {
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const PixelTag d;
    const hn::Repartition<std::uint8_t, PixelTag> bytes;
    // Byte 3 of a pixel takes no level: indices above 127 give 0.
    alignas(16) static constexpr std::uint8_t SPREAD[16] = {0, 0, 0, 0x80, 4,  4,  4,  0x80,
                                                            8, 8, 8, 0x80, 12, 12, 12, 0x80};
    const auto spread = hn::LoadDup128(bytes, SPREAD);
    const auto opaque = hn::Set(d, OPAQUE);
    const hn::Rebind<std::uint8_t, PixelTag> narrow;
    for (; at + hn::Lanes(d) <= count; at += hn::Lanes(d)) {
        const auto levels = hn::BitCast(bytes, hn::PromoteTo(d, hn::LoadU(narrow, grey + at)));
        const auto pixels = hn::BitCast(d, hn::TableLookupBytesOr0(levels, spread));
        hn::StoreU(hn::Or(pixels, opaque), d, target + at);
    }
#endif
    for (; at < count; ++at)
        target[at] = OPAQUE | (grey[at] * 0x010101U);
}

void ColourToScreen(const std::uint8_t *pixels, std::size_t count, std::uint32_t *target) {
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::FixedTag<std::uint8_t, 16> bytes;
    const hn::FixedTag<std::uint32_t, 4> d;
    alignas(16) static constexpr std::uint8_t SPREAD[16] = {0, 1, 2, 0x80, 3, 4,  5,  0x80,
                                                            6, 7, 8, 0x80, 9, 10, 11, 0x80};
    const auto spread = hn::Load(bytes, SPREAD);
    const auto opaque = hn::Set(d, OPAQUE);
    // Sixteen bytes are read for the twelve of four pixels.
    for (; at + 6 <= count; at += 4) {
        const auto four = hn::TableLookupBytesOr0(hn::LoadU(bytes, pixels + 3 * at), spread);
        hn::StoreU(hn::Or(hn::BitCast(d, four), opaque), d, target + at);
    }
#endif
    for (; at < count; ++at) {
        const std::uint8_t *const pixel = pixels + 3 * at;
        target[at] = OPAQUE | std::uint32_t{pixel[2]} << 16 | std::uint32_t{pixel[1]} << 8 |
                     std::uint32_t{pixel[0]};
    }
}

/// value / 255 for values to 255 * 255, rounded in the way of QPainter.
template <typename V>
HWY_INLINE V DivideBy255(V value) {
    const hn::DFromV<V> d;
    return hn::ShiftRight<8>(hn::Add(hn::Add(value, hn::ShiftRight<8>(value)), hn::Set(d, 128)));
}

/// Bytes 0 and 2 of each pixel, and bytes 1 and 3, each widened to 16 bits.
constexpr std::uint32_t EVEN_BYTES = 0x00FF00FFU;

/// The channels of pixels multiplied by factors of 0 to 255 / 255.
template <typename V>
HWY_INLINE V Scale(V pixels, V factors) {
    const hn::DFromV<V> d;
    const hn::Repartition<std::uint16_t, decltype(d)> wide;
    const auto even = hn::Set(d, EVEN_BYTES);
    const auto both = hn::BitCast(wide, hn::Or(factors, hn::ShiftLeft<16>(factors)));
    const auto low = DivideBy255(hn::Mul(hn::BitCast(wide, hn::And(pixels, even)), both));
    const auto high =
        DivideBy255(hn::Mul(hn::BitCast(wide, hn::And(hn::ShiftRight<8>(pixels), even)), both));
    return hn::Or(hn::BitCast(d, low), hn::ShiftLeft<8>(hn::BitCast(d, high)));
}

/// Calls process(pixels, old) for vectors of source and target pixels and stores what it returns;
/// the rest goes through a copy filled up with zeros.
template <typename Process>
void ForPixels(const std::uint32_t *source, std::size_t count, std::uint32_t *target,
               Process process) {
    const hn::CappedTag<std::uint32_t, 16> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes)
        process(d, hn::LoadU(d, source + at), target + at);
    if (at < count) {
        std::uint32_t from[16] = {};
        std::uint32_t to[16] = {};
        std::memcpy(from, source + at, (count - at) * sizeof *from);
        std::memcpy(to, target + at, (count - at) * sizeof *to);
        process(d, hn::LoadU(d, from), to);
        std::memcpy(target + at, to, (count - at) * sizeof *to);
    }
}

#if HWY_TARGET == HWY_SCALAR

std::uint32_t ScalePixel(std::uint32_t pixel, std::uint32_t factor) {
    std::uint32_t scaled = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t product = (pixel >> shift & 255U) * factor;
        scaled |= (product + (product >> 8) + 128) >> 8 << shift;
    }
    return scaled;
}

void MultiplyByAlpha(const std::uint32_t *pixels, std::size_t count, std::uint32_t *target) {
    for (std::size_t i = 0; i < count; ++i)
        target[i] = ScalePixel(pixels[i] | OPAQUE, pixels[i] >> 24);
}

void Compose(const std::uint32_t *premultiplied, std::size_t count, std::uint32_t *target) {
    for (std::size_t i = 0; i < count; ++i)
        target[i] = premultiplied[i] + ScalePixel(target[i], 255U - (premultiplied[i] >> 24));
}

#else

void MultiplyByAlpha(const std::uint32_t *pixels, std::size_t count, std::uint32_t *target) {
    ForPixels(pixels, count, target, [](auto d, auto from, std::uint32_t *to) {
        // With 255 for its own alpha, a pixel keeps it. Most of a layer is empty.
        const bool isEmpty = hn::AllTrue(d, hn::Eq(from, hn::Zero(d)));
        const auto opaque = hn::Or(from, hn::Set(d, OPAQUE));
        hn::StoreU(isEmpty ? from : Scale(opaque, hn::ShiftRight<24>(from)), d, to);
    });
}

void Compose(const std::uint32_t *premultiplied, std::size_t count, std::uint32_t *target) {
    ForPixels(premultiplied, count, target, [](auto d, auto from, std::uint32_t *to) {
        if (hn::AllTrue(d, hn::Eq(from, hn::Zero(d))))
            return;
        const auto rest = hn::Sub(hn::Set(d, 255), hn::ShiftRight<24>(from));
        hn::StoreU(hn::Add(from, Scale(hn::LoadU(d, to), rest)), d, to);
    });
}

#endif

void Split(const std::uint8_t *pixels, std::size_t count, int channels,
           std::uint8_t *const *planes) {
    const hn::ScalableTag<std::uint8_t> d;
    std::size_t at = 0;
    auto a = hn::Zero(d);
    auto b = a;
    auto c = a;
    auto e = a;
    for (; channels == 3 && at + hn::Lanes(d) <= count; at += hn::Lanes(d)) {
        hn::LoadInterleaved3(d, pixels + 3 * at, a, b, c);
        hn::StoreU(a, d, planes[0] + at);
        hn::StoreU(b, d, planes[1] + at);
        hn::StoreU(c, d, planes[2] + at);
    }
    for (; channels == 4 && at + hn::Lanes(d) <= count; at += hn::Lanes(d)) {
        hn::LoadInterleaved4(d, pixels + 4 * at, a, b, c, e);
        hn::StoreU(a, d, planes[0] + at);
        hn::StoreU(b, d, planes[1] + at);
        hn::StoreU(c, d, planes[2] + at);
        hn::StoreU(e, d, planes[3] + at);
    }
    const auto step = static_cast<std::size_t>(channels);
    for (; at < count; ++at)
        for (std::size_t channel = 0; channel < step; ++channel)
            planes[channel][at] = pixels[at * step + channel];
}

void Join(const std::uint8_t *const *planes, std::size_t count, int channels,
          std::uint8_t *pixels) {
    const hn::ScalableTag<std::uint8_t> d;
    std::size_t at = 0;
    for (; channels == 3 && at + hn::Lanes(d) <= count; at += hn::Lanes(d))
        hn::StoreInterleaved3(hn::LoadU(d, planes[0] + at), hn::LoadU(d, planes[1] + at),
                              hn::LoadU(d, planes[2] + at), d, pixels + 3 * at);
    for (; channels == 4 && at + hn::Lanes(d) <= count; at += hn::Lanes(d))
        hn::StoreInterleaved4(hn::LoadU(d, planes[0] + at), hn::LoadU(d, planes[1] + at),
                              hn::LoadU(d, planes[2] + at), hn::LoadU(d, planes[3] + at), d,
                              pixels + 4 * at);
    const auto step = static_cast<std::size_t>(channels);
    for (; at < count; ++at)
        for (std::size_t channel = 0; channel < step; ++channel)
            pixels[at * step + channel] = planes[channel][at];
}

void SumByteBlocks(const std::uint8_t *upper, const std::uint8_t *lower, std::size_t count,
                   std::uint16_t *sums) {
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint16_t> d;
    const hn::Repartition<std::uint8_t, decltype(d)> bytes;
    const auto low = hn::Set(d, 0x00FF);
    const auto pairs = [=](const std::uint8_t *row) {
        const auto both = hn::BitCast(d, hn::LoadU(bytes, row));
        return hn::Add(hn::And(both, low), hn::ShiftRight<8>(both));
    };
    for (; at + hn::Lanes(d) <= count; at += hn::Lanes(d))
        hn::StoreU(hn::Add(pairs(upper + 2 * at), pairs(lower + 2 * at)), d, sums + at);
#endif
    for (; at < count; ++at)
        sums[at] = static_cast<std::uint16_t>(upper[2 * at] + upper[2 * at + 1] + lower[2 * at] +
                                              lower[2 * at + 1]);
}

void SumWordBlocks(const std::uint16_t *upper, const std::uint16_t *lower, std::size_t count,
                   std::uint16_t *sums) {
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint16_t> d;
    const std::size_t lanes = hn::Lanes(d);
    for (; at + lanes <= count; at += lanes) {
        const auto column = [=](std::size_t from) {
            return hn::Add(hn::LoadU(d, upper + from), hn::LoadU(d, lower + from));
        };
        const auto first = column(2 * at);
        const auto second = column(2 * at + lanes);
        hn::StoreU(hn::Add(hn::ConcatEven(d, second, first), hn::ConcatOdd(d, second, first)), d,
                   sums + at);
    }
#endif
    for (; at < count; ++at)
        sums[at] = static_cast<std::uint16_t>(upper[2 * at] + upper[2 * at + 1] + lower[2 * at] +
                                              lower[2 * at + 1]);
}

void Mean(const std::uint16_t *sums, std::size_t count, int shift, std::uint8_t *means) {
    const hn::ScalableTag<std::uint16_t> d;
    const hn::RebindToSigned<decltype(d)> positive;
    const hn::Rebind<std::uint8_t, decltype(d)> narrow;
    const auto half = static_cast<std::uint16_t>(1 << (shift - 1));
    std::size_t at = 0;
    for (; at + hn::Lanes(d) <= count; at += hn::Lanes(d)) {
        const auto rounded = hn::Add(hn::LoadU(d, sums + at), hn::Set(d, half));
        const auto mean = hn::ShiftRightSame(rounded, shift);
        hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(positive, mean)), narrow, means + at);
    }
    for (; at < count; ++at)
        means[at] = static_cast<std::uint8_t>((sums[at] + half) >> shift);
}

void SumRows(const std::uint8_t *const *rows, const std::uint16_t *weights, std::size_t rowCount,
             std::size_t count, std::int16_t *sums) {
    const hn::ScalableTag<std::uint16_t> d;
    const hn::RebindToSigned<decltype(d)> biased;
    const hn::Rebind<std::uint8_t, decltype(d)> narrow;
    const auto bias = hn::Set(d, 0x8000);
    std::size_t at = 0;
    for (; at + hn::Lanes(d) <= count; at += hn::Lanes(d)) {
        auto sum = bias;
        for (std::size_t row = 0; row < rowCount; ++row) {
            const auto levels = hn::PromoteTo(d, hn::LoadU(narrow, rows[row] + at));
            sum = hn::Add(sum, hn::Mul(levels, hn::Set(d, weights[row])));
        }
        hn::StoreU(hn::BitCast(biased, sum), biased, sums + at);
    }
    for (; at < count; ++at) {
        int sum = -32768;
        for (std::size_t row = 0; row < rowCount; ++row)
            sum += rows[row][at] * weights[row];
        sums[at] = static_cast<std::int16_t>(sum);
    }
}

constexpr int WEIGHT_BITS = ROW_WEIGHT_BITS + COLUMN_WEIGHT_BITS;
/// Takes the 32768 out of a weighted sum and rounds it.
constexpr std::int32_t ROUNDING = (32768 << COLUMN_WEIGHT_BITS) + (1 << (WEIGHT_BITS - 1));

// Pixels are fetched with loads of their own: gathering them is slower, on some processors by far.
// The columns come by value, since the bytes written might else be theirs.
void SumGreyColumns(const std::int16_t *sums, const ColumnWeights columns, std::uint8_t *target) {
    const std::size_t count = columns.count;
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::FixedTag<std::int16_t, 8> words;
    const hn::FixedTag<std::int16_t, 4> quad;
    const hn::FixedTag<std::int32_t, 4> d;
    const hn::FixedTag<std::uint8_t, 4> narrow;
    for (; at + 4 <= count; at += 4) {
        const std::int32_t *const first = columns.first + at;
        auto mean = hn::Set(d, ROUNDING);
        for (std::size_t q = 0; q < columns.quads; ++q) {
            const std::int16_t *const weights = columns.weights + (q * count + at) * 4;
            // Half the products of the pixels i and i + 1 each.
            const auto two = [=](std::size_t i) {
                const auto values = hn::Combine(words, hn::LoadU(quad, sums + first[i + 1] + 4 * q),
                                                hn::LoadU(quad, sums + first[i] + 4 * q));
                auto odd = hn::Zero(d);
                const auto even = hn::ReorderWidenMulAccumulate(
                    d, values, hn::LoadU(words, weights + 4 * i), hn::Zero(d), odd);
                return hn::RearrangeToOddPlusEven(even, odd);
            };
            const auto low = two(0);
            const auto high = two(2);
            mean =
                hn::Add(mean, hn::Add(hn::ConcatEven(d, high, low), hn::ConcatOdd(d, high, low)));
        }
        hn::StoreU(hn::DemoteTo(narrow, hn::ShiftRight<WEIGHT_BITS>(mean)), narrow, target + at);
    }
#endif
    for (; at < count; ++at) {
        std::int32_t sum = ROUNDING;
        for (std::size_t tap = 0; tap < 4 * columns.quads; ++tap)
            sum += sums[static_cast<std::size_t>(columns.first[at]) + tap] *
                   columns.weights[(tap / 4 * count + at) * 4 + tap % 4];
        target[at] = static_cast<std::uint8_t>(sum >> WEIGHT_BITS);
    }
}

void SumColourColumns(const std::int16_t *sums, const ColumnWeights columns, int channels,
                      std::uint32_t *target) {
    const auto step = static_cast<std::size_t>(channels);
    const std::uint32_t alpha = channels == 3 ? OPAQUE : 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::FixedTag<std::int16_t, 8> words;
    const hn::FixedTag<std::uint8_t, 16> bytes;
    const hn::FixedTag<std::int32_t, 4> d;
    const hn::FixedTag<std::uint8_t, 4> narrow;
    // Brings the channels of two neighbours side by side.
    alignas(16) static constexpr std::uint8_t PAIRS[2][16] = {
        {0, 1, 6, 7, 2, 3, 8, 9, 4, 5, 10, 11, 4, 5, 10, 11},
        {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15}};
    const auto order = hn::Load(bytes, PAIRS[channels - 3]);
    for (std::size_t at = 0; at < columns.count; ++at) {
        const std::int16_t *value = sums + static_cast<std::size_t>(columns.first[at]) * step;
        auto even = hn::Set(d, ROUNDING);
        auto odd = hn::Zero(d);
        for (std::size_t tap = 0; tap < 4 * columns.quads; tap += 2, value += 2 * step) {
            std::int32_t both;
            std::memcpy(&both, columns.weights + (tap / 4 * columns.count + at) * 4 + tap % 4,
                        sizeof both);
            const auto values = hn::BitCast(bytes, hn::LoadU(words, value));
            const auto neighbours = hn::BitCast(words, hn::TableLookupBytes(values, order));
            even = hn::ReorderWidenMulAccumulate(d, neighbours,
                                                 hn::BitCast(words, hn::Set(d, both)), even, odd);
        }
        const auto mean = hn::ShiftRight<WEIGHT_BITS>(hn::RearrangeToOddPlusEven(even, odd));
        std::uint8_t pixel[4];
        hn::StoreU(hn::DemoteTo(narrow, mean), narrow, pixel);
        std::memcpy(target + at, pixel, sizeof pixel);
        target[at] |= alpha;
    }
#else
    for (std::size_t at = 0; at < columns.count; ++at) {
        target[at] = alpha;
        for (std::size_t channel = 0; channel < step; ++channel) {
            const std::int16_t *const value =
                sums + static_cast<std::size_t>(columns.first[at]) * step + channel;
            std::int32_t sum = ROUNDING;
            for (std::size_t tap = 0; tap < 4 * columns.quads; ++tap)
                sum += value[tap * step] *
                       columns.weights[(tap / 4 * columns.count + at) * 4 + tap % 4];
            target[at] |= static_cast<std::uint32_t>(sum >> WEIGHT_BITS) << 8 * channel;
        }
    }
#endif
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(GreyToScreen);
HWY_EXPORT(ColourToScreen);
HWY_EXPORT(MultiplyByAlpha);
HWY_EXPORT(Compose);
HWY_EXPORT(Split);
HWY_EXPORT(Join);
HWY_EXPORT(SumByteBlocks);
HWY_EXPORT(SumWordBlocks);
HWY_EXPORT(Mean);
HWY_EXPORT(SumRows);
HWY_EXPORT(SumGreyColumns);
HWY_EXPORT(SumColourColumns);

void ExpandGrey(const std::uint8_t *grey, std::size_t count, std::uint32_t *target) {
    HWY_DYNAMIC_DISPATCH(GreyToScreen)(grey, count, target);
}

void ExpandColour(const std::uint8_t *pixels, std::size_t count, std::uint32_t *target) {
    HWY_DYNAMIC_DISPATCH(ColourToScreen)(pixels, count, target);
}

void Premultiply(const std::uint32_t *pixels, std::size_t count, std::uint32_t *target) {
    HWY_DYNAMIC_DISPATCH(MultiplyByAlpha)(pixels, count, target);
}

void ComposeOver(const std::uint32_t *premultiplied, std::size_t count, std::uint32_t *target) {
    HWY_DYNAMIC_DISPATCH(Compose)(premultiplied, count, target);
}

void SplitChannels(const std::uint8_t *pixels, std::size_t count, int channels,
                   std::uint8_t *const planes[]) {
    HWY_DYNAMIC_DISPATCH(Split)(pixels, count, channels, planes);
}

void JoinChannels(const std::uint8_t *const planes[], std::size_t count, int channels,
                  std::uint8_t *pixels) {
    HWY_DYNAMIC_DISPATCH(Join)(planes, count, channels, pixels);
}

void SumBlocks(const std::uint8_t *upper, const std::uint8_t *lower, std::size_t count,
               std::uint16_t *sums) {
    HWY_DYNAMIC_DISPATCH(SumByteBlocks)(upper, lower, count, sums);
}

void SumBlocks(const std::uint16_t *upper, const std::uint16_t *lower, std::size_t count,
               std::uint16_t *sums) {
    HWY_DYNAMIC_DISPATCH(SumWordBlocks)(upper, lower, count, sums);
}

void MeanOfSums(const std::uint16_t *sums, std::size_t count, int shift, std::uint8_t *means) {
    HWY_DYNAMIC_DISPATCH(Mean)(sums, count, shift, means);
}

void WeighRows(const std::uint8_t *const *rows, const std::uint16_t *weights, std::size_t rowCount,
               std::size_t count, std::int16_t *sums) {
    HWY_DYNAMIC_DISPATCH(SumRows)(rows, weights, rowCount, count, sums);
}

void WeighGreyColumns(const std::int16_t *sums, const ColumnWeights &columns,
                      std::uint8_t *target) {
    HWY_DYNAMIC_DISPATCH(SumGreyColumns)(sums, columns, target);
}

void WeighColourColumns(const std::int16_t *sums, const ColumnWeights &columns, int channels,
                        std::uint32_t *target) {
    HWY_DYNAMIC_DISPATCH(SumColourColumns)(sums, columns, channels, target);
}

} // namespace tavix
#endif
