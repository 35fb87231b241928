/// CMatchResultArray: the hits that template matching reports.
#pragma once

#include "TAVIX20/containers/match_array.h"
#include "TAVIX20/platform/export.h"

/// One hit: where a template was found and how well it fits there.
struct _stMatchResult {
    unsigned char flag; ///< 1 when the hit was accepted.
    int left;           ///< The hit's inclusive box in image pixels.
    int top;
    int right;
    int bottom;
    int templateIndex;
    double blackYield;
    double whiteYield;
    long pixelCount; ///< Number of compared pixels; 0 when it was not given.
};

/// Hits in the order in which they were found. A full array grows by 100. Indices are trusted.
class TAVIX_API CMatchResultArray : private TavixArray::detail::MatchArray<_stMatchResult> {
public:
    CMatchResultArray() = default;

    virtual void Add(unsigned char flag, int left, int top, int right, int bottom,
                     int templateIndex, double blackYield, double whiteYield);
    virtual void Add(unsigned char flag, int left, int top, int right, int bottom,
                     int templateIndex, double blackYield, double whiteYield, long pixelCount);
    using MatchArray::GetCount;
    using MatchArray::Remove;
    using MatchArray::RemoveAll;
    using MatchArray::SetCount;

    /// Ascending; whole records move and equal keys keep their order.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWhiteYield();
    virtual void SortBlackYield();
    /// By (black yield + white yield) / 2.
    virtual void SortYieldAverage();

    using MatchArray::operator[];
    /// Appends the other array's records to this one.
    CMatchResultArray &operator+(const CMatchResultArray &other);
};
