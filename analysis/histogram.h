/// Counting how often each byte value occurs.
#pragma once

#include "TAVIX20/platform/export.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavix {

/// How often each value occurs.
using LevelCounts = std::array<std::uint32_t, 256>;

/// Counts runs of bytes, such as the rows of a plane. Fewer than 2^32 bytes in all.
class TAVIX_API LevelCounter {
public:
    void Add(const std::uint8_t *bytes, std::size_t count);
    LevelCounts Total() const;

private:
    /// Neighbouring bytes are counted in different tables: they are often equal, and a counter that
    /// was just written cannot be read again at once.
    static constexpr std::size_t TABLES = 8;

    void AddBlock(const std::uint8_t *bytes);

    std::array<LevelCounts, TABLES> m_tables{};
};

} // namespace tavix
