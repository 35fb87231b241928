/// Bitmap handles: pictures of any pixel format behind an opaque handle, made of QImage.
#pragma once

#include "TAVIX20/platform/export.h"

class QImage;

/// An opaque bitmap.
using HBITMAP = struct HBITMAP__ *;

/// A new bitmap that shows the image as it is now; the pixels are shared until one of both changes.
/// Null for an image without pixels. The caller deletes it with DeleteObject.
TAVIX_API HBITMAP CreateBitmapHandle(const QImage &image);

/// The bitmap's picture; a null image for a null handle.
TAVIX_API QImage GetBitmapImage(HBITMAP bitmap);

/// Destroys the bitmap. Returns 1, or 0 for null.
TAVIX_API int DeleteObject(HBITMAP bitmap);
