// Scaling, turning and mirroring, each one call of OpenCV. Turning and mirroring leave the padding
// as it was.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

#include <cmath>
#include <iterator>
#include <limits>

namespace {

/// OpenCV's interpolation for each mode of Resize.
constexpr int INTERPOLATIONS[] = {CV_INTER_NN, CV_INTER_AREA, CV_INTER_LINEAR};

constexpr int BILINEAR_WITH_FILL = int{CV_INTER_LINEAR} | int{CV_WARP_FILL_OUTLIERS};

/// OpenCV's flip codes.
constexpr int ABOUT_HORIZONTAL_AXIS = 0;
constexpr int ABOUT_VERTICAL_AXIS = 1;

/// Makes the target the source scaled to that size; false when it cannot be.
bool ResizeInto(CTavixImage &target, const CTavixImage &source, int width, int height, int mode) {
    if (source.GetImageLen() == 0 || width < 1 || height < 1)
        return false;
    if (mode < 0 || mode >= static_cast<int>(std::size(INTERPOLATIONS)))
        return target.Create(width, height) == 1;
    return tavix::ImageBuffers::AllocateForPixels(target, width, height) &&
           tavix::CallBridged(source, target, [mode](IplImage *from, IplImage *to) {
               cvResize(from, to, INTERPOLATIONS[mode]);
           });
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

void CTavixImage8::Resize(int width, int height, int mode) {
    CTavixImage8 resized;
    if (ResizeInto(resized, *this, width, height, mode))
        TakeBufferOf(resized);
}

void CTavixImage24::Resize(int width, int height, int mode) {
    CTavixImage24 resized;
    if (ResizeInto(resized, *this, width, height, mode))
        TakeBufferOf(resized);
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
        cvWarpAffine(source.get(), target, &map, BILINEAR_WITH_FILL, cvScalarAll(0));
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
