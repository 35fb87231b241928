/// The one place that knows OpenCV's IplImage.
#pragma once

#include "TAVIX20/image/image_buffers.h"

#include <exception>
#include <memory>
#include <utility>

struct _IplImage;

namespace tavix {

struct IplDeleter {
    void operator()(_IplImage *image) const;
};

/// An IplImage that is released with its owner.
using IplPtr = std::unique_ptr<_IplImage, IplDeleter>;

/// A new structure with the image's size and channels and a copy of its pixels; null for an image
/// without pixels or when it cannot be made.
IplPtr CopyToIpl(const CTavixImage &image);

/// Hands size and pixels of an IplImage with that many channels to target.SetImagePtr; any other
/// structure, or null, changes nothing. Bytes beyond the structure's own data are taken as 0.
void TakeIplPixels(const void *structure, int channels, CTavixImage &target);

/// A structure that shows the image's own buffer, nothing copied: for calls that read it or change
/// it in place. Null for an image without pixels. It must not outlive the image or its buffer.
IplPtr BorrowAsIpl(CTavixImage &image);
/// The same for reading only.
IplPtr BorrowAsIpl(const CTavixImage &image);

/// A structure that shows a buffer laid out as the image's own.
IplPtr BorrowAsIpl(unsigned char *buffer, const CTavixImage &layout);

/// Runs call(pixels) on the borrowed structure of an image. False when the image has no pixels or
/// OpenCV raised an error; it checks its arguments before it writes.
template <typename Call>
bool CallBridged(CTavixImage &image, Call call) {
    try {
        const IplPtr pixels = BorrowAsIpl(image);
        if (pixels)
            call(pixels.get());
        return pixels != nullptr;
    } catch (const std::exception &) {
        return false;
    }
}

/// Runs call(source, target) on the borrowed structures of two images.
template <typename Call>
bool CallBridged(const CTavixImage &source, CTavixImage &target, Call call) {
    const IplPtr from = BorrowAsIpl(source);
    return from && CallBridged(target, [&](_IplImage *to) { call(from.get(), to); });
}

/// Runs call(source, target) on the borrowed structure of an image and that of a new buffer like
/// it, which takes the place of the old one. For calls that cannot work in place: nothing is
/// copied.
template <typename Call>
bool ReplaceBridged(CTavixImage &image, Call call) {
    BufferPtr buffer = ImageBuffers::AllocateLike(image);
    if (!buffer)
        return false;
    try {
        const IplPtr source = BorrowAsIpl(image);
        const IplPtr target = BorrowAsIpl(buffer.get(), image);
        if (!source || !target)
            return false;
        call(source.get(), target.get());
    } catch (const std::exception &) {
        return false;
    }
    ImageBuffers::Adopt(image, std::move(buffer), image.GetWidth(), image.GetHeight());
    return true;
}

} // namespace tavix
