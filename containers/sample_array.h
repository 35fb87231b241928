/// What the arrays of pixel samples share: the place of a sample in an image.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/geometry.h"

namespace TavixArray::detail {

/// Records with the fields x and y.
template <typename Sample>
class SampleArray : public ListArray<Sample> {
public:
    /// Smallest and largest coordinates, both inclusive; (0, 0, 0, 0) without samples.
    virtual CRect GetBounds() const {
        if (this->m_count <= 0)
            return {};
        const Sample &first = this->Record(0);
        CRect bounds(first.x, first.y, first.x, first.y);
        for (const Sample &sample : *this) {
            bounds.left = std::min(bounds.left, sample.x);
            bounds.top = std::min(bounds.top, sample.y);
            bounds.right = std::max(bounds.right, sample.x);
            bounds.bottom = std::max(bounds.bottom, sample.y);
        }
        return bounds;
    }
    /// Ascending; equal keys keep their order.
    virtual void SortX() { this->SortBy(&Sample::x); }
    virtual void SortY() { this->SortBy(&Sample::y); }
};

} // namespace TavixArray::detail
