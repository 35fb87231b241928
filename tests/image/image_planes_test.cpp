#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace tavix_test;
using Image = CTavixImage24;

const struct {
    const char *name;
    CTavixImage8 *(Image::*plane)() const;
    int conversion;
    int channel;
} PLANES[] = {
    {"red", &Image::GetRedSpace, cv::COLOR_BGR2RGB, 0},
    {"green", &Image::GetGreenSpace, cv::COLOR_BGR2RGB, 1},
    {"blue", &Image::GetBlueSpace, cv::COLOR_BGR2RGB, 2},
    {"Y of YUV", &Image::GetYSpace, cv::COLOR_BGR2YUV, 0},
    {"U of YUV", &Image::GetUSpace, cv::COLOR_BGR2YUV, 1},
    {"V of YUV", &Image::GetVSpace, cv::COLOR_BGR2YUV, 2},
    {"H of HLS", &Image::GetHSpaceOfHLS, cv::COLOR_RGB2HLS, 0},
    {"L of HLS", &Image::GetLSpaceOfHLS, cv::COLOR_RGB2HLS, 1},
    {"S of HLS", &Image::GetSSpaceOfHLS, cv::COLOR_RGB2HLS, 2},
    {"H of HSV", &Image::GetHSpaceOfHSV, cv::COLOR_RGB2HSV, 0},
    {"S of HSV", &Image::GetSSpaceOfHSV, cv::COLOR_RGB2HSV, 1},
    {"V of HSV", &Image::GetVSpaceOfHSV, cv::COLOR_RGB2HSV, 2},
    {"grey", &Image::GetGraySpace, cv::COLOR_BGR2GRAY, 0},
};

TEST(ImagePlanesTest, EachIsTheChannelOfOpenCVsConversionOfTheWholeImage) {
    std::mt19937 random(13);
    // The largest are converted in several strips, the last one shorter.
    for (const auto &[width, height] :
         {std::pair{1, 1}, {3, 2}, {131, 45}, {1 << 18, 3}, {601, 1301}}) {
        const auto image = RandomImage<Image>(width, height, random);
        const Bytes before = BytesOf(image);
        for (const auto &[name, plane, conversion, channel] : PLANES) {
            cv::Mat converted, expected;
            cv::cvtColor(PixelsOf(image), converted, conversion);
            cv::extractChannel(converted, expected, channel);
            const std::unique_ptr<CTavixImage8> made((image.*plane)());
            EXPECT_TRUE(SamePixels(PixelsOf(*made), expected)) << name << ' ' << width;
        }
        EXPECT_EQ(BytesOf(image), before);
    }
    for (const auto &plane : PLANES) {
        const std::unique_ptr<CTavixImage8> made((Image().*plane.plane)());
        EXPECT_EQ(made->GetImageLen(), 0) << plane.name;
    }
}

TEST(ImagePlanesTest, HueIsThatOfThePixelWithRedAndBlueExchanged) {
    Image red(2, 2);
    red.Fill(RGB(255, 0, 0));
    const std::unique_ptr<CTavixImage8> hue(red.GetHSpaceOfHSV()), plane(red.GetRedSpace());
    EXPECT_EQ(hue->GetPixel(1, 1), 120);
    EXPECT_EQ(plane->GetPixel(1, 1), 255);
}

} // namespace
