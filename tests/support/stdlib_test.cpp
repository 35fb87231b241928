#include "TAVIX20/support/stdlib.h"

#include "TAVIX20/containers/point_array.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <thread>

#include <sched.h>

TEST(CStdlibTest, DistanceIsTruncatedTowardZero) {
    EXPECT_EQ(CStdlib::Distance(0, 0, 3, 4), 5);
    EXPECT_EQ(CStdlib::Distance(1, 1, 2, 2), 1);
    EXPECT_EQ(CStdlib::Distance(-7, 2, -7, 2), 0);
    EXPECT_EQ(CStdlib::Distance(0, 0, -99, 14), 99); // 99.98
    EXPECT_EQ(CStdlib::Distance(INT_MIN, 0, INT_MAX, 0), 4294967295L);
}

TEST(CStdlibTest, ProcessorsAreThoseTheProcessMayUse) {
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(CStdlib::GetNumOfProcessors(), CPU_COUNT(&before));

    cpu_set_t one;
    CPU_ZERO(&one);
    for (int cpu = 0; cpu < CPU_SETSIZE && CPU_COUNT(&one) == 0; ++cpu)
        if (CPU_ISSET(cpu, &before))
            CPU_SET(cpu, &one);
    std::thread([&] {
        EXPECT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
        EXPECT_EQ(CStdlib::GetNumOfProcessors(), CPU_COUNT(&before));
    }).join();
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(CStdlib::GetNumOfProcessors(), 1);
    ASSERT_EQ(sched_setaffinity(0, sizeof before, &before), 0);
}

TEST(CStdlibTest, AnglesAndRotation) {
    EXPECT_EQ(CStdlib::GetDegree(5, 5, 5, -5), 90.0);
    EXPECT_NEAR(CStdlib::GetDegree(0, 0, 10, 10), 315.0, 1e-9);
    EXPECT_EQ(CStdlib::GetDegree3Point(9, 0, 0, 0, 0, 7), 90.0);
    EXPECT_NEAR(CStdlib::GetDegree3Point(1, 9, 1, 1, 5, -3), 135.0, 1e-9);
    EXPECT_EQ(CStdlib::GetDegree3Point(-4, 0, 0, 0, INT_MAX, 0), 180.0);

    const struct {
        CPoint point;
        double degrees;
        CPoint turned; ///< About (10, 20).
    } cases[] = {{{15, 20}, 0.0, {15, 20}},
                 {{15, 20}, 30.0, {14, 22}},            // (14.33, 22.5)
                 {{15, 20}, -100.0, {9, 15}},           // (9.13, 15.08)
                 {{-20, 20}, 45.0, {-11, -1}},          // (-11.2, -1.2)
                 {{INT_MIN, 20}, 180.0, {INT_MAX, 19}}, // The sine of pi is not quite 0.
                 {{1, 1}, NAN, {0, 0}}};
    for (const auto &[point, degrees, turned] : cases)
        EXPECT_EQ(CStdlib::RotatePoint(point, degrees, {10, 20}), turned) << degrees;
    double x = 0, y = 0;
    CStdlib::RotatePoint(15.0, 20.0, 30.0, 10.0, 20.0, &x, &y);
    EXPECT_NEAR(x, 10 + 5 * std::sqrt(0.75), 1e-12);
    EXPECT_NEAR(y, 22.5, 1e-12);

    EXPECT_EQ(CStdlib::PointToMM(72), 25.4);
    EXPECT_EQ(CStdlib::MMToPoint(25.4), 72.0);
}

TEST(CStdlibTest, FreeLinesKeepTheirCorners) {
    const struct {
        std::vector<CPoint> drawn;
        double tolerance;
        std::vector<CPoint> tuned;
    } cases[] = {{{}, 1, {}},
                 {{{3, 3}, {3, 3}}, 1, {{3, 3}}},
                 {{{0, 0}, {0, 0}, {5, 1}, {9, 0}, {10, 0}, {11, 5}, {10, 10}},
                  1,
                  {{0, 0}, {10, 0}, {10, 10}}},
                 {{{0, 0}, {5, 1}, {10, 0}}, 0.5, {{0, 0}, {5, 1}, {10, 0}}},
                 {{{0, 0}, {5, 5}, {10, 10}, {5, 5}}, -1, {{0, 0}, {10, 10}, {5, 5}}},
                 {{{0, 0}, {6, 0}, {3, 4}, {0, 0}}, 1, {{0, 0}, {6, 0}, {3, 4}, {0, 0}}}};
    for (const auto &[drawn, tolerance, tuned] : cases) {
        TavixArray::CPointArray points;
        for (const CPoint &point : drawn)
            points.Add(point);
        EXPECT_EQ(CStdlib::FreePointTuning(points, tolerance), static_cast<int>(tuned.size()));
        ASSERT_EQ(points.GetElementCount(), static_cast<int>(tuned.size()));
        for (int i = 0; i < points.GetElementCount(); ++i)
            EXPECT_EQ(CPoint(points[i]), tuned[static_cast<std::size_t>(i)]) << i;
    }
}

TEST(CStdlibTest, SegmentsAreAppended) {
    TavixArray::CPointArray points;
    points.Add(7, 7);
    EXPECT_EQ(CStdlib::GetLineSegment(0, 0, 2, -1, points), 3);
    EXPECT_EQ(points[1] == CPoint(0, 0) && points[3] == CPoint(2, -1), true);
    EXPECT_EQ(CStdlib::GetCycleSegment(0, 0, 1, points), 4);
    EXPECT_EQ(CStdlib::GetEllipseSegment(0, 0, 3, 0, points), 7);
    EXPECT_EQ(CStdlib::GetCycleSegment(0, 0, -1, points), 0);
    EXPECT_EQ(points.GetElementCount(), 1 + 3 + 4 + 7);
}
