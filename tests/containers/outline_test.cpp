// Outlines of regions and the measures made from them.

#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/platform/region.h"

#include "containers/point_list.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <numbers>
#include <random>
#include <set>
#include <string>

using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

namespace {

using Pixels = std::set<std::pair<int, int>>; // (y, x): raster order.

/// The pixels drawn as '#'.
CPointArray Draw(const std::vector<std::string> &rows) {
    CPointArray points;
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (std::size_t x = 0; x < rows[y].size(); ++x)
            if (rows[y][x] == '#')
                points.Add(static_cast<int>(x), static_cast<int>(y));
    return points;
}

Pixels ToSet(const CPointArray &points) {
    Pixels pixels;
    for (const auto &[x, y] : PairsOf(points))
        pixels.insert({y, x});
    return pixels;
}

RegionHandle ToRegion(const Pixels &pixels) {
    RegionHandle region(CreateRectRgn(0, 0, 0, 0));
    for (const auto &[y, x] : pixels) {
        const RegionHandle pixel(CreateRectRgn(x, y, x + 1, y + 1));
        CombineRgn(region.get(), region.get(), pixel.get(), RGN_OR);
    }
    return region;
}

/// Positive for a clockwise polygon as the picture is seen.
double SignedArea(const CPointArray &polygon) {
    std::vector<cv::Point> corners;
    for (const auto &[x, y] : PairsOf(polygon))
        corners.emplace_back(x, y);
    return cv::contourArea(corners, true);
}

/// The connected areas of the pixels inside a 12 x 12 frame, or of the others in and around it, in
/// raster order of their first pixels.
std::vector<Pixels> Areas(const Pixels &pixels, bool isIn, int connectivity) {
    cv::Mat mask(14, 14, CV_8UC1, cv::Scalar(isIn ? 0 : 1)), labels;
    for (const auto &[y, x] : pixels)
        mask.at<uchar>(y + 1, x + 1) = isIn ? 1 : 0;
    std::map<int, Pixels> areas;
    cv::connectedComponents(mask, labels, connectivity);
    for (int i = 0; i < 14 * 14; ++i)
        if (mask.data[i] != 0)
            areas[labels.at<int>(i / 14, i % 14)].insert({i / 14 - 1, i % 14 - 1});
    std::vector<Pixels> sorted;
    for (const auto &[label, area] : areas)
        sorted.push_back(area);
    std::ranges::sort(sorted);
    return sorted;
}

TEST(OutlineTest, KnownShapesHaveKnownCorners) {
    CPointArrayArray outlines;
    outlines.Add(ToRegion(ToSet(Draw({"#.", ".#"}))).get());
    ASSERT_EQ(outlines.GetElementCount(), 2); // 4-connected: two parts that touch at (1, 1).
    EXPECT_EQ(PairsOf(outlines[0]), (Pairs{{0, 0}, {1, 0}, {1, 1}, {0, 1}}));
    EXPECT_EQ(PairsOf(outlines[1]), (Pairs{{1, 1}, {2, 1}, {2, 2}, {1, 2}}));
    outlines.RemoveAll();
    outlines.Add(ToRegion(ToSet(Draw({"####", "#..#", "####"}))).get());
    ASSERT_EQ(outlines.GetElementCount(), 2);
    EXPECT_EQ(PairsOf(outlines[1]), (Pairs{{1, 1}, {1, 2}, {3, 2}, {3, 1}}));
    outlines.Add(static_cast<HRGN>(nullptr));
    EXPECT_EQ(outlines.GetElementCount(), 2);
}

// Several parts, holes, islands in holes, touching corners, lines one pixel wide: noise has it all.
TEST(OutlineTest, RandomRegionsComeBackFromTheirOutlines) {
    std::mt19937 random(11);
    for (int round = 0; round < 600; ++round) {
        const auto percent = 10 + random() % 85;
        Pixels pixels;
        for (int i = 0; i < 144; ++i)
            if (random() % 100 < percent)
                pixels.insert({i / 12, i % 12});
        const RegionHandle region = ToRegion(pixels);
        CPointArrayArray outlines;
        outlines.Add(region.get());
        // One outline per 4-connected part, clockwise; one per 8-connected hole, the other way.
        // Together they are filled by the even-odd rule.
        const RegionHandle refilled(CreateRectRgn(0, 0, 0, 0));
        int parts = 0;
        for (int i = 0; i < outlines.GetElementCount(); ++i) {
            const RegionHandle part(outlines[i].CreatePolygonRgn());
            CombineRgn(refilled.get(), refilled.get(), part.get(), RGN_XOR);
            parts += SignedArea(outlines[i]) > 0;
        }
        EXPECT_EQ(EqualRgn(refilled.get(), region.get()), 1);
        EXPECT_EQ(parts, static_cast<int>(Areas(pixels, true, 4).size()));
        EXPECT_EQ(outlines.GetElementCount() - parts,
                  static_cast<int>(Areas(pixels, false, 8).size()) - 1);

        CPointArray joined;
        joined.Add(region.get());
        for (int mode : {ALTERNATE, WINDING}) {
            const RegionHandle filled(
                CreatePolygonRgn(joined.GetBufPtr(), joined.GetElementCount(), mode));
            EXPECT_TRUE(pixels.empty() ? !filled : EqualRgn(filled.get(), region.get()) == 1);
        }
    }
}

TEST(PointArrayShapeTest, HolesAndFillingAgreeWithAFloodFill) {
    std::mt19937 random(12);
    for (int round = 0; round < 300; ++round) {
        CPointArray points;
        for (int i = 0; i < 160; ++i) { // Unordered, with repetitions.
            points.Add(static_cast<int>(random() % 12), static_cast<int>(random() % 12));
        }
        const Pixels pixels = ToSet(points);
        std::vector<Pixels> holes = Areas(pixels, false, 8);
        holes.erase(holes.begin()); // The outside comes first.
        CPointArrayArray found;
        ASSERT_EQ(points.GetHoleArray(found), static_cast<int>(holes.size()));
        Pixels filled = pixels;
        for (int i = 0; i < found.GetElementCount(); ++i) {
            EXPECT_EQ(ToSet(found[i]), holes[static_cast<std::size_t>(i)]);
            filled.merge(ToSet(found[i]));
        }
        const int before = points.GetElementCount();
        const int added = points.FillInsidePoints();
        EXPECT_EQ(added, found.GetPointTotalCount());
        EXPECT_EQ(points.GetElementCount(), before + added);
        EXPECT_EQ(ToSet(points), filled);
    }
}

TEST(PointArrayShapeTest, TheBorderIsAClosedPathOfBorderPixels) {
    const CPointArray shape =
        Draw({"..###....", ".#####.#.", "###.####.", ".#####...", "..#......"});
    CPointArray border;
    const int count = shape.TraceBorder(border);
    ASSERT_EQ(count, border.GetElementCount());
    EXPECT_EQ(border[0], (tagPOINT{2, 0}));
    EXPECT_EQ(border[1], (tagPOINT{3, 0})); // Clockwise.
    // A pixel with a 4-neighbour in the outside, which a diagonal step may reach.
    Pixels expected = ToSet(shape);
    const Pixels outside = Areas(expected, false, 8).front();
    std::erase_if(expected, [&](const auto &p) {
        return !outside.count({p.first, p.second - 1}) && !outside.count({p.first, p.second + 1}) &&
               !outside.count({p.first - 1, p.second}) && !outside.count({p.first + 1, p.second});
    });
    EXPECT_EQ(ToSet(border), expected);
    for (int i = 0; i < count; ++i) {
        const tagPOINT &a = border[i], &b = border[(i + 1) % count];
        EXPECT_EQ(std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)), 1);
    }
    const CPointArray nested = Draw({"#####", "#...#", "#.#.#", "#...#", "#####"});
    EXPECT_EQ(nested.GetTraceBorderPoint(2, 2, border), 1);
    EXPECT_EQ(nested.GetTraceBorderPoint(4, 4, border), 16);
    EXPECT_EQ(nested.GetTraceBorderPoint(1, 1, border), 0);
    EXPECT_EQ(CPointArray().TraceBorder(border), 0);
    EXPECT_EQ(border.GetElementCount(), 16);
}

TEST(PointArrayShapeTest, RoundnessTellsDiscsFromOtherShapes) {
    CPointArray disc, square, bar;
    for (int y = -50; y <= 50; ++y)
        for (int x = -50; x <= 50; ++x)
            if (x * x + y * y <= 50 * 50)
                disc.Add(x, y);
    for (int i = 0; i < 10000; ++i) {
        square.Add(i % 100, i / 100);
        bar.Add(i % 1000, i / 1000);
    }
    const double pi = std::numbers::pi;
    EXPECT_NEAR(disc.GetRoundness(), 1.0, 0.02);
    EXPECT_NEAR(disc.GetRoundness2(), 1.0, 0.04);
    EXPECT_NEAR(square.GetRoundness(), std::sqrt(pi) / 2, 0.03);
    EXPECT_NEAR(bar.GetRoundness(), std::sqrt(4 * pi * 10000) / 2020, 0.01);
    EXPECT_NEAR(square.GetRoundness2(), std::sqrt(2 / pi), 1e-12);
    EXPECT_NEAR(bar.GetRoundness2(), std::sqrt(40000 / pi) / std::hypot(1000, 10), 1e-12);
    EXPECT_EQ(CPointArray().GetRoundness(), 0.0);
    EXPECT_EQ(CPointArray().GetRoundness2(), 0.0);
}

TEST(PointArrayShapeTest, FeretDiametersEqualAnExhaustiveSearch) {
    std::mt19937 random(13);
    for (int round = 0; round < 100; ++round) {
        CPointArray points;
        const auto count = 1 + random() % 8;
        const auto side = 1 + random() % 30;
        for (std::size_t i = 0; i < count; ++i)
            points.Add(static_cast<int>(random() % side), static_cast<int>(random() % side));
        const auto widthAt = [&](double degrees) {
            const double angle = degrees * std::numbers::pi / 180;
            double low = HUGE_VAL, high = -HUGE_VAL;
            for (const auto &[x, y] : PairsOf(points))
                for (int k = 0; k < 4; ++k) { // The corners of the pixel.
                    const double along =
                        (x + k % 2) * std::cos(angle) - (y + k / 2) * std::sin(angle);
                    low = std::min(low, along);
                    high = std::max(high, along);
                }
            return high - low;
        };
        TavixArray::_stDiameterInfo info{};
        ASSERT_EQ(points.GetDiameterInfo(info), 1);
        for (double degrees = 0; degrees < 180; degrees += 0.25) {
            EXPECT_LE(widthAt(degrees), info.maxDiameter + 1e-9);
            EXPECT_GE(widthAt(degrees), info.minDiameter - 1e-9);
        }
        EXPECT_NEAR(widthAt(info.maxAngle), info.maxDiameter, 1e-9);
        EXPECT_NEAR(widthAt(info.minAngle), info.minDiameter, 1e-9);
        EXPECT_NEAR(
            std::hypot(info.maxPoint1.x - info.maxPoint2.x, info.maxPoint1.y - info.maxPoint2.y),
            info.maxDiameter, 1e-9);
    }
    TavixArray::_stDiameterInfo untouched{7, 7, {}, {}, 7, 7};
    EXPECT_EQ(CPointArray().GetDiameterInfo(untouched), 0);
    EXPECT_EQ(untouched.maxDiameter, 7);
}

TEST(PointArrayShapeTest, TheImageShowsTheSetInItsBounds) {
    CPointArray points;
    points.Add(-3, 7);
    points.Add(1, 9);
    const std::unique_ptr<CTavixImage8> image(points.GetImage(200, 50));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetWidth(), 5);
    EXPECT_EQ(image->GetHeight(), 3);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(image->GetPixel(x, y), (x == 0 && y == 0) || (x == 4 && y == 2) ? 200 : 50);
    points.Add(INT32_MAX, INT32_MIN);
    EXPECT_EQ(points.GetImage(1, 0), nullptr);
    EXPECT_EQ(CPointArray().GetImage(1, 0), nullptr);
}

} // namespace
