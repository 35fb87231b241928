// Images from IplImage structures, from bitmaps and from packed bitmaps in memory.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/platform/gdiplus.h"

#include <algorithm>
#include <utility>

namespace {

CTavixImage *FromQImage(const QImage &image, int bitCount) {
    if (image.isNull())
        return nullptr;
    return tavix::CopyRows(bitCount, image.width(), image.height(), image.constBits(),
                           static_cast<std::ptrdiff_t>(image.bytesPerLine()))
        .release();
}

bool IsUsable(const BITMAPINFOHEADER &header) {
    // Many writers leave the number of planes 0.
    return header.biSize == sizeof header && header.biWidth > 0 && header.biHeight > 0 &&
           header.biPlanes <= 1 && header.biCompression == BI_RGB;
}

/// Padding included; null for a size that is too large.
template <typename Image>
CTavixImage *FromBytes(const BITMAPINFOHEADER &header, const unsigned char *pixels) {
    auto image = std::make_unique<Image>(header.biWidth, header.biHeight, pixels);
    return image->IsEmpty() ? nullptr : image.release();
}

CTavixImage *From32Bits(const BITMAPINFOHEADER &header, const unsigned char *pixels) {
    constexpr std::int64_t sourcePixel = 4;
    const std::int64_t rowBytes = sourcePixel * header.biWidth;
    auto image = std::make_unique<CTavixImage24>();
    if (!image->Create(header.biWidth, header.biHeight))
        return nullptr;
    const std::int64_t whole = rowBytes * header.biHeight;
    const std::int64_t length =
        header.biSizeImage == 0 ? whole : std::min<std::int64_t>(header.biSizeImage, whole);
    const std::int64_t stride = tavix::RowStride(24, header.biWidth);
    const std::int64_t pixelCount = length / sourcePixel;
    for (std::int64_t first = 0, y = 0; first < pixelCount; first += header.biWidth, ++y) {
        const std::int64_t count = std::min<std::int64_t>(header.biWidth, pixelCount - first);
        const unsigned char *from = pixels + first * sourcePixel;
        unsigned char *to = image->GetImagePtr() + y * stride;
        for (std::int64_t x = 0; x < count; ++x, from += sourcePixel, to += 3)
            std::copy_n(from, 3, to);
    }
    return image.release();
}

} // namespace

CTavixImage *CTavixImage::LoadImageA(void *image) {
    for (const int channels : {1, 3}) {
        std::unique_ptr<CTavixImage> taken;
        if (channels == 1)
            taken = std::make_unique<CTavixImage8>(image);
        else
            taken = std::make_unique<CTavixImage24>(image);
        if (!taken->IsEmpty())
            return taken.release();
    }
    return nullptr;
}

CTavixImage *CTavixImage::LoadImageA(Gdiplus::Bitmap *bitmap) {
    if (!bitmap)
        return nullptr;
    const QImage &image = bitmap->GetImage();
    if (bitmap->GetPixelFormat() == PixelFormat8bppIndexed)
        return FromQImage(image, 8);
    return FromQImage(image.convertToFormat(QImage::Format_BGR888), 24);
}

CTavixImage *CTavixImage::LoadImageA(const BITMAPINFOHEADER *header) {
    if (!header || !IsUsable(*header))
        return nullptr;
    const auto *const pixels = reinterpret_cast<const unsigned char *>(header + 1);
    const int bitCount = header->biBitCount;
    if (bitCount == 32)
        return From32Bits(*header, pixels);
    if (bitCount == 8)
        return FromBytes<CTavixImage8>(*header, pixels);
    return bitCount == 24 ? FromBytes<CTavixImage24>(*header, pixels) : nullptr;
}

CTavixImage *CTavixImage::LoadImageA(HBITMAP bitmap) {
    Gdiplus::Bitmap wrapped(bitmap);
    return LoadImageA(&wrapped);
}
