// Copies, conversions and thresholds of images beside memcpy and the bare OpenCV call.

#include "comparison.h"
#include "pictures.h"

#include <TAVIX20.h>
#include <TAVIX20/image/image_interop.h>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <cstring>
#include <memory>
#include <random>

namespace {} // namespace

void AddImageComparisons() {
    const auto grey = Noise<CTavixImage8>(1);
    const auto colour = Noise<CTavixImage24>(1);

    AddComparison({"Clone, 2048 x 2048 grey", "memcpy into a new buffer", 0.83,
                   [grey] { const std::unique_ptr<CTavixImage> copy(grey->Clone()); },
                   MemcpyOf(grey)});
    const auto large = std::make_shared<CTavixImage8>(10240, 10240);
    AddComparison({"Clone, 100 MB", "memcpy into a new buffer", 0.83,
                   [large] { const std::unique_ptr<CTavixImage> copy(large->Clone()); },
                   MemcpyOf(large)});
    AddComparison({"GetAutoThreshold, 2048 x 2048", "cv::threshold with Otsu's flag", 0.8,
                   [grey] { static_cast<void>(grey->GetAutoThreshold()); },
                   [grey] {
                       cv::Mat out;
                       cv::threshold(tavix::ViewAsMat(*grey), out, 0, 255,
                                     cv::THRESH_BINARY | cv::THRESH_OTSU);
                   }});
    const auto target = std::make_shared<CTavixImage8>(*grey);
    AddComparison({"assign and Threshold, 2048 x 2048", "cv::Mat::copyTo and cv::threshold", 0.8,
                   [grey, target] {
                       *target = *grey;
                       target->Threshold(0);
                   },
                   [grey] {
                       cv::Mat copy;
                       tavix::ViewAsMat(*grey).copyTo(copy);
                       cv::threshold(copy, copy, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
                   }});
    AddComparison({"CTavixImage24::GetImage8, 2048 x 2048", "cv::cvtColor BGR to grey", 0.8,
                   [colour] { const std::unique_ptr<CTavixImage8> out(colour->GetImage8()); },
                   [colour] {
                       cv::Mat out;
                       cv::cvtColor(tavix::ViewAsMat(*colour), out, cv::COLOR_BGR2GRAY);
                   }});
}
