#include "TAVIX20/analysis/convolution_kernels.h"
#include "analysis/each_target.h"
#include "image/image_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace tavix_test;

/// The definition of Filter, term by term.
template <typename Image>
Bytes Filtered(const Image &image, const std::vector<long> &kernel, int size, long divisor,
               long offset) {
    const int channels = image.GetBitCount() / 8;
    const int stride = PaddedRow(image.GetWidth(), channels);
    const int centre = size / 2;
    const Bytes source = BytesOf(image);
    Bytes result = source;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth() * channels; ++x) {
            long sum = 0;
            for (int i = -centre; i <= size - centre - 1; ++i)
                for (int j = -centre; j <= size - centre - 1; ++j) {
                    const int row = y + i, column = x / channels + j;
                    if (row >= 1 && row < image.GetHeight() && column >= 1 &&
                        column < image.GetWidth())
                        sum += kernel[static_cast<std::size_t>((i + centre) * size + j + centre)] *
                               source[static_cast<std::size_t>(row * stride + x + j * channels)];
                }
            const long value = divisor == 0 ? sum + offset : offset + sum / divisor;
            result[static_cast<std::size_t>(y * stride + x)] =
                static_cast<unsigned char>(std::clamp(value, 0L, 255L));
        }
    return result;
}

class ConvolutionTest : public EachTargetTest {
protected:
    template <typename Image>
    void ExpectFilter(int rounds) {
        const auto choose = [this](auto values) { return values[m_random() % values.size()]; };
        for (int round = 0; round < rounds; ++round) {
            const int width = 1 + static_cast<int>(m_random() % 150);
            const auto image =
                RandomImage<Image>(width, 1 + static_cast<int>(m_random() % 9), m_random);
            const int size = 1 + static_cast<int>(m_random() % 8);
            // Each largest weight leads to another way of computing.
            std::uniform_int_distribution<long> weight(-1, 1);
            const long largest = choose(std::vector<long>{1, 1, 3, 20, 900, 32767, 2147483647});
            std::vector<long> kernel(static_cast<std::size_t>(size * size));
            for (long &entry : kernel)
                entry = m_random() % 4 == 0
                            ? 0
                            : std::uniform_int_distribution<long>(-largest, largest)(m_random);
            const long divisor = choose(std::vector<long>{0, 1, -1, 2, 3, -7, 16, 255, -1000, 8000,
                                                          32767, 65536, 70000, 1L << 40});
            const long offset =
                choose(std::vector<long>{0, 0, 127, -50, 300, 16384, 40000, -40000, 1L << 50});
            Image filtered = image;
            filtered.Filter(kernel.data(), size, divisor, offset);
            ASSERT_EQ(BytesOf(filtered), Filtered(image, kernel, size, divisor, offset))
                << width << " x " << image.GetHeight() << ", size " << size << ", weights to "
                << largest << ", divisor " << divisor << ", offset " << offset;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Targets, ConvolutionTest, EACH_TARGET, TargetName);

TEST_P(ConvolutionTest, FilterIsTheDirectSumWhicheverWayItIsComputed) {
    ExpectFilter<CTavixImage8>(500);
    ExpectFilter<CTavixImage24>(250);
}

TEST(FilterTest, FixedKernelsAndRefusals) {
    std::mt19937 random(4);
    const auto image = RandomImage<CTavixImage8>(37, 11, random);
    CTavixImage8 embossed = image, edges = image, unchanged = image;
    embossed.Emboss();
    edges.LogEdge();
    EXPECT_EQ(BytesOf(embossed), Filtered(image, {-1, -1, 0, -1, 0, 1, 0, 1, 1}, 3, -1, 127));
    EXPECT_EQ(BytesOf(edges), Filtered(image, {1, -2, 1, -2, 4, -2, 1, -2, 1}, 3, -1, 0));
    const long one = 1;
    unchanged.Filter(nullptr, 3, 0, 0);
    unchanged.Filter(&one, 0, 0, 0);
    unchanged.Filter(&one, -1, 0, 0);
    CTavixImage8().Filter(&one, 1, 0, 0);
    EXPECT_EQ(BytesOf(unchanged), BytesOf(image));
    // Neighbours beyond the image do not count, however large the kernel.
    std::vector<long> large(201 * 201, 1);
    CTavixImage8 summed = image;
    summed.Filter(large.data(), 201, 1000, 0);
    EXPECT_EQ(BytesOf(summed), Filtered(image, large, 201, 1000, 0));
}

TEST(FilterTest, DivisionByMultiplicationIsExact) {
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        const int divisor = round < 300 ? round + 2 : 2 + static_cast<int>(random() % 32766);
        const tavix::Scaling16 scaling({divisor, 0});
        for (int n : {0, 1, divisor - 1, divisor, 2 * divisor - 1, 32766, 32767})
            if (n <= 32767) {
                ASSERT_EQ((static_cast<unsigned>(n) * scaling.multiplier) >> 16 >> scaling.shift,
                          static_cast<unsigned>(n / divisor))
                    << n << " / " << divisor;
            }
    }
}

} // namespace
