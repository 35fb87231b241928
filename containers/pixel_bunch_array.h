/// CPixelBunchArray: grey levels with their numbers of pixels.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

namespace TavixArray {

/// One grey level with its number of pixels and their share.
struct _stPixelBunch {
    std::uint8_t grayLevel;
    std::int32_t totalCount;
    double percent;
};

/// Bunches in insertion order. A full array grows by one. Indices are trusted.
class TAVIX_API CPixelBunchArray : private detail::ListArray<_stPixelBunch> {
public:
    CPixelBunchArray() = default;

    using ListArray::Add;
    virtual void Add(unsigned char level, LONG count, double percent);
    /// Index of the first bunch at or after max(start, 0) that is equal in all three fields, or -1.
    virtual int Find(const _stPixelBunch &bunch, int start) const;
    using ListArray::GetElementCount;
    using ListArray::Init;
    using ListArray::Insert;
    using ListArray::Remove;
    using ListArray::RemoveAll;
    using ListArray::SetAt;
    using ListArray::SetElementIndex;
    using ListArray::SetSize;
    using ListArray::operator[];

    /// Ascending; equal keys keep their order.
    virtual void SortTotalCount();
    virtual void SortGrayLevel();
    virtual void SortPercent();
};

} // namespace TavixArray
