#include "TAVIX20/support/mm_timers.h"

#include "TAVIX20/platform/multimedia_timer.h"
#include "support/quiet_threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

void WaitUntil(const std::function<bool()> &isTrue) {
    while (!isTrue())
        std::this_thread::sleep_for(milliseconds(1));
}

/// Lets a timer call a function.
int CallFunction(void *function) {
    (*static_cast<const std::function<void()> *>(function))();
    return 0;
}

/// A timer that counts its calls, or does something else in them.
struct CountingTimer {
    std::atomic<int> calls = 0;
    std::function<void()> call = [this] { ++calls; };
    CMMTimers timer;

    CountingTimer() { timer.RegisterCallBack(CallFunction, &call); }
};

/// Returns when every call that was under way has ended: all come from one thread.
void WaitForServiceThread() {
    CountingTimer counting;
    ASSERT_EQ(counting.timer.StartTimer(1, 1), 1);
    WaitUntil([&] { return counting.calls > 0; });
}

/// The times of the first calls of a periodic timer, in milliseconds after its start. The first
/// call takes a while.
std::vector<double> CallTimes(unsigned period, milliseconds firstTakes, std::size_t count) {
    std::vector<double> times;
    std::atomic<bool> enough = false;
    const auto start = Clock::now();
    CountingTimer timed;
    timed.call = [&] {
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        if (times.size() == 1)
            std::this_thread::sleep_for(firstTakes);
        enough = times.size() >= count;
    };
    EXPECT_EQ(timed.timer.StartTimer(period, 0), 1);
    WaitUntil([&] { return enough.load(); });
    EXPECT_EQ(timed.timer.StopTimer(), 1);
    return times;
}

} // namespace

TEST(CMMTimersTest, HoldsAResolutionWithinTheRangeOfTheSystem) {
    for (const auto &[asked, held] : std::vector<std::pair<unsigned, unsigned>>{
             {0, 1}, {1, 1}, {777, 777}, {1'000'000, 1'000'000}, {4'000'000'000, 1'000'000}}) {
        {
            CMMTimers timer(asked);
            EXPECT_EQ(timer.GetTimerRes(), held);
            EXPECT_TRUE(tavix::EndTimerPeriod(held)); // It was begun ...
            ASSERT_TRUE(tavix::BeginTimerPeriod(held));
        }
        EXPECT_FALSE(tavix::EndTimerPeriod(held)); // ... and ended.
    }
    CMMTimers timer;
    EXPECT_EQ(timer.GetTimerRes(), 0U);
    EXPECT_FALSE(tavix::EndTimerPeriod(1));
    EXPECT_FALSE(tavix::BeginTimerPeriod(0));
    EXPECT_FALSE(tavix::BeginTimerPeriod(1'000'001));
}

TEST(CMMTimersTest, ARefusedStartLeavesTheTimerRunning) {
    for (const unsigned period : {0U, 1'000'001U}) {
        CMMTimers timer;
        EXPECT_EQ(timer.StartTimer(period, 0), 0);
        EXPECT_EQ(timer.StartTimer(1000, 0), 0);
        EXPECT_EQ(timer.StopTimer(), 0);
        EXPECT_EQ(timer.StartTimer(1000, 0), 1);
        EXPECT_EQ(timer.StopTimer(), 1);
        EXPECT_EQ(timer.StopTimer(), 0);
    }
}

TEST(CMMTimersTest, NoCallComesBeforeItsTimeAndMissedOnesAreMadeUpFor) {
    // Calls 2 to 5 are overdue when the first returns. Had they been dropped, 40 ms would pass
    // between the second and the fifth; a busy machine may bring that about now and then, but not
    // each time.
    bool areMadeUpFor = false;
    for (int attempt = 0; attempt < 50 && !areMadeUpFor; ++attempt) {
        const auto times = CallTimes(20, milliseconds(110), 6);
        for (std::size_t i = 0; i < times.size(); ++i)
            EXPECT_GE(times[i], 20.0 * static_cast<double>(i + 1));
        areMadeUpFor = times[4] - times[1] < 40.0;
    }
    EXPECT_TRUE(areMadeUpFor);
}

TEST(CMMTimersTest, CallsMissedForMoreThanASecondAreDropped) {
    const auto times = CallTimes(5, milliseconds(1100), 20);
    for (std::size_t i = 1; i < times.size(); ++i)
        EXPECT_GE(times[i], times[0] + 1095.0 + 5.0 * static_cast<double>(i - 1));
}

TEST(CMMTimersTest, AOneShotEventIsOverAfterItsCall) {
    for (const bool isSecond : {false, true}) { // Alone, or beside the event of a running timer.
        CountingTimer counting;
        ASSERT_TRUE(!isSecond || counting.timer.StartTimer(1'000'000, 0) == 1);
        ASSERT_EQ(counting.timer.StartTimer(1, 1), 1);
        WaitUntil([&] { return counting.calls > 0; });
        WaitForServiceThread();
        EXPECT_EQ(counting.timer.StartTimer(1, 0), 0) << "it counts as running until it is stopped";
        EXPECT_EQ(counting.timer.StopTimer(), 0) << "the event started last";
        EXPECT_EQ(tavix::KillTimerEventsOf(&counting.timer), 0) << "the other has ended, too";
        EXPECT_EQ(counting.calls, 1);
    }
}

TEST(CMMTimersTest, StopWaitsForTheCallUnderWay) {
    std::atomic<bool> begun = false;
    std::atomic<bool> ended = false;
    CountingTimer counting;
    counting.call = [&] {
        begun = true;
        std::this_thread::sleep_for(milliseconds(30));
        ended = counting.timer.StartTimer(1, 1) == 1; // Does not outlive the stop either.
    };
    ASSERT_EQ(counting.timer.StartTimer(1, 0), 1);
    WaitUntil([&] { return begun.load(); });
    EXPECT_EQ(counting.timer.StopTimer(), 1);
    EXPECT_TRUE(ended);
    EXPECT_EQ(tavix::KillTimerEventsOf(&counting.timer), 0);
    EXPECT_EQ(counting.timer.StartTimer(1000, 0), 1) << "it does not count as running";
}

TEST(CMMTimersTest, ACallMayStopOrDestroyItsTimer) {
    for (int round = 0; round < 50; ++round) {
        CountingTimer counting;
        std::atomic<int> stopped = -1;
        counting.call = [&] {
            ++counting.calls;
            stopped = counting.timer.StopTimer();
        };
        ASSERT_EQ(counting.timer.StartTimer(1, 0), 1);
        WaitUntil([&] { return stopped >= 0; });
        EXPECT_EQ(stopped, 1);
        EXPECT_EQ(counting.timer.StopTimer(), 0);
        EXPECT_EQ(counting.calls, 1);

        auto owned = std::make_unique<CMMTimers>();
        std::function<void()> destroy = [&] { owned.reset(); };
        owned->RegisterCallBack(CallFunction, &destroy);
        ASSERT_EQ(owned->StartTimer(1, 0), 1);
        WaitForServiceThread();
        ASSERT_FALSE(owned);
    }
}

TEST(CMMTimersTest, NoCallComesAfterTheTimerIsDestroyed) {
    std::vector<std::thread> users;
    std::atomic<int> late = 0;
    for (int user = 0; user < 3; ++user)
        users.emplace_back([&late, user] {
            for (int round = 0; round < 40; ++round) {
                std::atomic<bool> exists = true;
                std::function<void()> call = [&] { late += !exists; };
                {
                    CMMTimers timer(1);
                    timer.RegisterCallBack(CallFunction, &call);
                    timer.StartTimer(1, 0);
                    timer.StartTimer(2, 1);
                    std::this_thread::sleep_for(std::chrono::microseconds(700 * user + 50 * round));
                }
                exists = false;
            }
        });
    for (std::thread &user : users)
        user.join();
    EXPECT_EQ(late, 0);
}

TEST(CMMTimersTest, CallbackAndDataChangeTogether) {
    static int first;
    static int second;
    static std::atomic<int> wrong;
    std::atomic<bool> done = false;
    CMMTimers timer;
    timer.TimerProc(); // Nothing is registered.
    std::thread changer([&] {
        for (int round = 0; round < 20000; ++round) {
            timer.RegisterCallBack([](void *data) { return wrong += data != &first; }, &first);
            timer.RegisterCallBack([](void *data) { return wrong += data != &second; }, &second);
        }
        done = true;
    });
    while (!done)
        timer.TimerProc();
    changer.join();
    EXPECT_EQ(wrong, 0);
}

TEST(CMMTimersTest, AForkedChildHasNoTimersUntilItStartsSome) {
    CountingTimer counting;
    ASSERT_EQ(counting.timer.StartTimer(1000, 0), 1);
    ExpectInForkedChild([&] {
        bool isRight = counting.timer.StopTimer() == 0;
        isRight &= counting.timer.StartTimer(1, 0) == 1;
        WaitUntil([&] { return counting.calls >= 3; });
        return isRight && counting.timer.StopTimer() == 1;
    });
    EXPECT_EQ(counting.timer.StopTimer(), 1) << "the parent's goes on";
}
