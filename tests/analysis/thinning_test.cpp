#include "image/image_samples.h"

#include "TAVIX20/containers/point_array_array.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

using namespace tavix_test;

/// Random discs, in part beyond the edge, some joined, some with holes.
CTavixImage8 Discs(unsigned seed) {
    CTavixImage8 image(97, 80);
    cv::Mat pixels(80, 97, CV_8U, image.GetImagePtr(), 100);
    std::mt19937 random(seed);
    for (int i = 0; i < 25; ++i)
        cv::circle(pixels, {static_cast<int>(random() % 97), static_cast<int>(random() % 80)},
                   2 + static_cast<int>(random() % 9), cv::Scalar(i % 4 == 3 ? 0 : 255), -1);
    return image;
}

int PartsOf(const CTavixImage8 &image) {
    cv::Mat labels;
    return cv::connectedComponents(PixelsOf(image), labels, 8);
}

TEST(ThinningTest, KeepsTheConnectionsAndMakesThinLines) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const CTavixImage8 image = Discs(seed);
        CTavixImage8 thin = image, edges = image;
        thin.Thinning();
        edges.EdgeThinning();
        for (const CTavixImage8 &result : {thin, edges}) {
            cv::Mat added, blocks;
            cv::subtract(PixelsOf(result), PixelsOf(image), added);
            EXPECT_EQ(cv::countNonZero(added), 0);
            EXPECT_LT(result.GetGrayLevelCount(255), image.GetGrayLevelCount(255) / 3);
            // No block of 3 x 3 is left.
            cv::erode(PixelsOf(result), blocks, cv::Mat::ones(3, 3, CV_8U), {-1, -1}, 1,
                      cv::BORDER_CONSTANT, 0);
            EXPECT_EQ(cv::countNonZero(blocks), 0);
        }
        EXPECT_EQ(PartsOf(edges), PartsOf(image));
    }
}

TEST(ThinningTest, BarsBecomeTheirMiddleLine) {
    CTavixImage8 bar(9, 5);
    bar.Marking(1, 1, 7, 3, 255);
    CTavixImage8 thin = bar, edges = bar;
    thin.Thinning();
    edges.EdgeThinning();
    const auto isOnMiddleRow = [](const CTavixImage8 &image) {
        long onRow = 0;
        for (int x = 0; x < 9; ++x)
            onRow += image.GetPixel(x, 2) == 255 ? 1 : 0;
        return onRow >= 4 && onRow == image.GetGrayLevelCount(255);
    };
    EXPECT_TRUE(isOnMiddleRow(thin));
    EXPECT_TRUE(isOnMiddleRow(edges));
    CTavixImage8().Thinning();
}

TEST(ContourTraceTest, BordersFilledGiveThePictureBack) {
    for (unsigned seed = 0; seed < 10; ++seed) {
        const CTavixImage8 image = Discs(seed);
        TavixArray::CPointArrayArray contours;
        const int count = image.ContourTrace(contours);
        ASSERT_EQ(contours.GetElementCount(), count);
        cv::Mat drawn = cv::Mat::zeros(80, 97, CV_8U), inner;
        for (int i = 0; i < count; ++i)
            for (int k = 0; k < contours[i].GetElementCount(); ++k)
                drawn.at<uchar>(contours[i][k].y, contours[i][k].x) = 255;
        // The border pixels are the bright ones with a dark 4-neighbour.
        cv::erode(PixelsOf(image), inner, cv::getStructuringElement(cv::MORPH_CROSS, {3, 3}),
                  {-1, -1}, 1, cv::BORDER_CONSTANT, 0);
        EXPECT_EQ(cv::norm(drawn, PixelsOf(image) - inner, cv::NORM_INF), 0) << seed;
    }
    TavixArray::CPointArrayArray none;
    EXPECT_EQ(CTavixImage8().ContourTrace(none), 0);
}

} // namespace
