#include "TAVIX20/support/worker_pool.h"

#include "support/quiet_threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using tavix::WorkerPool;

namespace {

/// Adds 1 to every value of the slice.
void Mark(WorkerPool &pool, std::vector<int> &values) {
    pool.Run(static_cast<int>(values.size()), [&](const WorkerPool::Slice &slice) {
        for (int i = slice.first; i < slice.end; ++i)
            ++values[static_cast<std::size_t>(i)];
    });
}

} // namespace

TEST(WorkerPoolTest, SlicesAreEqualAndTheLastTakesTheRemainder) {
    for (int workers : {1, 2, 3, 7}) {
        WorkerPool pool(workers);
        ASSERT_EQ(pool.GetWorkerCount(), workers);
        for (int total : {0, 1, 5, 7, 100, 101}) {
            std::vector<WorkerPool::Slice> slices(static_cast<std::size_t>(workers));
            pool.Run(total, [&](const WorkerPool::Slice &slice) {
                slices[static_cast<std::size_t>(slice.worker)] = slice;
            });
            for (int k = 0; k < workers; ++k) {
                const auto &slice = slices[static_cast<std::size_t>(k)];
                EXPECT_EQ(slice.worker, k);
                EXPECT_EQ(slice.first, total / workers * k);
                EXPECT_EQ(slice.end, k == workers - 1 ? total : total / workers * (k + 1));
            }
        }
    }
}

TEST(WorkerPoolTest, CallersFromSeveralThreadsTakeTurns) {
    WorkerPool pool(3);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller)
        callers.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                std::vector<int> values(1001, round);
                Mark(pool, values);
                if (values != std::vector<int>(1001, round + 1))
                    ++wrong;
            }
        });
    for (std::thread &caller : callers)
        caller.join();
    EXPECT_EQ(wrong, 0);
}

TEST(WorkerPoolTest, AForkedChildHasWorkersOfItsOwn) {
    WorkerPool pool(2);
    std::vector<int> values(100, 0);
    Mark(pool, values);
    ExpectInForkedChild([&] {
        Mark(pool, values);
        Mark(pool, values);
        return values == std::vector<int>(100, 3);
    });
    Mark(pool, values);
    EXPECT_EQ(values, std::vector<int>(100, 2));
}
