// The text form of CPointArray: one point a line, "x,y".

#include "TAVIX20/containers/point_array.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace TavixArray {

namespace {

/// The leading decimal number of the text, blanks before it skipped, limited to 32 bits; 0 if none.
LONG ToLong(const std::string &text) {
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<LONG>(std::clamp<long>(value, INT32_MIN, INT32_MAX));
}

/// The point of a line with exactly two fields.
std::optional<tagPOINT> ParseLine(const std::string &line) {
    const std::size_t comma = line.find(',');
    if (comma == std::string::npos || line.find(',', comma + 1) != std::string::npos)
        return std::nullopt;
    return tagPOINT{ToLong(line.substr(0, comma)), ToLong(line.substr(comma + 1))};
}

} // namespace

int CPointArray::OpenFile(const char *path) {
    std::error_code error;
    if (!path || std::filesystem::is_directory(path, error))
        return 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return 0;
    RemoveAll();
    for (std::string line; std::getline(file, line);)
        if (const auto point = ParseLine(line))
            Add(point->x, point->y);
    return 1;
}

int CPointArray::SaveFile(const char *path) const {
    if (!path)
        return 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file)
        return 0;
    for (const tagPOINT &point : *this)
        file << point.x << ',' << point.y << "\r\n";
    return 1;
}

} // namespace TavixArray
