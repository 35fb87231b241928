#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace tavix_test;

void ExpectAsOpenCV(const CTavixImage8 &image) {
    SCOPED_TRACE(testing::Message() << image.GetWidth() << " x " << image.GetHeight());
    cv::Mat twoLevel;
    const double threshold =
        cv::threshold(PixelsOf(image), twoLevel, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    const Bytes before = BytesOf(image);
    EXPECT_EQ(image.GetAutoThreshold(), static_cast<long>(threshold));
    EXPECT_EQ(BytesOf(image), before);

    // Padding stays as it was.
    Bytes expected = before;
    for (int y = 0; y < image.GetHeight(); ++y)
        std::copy_n(twoLevel.ptr(y), image.GetWidth(),
                    expected.begin() + PaddedRow(image.GetWidth(), 1) * y);
    for (const int ignored : {0, 200}) {
        CTavixImage8 made(image);
        made.Threshold(ignored);
        EXPECT_EQ(BytesOf(made), expected);
    }
}

TEST(OtsuThresholdTest, IsThatOfOpenCV) {
    std::mt19937 random(1);
    for (const auto &[width, height] : {std::pair{1, 1}, {3, 2}, {1, 50}, {61, 1}, {130, 77}})
        for (const int highest : {0, 1, 3, 255})
            ExpectAsOpenCV(RandomImage<CTavixImage8>(width, height, random, highest));
}

TEST(OtsuThresholdTest, WithoutPixelsThereIsNothingToDo) {
    CTavixImage8 image(4, 4);
    image.Release();
    image.Create(4, 4);
    image.Threshold(100);
    EXPECT_EQ(image.GetAutoThreshold(), 0);
    EXPECT_EQ(CTavixImage8(0, 4).GetAutoThreshold(), 0);
}

} // namespace
