#include "image/image_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace tavix_test;

/// What an operator makes of two values, by its definition.
int Reference(char sign, int a, int b) {
    switch (sign) {
    case '+':
        return std::min(a + b, 255);
    case '-':
        return std::max(a - b, 0);
    case '*':
        return std::min(a * b, 255);
    case '/':
        return b == 0 ? 0 : static_cast<int>(std::nearbyint(static_cast<double>(a) / b));
    case '&':
        return a & b;
    default:
        return a | b;
    }
}

template <typename Image>
Image &Apply(char sign, Image &a, const Image &b) {
    switch (sign) {
    case '+':
        return a + b;
    case '-':
        return a - b;
    case '*':
        return a * b;
    case '/':
        return a / b;
    case '&':
        return a & b;
    default:
        return a | b;
    }
}

template <typename Image>
class ImageArithmeticTest : public testing::Test {};

using ImageTypes = testing::Types<CTavixImage8, CTavixImage24>;
TYPED_TEST_SUITE(ImageArithmeticTest, ImageTypes);

TYPED_TEST(ImageArithmeticTest, EveryPairOfValuesIsLimitedAndPaddingStays) {
    const int pixelBytes = TypeParam().GetBitCount() / 8;
    const int width = 257, rowBytes = width * pixelBytes;
    std::mt19937 random(2);
    for (const char sign : {'+', '-', '*', '/', '&', '|'}) {
        auto left = RandomImage<TypeParam>(width, 256, random);
        auto right = RandomImage<TypeParam>(width, 256, random);
        const int stride = PaddedRow(width, pixelBytes);
        for (int y = 0; y < 256; ++y)
            for (int i = 0; i < rowBytes; ++i) {
                left.GetImagePtr()[y * stride + i] = static_cast<unsigned char>(i);
                right.GetImagePtr()[y * stride + i] = static_cast<unsigned char>(y);
            }
        Bytes expected = BytesOf(left);
        for (int y = 0; y < 256; ++y)
            for (int i = 0; i < rowBytes; ++i)
                expected[static_cast<std::size_t>(y * stride + i)] =
                    static_cast<unsigned char>(Reference(sign, i & 0xFF, y));
        EXPECT_EQ(&Apply(sign, left, right), &left);
        EXPECT_EQ(BytesOf(left), expected) << sign;
    }
}

TYPED_TEST(ImageArithmeticTest, AnotherSizeOrNoPixelsChangesNothing) {
    std::mt19937 random(3);
    auto image = RandomImage<TypeParam>(6, 4, random);
    const Bytes before = BytesOf(image);
    for (const TypeParam &other : {TypeParam(4, 6), TypeParam(6, 3), TypeParam()})
        for (const char sign : {'+', '-', '*', '/', '&', '|'}) {
            EXPECT_EQ(&Apply(sign, image, other), &image);
            EXPECT_EQ(BytesOf(image), before);
        }
    EXPECT_EQ(cv::norm(PixelsOf(image - image), cv::NORM_INF), 0);
}

} // namespace
