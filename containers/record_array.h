/// What all arrays share: a counted block of records with the growth, insertion and sorting rules
/// of the family. Each array class says with using which of the operations it has and adds its own.
///
/// The capacity is the one that the growth rules state; the block behind it grows geometrically, so
/// adding n records costs O(n) although the stated capacity may rise one by one. New records are
/// zero. When memory runs out an operation leaves the array as it was. Arrays carry no lock.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <new>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace TavixArray::detail {

inline constexpr std::int32_t DEFAULT_CAPACITY = 10;

/// Field order of most arrays.
template <typename T>
struct CapacityFirst {
    std::int32_t m_capacity = 0;
    std::int32_t m_count = 0;
    std::vector<T> m_block; ///< Holds at least max(capacity, count) records.
};

/// Field order of the arrays that keep their count first.
template <typename T>
struct CountFirst {
    std::int32_t m_count = 0;
    std::int32_t m_capacity = 0;
    std::vector<T> m_block;
};

template <typename T, template <typename> class Fields = CapacityFirst>
class RecordArray : protected Fields<T> {
public:
    /// Moves the records after index down by one. The index is trusted.
    virtual void Remove(int index) {
        std::move(begin() + index + 1, end(), begin() + index);
        --m_count;
    }

    /// Makes room for size records and one more and states size as the capacity. The count stays,
    /// even above size; records in use are kept. A negative size changes nothing.
    virtual void SetSize(int size) {
        if (size >= 0 && Reallocate(std::max(static_cast<std::size_t>(size) + 1, Counted())))
            m_capacity = size;
    }

    /// Makes room for exactly count records and counts them all; the first ones are kept. A
    /// negative count changes nothing.
    virtual void SetCount(int count) {
        if (count >= 0 && Reallocate(static_cast<std::size_t>(count))) {
            m_capacity = count;
            m_count = count;
        }
    }

    /// Sets the count, the next write position, with no test against the capacity: for callers that
    /// filled the block by themselves.
    virtual void SetElementIndex(int count) { m_count = count; }

    virtual int GetElementCount() const { return m_count; }

    /// Empties the array; the capacity becomes 10.
    virtual void RemoveAll() {
        m_block = Block(static_cast<std::size_t>(DEFAULT_CAPACITY));
        m_capacity = DEFAULT_CAPACITY;
        m_count = 0;
    }

    /// The record at index, which is trusted: below the count or what SetSize made room for.
    virtual T &operator[](int index) { return m_block[static_cast<std::size_t>(index)]; }
    const T &operator[](int index) const { return m_block[static_cast<std::size_t>(index)]; }

protected:
    using Fields<T>::m_capacity;
    using Fields<T>::m_count;
    using Fields<T>::m_block;
    using Block = decltype(Fields<T>::m_block);

    explicit RecordArray(std::int32_t capacity) {
        if (capacity > 0 && Reallocate(static_cast<std::size_t>(capacity)))
            m_capacity = capacity;
    }

    /// Exactly these records, as a copy of an array that counts them.
    RecordArray(const T *records, std::int32_t n) {
        try {
            m_block.assign(records, records + n);
            m_capacity = m_count = n;
        } catch (const std::bad_alloc &) {
        }
    }

    /// The records of the block.
    explicit RecordArray(Block &&block) {
        m_capacity = m_count = static_cast<std::int32_t>(block.size());
        m_block = std::move(block);
    }

    /// Copies hold exactly the counted records: their capacity is their count.
    RecordArray(const RecordArray &other) : Fields<T>() { CopyRecords(other); }
    RecordArray &operator=(const RecordArray &other) {
        if (this != &other)
            CopyRecords(other);
        return *this;
    }
    RecordArray(RecordArray &&other) noexcept { Swap(other); }
    RecordArray &operator=(RecordArray &&other) noexcept {
        Swap(other);
        return *this;
    }
    virtual ~RecordArray() = default;

    void Swap(RecordArray &other) noexcept {
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_count, other.m_count);
        m_block.swap(other.m_block);
    }

    T &Record(std::int32_t i) { return m_block[static_cast<std::size_t>(i)]; }
    const T &Record(std::int32_t i) const { return m_block[static_cast<std::size_t>(i)]; }

    /// The counted records.
    T *begin() { return m_block.data(); }
    T *end() { return m_block.data() + Counted(); }
    const T *begin() const { return m_block.data(); }
    const T *end() const { return m_block.data() + Counted(); }

    /// Adds a copy of the record; a full array's capacity rises to count + step.
    bool Append(const T &record, std::int32_t step = 1) {
        return Append(T(record), step); // The record may lie in this block.
    }
    bool Append(T &&copy, std::int32_t step = 1) {
        if (step == 1 && m_count == m_capacity && Counted() == m_block.size())
            return AppendToFull(std::move(copy));
        if (!Grow(1, step))
            return false;
        Record(m_count++) = std::move(copy);
        return true;
    }

    /// Appends a record made of each part, which it takes over; false, and nothing changed, when
    /// memory runs out. Making them must not throw.
    template <typename Part>
    bool AppendEach(std::span<Part> parts) {
        constexpr std::size_t ahead = 64;
        if (parts.size() > static_cast<std::size_t>(INT32_MAX - m_count) || !Reserve(parts.size()))
            return false;
        auto part = parts.begin();
        const auto isFull = [this] { return m_count == m_capacity && Counted() == m_block.size(); };
        for (; part != parts.end() && !isFull(); ++part)
            Append(T(std::move(*part)));
        if (part == parts.end())
            return true;
        for (; part != parts.end(); ++part) {
            // Of many, the memory of later ones is on its way.
            __builtin_prefetch(m_block.data() + m_block.size() + ahead, 1);
            m_block.emplace_back(std::move(*part));
        }
        m_capacity = m_count = static_cast<std::int32_t>(m_block.size());
        return true;
    }

    /// Makes room for n more records, so that adding them cannot fail; nothing else changes.
    bool Reserve(std::size_t n) {
        try {
            m_block.reserve(Counted() + n);
        } catch (const std::bad_alloc &) {
            return false;
        } catch (const std::length_error &) {
            return false;
        }
        return true;
    }

    /// Adds n records one after another, with the capacity that single additions would leave. They
    /// may lie in this block.
    void AppendAll(const T *records, std::int32_t n) {
        if (n <= 0)
            return;
        try {
            const std::vector<T> copy(records, records + n);
            if (!Grow(n, n))
                return;
            std::copy(copy.begin(), copy.end(), begin() + m_count);
            m_count += n;
        } catch (const std::bad_alloc &) {
        }
    }

    /// Copies the records after i up by one, then overwrites record i: what stood at i is lost and
    /// what followed it stands twice. Callers of the exported Insert operations rely on exactly
    /// this. In front of the last record, that record's copy fills the new place at the end.
    void Overwrite(std::int32_t i, const T &record) {
        T copy = record;
        if (!Grow(1, 1))
            return;
        for (std::int32_t k = m_count - 1; k > i; --k)
            Record(k + 1) = Record(k);
        if (i == m_count - 1)
            Record(m_count) = Record(i);
        Record(i) = std::move(copy);
        ++m_count;
    }

    /// Removes the records for which the predicate holds; returns how many.
    template <typename Predicate>
    std::int32_t EraseIf(Predicate predicate) {
        T *const kept = std::remove_if(begin(), end(), predicate);
        const auto removed = static_cast<std::int32_t>(end() - kept);
        m_count -= removed;
        return removed;
    }

    /// Stable ascending sort by key(record): the order that bubble sort passes would leave. A key
    /// that is not a number never compares greater, so such a record stays where it is and no
    /// other passes it.
    template <typename Key>
    void SortBy(Key key) {
        using Value = std::remove_cvref_t<std::invoke_result_t<Key, const T &>>;
        const auto less = [&key](const T &a, const T &b) {
            return std::invoke(key, a) < std::invoke(key, b);
        };
        if constexpr (std::is_floating_point_v<Value>) {
            const auto isBarrier = [&key](const T &r) { return std::isnan(std::invoke(key, r)); };
            for (T *first = begin(); first != end();) {
                T *const barrier = std::find_if(first, end(), isBarrier);
                std::stable_sort(first, barrier, less);
                first = barrier == end() ? barrier : barrier + 1;
            }
        } else {
            std::stable_sort(begin(), end(), less);
        }
    }

    /// Index of the first record from max(start, 0) on that satisfies the predicate, or -1.
    template <typename Predicate>
    std::int32_t FindFrom(std::int32_t start, Predicate predicate) const {
        const T *const first =
            begin() + std::min<std::ptrdiff_t>(std::max(start, 0), end() - begin());
        const T *const found = std::find_if(first, end(), predicate);
        return found == end() ? -1 : static_cast<std::int32_t>(found - begin());
    }

private:
    /// The counted records that exist: a count set by hand may lie beyond the block.
    std::size_t Counted() const {
        return std::min(static_cast<std::size_t>(std::max(m_count, 0)), m_block.size());
    }

    /// Makes no empty record first, which may cost more than the record itself.
    bool AppendToFull(T &&record) {
        if (m_count == INT32_MAX)
            return false;
        try {
            m_block.push_back(std::move(record));
        } catch (const std::bad_alloc &) {
            return false;
        }
        m_capacity = ++m_count;
        return true;
    }

    void CopyRecords(const RecordArray &other) {
        try {
            Block copy(other.begin(), other.end());
            m_block.swap(copy);
        } catch (const std::bad_alloc &) {
            return;
        }
        m_count = static_cast<std::int32_t>(m_block.size());
        m_capacity = m_count;
    }

    bool Grow(std::int32_t added, std::int32_t step) {
        const std::int64_t needed = std::int64_t{m_count} + added;
        const std::int64_t stated = needed > m_capacity ? std::int64_t{m_count} + step : m_capacity;
        if (m_count < 0 || stated > INT32_MAX)
            return false;
        try {
            const auto size = static_cast<std::size_t>(std::max(needed, stated));
            if (m_block.size() < size)
                m_block.resize(size);
        } catch (const std::bad_alloc &) {
            return false;
        }
        m_capacity = static_cast<std::int32_t>(stated);
        return true;
    }

    bool Reallocate(std::size_t size) {
        try {
            if (size > m_block.size()) {
                m_block.resize(size);
            } else {
                m_block.resize(size);
                m_block.shrink_to_fit();
            }
        } catch (const std::bad_alloc &) {
            return false;
        } catch (const std::length_error &) {
            return false;
        }
        return true;
    }
};

} // namespace TavixArray::detail
