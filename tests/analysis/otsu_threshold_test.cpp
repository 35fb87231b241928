#include "image/image_samples.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using tavix_test::Bytes;
using tavix_test::BytesOf;
using tavix_test::PixelsOf;
using tavix_test::RandomImage;
using tavix_test::SamePixels;

/// A dark and a bright class of pixels that overlap.
CTavixImage8 TwoClassImage(int width, int height, std::mt19937 &random) {
    auto image = RandomImage<CTavixImage8>(width, height, random);
    const double dark = std::uniform_real_distribution<>(20, 120)(random);
    const double bright = std::uniform_real_distribution<>(120, 240)(random);
    std::bernoulli_distribution isBright(0.3);
    std::normal_distribution<> noise(0, 25);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double level = (isBright(random) ? bright : dark) + noise(random);
            image.SetPixel(x, y, cv::saturate_cast<unsigned char>(level));
        }
    return image;
}

void ExpectAsOpenCV(const CTavixImage8 &image) {
    SCOPED_TRACE(testing::Message() << image.GetWidth() << " x " << image.GetHeight());
    cv::Mat twoLevel;
    const double threshold =
        cv::threshold(PixelsOf(image), twoLevel, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    const Bytes before = BytesOf(image);
    EXPECT_EQ(image.GetAutoThreshold(), static_cast<long>(threshold));
    EXPECT_EQ(BytesOf(image), before);

    CTavixImage8 first(image);
    first.Threshold(0);
    EXPECT_TRUE(SamePixels(PixelsOf(first), twoLevel));
    CTavixImage8 second(image);
    second.Threshold(200);
    EXPECT_EQ(BytesOf(second), BytesOf(first));

    // Padding stays as it was.
    Bytes expected = before;
    const std::size_t stride = before.size() / static_cast<std::size_t>(image.GetHeight());
    for (int y = 0; y < image.GetHeight(); ++y)
        std::copy_n(twoLevel.ptr(y), image.GetWidth(),
                    expected.begin() + static_cast<std::ptrdiff_t>(stride) * y);
    EXPECT_EQ(BytesOf(first), expected);
}

TEST(OtsuThresholdTest, IsThatOfOpenCV) {
    std::mt19937 random(1);
    for (const auto &[width, height] :
         {std::pair{1, 1}, {3, 2}, {1, 50}, {61, 1}, {33, 21}, {130, 77}}) {
        ExpectAsOpenCV(RandomImage<CTavixImage8>(width, height, random));
        ExpectAsOpenCV(RandomImage<CTavixImage8>(width, height, random, 3));
        ExpectAsOpenCV(TwoClassImage(width, height, random));
        ExpectAsOpenCV(CTavixImage8(width, height));
    }
    const std::unique_ptr<CTavixImage8> coins(
        CTavixImage::LoadImage8(TAVIX_EXAMPLE_DATA "/coins.png"));
    ASSERT_TRUE(coins);
    ExpectAsOpenCV(*coins);
}

TEST(OtsuThresholdTest, SeparatesTwoLevels) {
    const unsigned char pixels[] = {10, 10, 200, 10, 200, 200, 10, 10};
    CTavixImage8 image(4, 2, pixels);
    const long threshold = image.GetAutoThreshold();
    EXPECT_GE(threshold, 10);
    EXPECT_LT(threshold, 200);
    image.Threshold(250);
    EXPECT_EQ(BytesOf(image), (Bytes{0, 0, 255, 0, 255, 255, 0, 0}));
}

TEST(OtsuThresholdTest, WithoutPixelsThereIsNothingToDo) {
    CTavixImage8 empty, flat(0, 4), released(4, 4);
    released.Release();
    released.Create(4, 4);
    for (CTavixImage8 *image : {&empty, &flat, &released}) {
        EXPECT_EQ(image->GetAutoThreshold(), 0);
        image->Threshold(100);
        EXPECT_EQ(image->GetImageLen(), 0);
    }
}

} // namespace
