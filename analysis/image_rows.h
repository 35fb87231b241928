/// Walks over the rows of an image.
#pragma once

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image.h"

#include <cstddef>

namespace tavix {

/// Bytes of the pixels of a row, without the padding.
inline std::size_t RowBytes(const CTavixImage &image) {
    return static_cast<std::size_t>(image.GetWidth()) *
           static_cast<std::size_t>(image.GetBitCount() / 8);
}

/// Calls process(bytes, size) for every row from first to before end.
template <typename Image, typename Process>
void ForRows(Image &image, int first, int end, Process process) {
    if (image.GetImageLen() == 0)
        return;
    const std::int64_t stride = RowStride(image.GetBitCount(), image.GetWidth());
    auto *row = image.GetImagePtr() + first * stride;
    for (int y = first; y < end; ++y, row += stride)
        process(row, RowBytes(image));
}

/// Calls process(bytes, size) for every row.
template <typename Image, typename Process>
void ForEachRow(Image &image, Process process) {
    ForRows(image, 0, image.GetHeight(), process);
}

} // namespace tavix
