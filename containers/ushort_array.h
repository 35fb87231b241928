/// CUShortArray: a growable list of unsigned 16-bit values.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/export.h"

namespace TavixArray {

/// Values in insertion order. A full array grows by one. The sum is exact. Indices are trusted.
class TAVIX_API CUShortArray : private detail::NumberArray<unsigned short, std::int64_t> {
public:
    CUShortArray() = default;

    using NumberArray::Add;
    using NumberArray::Find;
    using NumberArray::GetAverage;
    using NumberArray::GetElementCount;
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
};

} // namespace TavixArray
