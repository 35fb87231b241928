// The area of similar pixels against the blob at a point.

#include "TAVIX20/analysis/similar_area.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

template <typename Image>
void ExpectTheBlobAtTheSeed(int levels) {
    std::mt19937 random(9);
    for (const int width : {1, 7, 64, 65, 131})
        for (const int percent : {-3, 0, 3, 10, 40, 100, 300}) {
            Image image;
            image.Create(width, 23);
            for (int i = 0; i < image.GetImageLen(); ++i)
                image.GetImagePtr()[i] = static_cast<unsigned char>(
                    random() % static_cast<unsigned>(levels) * 255 / (levels - 1));
            const POINT seed{width / 2, 11};
            const int clamped = std::clamp(percent, 0, 100);
            TavixArray::CPointArray points;
            const int count = image.GetPieceBlobAtPoint(
                seed.x, seed.y, static_cast<unsigned char>(255 * clamped / 100), points);
            const tavix::RunRegion area = tavix::SimilarArea(image, seed, percent);
            EXPECT_EQ(area.Area(), count) << width << " wide, " << percent << " %";
            const RegionHandle region(area.CreateRegion());
            for (int i = 0; i < count; ++i)
                ASSERT_TRUE(PtInRegion(region.get(), points[i].x, points[i].y));
        }
}

TEST(SimilarAreaTest, IsTheBlobAtTheSeed) {
    ExpectTheBlobAtTheSeed<CTavixImage8>(4);
    ExpectTheBlobAtTheSeed<CTavixImage24>(3);
}

TEST(SimilarAreaTest, IsEmptyOutsideTheImage) {
    CTavixImage8 image;
    EXPECT_TRUE(tavix::SimilarArea(image, {0, 0}, 5).IsEmpty());
    image.Create(5, 5);
    for (const POINT seed : {POINT{-1, 0}, POINT{0, 5}, POINT{5, 0}, POINT{0, -1}})
        EXPECT_TRUE(tavix::SimilarArea(image, seed, 5).IsEmpty());
}

} // namespace
