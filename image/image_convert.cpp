// Conversions between grey and colour images, and between images and IplImage structures.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

namespace {

/// A new image of the other class; empty when the source has no pixels or OpenCV refuses.
template <typename Target>
Target *Convert(const CTavixImage &source, int cvCode) {
    auto target = std::make_unique<Target>();
    const bool isMade =
        source.GetImageLen() > 0 &&
        tavix::ImageBuffers::AllocateForPixels(*target, source.GetWidth(), source.GetHeight()) &&
        tavix::CallBridged(source, *target, [cvCode](IplImage *from, IplImage *to) {
            cvCvtColor(from, to, cvCode);
        });
    return isMade ? target.release() : new Target;
}

} // namespace

CTavixImage8 *CTavixImage24::GetImage8() const {
    return Convert<CTavixImage8>(*this, CV_BGR2GRAY);
}

CTavixImage24 *CTavixImage8::GetImage24() const {
    return Convert<CTavixImage24>(*this, CV_GRAY2BGR);
}

CTavixImage8 *CTavixImage8::GetImage8() const {
    return static_cast<CTavixImage8 *>(Clone());
}

CTavixImage24 *CTavixImage24::GetImage24() const {
    return static_cast<CTavixImage24 *>(Clone());
}

void *CTavixImage8::GetIplImage() const {
    return tavix::CopyToIpl(*this).release();
}

void *CTavixImage24::GetIplImage() const {
    return tavix::CopyToIpl(*this).release();
}
