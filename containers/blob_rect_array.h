/// CBlobRectArray: the rectangles that blob analysis reports.
#pragma once

#include "TAVIX20/containers/record_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

/// One blob: its inclusive bounding box in image pixels and its number of pixels.
struct _stBlobRect {
    long left;
    long top;
    long right;
    long bottom;
    long pixelCount;
    long value1; ///< Free for the caller; only the seven-value Add fills it.
    long value2; ///< As value1.
    long reserved[2];
};

/// Blob records in the order in which they were found. Width is right - left and height is
/// bottom - top, with no + 1. Indices are trusted.
class TAVIX_API CBlobRectArray
    : private TavixArray::detail::RecordArray<_stBlobRect, TavixArray::detail::CapacityFirst> {
public:
    CBlobRectArray() : RecordArray(TavixArray::detail::DEFAULT_CAPACITY) {}

    /// Appends a record; a full array grows by one.
    virtual void Add(const _stBlobRect &blob);
    virtual void Add(long left, long top, long right, long bottom, long pixelCount, long value1,
                     long value2);
    virtual void Add(long left, long top, long right, long bottom, long pixelCount);
    using RecordArray::GetElementCount;
    using RecordArray::Remove;
    using RecordArray::RemoveAll;
    using RecordArray::SetCount;
    using RecordArray::SetElementIndex;
    virtual _stBlobRect &GetAt(int index);
    /// Overwrites the five fields; the others stay.
    virtual void SetAt(int index, long left, long top, long right, long bottom, long pixelCount);

    /// Ascending; equal keys keep their order. Only left, top, right, bottom and pixelCount move
    /// with their record: value1, value2 and the reserved words stay at their position.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    virtual void SortHeight();
    virtual void SortPixelCount();

    using RecordArray::operator[];
    /// Appends the other array's records to this one.
    CBlobRectArray &operator+(const CBlobRectArray &other);

    /// Means over all records, truncated toward 0; 0 without records.
    long GetAverageLeft() const;
    long GetAverageTop() const;
    long GetAverageRight() const;
    long GetAverageBottom() const;
    /// Means of left + (right - left) / 2 and top + (bottom - top) / 2.
    long GetAverageCenterX() const;
    long GetAverageCenterY() const;
    /// The two centre averages.
    POINT CenterPoint() const;
    /// The smallest box around all records, inclusive; (0, 0, 0, 0) without records.
    RECT GetBounds() const;

    /// Removes every record whose left and right both lie outside [x1, x2] and whose top and bottom
    /// both lie outside [y1, y2]. A record with any edge inside its interval is kept. Returns the
    /// number removed.
    int ROIOverKill(int x1, int y1, int x2, int y2);
    /// Removes every record whose centre is farther than distance from the centre of the record
    /// that followed it (CStdlib::Distance, truncated). The last record is always kept. Returns the
    /// number removed.
    int DistanceOverKill(double distance);

private:
    template <typename Key>
    void SortFiveFieldsBy(Key key);
    template <typename Key>
    long Average(Key key) const;
};
