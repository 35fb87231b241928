// Histograms, level counts and the mean level.

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/analysis/histogram.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

tavix::WorkerPool averagePool(CStdlib::GetNumOfProcessors());

/// The plane's values of a run of pixels.
void ExtractLevels(const unsigned char *pixels, std::size_t count, ColorLevel level,
                   unsigned char *levels) {
    if (level == ColorLevelGray) {
        for (std::size_t i = 0; i < count; ++i)
            levels[i] = static_cast<unsigned char>(
                (pixels[3 * i] + pixels[3 * i + 1] + pixels[3 * i + 2]) / 3);
        return;
    }
    // Stored blue, green, red.
    const std::size_t channel = 3 - static_cast<std::size_t>(level);
    for (std::size_t i = 0; i < count; ++i)
        levels[i] = pixels[3 * i + channel];
}

void CopyCounts(const tavix::LevelCounter &counter, long *histogram) {
    std::ranges::copy(counter.Total(), histogram);
}

} // namespace

void CTavixImage8::GetHistogramData(ColorLevel level, long *histogram) const {
    if (!histogram)
        return;
    tavix::LevelCounter counter;
    if (level == ColorLevelGray && m_width % 4 == 0) // No padding.
        counter.Add(m_buffer.get(), static_cast<std::size_t>(m_imageLen));
    else if (level == ColorLevelGray)
        tavix::ForEachRow(*this, [&counter](const unsigned char *row, std::size_t size) {
            counter.Add(row, size);
        });
    CopyCounts(counter, histogram);
}

void CTavixImage24::GetHistogramData(ColorLevel level, long *histogram) const {
    if (!histogram)
        return;
    tavix::LevelCounter counter;
    std::array<unsigned char, 1024> levels;
    const auto countRow = [&](const unsigned char *row, std::size_t size) {
        for (std::size_t left = size / 3; left > 0;) {
            const std::size_t count = std::min(left, levels.size());
            ExtractLevels(row, count, level, levels.data());
            counter.Add(levels.data(), count);
            row += 3 * count;
            left -= count;
        }
    };
    if (level >= ColorLevelGray && level <= ColorLevelBlue)
        tavix::ForEachRow(*this, countRow);
    CopyCounts(counter, histogram);
}

long CTavixImage8::GetGrayLevelCount(unsigned char level) const {
    return GetGrayLevelCountAsRange(level, level);
}

long CTavixImage8::GetGrayLevelCountAsRange(unsigned char low, unsigned char high) const {
    std::size_t count = 0;
    tavix::ForEachRow(*this, [&](const unsigned char *row, std::size_t size) {
        count += tavix::CountInBand(row, size, {low, high});
    });
    return static_cast<long>(count);
}

double CTavixImage8::GetGrayLevelAverage() const {
    if (m_imageLen == 0)
        return 0;
    std::vector<double> sums(static_cast<std::size_t>(averagePool.GetWorkerCount()));
    averagePool.Run(m_imageLen, [&](const tavix::WorkerPool::Slice &slice) {
        sums[static_cast<std::size_t>(slice.worker)] = static_cast<double>(tavix::SumOf(
            m_buffer.get() + slice.first, static_cast<std::size_t>(slice.end - slice.first)));
    });
    double sum = 0;
    for (const double part : sums)
        sum += part;
    return sum / m_imageLen;
}
