/// What blob members make of the engine's pixels.
#pragma once

#include "TAVIX20/containers/point_array.h"

#include <span>

namespace tavix {

/// Replaces the points.
inline void SetPoints(TavixArray::CPointArray &array, std::span<const POINT> points) {
    const auto count = static_cast<int>(points.size());
    array.SetSize(count);
    for (int i = 0; i < count; ++i)
        array[i] = points[static_cast<std::size_t>(i)];
    array.SetElementIndex(count);
}

} // namespace tavix
