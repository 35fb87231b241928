// The images that arrays of points and pixel samples make of themselves.

#include "TAVIX20/containers/color_pixel_array.h"
#include "TAVIX20/containers/pixel_array.h"
#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <span>

namespace {

/// A new image as large as the bounds with valueOf(sample) at every sample's place; null without
/// samples or when the image cannot be made.
template <typename Image, typename Sample, typename Value, typename ValueOf>
Image *Draw(std::span<const Sample> samples, const CRect &bounds, Value background,
            ValueOf valueOf) {
    auto image = std::make_unique<Image>();
    const std::int64_t width = std::int64_t{bounds.right} - bounds.left + 1;
    const std::int64_t height = std::int64_t{bounds.bottom} - bounds.top + 1;
    if (samples.empty() || !tavix::ImageLength(image->GetBitCount(), width, height) ||
        !image->Create(static_cast<int>(width), static_cast<int>(height)))
        return nullptr;
    image->Fill(background);
    for (const Sample &sample : samples)
        image->SetPixel(sample.x - bounds.left, sample.y - bounds.top, valueOf(sample));
    return image.release();
}

} // namespace

namespace TavixArray {

CTavixImage8 *CPointArray::GetImage(unsigned char foreground, unsigned char background) const {
    return Draw<CTavixImage8>(std::span(begin(), end()), GetBounds(), background,
                              [foreground](const tagPOINT &) { return foreground; });
}

CTavixImage8 *CPixelArray::GetImage(unsigned char background) const {
    return Draw<CTavixImage8>(std::span(begin(), end()), GetBounds(), background,
                              [](const _stPixel &pixel) { return pixel.grayLevel; });
}

CTavixImage24 *CColorPixelArray::GetImage(unsigned long background) const {
    return Draw<CTavixImage24>(std::span(begin(), end()), GetBounds(), background,
                               [](const _stColorPixel &pixel) { return pixel.colour; });
}

} // namespace TavixArray
