/// Rows of bits, several words at once, and the places of bits, written one after another. One body
/// for every instruction set: included by files that are compiled for each (see foreach_target.h of
/// Highway).
#if defined(TAVIX_ANALYSIS_BIT_PLACES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef TAVIX_ANALYSIS_BIT_PLACES_INL_H
#undef TAVIX_ANALYSIS_BIT_PLACES_INL_H
#else
#define TAVIX_ANALYSIS_BIT_PLACES_INL_H
#endif

#include "TAVIX20/analysis/pixel_class.h"

#include <hwy/highway.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// So many places may be written beyond the last one.
constexpr int SPARE = 16;

/// Words of a row that are taken at once.
using WordTag = hn::CappedTag<std::uint64_t, 8>;
using Words = hn::Vec<WordTag>;

/// The words of a row, none set beyond its edges where words are read around it.
class RowWords {
public:
    explicit RowWords(int width)
        : m_count(hwy::RoundUpTo(WordsOf(width), hn::MaxLanes(WordTag()))), m_words(m_count + 2) {}

    /// A multiple of those taken at once.
    std::size_t Count() const { return m_count; }
    std::uint64_t *data() { return m_words.data() + 1; }
    const std::uint64_t *data() const { return m_words.data() + 1; }
    const std::uint64_t &operator[](std::size_t word) const { return data()[word]; }
    void Clear() { std::ranges::fill(m_words, 0); }
    void swap(RowWords &other) { m_words.swap(other.m_words); }

private:
    std::size_t m_count;
    std::vector<std::uint64_t> m_words;
};

/// The place of the lowest set bit; one of the word or just past it when there is none, without a
/// question.
HWY_INLINE int LowestBit(std::uint64_t bits) {
#if HWY_ARCH_X86_64 && HWY_TARGET <= HWY_AVX2
    return static_cast<int>(__builtin_ia32_tzcnt_u64(bits)); // Of 0 it is 64.
#else
    return std::countr_zero(bits | std::uint64_t{1} << (WORD_BITS - 1));
#endif
}

/// Writes value(bit) for each set bit; returns where the next one goes. The first few are written
/// whether there are so many or not, since a loop that ends after a changing number of rounds costs
/// more.
template <typename Value, typename Out>
HWY_INLINE Out *WriteBits(std::uint64_t bits, Out *out, Value value) {
    constexpr int atOnce = 2;
    if (bits == 0)
        return out;
    const int count = std::popcount(bits);
    for (int i = 0; i < atOnce; ++i, bits &= bits - 1)
        out[i] = value(LowestBit(bits));
    for (int i = atOnce; i < count; ++i, bits &= bits - 1)
        out[i] = value(std::countr_zero(bits));
    return out + count;
}

/// Writes base + bit for each set bit; returns where the next one goes. A few are written one by
/// one; more take as long as all.
HWY_INLINE std::int32_t *WritePlaces(std::uint64_t bits, std::int32_t base, std::int32_t *out) {
    constexpr int few = 4;
    const int count = std::popcount(bits);
    if (count <= few) {
        for (int i = 0; i < few; ++i, bits &= bits - 1)
            out[i] = base + LowestBit(bits);
        return out + count;
    }
    const hn::CappedTag<std::int32_t, 16> d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    auto places = hn::Add(hn::Iota(d, 0), hn::Set(d, base));
    for (int i = 0; i < WORD_BITS; i += lanes, places = hn::Add(places, hn::Set(d, lanes))) {
        const std::uint64_t some = bits >> i;
        std::uint8_t mask[8];
        std::memcpy(mask, &some, sizeof mask);
        hn::StoreU(hn::CompressBits(places, mask), d, out);
        out += std::popcount(some << (WORD_BITS - lanes));
    }
    return out;
}

#if HWY_ARCH_X86_64 && HWY_TARGET <= HWY_AVX3
/// Tells the places of the words' lowest bits, and takes these out.
class LowestBits {
public:
    LowestBits(Words bits, std::int32_t base)
        : m_bits(bits),
          m_start(hn::Add(hn::Set(PlaceTag(), base - EXPONENT_BIAS),
                          hn::ShiftLeft<6>(hn::ShiftRight<1>(hn::Iota(PlaceTag(), 0))))) {}

    bool HasMore() const { return !hn::AllTrue(WordTag(), hn::Eq(m_bits, hn::Zero(WordTag()))); }

    /// Four places of each word, any ones when it has fewer bits.
    struct Fours {
        Words ofEvenWords;
        Words ofOddWords;

        template <std::size_t WORD>
        HWY_INLINE void Write(std::int32_t *out) const {
            const Words &fours = WORD % 2 == 0 ? ofEvenWords : ofOddWords;
            _mm_storeu_si128(reinterpret_cast<__m128i *>(out),
                             _mm512_extracti32x4_epi32(fours.raw, WORD / 2));
        }
    };
    HWY_INLINE Fours NextFour() {
        const Words firstTwo = NextTwo();
        const Words lastTwo = NextTwo();
        return {hn::InterleaveLower(firstTwo, lastTwo),
                hn::InterleaveUpper(WordTag(), firstTwo, lastTwo)};
    }

private:
    using PlaceTag = hn::Repartition<std::int32_t, WordTag>;
    static constexpr int EXPONENT_BITS = 52;
    static constexpr int EXPONENT_BIAS = 1023;

    /// As a number, a single bit has its place in its exponent.
    HWY_INLINE Words NextNumber() {
        const WordTag d;
        const Words lowest = hn::And(m_bits, hn::Sub(hn::Zero(d), m_bits));
        m_bits = hn::Xor(m_bits, lowest);
        return hn::BitCast(d, hn::ConvertTo(hn::Repartition<double, WordTag>(), lowest));
    }
    /// The places of two bits, side by side.
    HWY_INLINE Words NextTwo() {
        const Words first = hn::ShiftRight<EXPONENT_BITS>(NextNumber());
        const Words second = hn::ShiftRight<EXPONENT_BITS - 32>(NextNumber());
        const auto both = hn::BitCast(PlaceTag(), hn::Or(first, second));
        return hn::BitCast(WordTag(), hn::Add(both, m_start));
    }

    Words m_bits;
    hn::Vec<PlaceTag> m_start;
};

/// Calls write(out) for each word, with its number as a constant, where its places go; returns
/// where the next ones go.
template <typename Write, std::size_t... WORD>
HWY_INLINE std::int32_t *WriteWords(const std::uint64_t *words, std::int32_t *out, Write write,
                                    std::index_sequence<WORD...>) {
    ((write(std::integral_constant<std::size_t, WORD>(), out), out += std::popcount(words[WORD])),
     ...);
    return out;
}
#endif

/// Writes the places of all set bits of the words, the first of which begins at base; returns where
/// the next one goes.
HWY_INLINE std::int32_t *WritePlaces(Words bits, std::int32_t base, std::int32_t *out) {
    const WordTag d;
    constexpr std::size_t lanes = hn::MaxLanes(d);
    alignas(sizeof(std::uint64_t) * lanes) std::uint64_t words[lanes];
    hn::Store(bits, d, words);
#if HWY_ARCH_X86_64 && HWY_TARGET <= HWY_AVX3
    // Mostly, four places of each word are all, or eight.
    LowestBits lowest(bits, base);
    const auto first = lowest.NextFour();
    if (HWY_LIKELY(!lowest.HasMore()))
        return WriteWords(
            words, out,
            [&](auto word, std::int32_t *places) { first.template Write<word>(places); },
            std::make_index_sequence<lanes>());
    const auto second = lowest.NextFour();
    if (!lowest.HasMore())
        return WriteWords(
            words, out,
            [&](auto word, std::int32_t *places) {
                first.template Write<word>(places);
                second.template Write<word>(places + 4);
            },
            std::make_index_sequence<lanes>());
#endif
    for (std::size_t i = 0; i < lanes; ++i)
        out = WritePlaces(words[i], base + static_cast<std::int32_t>(i) * WORD_BITS, out);
    return out;
}

/// The pixels to the left of those of the words, in their places.
HWY_INLINE Words FromLeft(const std::uint64_t *words) {
    const WordTag d;
    return hn::Or(hn::ShiftLeft<1>(hn::LoadU(d, words)),
                  hn::ShiftRight<WORD_BITS - 1>(hn::LoadU(d, words - 1)));
}

HWY_INLINE Words FromRight(const std::uint64_t *words) {
    const WordTag d;
    return hn::Or(hn::ShiftRight<1>(hn::LoadU(d, words)),
                  hn::ShiftLeft<WORD_BITS - 1>(hn::LoadU(d, words + 1)));
}

/// Writes the places of the bits that bitsAt gives for each of the row's words; returns where the
/// next one goes.
template <typename BitsAt>
HWY_INLINE std::int32_t *WriteAllPlaces(std::size_t wordCount, std::int32_t *out, BitsAt bitsAt) {
    for (std::size_t word = 0; word < wordCount; word += hn::MaxLanes(WordTag()))
        out = WritePlaces(bitsAt(word), static_cast<std::int32_t>(word) * WORD_BITS, out);
    return out;
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
