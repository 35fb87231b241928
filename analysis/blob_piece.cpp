// Single blobs of grey images, and blobs of colour images.

#include "TAVIX20/analysis/blob_engine.h"
#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

namespace {

using TavixArray::CPointArray;
using Bounds = tavix::ColourClass::Bounds;

bool IsInside(const CTavixImage &image, int x, int y) {
    return image.GetImageLen() > 0 && x >= 0 && y >= 0 && x < image.GetWidth() &&
           y < image.GetHeight();
}

int Piece(const CTavixImage &image, const tavix::PixelClass &pixels, const POINT &seed,
          long maxCount, tavix::BlobMemory &memory, CPointArray &points) {
    const bool isTaken =
        tavix::CollectPiece(pixels, image.GetWidth(), image.GetHeight(), seed, maxCount, memory,
                            [&points](TavixArray::detail::PointPool &piece, std::size_t size) {
                                points = CPointArray(piece.Take(size));
                            });
    return isTaken ? points.GetElementCount() : 0;
}

Bounds Around(int level, int tolerance) {
    return {level - tolerance, level + tolerance};
}

} // namespace

int CTavixImage8::GetPieceBlobAtPoint(int x, int y, unsigned char tolerance,
                                      CPointArray &points) const {
    if (!IsInside(*this, x, y))
        return 0;
    const auto [low, high] = Around(GetPixel(x, y), tolerance);
    return GetPieceBlobAtPoint(x, y, low, high, 0, points);
}

int CTavixImage8::GetPieceBlobAtPoint(int x, int y, int low, int high, int maxCount,
                                      CPointArray &points) const {
    if (!IsInside(*this, x, y))
        return 0;
    const tavix::BandClass pixels(*this, low, high);
    return Piece(*this, pixels, {x, y}, maxCount, m_blobScratch, points);
}

int CTavixImage24::GetPieceBlobAtPoint(int x, int y, unsigned char tolerance,
                                       CPointArray &points) const {
    if (!IsInside(*this, x, y))
        return 0;
    const auto seed = static_cast<COLORREF>(GetPixel(x, y));
    const tavix::ColourClass pixels(*this, {Around(GetBValue(seed), tolerance),
                                            Around(GetGValue(seed), tolerance),
                                            Around(GetRValue(seed), tolerance)});
    return Piece(*this, pixels, {x, y}, 0, m_blobScratch, points);
}

int CTavixImage24::GetBlobList(unsigned char red, unsigned char green, unsigned char blue,
                               unsigned char redTolerance, unsigned char greenTolerance,
                               unsigned char blueTolerance, long minW, long maxW, long minH,
                               long maxH, CBlobRectArray &blobs) const {
    return GetBlobList(0, 0, m_width - 1, m_height - 1, red, green, blue, redTolerance,
                       greenTolerance, blueTolerance, minW, maxW, minH, maxH, blobs);
}

int CTavixImage24::GetBlobList(int x1, int y1, int x2, int y2, unsigned char red,
                               unsigned char green, unsigned char blue, unsigned char redTolerance,
                               unsigned char greenTolerance, unsigned char blueTolerance, long minW,
                               long maxW, long minH, long maxH, CBlobRectArray &blobs) const {
    const tavix::SizeBounds bounds{minW, maxW, minH, maxH, 1};
    const auto area = tavix::ClipToImage(*this, x1, y1, x2, y2);
    if (m_imageLen == 0 || bounds.Refuses() || !area)
        return 0;
    const tavix::ColourClass pixels(
        *this,
        {Around(blue, blueTolerance), Around(green, greenTolerance), Around(red, redTolerance)});
    return tavix::ListBlobs({pixels, m_width, m_height, *area}, bounds, m_blobScratch, blobs)
        .value_or(0);
}
