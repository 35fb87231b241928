#include "TAVIX20/containers/point_array_array.h"

#include <utility>

namespace TavixArray {

namespace {

bool HasFewerPoints(const CPointArray &a, const CPointArray &b) {
    return a.GetElementCount() < b.GetElementCount();
}

} // namespace

void CPointArrayArray::Add(const CPointArrayArray &other) {
    AppendAll(other.m_block.data(), other.m_count);
}

void CPointArrayArray::Add(const CPointArray &points) {
    Append(points);
}

void CPointArrayArray::Add(CPointArray &&points) {
    Append(std::move(points));
}

bool CPointArrayArray::Add(std::span<detail::PointBlock> blocks) {
    return AppendEach(blocks);
}

void CPointArrayArray::Insert(int index, const CPointArray &points) {
    Overwrite(index, points);
}

int CPointArrayArray::GetPointTotalCount() const {
    int total = 0;
    for (const CPointArray &points : *this)
        total += points.GetElementCount();
    return total;
}

int CPointArrayArray::GetAvgPointCount() const {
    return m_count <= 0 ? 0 : GetPointTotalCount() / m_count;
}

int CPointArrayArray::GetMaxPointCount() const {
    return m_count <= 0 ? 0 : std::max_element(begin(), end(), HasFewerPoints)->GetElementCount();
}

int CPointArrayArray::GetMinPointCount() const {
    return m_count <= 0 ? 0 : std::min_element(begin(), end(), HasFewerPoints)->GetElementCount();
}

void CPointArrayArray::SetAt(int index, const CPointArray &points) {
    Record(index) = points;
}

} // namespace TavixArray
