#include "TAVIX20/image/ipl_bridge.h"

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image.h"

#include <opencv2/core/core_c.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace tavix {

namespace {

bool HasPixels(const CTavixImage &image) {
    return image.GetWidth() > 0 && image.GetHeight() > 0 && image.GetImageLen() > 0;
}

CvSize SizeOf(const CTavixImage &image) {
    return cvSize(image.GetWidth(), image.GetHeight());
}

int ChannelsOf(const CTavixImage &image) {
    return image.GetBitCount() / 8;
}

} // namespace

// A borrowed structure owns no data: imageDataOrigin tells, for cvReleaseImage would free imageData
// through it.
void IplDeleter::operator()(IplImage *image) const {
    if (image->imageDataOrigin)
        cvReleaseImage(&image);
    else
        cvReleaseImageHeader(&image);
}

IplPtr CopyToIpl(const CTavixImage &image) {
    if (!HasPixels(image))
        return nullptr;
    try {
        IplPtr copy(cvCreateImage(SizeOf(image), IPL_DEPTH_8U, ChannelsOf(image)));
        if (copy)
            std::memcpy(copy->imageData, image.GetImagePtr(),
                        static_cast<std::size_t>(image.GetImageLen()));
        return copy;
    } catch (const std::exception &) {
        return nullptr;
    }
}

void TakeIplPixels(const void *structure, int channels, CTavixImage &target) {
    const auto *image = static_cast<const IplImage *>(structure);
    if (!image || image->nChannels != channels || !image->imageData)
        return;
    const auto *bytes = reinterpret_cast<const unsigned char *>(image->imageData);
    const auto length = ImageLength(8 * channels, image->width, image->height);
    if (!length || *length <= image->imageSize) {
        target.SetImagePtr(image->width, image->height, bytes);
        return;
    }
    std::vector<unsigned char> padded(static_cast<std::size_t>(*length), 0);
    std::copy_n(bytes, std::max(image->imageSize, 0), padded.begin());
    target.SetImagePtr(image->width, image->height, padded.data());
}

IplPtr BorrowAsIpl(CTavixImage &image) {
    return BorrowAsIpl(image.GetImagePtr(), image);
}

IplPtr BorrowAsIpl(unsigned char *buffer, const CTavixImage &layout) {
    if (!HasPixels(layout))
        return nullptr;
    try {
        IplPtr view(cvCreateImageHeader(SizeOf(layout), IPL_DEPTH_8U, ChannelsOf(layout)));
        if (view) {
            view->imageData = reinterpret_cast<char *>(buffer);
            view->widthStep = static_cast<int>(RowStride(layout.GetBitCount(), layout.GetWidth()));
        }
        return view;
    } catch (const std::exception &) {
        return nullptr;
    }
}

IplPtr BorrowAsIpl(const CTavixImage &image) {
    return BorrowAsIpl(const_cast<CTavixImage &>(image));
}

} // namespace tavix
