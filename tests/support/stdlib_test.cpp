#include "TAVIX20/support/stdlib.h"

#include <gtest/gtest.h>

#include <climits>

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
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(CStdlib::GetNumOfProcessors(), 1);
    ASSERT_EQ(sched_setaffinity(0, sizeof before, &before), 0);
}
