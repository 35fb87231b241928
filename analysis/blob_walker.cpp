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
using TavixArray::detail::PointPool;

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

/// Bit MIDDLE is pixel x, and NEAR pixels on each side lie around it. To the left of the row lies
/// the empty word of the row before.
constexpr int MIDDLE = WORD_BITS / 2;
constexpr int NEAR = MIDDLE - 1;

/// The bits of two rows around x.
HWY_INLINE Word BitsAround(const Word *row, const Word *other, int x) {
    const int first = x - MIDDLE;
    const std::ptrdiff_t word = first >> 6; // Below 0 it rounds down.
    const unsigned bit = static_cast<unsigned>(first) % WORD_BITS;
    return (row[word] | other[word]) >> bit | (row[word + 1] | other[word + 1])
                                                  << 1 << (WORD_BITS - 1 - bit);
}

HWY_INLINE Word BitsAround(const Word *row, int x) {
    return BitsAround(row, row, x);
}

/// How many unvisited pixels follow each other to the left of x.
HWY_NOINLINE int CountToTheLeft(const Word *row, int x) {
    // Of the word that ends before x; row - 1 is the empty word of the row before. Its first bit is
    // taken for visited, for a word without any would be a case of its own.
    constexpr int most = WORD_BITS - 1;
    int count = std::countl_zero(~BitsFrom(row - 1, x) | 1);
    for (int more = count; more == most; count += more)
        more = std::countl_zero(~BitsFrom(row - 1, x - count) | 1);
    return count;
}

HWY_NOINLINE int CountToTheRight(const Word *row, int x) {
    int count = std::countr_one(BitsFrom(row, x + 1));
    for (int more = count; more == WORD_BITS; count += more)
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

/// A few points, as coordinates side by side.
constexpr int POINTS = 4;
typedef std::int32_t Points __attribute__((vector_size(POINTS * sizeof(POINT))));
typedef std::int64_t PointBits __attribute__((vector_size(sizeof(Points))));

/// Writes count points from (x, y) on to the left or right.
HWY_INLINE void WritePoints(POINT *points, int x, int y, bool isLeft, int count) {
    // To the right and to the left: what comes to the points, and from some to the next ones.
    static constexpr Points offsets[] = {{0, 0, 1, 0, 2, 0, 3, 0}, {0, 0, -1, 0, -2, 0, -3, 0}};
    static constexpr Points strides[] = {{4, 0, 4, 0, 4, 0, 4, 0}, {-4, 0, -4, 0, -4, 0, -4, 0}};
    const std::int64_t point = static_cast<std::int64_t>(y) << 32 | static_cast<std::uint32_t>(x);
    Points next = reinterpret_cast<Points>(PointBits{} + point) + offsets[isLeft];
    do {
        for (int i = 0; i < POINTS_AT_ONCE; i += POINTS, points += POINTS, next += strides[isLeft])
            std::memcpy(points, &next, sizeof next);
        count -= POINTS_AT_ONCE;
    } while (HWY_UNLIKELY(count > 0));
}

/// The pixel of a long stretch nearest to its end with an unvisited one above or below.
HWY_NOINLINE bool FindFarBranch(const Word *above, const Word *below, const Stretch &stretch,
                                int &x) {
    const auto isAbout = [&](int first) { return BitsFrom(above, first) | BitsFrom(below, first); };
    if (stretch.from > stretch.to) {
        for (int first = stretch.to;; first += WORD_BITS) {
            const int count = std::min(stretch.from - first + 1, WORD_BITS);
            const Word bits = isAbout(first) & Ones(count);
            x = first + std::countr_zero(bits);
            if (bits != 0 || first + count > stretch.from)
                return bits != 0;
        }
    }
    for (int last = stretch.to;; last -= WORD_BITS) {
        const int first = std::max(last - WORD_BITS + 1, stretch.from);
        const Word bits = isAbout(first) & Ones(last - first + 1);
        x = first + WORD_BITS - 1 - std::countl_zero(bits | 1);
        if (bits != 0 || first == stretch.from)
            return bits != 0;
    }
}

/// The same of any stretch.
HWY_INLINE bool FindBranch(const Word *above, const Word *below, const Stretch &stretch, int &x) {
    const int length = stretch.to - stretch.from; // Less one; below 0 to the left.
    if (HWY_UNLIKELY(static_cast<unsigned>(length + NEAR) > 2 * NEAR))
        return FindFarBranch(above, below, stretch, x);
    const Word bits = BitsAround(above, below, stretch.to);
    if (length < 0) {
        const Word some = bits >> MIDDLE & Ones(1 - length);
        x = stretch.to + std::countr_zero(some);
        return some != 0;
    }
    const Word some = bits << NEAR & ~(~Word{0} >> 1 >> length);
    x = stretch.to - std::countl_zero(some);
    return some != 0;
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

/// Where a trace writes its points.
struct Output {
    PointPool &pool;
    POINT *next;
    std::ptrdiff_t room; ///< Without what is written at once.
};

/// Makes room for count more points of a blob of which so many are written. The seed may have been
/// visited before.
HWY_NOINLINE void MakeRoom(Output &out, const PixelMap &unvisited, std::size_t written,
                           std::size_t count) {
    const std::size_t size = written + count + POINTS_AT_ONCE;
    const std::size_t most = written < COUNTED_FROM
                                 ? std::numeric_limits<std::size_t>::max()
                                 : written + CountBits(unvisited) + 1 + POINTS_AT_ONCE;
    out.pool.MakeRoom(size, written, std::max(size, most));
    out.next = out.pool.Next() + written;
    out.room = static_cast<std::ptrdiff_t>(out.pool.Room() - written) - POINTS_AT_ONCE;
}

std::size_t TraceBlob(BlobWalker::Scratch &scratch, int seedX, int seedY, std::int64_t maxCount) {
    Word *const top = scratch.unvisited.Row(0);
    const std::ptrdiff_t stride = scratch.unvisited.Row(1) - top;
    std::size_t wayLength = 0;
    std::int64_t left = maxCount;
    Word *row = top + seedY * stride;
    Output out{scratch.points, scratch.points.Next(),
               static_cast<std::ptrdiff_t>(scratch.points.Room()) - POINTS_AT_ONCE};
    // Takes so many pixels from x on to one side, as long as more are wanted; returns the last one.
    const auto take = [&](int x, int y, bool isLeft, int wanted) {
        const auto count = static_cast<int>(std::min<std::int64_t>(wanted, left));
        if (HWY_UNLIKELY(count > out.room))
            MakeRoom(out, scratch.unvisited, static_cast<std::size_t>(maxCount - left),
                     static_cast<std::size_t>(count));
        // Where points will be written is on its way from the farther caches.
        __builtin_prefetch(out.next + 512, 1);
        __builtin_prefetch(out.next + 520, 1);
        WritePoints(out.next, x, y, isLeft, count);
        out.next += count;
        out.room -= count;
        left -= count;
        const int first = isLeft ? x - count + 1 : x;
        ClearSpan(row, first, count);
        return isLeft ? first : first + count - 1;
    };
    for (int x = seedX, y = seedY;;) {
        const Word bits = BitsAround(row, x);
        int toTheLeft = std::countl_one(bits << MIDDLE);
        int toTheRight = std::countr_one(bits >> MIDDLE >> 1);
        if (HWY_UNLIKELY(toTheLeft == MIDDLE))
            toTheLeft = CountToTheLeft(row, x);
        if (HWY_UNLIKELY(toTheRight == NEAR))
            toTheRight = CountToTheRight(row, x);
        // Which side it is cannot be foretold, so that one piece of code serves both.
        const bool isLeft = toTheLeft > 0;
        Stretch last{y, x, 0};
        last.to = take(x, y, isLeft, 1 + (isLeft ? toTheLeft : toTheRight));
        while (true) {
            if (left == 0)
                return static_cast<std::size_t>(maxCount);
            const bool isFound = FindBranch(row - stride, row + stride, last, x);
            if (isFound && (x != last.from || last.from <= last.to))
                break;
            if (last.from > last.to) {
                // Back where the row was entered.
                int others = std::countr_one(BitsAround(row, last.from) >> MIDDLE >> 1);
                if (HWY_UNLIKELY(others == NEAR))
                    others = CountToTheRight(row, last.from);
                if (others > 0) {
                    last.to = take(last.from + 1, last.y, false, others);
                    continue;
                }
                if (isFound)
                    break;
            }
            if (wayLength == 0)
                return static_cast<std::size_t>(maxCount - left);
            last = scratch.way[--wayLength];
            row = top + last.y * stride;
        }
        if (HWY_UNLIKELY(wayLength == scratch.way.size()))
            scratch.way.resize(2 * wayLength + 1);
        scratch.way[wayLength++] = {last.y, last.from, x};
        const bool isUp = ((row - stride)[x / WORD_BITS] >> x % WORD_BITS & 1) != 0;
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
    m_words.resize(m_stride * (static_cast<std::size_t>(height) + 2) + 1);
    m_words.front() = 0;
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
