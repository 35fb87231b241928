#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <climits>
#include <thread>

namespace {

using namespace tavix_test;

TEST(DoubleThresholdTest, SplitsEveryByteAtTheBand) {
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        const auto image = RandomImage<CTavixImage8>(1 + round, 1 + round % 7, random);
        for (const auto &[low, high] :
             {std::pair{50, 100}, {-5, 300}, {100, 50}, {INT_MIN, -1}, {256, INT_MAX}, {0, 0}})
            for (const int mode : {1, 0, -7}) {
                CTavixImage8 split = image;
                split.DoubleThreshold(low, high, mode);
                Bytes expected = BytesOf(image);
                for (unsigned char &byte : expected)
                    byte = (byte >= low && byte <= high) == (mode == 1) ? 255 : 0;
                ASSERT_EQ(BytesOf(split), expected) << low << ", " << high << ", " << mode;
            }
    }
    CTavixImage8().DoubleThreshold(0, 1, 1);
}

/// The rules of AdaptiveThreshold, pixel by pixel.
Bytes Adapted(const CTavixImage8 &image, unsigned char fill) {
    Bytes bytes = BytesOf(image);
    const int width = image.GetWidth();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char *const row = &bytes[static_cast<std::size_t>(y * PaddedRow(width, 1))];
        long means = 0, edges = 0;
        for (int x = 0; x < width;) {
            int length = 1, sum = row[x];
            for (; x + length < width && row[x + length] > row[x + length - 1]; ++length)
                sum += row[x + length];
            if (length >= 5 && row[x + length - 1] - row[x] > 2 * length) {
                means += sum / length;
                ++edges;
            }
            x += length;
        }
        for (int x = 0; x < width; ++x)
            row[x] = edges == 0 ? fill : row[x] > means / edges ? 255 : 0;
    }
    return bytes;
}

TEST(AdaptiveThresholdTest, FollowsTheRisingEdgesOfEachRow) {
    std::mt19937 random(2);
    for (int round = 0; round < 400; ++round) {
        auto image = RandomImage<CTavixImage8>(1 + static_cast<int>(random() % 300), 5, random);
        // Ramps of all lengths and slopes, also across the words of 64 pairs.
        for (int x = 0; x < image.GetWidth() && round % 4 != 0; ++x)
            image.SetPixel(x, 2, static_cast<unsigned char>(x * (1 + round % 9) + round));
        if (round % 4 == 1)
            image.Marking(0, 1, image.GetWidth(), 3, 9);
        CTavixImage8 adapted = image;
        adapted.AdaptiveThreshold(77);
        ASSERT_EQ(BytesOf(adapted), Adapted(image, 77)) << image.GetWidth();
    }
    const Bytes rows[][2] = {{{0, 10, 20, 30, 40, 50, 7, 7}, {0, 0, 0, 255, 255, 255, 7, 7}},
                             {{0, 1, 2, 3, 4, 5, 7, 7}, {9, 9, 9, 9, 9, 9, 7, 7}}};
    for (const auto &[row, expected] : rows) {
        CTavixImage8 image(6, 1, row.data());
        image.AdaptiveThreshold(9);
        EXPECT_EQ(BytesOf(image), expected);
    }
}

TEST(SmartThresholdTest, SplitsEachTileByItsOwnThreshold) {
    std::mt19937 random(3);
    for (const auto &[columns, rows] : {std::pair{1, 1}, {2, 3}, {5, 4}, {40, 2}}) {
        const auto image = RandomImage<CTavixImage8>(37, 23, random);
        CTavixImage8 split = image;
        split.SmartThreshold(columns, rows);
        cv::Mat source, expected = PixelsOf(image);
        cv::copyMakeBorder(expected, source, 0, 1, 0, 1, cv::BORDER_CONSTANT, 0);
        const int width = 37 / columns, height = 23 / rows;
        for (int j = 0; j < rows; ++j)
            for (int i = 0; i < columns; ++i) {
                const cv::Rect tile(i * width, j * height,
                                    width + 1 + (i + 1 == columns ? 37 % columns : 0),
                                    height + 1 + (j + 1 == rows ? 23 % rows : 0));
                cv::Mat binary;
                cv::threshold(source(tile), binary, 0, 255, 8);
                const cv::Rect inside = tile & cv::Rect(0, 0, 37, 23);
                binary({0, 0, inside.width, inside.height}).copyTo(expected(inside));
            }
        EXPECT_TRUE(SamePixels(PixelsOf(split), expected)) << columns << " x " << rows;
    }
    const auto image = RandomImage<CTavixImage8>(9, 9, random);
    CTavixImage8 unchanged = image;
    unchanged.SmartThreshold(0, 3);
    unchanged.SmartThreshold(3, -1);
    EXPECT_EQ(BytesOf(unchanged), BytesOf(image));
    const std::unique_ptr<CTavixImage8> crop(image.CropImage2(2, 1, 7, 8));
    EXPECT_EQ(image.GetAutoThreshold(7, 8, 2, 1), crop->GetAutoThreshold());
    EXPECT_EQ(CTavixImage8().GetAutoThreshold(0, 0, 5, 5), 0);
    const POINT corners[] = {{0, 0}, {5, 0}, {5, 5}};
    EXPECT_EQ(image.GetAutoPolygonThreshold(corners, 3), 0);
    EXPECT_EQ(image.GetAutoEllipseThreshold(0, 0, 8, 8), 0);
}

TEST(MarkingTest, BandsRectanglesAndDifferences) {
    std::mt19937 random(4);
    const auto image = RandomImage<CTavixImage8>(13, 7, random);
    const auto other = RandomImage<CTavixImage8>(13, 7, random);
    const auto mapped = [&](auto change) {
        Bytes bytes = BytesOf(image);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 13; ++x)
                change(bytes[static_cast<std::size_t>(16 * y + x)], other.GetPixel(x, y));
        return bytes;
    };
    CTavixImage8 marked = image;
    marked.Marking(100, 200, 7);
    EXPECT_EQ(BytesOf(marked), mapped([](auto &p, int) { p = p >= 100 && p <= 200 ? 7 : p; }));
    for (const auto &[mark, tolerance] :
         {std::pair{255, 0}, {0, 40}, {256, 40}, {513, 255}, {9, -5}, {9, 1000}}) {
        marked = image;
        marked.MarkingDiffer(other, mark, tolerance);
        const int low = mark & 0xFF;
        EXPECT_EQ(BytesOf(marked), mapped([&, limit = tolerance](auto &p, int q) {
                      const bool same = p == q || std::abs(p - q) <= limit;
                      p = static_cast<unsigned char>(!same ? low : low == 0 ? 255 : 0);
                  }))
            << mark << ", " << tolerance;
    }
    marked = image;
    marked.MarkingDiffer(CTavixImage8(13, 6), 1, 1);
    for (const CRect &refused : {CRect(-1, 0, 3, 3), CRect(0, -1, 3, 3), CRect(0, 0, 14, 3),
                                 CRect(0, 0, 3, 8), CRect(INT_MIN, 0, INT_MAX, 3)})
        marked.Marking(refused.left, refused.top, refused.right, refused.bottom, 1);
    EXPECT_EQ(BytesOf(marked), BytesOf(image));
    marked.Marking(13, 7, 11, 5, 1); // One column and one row beyond the pixels.
    Bytes expected = BytesOf(image);
    for (const std::size_t start : {5 * 16 + 11, 6 * 16 + 11})
        std::fill_n(expected.begin() + static_cast<std::ptrdiff_t>(start), 3, std::uint8_t{1});
    EXPECT_EQ(BytesOf(marked), expected);
}

/// Callers of one operation from several threads each get their own right result.
TEST(WorkerPoolMembersTest, CallersTakeTurns) {
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 4; ++seed)
        threads.emplace_back([seed] {
            std::mt19937 random(seed);
            const auto image = RandomImage<CTavixImage8>(101, 40, random);
            const Bytes adapted = Adapted(image, 3);
            const double mean = image.GetGrayLevelAverage();
            for (int round = 0; round < 50; ++round) {
                CTavixImage8 first = image, second = image;
                first.AdaptiveThreshold(3);
                second.DoubleThreshold(20, 90, 1);
                EXPECT_EQ(BytesOf(first), adapted);
                EXPECT_EQ(second.GetGrayLevelCount(255), image.GetGrayLevelCountAsRange(20, 90));
                EXPECT_EQ(image.GetGrayLevelAverage(), mean);
            }
        });
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace
