/// Blob analysis, told once. Every operation is a class of pixels (PixelClass), an area in which
/// blobs begin, a filter, and what is made of an accepted blob.
///
/// Seeds are the class pixels of the area in raster order, also those that an earlier trace
/// visited. A trace collects what is 4-connected to its seed, over the whole image. A trace of one
/// pixel is a blob only when the pixel has no neighbour of the class, and the lower bounds are 1:
/// that keeps visited seeds from being counted again.
///
/// Two engines give the same. The walk (blob_walker.h) serves what depends on the order of the
/// pixels or on a cap: a trace that stops at a number of pixels leaves its remainder to later
/// seeds. Boxes and counts without a cap come from runs (run_labeling.h).
#pragma once

#include "TAVIX20/analysis/blob_walker.h"
#include "TAVIX20/analysis/pixel_class.h"
#include "TAVIX20/analysis/run_labeling.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CBlobRectArray;

namespace TavixArray {
class CPointArrayArray;
}

namespace tavix {

/// Where blobs begin: inclusive.
struct SeedArea {
    int x1;
    int y1;
    int x2;
    int y2;
};

/// The part of the rectangle that lies in the image; nothing for reversed corners and without such.
std::optional<SeedArea> ClipToImage(const CTavixImage &image, int x1, int y1, int x2, int y2);

/// Accepts by right - left and bottom - top; the upper bounds are exclusive. A blob of one pixel is
/// taken exactly when both lower bounds are 1.
struct SizeBounds {
    long minWidth;
    long maxWidth;
    long minHeight;
    long maxHeight;
    long slack = 0; ///< How much less than the lower bounds will do.

    /// Whether the operation is to return 0 at once.
    bool Refuses() const { return minWidth < 1 || maxWidth < 1; }
    /// The upper bounds do not matter to blobs of one pixel.
    bool TakesOnePixel() const { return minWidth == 1 && minHeight == 1; }
    /// Without branches, for the sizes of blobs cannot be foretold.
    bool Accept(long width, long height) const {
        return (minWidth - slack <= width) & (width < maxWidth) & (minHeight - slack <= height) &
               (height < maxHeight);
    }
};

/// Accepts by the number of pixels; traces stop at maxCount.
struct CountBounds {
    long minCount;
    long maxCount;

    bool Refuses() const { return minCount < 1 || maxCount < 1; }
};

/// The pixels of one operation.
struct BlobSource {
    const PixelClass &pixels;
    int width;
    int height;
    SeedArea area;
    /// Which neighbours keep a trace of one pixel from being a blob; null for those of the class.
    /// They are a part of the class, so only visited seeds tell the difference.
    const PixelClass *neighbours = nullptr;
};

/// The memory in which the engines work. It stays with the image for the next call; the map takes
/// a bit a pixel.
struct BlobScratch {
    BlobWalker::Scratch walk;
    RunLabeling::Scratch labeling;
    std::vector<TavixArray::detail::PointBlock> blocks; ///< Each empty between calls.
};

/// That of an image, made when it is needed.
using BlobMemory = std::shared_ptr<BlobScratch>;

/// What is done with an accepted blob's pixels: that many come next in the pool, in visiting order.
using TakePoints = std::function<void(TavixArray::detail::PointPool &, std::size_t)>;

/// Each returns the number of accepted blobs; nothing when memory runs out.
std::optional<int> CountBlobs(const BlobSource &source, const CountBounds &bounds,
                              BlobMemory &memory);
std::optional<int> CollectBlobs(const BlobSource &source, const SizeBounds &bounds,
                                BlobMemory &memory, const TakePoints &take);
/// Appends the lists of pixels; false, and the array as it was, when memory runs out.
bool AddBlobs(const BlobSource &source, const CountBounds &bounds, BlobMemory &memory,
              TavixArray::CPointArrayArray &blobs);
bool AddBlobs(const BlobSource &source, const SizeBounds &bounds, BlobMemory &memory,
              TavixArray::CPointArrayArray &blobs);
/// Replaces the records.
std::optional<int> ListBlobs(const BlobSource &source, const SizeBounds &bounds, BlobMemory &memory,
                             CBlobRectArray &blobs);

/// Hands over the pixels of the one blob at the seed, at most maxCount; false when the seed is not
/// of the class or memory runs out.
bool CollectPiece(const PixelClass &pixels, int width, int height, const POINT &seed, long maxCount,
                  BlobMemory &memory, const TakePoints &take);

} // namespace tavix
