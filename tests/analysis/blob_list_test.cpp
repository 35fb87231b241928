#include "TAVIX20/containers/blob_rect_array.h"
#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

/// left, top, right, bottom, number of pixels.
using Blob = std::array<long, 5>;
using Blobs = std::vector<Blob>;

struct CountBounds {
    long min, max;
};

struct SizeBounds {
    long minW, maxW, minH, maxH;
};

/// Traces blobs step by step as the rules are told: every pixel of the class is a seed, visited or
/// not, and the records of where each pixel was reached from serve as the stack.
class LiteralTracer {
public:
    LiteralTracer(const CTavixImage8 &image, int value)
        : m_image(image),
          m_value(value),
          m_records(static_cast<std::size_t>(image.GetWidth() * image.GetHeight())) {}

    int Count(const CountBounds &bounds) {
        int count = 0;
        ForEachTrace(bounds.max, [&](int x, int y, const Blob &blob) {
            const bool accepted = blob[4] == 1 ? bounds.min <= 1 && !HasNeighbour(x, y)
                                               : bounds.min <= blob[4] && blob[4] <= bounds.max;
            count += accepted ? 1 : 0;
        });
        return count;
    }

    Blobs List(const SizeBounds &bounds) {
        Blobs blobs;
        ForEachTrace(-1, [&](int x, int y, const Blob &blob) {
            const long width = blob[2] - blob[0], height = blob[3] - blob[1];
            const bool accepted = blob[4] == 1
                                      ? bounds.minW == 1 && bounds.minH == 1 && !HasNeighbour(x, y)
                                      : bounds.minW <= width && width <= bounds.maxW - 1 &&
                                            bounds.minH <= height && height <= bounds.maxH - 1;
            if (accepted)
                blobs.push_back(blob);
        });
        return blobs;
    }

private:
    struct Record {
        unsigned char visited = 0;
        int parentX = 0;
        int parentY = 0;
    };
    static constexpr int STEPS[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};

    bool IsOfClass(int x, int y) const {
        return x >= 0 && x < m_image.GetWidth() && y >= 0 && y < m_image.GetHeight() &&
               m_image.GetPixel(x, y) == m_value;
    }
    Record &At(int x, int y) {
        return m_records[static_cast<std::size_t>(y * m_image.GetWidth() + x)];
    }
    bool HasNeighbour(int x, int y) const {
        return std::any_of(std::begin(STEPS), std::end(STEPS),
                           [&](const auto &step) { return IsOfClass(x + step[0], y + step[1]); });
    }

    template <typename Function>
    void ForEachTrace(long cap, Function function) {
        std::fill(m_records.begin(), m_records.end(), Record{});
        for (int y = 0; y < m_image.GetHeight(); ++y)
            for (int x = 0; x < m_image.GetWidth(); ++x)
                if (IsOfClass(x, y))
                    function(x, y, Trace(x, y, cap));
    }

    Blob Trace(int x, int y, long cap) {
        Blob blob{x, y, x, y, 1};
        At(x, y) = {1, x, y};
        while (blob[4] != cap) {
            const auto step =
                std::find_if(std::begin(STEPS), std::end(STEPS), [&](const auto &candidate) {
                    const int nextX = x + candidate[0], nextY = y + candidate[1];
                    return IsOfClass(nextX, nextY) && At(nextX, nextY).visited == 0;
                });
            if (step != std::end(STEPS)) {
                const int nextX = x + (*step)[0], nextY = y + (*step)[1];
                At(nextX, nextY) = {1, x, y};
                x = nextX;
                y = nextY;
                ++blob[4];
                blob = {std::min<long>(blob[0], x), std::min<long>(blob[1], y),
                        std::max<long>(blob[2], x), std::max<long>(blob[3], y), blob[4]};
                continue;
            }
            const Record record = At(x, y);
            if (record.parentX == x && record.parentY == y)
                break;
            x = record.parentX;
            y = record.parentY;
        }
        return blob;
    }

    const CTavixImage8 &m_image;
    int m_value;
    std::vector<Record> m_records;
};

Blobs ToBlobs(CBlobRectArray &array) {
    Blobs blobs;
    for (int i = 0; i < array.GetElementCount(); ++i)
        blobs.push_back(
            {array[i].left, array[i].top, array[i].right, array[i].bottom, array[i].pixelCount});
    return blobs;
}

Blobs List(CTavixImage8 &image, int value, const SizeBounds &bounds) {
    CBlobRectArray array;
    array.Add(1, 2, 3, 4, 5);
    const int count =
        image.GetBlobList(value, bounds.minW, bounds.maxW, bounds.minH, bounds.maxH, array);
    EXPECT_EQ(count, array.GetElementCount());
    return ToBlobs(array);
}

constexpr long OPEN = 1L << 30;
constexpr CountBounds COUNT_BOUNDS[] = {{1, 1}, {1, 2}, {2, 2},  {1, 3},    {2, 3},
                                        {3, 1}, {1, 5}, {4, 50}, {1, OPEN}, {2, OPEN}};
constexpr SizeBounds SIZE_BOUNDS[] = {{1, OPEN, 1, OPEN}, {1, OPEN, 0, OPEN}, {1, 2, 1, 2},
                                      {1, 1, 1, 1},       {2, OPEN, 1, 3},    {1, 3, -5, 2},
                                      {1, OPEN, 2, OPEN}, {3, 8, 0, 6},       {1, OPEN, 1, 0}};

void ExpectAsLiteral(CTavixImage8 &image, int value) {
    LiteralTracer literal(image, value);
    for (const CountBounds &bounds : COUNT_BOUNDS)
        ASSERT_EQ(image.GetBlobList(value, bounds.min, bounds.max), literal.Count(bounds))
            << bounds.min << " to " << bounds.max << " pixels of " << value;
    for (const SizeBounds &bounds : SIZE_BOUNDS)
        ASSERT_EQ(List(image, value, bounds), literal.List(bounds))
            << bounds.minW << " to " << bounds.maxW << " by " << bounds.minH << " to "
            << bounds.maxH << " of " << value;
}

/// With wide-open bounds: every component of OpenCV that spans several columns and rows, and the
/// lone pixels.
void ExpectAsComponents(CTavixImage8 &image, int value) {
    const cv::Mat ofClass = tavix_test::PixelsOf(image) == value;
    cv::Mat labels, stats, centroids;
    const int count =
        cv::connectedComponentsWithStats(ofClass, labels, stats, centroids, 4, CV_32S);
    Blobs expected;
    for (int label = 1; label < count; ++label) {
        const long left = stats.at<int>(label, cv::CC_STAT_LEFT);
        const long top = stats.at<int>(label, cv::CC_STAT_TOP);
        const long width = stats.at<int>(label, cv::CC_STAT_WIDTH);
        const long height = stats.at<int>(label, cv::CC_STAT_HEIGHT);
        if ((width > 1) == (height > 1) && (width > 1 || height == 1))
            expected.push_back({left, top, left + width - 1, top + height - 1,
                                stats.at<int>(label, cv::CC_STAT_AREA)});
    }
    Blobs found = List(image, value, {1, OPEN, 1, OPEN});
    std::sort(expected.begin(), expected.end());
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, expected);
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
    std::bernoulli_distribution set(density);
    return Drawn(width, height, [&](int, int) { return set(random); });
}

TEST(BlobListTest, EveryPatternOfTwelvePixels) {
    for (unsigned pattern = 0; pattern < 4096; ++pattern) {
        for (const int width : {3, 4}) {
            SCOPED_TRACE(testing::Message() << "pattern " << pattern << ", width " << width);
            CTavixImage8 image = Drawn(width, 12 / width, [=](int x, int y) {
                return (pattern >> (y * width + x) & 1) != 0;
            });
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
        }
    }
}

TEST(BlobListTest, NoiseOfEveryDensityAndSize) {
    std::mt19937 random(1);
    for (const auto &[width, height] :
         {std::pair{1, 1}, {1, 40}, {53, 1}, {2, 2}, {5, 9}, {33, 21}, {71, 46}})
        for (const double density : {0.1, 0.3, 0.5, 0.6, 0.75, 0.9, 1.0}) {
            SCOPED_TRACE(testing::Message() << width << " x " << height << " at " << density);
            CTavixImage8 image = Noise(width, height, density, random);
            for (const int value : {0, 255, 7}) {
                ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, value));
                ExpectAsComponents(image, value);
            }
        }
}

TEST(BlobListTest, FewGreyLevels) {
    std::mt19937 random(2);
    for (int round = 0; round < 10; ++round) {
        auto image = tavix_test::RandomImage<CTavixImage8>(45, 31, random, 2);
        for (const int value : {0, 1, 2, 3, -1, 256, 257}) {
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, value));
            ExpectAsComponents(image, value);
        }
    }
}

TEST(BlobListTest, Shapes) {
    const auto inDisc = [](int x, int y, int cx, int cy, double r) {
        return std::hypot(x - cx, y - cy) <= r;
    };
    CTavixImage8 images[] = {
        Drawn(131, 90,
              [&](int x, int y) {
                  return (inDisc(x, y, 30, 30, 25) && !inDisc(x, y, 30, 30, 12)) ||
                         inDisc(x, y, 30, 30, 6) || inDisc(x, y, 128, 70, 17);
              }),
        // A comb with its back at the bottom: many seeds before the teeth meet.
        Drawn(99, 40, [](int x, int y) { return x % 2 == 0 || y == 39; }),
        // One winding path of a pixel's width.
        Drawn(201, 151, [](int x, int y) { return y % 2 == 0 || x == (y % 4 == 1 ? 200 : 0); }),
        Drawn(33, 33, [](int x, int y) { return (x + y) % 2 == 0; }),
    };
    for (CTavixImage8 &image : images) {
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 0));
        ExpectAsComponents(image, 255);
    }
}

TEST(BlobListTest, BoundsOfAFilledRectangle) {
    CTavixImage8 image =
        Drawn(30, 20, [](int x, int y) { return x >= 4 && x < 14 && y >= 6 && y < 11; });
    EXPECT_EQ(List(image, 255, {9, 10, 1, 5}), (Blobs{{4, 6, 13, 10, 50}}));
    EXPECT_EQ(List(image, 255, {9, 9, 1, 5}), Blobs{});
    EXPECT_EQ(List(image, 255, {10, 20, 1, 5}), Blobs{});
    EXPECT_EQ(List(image, 255, {1, 10, 1, 4}), Blobs{});
    EXPECT_EQ(List(image, 255, {1, 10, 5, 9}), Blobs{});
    EXPECT_EQ(image.GetBlobList(255, 50, 50), 1);
    EXPECT_EQ(image.GetBlobList(255, 51, 60), 0);
}

TEST(BlobListTest, LonePixelsAndDiagonals) {
    CTavixImage8 image =
        Drawn(9, 7, [](int x, int y) { return x == y && (x == 2 || x == 3 || x == 6); });
    EXPECT_EQ(image.GetBlobList(255, 1, 100), 3);
    EXPECT_EQ(image.GetBlobList(255, 1, 1), 3);
    EXPECT_EQ(image.GetBlobList(255, 2, 100), 0);
    EXPECT_EQ(List(image, 255, {1, 1, 1, 1}),
              (Blobs{{2, 2, 2, 2, 1}, {3, 3, 3, 3, 1}, {6, 6, 6, 6, 1}}));
    EXPECT_EQ(List(image, 255, {1, 9, 2, 9}), Blobs{});
    EXPECT_EQ(List(image, 255, {1, 9, 0, 9}), Blobs{});
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
    CTavixImage8 image = Drawn(6, 4, [](int x, int) { return x > 2; });
    CTavixImage8 empty, flat(0, 4);
    const struct {
        CTavixImage8 &image;
        long min, max;
    } cases[] = {{image, 0, 9},  {image, 1, 0}, {image, -3, 9},
                 {image, 1, -9}, {empty, 1, 9}, {flat, 1, 9}};
    for (const auto &[source, min, max] : cases) {
        CBlobRectArray array;
        array.Add(1, 2, 3, 4, 5);
        EXPECT_EQ(source.GetBlobList(255, min, max), 0);
        EXPECT_EQ(source.GetBlobList(255, min, max, 1, 9, array), 0);
        EXPECT_EQ(ToBlobs(array), (Blobs{{1, 2, 3, 4, 5}}));
    }
    EXPECT_EQ(List(image, 255, {1, 9, -1, 9}).size(), 1U);
}

TEST(BlobListTest, OneImageMayBeSearchedAgainAndRemade) {
    std::mt19937 random(3);
    CTavixImage8 image = Noise(33, 21, 0.6, random);
    const CTavixImage8 before = image;
    for (int round = 0; round < 2; ++round)
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    EXPECT_EQ(tavix_test::BytesOf(image), tavix_test::BytesOf(before));
    image.SetROI(RegionHandle(CreateRectRgn(0, 0, 3, 3)).get());
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    image.SetPixel(5, 5, image.GetPixel(5, 5) == 0 ? 255 : 0);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));

    image.Create(97, 61);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 0));
    image = Noise(120, 80, 0.6, random);
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    const CTavixImage8 other = Noise(150, 90, 0.6, random);
    image.SetImagePtr(150, 90, other.GetImagePtr());
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, 255));
    image.Release();
    EXPECT_EQ(image.GetBlobList(255, 1, 9), 0);
    image.Create(5, 5);
    EXPECT_EQ(image.GetBlobList(0, 1, 99), 0);
}

} // namespace
