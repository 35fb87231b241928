/// The last step of the rectangle forms: components of runs are chosen by their size and become
/// records. With noise there are as many of them as runs in a row of thousands, so this takes as
/// long as to find them; hence kernels without branches.
#pragma once

#include "TAVIX20/analysis/run_labeling.h"

#include <cstddef>
#include <cstdint>

struct _stBlobRect;

namespace tavix {

struct SizeBounds;

/// Writes the numbers of the whole components that the bounds accept, in order; there is room for
/// one more than all. Returns how many.
std::size_t ChooseComponents(const RunLabeling &labeling, const SizeBounds &bounds,
                             std::uint32_t *accepted);
/// Makes records of so many components, given by number, and of the pixels kept apart, in the order
/// of all their first pixels.
void WriteAllRecords(const RunLabeling &labeling, const std::uint32_t *accepted, std::size_t count,
                     _stBlobRect *records);
/// Makes records of so many components, given by number.
void WriteRecords(const RunLabeling &labeling, const std::uint32_t *accepted, std::size_t count,
                  _stBlobRect *records);

} // namespace tavix
