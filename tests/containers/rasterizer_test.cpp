#include "TAVIX20/image/tavix_image.h"

#include "containers/point_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <set>

namespace {

using TavixArray::CPointArray;

bool AreNeighbours(const std::pair<int, int> &a, const std::pair<int, int> &b) {
    return a != b && std::abs(a.first - b.first) <= 1 && std::abs(a.second - b.second) <= 1;
}

/// The line's pixels by the closed form: on step i along the longer axis the other coordinate has
/// moved by i * shorter / longer, rounded to nearest, halves onwards.
Pairs LineByFormula(int x1, int y1, int x2, int y2) {
    const std::int64_t dx = std::abs(x2 - x1);
    const std::int64_t dy = std::abs(y2 - y1);
    const std::int64_t longer = std::max<std::int64_t>({dx, dy, 1});
    Pairs pixels;
    for (std::int64_t i = 0; i <= std::max(dx, dy); ++i) {
        const auto alongX = static_cast<int>((2 * i * dx + longer) / (2 * longer));
        const auto alongY = static_cast<int>((2 * i * dy + longer) / (2 * longer));
        pixels.emplace_back(x2 < x1 ? x1 - alongX : x1 + alongX,
                            y2 < y1 ? y1 - alongY : y1 + alongY);
    }
    return pixels;
}

TEST(RasterizerTest, LinesTakeTheNearestPixels) {
    const auto expectLine = [](int x1, int y1, int x2, int y2) {
        CPointArray points;
        const Pairs expected = LineByFormula(x1, y1, x2, y2);
        ASSERT_EQ(CTavixImage::GetLineSegment2(x1, y1, x2, y2, points),
                  static_cast<int>(expected.size()));
        ASSERT_EQ(PairsOf(points), expected);
        ASSERT_EQ(expected.front(), std::pair(x1, y1));
        ASSERT_EQ(expected.back(), std::pair(x2, y2));
    };
    for (int dy = -13; dy <= 13; ++dy)
        for (int dx = -13; dx <= 13; ++dx)
            ASSERT_NO_FATAL_FAILURE(expectLine(3, -5, 3 + dx, -5 + dy)) << dx << ", " << dy;
    std::mt19937 random(81);
    std::uniform_int_distribution<int> coordinate(-20000, 20000);
    for (int round = 0; round < 40; ++round)
        ASSERT_NO_FATAL_FAILURE(expectLine(coordinate(random), coordinate(random),
                                           coordinate(random), coordinate(random)));
}

TEST(RasterizerTest, LinesAtTheEndsOfTheRange) {
    CPointArray points = ArrayOf({{7, 7}});
    EXPECT_EQ(
        CTavixImage::GetLineSegment2(INT32_MAX - 2, INT32_MIN + 1, INT32_MAX, INT32_MIN, points),
        3);
    EXPECT_EQ(PairsOf(points), (Pairs{{7, 7},
                                      {INT32_MAX - 2, INT32_MIN + 1},
                                      {INT32_MAX - 1, INT32_MIN},
                                      {INT32_MAX, INT32_MIN}}));
    EXPECT_EQ(CTavixImage::GetLineSegment2(INT32_MIN, 0, INT32_MAX, 0, points), 0);
    EXPECT_EQ(CTavixImage::GetLineSegment2(0, INT32_MAX, 0, 0, points), 0);
    EXPECT_EQ(points.GetElementCount(), 4);
}

TEST(RasterizerTest, CentreOfALine) {
    const struct {
        int x1, y1, x2, y2;
        POINT expected;
    } cases[] = {
        {5, 5, 5, 5, {0, 0}},   {5, 5, 6, 5, {6, 5}},   {6, 5, 5, 5, {5, 5}},
        {0, 0, 10, 0, {5, 0}},  {0, 0, 9, 0, {5, 0}},   {9, 0, 0, 0, {4, 0}},
        {2, 3, 2, -5, {2, -1}}, {-4, -4, 4, 4, {0, 0}}, {1, 1, 9, 5, {5, 3}},
    };
    for (const auto &c : cases) {
        const POINT centre = CTavixImage::GetCenterFromLine(c.x1, c.y1, c.x2, c.y2);
        EXPECT_EQ(std::pair(centre.x, centre.y), std::pair(c.expected.x, c.expected.y))
            << c.x1 << "," << c.y1 << " " << c.x2 << "," << c.y2;
    }
}

/// Direction of a pixel from the centre, counter-clockwise on screen, 0 <= result < 360.
double DegreesOf(const std::pair<int, int> &pixel, int cx, int cy) {
    const double degrees =
        std::atan2(cy - pixel.second, pixel.first - cx) * 180.0 / std::numbers::pi;
    return degrees < 0 ? degrees + 360.0 : degrees;
}

/// The pixels less than half a pixel from the circle, measured along the axis on which it is
/// flatter, about the origin.
std::set<std::pair<int, int>> CircleByFormula(int radius) {
    std::set<std::pair<int, int>> pixels;
    const auto isNearest = [&](int along, int across) {
        const int rest = 4 * (radius * radius - across * across);
        return (2 * along - 1) * (2 * along - 1) < rest && rest < (2 * along + 1) * (2 * along + 1);
    };
    for (int y = -radius; y <= radius; ++y)
        for (int x = -radius; x <= radius; ++x) {
            const int longer = std::max(std::abs(x), std::abs(y));
            const int shorter = std::min(std::abs(x), std::abs(y));
            if (longer > 0 && isNearest(longer, shorter))
                pixels.emplace(x, y);
        }
    return pixels;
}

Pairs Arc(int cx, int cy, int radius, double start, double end) {
    CPointArray points;
    const int count = CTavixImage::GetArcSegment(cx, cy, radius, start, end, points);
    EXPECT_EQ(count, points.GetElementCount());
    return PairsOf(points);
}

TEST(RasterizerTest, CirclesAreClosedOutlinesOfTheNearestPixels) {
    constexpr int cx = 17;
    constexpr int cy = -9;
    for (int radius = 1; radius <= 100; ++radius) {
        SCOPED_TRACE(radius);
        const Pairs outline = Arc(cx, cy, radius, 0, 360);
        std::set<std::pair<int, int>> pixels;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            pixels.emplace(outline[i].first - cx, outline[i].second - cy);
            ASSERT_TRUE(AreNeighbours(outline[i], outline[(i + 1) % outline.size()])) << i;
            if (i > 0) {
                ASSERT_GT(DegreesOf(outline[i], cx, cy), DegreesOf(outline[i - 1], cx, cy)) << i;
            }
        }
        ASSERT_EQ(outline.front(), std::pair(cx + radius, cy));
        ASSERT_EQ(pixels.size(), outline.size());
        ASSERT_EQ(pixels, CircleByFormula(radius));
    }
    EXPECT_EQ(Arc(cx, cy, 0, 0, 360), (Pairs{{cx, cy}}));
}

TEST(RasterizerTest, ArcsAreRunsOfTheCircle) {
    std::mt19937 random(82);
    std::uniform_real_distribution<double> angle(-720.0, 720.0);
    for (int round = 0; round < 3000; ++round) {
        const int radius = 1 + static_cast<int>(random() % 60);
        const Pairs circle = Arc(4, 5, radius, 0, 360);
        const double start = angle(random);
        const double sweep = std::fmod(std::abs(angle(random)), 360.0);
        // Walk once around from the first pixel past the start.
        const double from = start - 360.0 * std::floor(start / 360.0);
        std::size_t first = 0;
        while (first < circle.size() && DegreesOf(circle[first], 4, 5) < from)
            ++first;
        Pairs expected;
        for (std::size_t i = 0; i < circle.size(); ++i) {
            const auto &pixel = circle[(first + i) % circle.size()];
            double along = DegreesOf(pixel, 4, 5) - from;
            along = along < 0 ? along + 360.0 : along;
            if (i == 0 || along <= sweep)
                expected.push_back(pixel);
        }
        ASSERT_EQ(Arc(4, 5, radius, start, start + sweep), expected)
            << radius << ": " << start << " + " << sweep;
    }
}

TEST(RasterizerTest, ArcsReachTheAxisAndDiagonalPoints) {
    const std::pair<int, int> axis[] = {{27, 3}, {7, -17}, {-13, 3}, {7, 23}};
    for (int quarter = 0; quarter < 8; ++quarter)
        for (int sweep = 0; sweep < 4; ++sweep) {
            const Pairs arc = Arc(7, 3, 20, 90.0 * (quarter - 4), 90.0 * (quarter - 4 + sweep));
            ASSERT_FALSE(arc.empty());
            EXPECT_EQ(arc.front(), axis[quarter % 4]) << quarter << ", " << sweep;
            EXPECT_EQ(arc.back(), axis[(quarter + sweep) % 4]) << quarter << ", " << sweep;
        }
    // Radius 5 passes through (3, 4), not through a diagonal pixel; radius 1 has axis points only.
    EXPECT_EQ(Arc(0, 0, 1, 0, 359), (Pairs{{1, 0}, {0, -1}, {-1, 0}, {0, 1}}));
    EXPECT_EQ(Arc(0, 0, 5, 0, 90),
              (Pairs{{5, 0}, {5, -1}, {5, -2}, {4, -3}, {3, -4}, {2, -5}, {1, -5}, {0, -5}}));
    EXPECT_EQ(Arc(0, 0, 3, 45, 45), (Pairs{{2, -2}}));
    EXPECT_EQ(Arc(0, 0, 1, 10, 20), (Pairs{{0, -1}}));
    EXPECT_EQ(Arc(0, 0, 1, 350, 10), (Pairs{{1, 0}}));
}

TEST(RasterizerTest, WholeTurnsAndMoreGiveTheCircleOnce) {
    const Pairs circle = Arc(0, 0, 9, 0, 360);
    for (const double end : {360.0, 400.0, 7200.0, 1e300})
        EXPECT_EQ(Arc(0, 0, 9, 0, end), circle) << end;
    const Pairs fromTop = Arc(0, 0, 9, 90, 450);
    EXPECT_EQ(fromTop.front(), std::pair(0, -9));
    EXPECT_EQ(fromTop.size(), circle.size());
}

TEST(RasterizerTest, ArcsWithoutAShapeAddNothing) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(Arc(0, 0, -1, 0, 360).empty());
    EXPECT_TRUE(Arc(0, 0, (1 << 27) + 1, 0, 360).empty());
    EXPECT_TRUE(Arc(0, 0, INT32_MIN, 0, 360).empty());
    EXPECT_TRUE(Arc(0, 0, 5, none, 360).empty());
    EXPECT_TRUE(Arc(0, 0, 5, 0, none).empty());
    EXPECT_TRUE(Arc(0, 0, 5, 0, endless).empty());
    EXPECT_TRUE(Arc(0, 0, 5, -endless, 0).empty());
}

TEST(RasterizerTest, PointInCircleIsThePolygonOfItsOutline) {
    for (const int radius : {0, 1, 2, 3, 5, 8, 33}) {
        CPointArray outline;
        CTavixImage::GetArcSegment(3, -2, radius, 0, 359, outline);
        const RegionHandle region(outline.CreatePolygonRgn());
        for (int y = -radius - 3; y <= radius + 3; ++y)
            for (int x = -radius - 3; x <= radius + 3; ++x) {
                const int inside = CTavixImage::PtInCycle(3, -2, radius, 3 + x, -2 + y);
                ASSERT_EQ(inside, PtInRegion(region.get(), 3 + x, -2 + y)) << x << ", " << y;
                const double distance = std::hypot(x, y);
                if (distance <= radius - 1.5) {
                    ASSERT_EQ(inside, 1) << x << ", " << y;
                }
                if (distance >= radius + 0.5) {
                    ASSERT_EQ(inside, 0) << x << ", " << y;
                }
            }
    }
    EXPECT_EQ(CTavixImage::PtInCycle(0, 0, -1, 0, 0), 0);
}

} // namespace
