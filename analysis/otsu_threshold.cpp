// Automatic thresholds by Otsu's method, computed by OpenCV's cvThreshold.

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

namespace {

constexpr int BINARY_AT_OTSU = CV_THRESH_BINARY | CV_THRESH_OTSU;
constexpr double SET = 255.0;

} // namespace

long CTavixImage8::GetAutoThreshold() const {
    const tavix::IplPtr copy = tavix::CopyToIpl(*this);
    if (!copy)
        return 0;
    try {
        return static_cast<long>(cvThreshold(copy.get(), copy.get(), 0.0, SET, BINARY_AT_OTSU));
    } catch (const cv::Exception &) {
        return 0;
    }
}

void CTavixImage8::Threshold(int threshold) {
    const tavix::IplPtr pixels = tavix::BorrowAsIpl(*this);
    if (!pixels)
        return;
    try {
        cvThreshold(pixels.get(), pixels.get(), threshold, SET, BINARY_AT_OTSU);
    } catch (const cv::Exception &) {
        return; // OpenCV checks before it writes: the image is as it was.
    }
}
