#include "TAVIX20/analysis/histogram.h"

#include "TAVIX20/analysis/byte_kernels.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <numeric>
#include <utility>

namespace tavix {

namespace {

constexpr std::size_t WORD = sizeof(std::uint64_t);
constexpr std::size_t BLOCK = 4 * WORD;
constexpr std::size_t LEVELS = 256;
constexpr std::size_t PAIRS = LEVELS * LEVELS;
/// How many bytes a choice of the way holds for.
constexpr std::size_t CHOICE = 1 << 16;

std::uint64_t WordAt(const std::uint8_t *bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, WORD);
    return word;
}

/// Whether most neighbours are alike, as in pictures of something; judged from a few of them.
bool IsSmooth(const std::uint8_t *bytes, std::size_t count) {
    constexpr std::size_t samples = 32;
    constexpr int alike = 16;
    const std::size_t step = std::max<std::size_t>(count / samples, 1);
    std::size_t smooth = 0;
    std::size_t seen = 0;
    for (std::size_t at = 0; at + 1 < count; at += step, ++seen)
        smooth += std::abs(bytes[at] - bytes[at + 1]) < alike ? 1 : 0;
    return 2 * smooth > seen;
}

/// Whether the 32 bytes are equal.
bool IsRun(const std::uint8_t *bytes) {
    const std::uint64_t first = WordAt(bytes);
    const std::uint64_t differences =
        (first ^ WordAt(bytes + WORD)) | (first ^ WordAt(bytes + 2 * WORD)) |
        (first ^ WordAt(bytes + 3 * WORD)) | (first ^ std::rotl(first, 8));
    return differences == 0;
}

} // namespace

LevelCounter::Way LevelCounter::ChooseWay(const std::uint8_t *bytes, std::size_t count) {
    if (!IsSmooth(bytes, count))
        return Way::Single;
    try {
        m_pairs.resize(PAIRS);
    } catch (const std::bad_alloc &) {
        return Way::Single;
    }
    return Way::Pairs;
}

void LevelCounter::AddBlock(const std::uint8_t *bytes) {
    for (std::size_t at = 0; at < BLOCK; at += sizeof(std::uint32_t)) {
        std::uint32_t word;
        std::memcpy(&word, bytes + at, sizeof word);
        for (LevelCounts &table : m_tables) {
            ++table[word & 0xFF];
            word >>= 8;
        }
    }
}

void LevelCounter::AddBlockAsPairs(const std::uint8_t *bytes) {
    std::uint32_t *const pairs = m_pairs.data();
    for (std::size_t at = 0; at < BLOCK; at += WORD) {
        const std::uint64_t word = WordAt(bytes + at);
        ++pairs[word & 0xFFFF];
        ++pairs[word >> 16 & 0xFFFF];
        ++pairs[word >> 32 & 0xFFFF];
        ++pairs[word >> 48];
    }
}

/// Counts bytes from the start on as long as they have two levels, and returns how many.
std::size_t LevelCounter::AddTwoLevels(const std::uint8_t *bytes, std::size_t count) {
    const auto isOther = [this](std::uint8_t byte) { return byte != m_first && byte != m_second; };
    std::size_t at = 0;
    // Twice at most: a level that is new may take the place of one that does not occur.
    for (int attempt = 0; attempt < 3; ++attempt) {
        std::size_t firstCount = 0;
        const std::size_t counted =
            CountTwoLevels(bytes + at, count - at, m_first, m_second, firstCount);
        m_tables[0][m_first] += static_cast<std::uint32_t>(firstCount);
        m_tables[0][m_second] += static_cast<std::uint32_t>(counted - firstCount);
        at += counted;
        const std::uint8_t *const other =
            std::find_if(bytes + at, bytes + std::min(at + BLOCK, count), isOther);
        if (other == bytes + std::min(at + BLOCK, count))
            break;
        m_second = std::exchange(m_first, *other);
    }
    return at;
}

void LevelCounter::AddPairs(const std::uint8_t *bytes, std::size_t count) {
    std::size_t at = 0;
    for (; at + BLOCK <= count; at += BLOCK) {
        if (IsRun(bytes + at))
            m_tables[0][bytes[at]] += BLOCK;
        else
            AddBlockAsPairs(bytes + at);
    }
    AddSingle(bytes + at, count - at);
}

void LevelCounter::AddSingle(const std::uint8_t *bytes, std::size_t count) {
    std::size_t at = 0;
    for (; at + BLOCK <= count; at += BLOCK)
        AddBlock(bytes + at);
    for (; at < count; ++at)
        ++m_tables[at % TABLES][bytes[at]];
}

void LevelCounter::Add(const std::uint8_t *bytes, std::size_t count) {
    while (count > 0) {
        std::size_t part = std::min(count, CHOICE);
        if (part < BLOCK) // Too short to judge, as the end of a row.
            return AddSingle(bytes, part);
        if (m_untilChoice == 0 || m_way == Way::TwoLevels) {
            m_way = Way::TwoLevels;
            if (const std::size_t counted = AddTwoLevels(bytes, part); counted > 0) {
                bytes += counted;
                count -= counted;
                continue;
            }
            m_way = ChooseWay(bytes, part);
            m_untilChoice = CHOICE;
        }
        part = std::min(part, m_untilChoice);
        if (m_way == Way::Pairs)
            AddPairs(bytes, part);
        else
            AddSingle(bytes, part);
        m_untilChoice -= part;
        bytes += part;
        count -= part;
    }
}

LevelCounts LevelCounter::Total() const {
    LevelCounts total{};
    for (const LevelCounts &table : m_tables)
        for (std::size_t level = 0; level < LEVELS; ++level)
            total[level] += table[level];
    if (m_pairs.empty())
        return total;
    for (std::size_t second = 0; second < LEVELS; ++second) {
        const std::uint32_t *const pairs = m_pairs.data() + second * LEVELS;
        for (std::size_t first = 0; first < LEVELS; ++first)
            total[first] += pairs[first];
        total[second] = std::accumulate(pairs, pairs + LEVELS, total[second]);
    }
    return total;
}

} // namespace tavix
