#include "TAVIX20/containers/point_array.h"

#include "containers/point_list.h"
#include "platform/polygon_reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace {

using TavixArray::CPointArray;

TEST(PointArrayGeometryTest, BoundsCentreAndAverages) {
    const struct {
        Pairs points;
        CRect bounds;
        CPoint centre, average;
    } cases[] = {
        {{}, {0, 0, 0, 0}, {0, 0}, {0, 0}},
        {{{-5, -7}, {-2, -9}}, {-5, -9, -2, -7}, {-4, -8}, {-3, -8}},
        {{{0, 0}, {1, -1}}, {0, -1, 1, 0}, {1, -1}, {0, 0}},
        {{{1, 1}, {9, -9}, {-9, 9}}, {-9, -9, 9, 9}, {0, 0}, {0, 0}},
        {Pairs(3, {INT32_MAX, INT32_MIN}),
         {INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN},
         {INT32_MAX, INT32_MIN},
         {INT32_MAX, INT32_MIN}},
    };
    for (const auto &c : cases) {
        const CPointArray array = ArrayOf(c.points);
        EXPECT_EQ(array.GetBounds(), c.bounds);
        EXPECT_EQ(array.CenterPoint(), c.centre);
        EXPECT_EQ(CPoint(array.GetAverageX(), array.GetAverageY()), c.average);
    }
    EXPECT_EQ(CPointArray::GetBounds(nullptr, 4), CRect());
}

TEST(PointArrayGeometryTest, OffsetAndScale) {
    CPointArray array = ArrayOf({{3, -3}, {INT32_MAX, INT32_MIN}, {5, 7}});
    array.Offset(1, -1);
    EXPECT_EQ(PairsOf(array), (Pairs{{4, -4}, {INT32_MIN, INT32_MAX}, {6, 6}}));

    array = ArrayOf({{3, -3}, {10, 7}, {-1, 1}});
    array.Scale(0.5, 0.5);
    EXPECT_EQ(PairsOf(array), (Pairs{{2, -2}, {5, 4}, {-1, 1}}));
    array = ArrayOf({{10, 10}, {-7, 1}});
    array.Scale(-1.26, 0.24);
    EXPECT_EQ(PairsOf(array), (Pairs{{-13, 2}, {9, 0}}));
    array.Scale(-1e12, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(PairsOf(array), (Pairs{{INT32_MAX, 0}, {INT32_MIN, 0}}));
}

TEST(PointArrayGeometryTest, PointInPolygonAgreesWithTheRegion) {
    constexpr int limit = MAX_REGION_COORDINATE;
    const struct {
        const char *name;
        int left, right, top, bottom;
    } cases[] = {
        {"small", -9, 22, -11, 17},
        {"wide", -limit, limit, -13, 13},
        {"far corner", limit - 50, limit, limit - 30, limit},
        {"tall", -limit, limit, -limit, limit},
    };
    std::mt19937 random(3);
    for (const auto &c : cases)
        for (int round = 0; round < 500; ++round) {
            std::vector<POINT> polygon(2 + random() % 8);
            for (POINT &point : polygon)
                point = {std::uniform_int_distribution(c.left, c.right)(random),
                         std::uniform_int_distribution(c.top, c.bottom)(random)};
            const CPointArray array(polygon.data(), static_cast<int>(polygon.size()));
            const bool isTall = c.bottom - c.top > 100; // Its region would have too many rows.
            const RegionHandle region(isTall ? nullptr : array.CreatePolygonRgn());
            ASSERT_EQ(region == nullptr, isTall);
            // Around every corner and around the middle of every edge.
            for (std::size_t i = 0; i < 2 * polygon.size(); ++i) {
                const POINT &a = polygon[i / 2];
                const POINT &b = polygon[(i + 1) / 2 % polygon.size()];
                for (int k = 0; k < 15; ++k) {
                    const auto x = static_cast<int>((std::int64_t{a.x} + b.x) / 2) + k % 5 - 2;
                    const auto y = static_cast<int>((std::int64_t{a.y} + b.y) / 2) + k / 5 - 1;
                    const int inside = reference::IsInPolygon(polygon, WINDING, x, y) ? 1 : 0;
                    ASSERT_EQ(array.PtInPolygon(x, y), inside) << c.name << " " << x << ", " << y;
                    ASSERT_EQ(isTall ? inside : PtInRegion(region.get(), x, y), inside) << c.name;
                }
            }
        }
}

TEST(PointArrayGeometryTest, PolygonsWithoutARegionHoldNoPoint) {
    constexpr int far = MAX_REGION_COORDINATE + 1;
    for (const Pairs &polygon : {Pairs{}, Pairs{{0, 0}}, Pairs{{-9, -9}, {far, -9}, {-9, 9}}}) {
        EXPECT_EQ(ArrayOf(polygon).CreatePolygonRgn(), nullptr) << polygon.size();
        EXPECT_EQ(ArrayOf(polygon).PtInPolygon(0, 0), 0) << polygon.size();
    }
    EXPECT_EQ(CPointArray::PtInPolygon(nullptr, 3, 0, 0), 0);
}

TEST(PointArrayGeometryTest, RoiKeepsWhatAnyRectangleHolds) {
    std::mt19937 random(6);
    const auto next = [&] { return std::uniform_int_distribution(-9, 9)(random); };
    for (int round = 0; round < 300; ++round) {
        std::vector<RECT> rects(random() % 5);
        const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
        for (RECT &rect : rects) {
            rect = {next(), next(), next(), next()};
            const RegionHandle one(CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom));
            CombineRgn(region.get(), region.get(), one.get(), RGN_XOR);
        }
        CPointArray byRects;
        for (auto count = random() % 60; count > 0; --count)
            byRects.Add(next(), next());
        CPointArray byRegion = byRects;
        Pairs inRects, inGrown;
        for (const auto &[x, y] : PairsOf(byRects)) {
            if (std::ranges::any_of(rects, [x = x, y = y](const RECT &r) {
                    return r.left <= x && x <= r.right && r.top <= y && y <= r.bottom;
                }))
                inRects.emplace_back(x, y);
            // The region's pixels and those that touch its rectangles on the right or below.
            if (PtInRegion(region.get(), x, y) || PtInRegion(region.get(), x - 1, y) ||
                PtInRegion(region.get(), x, y - 1) || PtInRegion(region.get(), x - 1, y - 1))
                inGrown.emplace_back(x, y);
        }
        byRects.SetROI(rects.data(), static_cast<int>(rects.size()));
        ASSERT_EQ(PairsOf(byRects), inRects);
        byRegion.SetROI(region.get());
        ASSERT_EQ(PairsOf(byRegion), inGrown);
        byRegion.SetROI(nullptr);
        ASSERT_EQ(PairsOf(byRegion), inGrown);
    }
    CPointArray array = ArrayOf({{1, 1}});
    array.SetROI(nullptr, 1);
    EXPECT_EQ(array.GetElementCount(), 0);
}

} // namespace
