#include "TAVIX20/analysis/blob_walker.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/blob_walker.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

using Word = std::uint64_t;
using Stretch = BlobWalker::Stretch;

/// The bits of WORD_BITS pixels from x on.
HWY_INLINE Word BitsFrom(const Word *row, int x) {
    const Word *const word = row + static_cast<unsigned>(x) / WORD_BITS;
    const unsigned bit = static_cast<unsigned>(x) % WORD_BITS;
    return word[0] >> bit | word[1] << 1 << (WORD_BITS - 1 - bit);
}

/// As many set bits, up to a whole word.
HWY_INLINE Word Ones(int count) {
    return ~Word{0} >> (WORD_BITS - count);
}

/// How many unvisited pixels follow each other to the left of x.
HWY_INLINE int CountToTheLeft(const Word *row, int x) {
    // Of the word that ends before x; row - 1 is the empty word of the row before. Its first bit is
    // taken for visited, for a word without any would be a case of its own.
    constexpr int most = WORD_BITS - 1;
    int count = std::countl_zero(~BitsFrom(row - 1, x) | 1);
    for (int more = count; HWY_UNLIKELY(more == most); count += more)
        more = std::countl_zero(~BitsFrom(row - 1, x - count) | 1);
    return count;
}

HWY_INLINE int CountToTheRight(const Word *row, int x) {
    int count = std::countr_one(BitsFrom(row, x + 1));
    for (int more = count; HWY_UNLIKELY(more == WORD_BITS); count += more)
        more = std::countr_one(BitsFrom(row, x + 1 + count));
    return count;
}

HWY_INLINE void ClearSpan(Word *row, int first, int count) {
    Word *word = row + static_cast<unsigned>(first) / WORD_BITS;
    const unsigned bit = static_cast<unsigned>(first) % WORD_BITS;
    for (; HWY_UNLIKELY(count > WORD_BITS); ++word, count -= WORD_BITS) {
        word[0] &= ~(~Word{0} << bit);
        word[1] &= ~(~Word{0} >> 1 >> (WORD_BITS - 1 - bit));
    }
    word[0] &= ~(Ones(count) << bit);
    word[1] &= ~(Ones(count) >> 1 >> (WORD_BITS - 1 - bit));
}

/// Points that are written at once; so many more may be written than there are.
constexpr int POINTS_AT_ONCE = 16;

/// Writes count points from (x, y) on to the left or right.
HWY_INLINE void WritePoints(POINT *points, int x, int y, int step, int count) {
    typedef std::int32_t Points __attribute__((vector_size(4 * sizeof(POINT))));
    Points next{x, y, x + step, y, x + 2 * step, y, x + 3 * step, y};
    const Points stride{4 * step, 0, 4 * step, 0, 4 * step, 0, 4 * step, 0};
    do {
        for (int i = 0; i < POINTS_AT_ONCE; i += 4, points += 4, next += stride)
            std::memcpy(points, &next, sizeof next);
        count -= POINTS_AT_ONCE;
    } while (HWY_UNLIKELY(count > 0));
}

/// The pixel of the stretch nearest to its end with an unvisited one above or below.
HWY_INLINE bool FindBranch(const Word *above, const Word *below, const Stretch &stretch, int &x) {
    const auto isAbout = [&](int first) { return BitsFrom(above, first) | BitsFrom(below, first); };
    if (stretch.from > stretch.to) {
        for (int first = stretch.to;; first += WORD_BITS) {
            const int count = std::min(stretch.from - first + 1, WORD_BITS);
            const Word bits = isAbout(first) & Ones(count);
            x = first + std::countr_zero(bits);
            if (bits != 0 || HWY_LIKELY(first + count > stretch.from))
                return bits != 0;
        }
    }
    for (int last = stretch.to;; last -= WORD_BITS) {
        const int first = std::max(last - WORD_BITS + 1, stretch.from);
        const Word bits = isAbout(first) & Ones(last - first + 1);
        x = first + WORD_BITS - 1 - std::countl_zero(bits | 1);
        if (bits != 0 || HWY_LIKELY(first == stretch.from))
            return bits != 0;
    }
}

/// From so many pixels on it is worth it to count how many more a blob may have, lest it gets room
/// for many more.
constexpr std::size_t COUNTED_FROM = 65536;

std::size_t CountBits(const PixelMap &map) {
    std::size_t count = 0;
    for (const Word word : map.Words())
        count += static_cast<std::size_t>(std::popcount(word));
    return count;
}

std::size_t TraceBlob(BlobWalker::Scratch &scratch, int seedX, int seedY, std::int64_t maxCount) {
    Word *const top = scratch.unvisited.Row(0);
    const std::ptrdiff_t stride = scratch.unvisited.Row(1) - top;
    std::size_t wayLength = 0;
    Word *row = top + seedY * stride;
    POINT *first = scratch.points.Next();
    POINT *next = first;
    POINT *end = first + scratch.points.Room();
    // Takes a pixel and, as far as they are unvisited, those on one side; returns the last one.
    const auto take = [&](int x, int y, int step, int others) {
        const auto count =
            static_cast<int>(std::min<std::int64_t>(others + 1, maxCount - (next - first)));
        if (HWY_UNLIKELY(count + POINTS_AT_ONCE > end - next)) {
            const auto written = static_cast<std::size_t>(next - first);
            const std::size_t size = written + static_cast<std::size_t>(count) + POINTS_AT_ONCE;
            // Of a large blob; the seed may have been visited before.
            const std::size_t most =
                written < COUNTED_FROM
                    ? std::numeric_limits<std::size_t>::max()
                    : written + CountBits(scratch.unvisited) + 1 + POINTS_AT_ONCE;
            scratch.points.MakeRoom(size, written, std::max(size, most));
            first = scratch.points.Next();
            next = first + written;
            end = first + scratch.points.Room();
        }
        WritePoints(next, x, y, step, count);
        next += count;
        const int last = x + step * (count - 1);
        ClearSpan(row, std::min(x, last), count);
        return last;
    };
    for (int x = seedX, y = seedY;;) {
        const int toTheLeft = CountToTheLeft(row, x);
        const int toTheRight = CountToTheRight(row, x);
        Stretch last{y, x, 0};
        // Which side it is cannot be foretold, so that one piece of code serves both.
        const bool isLeft = toTheLeft > 0;
        last.to = take(x, y, isLeft ? -1 : 1, isLeft ? toTheLeft : toTheRight);
        while (true) {
            if (next - first >= maxCount)
                return static_cast<std::size_t>(next - first);
            const bool isFound = FindBranch(row - stride, row + stride, last, x);
            if (isFound && (x != last.from || last.from <= last.to))
                break;
            if (last.from > last.to) {
                // Back where the row was entered.
                const int others = CountToTheRight(row, last.from);
                if (others > 0) {
                    last.to = take(last.from + 1, last.y, 1, others - 1);
                    continue;
                }
                if (isFound)
                    break;
            }
            if (wayLength == 0)
                return static_cast<std::size_t>(next - first);
            last = scratch.way[--wayLength];
            row = top + last.y * stride;
        }
        if (HWY_UNLIKELY(wayLength == scratch.way.size()))
            scratch.way.resize(2 * wayLength + 1);
        scratch.way[wayLength++] = {last.y, last.from, x};
        const bool isUp = (BitsFrom(row - stride, x) & 1) != 0;
        y = isUp ? last.y - 1 : last.y + 1;
        row += isUp ? -stride : stride;
    }
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(TraceBlob);

void PixelMap::Mark(const PixelClass &pixels, int width, int height) {
    m_stride = WordsOf(width) + 1;
    m_words.resize(m_stride * (static_cast<std::size_t>(height) + 2));
    std::fill_n(Row(-1), m_stride, 0);
    for (int y = 0; y < height; ++y) {
        pixels.MarkRow(y, Row(y));
        Row(y)[m_stride - 1] = 0;
    }
    std::fill_n(Row(height), m_stride, 0);
}

BlobWalker::BlobWalker(const PixelClass &pixels, int width, int height, Scratch &scratch)
    : m_scratch(scratch) {
    scratch.unvisited.Mark(pixels, width, height);
}

std::size_t BlobWalker::Trace(int seedX, int seedY, std::int64_t maxCount) {
    return HWY_DYNAMIC_DISPATCH(TraceBlob)(m_scratch, seedX, seedY, maxCount);
}

} // namespace tavix
#endif
