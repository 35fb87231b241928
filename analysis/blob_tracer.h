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

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// The pixels of an image with one byte each.
struct GreyView {
    const unsigned char *pixels;
    int width;
    int height;
    std::ptrdiff_t stride;
};

class BlobTracer {
public:
    /// Bytes of the map for an image of this size.
    static constexpr std::size_t MapSize(int width, int height) {
        return (static_cast<std::size_t>(width) + 2) * (static_cast<std::size_t>(height) + 2);
    }

    /// Prepares the map, MapSize bytes, for the pixels for which isOfClass(grey value) holds.
    template <typename IsOfClass>
    BlobTracer(const GreyView &image, unsigned char *map, IsOfClass isOfClass)
        : m_map(map), m_stride(static_cast<std::ptrdiff_t>(image.width) + 2), m_width(image.width) {
        std::memset(map, Blocked, MapSize(image.width, image.height));
        for (int y = 0; y < image.height; ++y) {
            const unsigned char *const row = image.pixels + y * image.stride;
            unsigned char *const cells = map + Offset(0, y);
            for (int x = 0; x < image.width; ++x)
                cells[x] = isOfClass(row[x]) ? Unvisited : Blocked;
        }
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
    BlobTrace Trace(int seedX, int seedY, std::int64_t maxCount) {
        BlobTrace blob{1, seedX, seedY, seedX, seedY};
        int x = seedX;
        int y = seedY;
        unsigned char *cell = m_map + Offset(x, y);
        *cell = Seed;
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

    std::ptrdiff_t Offset(int x, int y) const { return (y + 1) * m_stride + x + 1; }

    unsigned char *m_map;
    std::ptrdiff_t m_stride;
    int m_width;
};

} // namespace tavix
