// Colour balance: each channel goes through a table of its own.

#include "TAVIX20/analysis/channel_tables.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"

#include <opencv2/core/core_c.h>

#include <array>
#include <cmath>

namespace {

/// One factor for each stored channel: blue, green, red.
using Gains = std::array<double, 3>;

void Multiply(CTavixImage24 &image, const Gains &gains) {
    for (const double gain : gains)
        if (!(gain >= 0 && std::isfinite(gain)))
            return;
    tavix::ChannelTables tables;
    for (std::size_t channel = 0; channel < gains.size(); ++channel)
        for (std::size_t level = 0; level < 256; ++level)
            tables[channel][level] = static_cast<unsigned char>(
                std::fmin(255.0, std::nearbyint(static_cast<double>(level) * gains[channel])));
    tavix::ApplyTables(image, tables);
}

} // namespace

void CTavixImage24::SetRedGain(double gain) {
    Multiply(*this, {1, 1, gain});
}

void CTavixImage24::SetGreenGain(double gain) {
    Multiply(*this, {1, gain, 1});
}

void CTavixImage24::SetBlueGain(double gain) {
    Multiply(*this, {gain, 1, 1});
}

void CTavixImage24::WhiteBalance() {
    CvScalar means{};
    tavix::CallBridged(*this, [&means](IplImage *pixels) { means = cvAvg(pixels); });
    const double grey = (means.val[0] + means.val[1] + means.val[2]) / 3;
    Gains gains{1, 1, 1};
    for (std::size_t channel = 0; channel < gains.size(); ++channel)
        if (means.val[channel] > 0)
            gains[channel] = grey / means.val[channel];
    Multiply(*this, gains);
}

void CTavixImage24::AbandonColorCell(ColorLevel level) {
    switch (level) {
    case ColorLevelRed:
        return SetRedGain(0);
    case ColorLevelGreen:
        return SetGreenGain(0);
    case ColorLevelBlue:
        return SetBlueGain(0);
    default:
        return;
    }
}
