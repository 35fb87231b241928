#include "TAVIX20/platform/geometry.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(GeometryTest, ArithmeticOfPointsAndSizes) {
    CPoint point(3, -4);
    EXPECT_EQ(-point, CPoint(-3, 4));
    EXPECT_EQ(point + CPoint(1, 2), CPoint(4, -2));
    EXPECT_EQ(point - CPoint(1, 2), CSize(2, -6));
    EXPECT_EQ(point + CSize(10, 20), CPoint(13, 16));
    EXPECT_EQ(point - CSize(10, 20), CPoint(-7, -24));
    point.Offset(1, 2);
    point.Offset(CPoint(10, 20));
    point.Offset(CSize(100, 200));
    EXPECT_EQ(point, CPoint(114, 218));
    point -= CPoint(4, 8);
    point += CSize(1, 2);
    point -= CSize(11, 12);
    point += CPoint(0, 1);
    EXPECT_EQ(point, CPoint(100, 201));

    CSize size(3, -4);
    EXPECT_EQ(-size, CSize(-3, 4));
    size += CSize(10, 20);
    size -= CSize(1, 2);
    EXPECT_EQ(size, CSize(12, 14));
    EXPECT_EQ(CPoint(size), CPoint(12, 14));
}

TEST(GeometryTest, RectanglesMoveAndGrowByTheirEdges) {
    const CRect rect(10, 20, 40, 60);
    EXPECT_EQ(rect.Size(), CSize(30, 40));
    EXPECT_EQ(rect.CenterPoint(), CPoint(25, 40));
    EXPECT_EQ(CRect(-3, -4, 0, -1).CenterPoint(), CPoint(-1, -2));
    EXPECT_EQ(CRect(CPoint(10, 20), CSize(30, 40)), rect);
    EXPECT_EQ(CRect(CPoint(10, 20), CPoint(40, 60)), rect);
    EXPECT_EQ(rect.TopLeft(), CPoint(10, 20));
    EXPECT_EQ(rect.BottomRight(), CPoint(40, 60));

    const struct {
        const char *name;
        void (*change)(CRect &);
        CRect expected;
    } cases[] = {
        {"inflate all edges", [](CRect &r) { r.InflateRect(1, 2, 3, 4); }, {9, 18, 43, 64}},
        {"inflate both ways", [](CRect &r) { r.InflateRect(1, 2); }, {9, 18, 41, 62}},
        {"inflate by a size", [](CRect &r) { r.InflateRect(CSize(1, 2)); }, {9, 18, 41, 62}},
        {"deflate all edges", [](CRect &r) { r.DeflateRect(1, 2, 3, 4); }, {11, 22, 37, 56}},
        {"deflate both ways", [](CRect &r) { r.DeflateRect(1, 2); }, {11, 22, 39, 58}},
        {"deflate by a size", [](CRect &r) { r.DeflateRect(CSize(1, 2)); }, {11, 22, 39, 58}},
        {"offset", [](CRect &r) { r.OffsetRect(5, -5); }, {15, 15, 45, 55}},
        {"add a point", [](CRect &r) { r += CPoint(5, -5); }, {15, 15, 45, 55}},
        {"subtract a size", [](CRect &r) { r -= CSize(5, -5); }, {5, 25, 35, 65}},
        {"subtract a point", [](CRect &r) { r -= CPoint(5, -5); }, {5, 25, 35, 65}},
        {"move to a column", [](CRect &r) { r.MoveToX(0); }, {0, 20, 30, 60}},
        {"move to a row", [](CRect &r) { r.MoveToY(0); }, {10, 0, 40, 40}},
        {"move to a point", [](CRect &r) { r.MoveToXY(-1, -2); }, {-1, -2, 29, 38}},
        {"normalise columns",
         [](CRect &r) {
             r = {4, 1, 2, 3}, r.NormalizeRect();
         },
         {2, 1, 4, 3}},
        {"normalise rows",
         [](CRect &r) {
             r = {2, 3, 4, 1}, r.NormalizeRect();
         },
         {2, 1, 4, 3}},
    };
    for (const auto &c : cases) {
        CRect changed = rect;
        c.change(changed);
        EXPECT_EQ(changed, c.expected) << c.name;
    }
}

TEST(GeometryTest, SetOperationsAgreeWithPixels) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> edge(-4, 4);
    const auto randomRect = [&] {
        return CRect(edge(random), edge(random), edge(random), edge(random));
    };
    for (int round = 0; round < 2000; ++round) {
        const CRect a = randomRect();
        const CRect b = randomRect();
        CRect common(9, 9, 9, 9);
        CRect joined(9, 9, 9, 9);
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
        ASSERT_EQ(a.IsRectEmpty() && b.IsRectEmpty(), !any);
        ASSERT_TRUE(meets || common.IsRectNull());
        ASSERT_EQ(a & b, common);
        ASSERT_EQ(a | b, joined);
    }
}

TEST(GeometryTest, QtConversionsKeepTheExclusiveEdges) {
    EXPECT_EQ(CRect(QRect(3, -4, 5, 6)), CRect(3, -4, 8, 2));
    EXPECT_EQ(QRect(CRect(3, -4, 8, 2)), QRect(3, -4, 5, 6));
    EXPECT_EQ(CRect(QRect()), CRect(0, 0, 0, 0));
    EXPECT_EQ(CRect(QRect(CRect(8, 2, 3, -4))), CRect(8, 2, 3, -4));
    EXPECT_EQ(CPoint(QPoint(3, -4)), CPoint(3, -4));
    EXPECT_EQ(QPoint(CPoint(3, -4)), QPoint(3, -4));
    EXPECT_EQ(CSize(QSize(3, -4)), CSize(3, -4));
    EXPECT_EQ(QSize(CSize(3, -4)), QSize(3, -4));
}

} // namespace
