/// What the arrays of plain values share, in three layers: the list operations, then search and
/// order, then sums. Each array class says with using which of the operations it has.
#pragma once

#include "TAVIX20/containers/record_array.h"

namespace TavixArray::detail {

/// Records that are added, inserted and set as a whole. A full array grows by one.
template <typename T>
class ListArray : public RecordArray<T> {
public:
    ListArray() : RecordArray<T>(DEFAULT_CAPACITY) {}

    /// Appends a copy of the record, which may lie in this array.
    virtual void Add(const T &record) { this->Append(record); }
    /// Overwrites as CPointArray::Insert does.
    virtual void Insert(int index, const T &record) { this->Overwrite(index, record); }
    virtual void SetAt(int index, const T &record) { this->Record(index) = record; }
    /// Clears every record that there is room for, not only the counted ones. The count stays.
    virtual void Init() { std::fill(this->m_block.begin(), this->m_block.end(), T()); }
};

/// Values that can be compared.
template <typename T>
class ValueArray : public ListArray<T> {
public:
    /// Sets the counted values.
    virtual void SetAll(const T &value) { std::fill(this->begin(), this->end(), T(value)); }
    /// Index of the first equal value at or after max(start, 0), or -1.
    virtual int Find(const T &value, int start) const {
        return this->FindFrom(start, [&value](const T &v) { return v == value; });
    }
    /// Ascending; equal values keep their order. One or two values are left as they are: callers
    /// rely on two values staying in the order in which they were added.
    virtual void Sort() {
        if (this->m_count > 2)
            this->SortBy(std::identity());
    }
};

/// Values that can be added up, into a Sum. Sums of integers wrap around in a Sum that is too small
/// for them.
template <typename T, typename Sum>
class NumberArray : public ValueArray<T> {
public:
    /// The sum of all values.
    virtual Sum GetSum() const { return SumOfFirst(this->m_count); }
    /// GetSum() divided by the count; 0.0 without values.
    virtual double GetAverage() const {
        return this->m_count > 0 ? static_cast<double>(GetSum()) / this->m_count : 0.0;
    }
    /// The largest and the smallest value; 0 without values.
    virtual T GetMax() const {
        return this->m_count > 0 ? *std::max_element(this->begin(), this->end()) : T();
    }
    virtual T GetMin() const {
        return this->m_count > 0 ? *std::min_element(this->begin(), this->end()) : T();
    }

protected:
    Sum SumOfFirst(int n) const {
        std::conditional_t<std::is_floating_point_v<T>, double, std::int64_t> sum = 0;
        for (int i = 0; i < n; ++i)
            sum += this->Record(i);
        return static_cast<Sum>(sum);
    }
};

} // namespace TavixArray::detail
