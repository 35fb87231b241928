#include "image/image_samples.h"

#include <opencv2/core/core_c.h>
#include <opencv2/imgproc/imgproc_c.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using tavix_test::Bytes;
using tavix_test::BytesOf;
using tavix_test::PixelsOf;
using tavix_test::RandomImage;
using tavix_test::SamePixels;

constexpr std::pair<int, int> SIZES[] = {{1, 1}, {3, 2}, {5, 7}, {64, 3}, {131, 45}};

struct IplReleaser {
    void operator()(IplImage *image) const { cvReleaseImage(&image); }
};
using OwnedIpl = std::unique_ptr<IplImage, IplReleaser>;

OwnedIpl Ipl(const CTavixImage &image) {
    return OwnedIpl(static_cast<IplImage *>(image.GetIplImage()));
}

/// What the OpenCV call makes of the image's pixels.
cv::Mat Converted(const CTavixImage &image, int channels, int code) {
    const OwnedIpl from = Ipl(image);
    const OwnedIpl to(
        cvCreateImage(cvSize(image.GetWidth(), image.GetHeight()), IPL_DEPTH_8U, channels));
    cvCvtColor(from.get(), to.get(), code);
    return cv::cvarrToMat(to.get(), true);
}

template <typename Image>
void ExpectIplImageHoldsTheBuffer(int channels) {
    std::mt19937 random(1);
    for (const auto &[width, height] : SIZES) {
        const auto image = RandomImage<Image>(width, height, random);
        const OwnedIpl ipl = Ipl(image);
        ASSERT_TRUE(ipl);
        EXPECT_EQ(ipl->width, width);
        EXPECT_EQ(ipl->height, height);
        EXPECT_EQ(ipl->depth, IPL_DEPTH_8U);
        EXPECT_EQ(ipl->nChannels, channels);
        ASSERT_EQ(ipl->imageSize, image.GetImageLen());
        const auto *bytes = reinterpret_cast<unsigned char *>(ipl->imageData);
        EXPECT_NE(bytes, image.GetImagePtr());
        EXPECT_EQ(Bytes(bytes, bytes + ipl->imageSize), BytesOf(image));
    }
    EXPECT_EQ(Image().GetIplImage(), nullptr);
    EXPECT_EQ(Image(0, 5).GetIplImage(), nullptr);
}

TEST(ImageConvertTest, IplImageHoldsACopyOfTheBuffer) {
    ExpectIplImageHoldsTheBuffer<CTavixImage8>(1);
    ExpectIplImageHoldsTheBuffer<CTavixImage24>(3);
}

TEST(ImageConvertTest, BetweenGreyAndColourAsOpenCV) {
    std::mt19937 random(2);
    for (const auto &[width, height] : SIZES) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        const auto colour = RandomImage<CTavixImage24>(width, height, random);
        const std::unique_ptr<CTavixImage8> toGrey(colour.GetImage8());
        EXPECT_EQ(toGrey->GetBitCount(), 8);
        EXPECT_TRUE(SamePixels(PixelsOf(*toGrey), Converted(colour, 1, CV_BGR2GRAY)));

        const auto grey = RandomImage<CTavixImage8>(width, height, random);
        const std::unique_ptr<CTavixImage24> toColour(grey.GetImage24());
        EXPECT_EQ(toColour->GetBitCount(), 24);
        EXPECT_TRUE(SamePixels(PixelsOf(*toColour), Converted(grey, 3, CV_GRAY2BGR)));
    }
}

TEST(ImageConvertTest, GreyIsTheWeightedSumOfTheChannels) {
    CTavixImage24 colour(4, 1);
    colour.SetPixel(0, 0, RGB(255, 0, 0));
    colour.SetPixel(1, 0, RGB(0, 255, 0));
    colour.SetPixel(2, 0, RGB(0, 0, 255));
    colour.SetPixel(3, 0, RGB(255, 255, 255));
    const std::unique_ptr<CTavixImage8> grey(colour.GetImage8());
    EXPECT_EQ(BytesOf(*grey), (Bytes{76, 150, 29, 255}));
}

TEST(ImageConvertTest, SameClassIsANewCopy) {
    std::mt19937 random(3);
    const auto grey = RandomImage<CTavixImage8>(5, 3, random);
    const auto colour = RandomImage<CTavixImage24>(5, 3, random);
    const std::unique_ptr<CTavixImage8> grey2(grey.GetImage8());
    const std::unique_ptr<CTavixImage24> colour2(colour.GetImage24());
    EXPECT_NE(grey2.get(), &grey);
    EXPECT_EQ(BytesOf(*grey2), BytesOf(grey));
    EXPECT_NE(colour2.get(), &colour);
    EXPECT_EQ(BytesOf(*colour2), BytesOf(colour));
}

TEST(ImageConvertTest, ImagesWithoutPixelsGiveImagesWithoutPixels) {
    const std::unique_ptr<CTavixImage8> grey(CTavixImage24().GetImage8());
    EXPECT_EQ(grey->IsEmpty(), 1);
    const std::unique_ptr<CTavixImage24> colour(CTavixImage8().GetImage24());
    EXPECT_EQ(colour->IsEmpty(), 1);
    const std::unique_ptr<CTavixImage8> flat(CTavixImage24(5, 0).GetImage8());
    EXPECT_EQ(flat->GetImageLen(), 0);
}

} // namespace
