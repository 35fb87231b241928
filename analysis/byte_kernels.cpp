#include "TAVIX20/analysis/byte_kernels.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/byte_kernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using ByteTag = hn::ScalableTag<std::uint8_t>;
using Bytes = hn::Vec<ByteTag>;

/// Calls process(at, bytes) for whole vectors, and once for the rest, of which it gets a copy that
/// is filled up with zeros and written back.
template <typename Process>
void ForEachVector(std::uint8_t *bytes, std::size_t count, Process process) {
    const std::size_t lanes = hn::Lanes(ByteTag());
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes)
        process(at, bytes + at);
    if (at < count) {
        alignas(64) std::uint8_t rest[HWY_MAX_BYTES] = {};
        std::memcpy(rest, bytes + at, count - at);
        process(at, rest);
        std::memcpy(bytes + at, rest, count - at);
    }
}

/// The bits of a mask of at most 64 bytes.
template <typename D>
HWY_INLINE std::uint64_t BitsOf(D d, hn::Mask<D> mask) {
    std::uint8_t packed[8];
    hn::StoreMaskBits(d, mask, packed);
    // Exactly what was stored, so that the load need not wait for the store to reach the cache.
    std::uint64_t bits = 0;
    std::memcpy(&bits, packed, (hn::MaxLanes(d) + 7) / 8);
    return bits;
}

/// Replaces every byte by change(bytes).
template <typename Change>
void ChangeEach(std::uint8_t *bytes, std::size_t count, Change change) {
    ForEachVector(bytes, count, [change](std::size_t, std::uint8_t *at) {
        const ByteTag d;
        hn::StoreU(change(hn::LoadU(d, at)), d, at);
    });
}

/// Whether bytes lie in the band: one comparison, for bytes - low wraps below it.
struct BandTest {
    explicit BandTest(ByteBand band)
        : low(hn::Set(ByteTag(), band.low)),
          span(hn::Set(ByteTag(), static_cast<std::uint8_t>(band.high - band.low))) {}

    hn::Mask<ByteTag> operator()(Bytes bytes) const {
        const Bytes above = hn::Sub(bytes, low);
        return hn::Eq(hn::Min(above, span), above);
    }

    Bytes low;
    Bytes span;
};

void SplitBand(std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint8_t inside,
               std::uint8_t outside) {
    const BandTest isInside(band);
    const Bytes in = hn::Set(ByteTag(), inside);
    const Bytes out = hn::Set(ByteTag(), outside);
    ChangeEach(bytes, count, [=](Bytes old) { return hn::IfThenElse(isInside(old), in, out); });
}

void ReplaceInBand(std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint8_t value) {
    const BandTest isInside(band);
    const Bytes in = hn::Set(ByteTag(), value);
    ChangeEach(bytes, count, [=](Bytes old) { return hn::IfThenElse(isInside(old), in, old); });
}

void SplitDifference(std::uint8_t *bytes, const std::uint8_t *reference, std::size_t count,
                     std::uint8_t tolerance, std::uint8_t same, std::uint8_t different) {
    const ByteTag d;
    const Bytes limit = hn::Set(d, tolerance);
    const Bytes equal = hn::Set(d, same);
    const Bytes other = hn::Set(d, different);
    ForEachVector(bytes, count, [=](std::size_t at, std::uint8_t *target) {
        Bytes b;
        if (at + hn::Lanes(d) <= count) {
            b = hn::LoadU(d, reference + at);
        } else {
            alignas(64) std::uint8_t rest[HWY_MAX_BYTES] = {};
            std::memcpy(rest, reference + at, count - at);
            b = hn::LoadU(d, rest);
        }
        const Bytes a = hn::LoadU(d, target);
        const Bytes difference = hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
        const auto isSame = hn::Eq(hn::Min(difference, limit), difference);
        hn::StoreU(hn::IfThenElse(isSame, equal, other), d, target);
    });
}

std::size_t CountBand(const std::uint8_t *bytes, std::size_t count, ByteBand band) {
    const ByteTag d;
    const BandTest isInside(band);
    const std::size_t lanes = hn::Lanes(d);
    std::size_t inside = 0;
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes)
        inside += hn::CountTrue(d, isInside(hn::LoadU(d, bytes + at)));
    for (; at < count; ++at)
        inside += bytes[at] >= band.low && bytes[at] <= band.high ? 1 : 0;
    return inside;
}

std::size_t CountFirstOfTwo(const std::uint8_t *bytes, std::size_t count, std::uint8_t first,
                            std::uint8_t second, std::size_t *firstCount) {
    const ByteTag d;
    const std::size_t lanes = hn::Lanes(d);
    const Bytes one = hn::Set(d, first);
    const Bytes other = hn::Set(d, second);
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes) {
        const Bytes levels = hn::LoadU(d, bytes + at);
        const auto isFirst = hn::Eq(levels, one);
        if (!hn::AllTrue(d, hn::Or(isFirst, hn::Eq(levels, other))))
            break;
        *firstCount += hn::CountTrue(d, isFirst);
    }
    return at;
}

#if HWY_TARGET == HWY_SCALAR
// One lane holds neither a table of 16 bytes nor a wider type: plain loops.

void LookUpBytes(std::uint8_t *bytes, std::size_t count, const std::uint8_t *table) {
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = table[bytes[i]];
}

std::uint64_t Sum(const std::uint8_t *bytes, std::size_t count) {
    return std::accumulate(bytes, bytes + count, std::uint64_t{0});
}

std::uint64_t RisingBits(const std::uint8_t *bytes) {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < 64; ++i)
        bits |= std::uint64_t{bytes[i] < bytes[i + 1]} << i;
    return bits;
}

#else

/// Where each bit of the high half of the indices is set.
struct HighBits {
    explicit HighBits(Bytes index)
        : masks{hn::TestBit(index, hn::Set(ByteTag(), 0x10)),
                hn::TestBit(index, hn::Set(ByteTag(), 0x20)),
                hn::TestBit(index, hn::Set(ByteTag(), 0x40)),
                hn::TestBit(index, hn::Set(ByteTag(), 0x80))} {}

    hn::Mask<ByteTag> masks[4];
};

/// Entries of a table of 16 << LEVEL bytes: 16 tables of 16 are all looked up at the low half of
/// the index, and the bits of its high half choose between neighbours, one bit a level.
template <int LEVEL>
HWY_INLINE Bytes LookUpFrom(const std::uint8_t *table, Bytes lowHalf, const HighBits &high) {
    if constexpr (LEVEL == 0) {
        return hn::TableLookupBytes(hn::LoadDup128(ByteTag(), table), lowHalf);
    } else {
        constexpr std::size_t half = std::size_t{8} << LEVEL;
        const Bytes lower = LookUpFrom<LEVEL - 1>(table, lowHalf, high);
        const Bytes upper = LookUpFrom<LEVEL - 1>(table + half, lowHalf, high);
        return hn::IfThenElse(high.masks[LEVEL - 1], upper, lower);
    }
}

void LookUpBytes(std::uint8_t *bytes, std::size_t count, const std::uint8_t *table) {
    ChangeEach(bytes, count, [table](Bytes index) {
        const Bytes lowHalf = hn::And(index, hn::Set(ByteTag(), 0x0F));
        return LookUpFrom<4>(table, lowHalf, HighBits(index));
    });
}

std::uint64_t Sum(const std::uint8_t *bytes, std::size_t count) {
    const ByteTag d;
    const hn::Repartition<std::uint64_t, ByteTag> wide;
    const std::size_t lanes = hn::Lanes(d);
    auto sums = hn::Zero(wide);
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes)
        sums = hn::Add(sums, hn::SumsOf8(hn::LoadU(d, bytes + at)));
    std::uint64_t sum = hn::GetLane(hn::SumOfLanes(wide, sums));
    for (; at < count; ++at)
        sum += bytes[at];
    return sum;
}

std::uint64_t RisingBits(const std::uint8_t *bytes) {
    // At most 64 bytes: a mask's bits then fit the word.
    const hn::CappedTag<std::uint8_t, 64> d;
    const std::size_t lanes = hn::Lanes(d);
    std::uint64_t bits = 0;
    for (std::size_t at = 0; at < 64; at += lanes) {
        const auto rising = hn::Lt(hn::LoadU(d, bytes + at), hn::LoadU(d, bytes + at + 1));
        bits |= BitsOf(d, rising) << at;
    }
    return bits;
}

#endif

void MarkRising(const std::uint8_t *bytes, std::size_t wordCount, std::uint64_t *words) {
    for (std::size_t word = 0; word < wordCount; ++word)
        words[word] = RisingBits(bytes + 64 * word);
}

/// Bit i says whether test(at + i) of a vector's bytes holds, for whole vectors; returns how many
/// bytes that are. Words hold whole vectors.
template <typename TestAt>
std::size_t MarkVectors(std::size_t count, std::uint64_t *words, TestAt test) {
    const hn::CappedTag<std::uint8_t, 64> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t at = 0;
    for (; at + 64 <= count; at += 64) {
        std::uint64_t bits = 0;
        for (std::size_t part = 0; part < 64; part += lanes) {
            bits |= BitsOf(d, test(d, at + part)) << part;
        }
        words[at / 64] = bits;
    }
    return at;
}

void MarkInBand(const std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint64_t *words) {
    const auto span = static_cast<std::uint8_t>(band.high - band.low);
    std::size_t at = MarkVectors(count, words, [=](auto d, std::size_t from) {
        __builtin_prefetch(bytes + from + 2048);
        const auto above = hn::Sub(hn::LoadU(d, bytes + from), hn::Set(d, band.low));
        return hn::Eq(hn::Min(above, hn::Set(d, span)), above);
    });
    if (at == count)
        return;
    words[at / 64] = 0;
    for (; at < count; ++at)
        words[at / 64] |= std::uint64_t{bytes[at] >= band.low && bytes[at] <= band.high} << at % 64;
}

void MarkInColourBands(const std::uint8_t *pixels, std::size_t count, const ByteBand *bands,
                       std::uint64_t *words) {
    std::size_t at = MarkVectors(count, words, [=](auto d, std::size_t from) {
        auto blue = hn::Zero(d);
        auto green = blue;
        auto red = blue;
        hn::LoadInterleaved3(d, pixels + 3 * from, blue, green, red);
        const auto isInside = [d](auto levels, ByteBand band) {
            const auto span = static_cast<std::uint8_t>(band.high - band.low);
            const auto above = hn::Sub(levels, hn::Set(d, band.low));
            return hn::Eq(hn::Min(above, hn::Set(d, span)), above);
        };
        return hn::And(isInside(blue, bands[0]),
                       hn::And(isInside(green, bands[1]), isInside(red, bands[2])));
    });
    if (at == count)
        return;
    words[at / 64] = 0;
    for (; at < count; ++at) {
        bool inside = true;
        for (std::size_t channel = 0; channel < 3; ++channel)
            inside = inside && pixels[3 * at + channel] >= bands[channel].low &&
                     pixels[3 * at + channel] <= bands[channel].high;
        words[at / 64] |= std::uint64_t{inside} << at % 64;
    }
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(LookUpBytes);
HWY_EXPORT(SplitBand);
HWY_EXPORT(ReplaceInBand);
HWY_EXPORT(SplitDifference);
HWY_EXPORT(Sum);
HWY_EXPORT(CountBand);
HWY_EXPORT(CountFirstOfTwo);
HWY_EXPORT(MarkRising);
HWY_EXPORT(MarkInBand);
HWY_EXPORT(MarkInColourBands);

void LookUp(std::uint8_t *bytes, std::size_t count, const ByteTable &table) {
    HWY_DYNAMIC_DISPATCH(LookUpBytes)(bytes, count, table.data());
}

void SplitByBand(std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint8_t inside,
                 std::uint8_t outside) {
    if (band.low > band.high)
        std::memset(bytes, outside, count);
    else
        HWY_DYNAMIC_DISPATCH(SplitBand)(bytes, count, band, inside, outside);
}

void ReplaceBand(std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint8_t value) {
    if (band.low <= band.high)
        HWY_DYNAMIC_DISPATCH(ReplaceInBand)(bytes, count, band, value);
}

void SplitByDifference(std::uint8_t *bytes, const std::uint8_t *reference, std::size_t count,
                       std::uint8_t tolerance, std::uint8_t same, std::uint8_t different) {
    HWY_DYNAMIC_DISPATCH(SplitDifference)(bytes, reference, count, tolerance, same, different);
}

std::size_t CountInBand(const std::uint8_t *bytes, std::size_t count, ByteBand band) {
    return band.low > band.high ? 0 : HWY_DYNAMIC_DISPATCH(CountBand)(bytes, count, band);
}

std::size_t CountTwoLevels(const std::uint8_t *bytes, std::size_t count, std::uint8_t first,
                           std::uint8_t second, std::size_t &firstCount) {
    return HWY_DYNAMIC_DISPATCH(CountFirstOfTwo)(bytes, count, first, second, &firstCount);
}

std::uint64_t SumOf(const std::uint8_t *bytes, std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(Sum)(bytes, count);
}

void MarkRisingPairs(const std::uint8_t *bytes, std::size_t wordCount, std::uint64_t *words) {
    HWY_DYNAMIC_DISPATCH(MarkRising)(bytes, wordCount, words);
}

void MarkBand(const std::uint8_t *bytes, std::size_t count, ByteBand band, std::uint64_t *words) {
    if (band.low > band.high)
        std::fill_n(words, (count + 63) / 64, 0);
    else
        HWY_DYNAMIC_DISPATCH(MarkInBand)(bytes, count, band, words);
}

void MarkColourBands(const std::uint8_t *pixels, std::size_t count, const ByteBand bands[3],
                     std::uint64_t *words) {
    if (std::any_of(bands, bands + 3, [](ByteBand band) { return band.low > band.high; }))
        std::fill_n(words, (count + 63) / 64, 0);
    else
        HWY_DYNAMIC_DISPATCH(MarkInColourBands)(pixels, count, bands, words);
}

} // namespace tavix
#endif
