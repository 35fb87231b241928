/// CMatchRatetItemArray: match rates with the index of what they rate.
#pragma once

#include "TAVIX20/containers/match_array.h"
#include "TAVIX20/platform/export.h"

/// A match rate and the index of what it rates.
struct _stMatchRateItem {
    double rate;
    int index;
};

/// Items in insertion order. A full array grows by 100. Indices are trusted.
class TAVIX_API CMatchRatetItemArray
    : private TavixArray::detail::RatedMatchArray<_stMatchRateItem> {
public:
    CMatchRatetItemArray() = default;

    virtual void Add(double rate, int index);
    using RatedMatchArray::GetCount;
    using RatedMatchArray::Remove;
    using RatedMatchArray::RemoveAll;
    using RatedMatchArray::SetCount;
    using RatedMatchArray::SortRate;
    using RatedMatchArray::operator[];
    /// Appends the other array's records to this one.
    CMatchRatetItemArray &operator+(const CMatchRatetItemArray &other);
};
