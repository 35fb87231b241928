#include "TAVIX20/support/tavix_lock.h"

#include "TAVIX20/support/stdlib.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include <QCoreApplication>
#include <QTimer>

namespace {

/// An application object for as long as a test.
class ApplicationTest : public testing::Test {
protected:
    void Post(const std::function<void()> &call) {
        QMetaObject::invokeMethod(&m_application, call, Qt::QueuedConnection);
    }

    /// Posts a call that posts the next one, count in all.
    void PostChain(int count) {
        if (count > 0)
            Post([this, count] {
                ++m_calls;
                PostChain(count - 1);
            });
    }

    int m_calls = 0;

private:
    int m_count = 1;
    char m_name[5] = "test";
    char *m_names[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_names};
};

using DoEventsTest = ApplicationTest;
using CTavixLockTest = ApplicationTest;

} // namespace

TEST_F(DoEventsTest, CountSaysHowManyMessages) {
    CStdlib::DoEvents(-1); // What the application posted itself.
    PostChain(20);
    for (const auto &[count, calls] :
         {std::pair{0, 0}, {-2, 0}, {1, 1}, {3, 4}, {-1, 20}, {5, 20}}) {
        CStdlib::DoEvents(count);
        EXPECT_EQ(m_calls, calls) << count;
    }
}

TEST_F(DoEventsTest, ATimerThatIsAlwaysDueHasOneTurn) {
    QTimer timer;
    int turns = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        ++turns;
        PostChain(3);
    });
    timer.start(0);
    PostChain(3);
    CStdlib::DoEvents(-1);
    EXPECT_EQ(turns, 1);
    EXPECT_EQ(m_calls, 6);
}

TEST_F(DoEventsTest, NestingHasAnEnd) {
    int depth = 0;
    int deepest = 0;
    std::function<void()> nest = [&] {
        deepest = std::max(deepest, ++depth);
        Post(nest);
        CStdlib::DoEvents(1);
        --depth;
    };
    Post(nest);
    CStdlib::DoEvents(1);
    EXPECT_EQ(deepest, 100);
}

TEST_F(CTavixLockTest, ASecondEntryWaitsForAMessageThatUnlocks) {
    CTavixLock lock;
    lock.Lock();
    Post([&] { PostChain(5); });
    QTimer::singleShot(20, [&] {
        ++m_calls;
        lock.Unlock();
    });
    lock.Lock();
    EXPECT_EQ(m_calls, 6);
    lock.Unlock();
    lock.Lock();
}

TEST(WithoutApplicationTest, MessagesAreNoneAndAnotherThreadMayUnlock) {
    for (const int count : {-1, 0, 1, 1'000'000'000})
        CStdlib::DoEvents(count);
    CTavixLock lock;
    lock.Lock();
    std::atomic<bool> unlocked = false;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        unlocked = true;
        lock.Unlock();
    });
    lock.Lock();
    EXPECT_TRUE(unlocked);
    other.join();
}
