// The region-of-interest mask of grey images: a snapshot of a region's rectangles.

#include "TAVIX20/containers/region_rects.h"
#include "TAVIX20/image/tavix_image8.h"

#include <span>

namespace {

/// The block is this many times larger than the region's data; kept as callers know it.
constexpr std::size_t BLOCK_SIZE_FACTOR = 36;

} // namespace

void CTavixImage8::SetROI(HRGN region) {
    if (!region)
        return;
    ReleaseROI();
    const DWORD size = GetRegionData(region, 0, nullptr);
    if (size == 0)
        return;
    m_roiData.reset(std::malloc(size * BLOCK_SIZE_FACTOR));
    if (!m_roiData)
        return;
    auto *const data = static_cast<RGNDATA *>(m_roiData.get());
    GetRegionData(region, size, data);
    m_roiRects = reinterpret_cast<const RECT *>(static_cast<const char *>(m_roiData.get()) +
                                                sizeof(RGNDATAHEADER));
    m_roiRectCount = static_cast<std::int32_t>(data->rdh.nCount);
}

void CTavixImage8::ReleaseROI() {
    m_roiData.reset();
    m_roiRects = nullptr;
    m_roiRectCount = 0;
}

int CTavixImage8::IsROI() const {
    return m_roiData ? 1 : 0;
}

int CTavixImage8::PtInROI(int x, int y) const {
    const std::span rects(m_roiRects, static_cast<std::size_t>(m_roiRectCount));
    return tavix::InAnyInclusive(rects, x, y) ? 1 : 0;
}
