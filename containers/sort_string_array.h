/// CSortStringArray: a growable list of strings that sorts them as text or as numbers.
#pragma once

#include "TAVIX20/containers/value_array.h"
#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

namespace TavixArray {

/// Strings in insertion order. A full array grows by one. Null text counts as the empty string.
/// Indices are trusted.
class TAVIX_API CSortStringArray : private detail::ValueArray<CString> {
public:
    CSortStringArray() = default;

    using ValueArray::Add;
    virtual void Add(const char *text);
    using ValueArray::Find;
    virtual int Find(const char *text, int start) const;
    using ValueArray::GetElementCount;
    using ValueArray::Init;
    using ValueArray::Insert;
    virtual void Insert(int index, const char *text);
    using ValueArray::Remove;
    using ValueArray::RemoveAll;
    using ValueArray::SetAt;
    virtual void SetAt(int index, const char *text);
    using ValueArray::SetElementIndex;
    using ValueArray::SetSize;
    /// Ascending in byte order: case counts. One or two strings are left as they are.
    using ValueArray::Sort;
    using ValueArray::operator[];

    /// Ascending by the numbers at the start of the strings, as atoi reads them; numbers beyond
    /// 32 bits count as the nearest that fits. Equal numbers keep their order.
    virtual void SortNumber();
    /// The same with the numbers that the characters from position first to position last make up,
    /// both included and counted from 0. Positions outside a string are cut to it.
    virtual void SortNumber(int first, int last);
};

} // namespace TavixArray
