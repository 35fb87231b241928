// Cutting out and shifting, done on the buffer directly.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

/// An inclusive rectangle with its corners in order. Its size may exceed an int.
struct Area {
    Area(int x1, int y1, int x2, int y2)
        : left(std::min(x1, x2)),
          top(std::min(y1, y2)),
          right(std::max(x1, x2)),
          bottom(std::max(y1, y2)) {}

    std::int64_t Width() const { return std::int64_t{right} - left + 1; }
    std::int64_t Height() const { return std::int64_t{bottom} - top + 1; }

    int left;
    int top;
    int right;
    int bottom;
};

/// The copied rectangle as an image; null where there is none.
template <typename Image>
Image *FromRect(unsigned char *bytes, const Area &area) {
    if (!bytes)
        return nullptr;
    auto image = std::make_unique<Image>();
    tavix::ImageBuffers::Adopt(*image, tavix::BufferPtr(bytes), static_cast<int>(area.Width()),
                               static_cast<int>(area.Height()));
    return image.release();
}

} // namespace

// Each row of the copy is what lies left of the image, a run of the image's row, and what lies right
// of it with the padding.
unsigned char *CTavixImage::CopyRect(int x1, int y1, int x2, int y2, unsigned char fill) const {
    const Area area(x1, y1, x2, y2);
    const auto length = tavix::ImageLength(m_bitCount, area.Width(), area.Height());
    if (!m_buffer || !length)
        return nullptr;
    auto *const copy = new (std::nothrow) unsigned char[static_cast<std::size_t>(*length)];
    if (!copy)
        return nullptr;

    const std::int64_t bytesPerPixel = m_bitCount / 8;
    const std::int64_t first = std::max(area.left, 0);
    const std::int64_t end = std::min<std::int64_t>(std::int64_t{area.right} + 1, m_width);
    const std::int64_t stride = tavix::RowStride(m_bitCount, area.Width());
    const auto size = [](std::int64_t bytes) { return static_cast<std::size_t>(bytes); };
    for (std::int64_t y = area.top; y <= area.bottom; ++y) {
        unsigned char *const row = copy + (y - area.top) * stride;
        if (y < 0 || y >= m_height || first >= end || m_imageLen == 0) {
            std::memset(row, fill, size(stride));
            continue;
        }
        const std::int64_t before = (first - area.left) * bytesPerPixel;
        const std::int64_t inside = (end - first) * bytesPerPixel;
        std::memset(row, fill, size(before));
        std::memcpy(row + before, m_buffer.get() + y * Stride() + first * bytesPerPixel,
                    size(inside));
        std::memset(row + before + inside, fill, size(stride - before - inside));
    }
    return copy;
}

void CTavixImage::CropTo(int x1, int y1, int x2, int y2, unsigned char fill) {
    const Area area(x1, y1, x2, y2);
    if (unsigned char *const bytes = CopyRect(x1, y1, x2, y2, fill))
        tavix::ImageBuffers::Adopt(*this, tavix::BufferPtr(bytes), static_cast<int>(area.Width()),
                                   static_cast<int>(area.Height()));
}

void CTavixImage::CropImage(int x1, int y1, int x2, int y2) {
    CropTo(x1, y1, x2, y2, 0);
}

void CTavixImage8::CropImage(int x1, int y1, int x2, int y2, unsigned char fill) {
    CropTo(x1, y1, x2, y2, fill);
}

CTavixImage8 *CTavixImage8::CropImage2(int x1, int y1, int x2, int y2) const {
    return FromRect<CTavixImage8>(CopyRect(x1, y1, x2, y2, 0), Area(x1, y1, x2, y2));
}

CTavixImage24 *CTavixImage24::CropImage2(int x1, int y1, int x2, int y2) const {
    return FromRect<CTavixImage24>(CopyRect(x1, y1, x2, y2, 0), Area(x1, y1, x2, y2));
}

void CTavixImage::Offset(int dx, int dy) {
    if (m_imageLen == 0)
        return;
    const std::int64_t shift = Stride() * dy + std::int64_t{dx} * (m_bitCount / 8);
    const std::int64_t cleared = std::min<std::int64_t>(std::abs(shift), m_imageLen);
    const auto kept = static_cast<std::size_t>(m_imageLen - cleared);
    unsigned char *const bytes = m_buffer.get();
    if (shift >= 0) {
        std::memmove(bytes, bytes + cleared, kept);
        std::memset(bytes + kept, 0, static_cast<std::size_t>(cleared));
    } else {
        std::memmove(bytes + cleared, bytes, kept);
        std::memset(bytes, 0, static_cast<std::size_t>(cleared));
    }
}
