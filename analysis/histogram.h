/// Counting how often each byte value occurs.
#pragma once

#include "TAVIX20/platform/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavix {

/// How often each value occurs.
using LevelCounts = std::array<std::uint32_t, 256>;

/// Counts runs of bytes, such as the rows of a plane. Fewer than 2^32 bytes in all.
class TAVIX_API LevelCounter {
public:
    void Add(const std::uint8_t *bytes, std::size_t count);
    LevelCounts Total() const;

private:
    /// Ways of counting that give the same; which one is fast depends on the bytes.
    enum class Way {
        TwoLevels, ///< By comparison, as long as there are no more.
        Pairs,     ///< Two bytes at once, where neighbours are alike.
        Single,
    };

    /// Neighbouring bytes are counted in different tables: they are often equal, and a counter that
    /// was just written cannot be read again at once.
    static constexpr std::size_t TABLES = 4;

    Way ChooseWay(const std::uint8_t *bytes, std::size_t count);
    std::size_t AddTwoLevels(const std::uint8_t *bytes, std::size_t count);
    void AddPairs(const std::uint8_t *bytes, std::size_t count);
    void AddSingle(const std::uint8_t *bytes, std::size_t count);
    void AddBlock(const std::uint8_t *bytes);
    void AddBlockAsPairs(const std::uint8_t *bytes);

    std::array<LevelCounts, TABLES> m_tables{};
    std::vector<std::uint32_t> m_pairs; ///< By first + 256 * second byte; made when first needed.
    Way m_way = Way::TwoLevels;
    std::size_t m_untilChoice = 0; ///< Bytes for which the choice still holds.
    std::uint8_t m_first = 0;      ///< The two levels that were alone last.
    std::uint8_t m_second = 0;
};

} // namespace tavix
