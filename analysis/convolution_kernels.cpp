#include "TAVIX20/analysis/convolution_kernels.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/convolution_kernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

template <typename Pair>
void SumPlainly(const Pair *pairs, std::size_t pairCount, const Scaling &scaling, std::size_t count,
                std::uint8_t *out) {
    for (std::size_t x = 0; x < count; ++x) {
        std::int32_t sum = 0;
        for (const Pair *pair = pairs; pair != pairs + pairCount; ++pair)
            sum += pair->line[x] * pair->weights[0] + pair->line[x + 1] * pair->weights[1];
        out[x] = scaling.Apply(sum);
    }
}

void SumBytePairs(const BytePair *pairs, std::size_t pairCount, const Scaling16 &,
                  const Scaling &scaling, std::size_t count, std::uint8_t *out) {
    SumPlainly(pairs, pairCount, scaling, count, out);
}

void SumWordPairs(const WordPair *pairs, std::size_t pairCount, const Scaling32 &,
                  const Scaling &scaling, std::size_t count, std::uint8_t *out) {
    SumPlainly(pairs, pairCount, scaling, count, out);
}

#else

static_assert(2 * HWY_MAX_BYTES + 2 <= CONVOLUTION_OVERRUN);

/// A number of pairs that is worth a version of its own.
constexpr std::size_t PAIRS_OF_3X3 = 6;

using Tag8 = hn::ScalableTag<std::uint8_t>;
using Tag16 = hn::ScalableTag<std::int16_t>;
using Tag32 = hn::ScalableTag<std::int32_t>;
using Vec8 = hn::Vec<Tag8>;
using Vec16 = hn::Vec<Tag16>;
using Vec32 = hn::Vec<Tag32>;

/// 16-bit values limited to a byte and stored.
HWY_INLINE void StoreBytes(Vec16 values, std::uint8_t *out) {
    const hn::Rebind<std::uint8_t, Tag16> bytes;
    hn::StoreU(hn::DemoteTo(bytes, values), bytes, out);
}

/// Scaling16 in registers.
struct Scale16 {
    explicit Scale16(const Scaling16 &scaling)
        : divides(scaling.divides),
          multiplier(hn::Set(hn::RebindToUnsigned<Tag16>(), scaling.multiplier)),
          shift(scaling.shift),
          offset(hn::Set(Tag16(), scaling.offset)) {}

    HWY_INLINE Vec16 operator()(Vec16 sums) const {
        const Tag16 d;
        const hn::RebindToUnsigned<Tag16> du;
        if (divides) {
            const auto magnitudes = hn::BitCast(du, hn::Abs(sums));
            const auto quotients = hn::ShiftRightSame(hn::MulHigh(magnitudes, multiplier), shift);
            // (v ^ -1) - -1 is -v.
            const Vec16 sign = hn::BroadcastSignBit(sums);
            sums = hn::Sub(hn::Xor(hn::BitCast(d, quotients), sign), sign);
        }
        return hn::SaturatedAdd(sums, offset);
    }

    bool divides;
    hn::Vec<hn::RebindToUnsigned<Tag16>> multiplier;
    int shift;
    Vec16 offset;
};

/// Neighbouring bytes times neighbouring weights, added two by two; no sum exceeds 16 bits.
HWY_INLINE Vec16 MulPairs(Vec8 bytes, Vec16 weights) {
#if HWY_TARGET == HWY_SSSE3 || HWY_TARGET == HWY_SSE4
    return Vec16{_mm_maddubs_epi16(bytes.raw, weights.raw)};
#elif HWY_TARGET == HWY_AVX2
    return Vec16{_mm256_maddubs_epi16(bytes.raw, weights.raw)};
#elif HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX3
    return Vec16{_mm512_maddubs_epi16(bytes.raw, weights.raw)};
#else
    const Tag16 d;
    const hn::RebindToUnsigned<Tag16> du;
    const auto pairs = hn::BitCast(du, bytes);
    const Vec16 first = hn::BitCast(d, hn::And(pairs, hn::Set(du, 0xFF)));
    const Vec16 second = hn::BitCast(d, hn::ShiftRight<8>(pairs));
    return hn::Add(hn::Mul(first, hn::ShiftRight<8>(hn::ShiftLeft<8>(weights))),
                   hn::Mul(second, hn::ShiftRight<8>(weights)));
#endif
}

/// Sums of two vectors of pairs each: of the even pixels and of the odd ones. With the number of
/// pairs known, weights and lines stay in registers; 0 takes any number.
template <std::size_t KNOWN>
void SumKnownBytePairs(const BytePair *pairs, std::size_t pairCount, const Scaling16 &scaling,
                       std::size_t count, std::uint8_t *out) {
    const Tag8 d8;
    const Tag16 d;
    const std::size_t lanes = hn::Lanes(d8);
    const Scale16 scale(scaling);
    const Vec16 zero = hn::Zero(d);
    const Vec16 most = hn::Set(d, 255);
    const auto store = [&](Vec16 even, Vec16 odd, std::uint8_t *at) {
        const Vec16 evens = hn::Min(hn::Max(scale(even), zero), most);
        const Vec16 odds = hn::Min(hn::Max(scale(odd), zero), most);
        hn::StoreU(hn::BitCast(d8, hn::Or(evens, hn::ShiftLeft<8>(odds))), d8, at);
    };
    const std::size_t used = KNOWN == 0 ? pairCount : KNOWN;
    for (std::size_t x = 0; x < count; x += 2 * lanes) {
        Vec16 even0 = zero;
        Vec16 odd0 = zero;
        Vec16 even1 = zero;
        Vec16 odd1 = zero;
#pragma GCC unroll 6
        for (std::size_t p = 0; p < used; ++p) {
            std::int16_t both;
            std::memcpy(&both, pairs[p].weights, sizeof both);
            const Vec16 weights = hn::Set(d, both);
            const std::uint8_t *const line = pairs[p].line + x;
            even0 = hn::Add(even0, MulPairs(hn::LoadU(d8, line), weights));
            odd0 = hn::Add(odd0, MulPairs(hn::LoadU(d8, line + 1), weights));
            even1 = hn::Add(even1, MulPairs(hn::LoadU(d8, line + lanes), weights));
            odd1 = hn::Add(odd1, MulPairs(hn::LoadU(d8, line + lanes + 1), weights));
        }
        store(even0, odd0, out + x);
        store(even1, odd1, out + x + lanes);
    }
}

void SumBytePairs(const BytePair *pairs, std::size_t pairCount, const Scaling16 &scaling,
                  const Scaling &, std::size_t count, std::uint8_t *out) {
    if (pairCount == PAIRS_OF_3X3)
        SumKnownBytePairs<PAIRS_OF_3X3>(pairs, pairCount, scaling, count, out);
    else
        SumKnownBytePairs<0>(pairs, pairCount, scaling, count, out);
}

/// Scaling32 in registers.
struct Scale32 {
    explicit Scale32(const Scaling32 &scaling)
        : multiplies(scaling.multiplies),
          lowest(hn::Set(Tag32(), scaling.lowest)),
          highest(hn::Set(Tag32(), scaling.highest)),
          factor(hn::Set(hn::Rebind<float, Tag32>(), scaling.factor)),
          offset(hn::Set(Tag16(), scaling.offset)) {}

    /// Quotients from one below the result's range to one beyond, without the offset.
    HWY_INLINE Vec32 Divide(Vec32 sums) const {
        const Tag32 d;
        const hn::Rebind<float, Tag32> df;
        sums = hn::Min(hn::Max(sums, lowest), highest);
        const auto exact = hn::ConvertTo(df, sums);
        return hn::ConvertTo(d, multiplies ? hn::Mul(exact, factor) : hn::Div(exact, factor));
    }

    /// The results of pixels of which the even and the odd ones come apart.
    HWY_INLINE Vec16 operator()(Vec32 even, Vec32 odd) const {
        const Tag16 d;
        const Vec16 evens = hn::BitCast(d, Divide(even));
        const Vec16 odds = hn::BitCast(d, hn::ShiftLeft<16>(Divide(odd)));
        return hn::SaturatedAdd(hn::OddEven(odds, evens), offset);
    }

    bool multiplies;
    Vec32 lowest;
    Vec32 highest;
    hn::Vec<hn::Rebind<float, Tag32>> factor;
    Vec16 offset;
};

/// As SumKnownBytePairs.
template <std::size_t KNOWN>
void SumKnownWordPairs(const WordPair *pairs, std::size_t pairCount, const Scaling32 &scaling,
                       std::size_t count, std::uint8_t *out) {
    const Tag16 d;
    const Tag32 wide;
    const std::size_t lanes = hn::Lanes(d);
    const Scale32 scale(scaling);
    const std::size_t used = KNOWN == 0 ? pairCount : KNOWN;
    for (std::size_t x = 0; x < count; x += 2 * lanes) {
        Vec32 even0 = hn::Zero(wide);
        Vec32 odd0 = even0;
        Vec32 even1 = even0;
        Vec32 odd1 = even0;
        // What an instruction set that adds other lanes than neighbours needs besides.
        Vec32 rest0 = even0;
        Vec32 rest1 = even0;
        Vec32 rest2 = even0;
        Vec32 rest3 = even0;
#pragma GCC unroll 6
        for (std::size_t p = 0; p < used; ++p) {
            std::int32_t both;
            std::memcpy(&both, pairs[p].weights, sizeof both);
            const Vec16 weights = hn::BitCast(d, hn::Set(wide, both));
            const std::int16_t *const line = pairs[p].line + x;
            const auto add = [&](const std::int16_t *at, Vec32 sum, Vec32 &rest) {
                return hn::ReorderWidenMulAccumulate(wide, hn::LoadU(d, at), weights, sum, rest);
            };
            even0 = add(line, even0, rest0);
            odd0 = add(line + 1, odd0, rest1);
            even1 = add(line + lanes, even1, rest2);
            odd1 = add(line + lanes + 1, odd1, rest3);
        }
        StoreBytes(scale(hn::RearrangeToOddPlusEven(even0, rest0),
                         hn::RearrangeToOddPlusEven(odd0, rest1)),
                   out + x);
        StoreBytes(scale(hn::RearrangeToOddPlusEven(even1, rest2),
                         hn::RearrangeToOddPlusEven(odd1, rest3)),
                   out + x + lanes);
    }
}

void SumWordPairs(const WordPair *pairs, std::size_t pairCount, const Scaling32 &scaling,
                  const Scaling &, std::size_t count, std::uint8_t *out) {
    if (pairCount == PAIRS_OF_3X3)
        SumKnownWordPairs<PAIRS_OF_3X3>(pairs, pairCount, scaling, count, out);
    else
        SumKnownWordPairs<0>(pairs, pairCount, scaling, count, out);
}

#endif

void Split(const std::uint8_t *pixels, std::size_t count, std::uint8_t *const planes[3]) {
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) {
        auto blue = hn::Zero(d);
        auto green = blue;
        auto red = blue;
        hn::LoadInterleaved3(d, pixels + 3 * x, blue, green, red);
        hn::StoreU(blue, d, planes[0] + x);
        hn::StoreU(green, d, planes[1] + x);
        hn::StoreU(red, d, planes[2] + x);
    }
    for (; x < count; ++x)
        for (std::size_t channel = 0; channel < 3; ++channel)
            planes[channel][x] = pixels[3 * x + channel];
}

void Spread(const std::uint8_t *pixels, std::size_t count, std::int16_t *const lines[3]) {
    const hn::ScalableTag<std::int16_t> wide;
    const hn::Rebind<std::uint8_t, decltype(wide)> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) {
        auto blue = hn::Zero(d);
        auto green = blue;
        auto red = blue;
        hn::LoadInterleaved3(d, pixels + 3 * x, blue, green, red);
        hn::StoreU(hn::PromoteTo(wide, blue), wide, lines[0] + x);
        hn::StoreU(hn::PromoteTo(wide, green), wide, lines[1] + x);
        hn::StoreU(hn::PromoteTo(wide, red), wide, lines[2] + x);
    }
    for (; x < count; ++x)
        for (std::size_t channel = 0; channel < 3; ++channel)
            lines[channel][x] = pixels[3 * x + channel];
}

void Widen(const std::uint8_t *pixels, std::size_t count, std::int16_t *line) {
    const hn::ScalableTag<std::int16_t> wide;
    const hn::Rebind<std::uint8_t, decltype(wide)> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes)
        hn::StoreU(hn::PromoteTo(wide, hn::LoadU(d, pixels + x)), wide, line + x);
    std::copy(pixels + x, pixels + count, line + x);
}

void Join(const std::uint8_t *const planes[3], std::size_t count, std::uint8_t *pixels) {
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes)
        hn::StoreInterleaved3(hn::LoadU(d, planes[0] + x), hn::LoadU(d, planes[1] + x),
                              hn::LoadU(d, planes[2] + x), d, pixels + 3 * x);
    for (; x < count; ++x)
        for (std::size_t channel = 0; channel < 3; ++channel)
            pixels[3 * x + channel] = planes[channel][x];
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(SumBytePairs);
HWY_EXPORT(SumWordPairs);
HWY_EXPORT(Split);
HWY_EXPORT(Spread);
HWY_EXPORT(Widen);
HWY_EXPORT(Join);

namespace {

constexpr std::int64_t BYTE_MAX = 255;

/// The largest sums for which quotients, and products with a reciprocal, are exact.
constexpr std::int64_t EXACT_QUOTIENTS = std::int64_t{1} << 24;
constexpr std::int64_t EXACT_PRODUCTS = std::int64_t{1} << 21;

/// The largest magnitude to which Scaling32 limits sums.
std::int64_t Largest(const Scaling &scaling) {
    return (std::abs(scaling.offset) + BYTE_MAX + 1) * scaling.divisor;
}

} // namespace

std::uint8_t Scaling::Apply(std::int64_t sum) const {
    return static_cast<std::uint8_t>(std::clamp(sum / divisor + offset, std::int64_t{0}, BYTE_MAX));
}

bool Scaling16::Suits(std::int64_t weightMagnitude, const Scaling &scaling) {
    constexpr std::int64_t limit = std::numeric_limits<std::int16_t>::max();
    return weightMagnitude <= limit / BYTE_MAX && scaling.divisor <= limit &&
           std::abs(scaling.offset) <= limit;
}

Scaling16::Scaling16(const Scaling &scaling)
    : divides(scaling.divisor > 1), offset(static_cast<std::int16_t>(scaling.offset)) {
    if (!divides)
        return;
    const auto divisor = static_cast<std::uint64_t>(scaling.divisor);
    shift = static_cast<int>(std::bit_width(divisor - 1)) - 1;
    multiplier =
        static_cast<std::uint16_t>(((std::uint64_t{1} << (16 + shift)) + divisor - 1) / divisor);
}

bool Scaling32::Suits(std::int64_t weightMagnitude, const Scaling &scaling) {
    // Sums of the quotient and the offset then saturate beyond the result's range.
    constexpr std::int64_t largestOffset = 1 << 14;
    return weightMagnitude <= std::numeric_limits<std::int32_t>::max() / BYTE_MAX &&
           scaling.divisor <= EXACT_QUOTIENTS && std::abs(scaling.offset) <= largestOffset &&
           Largest(scaling) <= EXACT_QUOTIENTS;
}

Scaling32::Scaling32(const Scaling &scaling)
    : multiplies(Largest(scaling) <= EXACT_PRODUCTS),
      lowest(static_cast<std::int32_t>((-scaling.offset - 1) * scaling.divisor)),
      highest(static_cast<std::int32_t>((BYTE_MAX + 1 - scaling.offset) * scaling.divisor)),
      offset(static_cast<std::int16_t>(scaling.offset)) {
    const auto divisor = static_cast<double>(scaling.divisor);
    factor = static_cast<float>(multiplies ? (1 + 0x1p-22) / divisor : divisor);
}

void ConvolveRow(const std::vector<BytePair> &pairs, const Scaling &scaling, const Scaling16 &fast,
                 std::size_t count, std::uint8_t *out) {
    HWY_DYNAMIC_DISPATCH(SumBytePairs)(pairs.data(), pairs.size(), fast, scaling, count, out);
}

void ConvolveRow(const std::vector<WordPair> &pairs, const Scaling &scaling, const Scaling32 &fast,
                 std::size_t count, std::uint8_t *out) {
    HWY_DYNAMIC_DISPATCH(SumWordPairs)(pairs.data(), pairs.size(), fast, scaling, count, out);
}

void SpreadRow(const std::uint8_t *pixels, std::size_t count, int channels,
               std::uint8_t *const lines[3]) {
    if (channels == 3)
        HWY_DYNAMIC_DISPATCH(Split)(pixels, count, lines);
    else
        std::copy_n(pixels, count, lines[0]);
}

void SpreadRow(const std::uint8_t *pixels, std::size_t count, int channels,
               std::int16_t *const lines[3]) {
    if (channels == 3)
        HWY_DYNAMIC_DISPATCH(Spread)(pixels, count, lines);
    else
        HWY_DYNAMIC_DISPATCH(Widen)(pixels, count, lines[0]);
}

void JoinChannels(const std::uint8_t *const planes[3], std::size_t count, std::uint8_t *pixels) {
    HWY_DYNAMIC_DISPATCH(Join)(planes, count, pixels);
}

} // namespace tavix
#endif
