#include "TAVIX20/containers/point_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace {

using TavixArray::detail::PointBlock;
using TavixArray::detail::PointPool;

PointBlock Filled(PointPool &pool, std::size_t size, const POINT &point) {
    std::size_t written = 0;
    for (; written < size; ++written) {
        if (written == pool.Room())
            pool.MakeRoom(written + 1, written, size);
        pool.Next()[written] = point;
    }
    return pool.Take(size);
}

/// Blocks of all sizes, from several to a piece to several pieces a block, are made and given back
/// by several threads, which get each other's memory.
TEST(PointBlockTest, ThreadsGiveBackMemoryAndGetIt) {
    constexpr int threadCount = 4;
    std::vector<int> wrong(threadCount);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&wrong, thread] {
            PointPool pool;
            for (int round = 0; round < 20; ++round) {
                std::vector<PointBlock> blocks;
                for (int i = 0; i < 12; ++i)
                    blocks.push_back(Filled(pool, std::size_t{2} << i, {thread, i}));
                blocks.push_back(Filled(pool, 40000, {thread, 12}));
                for (std::size_t i = 0; i < blocks.size(); ++i)
                    wrong[static_cast<std::size_t>(thread)] += static_cast<int>(std::count_if(
                        blocks[i].data(), blocks[i].data() + blocks[i].size(),
                        [&](const POINT &point) {
                            return point.x != thread || point.y != static_cast<int>(i);
                        }));
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(threadCount));
}

} // namespace
