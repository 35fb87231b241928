// Cutting out and shifting, done on the buffer directly.

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

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

// Each row of the copy is what lies left of the image, a run of the image's row, and what lies
// right of it with the padding.
void CopyArea(const CTavixImage &image, const Area &area, unsigned char fill,
              unsigned char *target) {
    const std::int64_t bytesPerPixel = image.GetBitCount() / 8;
    const std::int64_t first = std::max(area.left, 0);
    const std::int64_t end = std::min<std::int64_t>(std::int64_t{area.right} + 1, image.GetWidth());
    const std::int64_t imageStride = tavix::RowStride(image.GetBitCount(), image.GetWidth());
    const std::int64_t stride = tavix::RowStride(image.GetBitCount(), area.Width());
    const auto size = [](std::int64_t bytes) { return static_cast<std::size_t>(bytes); };
    for (std::int64_t y = area.top; y <= area.bottom; ++y, target += stride) {
        if (y < 0 || y >= image.GetHeight() || first >= end || image.GetImageLen() == 0) {
            std::memset(target, fill, size(stride));
            continue;
        }
        const std::int64_t before = (first - area.left) * bytesPerPixel;
        const std::int64_t inside = (end - first) * bytesPerPixel;
        std::memset(target, fill, size(before));
        std::memcpy(target + before, image.GetImagePtr() + y * imageStride + first * bytesPerPixel,
                    size(inside));
        std::memset(target + before + inside, fill, size(stride - before - inside));
    }
}

} // namespace

unsigned char *CTavixImage::CopyRect(int x1, int y1, int x2, int y2, unsigned char fill) const {
    const Area area(x1, y1, x2, y2);
    const auto length = tavix::ImageLength(m_bitCount, area.Width(), area.Height());
    if (!m_buffer || !length)
        return nullptr;
    auto *const copy = new (std::nothrow) unsigned char[static_cast<std::size_t>(*length)];
    if (copy)
        CopyArea(*this, area, fill, copy);
    return copy;
}

bool CTavixImage::CropInto(CTavixImage &target, int x1, int y1, int x2, int y2,
                           unsigned char fill) const {
    const Area area(x1, y1, x2, y2);
    if (!m_buffer || m_bitCount != target.m_bitCount || area.Width() > INT32_MAX ||
        area.Height() > INT32_MAX ||
        !target.Allocate(static_cast<int>(area.Width()), static_cast<int>(area.Height())))
        return false;
    CopyArea(*this, area, fill, target.m_buffer.get());
    return true;
}

void CTavixImage8::CropImage(int x1, int y1, int x2, int y2) {
    CropImage(x1, y1, x2, y2, 0);
}

void CTavixImage8::CropImage(int x1, int y1, int x2, int y2, unsigned char fill) {
    CTavixImage8 crop;
    if (CropInto(crop, x1, y1, x2, y2, fill))
        TakeBufferOf(crop);
}

void CTavixImage24::CropImage(int x1, int y1, int x2, int y2) {
    CTavixImage24 crop;
    if (CropInto(crop, x1, y1, x2, y2, 0))
        TakeBufferOf(crop);
}

CTavixImage8 *CTavixImage8::CropImage2(int x1, int y1, int x2, int y2) const {
    auto crop = std::make_unique<CTavixImage8>();
    return CropInto(*crop, x1, y1, x2, y2, 0) ? crop.release() : nullptr;
}

CTavixImage24 *CTavixImage24::CropImage2(int x1, int y1, int x2, int y2) const {
    auto crop = std::make_unique<CTavixImage24>();
    return CropInto(*crop, x1, y1, x2, y2, 0) ? crop.release() : nullptr;
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
