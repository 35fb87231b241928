#include "TAVIX20/image/tavix_image8.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

RegionHandle Rect(int left, int top, int right, int bottom) {
    return RegionHandle(CreateRectRgn(left, top, right, bottom));
}

TEST(RoiMaskTest, EveryEdgeOfItsRectanglesIsInside) {
    const RECT rects[] = {{0, 0, 4, 4}, {0, 4, 8, 8}, {12, -3, 14, -1}};
    const RegionHandle region = Rect(0, 0, 0, 0);
    for (const RECT &r : rects)
        CombineRgn(region.get(), region.get(), Rect(r.left, r.top, r.right, r.bottom).get(),
                   RGN_OR);
    CTavixImage8 image;
    EXPECT_EQ(image.PtInROI(0, 0), 0);
    image.SetROI(region.get());
    for (int y = -5; y <= 10; ++y)
        for (int x = -2; x <= 16; ++x) {
            int inside = 0;
            for (const RECT &r : rects)
                inside |= r.left <= x && x <= r.right && r.top <= y && y <= r.bottom ? 1 : 0;
            EXPECT_EQ(image.PtInROI(x, y), inside) << x << ',' << y;
        }
}

TEST(RoiMaskTest, IsASnapshotUntilReplacedOrReleased) {
    CTavixImage8 image(30, 30);
    const RegionHandle region = Rect(10, 10, 20, 20);
    image.SetROI(region.get());
    CombineRgn(region.get(), region.get(), region.get(), RGN_XOR);
    image.SetROI(nullptr);
    image.Create(5, 5);
    image.Release();
    EXPECT_EQ(image.PtInROI(15, 15), 1);
    image.SetROI(Rect(0, 0, 2, 2).get());
    EXPECT_EQ(image.PtInROI(1, 1), 1);
    EXPECT_EQ(image.PtInROI(15, 15), 0);
    image.SetROI(region.get());
    EXPECT_EQ(image.IsROI(), 1);
    EXPECT_EQ(image.PtInROI(0, 0), 0);
    image.ReleaseROI();
    EXPECT_EQ(image.IsROI(), 0);
}

TEST(RoiMaskTest, IsNeitherCopiedNorCleared) {
    CTavixImage8 masked(8, 8), other(4, 4);
    masked.SetROI(Rect(0, 0, 2, 2).get());
    EXPECT_EQ(CTavixImage8(masked).IsROI(), 0);
    other.SetROI(Rect(5, 5, 6, 6).get());
    other = masked;
    EXPECT_EQ(other.PtInROI(5, 5), 1);
    EXPECT_EQ(other.PtInROI(1, 1), 0);
}

} // namespace
