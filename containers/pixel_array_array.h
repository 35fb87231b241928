/// CPixelArrayArray: a list of sample lists, one per blob.
#pragma once

#include "TAVIX20/containers/pixel_array.h"

namespace TavixArray {

/// Sample lists in insertion order, each held by value. A full list grows by one. Indices are
/// trusted.
class TAVIX_API CPixelArrayArray : private detail::ListArray<CPixelArray> {
public:
    /// Ten empty lists, none of them counted.
    CPixelArrayArray() = default;

    using ListArray::Add;
    using ListArray::GetElementCount;
    using ListArray::Insert;
    using ListArray::Remove;
    using ListArray::RemoveAll;
    using ListArray::SetAt;
    using ListArray::SetElementIndex;
    using ListArray::SetSize;
    using ListArray::operator[];
    /// Number of samples in all lists.
    virtual int GetTotalPixelCount() const;
};

} // namespace TavixArray
