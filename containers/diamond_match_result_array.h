/// CDiamondMatchResultArray: the hits that diamond matching reports.
#pragma once

#include "TAVIX20/containers/match_array.h"
#include "TAVIX20/platform/export.h"

/// One diamond that was found.
struct _stDiamondMatchResult {
    int centerX; ///< Image pixels, as centerY and size.
    int centerY;
    int size; ///< From the centre to a corner.
    double rate;
};

/// Hits in the order in which they were found. A full array grows by 100. Indices are trusted.
class TAVIX_API CDiamondMatchResultArray
    : private TavixArray::detail::RatedMatchArray<_stDiamondMatchResult> {
public:
    CDiamondMatchResultArray() = default;

    virtual void Add(int centerX, int centerY, int size, double rate);
    using RatedMatchArray::GetCount;
    using RatedMatchArray::GetMaxRateIndex;
    using RatedMatchArray::Remove;
    using RatedMatchArray::RemoveAll;
    using RatedMatchArray::SetCount;
    using RatedMatchArray::SortRate;
    using RatedMatchArray::operator[];
    /// Appends the other array's records to this one.
    CDiamondMatchResultArray &operator+(const CDiamondMatchResultArray &other);
};
