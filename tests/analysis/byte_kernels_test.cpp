#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/analysis/histogram.h"
#include "analysis/each_target.h"
#include "image/image_samples.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace tavix_test;
using tavix::ByteBand;

class ByteKernelsTest : public EachTargetTest {
protected:
    /// Calls check(bytes, count) for counts to 300 at changing alignments; the block goes on
    /// behind.
    void ForRuns(const std::function<void(unsigned char *, std::size_t)> &check) {
        for (std::size_t count = 0; count <= 300; ++count) {
            Bytes block = RandomBytes(500, m_random, count % 3 == 0 ? 3 : 255);
            check(block.data() + count * 7 % 64, count);
        }
    }

    /// Checks that change does to a run what expected does to each byte, and nothing behind it.
    void ExpectChange(const std::function<void(unsigned char *, std::size_t)> &change,
                      const std::function<int(std::size_t, int)> &expected) {
        ForRuns([&](unsigned char *bytes, std::size_t count) {
            Bytes wanted(bytes, bytes + count + 64);
            for (std::size_t i = 0; i < count; ++i)
                wanted[i] = static_cast<unsigned char>(expected(i, wanted[i]));
            change(bytes, count);
            ASSERT_EQ(Bytes(bytes, bytes + count + 64), wanted) << count;
        });
    }
};

INSTANTIATE_TEST_SUITE_P(Targets, ByteKernelsTest, EACH_TARGET, TargetName);

constexpr ByteBand BANDS[] = {{0, 255}, {50, 100}, {0, 0}, {255, 255}, {7, 7}, {1, 0}, {200, 100}};

TEST_P(ByteKernelsTest, TablesAndBands) {
    tavix::ByteTable table;
    for (unsigned char &entry : table)
        entry = static_cast<unsigned char>(m_random());
    ExpectChange([&](auto *bytes, std::size_t count) { tavix::LookUp(bytes, count, table); },
                 [&](std::size_t, int old) { return table[static_cast<std::size_t>(old)]; });
    for (const ByteBand band : BANDS) {
        const auto isIn = [band](int level) { return level >= band.low && level <= band.high; };
        ExpectChange(
            [&](auto *bytes, std::size_t count) { tavix::SplitByBand(bytes, count, band, 9, 200); },
            [&](std::size_t, int old) { return isIn(old) ? 9 : 200; });
        ExpectChange(
            [&](auto *bytes, std::size_t count) { tavix::ReplaceBand(bytes, count, band, 77); },
            [&](std::size_t, int old) { return isIn(old) ? 77 : old; });
        ForRuns([&](const unsigned char *bytes, std::size_t count) {
            ASSERT_EQ(tavix::CountInBand(bytes, count, band),
                      static_cast<std::size_t>(std::count_if(bytes, bytes + count, isIn)));
        });
    }
}

TEST_P(ByteKernelsTest, DifferencesSumsAndRisingPairs) {
    const Bytes other = RandomBytes(500, m_random);
    for (const int tolerance : {0, 1, 100, 254, 255})
        ExpectChange(
            [&](auto *bytes, std::size_t count) {
                tavix::SplitByDifference(bytes, other.data() + 3, count,
                                         static_cast<unsigned char>(tolerance), 5, 6);
            },
            [&](std::size_t i, int old) {
                return std::abs(old - other[i + 3]) <= tolerance ? 5 : 6;
            });
    ForRuns([](const unsigned char *bytes, std::size_t count) {
        ASSERT_EQ(tavix::SumOf(bytes, count),
                  std::accumulate(bytes, bytes + count, std::uint64_t{0}));
        std::uint64_t words[2];
        tavix::MarkRisingPairs(bytes, 2, words);
        for (std::size_t i = 0; i < 128; ++i)
            ASSERT_EQ(words[i / 64] >> i % 64 & 1, bytes[i] < bytes[i + 1] ? 1U : 0U);
    });
}

TEST(LevelCounterTest, CountsNoiseAndRuns) {
    std::mt19937 random(3);
    tavix::LevelCounter counter;
    tavix::LevelCounts expected{};
    for (int round = 0; round < 600; ++round) {
        // Noise, two levels, slopes, one level: each way of counting has its turn.
        Bytes bytes = RandomBytes(round % 7 * 6000 + round, random, round % 4 == 1 ? 1 : 255);
        for (std::size_t i = 0; i < bytes.size() && round % 4 > 1; ++i)
            bytes[i] = static_cast<unsigned char>(round % 4 == 2 ? i / 5 + bytes[i] % 4 : 9);
        counter.Add(bytes.data(), bytes.size());
        for (const unsigned char byte : bytes)
            ++expected[byte];
    }
    EXPECT_EQ(counter.Total(), expected);
}

} // namespace
