#include "TAVIX20/containers/line_fit.h"
#include "TAVIX20/image/tavix_image.h"

#include "containers/point_list.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>

TEST(LineFitTest, FitsAsOpenCV) {
    std::mt19937 random(21);
    std::normal_distribution<double> noise(0.0, 3.0);
    for (int degrees = 0; degrees < 180; degrees += 15) {
        const double angle = degrees * M_PI / 180;
        std::vector<tagPOINTD> points;
        std::vector<cv::Point2f> same;
        for (int i = -20; i <= 20; ++i) {
            points.push_back({100 + i * std::cos(angle) * 5 + noise(random),
                              50 + i * std::sin(angle) * 5 + noise(random)});
            same.emplace_back(points.back().x, points.back().y);
        }
        cv::Vec4f line; // A direction of length 1 and a point.
        cv::fitLine(same, line, cv::DIST_L2, 0, 1e-6, 1e-6);
        double first = HUGE_VAL, last = -HUGE_VAL;
        for (const tagPOINTD &p : points) {
            const double along = (p.x - line[2]) * line[0] + (p.y - line[3]) * line[1];
            first = std::min(first, along);
            last = std::max(last, along);
        }
        if (line[0] < 0)
            std::swap(first, last);
        tagPOINTD start{}, end{};
        ASSERT_EQ(CTavixImage::GetBestStraightLine(points.data(), 41, start, end), 1);
        const cv::Vec4d expected(line[2] + first * line[0], line[3] + first * line[1],
                                 line[2] + last * line[0], line[3] + last * line[1]);
        EXPECT_LT(cv::norm(cv::Vec4d(start.x, start.y, end.x, end.y), expected), 1e-3) << degrees;
    }
}

TEST(LineFitTest, ExactAndDegenerateCases) {
    TavixArray::CPointArray line;
    ASSERT_EQ(CTavixImage::GetBestStraightLine(ArrayOf({{5, 9}, {5, -4}, {5, 3}}), line), 1);
    EXPECT_EQ(PairsOf(line), (Pairs{{5, -4}, {5, 9}})); // A vertical line runs downwards.

    const std::vector<std::vector<tagPOINTD>> refused{
        {},
        {{1, 1}},
        {{3, 4}, {3, 4}, {3, 4}},
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}},
        {{0, 0}, {NAN, 1}},
        {{0, 0}, {HUGE_VAL, 1}},
    };
    for (const auto &set : refused) {
        tagPOINTD start{7, 7}, end{7, 7};
        EXPECT_EQ(
            CTavixImage::GetBestStraightLine(set.data(), static_cast<int>(set.size()), start, end),
            0);
        EXPECT_EQ(start.x + end.y, 14);
    }
    EXPECT_EQ(CTavixImage::GetBestStraightLine(TavixArray::CPointArray(), line), 0);
    EXPECT_EQ(line.GetElementCount(), 2);
}

TEST(SegmentCrossingTest, HandWorkedCases) {
    constexpr int low = INT_MIN, high = INT_MAX;
    const struct {
        tagPOINT a, b, c, d;
        int meet, cross;
        double x, y;
    } cases[] = {
        {{0, 0}, {10, 10}, {0, 10}, {10, 0}, 1, 1, 5, 5},
        {{0, 0}, {10, 0}, {3, -3}, {3, 3}, 1, 1, 3, 0},
        {{0, 0}, {10, 0}, {10, 0}, {10, 5}, 1, 1, 10, 0}, // Ends touch.
        {{0, 0}, {3, 1}, {0, 1}, {3, 0}, 1, 1, 1.5, 0.5}, // Between pixels.
        {{0, 0}, {10, 0}, {11, -1}, {11, 1}, 0, 0, 0, 0}, // Only the lines cross.
        {{0, 0}, {10, 0}, {0, 1}, {10, 1}, 0, 0, 0, 0},   // Parallel.
        {{0, 0}, {10, 0}, {5, 0}, {15, 0}, 1, 0, 0, 0},   // Overlap.
        {{0, 0}, {10, 0}, {11, 0}, {15, 0}, 0, 0, 0, 0},  // On one line, apart.
        {{5, 0}, {5, 0}, {0, 0}, {10, 0}, 1, 0, 0, 0},    // A point on a segment.
        {{5, 1}, {5, 1}, {0, 0}, {10, 0}, 0, 0, 0, 0},    // A point beside it.
        {{low, low}, {high, high}, {low, high}, {high, low}, 1, 1, -0.5, -0.5},
    };
    for (const auto &c : cases) {
        double x = 7, y = 7;
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
