#include "TAVIX20/image/tavix_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

namespace {

TEST(PlaneGeometryTest, AngleGrowsCounterClockwiseOnScreen) {
    constexpr int low = INT32_MIN, high = INT32_MAX;
    EXPECT_DOUBLE_EQ(CTavixImage::GetAngle(-7, 3, -3, -1), 45);
    EXPECT_DOUBLE_EQ(CTavixImage::GetAngle(high, high, low, low), 135);
    EXPECT_DOUBLE_EQ(CTavixImage::GetAngle(low, 0, high, 1),
                     360 - 180 / std::numbers::pi / 4294967295);
    std::mt19937 random(71);
    for (int round = 0; round < 3000; ++round) {
        const int shift = static_cast<int>(random() % 31);
        int p[4];
        for (int &coordinate : p)
            coordinate = static_cast<int>(random()) >> shift;
        const double dx = static_cast<double>(p[2]) - p[0];
        const double dy = static_cast<double>(p[3]) - p[1];
        double expected = std::atan2(-dy, dx) * 180.0 / std::numbers::pi;
        if (expected < 0)
            expected += 360.0;
        const double angle = CTavixImage::GetAngle(p[0], p[1], p[2], p[3]);
        ASSERT_NEAR(angle, dx == 0 && dy == 0 ? 0.0 : expected, 1e-10);
        ASSERT_GE(angle, 0.0);
        ASSERT_LT(angle, 360.0);
    }
}

TEST(PlaneGeometryTest, DistanceAndCentreOfALine) {
    EXPECT_EQ(CTavixImage::GetCenterFromLine(5, 5, 5, 5), (POINT{0, 0}));
    EXPECT_EQ(CTavixImage::GetCenterFromLine(6, 5, 5, 5), (POINT{5, 5}));
    EXPECT_EQ(CTavixImage::GetCenterFromLine(9, 0, 0, 0), (POINT{4, 0}));
    EXPECT_EQ(CTavixImage::GetCenterFromLine(2, 3, 2, -5), (POINT{2, -1}));
    EXPECT_EQ(CTavixImage::Distance(-2, 7, 3, -5), 13.0);
    EXPECT_DOUBLE_EQ(CTavixImage::Distance(0, 0, 1, 1), std::numbers::sqrt2);
    EXPECT_DOUBLE_EQ(CTavixImage::Distance(INT32_MIN, 0, INT32_MAX, 0), 4294967295.0);
}

TEST(PlaneGeometryTest, PointInRectangleTestsTheFirstCorner) {
    for (const int x1 : {10, 20})
        for (const int y1 : {10, 20})
            for (const auto &[x, y] : {std::pair(10, 10), {11, 10}, {10, 11}})
                EXPECT_EQ(CTavixImage::PtInRectangle(x1, y1, 30 - x1, 30 - y1, x, y), x == y)
                    << x1 << ", " << y1;
}

int PtInPolygon(const std::vector<tagPOINT> &polygon, int x, int y) {
    return CTavixImage::PtInPolygon(polygon.data(), static_cast<unsigned>(polygon.size()), {x, y});
}

TEST(PlaneGeometryTest, PointInPolygonByHand) {
    constexpr int low = INT32_MIN, high = INT32_MAX;
    const std::vector<tagPOINT> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::vector<tagPOINT> huge{{low, low}, {high, low}, {high, high}, {low, high}};
    EXPECT_EQ(PtInPolygon(square, 0, 5), 0);
    EXPECT_EQ(PtInPolygon(square, 10, 5), 1);
    EXPECT_EQ(PtInPolygon(huge, low, 0), 0);
    EXPECT_EQ(PtInPolygon(huge, high, high - 1), 1);
    // Edges that end on the row are not crossed: all of a diamond's, two of an arrow's.
    EXPECT_EQ(PtInPolygon({{5, 0}, {10, 5}, {5, 10}, {0, 5}}, 5, 5), 0);
    EXPECT_EQ(PtInPolygon({{0, 0}, {10, 5}, {0, 10}}, 20, 5), 1);
    EXPECT_EQ(PtInPolygon({}, 0, 0), 0);
    EXPECT_EQ(CTavixImage::PtInPolygon(nullptr, 3, {0, 0}), 0);
}

TEST(PlaneGeometryTest, PointInPolygonCountsCrossingsExactly) {
    std::mt19937 random(72);
    const auto next = [&] { return std::uniform_int_distribution(-9, 9)(random); };
    for (int round = 0; round < 100000; ++round) {
        std::vector<tagPOINT> polygon(3 + random() % 7);
        for (tagPOINT &point : polygon)
            point = {next(), next()};
        const int x = next(), y = next();
        int crossings = 0;
        bool onEdge = false;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            tagPOINT a = polygon[i], b = polygon[(i + 1) % polygon.size()];
            if (a.y > b.y)
                std::swap(a, b);
            if (a.y < y && y < b.y) {
                // Positive when the edge meets the row left of the point.
                const int side = (x - a.x) * (b.y - a.y) - (y - a.y) * (b.x - a.x);
                crossings += side > 0 ? 1 : 0;
                onEdge = onEdge || side == 0;
            }
        }
        if (!onEdge) {
            ASSERT_EQ(PtInPolygon(polygon, x, y), crossings % 2) << round;
        }
    }
}

TEST(PlaneGeometryTest, RotationTurnsClockwiseOnScreen) {
    using Point = std::complex<double>;
    const auto expectTurns = [](Point point, double degrees, Point centre, Point to) {
        double x = 0;
        double y = 0;
        CTavixImage::RotatePoint(point.real(), point.imag(), degrees, centre.real(), centre.imag(),
                                 &x, &y);
        EXPECT_NEAR(std::abs(Point(x, y) - to), 0.0, 1e-12) << degrees;
    };
    expectTurns({10, 0}, -90, {0, 0}, {0, -10});
    expectTurns({7, 3}, 90, {5, 3}, {5, 5});
    expectTurns({2, 0}, 30, {0, 0}, {std::numbers::sqrt3, 1});
    expectTurns({1, 2}, 45, {0, 0}, {-std::numbers::sqrt2 / 2, 3 * std::numbers::sqrt2 / 2});
}

} // namespace
