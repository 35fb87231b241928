// Bands of runs: what region_test does not reach through region handles.

#include "TAVIX20/platform/run_region.h"

#include "TAVIX20/platform/polygon_painter.h"
#include "platform/polygon_reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using tavix::FillPolygons;
using tavix::RunRegion;

RunRegion Fill(const std::vector<POINT> &polygon, int mode, const RECT &clip) {
    const std::span<const POINT> contour(polygon);
    return FillPolygons({&contour, 1}, mode, clip);
}

// Few edges are kept sorted, more are sorted row by row, many are counted column by column.
TEST(RunRegionTest, FillsPolygonsOfAnySizeByTheCentreRule) {
    std::mt19937 random(3);
    const RECT clip{4, 3, 29, 24};
    for (const int count : {3, 5, 20, 150, 900})
        for (int round = 0; round < 40; ++round)
            for (const int mode : {ALTERNATE, WINDING}) {
                std::vector<POINT> polygon;
                for (int i = 0; i < count; ++i)
                    polygon.push_back({static_cast<LONG>(random() % 40) - 5,
                                       static_cast<LONG>(random() % 40) - 5});
                const RunRegion region = Fill(polygon, mode, clip);
                std::vector<bool> mask(40 * 40);
                for (const RECT &rect : region.Rects())
                    for (LONG y = rect.top; y < rect.bottom; ++y)
                        for (LONG x = rect.left; x < rect.right; ++x)
                            mask[static_cast<std::size_t>(y * 40 + x)] = true;
                for (int y = 0; y < 40; ++y)
                    for (int x = 0; x < 40; ++x) {
                        const bool isVisible =
                            x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom;
                        ASSERT_EQ(mask[static_cast<std::size_t>(y * 40 + x)],
                                  isVisible && reference::IsInPolygon(polygon, mode, x, y))
                            << count << " points, " << x << "," << y;
                    }
            }
}

// An area as wide as a few words of bits, and one that is painted in several pieces.
TEST(RunRegionTest, PaintsLayersLikeOneByOneCombination) {
    std::mt19937 random(8);
    for (const RECT &area : {RECT{-70, -9, 122, 200}, RECT{-3, 5, 1 << 16, 230}})
        for (int round = 0; round < 30; ++round) {
            std::vector<std::vector<POINT>> polygons(12);
            std::vector<tavix::PolygonLayer> layers;
            RunRegion expected;
            for (std::vector<POINT> &polygon : polygons) {
                for (int i = 0; i < 6; ++i)
                    polygon.push_back({static_cast<LONG>(random() % 240) - 100,
                                       static_cast<LONG>(random() % 240) - 20});
                polygon[0].x += random() % 4 == 0 ? area.right : 0;
                const auto [left, right] = std::ranges::minmax(polygon, {}, &POINT::x);
                const auto [top, bottom] = std::ranges::minmax(polygon, {}, &POINT::y);
                const bool isSet = random() % 3 != 0;
                layers.push_back({polygon, {left.x, top.y, right.x, bottom.y}, isSet});
                if (isSet)
                    expected.Unite(Fill(polygon, ALTERNATE, area));
                else
                    expected.Subtract(Fill(polygon, ALTERNATE, area));
            }
            ASSERT_EQ(tavix::PaintPolygons(layers, area), expected);
        }
}

TEST(RunRegionTest, KeepsBandsAsFewAsTheyCanBe) {
    const RECT world{-1000, -1000, 1000, 1000};
    const std::vector<POINT> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const RunRegion hole = Fill({{4, 4}, {6, 4}, {6, 6}, {4, 6}}, ALTERNATE, world);
    RunRegion region = Fill(square, ALTERNATE, world);
    EXPECT_EQ(region.Bands().size(), 1U);
    region.Subtract(hole);
    EXPECT_EQ(region.Bands().size(), 3U);
    EXPECT_EQ(region.Area(), 96);
    region.Unite(hole);
    EXPECT_EQ(region, Fill(square, WINDING, world));
    region.Subtract(region);
    EXPECT_TRUE(region.IsEmpty());
}

} // namespace
