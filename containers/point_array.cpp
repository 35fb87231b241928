#include "TAVIX20/containers/point_array.h"

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <atomic>
#include <new>

namespace TavixArray {

namespace {

constexpr std::int32_t GROWTH_OF_ADD_XY = 10;

tavix::WorkerPool g_findPool(CStdlib::GetNumOfProcessors());

/// Searches one slice; gives up when another worker has raised the stop flag.
int FindInSlice(const tagPOINT *points, const tavix::WorkerPool::Slice &slice,
                const tagPOINT &wanted, std::atomic<bool> &stop) {
    constexpr int pointsBetweenLooks = 4096;
    for (int i = slice.first; i < slice.end; ++i) {
        if ((i - slice.first) % pointsBetweenLooks == 0 && stop.load(std::memory_order_relaxed))
            return -1;
        if (points[i] == wanted) {
            stop.store(true, std::memory_order_relaxed);
            return i;
        }
    }
    return -1;
}

/// The match of the last worker, in worker order, that has one.
int FindInSlices(const tagPOINT *points, int count, const tagPOINT &wanted) {
    std::vector<int> found(static_cast<std::size_t>(g_findPool.GetWorkerCount()), -1);
    std::atomic<bool> stop = false;
    g_findPool.Run(count, [&](const tavix::WorkerPool::Slice &slice) {
        found[static_cast<std::size_t>(slice.worker)] = FindInSlice(points, slice, wanted, stop);
    });
    const auto last = std::find_if(found.rbegin(), found.rend(), [](int i) { return i >= 0; });
    return last == found.rend() ? -1 : *last;
}

} // namespace

CPointArray::CPointArray(const tagPOINT *points, int count) : CPointArray() {
    if (points)
        AppendAll(points, count);
}

void CPointArray::AddPoints(const tagPOINT *points, int count) {
    if (points)
        AppendAll(points, count);
}

void CPointArray::Add(const CPointArray &other) {
    AppendAll(other.m_block.data(), other.m_count);
}

void CPointArray::Add(int x, int y) {
    Append({x, y}, GROWTH_OF_ADD_XY);
}

void CPointArray::Add(const tagPOINT &point) {
    Append(point);
}

void CPointArray::Insert(int index, int x, int y) {
    Overwrite(index, {x, y});
}

void CPointArray::Insert(int index, const tagPOINT &point) {
    Overwrite(index, point);
}

void CPointArray::SetAt(int index, int x, int y) {
    Record(index) = {x, y};
}

void CPointArray::SetAt(int index, const tagPOINT &point) {
    Record(index) = point;
}

int CPointArray::Find(int x, int y, int start, int threaded) const {
    const tagPOINT wanted{x, y};
    if (threaded != 0 && m_count > g_findPool.GetWorkerCount())
        return FindInSlices(m_block.data(), m_count, wanted);
    return FindFrom(start, [&](const tagPOINT &point) { return point == wanted; });
}

int CPointArray::Find(const tagPOINT &point, int start, int threaded) const {
    return Find(point.x, point.y, start, threaded);
}

void CPointArray::ReverseElements() {
    std::reverse(begin(), end());
}

void CPointArray::SortX() {
    SortBy(&tagPOINT::x);
}

void CPointArray::SortY() {
    SortBy(&tagPOINT::y);
}

int CPointArray::operator==(const CPointArray &other) const {
    return std::equal(begin(), end(), other.begin(), other.end()) ? 1 : 0;
}

int CPointArray::operator!=(const CPointArray &other) const {
    return m_count == other.m_count && !(*this == other) ? 1 : 0;
}

CPointArray &CPointArray::operator+(const CPointArray &other) {
    Add(other);
    return *this;
}

tagPOINT *CPointArray::GetPointPtr() const {
    if (m_count <= 0)
        return nullptr;
    auto *const copy = new (std::nothrow) tagPOINT[static_cast<std::size_t>(m_count)];
    if (copy)
        std::copy(begin(), end(), copy);
    return copy;
}

int CPointArray::IsPoint(int x, int y) const {
    return Find(x, y, 0, 0);
}

void CPointArray::RemovePoint(int x, int y) {
    const int index = IsPoint(x, y);
    if (index >= 0)
        Remove(index);
}

} // namespace TavixArray
