#include "TAVIX20/platform/region.h"

#include "platform/polygon_reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <tuple>

namespace {

constexpr int FIRST = -7;
constexpr int SIDE = 29; // Covers every random shape with a margin.

/// The pixels of the square from (FIRST, FIRST) on, row by row.
using Pixels = std::vector<bool>;

template <typename Predicate>
Pixels PixelsWhere(Predicate predicate) {
    Pixels pixels;
    for (int y = FIRST; y < FIRST + SIDE; ++y)
        for (int x = FIRST; x < FIRST + SIDE; ++x)
            pixels.push_back(predicate(x, y));
    return pixels;
}

Pixels PixelsOf(HRGN region) {
    return PixelsWhere([&](int x, int y) { return PtInRegion(region, x, y) == 1; });
}

struct RegionData {
    RGNDATAHEADER header;
    std::vector<RECT> rects;
};

RegionData DataOf(HRGN region) {
    std::vector<char> bytes(GetRegionData(region, 0, nullptr));
    EXPECT_GE(bytes.size(), sizeof(RGNDATAHEADER));
    EXPECT_EQ(GetRegionData(region, static_cast<DWORD>(bytes.size()),
                            reinterpret_cast<RGNDATA *>(bytes.data())),
              bytes.size());
    RegionData data;
    std::memcpy(&data.header, bytes.data(), sizeof data.header);
    data.rects.resize((bytes.size() - sizeof data.header) / sizeof(RECT));
    if (!data.rects.empty())
        std::memcpy(data.rects.data(), bytes.data() + sizeof data.header,
                    data.rects.size() * sizeof(RECT));
    return data;
}

/// The region holds exactly the pixels; so do its rectangles, which are disjoint and in order.
void ExpectPixels(HRGN region, const Pixels &expected) {
    ASSERT_EQ(PixelsOf(region), expected);
    const RegionData data = DataOf(region);
    ASSERT_EQ(data.header.dwSize, 32u);
    ASSERT_EQ(data.header.iType, 1u);
    ASSERT_EQ(data.header.nCount, data.rects.size());
    ASSERT_EQ(data.header.nRgnSize, data.rects.size() * 16);
    ASSERT_TRUE(
        std::is_sorted(data.rects.begin(), data.rects.end(), [](const RECT &a, const RECT &b) {
            return std::tie(a.top, a.left) < std::tie(b.top, b.left);
        }));
    RECT bound{FIRST + SIDE, FIRST + SIDE, FIRST, FIRST};
    ASSERT_EQ(PixelsWhere([&](int x, int y) {
                  const auto holders =
                      std::count_if(data.rects.begin(), data.rects.end(), [&](const RECT &r) {
                          return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
                      });
                  EXPECT_LE(holders, 1);
                  if (holders > 0)
                      bound = {std::min(bound.left, x), std::min(bound.top, y),
                               std::max(bound.right, x + 1), std::max(bound.bottom, y + 1)};
                  return holders > 0;
              }),
              expected);
    ASSERT_EQ(data.header.rcBound, data.rects.empty() ? RECT{} : bound);
}

/// The kind that a pixel set must have: one rectangle when it fills its own bounding box.
int KindOf(const Pixels &pixels) {
    int left = SIDE, top = SIDE, right = -1, bottom = -1, count = 0;
    for (int i = 0; i < SIDE * SIDE; ++i)
        if (pixels[static_cast<std::size_t>(i)]) {
            left = std::min(left, i % SIDE);
            right = std::max(right, i % SIDE);
            top = std::min(top, i / SIDE);
            bottom = std::max(bottom, i / SIDE);
            ++count;
        }
    if (count == 0)
        return NULLREGION;
    return count == (right - left + 1) * (bottom - top + 1) ? SIMPLEREGION : COMPLEXREGION;
}

/// A random region with its pixels: a rectangle or a polygon of either fill mode.
struct Shape {
    RegionHandle region;
    Pixels pixels;
};

Shape RandomShape(std::mt19937 &random) {
    std::uniform_int_distribution<int> coordinate(FIRST + 2, FIRST + SIDE - 3);
    const auto next = [&] { return coordinate(random); };
    const int points = std::uniform_int_distribution<int>(2, 9)(random);
    if (points == 2) {
        const int x1 = next(), y1 = next(), x2 = next(), y2 = next();
        return {RegionHandle(CreateRectRgn(x1, y1, x2, y2)), PixelsWhere([&](int x, int y) {
                    return x >= std::min(x1, x2) && x < std::max(x1, x2) && y >= std::min(y1, y2) &&
                           y < std::max(y1, y2);
                })};
    }
    std::vector<POINT> polygon;
    for (int i = 0; i < points; ++i)
        polygon.push_back({next(), next()});
    const int mode = random() % 2 == 0 ? WINDING : ALTERNATE;
    return {RegionHandle(CreatePolygonRgn(polygon.data(), points, mode)),
            PixelsWhere([&](int x, int y) { return reference::IsInPolygon(polygon, mode, x, y); })};
}

TEST(RegionTest, ShapesHoldTheirPixels) {
    std::mt19937 random(1);
    for (int round = 0; round < 600; ++round) {
        const Shape shape = RandomShape(random);
        ASSERT_NO_FATAL_FAILURE(ExpectPixels(shape.region.get(), shape.pixels)) << round;
    }
}

TEST(RegionTest, FillModesDifferInsideAStar) {
    const std::vector<POINT> star{{10, 0}, {16, 20}, {0, 7}, {20, 7}, {4, 20}};
    const RegionHandle winding(CreatePolygonRgn(star.data(), 5, WINDING));
    const RegionHandle alternate(CreatePolygonRgn(star.data(), 5, ALTERNATE));
    EXPECT_EQ(PtInRegion(winding.get(), 10, 10), 1);
    EXPECT_EQ(PtInRegion(alternate.get(), 10, 10), 0);
    EXPECT_EQ(PtInRegion(alternate.get(), 10, 5), 1);
    EXPECT_EQ(EqualRgn(winding.get(), alternate.get()), 0);
}

TEST(RegionTest, AxisParallelPolygonsHaveExclusiveEdges) {
    const std::vector<std::vector<POINT>> polygons{
        {{2, 3}, {9, 3}, {9, 8}, {2, 8}},         {{2, 3}, {2, 8}, {9, 8}, {9, 3}},
        {{9, 8}, {2, 8}, {2, 3}, {9, 3}, {9, 8}}, {{2, 3}, {2, 3}, {9, 3}, {9, 8}, {2, 8}},
        {{2, 3}, {5, 3}, {9, 3}, {9, 8}, {2, 8}},
    };
    const RegionHandle rect(CreateRectRgn(2, 3, 9, 8));
    for (const auto &polygon : polygons)
        for (const int mode : {ALTERNATE, WINDING}) {
            const RegionHandle region(
                CreatePolygonRgn(polygon.data(), static_cast<int>(polygon.size()), mode));
            EXPECT_EQ(EqualRgn(region.get(), rect.get()), 1);
        }
    for (const std::vector<POINT> &flat : {std::vector<POINT>{{2, 3}, {9, 3}, {9, 3}, {2, 3}},
                                           {{2, 3}, {2, 8}, {2, 8}, {2, 3}},
                                           {{2, 3}, {9, 8}}}) {
        const RegionHandle region(
            CreatePolygonRgn(flat.data(), static_cast<int>(flat.size()), WINDING));
        ASSERT_NE(region, nullptr);
        EXPECT_EQ(DataOf(region.get()).header.nCount, 0u);
    }
}

TEST(RegionTest, CombinationsAgreeWithPixelSets) {
    const struct {
        int mode;
        bool (*combine)(bool, bool);
    } modes[] = {
        {RGN_AND, [](bool a, bool b) { return a && b; }},
        {RGN_OR, [](bool a, bool b) { return a || b; }},
        {RGN_XOR, [](bool a, bool b) { return a != b; }},
        {RGN_DIFF, [](bool a, bool b) { return a && !b; }},
        {RGN_COPY, [](bool a, bool) { return a; }},
    };
    std::mt19937 random(2);
    for (int round = 0; round < 150; ++round) {
        const Shape a = RandomShape(random);
        const Shape b = RandomShape(random);
        ASSERT_EQ(EqualRgn(a.region.get(), b.region.get()), a.pixels == b.pixels ? 1 : 0);
        for (const auto &[mode, combine] : modes) {
            Pixels expected;
            for (std::size_t i = 0; i < a.pixels.size(); ++i)
                expected.push_back(combine(a.pixels[i], b.pixels[i]));
            const RegionHandle target(CreateRectRgn(0, 0, 3, 3));
            ASSERT_EQ(CombineRgn(target.get(), a.region.get(), b.region.get(), mode),
                      KindOf(expected));
            ASSERT_NO_FATAL_FAILURE(ExpectPixels(target.get(), expected)) << mode;

            // The same with the target among its own sources.
            for (const bool first : {true, false}) {
                const RegionHandle own(CreateRectRgn(0, 0, 0, 0));
                CombineRgn(own.get(), first ? a.region.get() : b.region.get(), nullptr, RGN_COPY);
                CombineRgn(own.get(), first ? own.get() : a.region.get(),
                           first ? b.region.get() : own.get(), mode);
                ASSERT_EQ(EqualRgn(own.get(), target.get()), 1) << mode;
            }
        }
    }
}

TEST(RegionTest, FailuresChangeNothing) {
    const RegionHandle target(CreateRectRgn(1, 2, 3, 4));
    const RegionHandle before(CreateRectRgn(1, 2, 3, 4));
    const RegionHandle other(CreateRectRgn(5, 5, 9, 9));
    EXPECT_EQ(CombineRgn(nullptr, other.get(), other.get(), RGN_OR), RGN_ERROR);
    for (const int mode : {RGN_AND, RGN_OR, RGN_XOR, RGN_DIFF}) {
        EXPECT_EQ(CombineRgn(target.get(), other.get(), nullptr, mode), RGN_ERROR);
        EXPECT_EQ(CombineRgn(target.get(), nullptr, other.get(), mode), RGN_ERROR);
    }
    EXPECT_EQ(CombineRgn(target.get(), nullptr, other.get(), RGN_COPY), RGN_ERROR);
    EXPECT_EQ(CombineRgn(target.get(), other.get(), other.get(), 0), RGN_ERROR);
    EXPECT_EQ(CombineRgn(target.get(), other.get(), other.get(), 6), RGN_ERROR);
    EXPECT_EQ(EqualRgn(target.get(), before.get()), 1);

    EXPECT_EQ(EqualRgn(nullptr, target.get()), 0);
    EXPECT_EQ(EqualRgn(target.get(), nullptr), 0);
    EXPECT_EQ(EqualRgn(nullptr, nullptr), 0);
    EXPECT_EQ(PtInRegion(nullptr, 0, 0), 0);
    EXPECT_EQ(GetRegionData(nullptr, 0, nullptr), 0u);
    EXPECT_EQ(DeleteObject(nullptr), 0);
    EXPECT_EQ(DeleteObject(CreateRectRgn(0, 0, 1, 1)), 1);
}

TEST(RegionTest, RefusesBadPolygonsAndCoordinates) {
    constexpr int limit = (1 << 27) - 1;
    std::vector<POINT> triangle{{0, 0}, {9, 0}, {0, 9}};
    EXPECT_EQ(CreatePolygonRgn(nullptr, 3, WINDING), nullptr);
    EXPECT_EQ(CreatePolygonRgn(triangle.data(), 1, WINDING), nullptr);
    EXPECT_EQ(CreatePolygonRgn(triangle.data(), -3, WINDING), nullptr);
    EXPECT_EQ(CreatePolygonRgn(triangle.data(), 3, 0), nullptr);
    EXPECT_EQ(CreatePolygonRgn(triangle.data(), 3, 3), nullptr);
    for (const int bad : {limit + 1, -limit - 1, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(CreateRectRgn(bad, 0, 0, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, bad, 0, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, 0, bad, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, 0, 0, bad), nullptr) << bad;
        triangle[2] = {bad, 9};
        EXPECT_EQ(CreatePolygonRgn(triangle.data(), 3, WINDING), nullptr) << bad;
        triangle[2] = {0, bad};
        EXPECT_EQ(CreatePolygonRgn(triangle.data(), 3, ALTERNATE), nullptr) << bad;
    }
    const RegionHandle all(CreateRectRgn(limit, limit, -limit, -limit));
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(DataOf(all.get()).rects, (std::vector<RECT>{{-limit, -limit, limit, limit}}));
    EXPECT_EQ(PtInRegion(all.get(), -limit, limit - 1), 1);
    EXPECT_EQ(PtInRegion(all.get(), limit, 0), 0);
}

TEST(RegionTest, DataNeedsRoomForAllOfIt) {
    const RegionHandle region(CreateRectRgn(0, 0, 4, 4));
    const RegionHandle hole(CreateRectRgn(1, 1, 2, 3));
    EXPECT_EQ(CombineRgn(region.get(), region.get(), hole.get(), RGN_DIFF), COMPLEXREGION);
    const DWORD needed = 32 + 4 * 16;
    EXPECT_EQ(GetRegionData(region.get(), 0, nullptr), needed);
    EXPECT_EQ(GetRegionData(region.get(), 9999, nullptr), needed);

    const std::vector<char> untouched(needed + 8, 'x');
    std::vector<char> bytes = untouched;
    auto *const data = reinterpret_cast<RGNDATA *>(bytes.data());
    EXPECT_EQ(GetRegionData(region.get(), needed - 1, data), 0u);
    EXPECT_EQ(GetRegionData(region.get(), 0, data), 0u);
    EXPECT_EQ(bytes, untouched);
    EXPECT_EQ(GetRegionData(region.get(), needed + 4, data), needed + 4);
    EXPECT_EQ(data->rdh.nCount, 4u);
    EXPECT_TRUE(std::equal(bytes.begin() + needed, bytes.end(), untouched.begin() + needed));
}

} // namespace
