/// CPointArrayArray: a list of point lists, one per contour or blob.
#pragma once

#include "TAVIX20/containers/point_array.h"

namespace TavixArray {

/// Point lists in insertion order, each held by value. Indices are trusted.
class TAVIX_API CPointArrayArray : private detail::RecordArray<CPointArray> {
public:
    /// Ten empty lists, none of them counted.
    CPointArrayArray() : RecordArray(detail::DEFAULT_CAPACITY) {}

    /// Appends the outlines of the region, one list each, as pixel corners starting at the top left
    /// in raster order: parts clockwise, holes counter-clockwise. Filling them all together
    /// (ALTERNATE, or combining their regions with RGN_XOR) gives back the region. Parts are
    /// 4-connected: what touches at a corner only has an outline of its own. Null appends nothing.
    virtual void Add(HRGN region);
    /// Appends copies of the other list's elements; a list may be appended to itself.
    virtual void Add(const CPointArrayArray &other);
    /// Appends a copy; a full list grows by one.
    virtual void Add(const CPointArray &points);
    /// The same, taking the points over.
    void Add(CPointArray &&points);
    /// Appends a list of each block, which it takes over; false, and the list as it was, when
    /// memory runs out.
    bool Add(std::span<detail::PointBlock> blocks);
    using RecordArray::Remove;
    /// Overwrites as CPointArray::Insert does.
    virtual void Insert(int index, const CPointArray &points);
    using RecordArray::GetElementCount;
    using RecordArray::SetElementIndex;
    using RecordArray::SetSize;
    /// Number of points in all lists.
    virtual int GetPointTotalCount() const;
    /// Mean number of points, truncated; 0 without lists. So are the two extremes.
    virtual int GetAvgPointCount() const;
    virtual int GetMaxPointCount() const;
    virtual int GetMinPointCount() const;
    using RecordArray::RemoveAll;
    using RecordArray::operator[];
    virtual void SetAt(int index, const CPointArray &points);
};

} // namespace TavixArray
