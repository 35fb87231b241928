#include "TAVIX20/containers/line_array.h"

#include "TAVIX20/containers/plane_geometry.h"

namespace TavixArray {

namespace {

_stLine MakeLine(int x1, int y1, int x2, int y2) {
    return {x1, y1, x2, y2, tavix::Distance(x1, y1, x2, y2), tavix::Direction(x1, y1, x2, y2)};
}

} // namespace

void CLineArray::Add(int x1, int y1, int x2, int y2) {
    Append(MakeLine(x1, y1, x2, y2));
}

void CLineArray::Add(const _stLine &line) {
    Append(line);
}

void CLineArray::Insert(int index, int x1, int y1, int x2, int y2) {
    Overwrite(index, MakeLine(x1, y1, x2, y2));
}

void CLineArray::Insert(int index, const _stLine &line) {
    Overwrite(index, line);
}

void CLineArray::SetAt(int index, const _stLine &line) {
    Record(index) = line;
}

CRect CLineArray::GetBounds() const {
    if (m_count <= 0)
        return {};
    CRect bounds(Record(0).x1, Record(0).y1, Record(0).x1, Record(0).y1);
    for (const _stLine &line : *this) {
        bounds.left = std::min({bounds.left, line.x1, line.x2});
        bounds.top = std::min({bounds.top, line.y1, line.y2});
        bounds.right = std::max({bounds.right, line.x1, line.x2});
        bounds.bottom = std::max({bounds.bottom, line.y1, line.y2});
    }
    return bounds;
}

void CLineArray::SortX1() {
    SortBy(&_stLine::x1);
}

void CLineArray::SortY1() {
    SortBy(&_stLine::y1);
}

void CLineArray::SortX2() {
    SortBy(&_stLine::x2);
}

void CLineArray::SortY2() {
    SortBy(&_stLine::y2);
}

void CLineArray::SortDistance() {
    SortBy(&_stLine::distance);
}

void CLineArray::SortAngle() {
    SortBy(&_stLine::angle);
}

double CLineArray::Smallest(double _stLine::*field) const {
    double smallest = m_count > 0 ? Record(0).*field : 0.0;
    for (const _stLine &line : *this)
        smallest = std::min(smallest, line.*field);
    return smallest;
}

double CLineArray::Largest(double _stLine::*field) const {
    double largest = m_count > 0 ? Record(0).*field : 0.0;
    for (const _stLine &line : *this)
        largest = std::max(largest, line.*field);
    return largest;
}

double CLineArray::Average(double _stLine::*field) const {
    double sum = 0.0;
    for (const _stLine &line : *this)
        sum += line.*field;
    return m_count > 0 ? sum / m_count : 0.0;
}

double CLineArray::GetMinDistance() const {
    return Smallest(&_stLine::distance);
}

double CLineArray::GetMaxDistance() const {
    return Largest(&_stLine::distance);
}

double CLineArray::GetAvgDistance() const {
    return Average(&_stLine::distance);
}

double CLineArray::GetMinAngle() const {
    return Smallest(&_stLine::angle);
}

double CLineArray::GetMaxAngle() const {
    return Largest(&_stLine::angle);
}

double CLineArray::GetAvgAngle() const {
    return Average(&_stLine::angle);
}

} // namespace TavixArray
