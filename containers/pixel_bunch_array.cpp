#include "TAVIX20/containers/pixel_bunch_array.h"

namespace TavixArray {

void CPixelBunchArray::Add(unsigned char level, LONG count, double percent) {
    Add({level, count, percent});
}

int CPixelBunchArray::Find(const _stPixelBunch &bunch, int start) const {
    return FindFrom(start, [&bunch](const _stPixelBunch &b) {
        return b.grayLevel == bunch.grayLevel && b.totalCount == bunch.totalCount &&
               b.percent == bunch.percent;
    });
}

void CPixelBunchArray::SortTotalCount() {
    SortBy(&_stPixelBunch::totalCount);
}

void CPixelBunchArray::SortGrayLevel() {
    SortBy(&_stPixelBunch::grayLevel);
}

void CPixelBunchArray::SortPercent() {
    SortBy(&_stPixelBunch::percent);
}

} // namespace TavixArray
