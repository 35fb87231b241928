/// CCycleMatchResultArray: the hits that circle matching reports.
#pragma once

#include "TAVIX20/containers/match_array.h"
#include "TAVIX20/platform/export.h"

/// One circle that was found.
struct _stCycleMatchResult {
    int centerX; ///< Image pixels, as centerY and radius.
    int centerY;
    int radius;
    int index; ///< Of the model that it matches.
    double rate;
};

/// Hits in the order in which they were found. A full array grows by 100. Indices are trusted.
class TAVIX_API CCycleMatchResultArray
    : private TavixArray::detail::RatedMatchArray<_stCycleMatchResult> {
public:
    CCycleMatchResultArray() = default;

    virtual void Add(int centerX, int centerY, int radius, int index, double rate);
    using RatedMatchArray::GetCount;
    using RatedMatchArray::GetMaxRateIndex;
    using RatedMatchArray::Remove;
    using RatedMatchArray::RemoveAll;
    using RatedMatchArray::SetCount;
    using RatedMatchArray::SortRate;
    using RatedMatchArray::operator[];
    /// Appends the other array's records to this one.
    CCycleMatchResultArray &operator+(const CCycleMatchResultArray &other);
};
