// Filters that OpenCV computes, with these very arguments.

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

namespace {

constexpr int BINARY_AT_OTSU = CV_THRESH_BINARY | CV_THRESH_OTSU;
constexpr int APERTURE = 3;

void Smooth(CTavixImage &image, int type, int width, int height) {
    tavix::ReplaceBridged(image, [=](IplImage *source, IplImage *target) {
        cvSmooth(source, target, type, width, height, 0.0, 0.0);
    });
}

} // namespace

void CTavixImage::Gaussian5x5() {
    Smooth(*this, CV_GAUSSIAN, 5, 5);
}

void CTavixImage::Gaussian3x3() {
    Smooth(*this, CV_GAUSSIAN, 3, 3);
}

void CTavixImage::Blur() {
    Smooth(*this, CV_BLUR, 3, 0);
}

void CTavixImage::Median() {
    Smooth(*this, CV_MEDIAN, 3, 0);
}

void CTavixImage::Sobel() {
    tavix::CallBridged(*this, [](IplImage *pixels) { cvSobel(pixels, pixels, 0, 1, 1); });
}

void CTavixImage::Laplacian() {
    tavix::CallBridged(*this, [](IplImage *pixels) { cvLaplace(pixels, pixels, APERTURE); });
}

void CTavixImage::Sharpen() {
    tavix::ReplaceBridged(*this, [](IplImage *source, IplImage *target) {
        cvLaplace(source, target, APERTURE);
        cvAdd(source, target, target);
    });
}

void CTavixImage::Erode() {
    tavix::CallBridged(*this, [](IplImage *pixels) { cvErode(pixels, pixels, nullptr, 1); });
}

void CTavixImage::Dilate() {
    tavix::CallBridged(*this, [](IplImage *pixels) { cvDilate(pixels, pixels, nullptr, 1); });
}

void CTavixImage::OpenBox() {
    Erode();
    Dilate();
}

void CTavixImage::CloseBox() {
    Dilate();
    Erode();
}

CTavixImage8 *CTavixImage::CannyEdge() const {
    std::unique_ptr<CTavixImage8> edges(GetImage8());
    const bool isMade = tavix::CallBridged(*edges, [](IplImage *pixels) {
        const double threshold = cvThreshold(pixels, pixels, 0.0, 255.0, BINARY_AT_OTSU);
        cvCanny(pixels, pixels, 0.5 * threshold, threshold, APERTURE);
    });
    return isMade || edges->GetImageLen() == 0 ? edges.release() : nullptr;
}
