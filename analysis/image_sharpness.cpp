// The variance of the Laplacian as a measure of focus.

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Over the inner pixels of the rectangle, which lies in the image.
int LaplacianVariance(const CTavixImage8 &image, int left, int top, int right, int bottom) {
    const auto stride = static_cast<std::ptrdiff_t>(tavix::RowStride(8, image.GetWidth()));
    std::int64_t sum = 0;
    std::int64_t squares = 0;
    for (int y = top + 1; y < bottom; ++y) {
        const unsigned char *const row = image.GetImagePtr() + y * stride;
        for (int x = left + 1; x < right; ++x) {
            const unsigned char *const pixel = row + x;
            const int value = pixel[-1] + pixel[1] + pixel[-stride] + pixel[stride] - 4 * pixel[0];
            sum += value;
            squares += value * value;
        }
    }
    const double count = (right - left - 1.0) * (bottom - top - 1.0);
    const double mean = static_cast<double>(sum) / count;
    return static_cast<int>(std::lround(static_cast<double>(squares) / count - mean * mean));
}

} // namespace

int CTavixImage::GetSharpenessLevel(int x1, int y1, int x2, int y2) const {
    const auto [left, right] = std::minmax(x1, x2);
    const auto [top, bottom] = std::minmax(y1, y2);
    const int x = std::max(left, 0);
    const int y = std::max(top, 0);
    const int endX = std::min(right, m_width - 1);
    const int endY = std::min(bottom, m_height - 1);
    if (m_imageLen == 0 || endX - x < 2 || endY - y < 2)
        return 0;
    const std::unique_ptr<CTavixImage8> grey(m_bitCount == 8 ? nullptr : GetImage8());
    const auto &image = grey ? *grey : static_cast<const CTavixImage8 &>(*this);
    return image.GetImageLen() == 0 ? 0 : LaplacianVariance(image, x, y, endX, endY);
}

int CTavixImage::GetSharpenessLevel() const {
    return GetSharpenessLevel(0, 0, m_width - 1, m_height - 1);
}
