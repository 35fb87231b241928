/// CLongArray: a growable list of signed 32-bit values.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

namespace TavixArray {

/// Values in insertion order. A full array grows by one. Both sums wrap around in 32 bits, and the
/// average is that of the wrapped sum. Indices are trusted.
class TAVIX_API CLongArray : private detail::NumberArray<LONG, LONG> {
public:
    CLongArray() = default;

    using NumberArray::Add;
    using NumberArray::Find;
    using NumberArray::GetAverage;
    using NumberArray::GetElementCount;
    using NumberArray::GetMax;
    using NumberArray::GetMin;
    using NumberArray::GetSum;
    /// The sum of the first n values. Like an index, n is trusted.
    virtual LONG GetSum(int n) const { return SumOfFirst(n); }
    using NumberArray::Init;
    using NumberArray::Insert;
    using NumberArray::Remove;
    using NumberArray::RemoveAll;
    using NumberArray::SetAll;
    using NumberArray::SetAt;
    using NumberArray::SetElementIndex;
    using NumberArray::SetSize;
    using NumberArray::Sort;
    using NumberArray::operator[];
};

} // namespace TavixArray
