#include "TAVIX20/containers/size_array.h"

namespace TavixArray {

namespace {

constexpr std::int32_t GROWTH_OF_ADD = 10;

} // namespace

void CSizeArray::Add(int width, int height) {
    Append({width, height}, GROWTH_OF_ADD);
}

void CSizeArray::Insert(int index, int width, int height) {
    Overwrite(index, {width, height});
}

void CSizeArray::SetAt(int index, int width, int height) {
    Record(index) = {width, height};
}

int CSizeArray::Find(int width, int height, int start) const {
    return FindFrom(start, [&](const tagSIZE &size) { return size == tagSIZE{width, height}; });
}

void CSizeArray::SortWidth() {
    SortBy(&tagSIZE::cx);
}

void CSizeArray::SortHeight() {
    SortBy(&tagSIZE::cy);
}

} // namespace TavixArray
