#include "analysis/blob_reference.h"
#include "analysis/each_target.h"

#include "TAVIX20/containers/sort_byte_array.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace tavix_test;
using TavixArray::CPixelArrayArray;
using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

constexpr long OPEN = 1L << 30;
constexpr std::pair<long, long> COUNT_BOUNDS[] = {{1, 1}, {1, 2}, {2, 2},  {1, 3},    {2, 3},
                                                  {3, 1}, {1, 5}, {4, 50}, {1, OPEN}, {2, OPEN}};
constexpr std::array<long, 4> SIZE_BOUNDS[] = {
    {1, OPEN, 1, OPEN}, {1, OPEN, 0, OPEN}, {1, 2, 1, 2}, {1, 1, 1, 1},   {2, OPEN, 1, 3},
    {1, 3, -5, 2},      {1, OPEN, 2, OPEN}, {3, 8, 0, 6}, {1, OPEN, 1, 0}};

/// The bounds of the size, and the output.
template <typename Array>
using Sized = std::function<int(long, long, long, long, Array &)>;

/// One class of pixels with the members that look for it. Members that are not there stay empty.
struct Members {
    const char *name;
    std::array<int, 4> area;
    Predicate isOfClass;
    Predicate isNeighbour = isOfClass;
    long slack = 0;
    std::function<int(long, long)> count = {};
    std::function<int(long, long, CPointArrayArray &)> points = {};
    Sized<CPointArrayArray> sizedPoints = {};
    Sized<CPixelArrayArray> pixels = {};
    Sized<CBlobRectArray> rectangles = {};
};

/// The overloads of a member, with these arguments before the bounds.
template <typename Image, typename... First>
auto List(const Image &image, First... first) {
    return [&image, first...](auto &&...rest) { return image.GetBlobList(first..., rest...); };
}

template <typename... First>
auto RangeList(const CTavixImage8 &image, First... first) {
    return [&image, first...](auto &&...rest) { return image.GetRangeBlobList(first..., rest...); };
}

/// Checks all members against the rules; output arrays hold something before.
void ExpectAsLiteral(const CTavixImage &image, const Members &members) {
    SCOPED_TRACE(testing::Message()
                 << members.name << ", " << image.GetWidth() << " x " << image.GetHeight());
    const auto literal = [&](long cap) {
        return LiteralBlobs(image.GetWidth(), image.GetHeight(), members.area, cap,
                            members.isOfClass, members.isNeighbour);
    };
    CPointArrayArray filled;
    filled.Add(CPointArray());
    for (const auto &[min, max] : COUNT_BOUNDS) {
        if (!members.count && !members.points)
            break;
        const std::vector<Blob> expected = ByCount(literal(max), min, max);
        if (members.count) {
            ASSERT_EQ(members.count(min, max), std::ssize(expected)) << min << ' ' << max;
        }
        if (members.points) {
            CPointArrayArray found = filled;
            ASSERT_EQ(members.points(min, max, found), std::ssize(expected) + 1);
            ASSERT_EQ(PointsOf(found, 1), PointsOf(expected)) << min << ' ' << max;
        }
    }
    const std::vector<Blob> all = literal(-1);
    for (const auto &bounds : SIZE_BOUNDS) {
        const std::vector<Blob> expected = BySize(all, bounds, members.slack);
        const auto [minW, maxW, minH, maxH] = bounds;
        SCOPED_TRACE(testing::Message() << minW << ' ' << maxW << ' ' << minH << ' ' << maxH);
        if (members.rectangles) {
            CBlobRectArray found;
            found.Add(1, 2, 3, 4, 5);
            ASSERT_EQ(members.rectangles(minW, maxW, minH, maxH, found), std::ssize(expected));
            ASSERT_EQ(BoxesOf(found), BoxesOf(expected));
        }
        if (members.sizedPoints) {
            CPointArrayArray found = filled;
            ASSERT_EQ(members.sizedPoints(minW, maxW, minH, maxH, found), std::ssize(expected) + 1);
            ASSERT_EQ(PointsOf(found, 1), PointsOf(expected));
        }
        if (members.pixels) {
            CPixelArrayArray found;
            ASSERT_EQ(members.pixels(minW, maxW, minH, maxH, found), std::ssize(expected));
            ASSERT_EQ(PointsOf(found), PointsOf(expected));
        }
    }
}

/// The members that look for a value, in the whole image.
Members ForValue(const CTavixImage8 &image, int value) {
    const auto list = List(image, value);
    return {.name = "value",
            .area = {0, 0, image.GetWidth() - 1, image.GetHeight() - 1},
            .isOfClass = [&image, value](int x, int y) { return image.GetPixel(x, y) == value; },
            .count = list,
            .points = list,
            .rectangles = list};
}

/// All other members of grey images, with random arguments.
std::vector<Members> ForOtherClasses(const CTavixImage8 &image, std::mt19937 &random) {
    const int w = image.GetWidth(), h = image.GetHeight();
    const std::array<int, 4> whole{0, 0, w - 1, h - 1};
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const auto [l, r] = std::minmax({pick(-2, w), pick(-2, w)});
    const auto [t, b] = std::minmax({pick(-2, h), pick(-2, h)});
    const std::array<int, 4> area{l, t, r, b};
    const int threshold = pick(-1, 256), value = pick(0, 3) * 85;
    const auto low = static_cast<unsigned char>(pick(0, 255)),
               high = static_cast<unsigned char>(pick(0, 255));
    TavixArray::CSortByteArray listed;
    for (int i = 0; i < 100; ++i)
        listed.Add(static_cast<unsigned char>(pick(0, 255)));
    const auto equal = [&image, value](int x, int y) { return image.GetPixel(x, y) == value; };
    const auto above = [&image, threshold, value](int x, int y) {
        return (image.GetPixel(x, y) <= threshold ? 0 : 255) == value;
    };
    const auto isMasked = [&image](int x, int y) { return !image.IsROI() || image.PtInROI(x, y); };
    const auto inBand = [&image, low, high](int x, int y) {
        return image.GetPixel(x, y) >= low && image.GetPixel(x, y) <= high;
    };
    const auto inMaskedBand = [=](int x, int y) { return inBand(x, y) && isMasked(x, y); };
    const auto isListed = [&image, listed, isMasked](int x, int y) {
        for (int i = 0; i < listed.GetElementCount(); ++i)
            if (listed[i] == image.GetPixel(x, y))
                return isMasked(x, y) != 0;
        return false;
    };
    const auto inEllipse = [=, l = l, t = t, r = r, b = b](int x, int y) {
        const long dx = 2L * x - l - r, dy = 2L * y - t - b, width = r - l, height = b - t;
        return x >= l && x <= r && y >= t && y <= b && inBand(x, y) &&
               dx * dx * height * height + dy * dy * width * width <=
                   width * width * height * height;
    };
    const auto thresholdList = List(image, threshold, value);
    const auto areaList = List(image, l, t, r, b, value);
    const auto areaThresholdList = List(image, l, t, r, b, threshold, value);
    const auto bandList = RangeList(image, low, high);
    const auto listedList = RangeList(image, listed);
    const auto ellipseList = [=, &image, l = l, t = t, r = r, b = b](long p, long q, auto &out) {
        return image.GetRangeBlobListInEllipseROI(l, t, r, b, low, high, p, q, out);
    };
    return {
        {.name = "threshold",
         .area = whole,
         .isOfClass = above,
         .isNeighbour = equal,
         .points = thresholdList,
         .rectangles = thresholdList},
        {.name = "value in a rectangle",
         .area = area,
         .isOfClass = equal,
         .sizedPoints = areaList,
         .rectangles = areaList},
        {.name = "threshold in a rectangle",
         .area = area,
         .isOfClass = above,
         .isNeighbour = equal,
         .points = areaThresholdList,
         .rectangles = areaThresholdList},
        {.name = "band",
         .area = whole,
         .isOfClass = inMaskedBand,
         .count = bandList,
         .points = bandList,
         .pixels = bandList,
         .rectangles = bandList},
        {.name = "listed",
         .area = whole,
         .isOfClass = isListed,
         .points = listedList,
         .pixels = listedList,
         .rectangles = listedList},
        {.name = "ellipse", .area = area, .isOfClass = inEllipse, .points = ellipseList},
    };
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
    for (unsigned pattern = 0; pattern < 4096; ++pattern) {
        const CTavixImage8 image =
            Drawn(4, 3, [=](int x, int y) { return (pattern >> (y * 4 + x) & 1) != 0; });
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, ForValue(image, 255))) << pattern;
    }
}

TEST(BlobListTest, NoiseAndShapes) {
    std::mt19937 random(1);
    std::vector<CTavixImage8> images{
        // A comb with its back at the bottom: many seeds before the teeth meet.
        Drawn(199, 40, [](int x, int y) { return x % 2 == 0 || y == 39; }),
        // One winding path of a pixel's width.
        Drawn(61, 45, [](int x, int y) { return y % 2 == 0 || x == (y % 4 == 1 ? 60 : 0); }),
        RandomImage<CTavixImage8>(45, 31, random, 2),
        // Blobs larger than what small ones share, among small ones.
        Noise(150, 120, 0.64, random), Noise(150, 120, 0.98, random)};
    for (const auto &[width, height] :
         {std::pair{1, 1}, {1, 40}, {53, 1}, {64, 9}, {128, 5}, {71, 46}, {150, 20}})
        for (const double density : {0.1, 0.3, 0.5, 0.6, 0.75, 0.9, 1.0})
            images.push_back(Noise(width, height, density, random));
    for (const CTavixImage8 &image : images)
        for (const int value : {-1, 0, 1, 255, 256})
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, ForValue(image, value)));
}

using BlobTargetsTest = EachTargetTest;
INSTANTIATE_TEST_SUITE_P(Targets, BlobTargetsTest, EACH_TARGET, TargetName);

TEST_P(BlobTargetsTest, FindTheSameBlobs) {
    for (const int width : {211, 512})
        for (const double density : {0.05, 0.5, 0.8}) {
            const CTavixImage8 noise = Noise(width, 20, density, m_random);
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(noise, ForValue(noise, 255)));
            // Stretches of all lengths, up to many words.
            const CTavixImage8 wide = Drawn(
                width, 20, [&](int x, int y) { return noise.GetPixel(x * x / width, y) != 0; });
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(wide, ForValue(wide, 255)));
        }
}

TEST(BlobListTest, ListsChangeByThemselves) {
    std::mt19937 random(6);
    CPointArrayArray lists;
    Noise(150, 60, 0.5, random).GetBlobList(255, 1, OPEN, lists);
    std::vector<Points> expected = PointsOf(lists);
    CPointArrayArray rest;
    for (int i = 0; i < lists.GetElementCount(); ++i) {
        auto &points = expected[static_cast<std::size_t>(i)];
        for (int k = 0; k < 3 && i % 2 == 0; ++k) {
            lists[i].Add(k, 7);
            points.emplace_back(k, 7);
        }
        if (i % 4 == 0) {
            lists[i].Remove(0);
            points.erase(points.begin());
        }
    }
    EXPECT_EQ(PointsOf(lists), expected);
    for (int i = 0; i < lists.GetElementCount(); ++i)
        i % 3 == 0 ? rest.Add(std::move(lists[i])) : rest.Add(lists[i]);
    lists.RemoveAll();
    EXPECT_EQ(PointsOf(rest), expected);
}

TEST(BlobListTest, EveryClassAreaAndOutput) {
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        const int width = 1 + static_cast<int>(random() % 80),
                  height = 1 + static_cast<int>(random() % 20);
        auto image = RandomImage<CTavixImage8>(width, height, random);
        if (round % 3 == 0) // Smooth, so that blobs are large.
            image.Gaussian5x5();
        if (round % 3 == 1) // Few levels, those of the members among them.
            for (int i = 0; i < image.GetImageLen(); ++i)
                image.GetImagePtr()[i] =
                    static_cast<unsigned char>(image.GetImagePtr()[i] % 4 * 85);
        if (round % 4 == 0) {
            const RegionHandle mask(CreateRectRgn(width / 4, 1, width, height / 2 + 1)),
                more(CreateRectRgn(0, height / 3, width / 2, height));
            CombineRgn(mask.get(), mask.get(), more.get(), round % 8 == 0 ? RGN_OR : RGN_AND);
            image.SetROI(mask.get());
        }
        for (const Members &members : ForOtherClasses(image, random)) {
            const auto [l, t, r, b] = members.area;
            if (r < 0 || b < 0 || l >= width || t >= height)
                continue; // Outside: a test of its own.
            ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, members)) << "round " << round;
        }
    }
}

TEST(BlobListTest, ColourBlobsAndPieces) {
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        auto image = RandomImage<CTavixImage24>(1 + static_cast<int>(random() % 70),
                                                1 + static_cast<int>(random() % 15), random,
                                                round % 2 == 0 ? 3 : 255);
        if (round % 4 == 1)
            image.Gaussian5x5();
        const int w = image.GetWidth(), h = image.GetHeight();
        using Colour = std::array<int, 3>;
        const auto isWithin = [&image](int x, int y, const Colour &from, const Colour &tolerance) {
            bool isNear = true;
            for (std::size_t k = 0; k < 3; ++k) {
                const int level = static_cast<int>(image.GetPixel(x, y) >> 8 * k & 0xFF);
                isNear &= std::abs(level - from[k]) <= tolerance[k];
            }
            return isNear;
        };
        Colour from, tolerance;
        for (std::size_t k = 0; k < 3; ++k) {
            from[k] = static_cast<int>(random() % (round % 2 == 0 ? 4 : 256));
            tolerance[k] = static_cast<int>(random() % (round % 2 == 0 ? 3 : 120));
        }
        const auto list = [&](auto... area) {
            const auto byte = [](int level) { return static_cast<unsigned char>(level); };
            return List(image, area..., byte(from[0]), byte(from[1]), byte(from[2]),
                        byte(tolerance[0]), byte(tolerance[1]), byte(tolerance[2]));
        };
        Members members{.name = "colour",
                        .area = {0, 0, w - 1, h - 1},
                        .isOfClass = [&](int x, int y) { return isWithin(x, y, from, tolerance); },
                        .slack = 1,
                        .rectangles = list()};
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, members)) << round;
        members.area = {w / 3, h / 4, w, h / 2};
        members.rectangles = list(w / 3, h / 4, w, h / 2);
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, members)) << round;

        const int x = static_cast<int>(random()) & 63 % w, y = h / 2;
        const auto pieceOf = [&](long cap, const Predicate &isOfClass) {
            return LiteralBlobs(w, h, {x, y, x, y}, cap, isOfClass,
                                [](int, int) { return false; })[0]
                .points;
        };
        CPointArray piece;
        piece.Add(7, 7);
        const auto expectPiece = [&](int count, const Points &expected) {
            CPointArrayArray pieces;
            pieces.Add(piece);
            EXPECT_EQ(count, std::ssize(expected));
            EXPECT_EQ(PointsOf(pieces)[0], expected);
        };
        const auto there = static_cast<COLORREF>(image.GetPixel(x, y));
        const Colour seedColour{GetRValue(there), GetGValue(there), GetBValue(there)};
        expectPiece(image.GetPieceBlobAtPoint(x, y, 30, piece), pieceOf(-1, [&](int px, int py) {
                        return isWithin(px, py, seedColour, {30, 30, 30});
                    }));
        const std::unique_ptr<CTavixImage8> grey(image.GetRedSpace());
        const int seed = grey->GetPixel(x, y);
        for (const int cap : {-1, 1, 5}) {
            const Points band = pieceOf(
                cap, [&](int px, int py) { return std::abs(grey->GetPixel(px, py) - seed) <= 40; });
            expectPiece(
                grey->GetPieceBlobAtPoint(x, y, seed - 40, seed + 40, std::max(cap, 0), piece),
                band);
            if (cap < 0)
                expectPiece(grey->GetPieceBlobAtPoint(x, y, 40, piece), band);
        }
    }
}

TEST(BlobListTest, ACappedTraceLeavesItsRemainderToLaterSeeds) {
    const CTavixImage8 row = Drawn(8, 1, [](int, int) { return true; });
    EXPECT_EQ(row.GetBlobList(255, 1, 8), 1);
    // Every seed has neighbours, so none is a lone pixel.
    EXPECT_EQ(row.GetBlobList(255, 1, 1), 0);
    // Each of the pixels 0 to 6, most of them visited, finds the next one and counts itself.
    EXPECT_EQ(row.GetBlobList(255, 1, 2), 7);
    // Pixels 0 to 2, 2 to 4, 4 to 6, then 6 and 7.
    EXPECT_EQ(row.GetBlobList(255, 1, 3), 4);
    EXPECT_EQ(row.GetBlobList(255, 3, 3), 3);
}

TEST(BlobListTest, RefusedCallsLeaveTheOutputAsItWas) {
    const CTavixImage8 image = Drawn(6, 4, [](int x, int) { return x > 2; }), flat(0, 4);
    CBlobRectArray boxes;
    CPointArrayArray lists;
    CPointArray points;
    boxes.Add(1, 2, 3, 4, 5);
    lists.Add(points);
    points.Add(3, 4);
    for (const auto &[min, max] : {std::pair{0, 9}, {1, 0}, {1, -9}}) {
        EXPECT_EQ(image.GetBlobList(255, min, max), 0);
        EXPECT_EQ(image.GetBlobList(255, min, max, lists), 0);
        EXPECT_EQ(image.GetBlobList(255, min, max, 1, 9, boxes), 0);
    }
    for (const auto &[l, t, r, b] :
         {std::array{3, 1, 2, 2}, {1, 3, 2, 2}, {6, 0, 9, 3}, {0, -5, 5, -1}}) {
        EXPECT_EQ(image.GetBlobList(l, t, r, b, 255, 1, 9, 1, 9, boxes), 0);
        EXPECT_EQ(image.GetBlobList(l, t, r, b, 255, 1, 9, 1, 9, lists), 0);
        EXPECT_EQ(image.GetRangeBlobListInEllipseROI(l, t, r, b, 0, 255, 1, 9, lists), 0);
    }
    for (const auto &[x, y] : {std::pair{-1, 0}, {0, 4}, {6, 0}})
        EXPECT_EQ(image.GetPieceBlobAtPoint(x, y, 255, points), 0);
    EXPECT_EQ(image.GetPieceBlobAtPoint(0, 0, 100, 200, 0, points), 0);
    EXPECT_EQ(flat.GetBlobList(0, 1, 9), 0);
    EXPECT_EQ(flat.GetBlobList(0, 1, 9, 1, 9, boxes), 0);
    EXPECT_EQ(BoxesOf(boxes), (std::vector<std::array<long, 5>>{{1, 2, 3, 4, 5}}));
    EXPECT_EQ(lists.GetElementCount(), 1);
    EXPECT_EQ(points.GetElementCount(), 1);
}

TEST(BlobListTest, OneImageMayBeSearchedAgainAndRemade) {
    std::mt19937 random(3);
    CTavixImage8 image = Noise(33, 21, 0.6, random);
    const CTavixImage8 before = image, larger = Noise(120, 80, 0.6, random);
    const auto check = [&image](int value) {
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, ForValue(image, value)));
    };
    check(255);
    EXPECT_EQ(BytesOf(image), BytesOf(before));
    image.SetPixel(5, 5, image.GetPixel(5, 5) == 0 ? 255 : 0);
    check(255);
    image.Create(97, 61);
    check(0);
    image = larger;
    check(255);
    image.Release();
    EXPECT_EQ(image.GetBlobList(255, 1, 9), 0);
}

TEST(ShapeTest, GravityEllipseAndMatch) {
    std::mt19937 random(5);
    const auto image = RandomImage<CTavixImage8>(83, 37, random);
    for (const auto &[l, t, r, b] : {std::array{0, 0, 82, 36}, {-4, 3, 20, 99}, {70, 30, 70, 30}})
        for (const int value : {255, 0, 7}) {
            long n = 0, sumX = 0, sumY = 0, cx = -1, cy = -1;
            for (int y = std::max(t, 0); y <= std::min(b, 36); ++y)
                for (int x = std::max(l, 0); x <= std::min(r, 82); ++x)
                    if ((image.GetPixel(x, y) > 120 ? 255 : 0) == value) {
                        ++n;
                        sumX += x;
                        sumY += y;
                    }
            image.GetGravityPoint(l, t, r, b, 120, static_cast<unsigned char>(value), &cx, &cy);
            EXPECT_EQ(std::pair(cx, cy),
                      n == 0 ? std::pair(0L, 0L) : std::pair(sumX / n, sumY / n));
        }
    for (const auto &[width, height] : {std::pair{1, 1}, {1, 9}, {2, 2}, {7, 5}, {40, 41}}) {
        const std::unique_ptr<CTavixImage8> ellipse(
            CTavixImage::CreateEllipseImage(width, height, 9, 3));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const long w = width - 1, h = height - 1, dx = 2 * x - w, dy = 2 * y - h;
                ASSERT_EQ(ellipse->GetPixel(x, y),
                          dx * dx * h * h + dy * dy * w * w <= w * w * h * h ? 9 : 3)
                    << width << " x " << height << ": " << x << ", " << y;
            }
    }
    EXPECT_EQ(CTavixImage::CreateEllipseImage(0, 5, 1, 0), nullptr);

    const auto other = RandomImage<CTavixImage8>(83, 37, random);
    cv::Mat score;
    cv::matchTemplate(PixelsOf(image), PixelsOf(other), score, cv::TM_CCOEFF_NORMED);
    EXPECT_NEAR(image.Match(&other), static_cast<double>(score.at<float>(0)), 1e-5);
    EXPECT_DOUBLE_EQ(image.Match(&image), 1.0);
    EXPECT_EQ(image.Match(nullptr), 0);
    const CTavixImage8 smaller(5, 5);
    EXPECT_EQ(image.Match(&smaller), 0);
    EXPECT_EQ(smaller.GetRoundness(), 0);
    EXPECT_EQ(CTavixImage8().GetRoundness(), 0);
    const std::unique_ptr<CTavixImage8> disc(CTavixImage::CreateEllipseImage(41, 41, 255, 0));
    CTavixImage8 square(41, 41);
    square.Marking(4, 4, 36, 36, 255);
    EXPECT_DOUBLE_EQ(disc->GetRoundness(), 1.0);
    EXPECT_LT(square.GetRoundness(), 0.9);
}

} // namespace
