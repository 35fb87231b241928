/// Kernels over runs of bytes, which rows and whole buffers are. Each has one body for every
/// instruction set, compiled several times and chosen when the program runs; none needs alignment.
#pragma once

#include "TAVIX20/platform/export.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavix {

/// A new value for each of the 256 old ones.
using ByteTable = std::array<std::uint8_t, 256>;

/// An inclusive range of values; none when low is above high.
struct ByteBand {
    std::uint8_t low;
    std::uint8_t high;
};

/// Replaces every byte by its entry of the table.
TAVIX_API void LookUp(std::uint8_t *bytes, std::size_t count, const ByteTable &table);
/// Bytes in the band become inside, all others outside.
TAVIX_API void SplitByBand(std::uint8_t *bytes, std::size_t count, ByteBand band,
                           std::uint8_t inside, std::uint8_t outside);
/// Bytes in the band become value, all others stay.
TAVIX_API void ReplaceBand(std::uint8_t *bytes, std::size_t count, ByteBand band,
                           std::uint8_t value);
/// Bytes that differ from the reference by more than the tolerance become different, all others
/// same.
TAVIX_API void SplitByDifference(std::uint8_t *bytes, const std::uint8_t *reference,
                                 std::size_t count, std::uint8_t tolerance, std::uint8_t same,
                                 std::uint8_t different);
/// The number of bytes in the band.
TAVIX_API std::size_t CountInBand(const std::uint8_t *bytes, std::size_t count, ByteBand band);
/// The sum of all bytes.
TAVIX_API std::uint64_t SumOf(const std::uint8_t *bytes, std::size_t count);
/// How many bytes from the start on are first or second, in whole vectors; adds how many of them
/// are first to firstCount.
TAVIX_API std::size_t CountTwoLevels(const std::uint8_t *bytes, std::size_t count,
                                     std::uint8_t first, std::uint8_t second,
                                     std::size_t &firstCount);
/// Bit i of the words says whether byte i is smaller than the next one. Reads 64 bytes a word and
/// one more.
TAVIX_API void MarkRisingPairs(const std::uint8_t *bytes, std::size_t wordCount,
                               std::uint64_t *words);

/// Bit i of the words, one for each 64 bytes begun, says whether byte i lies in the band; bits
/// beyond the count are 0.
TAVIX_API void MarkBand(const std::uint8_t *bytes, std::size_t count, ByteBand band,
                        std::uint64_t *words);
/// The same for pixels of three channels, each of which must lie in its own band.
TAVIX_API void MarkColourBands(const std::uint8_t *pixels, std::size_t count,
                               const ByteBand bands[3], std::uint64_t *words);

} // namespace tavix
