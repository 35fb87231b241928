/// Where the entries of a zip archive lie in its file.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tavix {

/// What the directory of an archive says of one entry's place.
struct ZipPlace {
    std::uint64_t start = 0;      ///< Of its header in the file.
    std::uint64_t end = 0;        ///< Of its packed bytes.
    std::uint64_t packedSize = 0; ///< Their number.
    std::uint32_t nameLength = 0; ///< Zeros in the name count, too.
    bool isSound = false;         ///< It has a header, and shares no byte with another entry or the
                                  ///< directory.
};

/// Reads the places of all entries, in the directory's order, from an archive of any content, with
/// or without 64-bit fields; nothing when there is no directory that lies whole in the file, or
/// more than one. Archives in several volumes are not read.
TAVIX_API std::optional<std::vector<ZipPlace>> ReadZipLayout(int descriptor);

} // namespace tavix
