// Colour planes: a conversion and a split by OpenCV, done strip by strip so that the converted
// pixels stay in the cache. Both work pixel by pixel, so the strips change nothing in the result.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

#include <algorithm>
#include <optional>

namespace {

/// Where a plane comes from: a channel after a conversion, or of the stored pixels.
struct Plane {
    std::optional<int> conversion;
    int channel;
};

/// The converted strip stays in the second-level cache and still feeds OpenCV's own threads.
constexpr int STRIP_PIXELS = 1 << 19;

/// Rows [first, end) of a structure; nothing is copied.
CvMat Rows(IplImage *image, int first, int end) {
    CvMat rows;
    cvGetRows(image, &rows, first, end);
    return rows;
}

void WritePlane(IplImage *source, IplImage *target, const Plane &plane) {
    const int width = source->width;
    const int height = source->height;
    const int stripRows = std::clamp(STRIP_PIXELS / width, 1, height);
    const CvSize strip = cvSize(width, stripRows);
    const tavix::IplPtr converted(cvCreateImage(strip, IPL_DEPTH_8U, 3));
    const tavix::IplPtr unwanted(cvCreateImage(strip, IPL_DEPTH_8U, 1));
    for (int y = 0; y < height; y += stripRows) {
        const int rows = std::min(stripRows, height - y);
        CvMat pixels = Rows(source, y, y + rows);
        CvMat inPlaneSpace = Rows(converted.get(), 0, rows);
        CvMat rest = Rows(unwanted.get(), 0, rows);
        CvMat wanted = Rows(target, y, y + rows);
        if (plane.conversion)
            cvCvtColor(&pixels, &inPlaneSpace, *plane.conversion);
        CvMat *planes[] = {&rest, &rest, &rest};
        planes[plane.channel] = &wanted;
        cvSplit(plane.conversion ? &inPlaneSpace : &pixels, planes[0], planes[1], planes[2],
                nullptr);
    }
}

CTavixImage8 *TakePlane(const CTavixImage24 &image, const Plane &plane) {
    auto result = std::make_unique<CTavixImage8>();
    if (image.GetImageLen() == 0)
        return result.release();
    const bool isMade =
        tavix::ImageBuffers::AllocateForPixels(*result, image.GetWidth(), image.GetHeight()) &&
        tavix::CallBridged(image, *result, [&plane](IplImage *source, IplImage *target) {
            WritePlane(source, target, plane);
        });
    return isMade ? result.release() : nullptr;
}

} // namespace

// Stored pixels are blue, green, red: these need no conversion.
CTavixImage8 *CTavixImage24::GetRedSpace() const {
    return TakePlane(*this, {std::nullopt, 2});
}

CTavixImage8 *CTavixImage24::GetGreenSpace() const {
    return TakePlane(*this, {std::nullopt, 1});
}

CTavixImage8 *CTavixImage24::GetBlueSpace() const {
    return TakePlane(*this, {std::nullopt, 0});
}

CTavixImage8 *CTavixImage24::GetYSpace() const {
    return TakePlane(*this, {CV_BGR2YUV, 0});
}

CTavixImage8 *CTavixImage24::GetUSpace() const {
    return TakePlane(*this, {CV_BGR2YUV, 1});
}

CTavixImage8 *CTavixImage24::GetVSpace() const {
    return TakePlane(*this, {CV_BGR2YUV, 2});
}

// The codes for red-green-blue on blue-green-red pixels: red and blue are exchanged, deliberately.
CTavixImage8 *CTavixImage24::GetHSpaceOfHLS() const {
    return TakePlane(*this, {CV_RGB2HLS, 0});
}

CTavixImage8 *CTavixImage24::GetLSpaceOfHLS() const {
    return TakePlane(*this, {CV_RGB2HLS, 1});
}

CTavixImage8 *CTavixImage24::GetSSpaceOfHLS() const {
    return TakePlane(*this, {CV_RGB2HLS, 2});
}

CTavixImage8 *CTavixImage24::GetHSpaceOfHSV() const {
    return TakePlane(*this, {CV_RGB2HSV, 0});
}

CTavixImage8 *CTavixImage24::GetSSpaceOfHSV() const {
    return TakePlane(*this, {CV_RGB2HSV, 1});
}

CTavixImage8 *CTavixImage24::GetVSpaceOfHSV() const {
    return TakePlane(*this, {CV_RGB2HSV, 2});
}

CTavixImage8 *CTavixImage24::GetGraySpace() const {
    return GetImage8();
}
