// Two-level images by a threshold for each row, taken from its rising edges, on a pool of workers.
//
// A rising edge is a run of strictly increasing pixels, 5 at least, so 4 rising pairs side by side.
// The pairs of a row are marked as bits, and words without 4 neighbouring bits, which are most, are
// passed over at once; only where there are such does anything look at single pixels.

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

namespace {

tavix::WorkerPool pool(CStdlib::GetNumOfProcessors());

constexpr std::size_t WORD_BITS = 64;

/// What a worker needs for a row.
struct Scratch {
    explicit Scratch(std::size_t width)
        : pixels(width + WORD_BITS + 1), rising(width / WORD_BITS + 2) {}

    std::vector<std::uint8_t> pixels;  ///< The row; kernels read beyond its end.
    std::vector<std::uint64_t> rising; ///< Bit x says that pixel x + 1 is brighter than pixel x.
};

/// The mean of the strictly increasing run from x on, or nothing when it is no edge. Its length is
/// at least 5.
std::optional<int> EdgeMean(const std::uint8_t *pixels, std::size_t width, std::size_t x) {
    int sum = pixels[x];
    std::size_t last = x;
    for (; last + 1 < width && pixels[last] < pixels[last + 1]; ++last)
        sum += pixels[last + 1];
    const int length = static_cast<int>(last - x) + 1;
    if (pixels[last] - pixels[x] <= 2 * length)
        return std::nullopt;
    return sum / length;
}

/// The threshold of a row; nothing without an edge.
std::optional<int> RowThreshold(const std::uint8_t *row, std::size_t width, Scratch &scratch) {
    std::copy_n(row, width, scratch.pixels.begin());
    const std::size_t pairs = width - 1;
    const std::size_t words = pairs / WORD_BITS + 1;
    tavix::MarkRisingPairs(scratch.pixels.data(), words, scratch.rising.data());
    scratch.rising[words - 1] &= (std::uint64_t{1} << pairs % WORD_BITS) - 1;
    scratch.rising[words] = 0;

    std::int64_t sum = 0;
    int count = 0;
    std::uint64_t before = 0; // Whether the word before ends within a run.
    for (std::size_t word = 0; word < words; ++word) {
        const std::uint64_t bits = scratch.rising[word];
        const std::uint64_t next = scratch.rising[word + 1];
        const auto shifted = [=](unsigned by) { return bits >> by | next << (WORD_BITS - by); };
        const std::uint64_t runs = bits & shifted(1) & shifted(2) & shifted(3);
        for (std::uint64_t starts = runs & ~(runs << 1 | before); starts != 0;
             starts &= starts - 1) {
            const auto at = word * WORD_BITS + static_cast<std::size_t>(std::countr_zero(starts));
            if (const auto mean = EdgeMean(scratch.pixels.data(), width, at)) {
                sum += *mean;
                ++count;
            }
        }
        before = runs >> (WORD_BITS - 1);
    }
    if (count == 0)
        return std::nullopt;
    return static_cast<int>(sum / count);
}

void BinariseRow(std::uint8_t *row, std::size_t width, std::uint8_t fill, Scratch &scratch) {
    const std::optional<int> threshold = RowThreshold(row, width, scratch);
    if (!threshold)
        std::memset(row, fill, width);
    else
        // An edge rises, so its mean is below 255.
        tavix::SplitByBand(row, width, {static_cast<std::uint8_t>(*threshold + 1), 255}, 255, 0);
}

} // namespace

void CTavixImage8::AdaptiveThreshold(unsigned char fill) {
    if (m_imageLen == 0)
        return;
    std::vector<Scratch> scratch;
    try {
        scratch.assign(static_cast<std::size_t>(pool.GetWorkerCount()),
                       Scratch(static_cast<std::size_t>(m_width)));
    } catch (const std::bad_alloc &) {
        return;
    }
    pool.Run(m_height, [&](const tavix::WorkerPool::Slice &slice) {
        Scratch &own = scratch[static_cast<std::size_t>(slice.worker)];
        tavix::ForRows(*this, slice.first, slice.end, [&](std::uint8_t *row, std::size_t width) {
            BinariseRow(row, width, fill, own);
        });
    });
}
