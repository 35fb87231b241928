#include "TAVIX20/platform/geometry.h"

#include <QPoint>
#include <QRect>

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(GeometryTest, ArithmeticOfPointsAndSizes) {
    EXPECT_EQ(CPoint(3, -4) - CPoint(1, 2), CSize(2, -6));
    EXPECT_EQ(-CPoint(3, -4) + CPoint(1, 2), CPoint(-2, 6));
    EXPECT_EQ(CPoint(3, -4) + CSize(10, 20), CPoint(13, 16));
    EXPECT_EQ(CPoint(3, -4) - CSize(10, 20), CPoint(-7, -24));
    EXPECT_EQ(-CSize(3, -4) - CSize(1, 2), CSize(-4, 2));
}

TEST(GeometryTest, RectanglesMoveAndGrowByTheirEdges) {
    const CRect rect(10, 20, 40, 60);
    EXPECT_EQ(CRect(-3, -4, 0, -1).CenterPoint(), CPoint(-1, -2));
    EXPECT_EQ(CRect(rect.TopLeft(), CSize(30, 40)), rect);
    EXPECT_EQ(CRect(CPoint(10, 20), rect.BottomRight()), rect);
    const struct {
        const char *name;
        void (*change)(CRect &);
        CRect expected;
    } cases[] = {
        {"inflate all edges", [](CRect &r) { r.InflateRect(1, 2, 3, 4); }, {9, 18, 43, 64}},
        {"deflate all edges", [](CRect &r) { r.DeflateRect(1, 2, 3, 4); }, {11, 22, 37, 56}},
        {"deflate by a size", [](CRect &r) { r.DeflateRect(CSize(1, 2)); }, {11, 22, 39, 58}},
        {"add a point", [](CRect &r) { r += CPoint(5, -5); }, {15, 15, 45, 55}},
        {"subtract a size", [](CRect &r) { r -= CSize(5, -5); }, {5, 25, 35, 65}},
        {"move to a point", [](CRect &r) { r.MoveToXY(-1, -2); }, {-1, -2, 29, 38}},
    };
    for (const auto &[name, change, expected] : cases) {
        CRect changed = rect;
        change(changed);
        EXPECT_EQ(changed, expected) << name;
    }
}

TEST(GeometryTest, SetOperationsAgreeWithPixels) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> edge(-4, 4);
    const auto randomRect = [&] {
        return CRect(edge(random), edge(random), edge(random), edge(random));
    };
    for (int round = 0; round < 2000; ++round) {
        const CRect a = randomRect(), b = randomRect();
        CRect common(9, 9, 9, 9), joined(9, 9, 9, 9), normal = a;
        normal.NormalizeRect();
        ASSERT_EQ(normal, CRect(std::min(a.left, a.right), std::min(a.top, a.bottom),
                                std::max(a.left, a.right), std::max(a.top, a.bottom)));
        const bool meets = common.IntersectRect(a, b);
        const bool any = joined.UnionRect(a, b);
        bool pixelInBoth = false;
        CRect around(9, 9, -9, -9);
        for (int y = -5; y < 6; ++y)
            for (int x = -5; x < 6; ++x) {
                const bool inA = x >= a.left && x < a.right && y >= a.top && y < a.bottom;
                const bool inB = x >= b.left && x < b.right && y >= b.top && y < b.bottom;
                ASSERT_EQ(a.PtInRect(CPoint(x, y)), inA);
                ASSERT_EQ(common.PtInRect(CPoint(x, y)), inA && inB);
                pixelInBoth = pixelInBoth || (inA && inB);
                if (inA || inB)
                    around = CRect(std::min(around.left, x), std::min(around.top, y),
                                   std::max(around.right, x + 1), std::max(around.bottom, y + 1));
            }
        ASSERT_EQ(meets, pixelInBoth);
        ASSERT_EQ(any, around.left < around.right);
        ASSERT_EQ(joined, any ? around : CRect());
        ASSERT_TRUE(meets || common.IsRectNull());
        ASSERT_EQ(a & b, common);
        ASSERT_EQ(a | b, joined);
    }
}

TEST(GeometryTest, QtConversionsKeepTheExclusiveEdges) {
    EXPECT_EQ(CRect(QRect(3, -4, 5, 6)), CRect(3, -4, 8, 2));
    EXPECT_EQ(QRect(CRect(3, -4, 8, 2)), QRect(3, -4, 5, 6));
    EXPECT_EQ(CRect(QRect(CRect(8, 2, 3, -4))), CRect(8, 2, 3, -4));
    EXPECT_EQ(CPoint(QPoint(3, -4)), CPoint(3, -4));
    EXPECT_EQ(QPoint(CPoint(3, -4)), QPoint(3, -4));
}

} // namespace
