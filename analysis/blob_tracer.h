/// The walk that collects one blob: a 4-connected region of pixels of one class.
///
/// Depth first, without recursion: from the current pixel the neighbours left, right, up and down
/// are tried in this order; the first one that lies in the image, is of the class and has not been
/// visited is taken. When there is none the walk steps back to the pixel it came from; at the seed
/// it ends. The visit map acts as the stack: it notes for every visited pixel where the walk came
/// from.
///
/// The map has one byte a pixel and a border of one byte all around. The border and the pixels that
/// are not of the class are blocked from the start, so a step of the walk looks at one byte and
/// tests neither the image's edge nor the pixel.
#pragma once

#include "TAVIX20/analysis/pixel_class.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tavix {

/// What a trace found: the number of pixels and their inclusive bounding box.
struct BlobTrace {
    std::int64_t pixelCount;
    int left;
    int top;
    int right;
    int bottom;

    bool IsOnePoint() const { return pixelCount == 1; }
};

class BlobTracer {
public:
    /// Bytes of the map for an image of this size.
    static constexpr std::size_t MapSize(int width, int height) {
        // Rows are written eight pixels at a time.
        return (static_cast<std::size_t>(width) + 2) * (static_cast<std::size_t>(height) + 2) + 8;
    }

    /// Prepares the map, MapSize bytes, for the pixels of the class. Throws std::bad_alloc.
    BlobTracer(const PixelClass &pixels, int width, int height, unsigned char *map)
        : m_map(map), m_stride(static_cast<std::ptrdiff_t>(width) + 2), m_width(width) {
        std::memset(map, Blocked, static_cast<std::size_t>(m_stride));
        std::vector<std::uint64_t> words(WordsOf(width));
        for (int y = 0; y < height; ++y) {
            pixels.MarkRow(y, words.data());
            unsigned char *cells = map + Offset(-1, y);
            *cells++ = Blocked;
            for (int x = 0; x < width; x += 8, cells += 8)
                std::memcpy(cells, &CELLS[words[static_cast<std::size_t>(x) / 64] >> x % 64 & 0xFF],
                            8);
            map[Offset(width, y)] = Blocked;
        }
        std::memset(map + Offset(-1, height), Blocked, static_cast<std::size_t>(m_stride));
    }

    bool IsOfClass(int x, int y) const { return m_map[Offset(x, y)] != Blocked; }

    /// True when a 4-neighbour inside the image is of the class.
    bool HasNeighbour(int x, int y) const {
        const unsigned char *const cell = m_map + Offset(x, y);
        return cell[1] != Blocked || cell[-1] != Blocked || cell[m_stride] != Blocked ||
               cell[-m_stride] != Blocked;
    }

    /// The first pixel at or right of x in row y that is of the class and unvisited; the image's
    /// width when there is none.
    int FindUnvisited(int x, int y) const {
        const unsigned char *const row = m_map + Offset(0, y);
        const auto *const found = static_cast<const unsigned char *>(
            std::memchr(row + x, Unvisited, static_cast<std::size_t>(m_width - x)));
        return found ? static_cast<int>(found - row) : m_width;
    }

    /// Walks from the seed, visited before or not, until the blob or maxCount pixels are done.
    /// Calls visit(x, y) for every pixel taken, the seed first.
    template <typename Visit>
    BlobTrace Trace(int seedX, int seedY, std::int64_t maxCount, Visit visit) {
        BlobTrace blob{1, seedX, seedY, seedX, seedY};
        int x = seedX;
        int y = seedY;
        unsigned char *cell = m_map + Offset(x, y);
        *cell = Seed;
        visit(x, y);
        while (blob.pixelCount < maxCount) {
            if (cell[-1] == Unvisited) {
                *--cell = CameFromRight;
                blob.left = std::min(blob.left, --x);
            } else if (cell[1] == Unvisited) {
                *++cell = CameFromLeft;
                blob.right = std::max(blob.right, ++x);
            } else if (cell[-m_stride] == Unvisited) {
                *(cell -= m_stride) = CameFromBelow;
                blob.top = std::min(blob.top, --y);
            } else if (cell[m_stride] == Unvisited) {
                *(cell += m_stride) = CameFromAbove;
                blob.bottom = std::max(blob.bottom, ++y);
            } else {
                switch (*cell) {
                case CameFromLeft:
                    --cell;
                    --x;
                    break;
                case CameFromRight:
                    ++cell;
                    ++x;
                    break;
                case CameFromAbove:
                    cell -= m_stride;
                    --y;
                    break;
                case CameFromBelow:
                    cell += m_stride;
                    ++y;
                    break;
                default:
                    return blob;
                }
                continue;
            }
            ++blob.pixelCount;
            visit(x, y);
        }
        return blob;
    }

private:
    enum Cell : unsigned char {
        Unvisited,
        CameFromLeft,
        CameFromRight,
        CameFromAbove,
        CameFromBelow,
        Seed,
        Blocked = 0xFF,
    };

    /// The cells of eight pixels, of which bit n of the index says whether pixel n is of the class.
    static constexpr auto CELLS = [] {
        std::array<std::array<unsigned char, 8>, 256> cells{};
        for (unsigned bits = 0; bits < 256; ++bits)
            for (unsigned n = 0; n < 8; ++n)
                cells[bits][n] = (bits >> n & 1) != 0 ? Unvisited : Blocked;
        return cells;
    }();

    std::ptrdiff_t Offset(int x, int y) const { return (y + 1) * m_stride + x + 1; }

    unsigned char *m_map;
    std::ptrdiff_t m_stride;
    int m_width;
};

} // namespace tavix
