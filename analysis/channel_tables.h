/// A table for each channel of colour pixels.
#pragma once

#include "TAVIX20/analysis/byte_kernels.h"

#include <array>

class CTavixImage24;

namespace tavix {

/// In stored order: blue, green, red.
using ChannelTables = std::array<ByteTable, 3>;

/// Replaces each channel of every pixel by its entry of that channel's table; padding stays.
void ApplyTables(CTavixImage24 &image, const ChannelTables &tables);

} // namespace tavix
