// Blob lists of grey images: each overload names its class of pixels, its area, its bounds and its
// output, and hands them to the engine.

#include "TAVIX20/analysis/blob_engine.h"
#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/containers/pixel_array_array.h"
#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/containers/sort_byte_array.h"
#include "TAVIX20/image/tavix_image8.h"

#include <span>

namespace {

using tavix::BandClass;
using tavix::BlobSource;
using tavix::CountBounds;
using tavix::SizeBounds;
using TavixArray::CPixelArrayArray;
using TavixArray::CPointArrayArray;
using TavixArray::CSortByteArray;
using TavixArray::detail::PointPool;

/// The class of pixels, and the area, of one call.
struct Call {
    const CTavixImage8 &image;
    const tavix::PixelClass &pixels;
    std::optional<tavix::SeedArea> area; ///< Nothing: no blob can begin.
    const tavix::PixelClass *neighbours = nullptr;

    /// Nothing when the call is to return 0 at once.
    template <typename Bounds>
    std::optional<BlobSource> Source(const Bounds &bounds) const {
        if (image.GetImageLen() == 0 || bounds.Refuses() || !area)
            return std::nullopt;
        return BlobSource{pixels, image.GetWidth(), image.GetHeight(), *area, neighbours};
    }
};

std::optional<tavix::SeedArea> Whole(const CTavixImage8 &image) {
    return tavix::ClipToImage(image, 0, 0, image.GetWidth() - 1, image.GetHeight() - 1);
}

int Count(const Call &call, const CountBounds &bounds, tavix::BlobMemory &memory) {
    const auto source = call.Source(bounds);
    return source ? tavix::CountBlobs(*source, bounds, memory).value_or(0) : 0;
}

template <typename Bounds>
int AppendPoints(const Call &call, const Bounds &bounds, tavix::BlobMemory &memory,
                 CPointArrayArray &blobs) {
    const auto source = call.Source(bounds);
    if (!source)
        return 0;
    const bool isDone = tavix::AddBlobs(*source, bounds, memory, blobs);
    return isDone ? blobs.GetElementCount() : 0;
}

/// Appends, so that nothing was added when it fails.
int AppendPixels(const Call &call, const SizeBounds &bounds, tavix::BlobMemory &memory,
                 CPixelArrayArray &blobs) {
    const auto source = call.Source(bounds);
    if (!source)
        return 0;
    CPixelArrayArray found;
    const auto count = tavix::CollectBlobs(
        *source, bounds, memory, [&](const PointPool &points, std::size_t size) {
            TavixArray::CPixelArray blob;
            for (const POINT &point : std::span(points.Next(), size))
                blob.Add(point.x, point.y, call.image.GetPixel(point.x, point.y), 0.0);
            found.Add(blob);
        });
    if (!count || found.GetElementCount() != *count)
        return 0;
    if (blobs.GetElementCount() == 0)
        blobs = std::move(found);
    else
        for (int i = 0; i < *count; ++i)
            blobs.Add(found[i]);
    return blobs.GetElementCount();
}

int List(const Call &call, const SizeBounds &bounds, tavix::BlobMemory &memory,
         CBlobRectArray &blobs) {
    const auto source = call.Source(bounds);
    return source ? tavix::ListBlobs(*source, bounds, memory, blobs).value_or(0) : 0;
}

tavix::ByteTable TableOf(const CSortByteArray &levels) {
    tavix::ByteTable isListed{};
    for (int i = 0; i < levels.GetElementCount(); ++i)
        isListed[levels[i]] = 1;
    return isListed;
}

/// A class of pixels within the image's mask, where it has one.
class InMask {
public:
    InMask(const tavix::PixelClass &pixels, const CTavixImage8 &image, const RECT *rects, int count)
        : m_pixels(pixels), m_masked(pixels, image.GetWidth(), rects, count), m_image(image) {}

    operator const tavix::PixelClass &() const {
        return m_image.IsROI() ? static_cast<const tavix::PixelClass &>(m_masked) : m_pixels;
    }

private:
    const tavix::PixelClass &m_pixels;
    tavix::MaskedClass m_masked;
    const CTavixImage8 &m_image;
};

} // namespace

int CTavixImage8::GetBlobList(int value, long minCount, long maxCount) const {
    const BandClass pixels(*this, value, value);
    return Count({*this, pixels, Whole(*this)}, {minCount, maxCount}, m_blobScratch);
}

int CTavixImage8::GetBlobList(int value, long minCount, long maxCount,
                              CPointArrayArray &blobs) const {
    const BandClass pixels(*this, value, value);
    return AppendPoints({*this, pixels, Whole(*this)}, CountBounds{minCount, maxCount},
                        m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int value, long minW, long maxW, long minH, long maxH,
                              CBlobRectArray &blobs) const {
    const BandClass pixels(*this, value, value);
    return List({*this, pixels, Whole(*this)}, {minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int threshold, int value, long minW, long maxW, long minH, long maxH,
                              CBlobRectArray &blobs) const {
    const BandClass pixels = tavix::ThresholdClass(*this, threshold, value);
    const BandClass equal(*this, value, value);
    return List({*this, pixels, Whole(*this), &equal}, {minW, maxW, minH, maxH}, m_blobScratch,
                blobs);
}

int CTavixImage8::GetBlobList(int threshold, int value, long minCount, long maxCount,
                              CPointArrayArray &blobs) const {
    const BandClass pixels = tavix::ThresholdClass(*this, threshold, value);
    const BandClass equal(*this, value, value);
    return AppendPoints({*this, pixels, Whole(*this), &equal}, CountBounds{minCount, maxCount},
                        m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int x1, int y1, int x2, int y2, int value, long minW, long maxW,
                              long minH, long maxH, CBlobRectArray &blobs) const {
    const BandClass pixels(*this, value, value);
    return List({*this, pixels, tavix::ClipToImage(*this, x1, y1, x2, y2)},
                {minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int x1, int y1, int x2, int y2, int value, long minW, long maxW,
                              long minH, long maxH, CPointArrayArray &blobs) const {
    const BandClass pixels(*this, value, value);
    return AppendPoints({*this, pixels, tavix::ClipToImage(*this, x1, y1, x2, y2)},
                        SizeBounds{minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int x1, int y1, int x2, int y2, int threshold, int value, long minW,
                              long maxW, long minH, long maxH, CBlobRectArray &blobs) const {
    const BandClass pixels = tavix::ThresholdClass(*this, threshold, value);
    const BandClass equal(*this, value, value);
    return List({*this, pixels, tavix::ClipToImage(*this, x1, y1, x2, y2), &equal},
                {minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetBlobList(int x1, int y1, int x2, int y2, int threshold, int value,
                              long minCount, long maxCount, CPointArrayArray &blobs) const {
    const BandClass pixels = tavix::ThresholdClass(*this, threshold, value);
    const BandClass equal(*this, value, value);
    return AppendPoints({*this, pixels, tavix::ClipToImage(*this, x1, y1, x2, y2), &equal},
                        CountBounds{minCount, maxCount}, m_blobScratch, blobs);
}

int CTavixImage8::GetRangeBlobList(unsigned char low, unsigned char high, long minCount,
                                   long maxCount) const {
    const BandClass band(*this, low, high);
    const InMask pixels(band, *this, m_roiRects, m_roiRectCount);
    return Count({*this, pixels, Whole(*this)}, {minCount, maxCount}, m_blobScratch);
}

int CTavixImage8::GetRangeBlobList(unsigned char low, unsigned char high, long minCount,
                                   long maxCount, CPointArrayArray &blobs) const {
    const BandClass band(*this, low, high);
    const InMask pixels(band, *this, m_roiRects, m_roiRectCount);
    return AppendPoints({*this, pixels, Whole(*this)}, CountBounds{minCount, maxCount},
                        m_blobScratch, blobs);
}

int CTavixImage8::GetRangeBlobList(unsigned char low, unsigned char high, long minW, long maxW,
                                   long minH, long maxH, CBlobRectArray &blobs) const {
    const BandClass band(*this, low, high);
    const InMask pixels(band, *this, m_roiRects, m_roiRectCount);
    return List({*this, pixels, Whole(*this)}, {minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetRangeBlobList(unsigned char low, unsigned char high, long minW, long maxW,
                                   long minH, long maxH, CPixelArrayArray &blobs) const {
    const BandClass band(*this, low, high);
    const InMask pixels(band, *this, m_roiRects, m_roiRectCount);
    return AppendPixels({*this, pixels, Whole(*this)}, {minW, maxW, minH, maxH}, m_blobScratch,
                        blobs);
}

int CTavixImage8::GetRangeBlobList(const CSortByteArray &levels, long minCount, long maxCount,
                                   CPointArrayArray &blobs) const {
    const tavix::ListedClass listed(*this, TableOf(levels));
    const InMask pixels(listed, *this, m_roiRects, m_roiRectCount);
    return AppendPoints({*this, pixels, Whole(*this)}, CountBounds{minCount, maxCount},
                        m_blobScratch, blobs);
}

int CTavixImage8::GetRangeBlobList(const CSortByteArray &levels, long minW, long maxW, long minH,
                                   long maxH, CBlobRectArray &blobs) const {
    const tavix::ListedClass listed(*this, TableOf(levels));
    const InMask pixels(listed, *this, m_roiRects, m_roiRectCount);
    return List({*this, pixels, Whole(*this)}, {minW, maxW, minH, maxH}, m_blobScratch, blobs);
}

int CTavixImage8::GetRangeBlobList(const CSortByteArray &levels, long minW, long maxW, long minH,
                                   long maxH, CPixelArrayArray &blobs) const {
    const tavix::ListedClass listed(*this, TableOf(levels));
    const InMask pixels(listed, *this, m_roiRects, m_roiRectCount);
    return AppendPixels({*this, pixels, Whole(*this)}, {minW, maxW, minH, maxH}, m_blobScratch,
                        blobs);
}

int CTavixImage8::GetRangeBlobListInEllipseROI(int x1, int y1, int x2, int y2, unsigned char low,
                                               unsigned char high, long minCount, long maxCount,
                                               CPointArrayArray &blobs) const {
    const BandClass band(*this, low, high);
    const tavix::EllipticClass pixels(band, m_width, {x1, y1, x2, y2});
    return AppendPoints({*this, pixels, tavix::ClipToImage(*this, x1, y1, x2, y2)},
                        CountBounds{minCount, maxCount}, m_blobScratch, blobs);
}
