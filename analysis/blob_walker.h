/// The walk that collects one blob, a 4-connected region of pixels of one class, in its own order.
///
/// Depth first, without recursion: from the current pixel the neighbours left, right, up and down
/// are tried in this order; the first one that lies in the image, is of the class and has not been
/// visited is taken. When there is none the walk steps back to the pixel it came from; at the seed
/// it ends.
///
/// Pixels are bits here, in a map of what is unvisited. A walk that comes to a row goes on to the
/// left as long as it can, or else to the right; so whole stretches are taken at once, and the way
/// back is a stack of stretches, not a note on each pixel. On the way back along a stretch only
/// what lies above and below can be left to visit, and the nearest such pixel is found by its bit.
/// Only where the walk came to the row and went left, what is on the right comes before that.
#pragma once

#include "TAVIX20/analysis/pixel_class.h"
#include "TAVIX20/containers/point_block.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace tavix {

/// Rows of bits, each between empty words, with an empty row above and below: what is looked for
/// beyond an edge is not there.
class PixelMap {
public:
    /// Sets the bits of the class. Throws std::bad_alloc.
    void Mark(const PixelClass &pixels, int width, int height);
    std::uint64_t *Row(int y) { return m_words.data() + RowAt(y); }
    const std::uint64_t *Row(int y) const { return m_words.data() + RowAt(y); }
    std::span<const std::uint64_t> Words() const { return m_words; }

private:
    std::size_t RowAt(int y) const { return static_cast<std::size_t>(y + 1) * m_stride + 1; }

    std::vector<std::uint64_t> m_words;
    std::size_t m_stride = 0;
};

class BlobWalker {
public:
    /// Pixels of a row from which the walk may have to go on, in the order in which it took them.
    struct Stretch {
        /// Bits of 64 pixels with the first one among them, if they hold all; else 0.
        std::uint64_t near;
        std::uint64_t *row;
        int from;
        int to; ///< The last one, unless they are near.
        int y;
        int at; ///< The bit of the first one, if they are near.
    };

    /// The memory of a walk, kept for the next one.
    struct Scratch {
        PixelMap unvisited;
        std::vector<Stretch> way;
        /// The pixels of a blob come next in it.
        TavixArray::detail::PointPool points;
    };

    /// Marks the pixels of the class, which must last. This and a trace throw std::bad_alloc.
    BlobWalker(const PixelClass &pixels, int width, int height, Scratch &scratch);

    /// Walks from the seed, visited before or not, until the blob or maxCount pixels are done;
    /// returns how many there are. They come next in the scratch's points, in the order in which
    /// they were taken.
    std::size_t Trace(int seedX, int seedY, std::int64_t maxCount);
    /// The same from a seed without unvisited neighbours.
    std::size_t TakeLone(int x, int y) {
        if (m_scratch.points.Room() == 0)
            m_scratch.points.MakeRoom(1, 0, 1);
        // In one store, for it is loaded as one next; two would have to reach the cache first.
        const std::int64_t point =
            static_cast<std::int64_t>(y) << 32 | static_cast<std::uint32_t>(x);
        static_assert(sizeof point == sizeof(POINT));
        std::memcpy(m_scratch.points.Next(), &point, sizeof point);
        return 1;
    }
    bool IsUnvisited(int x, int y) const {
        return (m_scratch.unvisited.Row(y)[x / WORD_BITS] >> x % WORD_BITS & 1) != 0;
    }
    /// Calls seed(x, isLone) for the unvisited pixels of a row from x1 to x2, in order, except for
    /// those that it has visited until then, and until it returns false. isLone says that no
    /// neighbour was unvisited when the row was come to.
    template <typename Seed>
    void ForEachUnvisited(int y, int x1, int x2, Seed seed) const;

private:
    Scratch &m_scratch;
};

template <typename Seed>
void BlobWalker::ForEachUnvisited(int y, int x1, int x2, Seed seed) const {
    const std::uint64_t *const row = m_scratch.unvisited.Row(y);
    const std::uint64_t *const above = m_scratch.unvisited.Row(y - 1);
    const std::uint64_t *const below = m_scratch.unvisited.Row(y + 1);
    for (int word = x1 / WORD_BITS; word <= x2 / WORD_BITS; ++word) {
        std::uint64_t bits = row[word];
        if (bits == 0)
            continue;
        const int base = word * WORD_BITS;
        std::uint64_t wanted = SpanBits(base, x1, x2);
        const std::uint64_t lone = ~(bits << 1 | row[word - 1] >> (WORD_BITS - 1) | bits >> 1 |
                                     row[word + 1] << (WORD_BITS - 1) | above[word] | below[word]);
        for (; (bits & wanted) != 0; bits = row[word]) {
            const int bit = std::countr_zero(bits & wanted);
            // Up to this one there are no more.
            wanted &= ~std::uint64_t{1} << bit;
            if (!seed(base + bit, (lone >> bit & 1) != 0))
                return;
        }
    }
}

} // namespace tavix
