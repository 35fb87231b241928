// The images that the arrays of pixel samples make of themselves.

#include "TAVIX20/containers/color_pixel_array.h"
#include "TAVIX20/containers/pixel_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

namespace {

/// A new image of count samples that lie in the bounds; null as the callers give it.
template <typename Image, typename Sample, typename Level, typename Colour>
Image *Draw(const Sample *samples, int count, const CRect &bounds, Level Sample::*level,
            Colour background) {
    auto image = std::make_unique<Image>();
    const std::int64_t width = std::int64_t{bounds.right} - bounds.left + 1;
    const std::int64_t height = std::int64_t{bounds.bottom} - bounds.top + 1;
    if (count <= 0 || !tavix::ImageLength(image->GetBitCount(), width, height) ||
        !image->Create(static_cast<int>(width), static_cast<int>(height)))
        return nullptr;
    image->Fill(background);
    for (const Sample *sample = samples; sample != samples + count; ++sample)
        image->SetPixel(sample->x - bounds.left, sample->y - bounds.top, sample->*level);
    return image.release();
}

} // namespace

namespace TavixArray {

CTavixImage8 *CPixelArray::GetImage(unsigned char background) const {
    return Draw<CTavixImage8>(begin(), m_count, GetBounds(), &_stPixel::grayLevel, background);
}

CTavixImage24 *CColorPixelArray::GetImage(unsigned long background) const {
    return Draw<CTavixImage24>(begin(), m_count, GetBounds(), &_stColorPixel::colour, background);
}

} // namespace TavixArray
