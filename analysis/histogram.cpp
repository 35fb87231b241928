#include "TAVIX20/analysis/histogram.h"

#include <bit>
#include <cstring>

namespace tavix {

namespace {

constexpr std::size_t WORD = sizeof(std::uint64_t);
constexpr std::size_t BLOCK = 4 * WORD;

std::uint64_t WordAt(const std::uint8_t *bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, WORD);
    return word;
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

void LevelCounter::AddBlock(const std::uint8_t *bytes) {
    for (std::size_t at = 0; at < BLOCK; at += WORD) {
        std::uint64_t word = WordAt(bytes + at);
        for (LevelCounts &table : m_tables) {
            ++table[word & 0xFF];
            word >>= 8;
        }
    }
}

void LevelCounter::Add(const std::uint8_t *bytes, std::size_t count) {
    std::size_t at = 0;
    for (; at + BLOCK <= count; at += BLOCK) {
        if (IsRun(bytes + at))
            m_tables[0][bytes[at]] += BLOCK;
        else
            AddBlock(bytes + at);
    }
    for (; at < count; ++at)
        ++m_tables[at % TABLES][bytes[at]];
}

LevelCounts LevelCounter::Total() const {
    LevelCounts total{};
    for (const LevelCounts &table : m_tables)
        for (std::size_t level = 0; level < total.size(); ++level)
            total[level] += table[level];
    return total;
}

} // namespace tavix
