#include "TAVIX20/containers/match_result_array.h"

void CMatchResultArray::Add(unsigned char flag, int left, int top, int right, int bottom,
                            int templateIndex, double blackYield, double whiteYield) {
    Add(flag, left, top, right, bottom, templateIndex, blackYield, whiteYield, 0);
}

void CMatchResultArray::Add(unsigned char flag, int left, int top, int right, int bottom,
                            int templateIndex, double blackYield, double whiteYield,
                            long pixelCount) {
    AddRecord({flag, left, top, right, bottom, templateIndex, blackYield, whiteYield, pixelCount});
}

void CMatchResultArray::SortLeft() {
    SortBy(&_stMatchResult::left);
}

void CMatchResultArray::SortTop() {
    SortBy(&_stMatchResult::top);
}

void CMatchResultArray::SortRight() {
    SortBy(&_stMatchResult::right);
}

void CMatchResultArray::SortBottom() {
    SortBy(&_stMatchResult::bottom);
}

void CMatchResultArray::SortWhiteYield() {
    SortBy(&_stMatchResult::whiteYield);
}

void CMatchResultArray::SortBlackYield() {
    SortBy(&_stMatchResult::blackYield);
}

void CMatchResultArray::SortYieldAverage() {
    SortBy([](const _stMatchResult &hit) { return (hit.blackYield + hit.whiteYield) / 2; });
}

CMatchResultArray &CMatchResultArray::operator+(const CMatchResultArray &other) {
    AddArray(other);
    return *this;
}
