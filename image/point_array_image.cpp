// CPointArray::GetImage: the point set as an image.

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image8.h"

CTavixImage8 *TavixArray::CPointArray::GetImage(unsigned char foreground,
                                                unsigned char background) const {
    const CRect bounds = GetBounds();
    const std::int64_t width = std::int64_t{bounds.right} - bounds.left + 1;
    const std::int64_t height = std::int64_t{bounds.bottom} - bounds.top + 1;
    if (m_count <= 0 || !tavix::ImageLength(8, width, height))
        return nullptr;
    auto image = std::make_unique<CTavixImage8>();
    if (!image->Create(static_cast<int>(width), static_cast<int>(height)))
        return nullptr;
    image->Fill(background);
    for (const tagPOINT &point : *this)
        image->SetPixel(point.x - bounds.left, point.y - bounds.top, foreground);
    return image.release();
}
