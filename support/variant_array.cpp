#include "TAVIX20/support/variant_array.h"

#include "TAVIX20/support/text_split.h"
#include "TAVIX20/support/text_view.h"

#include <algorithm>

using tavix::ViewOf;

void CVariantArray::RemoveAt(int index) {
    static_cast<void>((*this)[index]); // Throws for a bad index.
    m_values.erase(m_values.begin() + index);
}

void CVariantArray::SetSize(int count) {
    if (count >= 0)
        m_values.resize(static_cast<std::size_t>(count));
}

int CVariantArray::Find(const CVariant &value) const {
    const auto found = std::find(m_values.begin(), m_values.end(), value);
    return found == m_values.end() ? -1 : static_cast<int>(found - m_values.begin());
}

int CVariantArray::Split(const char *text, const char *delimiters) {
    std::vector<CVariant> before; // The text may be an element's, so it lives until the end.
    before.swap(m_values);
    return AddPieces(ViewOf(text), ViewOf(delimiters));
}

int CVariantArray::AddPieces(std::string_view text, std::string_view delimiters) {
    if (text.empty())
        return 0;
    const tavix::Delimiters ends(delimiters);
    const auto met =
        std::count_if(text.begin(), text.end(), [&](char ch) { return ends.Contains(ch); });
    const std::size_t needed = m_values.size() + static_cast<std::size_t>(met) + 1;
    if (needed > m_values.capacity())
        m_values.reserve(std::max(needed, 2 * m_values.capacity()));
    tavix::SplitText(text, ends, [this](std::string_view piece) {
        m_values.emplace_back(tavix::StringOf(piece));
    });
    return GetCount();
}

CString CVariantArray::ToString(char separator) const {
    std::string joined;
    for (const CVariant &value : m_values) {
        if (&value != m_values.data())
            joined += separator;
        joined += ViewOf(value.ToString());
    }
    return joined;
}
