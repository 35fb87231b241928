// Bands of runs: what region_test does not reach through region handles.

#include "TAVIX20/platform/run_region.h"

#include "platform/polygon_reference.h"

#include <gtest/gtest.h>

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
