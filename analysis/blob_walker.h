/// The walk that collects one blob, a 4-connected region of pixels of one class, in its own order.
///
/// Depth first, without recursion: from the current pixel the neighbours left, right, up and down
/// are tried in this order; the first one that lies in the image, is of the class and has not been
/// visited is taken. When there is none the walk steps back to the pixel it came from; at the seed
/// it ends.
///
/// Pixels are bits here, one map of the class and one of what is unvisited. A walk that goes left
/// goes on left as long as it can, and so to the right; so whole stretches are taken at once, and
/// the way back is a stack of stretches, not a note on each pixel. On the way back along a stretch
/// only what lies above and below can be left to visit, and the nearest such pixel is found by its
/// bit.
#pragma once

#include "TAVIX20/analysis/pixel_class.h"

#include <cstdint>
#include <span>
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

class BlobWalker {
public:
    /// The memory of a walk, kept for the next one.
    struct Scratch {
        /// Pixels of a row that the walk took one after another.
        struct Stretch {
            int y;
            int from;
            int to;
        };

        std::vector<std::uint64_t> ofClass; ///< With an empty row above and below.
        std::vector<std::uint64_t> unvisited;
        std::vector<Stretch> way;
        std::vector<POINT>
            points; ///< Room for the pixels of a blob, and what is left of larger ones.
    };

    /// Marks the pixels of the class. Throws std::bad_alloc.
    BlobWalker(const PixelClass &pixels, int width, int height, Scratch &scratch);

    bool IsOfClass(int x, int y) const { return IsSet(m_scratch.ofClass, x, y); }
    /// True when a 4-neighbour inside the image is of the class.
    bool HasNeighbour(int x, int y) const { return HasNeighbourIn(m_scratch.ofClass, x, y); }

    /// The first pixel at or right of x in row y that is of the class, or unvisited; the image's
    /// width when there is none.
    int FindOfClass(int x, int y) const { return Find(m_scratch.ofClass, x, y); }
    int FindUnvisited(int x, int y) const { return Find(m_scratch.unvisited, x, y); }

    /// Walks from the seed, visited before or not, until the blob or maxCount pixels are done.
    BlobTrace Trace(int seedX, int seedY, std::int64_t maxCount);
    /// The pixels of the last trace in the order in which they were taken, the seed first.
    std::span<const POINT> Points(const BlobTrace &last) const {
        return {m_scratch.points.data(), static_cast<std::size_t>(last.pixelCount)};
    }

private:
    using Map = std::vector<std::uint64_t>;

    std::size_t RowAt(int y) const { return static_cast<std::size_t>(y + 1) * m_wordCount; }
    bool IsSet(const Map &map, int x, int y) const;
    bool HasNeighbourIn(const Map &map, int x, int y) const;
    int Find(const Map &map, int x, int y) const;
    bool TakeOne(int x, int y);
    int UnvisitedToTheLeft(int x, int y) const;
    int UnvisitedToTheRight(int x, int y) const;
    void ClearSpan(int y, int first, int last);
    bool FindBranch(const Scratch::Stretch &stretch, int &x) const;
    bool StepBack(int &x, int &y);

    Scratch &m_scratch;
    std::size_t m_wordCount;
    int m_width;
};

} // namespace tavix
