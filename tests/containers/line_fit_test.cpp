// Line fits and segment crossings.

#include "TAVIX20/containers/line_fit.h"
#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/image/tavix_image.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <vector>

namespace {

double SquaredDistances(const std::vector<tagPOINTD> &points, const tagPOINTD &on, double angle) {
    double sum = 0;
    for (const tagPOINTD &p : points) {
        const double across = (p.y - on.y) * std::cos(angle) - (p.x - on.x) * std::sin(angle);
        sum += across * across;
    }
    return sum;
}

} // namespace

TEST(LineFitTest, NoOtherLineLiesCloser) {
    std::mt19937 random(21);
    std::normal_distribution<double> noise(0.0, 3.0);
    for (int degrees = 0; degrees < 180; degrees += 15) {
        const double angle = degrees * M_PI / 180;
        std::vector<tagPOINTD> points;
        for (int i = -20; i <= 20; ++i)
            points.push_back({100 + i * std::cos(angle) * 5 + noise(random),
                              50 + i * std::sin(angle) * 5 + noise(random)});
        tagPOINTD start{};
        tagPOINTD end{};
        ASSERT_EQ(CTavixImage::GetBestStraightLine(points.data(), 41, start, end), 1);
        EXPECT_LE(start.x, end.x);
        const double fitted = std::atan2(end.y - start.y, end.x - start.x);
        const double best = SquaredDistances(points, start, fitted);
        for (double turn : {-0.01, 0.01})
            EXPECT_GT(SquaredDistances(points, {(start.x + end.x) / 2, (start.y + end.y) / 2},
                                       fitted + turn),
                      best);
        for (double shift : {-0.1, 0.1})
            EXPECT_GT(SquaredDistances(
                          points,
                          {start.x - shift * std::sin(fitted), start.y + shift * std::cos(fitted)},
                          fitted),
                      best);
    }
}

TEST(LineFitTest, ExactAndDegenerateCases) {
    TavixArray::CPointArray points;
    TavixArray::CPointArray line;
    for (int y : {9, -4, 3})
        points.Add(5, y);
    ASSERT_EQ(CTavixImage::GetBestStraightLine(points, line), 1);
    ASSERT_EQ(line.GetElementCount(), 2);
    EXPECT_EQ(line[0], (tagPOINT{5, -4})); // A vertical line runs downwards.
    EXPECT_EQ(line[1], (tagPOINT{5, 9}));

    const std::vector<std::vector<tagPOINTD>> refused{
        {},
        {{1, 1}},
        {{3, 4}, {3, 4}, {3, 4}},
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}},
        {{0, 0}, {NAN, 1}},
        {{0, 0}, {HUGE_VAL, 1}},
    };
    for (const auto &set : refused) {
        tagPOINTD start{7, 7};
        tagPOINTD end{7, 7};
        EXPECT_EQ(
            CTavixImage::GetBestStraightLine(set.data(), static_cast<int>(set.size()), start, end),
            0);
        EXPECT_EQ(start.x + end.y, 14);
    }
    EXPECT_EQ(CTavixImage::GetBestStraightLine(TavixArray::CPointArray(), line), 0);
    EXPECT_EQ(line.GetElementCount(), 2);
}

TEST(SegmentCrossingTest, HandWorkedCases) {
    struct Case {
        tagPOINT a, b, c, d;
        int meet;
        int cross;
        double x, y;
    };
    for (const Case &c : {
             Case{{0, 0}, {10, 10}, {0, 10}, {10, 0}, 1, 1, 5, 5},
             Case{{0, 0}, {10, 0}, {3, -3}, {3, 3}, 1, 1, 3, 0},
             Case{{0, 0}, {10, 0}, {10, 0}, {10, 5}, 1, 1, 10, 0}, // Ends touch.
             Case{{0, 0}, {3, 1}, {0, 1}, {3, 0}, 1, 1, 1.5, 0.5}, // Between pixels.
             Case{{0, 0}, {10, 0}, {11, -1}, {11, 1}, 0, 0, 0, 0}, // Only the lines cross.
             Case{{0, 0}, {10, 0}, {0, 1}, {10, 1}, 0, 0, 0, 0},   // Parallel.
             Case{{0, 0}, {10, 0}, {5, 0}, {15, 0}, 1, 0, 0, 0},   // Overlap.
             Case{{0, 0}, {10, 0}, {11, 0}, {15, 0}, 0, 0, 0, 0},  // On one line, apart.
             Case{{5, 0}, {5, 0}, {0, 0}, {10, 0}, 1, 0, 0, 0},    // A point on a segment.
             Case{{5, 1}, {5, 1}, {0, 0}, {10, 0}, 0, 0, 0, 0},    // A point beside it.
             Case{{INT_MIN, INT_MIN},
                  {INT_MAX, INT_MAX},
                  {INT_MIN, INT_MAX},
                  {INT_MAX, INT_MIN},
                  1,
                  1,
                  -0.5,
                  -0.5},
         }) {
        double x = 7;
        double y = 7;
        EXPECT_EQ(
            CTavixImage::IntersectLine(c.a.x, c.a.y, c.b.x, c.b.y, c.c.x, c.c.y, c.d.x, c.d.y),
            c.meet);
        EXPECT_EQ(
            CTavixImage::IntersectLine(c.d.x, c.d.y, c.c.x, c.c.y, c.a.x, c.a.y, c.b.x, c.b.y),
            c.meet);
        EXPECT_EQ(CTavixImage::GetCrossPoint(c.a.x, c.a.y, c.b.x, c.b.y, c.c.x, c.c.y, c.d.x, c.d.y,
                                             &x, &y),
                  c.cross);
        EXPECT_NEAR(x, c.cross ? c.x : 7, 1e-6);
        EXPECT_NEAR(y, c.cross ? c.y : 7, 1e-6);
    }
}
