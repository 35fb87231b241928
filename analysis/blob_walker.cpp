#include "TAVIX20/analysis/blob_walker.h"

#include <algorithm>
#include <bit>

namespace tavix {

namespace {

/// Points for which there is room at first.
constexpr std::size_t FIRST_ROOM = 1024;

std::size_t WordOf(int x) {
    return static_cast<std::size_t>(x) / WORD_BITS;
}

std::uint64_t BitOf(int x) {
    return std::uint64_t{1} << x % WORD_BITS;
}

/// The bits of a word from this one up, and up to this one.
std::uint64_t FromBit(int x) {
    return ~std::uint64_t{0} << x % WORD_BITS;
}
std::uint64_t UpToBit(int x) {
    return ~std::uint64_t{0} >> (WORD_BITS - 1 - x % WORD_BITS);
}

} // namespace

BlobWalker::BlobWalker(const PixelClass &pixels, int width, int height, Scratch &scratch)
    : m_scratch(scratch), m_wordCount(WordsOf(width)), m_width(width) {
    Map &ofClass = scratch.ofClass;
    ofClass.resize(m_wordCount * (static_cast<std::size_t>(height) + 2));
    std::fill_n(ofClass.begin(), m_wordCount, 0);
    for (int y = 0; y < height; ++y)
        pixels.MarkRow(y, ofClass.data() + RowAt(y));
    std::fill_n(ofClass.end() - static_cast<std::ptrdiff_t>(m_wordCount), m_wordCount, 0);
    scratch.unvisited = ofClass;
    scratch.points.resize(std::max<std::size_t>(scratch.points.size(), FIRST_ROOM));
}

bool BlobWalker::IsSet(const Map &map, int x, int y) const {
    return (map[RowAt(y) + WordOf(x)] & BitOf(x)) != 0;
}

bool BlobWalker::HasNeighbourIn(const Map &map, int x, int y) const {
    return (x > 0 && IsSet(map, x - 1, y)) || (x + 1 < m_width && IsSet(map, x + 1, y)) ||
           IsSet(map, x, y - 1) || IsSet(map, x, y + 1);
}

int BlobWalker::Find(const Map &map, int x, int y) const {
    if (x >= m_width)
        return m_width;
    const std::uint64_t *const row = map.data() + RowAt(y);
    std::size_t word = WordOf(x);
    std::uint64_t bits = row[word] & FromBit(x);
    while (bits == 0 && ++word < m_wordCount)
        bits = row[word];
    return bits == 0 ? m_width : static_cast<int>(word) * WORD_BITS + std::countr_zero(bits);
}

/// Whether the pixel was unvisited, which it is no longer.
bool BlobWalker::TakeOne(int x, int y) {
    std::uint64_t &word = m_scratch.unvisited[RowAt(y) + WordOf(x)];
    const bool isUnvisited = (word & BitOf(x)) != 0;
    word &= ~BitOf(x);
    return isUnvisited;
}

/// How many unvisited pixels follow each other to the left of x.
int BlobWalker::UnvisitedToTheLeft(int x, int y) const {
    const std::uint64_t *const row = m_scratch.unvisited.data() + RowAt(y);
    int count = 0;
    for (int at = x - 1; at >= 0;) {
        const int available = at % WORD_BITS + 1;
        const int ones = std::countl_one(row[WordOf(at)] << (WORD_BITS - available));
        count += ones;
        if (ones < available)
            break;
        at -= available;
    }
    return count;
}

int BlobWalker::UnvisitedToTheRight(int x, int y) const {
    const std::uint64_t *const row = m_scratch.unvisited.data() + RowAt(y);
    int count = 0;
    for (int at = x + 1; at < m_width;) {
        const int available = WORD_BITS - at % WORD_BITS;
        const int ones = std::countr_one(row[WordOf(at)] >> at % WORD_BITS);
        count += ones;
        if (ones < available)
            break;
        at += available;
    }
    return count;
}

void BlobWalker::ClearSpan(int y, int first, int last) {
    std::uint64_t *const row = m_scratch.unvisited.data() + RowAt(y);
    const std::size_t lastWord = WordOf(last);
    std::size_t word = WordOf(first);
    if (word == lastWord) {
        row[word] &= ~(FromBit(first) & UpToBit(last));
        return;
    }
    row[word] &= ~FromBit(first);
    while (++word < lastWord)
        row[word] = 0;
    row[word] &= ~UpToBit(last);
}

/// The pixel of the stretch nearest to its end, which does not count, with an unvisited one above
/// or below.
bool BlobWalker::FindBranch(const Scratch::Stretch &stretch, int &x) const {
    const std::uint64_t *const above = m_scratch.unvisited.data() + RowAt(stretch.y - 1);
    const std::uint64_t *const below = m_scratch.unvisited.data() + RowAt(stretch.y + 1);
    if (stretch.from > stretch.to) {
        const int first = stretch.to + 1;
        std::uint64_t limit = FromBit(first);
        for (std::size_t word = WordOf(first); word <= WordOf(stretch.from); ++word) {
            const std::uint64_t bits = (above[word] | below[word]) & limit;
            limit = ~std::uint64_t{0};
            if (bits != 0) {
                x = static_cast<int>(word) * WORD_BITS + std::countr_zero(bits);
                return x <= stretch.from;
            }
        }
    } else if (stretch.from < stretch.to) {
        const int last = stretch.to - 1;
        std::uint64_t limit = UpToBit(last);
        for (std::size_t word = WordOf(last) + 1; word-- > WordOf(stretch.from);) {
            const std::uint64_t bits = (above[word] | below[word]) & limit;
            limit = ~std::uint64_t{0};
            if (bits != 0) {
                x = static_cast<int>(word) * WORD_BITS + WORD_BITS - 1 - std::countl_zero(bits);
                return x >= stretch.from;
            }
        }
    }
    return false;
}

/// Goes back from the end of the last stretch, where nothing is left, to the nearest pixel with an
/// unvisited neighbour; false when there is none.
bool BlobWalker::StepBack(int &x, int &y) {
    std::vector<Scratch::Stretch> &way = m_scratch.way;
    while (true) {
        if (FindBranch(way.back(), x)) {
            way.back().to = x;
            return true;
        }
        way.pop_back();
        if (way.empty())
            return false;
        x = way.back().to;
        y = way.back().y;
        if (HasNeighbourIn(m_scratch.unvisited, x, y))
            return true;
    }
}

BlobTrace BlobWalker::Trace(int seedX, int seedY, std::int64_t maxCount) {
    BlobTrace blob{1, seedX, seedY, seedX, seedY};
    int x = seedX;
    int y = seedY;
    std::vector<POINT> &points = m_scratch.points;
    points[0] = {x, y};
    TakeOne(x, y);
    m_scratch.way.assign(1, {y, x, x});
    // Takes count pixels from x on to the left or right.
    const auto takeAcross = [&](int available, int step) {
        const int count =
            static_cast<int>(std::min<std::int64_t>(available, maxCount - blob.pixelCount));
        const auto size = static_cast<std::size_t>(blob.pixelCount);
        if (size + static_cast<std::size_t>(count) > points.size())
            points.resize(2 * points.size() + static_cast<std::size_t>(count));
        m_scratch.way.push_back({y, x + step, x + count * step});
        POINT *point = points.data() + size;
        for (int i = 0; i < count; ++i)
            *point++ = {x += step, y};
        blob.pixelCount += count;
    };
    const auto takeOneDown = [&](int step) {
        y += step;
        if (static_cast<std::size_t>(blob.pixelCount) == points.size())
            points.resize(2 * points.size());
        points[static_cast<std::size_t>(blob.pixelCount++)] = {x, y};
        m_scratch.way.push_back({y, x, x});
    };
    while (blob.pixelCount < maxCount) {
        if (const int toTheLeft = UnvisitedToTheLeft(x, y); toTheLeft > 0) {
            const int right = x - 1;
            takeAcross(toTheLeft, -1);
            ClearSpan(y, x, right);
            blob.left = std::min(blob.left, x);
        } else if (const int toTheRight = UnvisitedToTheRight(x, y); toTheRight > 0) {
            const int left = x + 1;
            takeAcross(toTheRight, 1);
            ClearSpan(y, left, x);
            blob.right = std::max(blob.right, x);
        } else if (TakeOne(x, y - 1)) {
            takeOneDown(-1);
            blob.top = std::min(blob.top, y);
        } else if (TakeOne(x, y + 1)) {
            takeOneDown(1);
            blob.bottom = std::max(blob.bottom, y);
        } else if (!StepBack(x, y)) {
            break;
        }
    }
    return blob;
}

} // namespace tavix
