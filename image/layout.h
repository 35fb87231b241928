/// The layout of pixel buffers: rows from the top down, each padded to a multiple of 4 bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavix {

/// Bytes from one row to the next: the row's bytes rounded up to a multiple of 4.
constexpr std::int64_t RowStride(int bitCount, std::int64_t width) {
    return ((bitCount * width + 31) >> 5) * 4;
}

/// Stride times height; nothing when a size is negative or the product exceeds 2^31 - 1 bytes.
constexpr std::optional<std::int32_t> ImageLength(int bitCount, std::int64_t width,
                                                  std::int64_t height) {
    if (width < 0 || height < 0 || width > INT32_MAX || height > INT32_MAX)
        return std::nullopt;
    const std::int64_t stride = RowStride(bitCount, width);
    if (height > 0 && stride > INT32_MAX / height)
        return std::nullopt;
    return static_cast<std::int32_t>(stride * height);
}

} // namespace tavix
