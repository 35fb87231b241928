#include "TAVIX20/display/roi_element_array.h"

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/display/roi_combination.h"

#include <algorithm>
#include <climits>
#include <new>
#include <utility>

namespace {

using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

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
    return tavix::FillPolygons({&polygon, 1}, ALTERNATE, tavix::ROI_WORLD);
}

bool HasPoints(const _stRoiElement &element) {
    return element.Points.GetElementCount() > 0;
}

/// Hole outlines all turn the same way, so that the winding rule unites them.
tavix::RunRegion UnionOf(const CPointArrayArray &holes) {
    return tavix::FillPolygons(ContoursOf(holes), WINDING, tavix::ROI_WORLD);
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
    m_combined = tavix::CombineRoiElements({start, m_elements.end()});
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
