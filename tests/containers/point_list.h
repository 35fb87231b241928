/// Points as pairs, which compare and print well.
#pragma once

#include "TAVIX20/containers/point_array.h"

#include <utility>
#include <vector>

using Pairs = std::vector<std::pair<int, int>>;

inline Pairs PairsOf(const TavixArray::CPointArray &array) {
    Pairs pairs;
    for (int i = 0; i < array.GetElementCount(); ++i)
        pairs.emplace_back(array[i].x, array[i].y);
    return pairs;
}

inline TavixArray::CPointArray ArrayOf(const Pairs &pairs) {
    TavixArray::CPointArray array;
    for (const auto &[x, y] : pairs)
        array.Add(x, y);
    return array;
}
