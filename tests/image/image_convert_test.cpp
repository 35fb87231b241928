#include "image/image_samples.h"

#include <opencv2/core/core_c.h>
#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace tavix_test;

constexpr std::pair<int, int> SIZES[] = {{1, 1}, {3, 2}, {5, 7}, {64, 3}, {131, 45}};

TEST(ImageConvertTest, IplImageHoldsACopyOfTheBuffer) {
    std::mt19937 random(1);
    for (const auto &[width, height] : SIZES) {
        const auto grey = RandomImage<CTavixImage8>(width, height, random);
        const auto colour = RandomImage<CTavixImage24>(width, height, random);
        for (const CTavixImage *image :
             std::initializer_list<const CTavixImage *>{&grey, &colour}) {
            auto *ipl = static_cast<IplImage *>(image->GetIplImage());
            EXPECT_TRUE(SamePixels(cv::cvarrToMat(ipl), PixelsOf(*image)));
            EXPECT_EQ(Bytes(ipl->imageData, ipl->imageData + ipl->imageSize), BytesOf(*image));
            cvReleaseImage(&ipl);
        }
    }
    EXPECT_EQ(CTavixImage8(0, 5).GetIplImage(), nullptr);
}

TEST(ImageConvertTest, ConvertsAsOpenCVAndCopiesItsOwnClass) {
    std::mt19937 random(2);
    for (const auto &[width, height] : SIZES) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        const auto colour = RandomImage<CTavixImage24>(width, height, random);
        const auto grey = RandomImage<CTavixImage8>(width, height, random);
        cv::Mat greyOfColour, colourOfGrey;
        cv::cvtColor(PixelsOf(colour), greyOfColour, cv::COLOR_BGR2GRAY);
        cv::cvtColor(PixelsOf(grey), colourOfGrey, cv::COLOR_GRAY2BGR);
        const std::unique_ptr<CTavixImage8> grey1(colour.GetImage8()), grey2(grey.GetImage8());
        const std::unique_ptr<CTavixImage24> colour1(grey.GetImage24()),
            colour2(colour.GetImage24());
        EXPECT_TRUE(SamePixels(PixelsOf(*grey1), greyOfColour));
        EXPECT_TRUE(SamePixels(PixelsOf(*colour1), colourOfGrey));
        EXPECT_EQ(BytesOf(*grey2), BytesOf(grey));
        EXPECT_EQ(BytesOf(*colour2), BytesOf(colour));
    }
}

TEST(ImageConvertTest, ImagesWithoutPixelsGiveImagesWithoutPixels) {
    const std::unique_ptr<CTavixImage8> grey(CTavixImage24().GetImage8());
    const std::unique_ptr<CTavixImage24> colour(CTavixImage8(5, 0).GetImage24());
    EXPECT_EQ(grey->GetImageLen() + colour->GetImageLen(), 0);
}

} // namespace
