#include "TAVIX20/containers/shape_measures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavix {

namespace {

/// Twice the area of the triangle a, b, c; positive when it runs clockwise as the picture is seen.
std::int64_t Cross(const POINT &a, const POINT &b, const POINT &c) {
    return (std::int64_t{b.x} - a.x) * (std::int64_t{c.y} - a.y) -
           (std::int64_t{b.y} - a.y) * (std::int64_t{c.x} - a.x);
}

double Length(const POINT &a, const POINT &b) {
    return std::hypot(static_cast<double>(b.x) - a.x, static_cast<double>(b.y) - a.y);
}

/// One half of the hull (Andrew's monotone chain): the points in their order, without those that
/// do not turn clockwise.
std::vector<POINT> HalfHull(const std::vector<POINT> &sorted) {
    std::vector<POINT> hull;
    for (const POINT &point : sorted) {
        while (hull.size() >= 2 && Cross(hull[hull.size() - 2], hull.back(), point) <= 0)
            hull.pop_back();
        hull.push_back(point);
    }
    return hull;
}

/// The convex hull, clockwise, without points on its edges.
std::vector<POINT> ConvexHull(std::vector<POINT> points) {
    std::sort(points.begin(), points.end(),
              [](const POINT &a, const POINT &b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    points.erase(std::unique(points.begin(), points.end()), points.end());
    std::vector<POINT> hull = HalfHull(points);
    std::reverse(points.begin(), points.end());
    const std::vector<POINT> back = HalfHull(points);
    hull.pop_back();
    hull.insert(hull.end(), back.begin(), back.end() - 1);
    return hull;
}

} // namespace

double EnclosedArea(const Outline &outline) {
    double twice = 0.0;
    for (std::size_t i = 0; i < outline.corners.size(); ++i) {
        const POINT &a = outline.corners[i];
        const POINT &b = outline.corners[(i + 1) % outline.corners.size()];
        twice += static_cast<double>(std::int64_t{a.x} * b.y - std::int64_t{b.x} * a.y);
    }
    return std::abs(twice) / 2;
}

double Perimeter(const Outline &outline) {
    std::vector<POINT> chain;
    WalkBorderPixels(outline, [&chain](POINT pixel) { chain.push_back(pixel); });
    if (chain.size() > 1 && chain.front() == chain.back())
        chain.pop_back();

    long even = 0;
    long odd = 0;
    long corners = 0;
    const auto stepFrom = [&chain](std::size_t i) {
        const POINT &a = chain[i % chain.size()];
        const POINT &b = chain[(i + 1) % chain.size()];
        return POINT{b.x - a.x, b.y - a.y};
    };
    for (std::size_t i = 0; chain.size() > 1 && i < chain.size(); ++i) {
        const POINT step = stepFrom(i);
        if (step.x != 0 && step.y != 0)
            ++odd;
        else
            ++even;
        if (step != stepFrom(i + 1))
            ++corners;
    }
    return 0.980 * static_cast<double>(even) + 1.406 * static_cast<double>(odd) -
           0.091 * static_cast<double>(corners) + std::numbers::pi;
}

FeretDiameters MeasureFeret(std::vector<POINT> corners) {
    const std::vector<POINT> hull = ConvexHull(std::move(corners));
    const std::size_t count = hull.size();
    FeretDiameters feret;
    feret.smallest = HUGE_VAL;
    std::size_t opposite = 1;
    for (std::size_t i = 0; i < count; ++i) {
        const POINT &a = hull[i];
        const POINT &b = hull[(i + 1) % count];
        const auto distance = [&](std::size_t k) { return Cross(a, b, hull[k % count]); };
        const auto takeLargest = [&](const POINT &end) {
            const double length = Length(end, hull[opposite % count]);
            if (length > feret.largest) {
                feret.largest = length;
                feret.first = end;
                feret.second = hull[opposite % count];
            }
        };
        // Every vertex that is the farthest from some edge is compared with that edge's ends; the
        // farthest two vertices are such a pair.
        while (distance(opposite + 1) >= distance(opposite) && opposite < i + count) {
            takeLargest(a);
            takeLargest(b);
            ++opposite;
        }
        takeLargest(a);
        takeLargest(b);
        const double width = static_cast<double>(distance(opposite)) / Length(a, b);
        if (width < feret.smallest) {
            feret.smallest = width;
            feret.edgeStart = a;
            feret.edgeEnd = b;
        }
    }
    return feret;
}

} // namespace tavix
