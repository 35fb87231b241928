/// What the result arrays of the matchers share.
#pragma once

#include "TAVIX20/containers/record_array.h"

namespace TavixArray::detail {

/// Records in the order in which they were found, room for 100 at first. A full array grows by 100.
template <typename T>
class MatchArray : public RecordArray<T> {
public:
    MatchArray() : RecordArray<T>(STEP) {}

    virtual int GetCount() const { return this->m_count; }
    /// Empties the array; the capacity becomes 100.
    void RemoveAll() override { *this = MatchArray(); }

protected:
    bool AddRecord(const T &record) { return this->Append(record, STEP); }

    /// Adds the other array's records, which may be this one's, one after another.
    void AddArray(const MatchArray &other) {
        const std::int32_t before = this->m_count;
        const std::int32_t added = other.m_count;
        for (std::int32_t i = 0; i < added; ++i)
            if (!AddRecord(other.Record(i))) {
                this->m_count = before;
                return;
            }
    }

private:
    static constexpr std::int32_t STEP = 100;
};

/// Records with the field rate.
template <typename T>
class RatedMatchArray : public MatchArray<T> {
public:
    /// Ascending; equal rates keep their order.
    virtual void SortRate() { this->SortBy(&T::rate); }
    /// Index of the record with the highest rate, the first of several; -1 without records.
    virtual int GetMaxRateIndex() const {
        if (this->m_count <= 0)
            return -1;
        const auto isLower = [](const T &a, const T &b) { return a.rate < b.rate; };
        return static_cast<int>(std::max_element(this->begin(), this->end(), isLower) -
                                this->begin());
    }
};

} // namespace TavixArray::detail
