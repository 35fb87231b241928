#include "TAVIX20/containers/rect_array.h"

#include "TAVIX20/support/wrap.h"

namespace TavixArray {

namespace {

constexpr std::int32_t GROWTH_OF_ADD_EDGES = 10;

LONG Width(const tagRECT &rect) {
    return tavix::WrapSubtract(rect.right, rect.left);
}

LONG Height(const tagRECT &rect) {
    return tavix::WrapSubtract(rect.bottom, rect.top);
}

std::int64_t Area(const tagRECT &rect) {
    return std::int64_t{Height(rect)} * Width(rect);
}

} // namespace

template <typename Key>
int CRectArray::Largest(Key key) const {
    int largest = m_count > 0 ? std::invoke(key, Record(0)) : 0;
    for (const tagRECT &rect : *this)
        largest = std::max<int>(largest, std::invoke(key, rect));
    return largest;
}

template <typename Key>
int CRectArray::Smallest(Key key) const {
    int smallest = m_count > 0 ? std::invoke(key, Record(0)) : 0;
    for (const tagRECT &rect : *this)
        smallest = std::min<int>(smallest, std::invoke(key, rect));
    return smallest;
}

template <typename Key>
int CRectArray::Average(Key key) const {
    std::int64_t sum = 0;
    for (const tagRECT &rect : *this)
        sum += std::invoke(key, rect);
    return m_count > 0 ? static_cast<int>(sum / m_count) : 0;
}

void CRectArray::Add(int left, int top, int right, int bottom) {
    Append({left, top, right, bottom}, GROWTH_OF_ADD_EDGES);
}

void CRectArray::Add(const tagRECT &rect) {
    Append(rect);
}

void CRectArray::Insert(int index, const tagRECT &rect) {
    Overwrite(index, rect);
}

void CRectArray::SetAt(int index, int left, int top, int right, int bottom) {
    Record(index) = {left, top, right, bottom};
}

void CRectArray::SetAt(int index, const tagRECT &rect) {
    Record(index) = rect;
}

int CRectArray::GetMaxWidth() const {
    return Largest(Width);
}

int CRectArray::GetMinWidth() const {
    return Smallest(Width);
}

int CRectArray::GetAvgWidth() const {
    return Average(Width);
}

int CRectArray::GetMaxHeight() const {
    return Largest(Height);
}

int CRectArray::GetMinHeight() const {
    return Smallest(Height);
}

int CRectArray::GetAvgHeight() const {
    return Average(Height);
}

int CRectArray::GetSmallestLeft() const {
    return Smallest(&tagRECT::left);
}

int CRectArray::GetLargestLeft() const {
    return Largest(&tagRECT::left);
}

int CRectArray::GetSmallestRight() const {
    return Smallest(&tagRECT::right);
}

int CRectArray::GetLargestRight() const {
    return Largest(&tagRECT::right);
}

int CRectArray::GetSmallestTop() const {
    return Smallest(&tagRECT::top);
}

int CRectArray::GetLargestTop() const {
    return Largest(&tagRECT::top);
}

int CRectArray::GetSmallestBottom() const {
    return Smallest(&tagRECT::bottom);
}

int CRectArray::GetLargestBottom() const {
    return Largest(&tagRECT::bottom);
}

void CRectArray::SortLeft() {
    SortBy(&tagRECT::left);
}

void CRectArray::SortTop() {
    SortBy(&tagRECT::top);
}

void CRectArray::SortRight() {
    SortBy(&tagRECT::right);
}

void CRectArray::SortBottom() {
    SortBy(&tagRECT::bottom);
}

void CRectArray::SortWidth() {
    SortBy(Width);
}

void CRectArray::SortHeight() {
    SortBy(Height);
}

void CRectArray::SortArea() {
    SortBy(Area);
}

} // namespace TavixArray
