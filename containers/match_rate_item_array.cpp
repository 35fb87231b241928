#include "TAVIX20/containers/match_rate_item_array.h"

void CMatchRatetItemArray::Add(double rate, int index) {
    AddRecord({rate, index});
}

CMatchRatetItemArray &CMatchRatetItemArray::operator+(const CMatchRatetItemArray &other) {
    AddArray(other);
    return *this;
}
