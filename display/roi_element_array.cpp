// Strokes are combined one by one as they are drawn. A whole list is combined as a tree: a sequence
// of strokes takes some pixels away and then adds some, and two such changes in a row are one
// again, so that small strokes meet small ones before they meet the whole region. Workers share a
// list.

#include "TAVIX20/display/roi_element_array.h"

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/display/view_transform.h"
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

/// What a sequence of elements does to a region.
struct Change {
    tavix::RunRegion removed; ///< Taken away first.
    tavix::RunRegion added;

    void FollowedBy(const Change &next) {
        removed.Unite(next.removed);
        added.Subtract(next.removed);
        added.Unite(next.added);
    }
};

Change ChangeOf(const _stRoiElement &element) {
    Change change;
    if (element.Method == _stRoiElement::ADD)
        change.added = PolygonOf(element.Points);
    else if (element.Method == _stRoiElement::SUBTRACT)
        change.removed = PolygonOf(element.Points);
    return change;
}

Change ChangeOf(std::span<const _stRoiElement> elements) {
    if (elements.empty())
        return {};
    if (elements.size() == 1)
        return ChangeOf(elements.front());
    const std::size_t half = elements.size() / 2;
    Change change = ChangeOf(elements.first(half));
    change.FollowedBy(ChangeOf(elements.subspan(half)));
    return change;
}

tavix::WorkerPool pool(CStdlib::GetNumOfProcessors());

/// ChangeOf with a slice for each worker.
Change ChangeOfAll(std::span<const _stRoiElement> elements) {
    std::vector<Change> changes(static_cast<std::size_t>(pool.GetWorkerCount()));
    std::atomic<bool> isOutOfMemory = false;
    pool.Run(static_cast<int>(elements.size()), [&](const tavix::WorkerPool::Slice &slice) {
        try {
            const auto first = static_cast<std::size_t>(slice.first);
            const auto end = static_cast<std::size_t>(slice.end);
            changes[static_cast<std::size_t>(slice.worker)] =
                ChangeOf(elements.subspan(first, end - first));
        } catch (const std::bad_alloc &) {
            isOutOfMemory = true;
        }
    });
    if (isOutOfMemory)
        throw std::bad_alloc();
    for (std::size_t i = 1; i < changes.size(); ++i)
        changes.front().FollowedBy(changes[i]);
    return std::move(changes.front());
}

bool HasPoints(const _stRoiElement &element) {
    return element.Points.GetElementCount() > 0;
}

/// Hole outlines all turn the same way, so that the winding rule unites them.
tavix::RunRegion UnionOf(const CPointArrayArray &holes) {
    return tavix::FillPolygons(ContoursOf(holes), WINDING, WORLD);
}

void ConvertOutlines(const CPointArrayArray &outlines, const tavix::ViewTransform &view,
                     CPointArrayArray &converted) {
    converted.RemoveAll();
    std::vector<POINT> client;
    for (int i = 0; i < outlines.GetElementCount(); ++i) {
        client.clear();
        for (const POINT &point : PointsOf(outlines[i]))
            client.push_back(view.ImageToClient(point));
        client.push_back(client.front());
        converted.Add(CPointArray(std::span<const POINT>(client)));
    }
}

} // namespace

void CRoiElementArray::Add(_stRoiElement element) {
    m_elements.push_back(std::move(element));
    Combine(m_elements.size() - 1);
}

void CRoiElementArray::Assign(std::vector<_stRoiElement> elements) {
    RemoveAll();
    m_elements = std::move(elements);
    Combine(0);
}

void CRoiElementArray::RemoveAll() {
    m_elements.clear();
    m_combined.Clear();
    m_isStarted = false;
    m_isTraced = false;
}

void CRoiElementArray::Combine(std::size_t first) {
    std::span<const _stRoiElement> elements = std::span(m_elements).subspan(first);
    m_isTraced = false;
    if (!m_isStarted) {
        const auto start = std::ranges::find_if(elements, HasPoints);
        if (start == elements.end())
            return;
        m_combined = PolygonOf(start->Points);
        m_isStarted = true;
        elements = {start + 1, elements.end()};
    }
    const Change change = elements.size() > 1 ? ChangeOfAll(elements) : ChangeOf(elements);
    m_combined.Subtract(change.removed);
    m_combined.Unite(change.added);
}

void CRoiElementArray::Trace() const {
    if (m_isTraced)
        return;
    m_outer.RemoveAll();
    m_holes.RemoveAll();
    for (const tavix::Outline &outline : tavix::TraceOutlines(m_combined.Rects()))
        (outline.isHole ? m_holes : m_outer)
            .Add(CPointArray(std::span<const POINT>(outline.corners)));
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
    ConvertOutlines(OuterOutlines(), view, m_clientOuter);
    ConvertOutlines(HoleOutlines(), view, m_clientHoles);
}

// Holes lie inside.
CRect CRoiElementArray::ClientBounds() const {
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
