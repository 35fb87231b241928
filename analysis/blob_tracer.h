/// The walk that collects one blob: a 4-connected region of pixels of one class.
///
/// Depth first, without recursion: from the current pixel the neighbours left, right, up and down
/// are tried in this order; the first one that lies in the image, is of the class and has not been
/// visited is taken. When there is none the walk steps back to the pixel it came from; at the seed
/// it ends. The visit map notes for every visited pixel where the walk came from, so that it acts
/// as the stack. One byte a pixel holds what the walk needs: visited or not, and the direction back.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

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

/// A pixel buffer with 1 byte a pixel.
struct GreyView {
    const unsigned char *pixels;
    int width;
    int height;
    std::ptrdiff_t stride;
};

/// Traces blobs on one image. IsOfClass tells of a grey value whether it is of the class.
template <typename IsOfClass>
class BlobTracer {
public:
    /// The visit map holds stride * height bytes, all 0.
    BlobTracer(const GreyView &image, unsigned char *visitMap, IsOfClass isOfClass)
        : m_image(image), m_visitMap(visitMap), m_isOfClass(isOfClass) {}

    bool IsSeed(int x, int y) const { return m_isOfClass(m_image.pixels[Offset(x, y)]); }
    bool IsVisited(int x, int y) const { return m_visitMap[Offset(x, y)] != Unvisited; }

    /// Walks from the seed, visited before or not, until the blob or maxCount pixels are done.
    BlobTrace Trace(int seedX, int seedY, std::int64_t maxCount) {
        BlobTrace blob{1, seedX, seedY, seedX, seedY};
        int x = seedX;
        int y = seedY;
        std::ptrdiff_t offset = Offset(x, y);
        m_visitMap[offset] = Seed;
        while (blob.pixelCount < maxCount) {
            if (x > 0 && Take(offset - 1, CameFromRight)) {
                --offset;
                blob.left = std::min(blob.left, --x);
            } else if (x + 1 < m_image.width && Take(offset + 1, CameFromLeft)) {
                ++offset;
                blob.right = std::max(blob.right, ++x);
            } else if (y > 0 && Take(offset - m_image.stride, CameFromBelow)) {
                offset -= m_image.stride;
                blob.top = std::min(blob.top, --y);
            } else if (y + 1 < m_image.height && Take(offset + m_image.stride, CameFromAbove)) {
                offset += m_image.stride;
                blob.bottom = std::max(blob.bottom, ++y);
            } else {
                switch (m_visitMap[offset]) {
                case CameFromLeft:
                    --offset;
                    --x;
                    break;
                case CameFromRight:
                    ++offset;
                    ++x;
                    break;
                case CameFromAbove:
                    offset -= m_image.stride;
                    --y;
                    break;
                case CameFromBelow:
                    offset += m_image.stride;
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

    /// True when a 4-neighbour inside the image is of the class.
    bool HasNeighbour(int x, int y) const {
        const std::ptrdiff_t offset = Offset(x, y);
        const unsigned char *pixel = m_image.pixels + offset;
        return (x + 1 < m_image.width && m_isOfClass(pixel[1])) ||
               (x > 0 && m_isOfClass(pixel[-1])) ||
               (y + 1 < m_image.height && m_isOfClass(pixel[m_image.stride])) ||
               (y > 0 && m_isOfClass(pixel[-m_image.stride]));
    }

private:
    enum Mark : unsigned char {
        Unvisited,
        CameFromLeft,
        CameFromRight,
        CameFromAbove,
        CameFromBelow,
        Seed,
    };

    std::ptrdiff_t Offset(int x, int y) const { return y * m_image.stride + x; }

    /// Marks the pixel as visited from there if it is of the class and was not visited.
    bool Take(std::ptrdiff_t offset, Mark from) {
        if (m_visitMap[offset] != Unvisited || !m_isOfClass(m_image.pixels[offset]))
            return false;
        m_visitMap[offset] = from;
        return true;
    }

    GreyView m_image;
    unsigned char *m_visitMap;
    IsOfClass m_isOfClass;
};

} // namespace tavix
