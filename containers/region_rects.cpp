#include "TAVIX20/containers/region_rects.h"

namespace tavix {

RegionRects::RegionRects(HRGN region) {
    m_data.resize(GetRegionData(region, 0, nullptr));
    if (!m_data.empty())
        GetRegionData(region, static_cast<DWORD>(m_data.size()),
                      reinterpret_cast<RGNDATA *>(m_data.data()));
}

std::span<const RECT> RegionRects::Get() const {
    if (m_data.empty())
        return {};
    const auto *header = reinterpret_cast<const RGNDATAHEADER *>(m_data.data());
    return {reinterpret_cast<const RECT *>(header + 1), header->nCount};
}

} // namespace tavix
