#include "TAVIX20/containers/pixel_array.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/containers/sort_byte_array.h"

namespace TavixArray {

namespace {

bool IsDarker(const _stPixel &a, const _stPixel &b) {
    return a.grayLevel < b.grayLevel;
}

} // namespace

void CPixelArray::Add(int x, int y, unsigned char level, double parameter) {
    Add({x, y, level, parameter});
}

void CPixelArray::Insert(int index, int x, int y, unsigned char level, double parameter) {
    Insert(index, {x, y, level, parameter});
}

void CPixelArray::GetPointArray(CPointArray &points) const {
    points.RemoveAll();
    for (const _stPixel &pixel : *this)
        points.Add(pixel.x, pixel.y);
}

void CPixelArray::GetLevelArray(CSortByteArray &levels) const {
    levels.RemoveAll();
    for (const _stPixel &pixel : *this)
        levels.Add(pixel.grayLevel);
}

void CPixelArray::SortGrayLevel() {
    SortBy(&_stPixel::grayLevel);
}

void CPixelArray::SortParameter() {
    SortBy(&_stPixel::parameter);
}

int CPixelArray::GetMinLevel() const {
    return m_count <= 0 ? 0 : std::min_element(begin(), end(), IsDarker)->grayLevel;
}

int CPixelArray::GetMaxLevel() const {
    return m_count <= 0 ? 0 : std::max_element(begin(), end(), IsDarker)->grayLevel;
}

int CPixelArray::GetAvgLevel() const {
    std::int64_t sum = 0;
    for (const _stPixel &pixel : *this)
        sum += pixel.grayLevel;
    return m_count <= 0 ? 0 : static_cast<int>(sum / m_count);
}

} // namespace TavixArray
