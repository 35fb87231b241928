// The text form of CPointArray: one point a line, "x,y".

#include "TAVIX20/containers/point_array.h"

#include "TAVIX20/support/text_number.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace TavixArray {

namespace {

/// The point of a line with exactly two fields.
std::optional<tagPOINT> ParseLine(const std::string &line) {
    const std::size_t comma = line.find(',');
    if (comma == std::string::npos || line.find(',', comma + 1) != std::string::npos)
        return std::nullopt;
    return tagPOINT{tavix::ReadInt(line.c_str()), tavix::ReadInt(line.c_str() + comma + 1)};
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
