/// CColorPixelArray: colour samples taken from an image.
#pragma once

#include "TAVIX20/containers/sample_array.h"
#include "TAVIX20/platform/export.h"

class CTavixImage24;

namespace TavixArray {

/// A colour sample.
struct _stColorPixel {
    std::int32_t x;
    std::int32_t y;
    COLORREF colour;
    std::int32_t reserved[3]; ///< Free for the caller; 0 when added by value.
};
static_assert(sizeof(_stColorPixel) == 24);

/// Samples in insertion order. A full array grows by one. Indices are trusted.
class TAVIX_API CColorPixelArray : private detail::SampleArray<_stColorPixel> {
public:
    CColorPixelArray() = default;

    using SampleArray::Add;
    virtual void Add(int x, int y, unsigned long colour);
    /// The colour as RGB makes it.
    virtual void Add(int x, int y, int red, int green, int blue);
    using SampleArray::GetBounds;
    using SampleArray::GetElementCount;
    /// A new 24-bit image of the samples, made as CPixelArray::GetImage makes its own.
    virtual CTavixImage24 *GetImage(unsigned long background) const;
    using SampleArray::Init;
    using SampleArray::Insert;
    using SampleArray::Remove;
    using SampleArray::RemoveAll;
    using SampleArray::SetAt;
    using SampleArray::SetElementIndex;
    using SampleArray::SetSize;
    using SampleArray::SortX;
    using SampleArray::operator[];
};

} // namespace TavixArray
