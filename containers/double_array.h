/// CDoubleArray: a growable list of floating-point values.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/export.h"

namespace TavixArray {

/// Values in insertion order. A full array grows by one. Indices are trusted.
class TAVIX_API CDoubleArray : private detail::NumberArray<double, double> {
public:
    CDoubleArray() = default;

    using NumberArray::Add;
    using NumberArray::Find;
    virtual double &GetAt(int index) { return Record(index); }
    const double &GetAt(int index) const { return Record(index); }
    using NumberArray::GetAverage;
    using NumberArray::GetElementCount;
    using NumberArray::GetMax;
    using NumberArray::GetMin;
    using NumberArray::GetSum;
    using NumberArray::Init;
    using NumberArray::Insert;
    using NumberArray::Remove;
    using NumberArray::RemoveAll;
    using NumberArray::SetAt;
    using NumberArray::SetElementIndex;
    using NumberArray::SetSize;
    using NumberArray::Sort;
    /// Standard deviation about the given mean, and about the average; 0.0 without values. The
    /// divisor is the count, because the result describes the values given and is no estimate of a
    /// larger population.
    virtual double GetStdDev(double mean) const;
    virtual double GetStdDev() const;
};

} // namespace TavixArray
