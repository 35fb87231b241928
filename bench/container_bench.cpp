// The arrays beside the standard library's.

#include "comparison.h"

#include <TAVIX20.h>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
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

/// Smallest and largest coordinates by the plainest loop a compiler can vectorise.
RECT PlainBounds(const std::vector<POINT> &points) {
    RECT bounds{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
    for (const POINT &point : points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
    return bounds;
}

void AddBoundsComparison() {
    constexpr int many = 10000000;
    const auto block = std::make_shared<std::vector<POINT>>();
    for (std::int64_t i = 0; i < many; ++i)
        block->push_back(
            {static_cast<LONG>(i * 7919 % 100003), static_cast<LONG>(i * 104729 % 99991)});
    const auto array = std::make_shared<CPointArray>(block->data(), many);
    AddComparison({"CPointArray::GetBounds, 10 million points", "plain loop", 0.83,
                   [array] { benchmark::DoNotOptimize(array->GetBounds()); },
                   [block] { benchmark::DoNotOptimize(PlainBounds(*block)); }});
}

/// A star with as many vertices as there are points to be tested.
void AddPolygonComparison() {
    constexpr int count = 1000;
    const auto vertices = std::make_shared<std::vector<cv::Point>>();
    const auto polygon = std::make_shared<CPointArray>();
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * CV_PI * i / count;
        const double radius = i % 2 == 0 ? 900 : 500;
        vertices->emplace_back(cvRound(1000 + radius * std::cos(angle)),
                               cvRound(1000 + radius * std::sin(angle)));
        polygon->Add(vertices->back().x, vertices->back().y);
    }
    const auto tested = RandomPoints();
    tested->resize(count);
    AddComparison({"CPointArray::PtInPolygon, 1,000 x 1,000", "cv::pointPolygonTest", 1.0,
                   [polygon, tested] {
                       for (const POINT &point : *tested)
                           benchmark::DoNotOptimize(polygon->PtInPolygon(point.x, point.y));
                   },
                   [vertices, tested] {
                       for (const POINT &point : *tested) {
                           const cv::Point2f at(static_cast<float>(point.x),
                                                static_cast<float>(point.y));
                           benchmark::DoNotOptimize(cv::pointPolygonTest(*vertices, at, false));
                       }
                   }});
}

} // namespace

void AddContainerComparisons() {
    AddBoundsComparison();
    AddPolygonComparison();
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
    AddComparison({"CPointArray, fill and SortX, 100,000 points", "std::stable_sort", 0.67,
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
                   [array] { benchmark::DoNotOptimize(array->Find(-1, -1, 0, 0)); },
                   [points] {
                       benchmark::DoNotOptimize(
                           std::find_if(points->begin(), points->end(), [](const POINT &point) {
                               return point.x == -1 && point.y == -1;
                           }));
                   }});
}
