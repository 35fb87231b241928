#include "TAVIX20/display/draw_measures.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/object_keys.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

using tavix::AREA_UNIT;
using tavix::FormatNumber;
using tavix::LENGTH_UNIT;
using tavix::ObjectCanvas;

namespace {

constexpr int CROSS_ARM = 5; ///< Client pixels; also half a bar.
constexpr double WHOLE_TURN = 360.0;

double FiniteOrZero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

std::int32_t RoundedPixel(double value) {
    constexpr double limit = 4e18; // Within the 64-bit range.
    return tavix::Saturate(std::llround(std::clamp(value, -limit, limit)));
}

std::string LengthText(double value) {
    return FormatNumber(value) + LENGTH_UNIT;
}

void DrawCross(ObjectCanvas &canvas, const QPointF &at, const tavix::Pen &pen) {
    canvas.Line(at - QPointF(CROSS_ARM, 0), at + QPointF(CROSS_ARM, 0), pen);
    canvas.Line(at - QPointF(0, CROSS_ARM), at + QPointF(0, CROSS_ARM), pen);
}

} // namespace

namespace tavix {

template <typename Shape>
void MeasureObj<Shape>::SetCalibration(double unitsPerPixel) {
    if (std::isfinite(unitsPerPixel) && unitsPerPixel > 0.0)
        m_calibration = unitsPerPixel;
    this->Changed();
}

template <typename Shape>
void MeasureObj<Shape>::SetTextColor(COLORREF colour) {
    m_textColour = colour;
    this->Changed();
}

template <typename Shape>
void MeasureObj<Shape>::ShowLabel(bool show) {
    m_labelled = show;
    this->Changed();
}

template <typename Shape>
void MeasureObj<Shape>::CopyShape(const CDrawObj &other) {
    Shape::CopyShape(other);
    if (const auto *measure = dynamic_cast<const MeasureObj *>(&other)) {
        m_calibration = measure->m_calibration;
        m_textColour = measure->m_textColour;
        m_labelled = measure->m_labelled;
    }
}

template <typename Shape>
int MeasureObj<Shape>::GetDrawMargin() const {
    const int shape = Shape::GetDrawMargin();
    return m_labelled ? shape + ObjectCanvas::TextMargin(GetLabel(), this->m_fontSize) : shape;
}

template <typename Shape>
void MeasureObj<Shape>::WriteKeys(KeyWriter &writer) const {
    Shape::WriteKeys(writer);
    writer.Colour("TEXT_COLOR", m_textColour);
    writer.Integer("FONT_SIZE", this->m_fontSize);
}

template <typename Shape>
void MeasureObj<Shape>::ReadKey(const KeyEntry &entry) {
    if (entry.key == "TEXT_COLOR")
        ReadColour(entry.value, m_textColour);
    else if (entry.key == "FONT_SIZE")
        ReadInteger(entry.value, this->m_fontSize);
    else
        Shape::ReadKey(entry);
}

template <typename Shape>
void MeasureObj<Shape>::DrawLabel(ObjectCanvas &canvas, const QPointF &position) const {
    if (m_labelled)
        canvas.Label(position, GetLabel(),
                     {this->GetFontFace(), this->m_fontSize, 0, m_textColour});
}

template class MeasureObj<CDrawObj>;
template class MeasureObj<SegmentObj>;
template class MeasureObj<PointListObj>;

} // namespace tavix

void CMeasurePointObj::Draw(ObjectCanvas &canvas) const {
    const QPointF centre = canvas.Centre(m_anchor, m_penWidth);
    DrawCross(canvas, centre, {m_colour, m_penWidth, m_penStyle});
    DrawLabel(canvas, centre);
}

int CMeasurePointObj::GetDrawMargin() const {
    return MeasureObj::GetDrawMargin() + CROSS_ARM;
}

std::string CMeasurePointObj::GetLabel() const {
    return FormatNumber(m_anchor.x) + ", " + FormatNumber(m_anchor.y);
}

void CMeasurePointObj::WriteKeys(tavix::KeyWriter &writer) const {
    writer.Text("SHAPE", "MEASURE_POINT");
    writer.Pair("POINT", m_anchor.x, m_anchor.y);
    WritePenKeys(writer);
    MeasureObj::WriteKeys(writer);
}

void CMeasurePointObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "POINT")
        tavix::ReadPoint(entry.value, m_anchor);
    else
        MeasureObj::ReadKey(entry);
}

CMeasureDistanceObj::CMeasureDistanceObj(const tagPOINT &start, const tagPOINT &end) {
    m_anchor = start;
    m_end = end;
}

void CMeasureDistanceObj::Draw(ObjectCanvas &canvas) const {
    const QPointF start = canvas.Centre(m_anchor, m_penWidth);
    const QPointF end = canvas.Centre(m_end, m_penWidth);
    canvas.Line(start, end, LinePen());
    if (m_penStyle != PS_NULL) {
        DrawTick(canvas, start, CROSS_ARM);
        DrawTick(canvas, end, CROSS_ARM);
    }
    DrawLabel(canvas, (start + end) / 2.0);
}

int CMeasureDistanceObj::GetDrawMargin() const {
    return MeasureObj::GetDrawMargin() + CROSS_ARM;
}

double CMeasureDistanceObj::GetDistance() const {
    return tavix::Distance(m_anchor, m_end) * m_calibration;
}

std::string CMeasureDistanceObj::GetLabel() const {
    return LengthText(GetDistance());
}

void CMeasureDistanceObj::WriteKeys(tavix::KeyWriter &writer) const {
    MeasureObj::WriteKeys(writer);
    writer.Number("DISTANCE", GetDistance(), LENGTH_UNIT);
}

CMeasureCycleObj::CMeasureCycleObj(const tagPOINTD &centre, double radius, double startAngle,
                                   double endAngle)
    : m_radius(std::max(0.0, FiniteOrZero(radius))),
      m_startAngle(FiniteOrZero(startAngle)),
      m_endAngle(FiniteOrZero(endAngle)) {
    SetCentre(FiniteOrZero(centre.x), FiniteOrZero(centre.y));
}

void CMeasureCycleObj::SetCentre(double x, double y) {
    m_centre = {x, y};
    m_anchor = {RoundedPixel(x), RoundedPixel(y)};
}

/// The arc's angle in degrees: the whole turn from 360 on.
double CMeasureCycleObj::Sweep() const {
    const double sweep = m_endAngle - m_startAngle;
    if (std::abs(sweep) >= WHOLE_TURN)
        return WHOLE_TURN;
    return sweep < 0.0 ? sweep + WHOLE_TURN : sweep;
}

void CMeasureCycleObj::Draw(ObjectCanvas &canvas) const {
    if (!IsValid())
        return;
    const tavix::Pen pen{m_colour, m_penWidth, m_penStyle};
    const QPointF middle = canvas.Position(m_centre.x, m_centre.y);
    const double radius = m_radius * canvas.Zoom();
    const bool whole = Sweep() >= WHOLE_TURN;
    std::vector<QPointF> &points = canvas.Points();
    tavix::AppendArc(points, middle, radius, radius, m_startAngle, m_startAngle + Sweep());
    canvas.Polyline(points, whole, pen);
    // The centre may lie between pixels.
    const double snap = (m_penWidth % 2) / 2.0;
    DrawCross(canvas, {std::floor(middle.x()) + snap, std::floor(middle.y()) + snap}, pen);
    DrawLabel(canvas, middle);
}

Qt::CursorShape CMeasureCycleObj::GetHandleCursor(int handle) const {
    return handle == 2 ? Qt::SizeHorCursor : CDrawObj::GetHandleCursor(handle);
}

CPoint CMeasureCycleObj::GetHandle(int index) const {
    if (index == 2)
        return {RoundedPixel(m_centre.x + m_radius), m_anchor.y};
    return CDrawObj::GetHandle(index);
}

void CMeasureCycleObj::MoveTo(const tagPOINT &point) {
    SetCentre(point.x, point.y);
    Changed();
}

void CMeasureCycleObj::Offset(const tagPOINT &delta) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    SetCentre(std::clamp(m_centre.x + delta.x, lowest, highest),
              std::clamp(m_centre.y + delta.y, lowest, highest));
    Changed();
}

void CMeasureCycleObj::MoveHandleTo(int handle, const tagPOINT &point) {
    if (handle == 1) {
        MoveTo(point);
    } else if (handle == 2) {
        m_radius = std::hypot(point.x - m_centre.x, point.y - m_centre.y);
        Changed();
    }
}

bool CMeasureCycleObj::HitTest(const tagPOINT &point) const {
    const double distance = std::hypot(point.x - m_centre.x, point.y - m_centre.y);
    return std::abs(distance - m_radius) <= HIT_RADIUS || CDrawObj::HitTest(point);
}

CRect CMeasureCycleObj::GetBoundRect() const {
    return {RoundedPixel(std::floor(m_centre.x - m_radius)),
            RoundedPixel(std::floor(m_centre.y - m_radius)),
            RoundedPixel(std::ceil(m_centre.x + m_radius)),
            RoundedPixel(std::ceil(m_centre.y + m_radius))};
}

void CMeasureCycleObj::CopyShape(const CDrawObj &other) {
    MeasureObj::CopyShape(other);
    if (const auto *cycle = dynamic_cast<const CMeasureCycleObj *>(&other)) {
        m_centre = cycle->m_centre;
        m_radius = cycle->m_radius;
        m_startAngle = cycle->m_startAngle;
        m_endAngle = cycle->m_endAngle;
    }
}

int CMeasureCycleObj::GetDrawMargin() const {
    return MeasureObj::GetDrawMargin() + CROSS_ARM;
}

std::string CMeasureCycleObj::GetLabel() const {
    return "D " + LengthText(2.0 * GetRadius());
}

double CMeasureCycleObj::GetLength() const {
    return 2.0 * std::numbers::pi * GetRadius() * (Sweep() / WHOLE_TURN);
}

double CMeasureCycleObj::GetArea() const {
    return std::numbers::pi * GetRadius() * GetRadius() * (Sweep() / WHOLE_TURN);
}

void CMeasureCycleObj::WriteKeys(tavix::KeyWriter &writer) const {
    writer.Text("SHAPE", "MEASURE_CYCLE");
    writer.Pair("CENTER", m_centre.x, m_centre.y);
    writer.Number("DIAMETER", 2.0 * GetRadius(), LENGTH_UNIT);
    writer.Number("RADIUS", GetRadius(), LENGTH_UNIT);
    writer.Number("START Angle", m_startAngle);
    writer.Number("END Angle", m_endAngle);
    WritePenKeys(writer);
    MeasureObj::WriteKeys(writer);
    writer.Number("LENGTH", GetLength(), LENGTH_UNIT);
    writer.Number("AREA", GetArea(), AREA_UNIT);
}

void CMeasureCycleObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "CENTER") {
        tagPOINTD centre{};
        if (tavix::ReadPair(entry.value, centre.x, centre.y))
            SetCentre(centre.x, centre.y);
    } else if (entry.key == "DIAMETER" || entry.key == "RADIUS") {
        double length = 0.0;
        if (tavix::ReadNumber(entry.value, length, LENGTH_UNIT) && length >= 0.0)
            m_radius = length / m_calibration / (entry.key == "DIAMETER" ? 2.0 : 1.0);
    } else if (entry.key == "START Angle") {
        tavix::ReadNumber(entry.value, m_startAngle);
    } else if (entry.key == "END Angle") {
        tavix::ReadNumber(entry.value, m_endAngle);
    } else {
        MeasureObj::ReadKey(entry);
    }
}

void CMeasurePolylineObj::Draw(ObjectCanvas &canvas) const {
    const std::span<const QPointF> points = ClientPoints(canvas, m_penWidth);
    if (points.empty())
        return;
    const QPointF last = points.back();
    canvas.Polyline(points, false, LinePen());
    DrawLabel(canvas, last);
}

std::string CMeasurePolylineObj::GetLabel() const {
    return LengthText(PointListObj::Length() * m_calibration);
}

void CMeasurePolylineObj::WriteKeys(tavix::KeyWriter &writer) const {
    MeasureObj::WriteKeys(writer);
    writer.Number("LENGTH", PointListObj::Length() * m_calibration, LENGTH_UNIT);
}

void CMeasurePolygonObj::Draw(ObjectCanvas &canvas) const {
    const std::span<const QPointF> points = ClientPoints(canvas, m_penWidth);
    if (points.empty())
        return;
    QPointF middle;
    for (const QPointF &point : points)
        middle += point / static_cast<double>(points.size());
    canvas.Polyline(points, true, LinePen());
    DrawLabel(canvas, middle);
}

double CMeasurePolygonObj::GetArea() const {
    const std::span<const tagPOINT> points = GetPoints();
    double twice = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const tagPOINT &a = points[i];
        const tagPOINT &b = points[i + 1 < points.size() ? i + 1 : 0];
        // From the first point, so that far away polygons lose no digits.
        twice += (static_cast<double>(a.x) - m_anchor.x) * (static_cast<double>(b.y) - m_anchor.y) -
                 (static_cast<double>(b.x) - m_anchor.x) * (static_cast<double>(a.y) - m_anchor.y);
    }
    return std::abs(twice) / 2.0 * m_calibration * m_calibration;
}

std::string CMeasurePolygonObj::GetLabel() const {
    return FormatNumber(GetArea()) + AREA_UNIT;
}

void CMeasurePolygonObj::WriteKeys(tavix::KeyWriter &writer) const {
    MeasureObj::WriteKeys(writer);
    writer.Number("LENGTH", PointListObj::Length() * m_calibration, LENGTH_UNIT);
    writer.Number("AREA", GetArea(), AREA_UNIT);
}
