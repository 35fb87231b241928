// CPointArray as the pixels of a blob: outlines, border, holes and shape measures. Parts are
// 4-connected, as in blob analysis, and so holes are 8-connected.

#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/containers/pixel_set.h"
#include "TAVIX20/containers/plane_geometry.h"
#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/containers/region_rects.h"
#include "TAVIX20/containers/shape_measures.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace TavixArray {

namespace {

using tavix::Outline;

std::vector<Outline> OutlinesOf(HRGN region) {
    const tavix::RegionRects rects(region);
    return tavix::TraceOutlines(rects.Get());
}

/// The outer outline of the largest part, by the area it encloses; nothing for an empty set.
std::optional<Outline> LargestPart(std::span<const tagPOINT> points) {
    std::optional<Outline> largest;
    for (Outline &outline : tavix::TraceOutlines(tavix::PixelSet(points).Runs()))
        if (!outline.isHole &&
            (!largest || tavix::EnclosedArea(outline) > tavix::EnclosedArea(*largest)))
            largest = std::move(outline);
    return largest;
}

/// Replaces border by the pixels along the outline; returns their number.
int TakeBorder(const Outline &outline, CPointArray &border) {
    CPointArray pixels;
    tavix::WalkBorderPixels(outline, [&pixels](POINT pixel) { pixels.Add(pixel); });
    const int count = pixels.GetElementCount();
    if (count > 1 && pixels[0] == pixels[count - 1])
        pixels.Remove(count - 1);
    border = std::move(pixels);
    return border.GetElementCount();
}

void AddRuns(std::span<const RECT> runs, CPointArray &points) {
    for (const RECT &run : runs)
        for (LONG x = run.left; x < run.right; ++x)
            points.Add(tagPOINT{x, run.top});
}

/// Direction from one point to the other in degrees, 0 <= result < 180.
double AxisAngle(const POINT &from, const POINT &to) {
    return std::fmod(tavix::Direction(from.x, from.y, to.x, to.y), 180.0);
}

} // namespace

void CPointArray::Add(HRGN region) {
    const std::vector<POINT> polygon = tavix::JoinOutlines(OutlinesOf(region));
    AppendAll(polygon.data(), static_cast<std::int32_t>(polygon.size()));
}

int CPointArray::TraceBorder(CPointArray &border) const {
    const auto outlines = tavix::TraceOutlines(tavix::PixelSet({begin(), end()}).Runs());
    return outlines.empty() ? 0 : TakeBorder(outlines.front(), border);
}

int CPointArray::GetTraceBorderPoint(int x, int y, CPointArray &border) const {
    const tavix::PixelSet pixels({begin(), end()});
    if (!pixels.Contains(x, y))
        return 0;
    // The part's own outline is the smallest one around the pixel: a part inside a hole of another
    // lies inside both outlines.
    const Outline *innermost = nullptr;
    const auto outlines = tavix::TraceOutlines(pixels.Runs());
    for (const Outline &outline : outlines)
        if (!outline.isHole &&
            PtInPolygon(outline.corners.data(), static_cast<int>(outline.corners.size()), x, y) &&
            (!innermost || tavix::EnclosedArea(outline) < tavix::EnclosedArea(*innermost)))
            innermost = &outline;
    return innermost ? TakeBorder(*innermost, border) : 0;
}

int CPointArray::FillInsidePoints() {
    const auto holes = tavix::PixelSet({begin(), end()}).Holes();
    std::int64_t missing = 0;
    for (const auto &hole : holes)
        missing += tavix::AreaOf(hole);
    if (m_count + missing > INT32_MAX)
        return 0;
    const int before = m_count;
    for (const auto &hole : holes)
        AddRuns(hole, *this);
    return m_count - before;
}

int CPointArray::GetHoleArray(CPointArrayArray &holes) const {
    CPointArrayArray found;
    for (const auto &hole : tavix::PixelSet({begin(), end()}).Holes()) {
        if (tavix::AreaOf(hole) > INT32_MAX)
            return 0;
        CPointArray pixels;
        AddRuns(hole, pixels);
        found.Add(pixels);
    }
    holes = std::move(found);
    return holes.GetElementCount();
}

double CPointArray::GetRoundness() const {
    const auto part = LargestPart({begin(), end()});
    if (!part)
        return 0.0;
    const double perimeter = tavix::Perimeter(*part);
    const double area = tavix::EnclosedArea(*part);
    return std::min(1.0, std::sqrt(4 * std::numbers::pi * area) / perimeter);
}

double CPointArray::GetRoundness2() const {
    const auto part = LargestPart({begin(), end()});
    if (!part)
        return 0.0;
    const double diameter = tavix::MeasureFeret(part->corners).largest;
    return std::sqrt(4 * tavix::EnclosedArea(*part) / std::numbers::pi) / diameter;
}

int CPointArray::GetDiameterInfo(_stDiameterInfo &info) const {
    std::vector<POINT> corners;
    for (const Outline &outline : tavix::TraceOutlines(tavix::PixelSet({begin(), end()}).Runs()))
        if (!outline.isHole)
            corners.insert(corners.end(), outline.corners.begin(), outline.corners.end());
    if (corners.empty())
        return 0;
    const tavix::FeretDiameters feret = tavix::MeasureFeret(std::move(corners));
    info.maxDiameter = feret.largest;
    info.maxAngle = AxisAngle(feret.first, feret.second);
    info.maxPoint1 = feret.first;
    info.maxPoint2 = feret.second;
    info.minDiameter = feret.smallest;
    info.minAngle = std::fmod(AxisAngle(feret.edgeStart, feret.edgeEnd) + 90.0, 180.0);
    return 1;
}

void CPointArrayArray::Add(HRGN region) {
    for (const Outline &outline : OutlinesOf(region))
        Add(CPointArray(outline.corners.data(), static_cast<int>(outline.corners.size())));
}

} // namespace TavixArray
