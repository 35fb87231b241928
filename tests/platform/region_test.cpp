#include "TAVIX20/platform/geometry.h"
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

struct RegionData {
    RGNDATAHEADER header;
    std::vector<RECT> rects;
};

RegionData DataOf(HRGN region) {
    std::vector<char> bytes(GetRegionData(region, 0, nullptr));
    EXPECT_EQ(GetRegionData(region, static_cast<DWORD>(bytes.size()),
                            reinterpret_cast<RGNDATA *>(bytes.data())),
              bytes.size());
    RegionData data;
    std::memcpy(&data.header, bytes.data(), sizeof data.header);
    const auto *rects = reinterpret_cast<const RECT *>(bytes.data() + sizeof data.header);
    data.rects.assign(rects, rects + (bytes.size() - sizeof data.header) / sizeof(RECT));
    return data;
}

/// The region holds exactly the pixels; so do its rectangles, which are disjoint and in order, and
/// the region is of the given kind: one rectangle when it fills its own bounding box.
void ExpectPixels(HRGN region, const Pixels &expected, int kind) {
    ASSERT_EQ(PixelsWhere([&](int x, int y) { return PtInRegion(region, x, y) == 1; }), expected);
    const auto [header, rects] = DataOf(region);
    ASSERT_EQ(header.dwSize, 32u);
    ASSERT_EQ(header.iType, 1u);
    ASSERT_EQ(header.nCount, rects.size());
    ASSERT_EQ(header.nRgnSize, rects.size() * 16);
    ASSERT_TRUE(std::is_sorted(rects.begin(), rects.end(), [](const RECT &a, const RECT &b) {
        return std::tie(a.top, a.left) < std::tie(b.top, b.left);
    }));
    Pixels held(expected.size());
    CRect bound;
    int area = 0;
    for (const CRect r : rects) {
        bound |= r;
        area += r.Width() * r.Height();
        for (int y = r.top; y < r.bottom; ++y)
            for (int x = r.left; x < r.right; ++x)
                held[static_cast<std::size_t>((y - FIRST) * SIDE + x - FIRST)] = true;
    }
    ASSERT_EQ(held, expected);
    ASSERT_EQ(area, std::count(held.begin(), held.end(), true));
    ASSERT_EQ(header.rcBound, bound);
    const bool isFull = area == bound.Width() * bound.Height();
    ASSERT_EQ(kind, area == 0 ? NULLREGION : isFull ? SIMPLEREGION : COMPLEXREGION);
}

RegionHandle Polygon(const std::vector<POINT> &points, int fillMode) {
    return RegionHandle(CreatePolygonRgn(points.data(), static_cast<int>(points.size()), fillMode));
}

/// A random region with its pixels: a rectangle, also as a polygon, or a polygon of either fill
/// mode.
struct Shape {
    RegionHandle region;
    Pixels pixels;
};

Shape RandomShape(std::mt19937 &random) {
    std::uniform_int_distribution<int> coordinate(FIRST + 2, FIRST + SIDE - 3);
    std::vector<POINT> points(std::uniform_int_distribution<std::size_t>(2, 9)(random));
    for (POINT &point : points)
        point = {coordinate(random), coordinate(random)};
    const POINT a = points[0], c = points[1];
    const bool isRect = points.size() == 2;
    if (points.size() <= 3)
        points = {a, {c.x, a.y}, c, {a.x, c.y}, a};
    const int mode = random() % 2 == 0 ? WINDING : ALTERNATE;
    return {isRect ? RegionHandle(CreateRectRgn(a.x, a.y, c.x, c.y)) : Polygon(points, mode),
            PixelsWhere([&](int x, int y) { return reference::IsInPolygon(points, mode, x, y); })};
}

TEST(RegionTest, ShapesAndCombinationsHoldTheirPixels) {
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
    for (int round = 0; round < 200; ++round) {
        const Shape a = RandomShape(random), b = RandomShape(random);
        ASSERT_EQ(EqualRgn(a.region.get(), b.region.get()), a.pixels == b.pixels ? 1 : 0);
        for (const auto &[mode, combine] : modes) {
            Pixels expected;
            for (std::size_t i = 0; i < a.pixels.size(); ++i)
                expected.push_back(combine(a.pixels[i], b.pixels[i]));
            const RegionHandle target(CreateRectRgn(0, 0, 3, 3));
            const int kind = CombineRgn(target.get(), a.region.get(), b.region.get(), mode);
            ASSERT_NO_FATAL_FAILURE(ExpectPixels(target.get(), expected, kind)) << mode;

            // The same with the target as its own second source.
            const RegionHandle own(CreateRectRgn(0, 0, 0, 0));
            CombineRgn(own.get(), b.region.get(), nullptr, RGN_COPY);
            CombineRgn(own.get(), a.region.get(), own.get(), mode);
            ASSERT_EQ(EqualRgn(own.get(), target.get()), 1) << mode;
        }
    }
}

TEST(RegionTest, RefusesBadSourcesPolygonsAndCoordinates) {
    const RegionHandle target(CreateRectRgn(1, 2, 3, 4)), before(CreateRectRgn(1, 2, 3, 4));
    const RegionHandle other(CreateRectRgn(5, 5, 9, 9));
    EXPECT_EQ(CombineRgn(nullptr, other.get(), other.get(), RGN_OR), RGN_ERROR);
    EXPECT_EQ(CombineRgn(target.get(), other.get(), nullptr, RGN_AND), RGN_ERROR);
    EXPECT_EQ(CombineRgn(target.get(), nullptr, other.get(), RGN_COPY), RGN_ERROR);
    EXPECT_EQ(CombineRgn(target.get(), other.get(), other.get(), 6), RGN_ERROR);
    EXPECT_EQ(EqualRgn(target.get(), before.get()), 1);
    EXPECT_EQ(EqualRgn(nullptr, nullptr), 0);
    EXPECT_EQ(PtInRegion(nullptr, 0, 0), 0);
    EXPECT_EQ(GetRegionData(nullptr, 0, nullptr), 0u);
    EXPECT_EQ(DeleteObject(HRGN{}), 0);

    constexpr int limit = (1 << 27) - 1;
    EXPECT_EQ(CreatePolygonRgn(nullptr, 3, WINDING), nullptr);
    EXPECT_EQ(Polygon({{0, 0}}, WINDING), nullptr);
    EXPECT_EQ(Polygon({{0, 0}, {9, 0}, {0, 9}}, 3), nullptr);
    for (const int bad : {limit + 1, -limit - 1, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(CreateRectRgn(bad, 0, 0, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, bad, 0, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, 0, bad, 0), nullptr) << bad;
        EXPECT_EQ(CreateRectRgn(0, 0, 0, bad), nullptr) << bad;
        EXPECT_EQ(Polygon({{0, 0}, {9, 0}, {bad, 9}}, WINDING), nullptr) << bad;
        EXPECT_EQ(Polygon({{0, 0}, {9, 0}, {0, bad}}, ALTERNATE), nullptr) << bad;
    }
    const RegionHandle all(CreateRectRgn(limit, limit, -limit, -limit));
    EXPECT_EQ(DataOf(all.get()).rects, (std::vector<RECT>{{-limit, -limit, limit, limit}}));
}

TEST(RegionTest, DataNeedsRoomForAllOfIt) {
    const RegionHandle region(CreateRectRgn(0, 0, 4, 4)), hole(CreateRectRgn(1, 1, 2, 3));
    EXPECT_EQ(CombineRgn(region.get(), region.get(), hole.get(), RGN_DIFF), COMPLEXREGION);
    const DWORD needed = 32 + 4 * 16;
    EXPECT_EQ(GetRegionData(region.get(), 9999, nullptr), needed);
    const std::vector<char> untouched(needed + 8, 'x');
    std::vector<char> bytes = untouched;
    auto *const data = reinterpret_cast<RGNDATA *>(bytes.data());
    EXPECT_EQ(GetRegionData(region.get(), needed - 1, data), 0u);
    EXPECT_EQ(bytes, untouched);
    EXPECT_EQ(GetRegionData(region.get(), needed + 4, data), needed + 4);
    EXPECT_TRUE(std::equal(bytes.begin() + needed, bytes.end(), untouched.begin() + needed));
}

} // namespace
