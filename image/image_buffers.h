/// What the library's own operations may do with an image's buffer beyond the public members.
#pragma once

#include "TAVIX20/image/tavix_image.h"

#include <cstddef>

namespace tavix {

struct ImageBuffers {
    /// Makes the image that size with padding 0 and undefined pixels, for callers that write them
    /// all. False, and an empty image, as Create.
    static bool AllocateForPixels(CTavixImage &image, int width, int height);

    /// A buffer like the image's, with its padding and undefined pixels; null for an image without
    /// pixels and when memory runs out.
    static BufferPtr AllocateLike(const CTavixImage &image);

    /// Gives the image the buffer in place of its own. The length is that of the image's layout.
    static void Adopt(CTavixImage &image, BufferPtr buffer, int width, int height);
};

/// A new image of 8 or 24 bits with a copy of the rows, of which the first starts at rows and each
/// next one step bytes later; null when the size is too large or memory runs out.
std::unique_ptr<CTavixImage> CopyRows(int bitCount, int width, int height,
                                      const unsigned char *rows, std::ptrdiff_t step);

} // namespace tavix
