#include "TAVIX20/platform/memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace tavix {

namespace {

/// Below this, blocks are mostly memory that was in use before.
constexpr std::size_t WORTH_LARGE_PAGES = std::size_t{32} << 20;

} // namespace

void AdviseLargePages(void *block, std::size_t size) {
    if (size < WORTH_LARGE_PAGES)
        return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t first = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(block) + size) / page * page;
    madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
}

} // namespace tavix
