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

static_assert(std::endian::native == std::endian::little,
              "bits of a row follow each other in bytes");

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

/// WORD_BITS pixels of a row, x among them. They begin with a byte, so that one load gets them. To
/// the left of the row lies the empty word of the row before.
class Window {
public:
    /// 32 or more pixels to the left of x and 24 or more to its right.
    HWY_INLINE static Window Around(int x) { return {x, WORD_BITS / 2 + (x & 7)}; }
    /// 56 or more pixels to the right of x.
    HWY_INLINE static Window From(int x) { return {x, x & 7}; }
    /// The one in which x has this place.
    HWY_INLINE Window(int x, int bit) : m_byte((x - bit) >> 3), m_bit(bit) {}

    /// The place of x.
    HWY_INLINE int Bit() const { return m_bit; }
    HWY_INLINE Word Of(const Word *row) const {
        Word bits;
        std::memcpy(&bits, reinterpret_cast<const char *>(row) + m_byte, sizeof bits);
        return bits;
    }
    /// What is stored can be loaded before it reaches the cache, but only from within one store:
    /// this one holds all windows whose pixels are in this one.
    HWY_INLINE void Clear(Word *row, Word bits) const {
        typedef Word Words __attribute__((vector_size(4 * sizeof(Word))));
        char *const bytes = reinterpret_cast<char *>(row) + m_byte - sizeof(Word);
        Words words;
        std::memcpy(&words, bytes, sizeof words);
        words &= ~Words{0, bits, 0, 0};
        std::memcpy(bytes, &words, sizeof words);
    }

private:
    std::ptrdiff_t m_byte;
    int m_bit;
};

/// The place of the highest set bit of a word that has one.
HWY_INLINE int HighestBit(Word bits) {
    return WORD_BITS - 1 - std::countl_zero(bits);
}

/// Those bits from a set one upwards that follow each other: a carry runs through them.
HWY_INLINE Word RunFrom(Word first, Word bits) {
    return bits & ~(bits + first);
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

/// The pixel nearest to the end of a stretch with an unvisited one above or below.
HWY_NOINLINE bool FindBranch(const Word *above, const Word *below, int from, int to, int &x) {
    const auto isAbout = [&](int first) { return BitsFrom(above, first) | BitsFrom(below, first); };
    if (from > to) {
        for (int first = to;; first += WORD_BITS) {
            const int count = std::min(from - first + 1, WORD_BITS);
            const Word bits = isAbout(first) & Ones(count);
            x = first + std::countr_zero(bits);
            if (bits != 0 || first + count > from)
                return bits != 0;
        }
    }
    for (int last = to;; last -= WORD_BITS) {
        const int first = std::max(last - WORD_BITS + 1, from);
        const Word bits = isAbout(first) & Ones(last - first + 1);
        x = first + WORD_BITS - 1 - std::countl_zero(bits | 1);
        if (bits != 0 || first == from)
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

/// Where a trace writes its points, and how many it may.
class Output {
public:
    Output(PointPool &pool, const PixelMap &unvisited, std::int64_t maxCount)
        : m_pool(pool), m_unvisited(unvisited), m_maxCount(maxCount), m_next(pool.Next()) {
        SetLimit();
    }

    std::int64_t Count() const { return m_next - m_pool.Next(); }
    bool IsFull() const { return Count() == m_maxCount; }
    /// Whether so many can be written, and are not the last ones that may be.
    HWY_INLINE bool HasMoreThan(int count) const {
        // Addresses, for the difference of two pointers is divided; and there may be no memory yet.
        return reinterpret_cast<std::uintptr_t>(m_next) +
                   static_cast<std::size_t>(count) * sizeof(POINT) <
               reinterpret_cast<std::uintptr_t>(m_limit);
    }
    /// Makes room for count more points; returns for how many, less when so many may not be.
    HWY_NOINLINE int Admit(int count) {
        const std::int64_t written = Count();
        count = static_cast<int>(std::min<std::int64_t>(count, m_maxCount - written));
        if (count > Room())
            MakeRoom(static_cast<std::size_t>(written), static_cast<std::size_t>(count));
        SetLimit();
        return count;
    }
    /// Writes count points from (x, y) on to one side, for which there is room.
    HWY_INLINE void Write(int x, int y, bool isLeft, int count) {
        // Where points will be written is on its way from the farther caches.
        __builtin_prefetch(m_next + 512, 1);
        __builtin_prefetch(m_next + 520, 1);
        WritePoints(m_next, x, y, isLeft, count);
        m_next += count;
    }

private:
    /// Without what is written at once.
    std::int64_t Room() const {
        return static_cast<std::int64_t>(m_pool.Room()) - Count() - POINTS_AT_ONCE;
    }
    void SetLimit() {
        m_limit = m_next + std::clamp<std::int64_t>(m_maxCount - Count(), 0,
                                                    std::max<std::int64_t>(Room(), 0));
    }
    /// The seed may have been visited before.
    void MakeRoom(std::size_t written, std::size_t count) {
        const std::size_t size = written + count + POINTS_AT_ONCE;
        const std::size_t most = written < COUNTED_FROM
                                     ? std::numeric_limits<std::size_t>::max()
                                     : written + CountBits(m_unvisited) + 1 + POINTS_AT_ONCE;
        m_pool.MakeRoom(size, written, std::max(size, most));
        m_next = m_pool.Next() + written;
    }

    PointPool &m_pool;
    const PixelMap &m_unvisited;
    std::int64_t m_maxCount;
    POINT *m_next;
    const POINT *m_limit;
};

/// Takes so many pixels on one side of the first one, or as many as may be.
HWY_NOINLINE void TakeMany(Stretch &stretch, Output &out, int first, bool isLeft, int wanted) {
    const int count = out.Admit(wanted);
    out.Write(first, stretch.y, isLeft, count);
    ClearSpan(stretch.row, isLeft ? first - count + 1 : first, count);
    stretch.to = isLeft ? first - count + 1 : first + count - 1;
}

/// Finds where a far stretch goes on; it ends there then.
HWY_NOINLINE bool FindFarBranch(Stretch &stretch, Output &out, std::ptrdiff_t stride) {
    int x = 0;
    const auto find = [&] {
        return FindBranch(stretch.row - stride, stretch.row + stride, stretch.from, stretch.to, x);
    };
    if (out.IsFull())
        return false;
    bool isFound = find();
    if (stretch.from > stretch.to && (!isFound || x == stretch.from)) {
        // Back where the row was entered.
        const int others = CountToTheRight(stretch.row, stretch.from);
        if (others > 0) {
            TakeMany(stretch, out, stretch.from + 1, false, others);
            isFound = !out.IsFull() && find();
        }
    }
    stretch.to = x;
    return isFound;
}

/// Where a near stretch goes on, of its pixels next to unvisited ones: the nearest to its end,
/// which is there then. Entry is the bit in which it began.
HWY_INLINE int TurnOff(Word &near, Word entry, Word candidates) {
    const bool isLeft = (near & (entry - 1)) != 0;
    const int bit = isLeft ? std::countr_zero(candidates) : HighestBit(candidates);
    near &= isLeft ? ~Word{0} << bit : ~Word{0} >> (WORD_BITS - 1 - bit);
    return bit;
}

/// What of a stretch is needed at every step stands in variables of their own, for a struct would
/// be kept in memory.
std::size_t TraceBlob(BlobWalker::Scratch &scratch, int seedX, int seedY, std::int64_t maxCount) {
    const std::ptrdiff_t stride = scratch.unvisited.Row(1) - scratch.unvisited.Row(0);
    Output out(scratch.points, scratch.unvisited, maxCount);
    Stretch *wayStart = scratch.way.data();
    Stretch *way = wayStart;
    Stretch *wayEnd = way + scratch.way.size();
    Word *row = scratch.unvisited.Row(seedY);
    for (int x = seedX, y = seedY;;) {
        Window window = Window::Around(x);
        Word entry = Word{1} << window.Bit();
        const Word bits = window.Of(row) | entry; // A seed may have been visited.
        const bool isLeft = (bits & entry >> 1) != 0;
        Word others = isLeft ? bits & entry << 1 : 0;
        // To the left, from after the nearest visited pixel on.
        const Word visitedBefore = ~bits & (entry - 1);
        const Word toTheLeft = 2 * entry - (Word{2} << HighestBit(visitedBefore | 1));
        const Word toTheRight = RunFrom(entry, bits);
        Word stretch = isLeft ? toTheLeft : toTheRight;
        bool isNear = visitedBefore != 0 && stretch >> (WORD_BITS - 1) == 0;
        if (HWY_UNLIKELY(!isNear && !isLeft)) {
            window = Window::From(x);
            entry = Word{1} << window.Bit();
            stretch = RunFrom(entry, window.Of(row) | entry);
            isNear = stretch >> (WORD_BITS - 1) == 0;
        }
        int at = window.Bit();
        const int count = std::popcount(stretch);
        int from = x;
        int to = 0;
        Word near = 0;
        Word up = 0;
        Word candidates = 0;
        if (HWY_LIKELY(isNear && out.HasMoreThan(count))) {
            out.Write(x, y, isLeft, count);
            near = stretch;
            window.Clear(row, near);
            up = window.Of(row - stride);
            candidates = (up | window.Of(row + stride)) & near;
        } else {
            Stretch far{0, row, from, to, y, 0};
            TakeMany(far, out, x, isLeft,
                     1 + (isLeft ? CountToTheLeft(row, x) : CountToTheRight(row, x)));
            to = far.to;
        }
        bool isUp = false;
        while (true) {
            if (HWY_UNLIKELY(near == 0)) {
                Stretch far{0, row, from, to, y, 0};
                const bool isFound = FindFarBranch(far, out, stride);
                if (out.IsFull())
                    return static_cast<std::size_t>(out.Count());
                x = to = far.to;
                if (isFound) {
                    isUp = (row[x / WORD_BITS - stride] >> x % WORD_BITS & 1) != 0;
                    break;
                }
            } else if (HWY_UNLIKELY(others != 0) && (candidates & ~entry) == 0) {
                // Back where the row was entered.
                const Window here = Window::From(from);
                at = here.Bit();
                entry = Word{1} << at;
                const Word rest = RunFrom(entry, here.Of(row) | entry);
                const int more = std::popcount(rest) - 1;
                if (HWY_LIKELY(rest >> (WORD_BITS - 1) == 0 && out.HasMoreThan(more))) {
                    out.Write(from + 1, y, false, more);
                    near = rest;
                    here.Clear(row, near);
                    up = here.Of(row - stride);
                    candidates = (up | here.Of(row + stride)) & near;
                    others = 0;
                    continue;
                }
                Stretch far{0, row, from, to, y, 0};
                TakeMany(far, out, from + 1, false, CountToTheRight(row, from));
                to = far.to;
                near = 0;
                continue;
            } else if (candidates != 0) {
                const int bit = TurnOff(near, entry, candidates);
                x = from + bit - at;
                isUp = (up >> bit & 1) != 0;
                break;
            }
            if (way == wayStart)
                return static_cast<std::size_t>(out.Count());
            --way;
            near = way->near;
            row = way->row;
            from = way->from;
            to = way->to;
            y = way->y;
            at = way->at;
            entry = Word{1} << at;
            const Window back(from, at);
            up = back.Of(row - stride);
            candidates = (up | back.Of(row + stride)) & near;
            others = back.Of(row) & entry << 1;
        }
        if (HWY_UNLIKELY(way == wayEnd)) {
            const std::size_t size = scratch.way.size();
            scratch.way.resize(2 * size + 1);
            wayStart = scratch.way.data();
            way = wayStart + size;
            wayEnd = wayStart + scratch.way.size();
        }
        *way++ = {near, row, from, to, y, at};
        y += isUp ? -1 : 1;
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
