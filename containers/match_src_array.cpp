#include "TAVIX20/containers/match_src_array.h"

#include <cstring>

void CMatchSrcArray::Add(const char *name) {
    _stMatchSource source{};
    if (name)
        std::memcpy(source.name, name, strnlen(name, sizeof source.name - 1));
    AddRecord(source);
}

CMatchSrcArray &CMatchSrcArray::operator+(const CMatchSrcArray &other) {
    AddArray(other);
    return *this;
}
