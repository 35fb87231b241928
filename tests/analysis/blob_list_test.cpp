#include "TAVIX20/containers/blob_rect_array.h"
#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

namespace {

/// left, top, right, bottom, number of pixels.
using Blob = std::array<long, 5>;
using Blobs = std::vector<Blob>;

/// Traces blobs step by step as the rules are told: every pixel of the class is a seed, visited or
/// not, and a trace ends at cap pixels. Traces of one pixel that has neighbours are left out.
Blobs LiteralTraces(const CTavixImage8 &image, int value, long cap) {
    enum : uchar { OTHER = 0, VISITED = 1, UNVISITED = 255 };
    cv::Mat cells;
    cv::copyMakeBorder(tavix_test::PixelsOf(image) == value, cells, 1, 1, 1, 1, cv::BORDER_CONSTANT,
                       OTHER);
    const auto at = [&cells](int x, int y) -> uchar & { return cells.at<uchar>(y + 1, x + 1); };
    Blob blob;
    const std::function<void(int, int)> visit = [&](int x, int y) {
        at(x, y) = VISITED;
        blob = {std::min<long>(blob[0], x), std::min<long>(blob[1], y), std::max<long>(blob[2], x),
                std::max<long>(blob[3], y), blob[4] + 1};
        for (const auto &[dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}})
            if (blob[4] != cap && at(x + dx, y + dy) == UNVISITED)
                visit(x + dx, y + dy);
    };
    Blobs blobs;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x) {
            if (at(x, y) == OTHER)
                continue;
            blob = {x, y, x, y, 0};
            visit(x, y);
            const bool isLone = at(x - 1, y) == OTHER && at(x + 1, y) == OTHER &&
                                at(x, y - 1) == OTHER && at(x, y + 1) == OTHER;
            if (blob[4] > 1 || isLone)
                blobs.push_back(blob);
        }
    return blobs;
}

Blobs ToBlobs(CBlobRectArray &array) {
    Blobs blobs;
    for (int i = 0; i < array.GetElementCount(); ++i)
        blobs.push_back(
            {array[i].left, array[i].top, array[i].right, array[i].bottom, array[i].pixelCount});
    return blobs;
}

constexpr long OPEN = 1L << 30;
constexpr std::pair<long, long> COUNT_BOUNDS[] = {{1, 1}, {1, 2}, {2, 2},  {1, 3},    {2, 3},
                                                  {3, 1}, {1, 5}, {4, 50}, {1, OPEN}, {2, OPEN}};
constexpr std::array<long, 4> SIZE_BOUNDS[] = {
    {1, OPEN, 1, OPEN}, {1, OPEN, 0, OPEN}, {1, 2, 1, 2}, {1, 1, 1, 1},   {2, OPEN, 1, 3},
    {1, 3, -5, 2},      {1, OPEN, 2, OPEN}, {3, 8, 0, 6}, {1, OPEN, 1, 0}};

void ExpectAsLiteral(CTavixImage8 &image, int value) {
    for (const auto &[min, max] : COUNT_BOUNDS) {
        int expected = 0;
        for (const Blob &blob : LiteralTraces(image, value, max))
            expected += min <= blob[4] ? 1 : 0;
        ASSERT_EQ(image.GetBlobList(value, min, max), expected)
            << min << " to " << max << " pixels of " << value;
    }
    const Blobs traces = LiteralTraces(image, value, -1);
    for (const auto &bounds : SIZE_BOUNDS) {
        const auto [minW, maxW, minH, maxH] = bounds;
        Blobs expected;
        for (const Blob &blob : traces) {
            const long width = blob[2] - blob[0], height = blob[3] - blob[1];
            if (blob[4] == 1
                    ? minW == 1 && minH == 1
                    : minW <= width && width <= maxW - 1 && minH <= height && height <= maxH - 1)
                expected.push_back(blob);
        }
        CBlobRectArray found;
        found.Add(1, 2, 3, 4, 5);
        ASSERT_EQ(image.GetBlobList(value, minW, maxW, minH, maxH, found),
                  static_cast<int>(expected.size()));
        ASSERT_EQ(ToBlobs(found), expected)
            << minW << " to " << maxW << " by " << minH << " to " << maxH << " of " << value;
    }
}

/// Two levels, 255 where the function says so; the padding is 255.
template <typename IsSet>
CTavixImage8 Drawn(int width, int height, IsSet isSet) {
    CTavixImage8 image(width, height);
    image.Fill(255);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.SetPixel(x, y, isSet(x, y) ? 255 : 0);
    return image;
}

CTavixImage8 Noise(int width, int height, double density, std::mt19937 &random) {
    return Drawn(width, height,
                 [&](int, int) { return std::bernoulli_distribution(density)(random); });
}

TEST(BlobListTest, EveryPatternOfTwelvePixels) {
    for (const int width : {3, 4})
        for (unsigned pattern = 0; pattern < 4096; ++pattern) {
            SCOPED_TRACE(testing::Message() << "pattern " << pattern << ", width " << width);
            CTavixImage8 image = Drawn(width, 12 / width, [=](int x, int y) {
                return (pattern >> (y * width + x) & 1) != 0;
            });
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
        }
}

TEST(BlobListTest, NoiseAndShapes) {
    std::mt19937 random(1);
    std::vector<CTavixImage8> images{
        // A comb with its back at the bottom: many seeds before the teeth meet.
        Drawn(99, 40, [](int x, int y) { return x % 2 == 0 || y == 39; }),
        // One winding path of a pixel's width.
        Drawn(61, 45, [](int x, int y) { return y % 2 == 0 || x == (y % 4 == 1 ? 60 : 0); }),
        tavix_test::RandomImage<CTavixImage8>(45, 31, random, 2)};
    for (const auto &[width, height] :
         {std::pair{1, 1}, {1, 40}, {53, 1}, {2, 2}, {33, 21}, {71, 46}})
        for (const double density : {0.1, 0.3, 0.5, 0.6, 0.75, 0.9, 1.0})
            images.push_back(Noise(width, height, density, random));
    for (CTavixImage8 &image : images)
        for (const int value : {-1, 0, 1, 255, 256}) {
            SCOPED_TRACE(testing::Message() << image.GetWidth() << " x " << image.GetHeight());
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, value));
        }
}

TEST(BlobListTest, ACappedTraceLeavesItsRemainderToLaterSeeds) {
    CTavixImage8 row = Drawn(8, 1, [](int, int) { return true; });
    EXPECT_EQ(row.GetBlobList(255, 1, 8), 1);
    // Every seed has neighbours, so none is a lone pixel.
    EXPECT_EQ(row.GetBlobList(255, 1, 1), 0);
    // Each of the pixels 0 to 6, most of them visited, finds the next one and counts itself.
    EXPECT_EQ(row.GetBlobList(255, 1, 2), 7);
    // Pixels 0 to 2, 2 to 4, 4 to 6, then 6 and 7.
    EXPECT_EQ(row.GetBlobList(255, 1, 3), 4);
    EXPECT_EQ(row.GetBlobList(255, 3, 3), 3);
}

TEST(BlobListTest, RefusedCallsLeaveTheArrayAsItWas) {
    CTavixImage8 image = Drawn(6, 4, [](int x, int) { return x > 2; }), flat(0, 4);
    CBlobRectArray array;
    array.Add(1, 2, 3, 4, 5);
    for (const auto &[min, max] : {std::pair{0, 9}, {1, 0}, {1, -9}}) {
        EXPECT_EQ(image.GetBlobList(255, min, max), 0);
        EXPECT_EQ(image.GetBlobList(255, min, max, 1, 9, array), 0);
    }
    EXPECT_EQ(flat.GetBlobList(0, 1, 9), 0);
    EXPECT_EQ(flat.GetBlobList(0, 1, 9, 1, 9, array), 0);
    EXPECT_EQ(ToBlobs(array), (Blobs{{1, 2, 3, 4, 5}}));
}

TEST(BlobListTest, OneImageMayBeSearchedAgainAndRemade) {
    std::mt19937 random(3);
    CTavixImage8 image = Noise(33, 21, 0.6, random);
    const CTavixImage8 before = image, larger = Noise(120, 80, 0.6, random);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    EXPECT_EQ(tavix_test::BytesOf(image), tavix_test::BytesOf(before));
    image.SetPixel(5, 5, image.GetPixel(5, 5) == 0 ? 255 : 0);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    image.Create(97, 61);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 0));
    image = larger;
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    image.Release();
    EXPECT_EQ(image.GetBlobList(255, 1, 9), 0);
}

} // namespace
