#include "TAVIX20/containers/sort_string_array.h"

#include "TAVIX20/support/text_number.h"

namespace TavixArray {

void CSortStringArray::Add(const char *text) {
    Add(CString(text));
}

int CSortStringArray::Find(const char *text, int start) const {
    return Find(CString(text), start);
}

void CSortStringArray::Insert(int index, const char *text) {
    Insert(index, CString(text));
}

void CSortStringArray::SetAt(int index, const char *text) {
    SetAt(index, CString(text));
}

void CSortStringArray::SortNumber() {
    SortBy([](const CString &text) { return tavix::ReadInt(text); });
}

void CSortStringArray::SortNumber(int first, int last) {
    const int start = std::max(first, 0);
    SortBy([start, last](const CString &text) {
        const int end = std::min(last, text.GetLength() - 1);
        return end < start ? 0 : tavix::ReadInt(text.Mid(start, end - start + 1));
    });
}

} // namespace TavixArray
