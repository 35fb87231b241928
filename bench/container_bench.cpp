// The arrays beside the standard library's.

#include "comparison.h"

#include <TAVIX20.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

using TavixArray::CPointArray;

namespace {

constexpr int COUNT = 100000;

std::shared_ptr<std::vector<POINT>> RandomPoints() {
    auto points = std::make_shared<std::vector<POINT>>();
    std::mt19937 random(3);
    for (int i = 0; i < COUNT; ++i)
        points->push_back({static_cast<LONG>(random() % 2048), static_cast<LONG>(random() % 2048)});
    return points;
}

} // namespace

void AddContainerComparisons() {
    const auto points = RandomPoints();

    AddComparison({"CPointArray::Add(x, y), 100,000 points", "std::vector::push_back", 0.25,
                   [] {
                       CPointArray array;
                       for (int i = 0; i < COUNT; ++i)
                           array.Add(i, i);
                   },
                   [] {
                       std::vector<POINT> array;
                       for (int i = 0; i < COUNT; ++i)
                           array.push_back({i, i});
                   }});
    AddComparison({"CPointArray, fill and SortX, 100,000 points", "std::stable_sort", 0.8,
                   [points] {
                       CPointArray array(points->data(), COUNT);
                       array.SortX();
                   },
                   [points] {
                       std::vector<POINT> copy(*points);
                       std::stable_sort(copy.begin(), copy.end(),
                                        [](const POINT &a, const POINT &b) { return a.x < b.x; });
                   }});
    const auto array = std::make_shared<CPointArray>(points->data(), COUNT);
    AddComparison({"CPointArray::Find, 100,000 points, absent", "std::find_if", 0.8,
                   [array] { static_cast<void>(array->Find(-1, -1, 0, 0)); },
                   [points] {
                       const volatile auto found =
                           std::find_if(
                               points->begin(), points->end(),
                               [](const POINT &point) { return point.x == -1 && point.y == -1; }) -
                           points->begin();
                       static_cast<void>(found);
                   }});
}
