#include "image/image_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace tavix_test;

/// An operator and what it makes of two values, by its definition.
template <typename Image>
struct Operator {
    char sign;
    int (*level)(int, int);
    Image &(*apply)(Image &, const Image &);
};

template <typename Image>
const Operator<Image> OPERATORS[] = {
    {'+', [](int a, int b) { return std::min(a + b, 255); },
     [](Image &a, const Image &b) -> Image & { return a + b; }},
    {'-', [](int a, int b) { return std::max(a - b, 0); },
     [](Image &a, const Image &b) -> Image & { return a - b; }},
    {'*', [](int a, int b) { return std::min(a * b, 255); },
     [](Image &a, const Image &b) -> Image & { return a * b; }},
    {'/', [](int a, int b) { return b == 0 ? 0 : static_cast<int>(std::nearbyint(double(a) / b)); },
     [](Image &a, const Image &b) -> Image & { return a / b; }},
    {'&', [](int a, int b) { return a & b; },
     [](Image &a, const Image &b) -> Image & { return a & b; }},
    {'|', [](int a, int b) { return a | b; },
     [](Image &a, const Image &b) -> Image & { return a | b; }},
};

template <typename Image>
class ImageArithmeticTest : public testing::Test {};

using ImageTypes = testing::Types<CTavixImage8, CTavixImage24>;
TYPED_TEST_SUITE(ImageArithmeticTest, ImageTypes);

TYPED_TEST(ImageArithmeticTest, EveryPairOfValuesIsLimitedAndPaddingStays) {
    const int pixelBytes = TypeParam().GetBitCount() / 8;
    const int width = 257, rowBytes = width * pixelBytes;
    std::mt19937 random(2);
    for (const auto &[sign, level, apply] : OPERATORS<TypeParam>) {
        auto left = RandomImage<TypeParam>(width, 256, random);
        auto right = RandomImage<TypeParam>(width, 256, random);
        Bytes expected = BytesOf(left);
        for (int y = 0; y < 256; ++y)
            for (int i = 0; i < rowBytes; ++i) {
                const int at = y * PaddedRow(width, pixelBytes) + i;
                left.GetImagePtr()[at] = static_cast<unsigned char>(i);
                right.GetImagePtr()[at] = static_cast<unsigned char>(y);
                expected[static_cast<std::size_t>(at)] =
                    static_cast<unsigned char>(level(i & 0xFF, y));
            }
        EXPECT_EQ(&apply(left, right), &left);
        EXPECT_EQ(BytesOf(left), expected) << sign;
    }
}

TYPED_TEST(ImageArithmeticTest, AnotherSizeOrNoPixelsChangesNothing) {
    std::mt19937 random(3);
    auto image = RandomImage<TypeParam>(6, 4, random);
    const Bytes before = BytesOf(image);
    for (const TypeParam &other : {TypeParam(4, 6), TypeParam(6, 3), TypeParam()})
        for (const auto &[sign, level, apply] : OPERATORS<TypeParam>) {
            EXPECT_EQ(&apply(image, other), &image) << sign;
            EXPECT_EQ(BytesOf(image), before) << sign;
        }
    EXPECT_EQ(cv::norm(PixelsOf(image - image), cv::NORM_INF), 0);
}

} // namespace
