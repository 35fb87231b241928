/// CLineArray: a growable list of line segments with their length and direction.
#pragma once

#include "TAVIX20/containers/record_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

namespace TavixArray {

/// A line segment.
struct _stLine {
    std::int32_t x1;
    std::int32_t y1;
    std::int32_t x2;
    std::int32_t y2;
    double distance; ///< Length in pixels.
    double angle;    ///< Direction from the first to the second end, degrees below 360.
};

/// Line segments in insertion order. A full array grows by one. Averages and extremes are 0 without
/// lines. Indices are trusted.
class TAVIX_API CLineArray : private detail::RecordArray<_stLine> {
public:
    CLineArray() : RecordArray(detail::DEFAULT_CAPACITY) {}

    /// Appends the segment with its distance (CTavixImage::Distance) and angle
    /// (CTavixImage::GetAngle).
    virtual void Add(int x1, int y1, int x2, int y2);
    /// Appends the record as it is.
    virtual void Add(const _stLine &line);
    using RecordArray::Remove;
    /// Overwrites as CPointArray::Insert does; the first form computes distance and angle.
    virtual void Insert(int index, int x1, int y1, int x2, int y2);
    virtual void Insert(int index, const _stLine &line);
    using RecordArray::GetElementCount;
    using RecordArray::RemoveAll;
    using RecordArray::SetElementIndex;
    using RecordArray::SetSize;
    using RecordArray::operator[];
    virtual void SetAt(int index, const _stLine &line);
    /// Smallest and largest coordinates of all ends, inclusive; (0, 0, 0, 0) without lines.
    virtual CRect GetBounds() const;

    /// Ascending; equal keys keep their order.
    virtual void SortX1();
    virtual void SortY1();
    virtual void SortX2();
    virtual void SortY2();
    virtual void SortDistance();
    virtual void SortAngle();

    virtual double GetMinDistance() const;
    virtual double GetMaxDistance() const;
    virtual double GetAvgDistance() const;
    virtual double GetMinAngle() const;
    virtual double GetMaxAngle() const;
    virtual double GetAvgAngle() const;

private:
    double Smallest(double _stLine::*field) const;
    double Largest(double _stLine::*field) const;
    double Average(double _stLine::*field) const;
};

} // namespace TavixArray
