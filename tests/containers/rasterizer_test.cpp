#include "TAVIX20/image/tavix_image.h"

#include "containers/point_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <set>

namespace {

using TavixArray::CPointArray;

/// On step i along the longer axis both coordinates have moved by i * distance / longer, rounded to
/// nearest, halves onwards.
void ExpectLine(int x1, int y1, int x2, int y2) {
    const std::int64_t longer = std::max(std::abs(x2 - x1), std::abs(y2 - y1));
    const auto moved = [&](std::int64_t i, int from, int to) {
        const std::int64_t way =
            longer > 0 ? (2 * i * std::abs(to - from) + longer) / (2 * longer) : 0;
        return static_cast<int>(to < from ? from - way : from + way);
    };
    Pairs expected;
    for (std::int64_t i = 0; i <= longer; ++i)
        expected.emplace_back(moved(i, x1, x2), moved(i, y1, y2));
    CPointArray points;
    ASSERT_EQ(CTavixImage::GetLineSegment2(x1, y1, x2, y2, points), longer + 1);
    ASSERT_EQ(PairsOf(points), expected) << x2 - x1 << ", " << y2 - y1;
    // The pixels of the other kind of line do not depend on its direction.
    CPointArray there, back;
    ASSERT_EQ(CTavixImage::GetLineSegment(x1, y1, x2, y2, there), longer + 1);
    CTavixImage::GetLineSegment(x2, y2, x1, y1, back);
    ASSERT_EQ(there[0], (tagPOINT{x1, y1}));
    back.ReverseElements();
    ASSERT_EQ(there == back, 1);
}

TEST(RasterizerTest, LinesTakeTheNearestPixels) {
    for (int dy = -13; dy <= 13; ++dy)
        for (int dx = -13; dx <= 13; ++dx)
            ASSERT_NO_FATAL_FAILURE(ExpectLine(3, -5, 3 + dx, -5 + dy));
    ASSERT_NO_FATAL_FAILURE(ExpectLine(-20000, 19999, 17001, -3));
}

TEST(RasterizerTest, LinesAtTheEndsOfTheRange) {
    constexpr int low = INT32_MIN;
    constexpr int high = INT32_MAX;
    CPointArray points = ArrayOf({{7, 7}});
    EXPECT_EQ(CTavixImage::GetLineSegment2(high - 2, low + 1, high, low, points), 3);
    EXPECT_EQ(CTavixImage::GetLineSegment2(low, 0, high, 0, points), 0);
    EXPECT_EQ(CTavixImage::GetLineSegment2(0, high, 0, 0, points), 0);
    EXPECT_EQ(PairsOf(points), (Pairs{{7, 7}, {high - 2, low + 1}, {high - 1, low}, {high, low}}));
}

/// Direction of a pixel from the origin, counter-clockwise on screen, 0 <= result < 360.
double DegreesOf(const std::pair<int, int> &pixel) {
    const double degrees = std::atan2(-pixel.second, pixel.first) * 180.0 / std::numbers::pi;
    return degrees < 0 ? degrees + 360.0 : degrees;
}

/// The pixels less than half a pixel from the circle about the origin, measured along the axis on
/// which it is flatter, by direction.
Pairs CircleByFormula(int radius) {
    Pairs pixels;
    for (int y = -radius; y <= radius; ++y)
        for (int x = -radius; x <= radius; ++x) {
            const int longer = 2 * std::max(std::abs(x), std::abs(y));
            const int shorter = 2 * std::min(std::abs(x), std::abs(y));
            const int rest = 4 * radius * radius - shorter * shorter;
            if ((longer - 1) * (longer - 1) < rest && rest < (longer + 1) * (longer + 1))
                pixels.emplace_back(x, y);
        }
    std::ranges::sort(pixels, {}, DegreesOf);
    return pixels;
}

/// The arc about (4, -5), relative to that centre.
Pairs Arc(int radius, double start, double end) {
    CPointArray points;
    const int count = CTavixImage::GetArcSegment(4, -5, radius, start, end, points);
    EXPECT_EQ(count, points.GetElementCount());
    points.Offset(-4, 5);
    return PairsOf(points);
}

TEST(RasterizerTest, ArcsAreRunsOfTheNearestPixels) {
    std::mt19937 random(82);
    std::uniform_real_distribution<double> angle(-720.0, 720.0);
    for (int round = 0; round < 3000; ++round) {
        const int radius = 1 + round % 100;
        // Both limits belong to the arc: every other arc begins and ends at pixels on the axes.
        const double step = random() % 2 == 0 ? 90.0 : 1e-6;
        const double start = step * std::floor(angle(random) / step);
        const double sweep = step * std::floor(std::fmod(angle(random) + 720.0, 360.0) / step);
        const auto along = [&](const std::pair<int, int> &pixel) {
            return std::fmod(DegreesOf(pixel) - start + 1440.0, 360.0);
        };
        Pairs expected = CircleByFormula(radius);
        ASSERT_EQ(Arc(radius, 0, 360), expected) << radius;
        // An arc too short for a pixel gives the first one past its start.
        std::ranges::sort(expected, {}, along);
        while (expected.size() > 1 && along(expected.back()) > sweep)
            expected.pop_back();
        ASSERT_EQ(Arc(radius, start, start + sweep), expected)
            << radius << ": " << start << " + " << sweep;
    }
    EXPECT_EQ(Arc(3, 45, 45), (Pairs{{2, -2}}));
}

TEST(RasterizerTest, WholeTurnsGiveTheCircleOnceAndWhatHasNoShapeNothing) {
    const Pairs circle = CircleByFormula(9);
    for (const double end : {400.0, 7200.0, 1e300})
        EXPECT_EQ(Arc(9, 0, end), circle) << end;
    const Pairs fromTop = Arc(9, 90, 450);
    EXPECT_EQ(fromTop.front(), std::pair(0, -9));
    EXPECT_EQ(fromTop.size(), circle.size());

    EXPECT_EQ(Arc(0, 0, 360), (Pairs{{0, 0}}));
    EXPECT_TRUE(Arc(-1, 0, 360).empty());
    for (const double odd : {std::nan(""), HUGE_VAL}) {
        EXPECT_TRUE(Arc(5, 0, odd).empty()) << odd;
        EXPECT_TRUE(Arc(5, -odd, 0).empty()) << odd;
    }
}

TEST(RasterizerTest, PointInCircleIsThePolygonOfItsOutline) {
    for (const int radius : {0, 1, 2, 3, 5, 8, 33}) {
        const CPointArray outline = ArrayOf(Arc(radius, 0, 359));
        for (int y = -radius - 3; y <= radius + 3; ++y)
            for (int x = -radius - 3; x <= radius + 3; ++x) {
                const int inside = CTavixImage::PtInCycle(3, -2, radius, 3 + x, -2 + y);
                ASSERT_EQ(inside, outline.PtInPolygon(x, y)) << radius << ": " << x << ", " << y;
            }
    }
    EXPECT_EQ(CTavixImage::PtInCycle(0, 0, -1, 0, 0), 0);
}

TEST(RasterizerTest, EllipsesAreClosedWithoutDuplicatesAndNearTheCurve) {
    for (int a = 1; a <= 40; ++a)
        for (int b = 1; b <= 40; ++b) {
            SCOPED_TRACE(testing::Message() << a << " x " << b);
            CPointArray points;
            const int count = CTavixImage::GetEllipseSegment(3, -5, a, b, points);
            ASSERT_EQ(count, points.GetElementCount());
            points.Offset(-3, 5);
            ASSERT_EQ(points[0], (tagPOINT{a, 0}));
            std::set<std::pair<int, int>> seen;
            for (int i = 0; i < count; ++i) {
                const tagPOINT &p = points[i], &next = points[(i + 1) % count];
                ASSERT_TRUE(seen.insert({p.x, p.y}).second);
                ASSERT_LE(std::max(std::abs(p.x - next.x), std::abs(p.y - next.y)), 1);
                // Along a row or a column the curve is at most half a pixel away, but for the
                // pixels beside the tip of a thin ellipse.
                const double x = std::abs(p.x), y = std::abs(p.y);
                const double byRow = std::abs(x - a * std::sqrt(1 - y * y / (b * b)));
                const double byColumn = std::abs(y - b * std::sqrt(1 - x * x / (a * a)));
                ASSERT_TRUE(std::min(byRow, byColumn) <= 0.5 || x == 1 || y == 1);
            }
            for (const auto &axis : {std::pair{-a, 0}, {0, b}, {0, -b}})
                ASSERT_TRUE(seen.count(axis));
        }
}

TEST(RasterizerTest, EllipseArcsAndBadSizes) {
    CPointArray arc, flat, circle;
    const int count = CTavixImage::GetEllipseSegment(0, 0, 30, 10, 90, 180, arc);
    EXPECT_EQ(count, arc.GetElementCount());
    EXPECT_EQ(arc[0], (tagPOINT{0, -10})); // Up is 90 degrees.
    EXPECT_EQ(arc[count - 1], (tagPOINT{-30, 0}));
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 4, 0, flat), 9);
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 0, 0, flat), 1);
    EXPECT_EQ(CTavixImage::GetCycleSegment(0, 0, 1, circle), 4);
    for (int bad : {-1, (1 << 27) + 1})
        EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, bad, 5, flat), 0);
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 5, 5, NAN, 5, flat), 0);
    EXPECT_EQ(flat.GetElementCount(), 10);
}

} // namespace
