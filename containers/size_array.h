/// CSizeArray: a growable list of width and height pairs.
#pragma once

#include "TAVIX20/containers/record_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

namespace TavixArray {

/// Sizes in insertion order. Indices are trusted.
class TAVIX_API CSizeArray : private detail::RecordArray<tagSIZE> {
public:
    CSizeArray() : RecordArray(detail::DEFAULT_CAPACITY) {}

    /// A full array grows by ten.
    virtual void Add(int width, int height);
    using RecordArray::Remove;
    /// Overwrites as CPointArray::Insert does.
    virtual void Insert(int index, int width, int height);
    using RecordArray::GetElementCount;
    using RecordArray::RemoveAll;
    using RecordArray::SetElementIndex;
    using RecordArray::SetSize;
    using RecordArray::operator[];
    virtual void SetAt(int index, int width, int height);
    /// Index of the first equal size at or after start, or -1.
    virtual int Find(int width, int height, int start) const;
    /// Ascending; equal keys keep their order.
    virtual void SortWidth();
    virtual void SortHeight();
};

} // namespace TavixArray
