#include "image/image_samples.h"

#include <opencv2/imgproc/imgproc_c.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace tavix_test;

struct FilterCase {
    const char *name;
    void (CTavixImage::*ours)();
    void (*theirs)(IplImage *copy, IplImage *other); ///< The result is in other.
};

const FilterCase FILTERS[] = {
    {"Gaussian5x5", &CTavixImage::Gaussian5x5,
     [](IplImage *copy, IplImage *other) { cvSmooth(copy, other, 2, 5, 5, 0.0, 0.0); }},
    {"Gaussian3x3", &CTavixImage::Gaussian3x3,
     [](IplImage *copy, IplImage *other) { cvSmooth(copy, other, 2, 3, 3, 0.0, 0.0); }},
    {"Blur", &CTavixImage::Blur,
     [](IplImage *copy, IplImage *other) { cvSmooth(copy, other, 1, 3, 0, 0.0, 0.0); }},
    {"Median", &CTavixImage::Median,
     [](IplImage *copy, IplImage *other) { cvSmooth(copy, other, 3, 3, 0, 0.0, 0.0); }},
    {"Sobel", &CTavixImage::Sobel,
     [](IplImage *, IplImage *other) { cvSobel(other, other, 0, 1, 1); }},
    {"Laplacian", &CTavixImage::Laplacian,
     [](IplImage *, IplImage *other) { cvLaplace(other, other, 3); }},
    {"Sharpen", &CTavixImage::Sharpen,
     [](IplImage *copy, IplImage *other) {
         cvLaplace(copy, copy, 3);
         cvAdd(other, copy, other, nullptr);
     }},
    {"Erode", &CTavixImage::Erode,
     [](IplImage *, IplImage *other) { cvErode(other, other, nullptr, 1); }},
    {"Dilate", &CTavixImage::Dilate,
     [](IplImage *, IplImage *other) { cvDilate(other, other, nullptr, 1); }},
    {"CloseBox", &CTavixImage::CloseBox,
     [](IplImage *, IplImage *other) {
         cvDilate(other, other, nullptr, 1);
         cvErode(other, other, nullptr, 1);
     }},
};

template <typename Image>
void ExpectCallsOfOpenCV() {
    std::mt19937 random(6);
    for (int round = 0; round < 40; ++round) {
        const auto image = RandomImage<Image>(1 + static_cast<int>(random() % 99),
                                              1 + static_cast<int>(random() % 40), random);
        for (const FilterCase &filter : FILTERS) {
            auto *copy = static_cast<IplImage *>(image.GetIplImage());
            auto *other = static_cast<IplImage *>(image.GetIplImage());
            filter.theirs(copy, other);
            Image changed = image;
            (changed.*filter.ours)();
            // The padding travels there and back.
            EXPECT_EQ(BytesOf(changed),
                      Bytes(other->imageData, other->imageData + other->imageSize))
                << filter.name << ", " << image.GetWidth() << " x " << image.GetHeight();
            cvReleaseImage(&copy);
            cvReleaseImage(&other);
        }
    }
}

TEST(NeighbourhoodFiltersTest, AreTheCallsOfOpenCV) {
    ExpectCallsOfOpenCV<CTavixImage8>();
    ExpectCallsOfOpenCV<CTavixImage24>();
    for (const FilterCase &filter : FILTERS) {
        CTavixImage8 empty;
        (empty.*filter.ours)();
        EXPECT_EQ(empty.IsEmpty(), 1) << filter.name;
    }
}

TEST(NeighbourhoodFiltersTest, CannyEdgesOfTheTwoLevelPicture) {
    std::mt19937 random(7);
    const auto image = RandomImage<CTavixImage8>(61, 47, random);
    auto *img = static_cast<IplImage *>(image.GetIplImage());
    const double t = cvThreshold(img, img, 0.0, 255.0, 8);
    cvCanny(img, img, 0.5 * t, t, 3);
    const Bytes before = BytesOf(image);
    const std::unique_ptr<CTavixImage8> edges(image.CannyEdge());
    EXPECT_TRUE(SamePixels(PixelsOf(*edges), cv::cvarrToMat(img)));
    EXPECT_EQ(BytesOf(image), before);
    cvReleaseImage(&img);
    const std::unique_ptr<CTavixImage24> colour(image.GetImage24());
    const std::unique_ptr<CTavixImage8> same(colour->CannyEdge());
    EXPECT_TRUE(SamePixels(PixelsOf(*same), PixelsOf(*edges)));
}

TEST(NeighbourhoodFiltersTest, GradientsBySumsOfAbsoluteDifferences) {
    std::mt19937 random(8);
    for (const auto &[width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {37, 21}}) {
        const auto image = RandomImage<CTavixImage8>(width, height, random);
        const auto at = [&, w = width, h = height](int x, int y) {
            return int{image.GetPixel(std::clamp(x, 0, w - 1), std::clamp(y, 0, h - 1))};
        };
        CTavixImage8 roberts = image, prewitt = image;
        roberts.Roberts();
        prewitt.Prewitt();
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                int across = 0, down = 0;
                for (int i = -1; i <= 1; ++i) {
                    across += at(x + 1, y + i) - at(x - 1, y + i);
                    down += at(x + i, y + 1) - at(x + i, y - 1);
                }
                ASSERT_EQ(prewitt.GetPixel(x, y), std::min(std::abs(across) + std::abs(down), 255));
                ASSERT_EQ(roberts.GetPixel(x, y),
                          std::min(std::abs(at(x, y) - at(x + 1, y + 1)) +
                                       std::abs(at(x + 1, y) - at(x, y + 1)),
                                   255));
            }
    }
}

TEST(NeighbourhoodFiltersTest, SharpnessFallsWithBlurAndSeesTheRectangleAlone) {
    std::unique_ptr<CTavixImage24> photograph(
        CTavixImage::LoadImage24(TAVIX_TEST_DATA "/coffee.png"));
    CTavixImage24 blurred = *photograph;
    blurred.Gaussian5x5();
    EXPECT_GT(photograph->GetSharpenessLevel(), 2 * blurred.GetSharpenessLevel());
    CTavixImage8 image(9, 9);
    image.SetPixel(4, 4, 100);
    // Laplacian -400 once and 100 four times among 49 pixels.
    EXPECT_EQ(image.GetSharpenessLevel(), std::lround((160000 + 4 * 10000) / 49.0));
    EXPECT_EQ(image.GetSharpenessLevel(5, 5, 3, 3), 160000 - 160000);
    EXPECT_EQ(image.GetSharpenessLevel(6, 0, 100, 100), 0);
    EXPECT_EQ(CTavixImage8().GetSharpenessLevel(), 0);
}

} // namespace
