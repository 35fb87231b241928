#include "analysis/blob_reference.h"

#include "TAVIX20/containers/sort_byte_array.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>
#include <hwy/targets.h>

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

/// One class of pixels with the members that look for it. Members that are not there stay empty.
struct Members {
    const char *name;
    Predicate isOfClass;
    Predicate isNeighbour; ///< Empty: as isOfClass.
    std::array<int, 4> area;
    std::function<int(long, long)> count;
    std::function<int(long, long, CPointArrayArray &)> points;
    std::function<int(const std::array<long, 4> &, CPointArrayArray &)> sizedPoints;
    std::function<int(const std::array<long, 4> &, CPixelArrayArray &)> pixels;
    std::function<int(const std::array<long, 4> &, CBlobRectArray &)> rectangles;
    long slack = 0;
};

/// Checks all members against the rules; output arrays hold something before.
void ExpectAsLiteral(const CTavixImage &image, const Members &members) {
    SCOPED_TRACE(testing::Message()
                 << members.name << ", " << image.GetWidth() << " x " << image.GetHeight());
    const auto literal = [&](long cap) {
        return LiteralBlobs(image.GetWidth(), image.GetHeight(), members.area, cap,
                            members.isOfClass,
                            members.isNeighbour ? members.isNeighbour : members.isOfClass);
    };
    CPointArrayArray filled;
    filled.Add(CPointArray());
    for (const auto &[min, max] : COUNT_BOUNDS) {
        if (!members.count && !members.points)
            break;
        const std::vector<Blob> expected = ByCount(literal(max), min, max);
        if (members.count) {
            ASSERT_EQ(members.count(min, max), static_cast<int>(expected.size()))
                << min << ' ' << max;
        }
        if (members.points) {
            CPointArrayArray found = filled;
            ASSERT_EQ(members.points(min, max, found), static_cast<int>(expected.size()) + 1);
            ASSERT_EQ(PointsOf(found, 1), PointsOf(expected)) << min << ' ' << max;
        }
    }
    const std::vector<Blob> all = literal(-1);
    for (const auto &bounds : SIZE_BOUNDS) {
        const std::vector<Blob> expected = BySize(all, bounds, members.slack);
        const auto trace = testing::Message()
                           << bounds[0] << ' ' << bounds[1] << ' ' << bounds[2] << ' ' << bounds[3];
        if (members.rectangles) {
            CBlobRectArray found;
            found.Add(1, 2, 3, 4, 5);
            ASSERT_EQ(members.rectangles(bounds, found), static_cast<int>(expected.size()));
            ASSERT_EQ(BoxesOf(found), BoxesOf(expected)) << trace;
        }
        if (members.sizedPoints) {
            CPointArrayArray found = filled;
            ASSERT_EQ(members.sizedPoints(bounds, found), static_cast<int>(expected.size()) + 1);
            ASSERT_EQ(PointsOf(found, 1), PointsOf(expected)) << trace;
        }
        if (members.pixels) {
            CPixelArrayArray found;
            ASSERT_EQ(members.pixels(bounds, found), static_cast<int>(expected.size()));
            ASSERT_EQ(PointsOf(found), PointsOf(expected)) << trace;
        }
    }
}

/// The members that look for a value, in the whole image.
Members ForValue(const CTavixImage8 &image, int value) {
    return {
        "value",
        [&image, value](int x, int y) { return image.GetPixel(x, y) == value; },
        {},
        {0, 0, image.GetWidth() - 1, image.GetHeight() - 1},
        [&image, value](long a, long b) { return image.GetBlobList(value, a, b); },
        [&image, value](long a, long b, auto &out) { return image.GetBlobList(value, a, b, out); },
        {},
        {},
        [&image, value](const auto &s, auto &out) {
            return image.GetBlobList(value, s[0], s[1], s[2], s[3], out);
        }};
}

/// All other members of grey images, with random arguments.
std::vector<Members> ForOtherClasses(const CTavixImage8 &image, std::mt19937 &random) {
    const int w = image.GetWidth(), h = image.GetHeight();
    const std::array<int, 4> whole{0, 0, w - 1, h - 1};
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    int x1 = pick(-2, w), x2 = pick(-2, w), y1 = pick(-2, h), y2 = pick(-2, h);
    const std::array<int, 4> area{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2),
                                  std::max(y1, y2)};
    const auto [l, t, r, b] = area;
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
    const auto inEllipse = [=](int x, int y) {
        const long dx = 2L * x - l - r, dy = 2L * y - t - b, width = r - l, height = b - t;
        return x >= l && x <= r && y >= t && y <= b && inBand(x, y) &&
               dx * dx * height * height + dy * dy * width * width <=
                   width * width * height * height;
    };
    const CTavixImage8 &i = image;
    return {
        {"threshold",
         above,
         equal,
         whole,
         {},
         [&i, threshold, value](long p, long q, auto &out) {
             return i.GetBlobList(threshold, value, p, q, out);
         },
         {},
         {},
         [&i, threshold, value](const auto &s, auto &out) {
             return i.GetBlobList(threshold, value, s[0], s[1], s[2], s[3], out);
         }},
        {"value in a rectangle",
         equal,
         {},
         area,
         {},
         {},
         [=, &i](const auto &s, auto &out) {
             return i.GetBlobList(l, t, r, b, value, s[0], s[1], s[2], s[3], out);
         },
         {},
         [=, &i](const auto &s, auto &out) {
             return i.GetBlobList(l, t, r, b, value, s[0], s[1], s[2], s[3], out);
         }},
        {"threshold in a rectangle",
         above,
         equal,
         area,
         {},
         [=, &i](long p, long q, auto &out) {
             return i.GetBlobList(l, t, r, b, threshold, value, p, q, out);
         },
         {},
         {},
         [=, &i](const auto &s, auto &out) {
             return i.GetBlobList(l, t, r, b, threshold, value, s[0], s[1], s[2], s[3], out);
         }},
        {"band",
         inMaskedBand,
         {},
         whole,
         [=, &i](long p, long q) { return i.GetRangeBlobList(low, high, p, q); },
         [=, &i](long p, long q, auto &out) { return i.GetRangeBlobList(low, high, p, q, out); },
         {},
         [=, &i](const auto &s, auto &out) {
             return i.GetRangeBlobList(low, high, s[0], s[1], s[2], s[3], out);
         },
         [=, &i](const auto &s, auto &out) {
             return i.GetRangeBlobList(low, high, s[0], s[1], s[2], s[3], out);
         }},
        {"listed",
         isListed,
         {},
         whole,
         {},
         [=, &i](long p, long q, auto &out) { return i.GetRangeBlobList(listed, p, q, out); },
         {},
         [=, &i](const auto &s, auto &out) {
             return i.GetRangeBlobList(listed, s[0], s[1], s[2], s[3], out);
         },
         [=, &i](const auto &s, auto &out) {
             return i.GetRangeBlobList(listed, s[0], s[1], s[2], s[3], out);
         }},
        {"ellipse",
         inEllipse,
         {},
         area,
         {},
         [=, &i](long p, long q, auto &out) {
             return i.GetRangeBlobListInEllipseROI(l, t, r, b, low, high, p, q, out);
         },
         {},
         {},
         {}},
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

TEST(BlobListTest, EveryInstructionSet) {
    std::mt19937 random(4);
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(target);
        for (const double density : {0.05, 0.5, 0.8}) {
            const CTavixImage8 image = Noise(211, 30, density, random);
            EXPECT_NO_FATAL_FAILURE(ExpectAsLiteral(image, ForValue(image, 255))) << target;
        }
    }
    hwy::SetSupportedTargetsForTest(0);
}

TEST(BlobListTest, ListsChangeByThemselves) {
    std::mt19937 random(6);
    CPointArrayArray lists;
    Noise(150, 60, 0.5, random).GetBlobList(255, 1, OPEN, lists);
    std::vector<Points> expected = PointsOf(lists);
    for (std::size_t i = 0; i < expected.size(); i += 2) {
        auto &list = lists[static_cast<int>(i)];
        for (int k = 0; k < 3; ++k) {
            list.Add(k, 7);
            expected[i].emplace_back(k, 7);
        }
        if (i % 4 == 0) {
            list.Remove(0);
            expected[i].erase(expected[i].begin());
        }
    }
    EXPECT_EQ(PointsOf(lists), expected);
    CPointArrayArray rest;
    for (int i = 0; i < lists.GetElementCount(); ++i) {
        if (i % 3 == 0)
            rest.Add(std::move(lists[i]));
        else
            rest.Add(lists[i]);
    }
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
        const auto channel = [&image](int x, int y, int which) {
            return static_cast<int>(image.GetPixel(x, y) >> 8 * which & 0xFF);
        };
        std::array<unsigned char, 3> reference, tolerance;
        for (std::size_t k = 0; k < 3; ++k) {
            reference[k] = static_cast<unsigned char>(random() % (round % 2 == 0 ? 4 : 256));
            tolerance[k] = static_cast<unsigned char>(random() % (round % 2 == 0 ? 3 : 120));
        }
        const auto isNear = [&](int x, int y) {
            for (int k = 0; k < 3; ++k)
                if (std::abs(channel(x, y, k) - reference[static_cast<std::size_t>(k)]) >
                    tolerance[static_cast<std::size_t>(k)])
                    return false;
            return true;
        };
        const auto [r, g, b] = reference;
        const auto [tr, tg, tb] = tolerance;
        Members whole{
            "colour",
            isNear,
            {},
            {0, 0, w - 1, h - 1},
            {},
            {},
            {},
            {},
            [&, r = r, g = g, b = b, tr = tr, tg = tg, tb = tb](const auto &s, auto &out) {
                return image.GetBlobList(r, g, b, tr, tg, tb, s[0], s[1], s[2], s[3], out);
            },
            1};
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, whole)) << round;
        whole.area = {w / 3, h / 4, w, h / 2};
        whole.rectangles = [&, r = r, g = g, b = b, tr = tr, tg = tg, tb = tb](const auto &s,
                                                                               auto &out) {
            return image.GetBlobList(w / 3, h / 4, w, h / 2, r, g, b, tr, tg, tb, s[0], s[1], s[2],
                                     s[3], out);
        };
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(image, whole)) << round;

        const int x = static_cast<int>(random()) & 63 % w, y = h / 2;
        const auto isPiece = [&](int px, int py) {
            for (int k = 0; k < 3; ++k)
                if (std::abs(channel(px, py, k) - channel(x, y, k)) > 30)
                    return false;
            return true;
        };
        CPointArray piece;
        piece.Add(7, 7);
        const Points expected =
            LiteralBlobs(w, h, {x, y, x, y}, -1, isPiece, [](int, int) { return false; })[0].points;
        ASSERT_EQ(image.GetPieceBlobAtPoint(x, y, 30, piece), static_cast<int>(expected.size()));
        CPointArrayArray list;
        list.Add(piece);
        EXPECT_EQ(PointsOf(list)[0], expected);
        const std::unique_ptr<CTavixImage8> grey(image.GetRedSpace());
        const int seed = grey->GetPixel(x, y);
        for (const long cap : {0L, 1L, 5L}) {
            const Points band =
                LiteralBlobs(
                    w, h, {x, y, x, y}, cap == 0 ? -1 : cap,
                    [&](int px, int py) { return std::abs(grey->GetPixel(px, py) - seed) <= 40; },
                    [](int, int) { return false; })[0]
                    .points;
            CPointArrayArray pieces;
            ASSERT_EQ(
                grey->GetPieceBlobAtPoint(x, y, seed - 40, seed + 40, static_cast<int>(cap), piece),
                static_cast<int>(band.size()));
            pieces.Add(piece);
            EXPECT_EQ(PointsOf(pieces)[0], band);
            if (cap == 0) {
                EXPECT_EQ(grey->GetPieceBlobAtPoint(x, y, 40, piece),
                          static_cast<int>(band.size()));
            }
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
