// Operations in which a new value depends on the old one alone: a table of 256 values, computed as
// the operation says, then applied to the whole buffer or to the pixels of each row.

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/analysis/channel_tables.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace {

using tavix::ByteTable;
using Histogram = std::array<long, 256>;

/// A value limited to a byte, fractions cut off. What is not a number becomes 0.
std::uint8_t ToByte(double value) {
    return value > 0 ? static_cast<std::uint8_t>(std::min(value, 255.0)) : std::uint8_t{0};
}

ByteTable MakeTable(const std::function<std::uint8_t(int)> &entry) {
    ByteTable table;
    for (int level = 0; level < 256; ++level)
        table[static_cast<std::size_t>(level)] = entry(level);
    return table;
}

void ApplyToBuffer(CTavixImage &image, const ByteTable &table) {
    tavix::LookUp(image.GetImagePtr(), static_cast<std::size_t>(image.GetImageLen()), table);
}

void ApplyToPixels(CTavixImage8 &image, const ByteTable &table) {
    tavix::ForEachRow(
        image, [&table](unsigned char *row, std::size_t size) { tavix::LookUp(row, size, table); });
}

Histogram HistogramOf(const CTavixImage &image, ColorLevel level) {
    Histogram histogram;
    image.GetHistogramData(level, histogram.data());
    return histogram;
}

struct LevelRange {
    int low;
    int high;
};

/// The first level, upwards from 0 and downwards from 255, at which the running count is enough.
/// The search downwards ends at level 1 and gives 0 where none is; the one upwards gives 256.
LevelRange FindRange(const Histogram &histogram, const std::function<bool(long)> &isEnough) {
    long running = 0;
    int low = 0;
    while (low < 256 && !isEnough(running += histogram[static_cast<std::size_t>(low)]))
        ++low;
    running = 0;
    int high = 255;
    while (high > 0 && !isEnough(running += histogram[static_cast<std::size_t>(high)]))
        --high;
    return {low, high};
}

int BrightestPixel(const CTavixImage8 &image) {
    const Histogram histogram = HistogramOf(image, ColorLevelGray);
    int level = 255;
    while (level > 1 && histogram[static_cast<std::size_t>(level)] == 0)
        --level;
    return level;
}

/// The table of AutoContrast for a plane of that many pixels; false where it changes nothing.
bool MakeContrastTable(const Histogram &histogram, double pixels, ByteTable &table) {
    constexpr double cut = 3.0;
    const auto [low, high] = FindRange(histogram, [pixels](long running) {
        return static_cast<double>(running) / pixels * 100 >= cut;
    });
    if (low >= high)
        return false;
    const double factor = 255.0 / (high - low);
    table = MakeTable(
        [&, first = low](int level) { return ToByte(std::nearbyint((level - first) * factor)); });
    return true;
}

double PixelCount(const CTavixImage &image) {
    return static_cast<double>(image.GetWidth()) * image.GetHeight();
}

} // namespace

void CTavixImage::Invert() {
    if (const tavix::IplPtr pixels = tavix::BorrowAsIpl(*this))
        cvInvert(pixels.get(), pixels.get(), CV_LU);
}

void CTavixImage::Light(long brightness, long contrast) {
    if (brightness < -255 || brightness > 255 || contrast < -100 || contrast > 100)
        return;
    const double factor = static_cast<double>(contrast + 100) / 100.0;
    const auto centre = static_cast<double>(brightness + 128);
    ApplyToBuffer(
        *this, MakeTable([=](int level) { return ToByte((level - 128) * factor + centre + 0.5); }));
}

void CTavixImage::Gamma(double gamma) {
    if (!(gamma > 0))
        return;
    const double exponent = 1 / gamma;
    const double scale = std::pow(255.0, exponent) / 255;
    ApplyToBuffer(*this, MakeTable([=](int level) {
        return ToByte(std::pow(static_cast<double>(level), exponent) / scale);
    }));
}

void CTavixImage8::HistoEqualize() {
    tavix::CallBridged(*this, [](IplImage *pixels) { cvEqualizeHist(pixels, pixels); });
}

void CTavixImage8::HistoNormalize() {
    const Histogram histogram = HistogramOf(*this, ColorLevelGray);
    const auto above = [](long clip) { return [clip](long running) { return running > clip; }; };
    LevelRange range = FindRange(histogram, above(m_imageLen / 100));
    if (range.low == range.high)
        range = FindRange(histogram, above(0));
    if (range.low >= range.high)
        return;
    // 254: only what lies above the range becomes 255.
    ApplyToPixels(*this, MakeTable([range](int level) {
        if (level < range.low)
            return std::uint8_t{0};
        if (level > range.high)
            return std::uint8_t{255};
        return static_cast<std::uint8_t>((level - range.low) * 254 / (range.high - range.low));
    }));
}

void CTavixImage8::HistoLog() {
    const int brightest = BrightestPixel(*this);
    const double factor = 255 / std::log(static_cast<double>(brightest));
    ApplyToPixels(*this, MakeTable([=](int level) {
        return brightest == 1 || level == 0
                   ? std::uint8_t{0}
                   : ToByte(std::nearbyint(std::log(static_cast<double>(level)) * factor));
    }));
}

void CTavixImage8::HistoRoot() {
    const int brightest = BrightestPixel(*this);
    const double factor = 128 / std::log(static_cast<double>(brightest));
    ApplyToPixels(*this, MakeTable([=](int level) {
        return brightest == 1 ? std::uint8_t{0}
                              : ToByte(std::sqrt(static_cast<double>(level)) * factor);
    }));
}

void CTavixImage8::HistoStretch() {
    const auto [low, high] =
        FindRange(HistogramOf(*this, ColorLevelGray), [](long running) { return running > 0; });
    if ((low == 0 && high == 255) || low >= high)
        return;
    ApplyToPixels(*this, MakeTable([first = low, span = high - low](int level) {
        return static_cast<std::uint8_t>(std::clamp(255 * (level - first) / span, 0, 255));
    }));
}

void CTavixImage8::AutoContrast() {
    ByteTable table;
    if (MakeContrastTable(HistogramOf(*this, ColorLevelGray), PixelCount(*this), table))
        ApplyToPixels(*this, table);
}

void CTavixImage24::AutoContrast() {
    tavix::ChannelTables tables;
    constexpr ColorLevel stored[] = {ColorLevelBlue, ColorLevelGreen, ColorLevelRed};
    for (std::size_t channel = 0; channel < tables.size(); ++channel)
        if (!MakeContrastTable(HistogramOf(*this, stored[channel]), PixelCount(*this),
                               tables[channel]))
            tables[channel] = MakeTable([](int level) { return static_cast<std::uint8_t>(level); });
    tavix::ApplyTables(*this, tables);
}
