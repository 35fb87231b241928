/// CSortByteArray: a growable list of byte values, such as grey levels.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/export.h"

namespace TavixArray {

/// Values in insertion order. A full array grows by one. The sum is exact. Indices are trusted.
class TAVIX_API CSortByteArray : private detail::NumberArray<unsigned char, std::int64_t> {
public:
    CSortByteArray() = default;

    using NumberArray::Add;
    using NumberArray::Find;
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
    using NumberArray::operator[];
    /// Appends to out, ascending, the values from from up to but not including to that this array
    /// does not hold, until out holds limit values: nothing when it already does.
    virtual void DiffValue(unsigned char from, unsigned char to, int limit,
                           CSortByteArray &out) const;
};

} // namespace TavixArray
