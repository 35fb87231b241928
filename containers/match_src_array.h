/// CMatchSrcArray: the named sources of a match.
#pragma once

#include "TAVIX20/containers/match_array.h"
#include "TAVIX20/platform/export.h"

/// A match source.
struct _stMatchSource {
    char name[260];  ///< Zero-terminated.
    int reserved[2]; ///< 0.
};

/// Sources in insertion order. A full array grows by 100. Indices are trusted.
class TAVIX_API CMatchSrcArray : private TavixArray::detail::MatchArray<_stMatchSource> {
public:
    CMatchSrcArray() = default;

    /// Appends a source of that name, cut to 259 bytes. Null text counts as the empty name.
    virtual void Add(const char *name);
    using MatchArray::GetCount;
    using MatchArray::Remove;
    using MatchArray::RemoveAll;
    using MatchArray::SetCount;
    virtual _stMatchSource &GetAt(int index) { return Record(index); }
    const _stMatchSource &GetAt(int index) const { return Record(index); }
    using MatchArray::operator[];
    /// Appends the other array's records to this one.
    CMatchSrcArray &operator+(const CMatchSrcArray &other);
};
