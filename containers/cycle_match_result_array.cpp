#include "TAVIX20/containers/cycle_match_result_array.h"

void CCycleMatchResultArray::Add(int centerX, int centerY, int radius, int index, double rate) {
    AddRecord({centerX, centerY, radius, index, rate});
}

CCycleMatchResultArray &CCycleMatchResultArray::operator+(const CCycleMatchResultArray &other) {
    AddArray(other);
    return *this;
}
