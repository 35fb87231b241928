// Painting pixels that satisfy a condition.

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <cstring>
#include <utility>

void CTavixImage8::Marking(unsigned char low, unsigned char high, unsigned char value) {
    tavix::ForEachRow(*this, [=](unsigned char *row, std::size_t size) {
        tavix::ReplaceBand(row, size, {low, high}, value);
    });
}

void CTavixImage8::Marking(int x1, int y1, int x2, int y2, unsigned char value) {
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    if (!m_buffer || x1 < 0 || y1 < 0 || x2 > m_width || y2 > m_height)
        return;
    for (std::int64_t y = y1; y <= y2; ++y) {
        const std::int64_t first = Stride() * y + x1;
        const std::int64_t end = std::min<std::int64_t>(Stride() * y + x2 + 1, m_imageLen);
        if (first < end)
            std::memset(m_buffer.get() + first, value, static_cast<std::size_t>(end - first));
    }
}

void CTavixImage8::MarkingDiffer(const CTavixImage8 &reference, int mark, int tolerance) {
    if (reference.m_imageLen != m_imageLen)
        return;
    const auto different = static_cast<unsigned char>(mark);
    const auto same = static_cast<unsigned char>(different == 0 ? 255 : 0);
    const auto limit = static_cast<unsigned char>(std::clamp(tolerance, 0, 255));
    const unsigned char *other = reference.m_buffer.get();
    const std::int64_t stride = Stride();
    tavix::ForEachRow(*this, [&](unsigned char *row, std::size_t size) {
        tavix::SplitByDifference(row, other, size, limit, same, different);
        other += stride;
    });
}
