#include "TAVIX20/image/image_buffers.h"

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <cstring>
#include <utility>

namespace tavix {

bool ImageBuffers::AllocateForPixels(CTavixImage &image, int width, int height) {
    if (!image.Allocate(width, height))
        return false;
    const std::int64_t stride = image.Stride();
    const std::int64_t rowBytes = std::int64_t{width} * image.m_bitCount / 8;
    for (std::int64_t end = stride; rowBytes < stride && end <= image.m_imageLen; end += stride)
        std::memset(image.m_buffer.get() + end - (stride - rowBytes), 0,
                    static_cast<std::size_t>(stride - rowBytes));
    return true;
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
