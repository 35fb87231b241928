/// Arrays that grow on demand, indexed with int.
#pragma once

#include <algorithm>
#include <vector>

#include "TAVIX20/platform/cstring.h"

namespace tavix::detail {

/// Element access trusts the index to be below GetSize(). The functions that change the size do
/// nothing for a negative index, size or count.
template <typename T>
class GrowingArray {
public:
    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetCount() const { return GetSize(); }
    int GetUpperBound() const { return GetSize() - 1; } ///< The last index; -1 when empty.
    bool IsEmpty() const { return m_items.empty(); }

    const T &GetAt(int index) const { return m_items[static_cast<std::size_t>(index)]; }
    T &ElementAt(int index) { return m_items[static_cast<std::size_t>(index)]; }
    const T &ElementAt(int index) const { return GetAt(index); }
    T &operator[](int index) { return ElementAt(index); }
    const T &operator[](int index) const { return GetAt(index); }
    void SetAt(int index, const T &value) { ElementAt(index) = value; }
    /// All elements in a row, valid until the size changes.
    T *GetData() { return m_items.data(); }
    const T *GetData() const { return m_items.data(); }

    /// Elements added are value-initialised; growBy is accepted and has no effect.
    void SetSize(int newSize, int /*growBy*/ = -1) {
        if (newSize >= 0) {
            m_items.resize(static_cast<std::size_t>(newSize));
        }
    }
    void RemoveAll() { m_items.clear(); }

    /// SetAt that first grows the array to hold the index.
    void SetAtGrow(int index, const T &value) {
        if (index >= 0 && index < GetSize()) {
            SetAt(index, value);
        } else {
            InsertAt(index, value);
        }
    }

    /// Returns the new element's index.
    int Add(const T &value) {
        m_items.push_back(value);
        return GetUpperBound();
    }

    /// Returns the index of the first element appended. The other array may be this one.
    int Append(const GrowingArray &other) {
        const int first = GetSize();
        const int count = other.GetSize();
        SetSize(first + count);
        std::copy_n(other.m_items.begin(), count, m_items.begin() + first);
        return first;
    }

    void Copy(const GrowingArray &other) { m_items = other.m_items; }

    /// Inserts count copies of the value; an index past the end grows the array up to it first.
    void InsertAt(int index, const T &value, int count = 1) {
        if (index < 0 || count <= 0) {
            return;
        }
        const int position = std::min(index, GetSize());
        // The value may be an element of this array, so it goes in before anything else moves.
        m_items.insert(m_items.begin() + position, static_cast<std::size_t>(count), value);
        m_items.insert(m_items.begin() + position, static_cast<std::size_t>(index - position), T());
    }

    /// Removes count elements, or as many as there are from the index on.
    void RemoveAt(int index, int count = 1) {
        if (index < 0 || index >= GetSize() || count <= 0) {
            return;
        }
        const auto first = m_items.begin() + index;
        m_items.erase(first, first + std::min(count, GetSize() - index));
    }

private:
    std::vector<T> m_items;
};

} // namespace tavix::detail

class CStringArray : public tavix::detail::GrowingArray<CString> {};

/// Does not own what its pointers point to.
class CPtrArray : public tavix::detail::GrowingArray<void *> {};
