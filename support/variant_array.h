/// CVariantArray: a list of values that splits text into itself and joins itself to text.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/support/variant.h"

#include <string_view>
#include <vector>

/// Values in insertion order.
class TAVIX_API CVariantArray {
public:
    void Add(const CVariant &value) { m_values.push_back(value); }
    void Add(short number) { m_values.emplace_back(number); }
    void Add(int number) { m_values.emplace_back(number); }
    void Add(long number) { m_values.emplace_back(number); }
    void Add(double number) { m_values.emplace_back(number); }
    void Add(const char *text) { m_values.emplace_back(text); }
    void Add(const CString &text) { m_values.emplace_back(text); }

    int GetCount() const { return static_cast<int>(m_values.size()); }
    /// Throws std::out_of_range for an index outside 0 <= index < GetCount().
    CVariant &operator[](int index) { return m_values.at(static_cast<std::size_t>(index)); }
    const CVariant &operator[](int index) const {
        return m_values.at(static_cast<std::size_t>(index));
    }
    /// Throws as operator[] does, and then removes nothing.
    void RemoveAt(int index);
    void RemoveAll() { m_values.clear(); }
    /// Values added are empty; does nothing for a negative count.
    void SetSize(int count);

    /// The index of the first element whose text is the value's text, or -1. A number's text is the
    /// one that CVariant makes of it.
    int Find(const CVariant &value) const;
    int Find(const char *text) const { return Find(CVariant(text)); }
    int Find(const CString &text) const { return Find(CVariant(text)); }
    int Find(int number) const { return Find(CVariant(number)); }
    int Find(long number) const { return Find(CVariant(number)); }
    int Find(double number) const { return Find(CVariant(number)); }

    /// Becomes the pieces of the text, as CStdString::Split cuts it, and returns how many; none for
    /// an empty text.
    int Split(const char *text, const char *delimiters);
    /// The elements' texts with the separator between them.
    CString ToString(char separator) const;

private:
    friend class CStdString;

    /// Appends the pieces and returns how many elements there are then; 0, and nothing is appended,
    /// for an empty text. The text may not be an element's.
    int AddPieces(std::string_view text, std::string_view delimiters);

    std::vector<CVariant> m_values;
};
