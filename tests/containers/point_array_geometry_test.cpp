#include "TAVIX20/containers/point_array.h"

#include "containers/point_list.h"
#include "platform/polygon_reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using TavixArray::CPointArray;

CPointArray ArrayOf(const std::vector<POINT> &points) {
    return CPointArray(points.data(), static_cast<int>(points.size()));
}

TEST(PointArrayGeometryTest, BoundsCentreAndAverages) {
    const struct {
        const char *name;
        Pairs points;
        CRect bounds;
        CPoint centre;
        CPoint average;
    } cases[] = {
        {"empty", {}, {0, 0, 0, 0}, {0, 0}, {0, 0}},
        {"one", {{3, 4}}, {3, 4, 3, 4}, {3, 4}, {3, 4}},
        {"negative", {{-5, -7}, {-2, -9}}, {-5, -9, -2, -7}, {-4, -8}, {-3, -8}},
        {"below a half", {{0, 0}, {0, 0}, {1, -1}}, {0, -1, 1, 0}, {0, 0}, {0, 0}},
        {"above a half", {{0, 0}, {1, -1}, {1, -1}}, {0, -1, 1, 0}, {1, -1}, {0, 0}},
        {"halves", {{0, 0}, {1, -1}}, {0, -1, 1, 0}, {1, -1}, {0, 0}},
        {"extremes last", {{1, 1}, {9, -9}, {-9, 9}}, {-9, -9, 9, 9}, {0, 0}, {0, 0}},
        {"huge",
         {{INT32_MAX, INT32_MIN}, {INT32_MAX, INT32_MIN}, {INT32_MAX, INT32_MIN}},
         {INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN},
         {INT32_MAX, INT32_MIN},
         {INT32_MAX, INT32_MIN}},
    };
    for (const auto &c : cases) {
        const CPointArray array = ::ArrayOf(c.points);
        EXPECT_EQ(array.GetBounds(), c.bounds) << c.name;
        EXPECT_EQ(CPointArray::GetBounds(array.GetBufPtr(), array.GetElementCount()), c.bounds);
        EXPECT_EQ(array.CenterPoint(), c.centre) << c.name;
        EXPECT_EQ(array.GetAverageX(), c.average.x) << c.name;
        EXPECT_EQ(array.GetAverageY(), c.average.y) << c.name;
    }
    EXPECT_EQ(CPointArray::GetBounds(nullptr, 4), CRect());
}

TEST(PointArrayGeometryTest, OffsetAndScale) {
    CPointArray array = ::ArrayOf({{3, -3}, {INT32_MAX, INT32_MIN}, {5, 7}});
    array.Offset(1, -1);
    EXPECT_EQ(PairsOf(array), (Pairs{{4, -4}, {INT32_MIN, INT32_MAX}, {6, 6}}));

    array = ::ArrayOf({{3, -3}, {10, 7}, {-1, 1}});
    array.Scale(0.5, 0.5);
    EXPECT_EQ(PairsOf(array), (Pairs{{2, -2}, {5, 4}, {-1, 1}}));
    array = ::ArrayOf({{10, 10}, {-7, 0}});
    array.Scale(-1.26, 0.24);
    EXPECT_EQ(PairsOf(array), (Pairs{{-13, 2}, {9, 0}}));
    array = ::ArrayOf({{10, -10}, {0, 1}});
    array.Scale(1e12, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(PairsOf(array), (Pairs{{INT32_MAX, 0}, {0, 0}}));
}

/// Compares the point test with the region on the columns around every edge of every row.
void ExpectAgreesWithRegion(const std::vector<POINT> &polygon) {
    const CPointArray array = ArrayOf(polygon);
    const RegionHandle region(array.CreatePolygonRgn());
    const RegionHandle platform(
        CreatePolygonRgn(polygon.data(), static_cast<int>(polygon.size()), WINDING));
    ASSERT_NE(region, nullptr);
    ASSERT_EQ(EqualRgn(region.get(), platform.get()), 1);
    const CRect bounds = array.GetBounds();
    for (int y = bounds.top - 1; y <= bounds.bottom + 1; ++y) {
        std::vector<int> columns{bounds.left, bounds.right};
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const POINT a = polygon[i];
            const POINT b = polygon[(i + 1) % polygon.size()];
            columns.push_back(a.x);
            if (a.y != b.y && y >= std::min(a.y, b.y) && y <= std::max(a.y, b.y))
                columns.push_back(a.x + static_cast<int>((std::int64_t{y} - a.y) *
                                                         (std::int64_t{b.x} - a.x) / (b.y - a.y)));
        }
        for (const int column : columns)
            for (int x = column - 1; x <= column + 1; ++x) {
                const int expected = PtInRegion(region.get(), x, y);
                ASSERT_EQ(array.PtInPolygon(x, y), expected) << x << ", " << y;
                ASSERT_EQ(CPointArray::PtInPolygon(polygon.data(), static_cast<int>(polygon.size()),
                                                   x, y),
                          expected);
            }
    }
}

TEST(PointArrayGeometryTest, PointInPolygonAgreesWithTheRegion) {
    constexpr int limit = MAX_REGION_COORDINATE;
    const struct {
        const char *name;
        int left, right, top, bottom;
        int rounds;
    } cases[] = {
        {"tiny", -2, 2, -2, 2, 600},
        {"small", -9, 22, -11, 17, 200},
        {"wide", -limit, limit, -13, 13, 100},
        {"far corner", limit - 50, limit, limit - 30, limit, 50},
        {"wide at the lower limit", -limit, limit, -limit, -limit + 9, 100},
    };
    std::mt19937 random(3);
    for (const auto &c : cases) {
        std::uniform_int_distribution<int> column(c.left, c.right);
        std::uniform_int_distribution<int> row(c.top, c.bottom);
        for (int round = 0; round < c.rounds; ++round) {
            std::vector<POINT> polygon(2 + random() % 8);
            for (POINT &point : polygon)
                point = {column(random), row(random)};
            ASSERT_NO_FATAL_FAILURE(ExpectAgreesWithRegion(polygon)) << c.name << " " << round;
        }
    }
}

TEST(PointArrayGeometryTest, PointInPolygonIsExactOnTallPolygons) {
    std::mt19937 random(4);
    std::uniform_int_distribution<int> coordinate(-MAX_REGION_COORDINATE, MAX_REGION_COORDINATE);
    for (int round = 0; round < 3000; ++round) {
        std::vector<POINT> polygon(3 + random() % 5);
        for (POINT &point : polygon)
            point = {coordinate(random), coordinate(random)};
        const POINT &a = polygon[0];
        const POINT &b = polygon[1];
        const int y = static_cast<int>((std::int64_t{a.y} + b.y) / 2);
        const int x = static_cast<int>((std::int64_t{a.x} + b.x) / 2);
        for (int dx = -2; dx <= 2; ++dx)
            ASSERT_EQ(ArrayOf(polygon).PtInPolygon(x + dx, y) == 1,
                      reference::IsInPolygon(polygon, WINDING, x + dx, y));
    }
}

TEST(PointArrayGeometryTest, PolygonsWithoutARegionHoldNoPoint) {
    EXPECT_EQ(CPointArray().CreatePolygonRgn(), nullptr);
    EXPECT_EQ(CPointArray().PtInPolygon(0, 0), 0);
    EXPECT_EQ(::ArrayOf({{0, 0}}).PtInPolygon(0, 0), 0);
    EXPECT_EQ(CPointArray::PtInPolygon(nullptr, 3, 0, 0), 0);
    for (const int far : {MAX_REGION_COORDINATE + 1, INT32_MAX}) {
        const CPointArray beyond = ::ArrayOf({{0, 0}, {far, 0}, {far, 20}, {0, 20}});
        EXPECT_EQ(beyond.CreatePolygonRgn(), nullptr) << far;
        EXPECT_EQ(beyond.PtInPolygon(10, 10), 0) << far;
    }
}

TEST(PointArrayGeometryTest, RoiKeepsPointsOnAllFourEdges) {
    const Pairs points{{0, 0}, {10, 5}, {11, 5}, {-1, 5}, {0, 6}, {0, -1}, {10, 0}, {0, 5}, {4, 4}};
    CPointArray array = ::ArrayOf(points);
    const RECT rect{0, 0, 10, 5};
    array.SetROI(&rect, 1);
    EXPECT_EQ(PairsOf(array), (Pairs{{0, 0}, {10, 5}, {10, 0}, {0, 5}, {4, 4}}));

    array = ::ArrayOf(points);
    const RegionHandle region(CreateRectRgn(0, 0, 10, 5));
    array.SetROI(region.get());
    EXPECT_EQ(PairsOf(array), (Pairs{{0, 0}, {10, 5}, {10, 0}, {0, 5}, {4, 4}}));
    array.SetROI(nullptr);
    EXPECT_EQ(array.GetElementCount(), 5);
    CPointArray other = array;
    other.SetROI(&rect, 0);
    EXPECT_EQ(other.GetElementCount(), 0);
    array.SetROI(nullptr, 1);
    EXPECT_EQ(array.GetElementCount(), 0);
}

TEST(PointArrayGeometryTest, RoiKeepsWhatAnyRectangleHolds) {
    std::mt19937 random(6);
    std::uniform_int_distribution<int> coordinate(-9, 9);
    const auto next = [&] { return coordinate(random); };
    for (int round = 0; round < 300; ++round) {
        std::vector<RECT> rects(random() % 5);
        const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
        for (RECT &rect : rects) {
            rect = {next(), next(), next(), next()};
            const RegionHandle one(CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom));
            CombineRgn(region.get(), region.get(), one.get(), RGN_XOR);
        }
        Pairs points(random() % 60);
        for (auto &point : points)
            point = {next(), next()};
        // The region's pixels and those that touch its rectangles on the right or below.
        const auto inRegion = [&](int x, int y) {
            return PtInRegion(region.get(), x, y) || PtInRegion(region.get(), x - 1, y) ||
                   PtInRegion(region.get(), x, y - 1) || PtInRegion(region.get(), x - 1, y - 1);
        };
        Pairs inRects;
        Pairs inGrown;
        for (const auto &[x, y] : points) {
            bool held = false;
            for (const RECT &r : rects)
                held = held || (r.left <= x && x <= r.right && r.top <= y && y <= r.bottom);
            if (held)
                inRects.emplace_back(x, y);
            if (inRegion(x, y))
                inGrown.emplace_back(x, y);
        }
        CPointArray byRects = ::ArrayOf(points);
        byRects.SetROI(rects.data(), static_cast<int>(rects.size()));
        ASSERT_EQ(PairsOf(byRects), inRects);
        CPointArray byRegion = ::ArrayOf(points);
        byRegion.SetROI(region.get());
        ASSERT_EQ(PairsOf(byRegion), inGrown);
    }
}

} // namespace
