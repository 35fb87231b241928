// Automatic thresholds by Otsu's method, computed by OpenCV's cvThreshold.

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

namespace {

constexpr int BINARY_AT_OTSU = CV_THRESH_BINARY | CV_THRESH_OTSU;
constexpr double SET = 255.0;

} // namespace

long CTavixImage8::GetAutoThreshold() const {
    double threshold = 0;
    // The copy takes the two-level picture.
    CTavixImage8 copy(*this);
    tavix::CallBridged(copy, [&threshold](IplImage *pixels) {
        threshold = cvThreshold(pixels, pixels, 0.0, SET, BINARY_AT_OTSU);
    });
    return static_cast<long>(threshold);
}

void CTavixImage8::Threshold(int threshold) {
    tavix::CallBridged(*this, [threshold](IplImage *pixels) {
        cvThreshold(pixels, pixels, threshold, SET, BINARY_AT_OTSU);
    });
}
