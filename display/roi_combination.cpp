// The elements are painted one over the other, and workers share the rows. Where they lie so far
// apart that painting would look at much empty space, they are combined as a tree: a sequence of
// elements takes some pixels away and then adds some, and two such changes in a row are one again,
// so that small ones meet small ones before they meet the whole region.

#include "TAVIX20/display/roi_combination.h"

#include "TAVIX20/display/roi_element_array.h"
#include "TAVIX20/platform/polygon_painter.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace tavix {

namespace {

using Layers = std::span<const PolygonLayer>;

RECT BoundsOf(std::span<const POINT> points) {
    const auto [left, right] = std::ranges::minmax(points, {}, &POINT::x);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &POINT::y);
    return {left.x, top.y, right.x, bottom.y};
}

RECT Common(const RECT &a, const RECT &b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

RECT Around(const RECT &a, const RECT &b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

bool HoldsPixels(const RECT &rect) {
    return rect.left < rect.right && rect.top < rect.bottom;
}

/// The elements that have an effect; the first one, which has points, starts the region.
std::vector<PolygonLayer> LayersOf(std::span<const _stRoiElement> elements) {
    std::vector<PolygonLayer> layers;
    layers.reserve(elements.size());
    for (const _stRoiElement &element : elements) {
        const bool isFirst = &element == elements.data();
        const bool isSet = isFirst || element.Method == _stRoiElement::ADD;
        const std::span<const POINT> points(
            element.Points.GetBufPtr(), static_cast<std::size_t>(element.Points.GetElementCount()));
        if (points.empty() || (!isSet && element.Method != _stRoiElement::SUBTRACT))
            continue;
        const RECT bounds = BoundsOf(points);
        if (IsRegionPoint({bounds.left, bounds.top}) &&
            IsRegionPoint({bounds.right, bounds.bottom}) && HoldsPixels(Common(bounds, ROI_WORLD)))
            layers.push_back({points, bounds, isSet});
    }
    return layers;
}

WorkerPool pool(CStdlib::GetNumOfProcessors());

/// What process(first, end) makes of each worker's slice of [0, total).
template <typename Result, typename Process>
std::vector<Result> InSlices(int total, const Process &process) {
    std::vector<Result> results(static_cast<std::size_t>(pool.GetWorkerCount()));
    std::atomic<bool> isOutOfMemory = false;
    pool.Run(total, [&](const WorkerPool::Slice &slice) {
        try {
            results[static_cast<std::size_t>(slice.worker)] = process(slice.first, slice.end);
        } catch (const std::bad_alloc &) {
            isOutOfMemory = true;
        }
    });
    if (isOutOfMemory)
        throw std::bad_alloc();
    return results;
}

RunRegion Painted(Layers layers, const RECT &area) {
    const auto paint = [&](int first, int end) {
        const RECT rows{area.left, area.top + first, area.right, area.top + end};
        return PaintPolygons(layers, rows);
    };
    const auto parts = InSlices<RunRegion>(area.bottom - area.top, paint);
    RunRegion region;
    for (const RunRegion &part : parts)
        region.AppendBands(part, 0, part.Bands().size());
    return region;
}

/// What a sequence of layers does to a region.
struct Change {
    RunRegion removed; ///< Taken away first.
    RunRegion added;

    void FollowedBy(const Change &next) {
        removed.Unite(next.removed);
        added.Subtract(next.removed);
        added.Unite(next.added);
    }
};

Change ChangeOf(Layers layers) {
    Change change;
    if (layers.size() == 1) {
        const PolygonLayer &layer = layers.front();
        (layer.isSet ? change.added : change.removed) =
            FillPolygons({&layer.points, 1}, ALTERNATE, ROI_WORLD);
    } else if (!layers.empty()) {
        const std::size_t half = layers.size() / 2;
        change = ChangeOf(layers.first(half));
        change.FollowedBy(ChangeOf(layers.subspan(half)));
    }
    return change;
}

RunRegion CombinedAsTree(Layers layers) {
    const auto combine = [&](int first, int end) {
        return ChangeOf(
            layers.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)));
    };
    auto changes = InSlices<Change>(static_cast<int>(layers.size()), combine);
    for (std::size_t i = 1; i < changes.size(); ++i)
        changes.front().FollowedBy(changes[i]);
    return std::move(changes.front().added);
}

/// Painting looks at 64 pixels of the area at a time, about as fast as a tree takes a run from
/// level to level; it fills all of a run, which very long ones make slow.
bool IsBetterPainted(Layers layers, const RECT &area) {
    constexpr LONG widest = 1 << 16;
    constexpr std::int64_t pixelsPerRow = 8 * 64;
    const std::int64_t width = area.right - area.left;
    std::int64_t rows = 0;
    for (const PolygonLayer &layer : layers) {
        const RECT bounds = Common(layer.bounds, area);
        rows += bounds.bottom - bounds.top;
    }
    return width <= widest && width * (area.bottom - area.top) <= pixelsPerRow * rows;
}

} // namespace

RunRegion CombineRoiElements(std::span<const _stRoiElement> elements) {
    const std::vector<PolygonLayer> layers = LayersOf(elements);
    if (layers.empty())
        return {};
    RECT area = layers.front().bounds;
    for (const PolygonLayer &layer : layers)
        area = Around(area, layer.bounds);
    area = Common(area, ROI_WORLD);
    return IsBetterPainted(layers, area) ? Painted(layers, area) : CombinedAsTree(layers);
}

} // namespace tavix
