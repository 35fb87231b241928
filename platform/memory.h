/// Large blocks of memory.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>

namespace tavix {

/// Asks the system to back a large block with large pages, which are mapped and looked up in fewer
/// steps. Nothing is promised; smaller blocks are left alone.
TAVIX_API void AdviseLargePages(void *block, std::size_t size);

} // namespace tavix
