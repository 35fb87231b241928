// Filters with kernels of our own.

#include "TAVIX20/analysis/convolution.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <vector>

namespace {

/// A copy of a row with its first and last pixel repeated once more.
using Line = std::vector<unsigned char>;

void CopyExtended(const unsigned char *row, std::size_t width, Line &line) {
    line.front() = row[0];
    std::copy_n(row, width, line.begin() + 1);
    line.back() = row[width - 1];
}

/// Replaces every pixel by gradient(above, here, below, x), where x is its index in the lines,
/// those beyond the edge repeating the nearest. False, and nothing changed, when memory runs out.
template <typename Gradient>
bool ReplaceByGradient(CTavixImage8 &image, Gradient gradient) {
    if (image.GetImageLen() == 0)
        return true;
    const auto width = static_cast<std::size_t>(image.GetWidth());
    std::array<Line, 3> lines;
    try {
        lines.fill(Line(width + 2));
    } catch (const std::bad_alloc &) {
        return false;
    }
    auto &[above, here, below] = lines;
    const std::int64_t stride = tavix::RowStride(8, image.GetWidth());
    unsigned char *row = image.GetImagePtr();
    CopyExtended(row, width, above);
    CopyExtended(row, width, here);
    for (int y = 0; y < image.GetHeight(); ++y, row += stride) {
        const bool isLast = y + 1 == image.GetHeight();
        CopyExtended(isLast ? row : row + stride, width, below);
        for (std::size_t x = 1; x <= width; ++x)
            row[x - 1] = static_cast<unsigned char>(
                std::min(gradient(above.data(), here.data(), below.data(), x), 255));
        above.swap(here);
        here.swap(below);
    }
    return true;
}

} // namespace

void CTavixImage::Filter(const long *kernel, long size, long divisor, long offset) {
    if (!kernel || size < 1 || size > std::numeric_limits<int>::max() || m_imageLen == 0)
        return;
    tavix::Convolve(
        {m_buffer.get(), m_width, m_height, static_cast<std::ptrdiff_t>(Stride()), m_bitCount / 8},
        {kernel, static_cast<int>(size), divisor, offset});
}

void CTavixImage8::Emboss() {
    constexpr long kernel[] = {-1, -1, 0, -1, 0, 1, 0, 1, 1};
    Filter(kernel, 3, -1, 127);
}

void CTavixImage8::LogEdge() {
    constexpr long kernel[] = {1, -2, 1, -2, 4, -2, 1, -2, 1};
    Filter(kernel, 3, -1, 0);
}

void CTavixImage8::Roberts() {
    ReplaceByGradient(*this, [](const unsigned char *, const unsigned char *here,
                                const unsigned char *below, std::size_t x) {
        return std::abs(here[x] - below[x + 1]) + std::abs(here[x + 1] - below[x]);
    });
}

void CTavixImage8::Prewitt() {
    ReplaceByGradient(*this, [](const unsigned char *above, const unsigned char *here,
                                const unsigned char *below, std::size_t x) {
        const int columns =
            above[x + 1] + here[x + 1] + below[x + 1] - above[x - 1] - here[x - 1] - below[x - 1];
        const int rows =
            below[x - 1] + below[x] + below[x + 1] - above[x - 1] - above[x] - above[x + 1];
        return std::abs(columns) + std::abs(rows);
    });
}
