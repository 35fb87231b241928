#include "TAVIX20/image/tavix_image.h"

#include "TAVIX20/image/layout.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

CTavixImage::~CTavixImage() = default;

int CTavixImage::GetWidth() const {
    return m_width;
}

int CTavixImage::GetHeight() const {
    return m_height;
}

int CTavixImage::GetBitCount() const {
    return m_bitCount;
}

int CTavixImage::GetImageLen() const {
    return m_imageLen;
}

unsigned char *CTavixImage::GetImagePtr() {
    return m_buffer.get();
}

void CTavixImage::Release() {
    m_buffer.reset();
    m_width = 0;
    m_height = 0;
    m_bitCount = 0;
    m_imageLen = 0;
}

int CTavixImage::IsEmpty() const {
    return m_buffer ? 0 : 1;
}

std::int64_t CTavixImage::Stride() const {
    return tavix::RowStride(m_bitCount, m_width);
}

bool CTavixImage::Allocate(int width, int height) {
    m_buffer.reset();
    m_width = 0;
    m_height = 0;
    m_imageLen = 0;
    const auto length = tavix::ImageLength(m_bitCount, width, height);
    if (!length)
        return false;
    m_buffer.reset(new (std::nothrow) unsigned char[static_cast<std::size_t>(*length)]);
    if (!m_buffer)
        return false;
    m_width = width;
    m_height = height;
    m_imageLen = *length;
    return true;
}

bool CTavixImage::AllocateZeroed(int width, int height) {
    if (!Allocate(width, height))
        return false;
    std::memset(m_buffer.get(), 0, static_cast<std::size_t>(m_imageLen));
    return true;
}

bool CTavixImage::AllocateCopy(int width, int height, const unsigned char *bytes) {
    // The old buffer lives until the copy is done: the bytes may lie in it.
    const std::unique_ptr<unsigned char[]> old = std::move(m_buffer);
    if (!Allocate(width, height))
        return false;
    if (m_imageLen == 0)
        return true;
    if (!bytes) {
        m_buffer.reset();
        m_width = 0;
        m_height = 0;
        m_imageLen = 0;
        return false;
    }
    std::memcpy(m_buffer.get(), bytes, static_cast<std::size_t>(m_imageLen));
    return true;
}

unsigned char *CTavixImage::CopyRect(int x1, int y1, int x2, int y2, unsigned char fill) const {
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    const std::int64_t columns = std::int64_t{x2} - x1 + 1;
    const std::int64_t rows = std::int64_t{y2} - y1 + 1;
    const auto length = tavix::ImageLength(m_bitCount, columns, rows);
    if (!m_buffer || !length)
        return nullptr;
    auto *const copy = new (std::nothrow) unsigned char[static_cast<std::size_t>(*length)];
    if (!copy)
        return nullptr;
    std::memset(copy, fill, static_cast<std::size_t>(*length));

    const int left = std::max(x1, 0);
    const int right = std::min(x2, m_width - 1);
    const int bottom = std::min(y2, m_height - 1);
    if (left > right || m_imageLen == 0)
        return copy;
    const std::int64_t bytesPerPixel = m_bitCount / 8;
    const std::int64_t targetStride = tavix::RowStride(m_bitCount, columns);
    const auto bytes = static_cast<std::size_t>((right - left + 1) * bytesPerPixel);
    for (std::int64_t y = std::max(y1, 0); y <= bottom; ++y)
        std::memcpy(copy + (y - y1) * targetStride + (left - x1) * bytesPerPixel,
                    m_buffer.get() + y * Stride() + left * bytesPerPixel, bytes);
    return copy;
}
