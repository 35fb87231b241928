#include "TAVIX20/containers/blob_rect_array.h"

#include "TAVIX20/support/stdlib.h"

namespace {

long Width(const _stBlobRect &blob) {
    return blob.right - blob.left;
}

long Height(const _stBlobRect &blob) {
    return blob.bottom - blob.top;
}

long CenterX(const _stBlobRect &blob) {
    return blob.left + Width(blob) / 2;
}

long CenterY(const _stBlobRect &blob) {
    return blob.top + Height(blob) / 2;
}

long CenterDistance(const _stBlobRect &a, const _stBlobRect &b) {
    return CStdlib::Distance(static_cast<int>(CenterX(a)), static_cast<int>(CenterY(a)),
                             static_cast<int>(CenterX(b)), static_cast<int>(CenterY(b)));
}

bool IsInside(long value, int low, int high) {
    return low <= value && value <= high;
}

} // namespace

void CBlobRectArray::Add(const _stBlobRect &blob) {
    Append(blob);
}

void CBlobRectArray::Add(long left, long top, long right, long bottom, long pixelCount, long value1,
                         long value2) {
    Append({left, top, right, bottom, pixelCount, value1, value2, {}});
}

void CBlobRectArray::Add(long left, long top, long right, long bottom, long pixelCount) {
    Append({left, top, right, bottom, pixelCount, 0, 0, {}});
}

_stBlobRect &CBlobRectArray::GetAt(int index) {
    return Record(index);
}

void CBlobRectArray::SetAt(int index, long left, long top, long right, long bottom,
                           long pixelCount) {
    _stBlobRect &blob = Record(index);
    blob.left = left;
    blob.top = top;
    blob.right = right;
    blob.bottom = bottom;
    blob.pixelCount = pixelCount;
}

template <typename Key>
void CBlobRectArray::SortFiveFieldsBy(Key key) {
    const std::vector<_stBlobRect> before(begin(), end());
    SortBy(key);
    for (int i = 0; i < static_cast<int>(before.size()); ++i) {
        _stBlobRect restored = before[static_cast<std::size_t>(i)];
        const _stBlobRect &sorted = Record(i);
        restored.left = sorted.left;
        restored.top = sorted.top;
        restored.right = sorted.right;
        restored.bottom = sorted.bottom;
        restored.pixelCount = sorted.pixelCount;
        Record(i) = restored;
    }
}

void CBlobRectArray::SortLeft() {
    SortFiveFieldsBy(&_stBlobRect::left);
}

void CBlobRectArray::SortTop() {
    SortFiveFieldsBy(&_stBlobRect::top);
}

void CBlobRectArray::SortRight() {
    SortFiveFieldsBy(&_stBlobRect::right);
}

void CBlobRectArray::SortBottom() {
    SortFiveFieldsBy(&_stBlobRect::bottom);
}

void CBlobRectArray::SortWidth() {
    SortFiveFieldsBy(Width);
}

void CBlobRectArray::SortHeight() {
    SortFiveFieldsBy(Height);
}

void CBlobRectArray::SortPixelCount() {
    SortFiveFieldsBy(&_stBlobRect::pixelCount);
}

CBlobRectArray &CBlobRectArray::operator+(const CBlobRectArray &other) {
    AppendAll(other.m_block.data(), other.m_count);
    return *this;
}

template <typename Key>
long CBlobRectArray::Average(Key key) const {
    long sum = 0;
    for (const _stBlobRect &blob : *this)
        sum += std::invoke(key, blob);
    return m_count > 0 ? sum / m_count : 0;
}

long CBlobRectArray::GetAverageLeft() const {
    return Average(&_stBlobRect::left);
}

long CBlobRectArray::GetAverageTop() const {
    return Average(&_stBlobRect::top);
}

long CBlobRectArray::GetAverageRight() const {
    return Average(&_stBlobRect::right);
}

long CBlobRectArray::GetAverageBottom() const {
    return Average(&_stBlobRect::bottom);
}

long CBlobRectArray::GetAverageCenterX() const {
    return Average(CenterX);
}

long CBlobRectArray::GetAverageCenterY() const {
    return Average(CenterY);
}

POINT CBlobRectArray::CenterPoint() const {
    return {static_cast<LONG>(GetAverageCenterX()), static_cast<LONG>(GetAverageCenterY())};
}

RECT CBlobRectArray::GetBounds() const {
    if (m_count <= 0)
        return {0, 0, 0, 0};
    _stBlobRect bounds = Record(0);
    for (const _stBlobRect &blob : *this) {
        bounds.left = std::min(bounds.left, blob.left);
        bounds.top = std::min(bounds.top, blob.top);
        bounds.right = std::max(bounds.right, blob.right);
        bounds.bottom = std::max(bounds.bottom, blob.bottom);
    }
    return {static_cast<LONG>(bounds.left), static_cast<LONG>(bounds.top),
            static_cast<LONG>(bounds.right), static_cast<LONG>(bounds.bottom)};
}

int CBlobRectArray::ROIOverKill(int x1, int y1, int x2, int y2) {
    return EraseIf([&](const _stBlobRect &blob) {
        return !IsInside(blob.left, x1, x2) && !IsInside(blob.right, x1, x2) &&
               !IsInside(blob.top, y1, y2) && !IsInside(blob.bottom, y1, y2);
    });
}

// A removal leaves the same pair of neighbours to be examined next as an advance does: each record
// is compared once, with the record that stood behind it.
int CBlobRectArray::DistanceOverKill(double distance) {
    int kept = 0;
    const int count = m_count;
    for (int i = 0; i < count; ++i) {
        const bool isFar = i + 1 < count &&
                           static_cast<double>(CenterDistance(Record(i), Record(i + 1))) > distance;
        if (!isFar)
            Record(kept++) = Record(i);
    }
    m_count = kept;
    return count - kept;
}
