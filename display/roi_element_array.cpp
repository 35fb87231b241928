// A stroke is combined with the region as it is drawn. A whole list is painted, one stroke over the
// other; workers share its rows. Where strokes lie so far apart that painting would look at much
// empty space, they are combined as a tree: a sequence of strokes takes some pixels away and then
// adds some, and two such changes in a row are one again, so that small strokes meet small ones
// before they meet the whole region.

#include "TAVIX20/display/roi_element_array.h"

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/platform/polygon_painter.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/worker_pool.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <new>
#include <utility>

namespace {

using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

/// As far as images reach.
constexpr RECT WORLD{-(1 << 20), -(1 << 20), 1 << 20, 1 << 20};

std::span<const POINT> PointsOf(const CPointArray &points) {
    return {points.GetBufPtr(), static_cast<std::size_t>(points.GetElementCount())};
}

std::vector<std::span<const POINT>> ContoursOf(const CPointArrayArray &lists) {
    std::vector<std::span<const POINT>> contours;
    contours.reserve(static_cast<std::size_t>(lists.GetElementCount()));
    for (int i = 0; i < lists.GetElementCount(); ++i)
        contours.push_back(PointsOf(lists[i]));
    return contours;
}

tavix::RunRegion PolygonOf(const CPointArray &points) {
    const std::span<const POINT> polygon = PointsOf(points);
    if (!std::ranges::all_of(polygon, IsRegionPoint))
        return {};
    return tavix::FillPolygons({&polygon, 1}, ALTERNATE, WORLD);
}

using Layers = std::span<const tavix::PolygonLayer>;

bool HasPoints(const _stRoiElement &element) {
    return element.Points.GetElementCount() > 0;
}

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
std::vector<tavix::PolygonLayer> LayersOf(std::span<const _stRoiElement> elements) {
    std::vector<tavix::PolygonLayer> layers;
    layers.reserve(elements.size());
    for (const _stRoiElement &element : elements) {
        const bool isFirst = &element == elements.data();
        const bool isSet = isFirst || element.Method == _stRoiElement::ADD;
        if (!HasPoints(element) || (!isSet && element.Method != _stRoiElement::SUBTRACT))
            continue;
        const std::span<const POINT> points = PointsOf(element.Points);
        const RECT bounds = BoundsOf(points);
        if (IsRegionPoint({bounds.left, bounds.top}) &&
            IsRegionPoint({bounds.right, bounds.bottom}) && HoldsPixels(Common(bounds, WORLD)))
            layers.push_back({points, bounds, isSet});
    }
    return layers;
}

tavix::WorkerPool pool(CStdlib::GetNumOfProcessors());

/// What process(first, end) makes of each worker's slice of [0, total).
template <typename Result, typename Process>
std::vector<Result> InSlices(int total, const Process &process) {
    std::vector<Result> results(static_cast<std::size_t>(pool.GetWorkerCount()));
    std::atomic<bool> isOutOfMemory = false;
    pool.Run(total, [&](const tavix::WorkerPool::Slice &slice) {
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

tavix::RunRegion Painted(Layers layers, const RECT &area) {
    const auto paint = [&](int first, int end) {
        const RECT rows{area.left, area.top + first, area.right, area.top + end};
        return tavix::PaintPolygons(layers, rows);
    };
    const auto parts = InSlices<tavix::RunRegion>(area.bottom - area.top, paint);
    tavix::RunRegion region;
    for (const tavix::RunRegion &part : parts)
        region.AppendBands(part, 0, part.Bands().size());
    return region;
}

/// What a sequence of layers does to a region.
struct Change {
    tavix::RunRegion removed; ///< Taken away first.
    tavix::RunRegion added;

    void FollowedBy(const Change &next) {
        removed.Unite(next.removed);
        added.Subtract(next.removed);
        added.Unite(next.added);
    }
};

Change ChangeOf(Layers layers) {
    Change change;
    if (layers.size() == 1) {
        const tavix::PolygonLayer &layer = layers.front();
        (layer.isSet ? change.added : change.removed) =
            tavix::FillPolygons({&layer.points, 1}, ALTERNATE, WORLD);
    } else if (!layers.empty()) {
        const std::size_t half = layers.size() / 2;
        change = ChangeOf(layers.first(half));
        change.FollowedBy(ChangeOf(layers.subspan(half)));
    }
    return change;
}

tavix::RunRegion CombinedAsTree(Layers layers) {
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
    for (const tavix::PolygonLayer &layer : layers)
        rows += layer.bounds.bottom - layer.bounds.top;
    return width <= widest && width * (area.bottom - area.top) <= pixelsPerRow * rows;
}

tavix::RunRegion Combined(Layers layers) {
    if (layers.empty())
        return {};
    RECT area = layers.front().bounds;
    for (const tavix::PolygonLayer &layer : layers)
        area = Around(area, layer.bounds);
    area = Common(area, WORLD);
    return IsBetterPainted(layers, area) ? Painted(layers, area) : CombinedAsTree(layers);
}

/// Hole outlines all turn the same way, so that the winding rule unites them.
tavix::RunRegion UnionOf(const CPointArrayArray &holes) {
    return tavix::FillPolygons(ContoursOf(holes), WINDING, WORLD);
}

/// Lists of points, made one after another in common memory.
class ListMaker {
public:
    /// Where to write a list of so many points.
    POINT *Begin(std::size_t size) {
        if (m_pool.Room() < size)
            m_pool.MakeRoom(size, 0, INT32_MAX);
        return m_pool.Next();
    }
    void End(std::size_t size) { m_blocks.push_back(m_pool.Take(size)); }

    void MoveTo(CPointArrayArray &lists) {
        lists.RemoveAll();
        lists.SetSize(0);
        if (!lists.Add(m_blocks))
            throw std::bad_alloc();
    }

private:
    TavixArray::detail::PointPool m_pool;
    std::vector<TavixArray::detail::PointBlock> m_blocks;
};

void ConvertOutlines(const CPointArrayArray &outlines, const tavix::ViewTransform &view,
                     CPointArrayArray &converted) {
    ListMaker maker;
    for (int i = 0; i < outlines.GetElementCount(); ++i) {
        const std::span<const POINT> outline = PointsOf(outlines[i]);
        POINT *const client = maker.Begin(outline.size() + 1);
        view.ImageToClient(outline, client);
        client[outline.size()] = client[0];
        maker.End(outline.size() + 1);
    }
    maker.MoveTo(converted);
}

} // namespace

void CRoiElementArray::Add(_stRoiElement element) {
    m_elements.push_back(std::move(element));
    const _stRoiElement &added = m_elements.back();
    Changed();
    if (!HasPoints(added))
        return;
    if (!std::exchange(m_isStarted, true))
        m_combined = PolygonOf(added.Points);
    else if (added.Method == _stRoiElement::ADD)
        m_combined.Unite(PolygonOf(added.Points));
    else if (added.Method == _stRoiElement::SUBTRACT)
        m_combined.Subtract(PolygonOf(added.Points));
}

void CRoiElementArray::Assign(std::vector<_stRoiElement> elements) {
    RemoveAll();
    m_elements = std::move(elements);
    const auto start = std::ranges::find_if(m_elements, HasPoints);
    m_isStarted = start != m_elements.end();
    m_combined = Combined(LayersOf({start, m_elements.end()}));
}

void CRoiElementArray::RemoveAll() {
    m_elements.clear();
    m_combined.Clear();
    m_isStarted = false;
    Changed();
}

void CRoiElementArray::Changed() {
    m_isTraced = false;
    m_isConverted = false;
}

void CRoiElementArray::Trace() const {
    if (m_isTraced)
        return;
    ListMaker outer;
    ListMaker holes;
    tavix::TraceOutlines(m_combined.Rects(), [&](std::span<const POINT> corners, bool isHole) {
        ListMaker &maker = isHole ? holes : outer;
        std::ranges::copy(corners, maker.Begin(corners.size()));
        maker.End(corners.size());
    });
    outer.MoveTo(m_outer);
    holes.MoveTo(m_holes);
    m_isTraced = true;
}

const CPointArrayArray &CRoiElementArray::OuterOutlines() const {
    Trace();
    return m_outer;
}

const CPointArrayArray &CRoiElementArray::HoleOutlines() const {
    Trace();
    return m_holes;
}

void CRoiElementArray::UpdateClientOutlines(const tavix::ViewTransform &view) {
    m_view = view;
    m_isConverted = false;
}

void CRoiElementArray::Convert() const {
    if (m_isConverted)
        return;
    ConvertOutlines(OuterOutlines(), m_view, m_clientOuter);
    ConvertOutlines(HoleOutlines(), m_view, m_clientHoles);
    m_isConverted = true;
}

const CPointArrayArray &CRoiElementArray::ClientOuterOutlines() const {
    Convert();
    return m_clientOuter;
}

const CPointArrayArray &CRoiElementArray::ClientHoleOutlines() const {
    Convert();
    return m_clientHoles;
}

// Holes lie inside.
CRect CRoiElementArray::ClientBounds() const {
    Convert();
    CRect bounds(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
    for (int i = 0; i < m_clientOuter.GetElementCount(); ++i) {
        const CRect outline = m_clientOuter[i].GetBounds();
        bounds = {std::min(bounds.left, outline.left), std::min(bounds.top, outline.top),
                  std::max(bounds.right, outline.right + 1),
                  std::max(bounds.bottom, outline.bottom + 1)};
    }
    return bounds.left < bounds.right ? bounds : CRect();
}

tavix::RunRegion CRoiElementArray::WithoutIslands() const {
    tavix::RunRegion region = m_combined;
    region.Subtract(UnionOf(HoleOutlines()));
    return region;
}

HRGN CRoiElementArray::CreateRegion() const {
    return m_combined.IsEmpty() ? nullptr : WithoutIslands().CreateRegion();
}

int CRoiElementArray::CreateRegions(CPtrArray &regions) const {
    const tavix::RunRegion holes = UnionOf(HoleOutlines());
    for (int i = 0; i < OuterOutlines().GetElementCount(); ++i) {
        tavix::RunRegion part = PolygonOf(OuterOutlines()[i]);
        part.Subtract(holes);
        if (!part.IsEmpty())
            regions.Add(part.CreateRegion());
    }
    return regions.GetSize();
}

double CRoiElementArray::PixelCount() const {
    return static_cast<double>(WithoutIslands().Area());
}
