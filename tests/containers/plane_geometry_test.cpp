#include "TAVIX20/image/tavix_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace {

TEST(PlaneGeometryTest, AngleGrowsCounterClockwiseOnScreen) {
    const struct {
        int x1, y1, x2, y2;
        double degrees;
    } cases[] = {
        {0, 0, 10, 0, 0},
        {0, 0, 10, -10, 45},
        {0, 0, 0, -10, 90},
        {0, 0, -10, -10, 135},
        {0, 0, -10, 0, 180},
        {0, 0, -10, 10, 225},
        {0, 0, 0, 10, 270},
        {0, 0, 10, 10, 315},
        {5, 5, 5, 5, 0},
        {7, -3, 7, -4, 90},
        {-7, 3, -10, 3, 180},
        {INT32_MIN, 0, INT32_MAX, 0, 0},
        {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN, 135},
    };
    for (const auto &c : cases)
        EXPECT_DOUBLE_EQ(CTavixImage::GetAngle(c.x1, c.y1, c.x2, c.y2), c.degrees)
            << c.x1 << "," << c.y1 << " " << c.x2 << "," << c.y2;

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

TEST(PlaneGeometryTest, Distance) {
    EXPECT_EQ(CTavixImage::Distance(0, 0, 3, 4), 5.0);
    EXPECT_EQ(CTavixImage::Distance(-2, 7, 3, -5), 13.0);
    EXPECT_EQ(CTavixImage::Distance(4, 4, 4, 4), 0.0);
    EXPECT_DOUBLE_EQ(CTavixImage::Distance(0, 0, 1, 1), std::numbers::sqrt2);
    EXPECT_DOUBLE_EQ(CTavixImage::Distance(INT32_MIN, 0, INT32_MAX, 0), 4294967295.0);
}

TEST(PlaneGeometryTest, PointInRectangleTestsTheFirstCorner) {
    const struct {
        int x1, y1, x2, y2, px, py, expected;
    } cases[] = {
        {10, 10, 20, 20, 15, 15, 0}, {10, 10, 20, 20, 5, 5, 1},   {20, 20, 10, 10, 10, 10, 1},
        {10, 10, 20, 20, 10, 10, 1}, {10, 10, 20, 20, 11, 10, 0}, {10, 10, 20, 20, 10, 11, 0},
        {20, 10, 10, 20, 10, 10, 1}, {20, 10, 10, 20, 11, 5, 0},  {10, 20, 20, 10, 5, 11, 0},
        {10, 20, 20, 10, 5, 10, 1},  {10, 10, 20, 20, 25, 25, 0}, {10, 10, 20, 20, -99, -99, 1},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CTavixImage::PtInRectangle(c.x1, c.y1, c.x2, c.y2, c.px, c.py), c.expected)
            << c.x1 << "," << c.y1 << "," << c.x2 << "," << c.y2 << " " << c.px << "," << c.py;
}

int PtInPolygon(const std::vector<tagPOINT> &polygon, int x, int y) {
    return CTavixImage::PtInPolygon(polygon.data(), static_cast<unsigned>(polygon.size()), {x, y});
}

TEST(PlaneGeometryTest, PointInPolygonByHand) {
    const std::vector<tagPOINT> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::vector<tagPOINT> diamond{{5, 0}, {10, 5}, {5, 10}, {0, 5}};
    const std::vector<tagPOINT> arrow{{0, 0}, {10, 5}, {0, 10}};
    const struct {
        const char *name;
        const std::vector<tagPOINT> &polygon;
        int x, y, expected;
    } cases[] = {
        {"inside", square, 5, 5, 1},
        {"right of it", square, 15, 5, 0},
        {"left of it", square, -5, 5, 0},
        {"on the left edge", square, 0, 5, 0},
        {"on the right edge", square, 10, 5, 1},
        {"on the row of the top edge", square, 5, 0, 0},
        {"on the row of the bottom edge", square, 5, 10, 0},
        {"every edge ends on the row", diamond, 5, 5, 0},
        {"next row", diamond, 5, 6, 1},
        {"one edge crosses the tip's row", arrow, 5, 5, 1},
        {"beyond the tip, still one crossing", arrow, 20, 5, 1},
        {"left of all", arrow, -1, 5, 0},
        {"no points", {}, 0, 0, 0},
        {"one point", {{0, 0}}, 0, 0, 0},
        {"two points", {{0, -5}, {0, 5}}, 3, 0, 0},
    };
    for (const auto &c : cases)
        EXPECT_EQ(PtInPolygon(c.polygon, c.x, c.y), c.expected) << c.name;
    EXPECT_EQ(CTavixImage::PtInPolygon(nullptr, 3, {0, 0}), 0);

    const std::vector<tagPOINT> huge{{INT32_MIN, INT32_MIN},
                                     {INT32_MAX, INT32_MIN},
                                     {INT32_MAX, INT32_MAX},
                                     {INT32_MIN, INT32_MAX}};
    EXPECT_EQ(PtInPolygon(huge, 0, 0), 1);
    EXPECT_EQ(PtInPolygon(huge, INT32_MAX, INT32_MAX - 1), 1);
    EXPECT_EQ(PtInPolygon(huge, INT32_MIN, 0), 0);
}

TEST(PlaneGeometryTest, PointInPolygonCountsCrossingsExactly) {
    std::mt19937 random(72);
    std::uniform_int_distribution<int> coordinate(-12, 13);
    for (int round = 0; round < 400; ++round) {
        std::vector<tagPOINT> polygon(3 + random() % 7);
        for (tagPOINT &point : polygon)
            point = {coordinate(random), coordinate(random)};
        for (int y = -14; y < 15; ++y)
            for (int x = -14; x < 15; ++x) {
                int crossings = 0;
                bool onEdge = false;
                for (std::size_t i = 0; i < polygon.size(); ++i) {
                    const tagPOINT &a = polygon[i];
                    const tagPOINT &b = polygon[(i + 1) % polygon.size()];
                    if ((a.y < y && b.y > y) || (a.y > y && b.y < y)) {
                        // Positive when the edge meets the row left of the point.
                        const int side = ((x - a.x) * (b.y - a.y) - (y - a.y) * (b.x - a.x)) *
                                         (b.y > a.y ? 1 : -1);
                        crossings += side > 0 ? 1 : 0;
                        onEdge = onEdge || side == 0;
                    }
                }
                if (!onEdge) {
                    ASSERT_EQ(PtInPolygon(polygon, x, y), crossings % 2) << x << ", " << y;
                }
            }
    }
}

TEST(PlaneGeometryTest, RotationTurnsClockwiseOnScreen) {
    const struct {
        double x, y, degrees, cx, cy, outX, outY;
    } cases[] = {
        {10, 0, 90, 0, 0, 0, 10},
        {10, 0, -90, 0, 0, 0, -10},
        {10, 0, 180, 0, 0, -10, 0},
        {7, 3, 90, 5, 3, 5, 5},
        {7, 3, 360, 5, 3, 7, 3},
        {5.5, 3.25, 77, 5.5, 3.25, 5.5, 3.25},
        {2, 0, 30, 0, 0, std::numbers::sqrt3, 1},
        {1, 2, 45, 0, 0, -std::numbers::sqrt2 / 2, 3 * std::numbers::sqrt2 / 2},
    };
    for (const auto &c : cases) {
        double x = 0;
        double y = 0;
        CTavixImage::RotatePoint(c.x, c.y, c.degrees, c.cx, c.cy, &x, &y);
        EXPECT_NEAR(x, c.outX, 1e-12) << c.degrees;
        EXPECT_NEAR(y, c.outY, 1e-12) << c.degrees;
    }
}

} // namespace
