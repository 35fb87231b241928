#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One entry of an archive that is put together byte by byte, stored, with any lie in it.
struct ZipItem {
    std::string name;
    std::string content;
    std::uint32_t mode = 0;                  ///< As the file's maker tells it, with its kind.
    std::uint32_t flags = 0;                 ///< 1: encrypted.
    std::uint32_t crcError = 0;              ///< What the sum of the bytes is off by.
    std::uint32_t sizeError = 0;             ///< What both sizes are too large by.
    std::optional<std::uint32_t> start = {}; ///< Of the header, in place of where it is.
    std::uint32_t method = 0;                ///< 0: stored.
};

inline std::string Little(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

inline std::uint32_t Crc32(const std::string &bytes) {
    std::uint32_t crc = ~std::uint32_t{0};
    for (const char byte : bytes) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

inline std::string ZipBytes(const std::vector<ZipItem> &items) {
    std::string body;
    std::string directory;
    for (const ZipItem &item : items) {
        const auto size = static_cast<std::uint32_t>(item.content.size()) + item.sizeError;
        const std::string common =
            Little(item.flags, 2) + Little(item.method, 2) + Little(0x21, 4) +
            Little(Crc32(item.content) + item.crcError, 4) + Little(size, 4) + Little(size, 4) +
            Little(static_cast<std::uint32_t>(item.name.size()), 2) + Little(0, 2);
        const auto here = static_cast<std::uint32_t>(body.size());
        body += "PK\3\4" + Little(20, 2) + common + item.name + item.content;
        directory += "PK\1\2" + Little(0x314, 2) + Little(20, 2) + common + Little(0, 6) +
                     Little(item.mode << 16, 4) + Little(item.start.value_or(here), 4) + item.name;
    }
    const auto count = Little(static_cast<std::uint32_t>(items.size()), 2);
    return body + directory + "PK\5\6" + Little(0, 4) + count + count +
           Little(static_cast<std::uint32_t>(directory.size()), 4) +
           Little(static_cast<std::uint32_t>(body.size()), 4) + Little(0, 2);
}
