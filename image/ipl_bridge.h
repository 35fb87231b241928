/// The one place that knows OpenCV's IplImage.
#pragma once

#include <memory>

struct _IplImage;
class CTavixImage;

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

} // namespace tavix
