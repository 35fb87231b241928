/// Makes one region of many elements.
#pragma once

#include "TAVIX20/platform/run_region.h"

#include <span>

struct _stRoiElement;

namespace tavix {

/// As far as images reach.
inline constexpr RECT ROI_WORLD{-(1 << 20), -(1 << 20), 1 << 20, 1 << 20};

/// The elements combined in order. The first one, which must have points, starts the region
/// whatever its method.
RunRegion CombineRoiElements(std::span<const _stRoiElement> elements);

} // namespace tavix
