#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/tavix_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

using TavixArray::CPointArray;

TEST(EllipseTest, WholeOutlinesAreClosedWithoutDuplicatesAndNearTheCurve) {
    for (int a = 1; a <= 40; ++a)
        for (int b = 1; b <= 40; ++b) {
            SCOPED_TRACE(testing::Message() << a << " x " << b);
            CPointArray points;
            const int count = CTavixImage::GetEllipseSegment(3, -5, a, b, points);
            ASSERT_EQ(count, points.GetElementCount());
            ASSERT_EQ(points[0], (tagPOINT{3 + a, -5}));
            std::set<std::pair<int, int>> seen;
            for (int i = 0; i < count; ++i) {
                const tagPOINT &p = points[i];
                const tagPOINT &next = points[(i + 1) % count];
                ASSERT_TRUE(seen.insert({p.x - 3, p.y + 5}).second);
                ASSERT_LE(std::max(std::abs(p.x - next.x), std::abs(p.y - next.y)), 1);
                // Along a row or a column the curve is at most half a pixel away, but for the
                // pixels beside the tip of a thin ellipse.
                const double x = std::abs(p.x - 3);
                const double y = std::abs(p.y + 5);
                const double byRow = std::abs(x - a * std::sqrt(1 - y * y / (b * b)));
                const double byColumn = std::abs(y - b * std::sqrt(1 - x * x / (a * a)));
                ASSERT_TRUE(std::min(byRow, byColumn) <= 0.5 || x == 1 || y == 1);
            }
            for (const auto &axis : {std::pair{-a, 0}, {0, b}, {0, -b}})
                ASSERT_TRUE(seen.count(axis));
        }
}

TEST(EllipseTest, ArcsSegmentsAndBadSizes) {
    CPointArray arc;
    const int count = CTavixImage::GetEllipseSegment(0, 0, 30, 10, 90, 180, arc);
    EXPECT_EQ(count, arc.GetElementCount());
    EXPECT_EQ(arc[0], (tagPOINT{0, -10})); // Up is 90 degrees.
    EXPECT_EQ(arc[arc.GetElementCount() - 1], (tagPOINT{-30, 0}));

    CPointArray flat;
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 4, 0, flat), 9);
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 0, 0, flat), 1);
    CPointArray circle;
    EXPECT_EQ(CTavixImage::GetCycleSegment(0, 0, 1, circle), 4);
    for (int bad : {-1, (1 << 27) + 1})
        EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, bad, 5, flat), 0);
    EXPECT_EQ(CTavixImage::GetEllipseSegment(0, 0, 5, 5, NAN, 5, flat), 0);
    EXPECT_EQ(flat.GetElementCount(), 10);
}

TEST(LineSegmentTest, ThePixelsDoNotDependOnTheDirection) {
    for (int dx = -9; dx <= 9; ++dx)
        for (int dy = -9; dy <= 9; ++dy) {
            CPointArray there;
            CPointArray back;
            const int count = CTavixImage::GetLineSegment(1, 2, 1 + dx, 2 + dy, there);
            EXPECT_EQ(count, std::max(std::abs(dx), std::abs(dy)) + 1);
            CTavixImage::GetLineSegment(1 + dx, 2 + dy, 1, 2, back);
            EXPECT_EQ(there[0], (tagPOINT{1, 2}));
            back.ReverseElements();
            EXPECT_EQ(there == back, 1);
        }
}
