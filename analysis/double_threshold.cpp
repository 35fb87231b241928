// Two-level images by a band of levels, on a pool of workers.

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <algorithm>

namespace {

tavix::WorkerPool pool(CStdlib::GetNumOfProcessors());

constexpr int KEEP_BAND = 1;

tavix::ByteBand BandOf(int low, int high) {
    if (low > high || low > 255 || high < 0)
        return {1, 0}; // No level.
    return {static_cast<std::uint8_t>(std::max(low, 0)),
            static_cast<std::uint8_t>(std::min(high, 255))};
}

} // namespace

void CTavixImage8::DoubleThreshold(int low, int high, int mode) {
    const tavix::ByteBand band = BandOf(low, high);
    const std::uint8_t inside = mode == KEEP_BAND ? 255 : 0;
    const auto outside = static_cast<std::uint8_t>(255 - inside);
    pool.Run(m_imageLen, [&](const tavix::WorkerPool::Slice &slice) {
        tavix::SplitByBand(m_buffer.get() + slice.first,
                           static_cast<std::size_t>(slice.end - slice.first), band, inside,
                           outside);
    });
}
