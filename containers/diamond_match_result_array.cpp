#include "TAVIX20/containers/diamond_match_result_array.h"

void CDiamondMatchResultArray::Add(int centerX, int centerY, int size, double rate) {
    AddRecord({centerX, centerY, size, rate});
}

CDiamondMatchResultArray &
CDiamondMatchResultArray::operator+(const CDiamondMatchResultArray &other) {
    AddArray(other);
    return *this;
}
