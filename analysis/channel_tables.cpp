#include "TAVIX20/analysis/channel_tables.h"

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"

#include <opencv2/core/core_c.h>

namespace tavix {

void ApplyTables(CTavixImage24 &image, const ChannelTables &tables) {
    std::array<std::array<std::uint8_t, 3>, 256> entries;
    for (std::size_t level = 0; level < entries.size(); ++level)
        for (std::size_t channel = 0; channel < tables.size(); ++channel)
            entries[level][channel] = tables[channel][level];
    CvMat lookup = cvMat(1, 256, CV_8UC3, entries.data());
    CallBridged(image, [&lookup](IplImage *pixels) { cvLUT(pixels, pixels, &lookup); });
}

} // namespace tavix
