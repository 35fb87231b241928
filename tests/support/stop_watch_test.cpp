#include "TAVIX20/support/stop_watch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

constexpr double ROUNDING = 1e-3; // Milliseconds.

void Sleep() {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

} // namespace

TEST(CStopWatchTest, MeasuresWithItsOffset) {
    CStopWatch watch;
    EXPECT_EQ(watch.IsStarted(), 0);
    EXPECT_EQ(watch.GetElapsedTime(), 0.0);
    watch.Begin(1.5);
    EXPECT_EQ(watch.IsStarted(), 1);
    Sleep();
    const double running = watch.GetElapsedTime();
    EXPECT_GE(running, 1510.0 - ROUNDING);
    Sleep();
    watch.Stop();
    EXPECT_EQ(watch.IsStarted(), 0);
    const double stopped = watch.GetElapsedTime();
    EXPECT_GE(stopped, running + 10.0 - ROUNDING);
    Sleep();
    EXPECT_EQ(watch.GetElapsedTime(), stopped);
}

TEST(CStopWatchTest, APauseIsNotCounted) {
    for (const int readings : {0, 1, 5}) {
        CStopWatch all;
        CStopWatch watch;
        all.Begin(0.0);
        watch.Begin(0.0);
        Sleep();
        watch.Pause();
        double first = readings > 0 ? watch.GetElapsedTime() : 0.0;
        for (int i = 0; i < readings; ++i) {
            Sleep();
            watch.Pause(); // Does nothing.
            EXPECT_EQ(watch.GetElapsedTime(), first);
        }
        Sleep();
        watch.Resume();
        watch.Resume(); // Does nothing.
        Sleep();
        watch.Stop();
        all.Stop();
        EXPECT_GE(watch.GetElapsedTime(), 20.0 - ROUNDING);
        EXPECT_LE(watch.GetElapsedTime(), all.GetElapsedTime() - 10.0 * (readings + 1) + ROUNDING);
    }
}

TEST(CStopWatchTest, BeginAndStopLeaveAPausedWatchPaused) {
    CStopWatch watch;
    watch.Pause(); // Not started: does nothing.
    watch.Begin(0.0);
    watch.Pause();
    Sleep();
    watch.Begin(0.0);
    const double begunAnew = watch.GetElapsedTime();
    EXPECT_LE(begunAnew, -10.0 + ROUNDING);
    Sleep();
    EXPECT_EQ(watch.GetElapsedTime(), begunAnew);
    watch.Stop();
    watch.Resume(); // Not started: does nothing.
    const double stopped = watch.GetElapsedTime();
    Sleep();
    EXPECT_LE(watch.GetElapsedTime(), stopped - 10.0 + ROUNDING);
}
