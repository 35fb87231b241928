// Scaling, turning and mirroring, each one call of OpenCV. Turning and mirroring leave the padding
// as it was.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

#include <cmath>
#include <limits>

namespace {

/// OpenCV's interpolation for each mode of Resize.
constexpr int INTERPOLATIONS[] = {CV_INTER_NN, CV_INTER_AREA, CV_INTER_LINEAR};

/// OpenCV's flip codes.
constexpr int ABOUT_HORIZONTAL_AXIS = 0;
constexpr int ABOUT_VERTICAL_AXIS = 1;

/// Scales into the target, which has its size; false when OpenCV refuses.
bool ResizeInto(CTavixImage &target, const CTavixImage &source, int interpolation) {
    return tavix::CallBridged(source, target, [interpolation](IplImage *from, IplImage *to) {
        cvResize(from, to, interpolation);
    });
}

template <typename Image>
void ResizeAs(Image &image, int width, int height, int mode) {
    Image resized;
    if (mode >= 0 && mode < static_cast<int>(std::size(INTERPOLATIONS))) {
        if (!tavix::ImageBuffers::AllocateForPixels(resized, width, height) ||
            !ResizeInto(resized, image, INTERPOLATIONS[mode]))
            return;
    } else if (!resized.Create(width, height)) {
        return;
    }
    tavix::ImageBuffers::Move(resized, image);
}

void Flip(CTavixImage &image, int code) {
    tavix::CallBridged(image, [code](IplImage *pixels) { cvFlip(pixels, pixels, code); });
}

} // namespace

void CTavixImage::Resize(double scale, int mode) {
    const double width = scale * m_width;
    const double height = scale * m_height;
    constexpr double limit = std::numeric_limits<int>::max();
    if (width >= 1 && width <= limit && height >= 1 && height <= limit)
        Resize(static_cast<int>(width), static_cast<int>(height), mode);
}

void CTavixImage::Resize(int width, int height, int mode) {
    if (m_imageLen == 0 || width < 1 || height < 1)
        return;
    if (m_bitCount == 8)
        ResizeAs(static_cast<CTavixImage8 &>(*this), width, height, mode);
    else
        ResizeAs(static_cast<CTavixImage24 &>(*this), width, height, mode);
}

void CTavixImage::Rotate(double angle, unsigned char /*fill*/) {
    const tavix::IplPtr source = std::isfinite(angle) ? tavix::CopyToIpl(*this) : nullptr;
    if (!source)
        return;
    const CvPoint2D32f centre =
        cvPoint2D32f(static_cast<float>(m_width / 2), static_cast<float>(m_height / 2));
    tavix::CallBridged(*this, [&](IplImage *target) {
        float matrix[6];
        CvMat map = cvMat(2, 3, CV_32FC1, matrix);
        cv2DRotationMatrix(centre, angle, 1.0, &map);
        cvWarpAffine(source.get(), target, &map, CV_INTER_LINEAR | CV_WARP_FILL_OUTLIERS,
                     cvScalarAll(0));
    });
}

void CTavixImage::Rotate90L() {
    Rotate(90.0, 255);
}

void CTavixImage::Rotate90R() {
    Rotate(-90.0, 255);
}

void CTavixImage::Rotate180() {
    Rotate(180.0, 255);
}

void CTavixImage::RotateHorzFlip() {
    Flip(*this, ABOUT_VERTICAL_AXIS);
}

void CTavixImage::RotateVertFlip() {
    Flip(*this, ABOUT_HORIZONTAL_AXIS);
}
