#include "TAVIX20/display/roi_element_array.h"

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/display/view_transform.h"

#include <algorithm>
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
    Combine(element);
    m_elements.push_back(std::move(element));
    m_isTraced = false;
}

void CRoiElementArray::Assign(std::vector<_stRoiElement> elements) {
    RemoveAll();
    m_elements = std::move(elements);
    for (const _stRoiElement &element : m_elements)
        Combine(element);
    m_isTraced = false;
}

void CRoiElementArray::RemoveAll() {
    m_elements.clear();
    m_combined.Clear();
    m_isStarted = false;
    m_isTraced = false;
}

void CRoiElementArray::Combine(const _stRoiElement &element) {
    if (element.Points.GetElementCount() <= 0)
        return;
    if (!m_isStarted)
        m_combined = PolygonOf(element.Points);
    else if (element.Method == _stRoiElement::ADD)
        m_combined.Unite(PolygonOf(element.Points));
    else if (element.Method == _stRoiElement::SUBTRACT)
        m_combined.Subtract(PolygonOf(element.Points));
    m_isStarted = true;
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
