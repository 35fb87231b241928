#include "TAVIX20/image/image_buffers.h"

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <cstring>
#include <utility>

namespace tavix {

namespace {

/// Calls change(offset, bytes) for the padding of each row.
template <typename Change>
void ForEachPadding(const CTavixImage &image, Change change) {
    const std::int64_t stride = RowStride(image.GetBitCount(), image.GetWidth());
    const std::int64_t rowBytes = std::int64_t{image.GetWidth()} * image.GetBitCount() / 8;
    const auto padding = static_cast<std::size_t>(stride - rowBytes);
    for (std::int64_t at = rowBytes; padding > 0 && at < image.GetImageLen(); at += stride)
        change(at, padding);
}

} // namespace

bool ImageBuffers::AllocateForPixels(CTavixImage &image, int width, int height) {
    if (!image.Allocate(width, height))
        return false;
    ForEachPadding(image, [bytes = image.m_buffer.get()](std::int64_t at, std::size_t size) {
        std::memset(bytes + at, 0, size);
    });
    return true;
}

BufferPtr ImageBuffers::AllocateLike(const CTavixImage &image) {
    if (image.m_imageLen == 0)
        return nullptr;
    BufferPtr buffer = CTavixImage::NewBuffer(static_cast<std::size_t>(image.m_imageLen));
    if (buffer)
        ForEachPadding(image, [from = image.m_buffer.get(), to = buffer.get()](std::int64_t at,
                                                                               std::size_t size) {
            std::memcpy(to + at, from + at, size);
        });
    return buffer;
}

void ImageBuffers::Adopt(CTavixImage &image, BufferPtr buffer, int width, int height) {
    const auto length = ImageLength(image.m_bitCount, width, height);
    image.TakeBuffer(std::move(buffer), width, height, length.value_or(0));
}

std::unique_ptr<CTavixImage> CopyRows(int bitCount, int width, int height,
                                      const unsigned char *rows, std::ptrdiff_t step) {
    std::unique_ptr<CTavixImage> image;
    if (bitCount == 8)
        image = std::make_unique<CTavixImage8>();
    else
        image = std::make_unique<CTavixImage24>();
    if (!ImageBuffers::AllocateForPixels(*image, width, height))
        return nullptr;
    const auto stride = static_cast<std::ptrdiff_t>(RowStride(bitCount, width));
    const std::size_t rowBytes = static_cast<std::size_t>(width) * (bitCount == 8 ? 1 : 3);
    unsigned char *const target = image->GetImagePtr();
    for (int y = 0; y < height; ++y)
        std::memcpy(target + y * stride, rows + y * step, rowBytes);
    return image;
}

} // namespace tavix
