#include "TAVIX20/image/tavix_image8.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

RegionHandle Rect(int left, int top, int right, int bottom) {
    return RegionHandle(CreateRectRgn(left, top, right, bottom));
}

bool Within(int x, int y, int left, int top, int right, int bottom) {
    return left <= x && x <= right && top <= y && y <= bottom;
}

TEST(RoiMaskTest, EveryEdgeOfARectangleIsInside) {
    CTavixImage8 image(30, 30);
    EXPECT_EQ(image.IsROI(), 0);
    EXPECT_EQ(image.PtInROI(0, 0), 0);
    image.SetROI(Rect(10, 10, 20, 20).get());
    EXPECT_EQ(image.IsROI(), 1);
    for (int y = 8; y <= 22; ++y)
        for (int x = 8; x <= 22; ++x)
            EXPECT_EQ(image.PtInROI(x, y), Within(x, y, 10, 10, 20, 20) ? 1 : 0) << x << ',' << y;
}

TEST(RoiMaskTest, AnyRectangleOfTheRegionCounts) {
    const RegionHandle region = Rect(0, 0, 4, 4);
    CombineRgn(region.get(), region.get(), Rect(0, 4, 8, 8).get(), RGN_OR);
    CombineRgn(region.get(), region.get(), Rect(12, -3, 14, -1).get(), RGN_OR);
    CTavixImage8 image;
    image.SetROI(region.get());
    for (int y = -5; y <= 10; ++y)
        for (int x = -2; x <= 16; ++x)
            EXPECT_EQ(image.PtInROI(x, y), Within(x, y, 0, 0, 4, 4) || Within(x, y, 0, 4, 8, 8) ||
                                                   Within(x, y, 12, -3, 14, -1)
                                               ? 1
                                               : 0)
                << x << ',' << y;
}

TEST(RoiMaskTest, IsASnapshotUntilReplacedOrReleased) {
    CTavixImage8 image(30, 30);
    RegionHandle region = Rect(10, 10, 20, 20);
    image.SetROI(region.get());
    CombineRgn(region.get(), region.get(), region.get(), RGN_XOR);
    EXPECT_EQ(image.PtInROI(15, 15), 1);
    RegionHandle empty = std::move(region);
    image.SetROI(nullptr);
    image.Create(5, 5);
    const unsigned char bytes[4] = {};
    image.SetImagePtr(1, 1, bytes);
    image.Release();
    EXPECT_EQ(image.IsROI(), 1);
    EXPECT_EQ(image.PtInROI(15, 15), 1);

    image.SetROI(Rect(0, 0, 2, 2).get());
    EXPECT_EQ(image.PtInROI(1, 1), 1);
    EXPECT_EQ(image.PtInROI(15, 15), 0);
    image.SetROI(empty.get());
    EXPECT_EQ(image.IsROI(), 1);
    EXPECT_EQ(image.PtInROI(1, 1), 0);
    EXPECT_EQ(image.PtInROI(0, 0), 0);
    image.ReleaseROI();
    EXPECT_EQ(image.IsROI(), 0);
    EXPECT_EQ(image.PtInROI(1, 1), 0);
}

TEST(RoiMaskTest, IsNeitherCopiedNorCleared) {
    CTavixImage8 masked(8, 8);
    masked.SetROI(Rect(0, 0, 2, 2).get());
    EXPECT_EQ(CTavixImage8(masked).IsROI(), 0);
    const std::unique_ptr<CTavixImage8> clone(static_cast<CTavixImage8 *>(masked.Clone()));
    EXPECT_EQ(clone->IsROI(), 0);

    CTavixImage8 other(4, 4);
    other = masked;
    EXPECT_EQ(other.IsROI(), 0);
    other.SetROI(Rect(5, 5, 6, 6).get());
    other = masked;
    EXPECT_EQ(other.PtInROI(5, 5), 1);
    EXPECT_EQ(other.PtInROI(1, 1), 0);
}

} // namespace
