/// Random pictures and plain views of image buffers for the tests.
#pragma once

#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <random>
#include <vector>

namespace tavix_test {

using Bytes = std::vector<unsigned char>;

inline Bytes RandomBytes(int count, std::mt19937 &random, int highest = 255) {
    std::uniform_int_distribution<int> level(0, highest);
    Bytes bytes(static_cast<std::size_t>(count));
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(level(random));
    return bytes;
}

/// Bytes of a row of whole pixels, filled up to a multiple of 4.
inline int PaddedRow(int width, int bytesPerPixel) {
    return (width * bytesPerPixel + 3) / 4 * 4;
}

/// Padding bytes are random as well.
template <typename Image>
Image RandomImage(int width, int height, std::mt19937 &random, int highest = 255) {
    const int pixelBytes = Image().GetBitCount() / 8;
    const Bytes bytes = RandomBytes(PaddedRow(width, pixelBytes) * height, random, highest);
    return Image(width, height, bytes.data());
}

inline Bytes BytesOf(const CTavixImage &image) {
    return {image.GetImagePtr(), image.GetImagePtr() + image.GetImageLen()};
}

/// A copy of the pixels without padding.
inline cv::Mat PixelsOf(const CTavixImage &image) {
    const int channels = image.GetBitCount() / 8;
    return cv::Mat(image.GetHeight(), image.GetWidth(), CV_8UC(channels),
                   const_cast<unsigned char *>(image.GetImagePtr()),
                   static_cast<std::size_t>(PaddedRow(image.GetWidth(), channels)))
        .clone();
}

inline bool SamePixels(const cv::Mat &a, const cv::Mat &b) {
    return a.type() == b.type() && a.size() == b.size() &&
           (a.empty() || cv::norm(a, b, cv::NORM_INF) == 0);
}

} // namespace tavix_test
