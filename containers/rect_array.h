/// CRectArray: a growable list of rectangles.
#pragma once

#include "TAVIX20/containers/record_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

namespace TavixArray {

/// Rectangles in insertion order. Width is right - left and height is bottom - top, with no + 1.
/// Extremes and averages (truncated toward 0) are 0 without rectangles. Indices are trusted.
class TAVIX_API CRectArray : private detail::RecordArray<tagRECT, detail::CountFirst> {
public:
    CRectArray() : RecordArray(detail::DEFAULT_CAPACITY) {}

    /// A full array grows by ten.
    virtual void Add(int left, int top, int right, int bottom);
    /// A full array grows by one.
    virtual void Add(const tagRECT &rect);
    using RecordArray::Remove;
    /// Overwrites as CPointArray::Insert does.
    virtual void Insert(int index, const tagRECT &rect);
    using RecordArray::GetElementCount;
    using RecordArray::RemoveAll;
    using RecordArray::SetElementIndex;
    using RecordArray::SetSize;
    using RecordArray::operator[];
    virtual void SetAt(int index, int left, int top, int right, int bottom);
    virtual void SetAt(int index, const tagRECT &rect);

    virtual int GetMaxWidth() const;
    virtual int GetMinWidth() const;
    virtual int GetAvgWidth() const;
    virtual int GetMaxHeight() const;
    virtual int GetMinHeight() const;
    virtual int GetAvgHeight() const;
    virtual int GetSmallestLeft() const;
    virtual int GetLargestLeft() const;
    virtual int GetSmallestRight() const;
    virtual int GetLargestRight() const;
    virtual int GetSmallestTop() const;
    virtual int GetLargestTop() const;
    virtual int GetSmallestBottom() const;
    virtual int GetLargestBottom() const;

    /// Ascending; equal keys keep their order. The area is height times width, in 64 bits.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    virtual void SortHeight();
    virtual void SortArea();

private:
    template <typename Key>
    int Largest(Key key) const;
    template <typename Key>
    int Smallest(Key key) const;
    template <typename Key>
    int Average(Key key) const;
};

} // namespace TavixArray
