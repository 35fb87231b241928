// The lines and polygons of ObjectCanvas.

#include "TAVIX20/display/object_canvas.h"

#include <QBrush>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavix {

namespace {

/// Lines and polygons are cut to this before QPainter sees them: far outside every screen, and
/// within what its rasteriser takes.
constexpr double REACH_LOW = -20000.0;
constexpr double REACH_HIGH = 60000.0;
/// All dash patterns repeat after this many pen widths.
constexpr double DASH_PERIOD = 36.0;

Qt::PenStyle ToQtStyle(int style) {
    switch (style) {
    case PS_DASH:
        return Qt::DashLine;
    case PS_DOT:
        return Qt::DotLine;
    case PS_DASHDOT:
        return Qt::DashDotLine;
    case PS_DASHDOTDOT:
        return Qt::DashDotDotLine;
    default:
        return Qt::SolidLine;
    }
}

Qt::BrushStyle ToQtHatch(int hatch) {
    switch (hatch) {
    case HATCH_HORIZONTAL:
        return Qt::HorPattern;
    case HATCH_VERTICAL:
        return Qt::VerPattern;
    case HATCH_FORWARD_DIAGONAL:
        return Qt::FDiagPattern;
    case HATCH_CROSS:
        return Qt::CrossPattern;
    case HATCH_DIAGONAL_CROSS:
        return Qt::DiagCrossPattern;
    default:
        return Qt::BDiagPattern;
    }
}

/// The part of a segment within reach, as two fractions of its way.
struct Part {
    double begin = 0.0;
    double end = 1.0;

    /// Cuts along one axis; Liang and Barsky's method.
    void Cut(double from, double to) {
        if (from == to) {
            if (from < REACH_LOW || from > REACH_HIGH)
                end = -1.0;
            return;
        }
        const auto [first, last] =
            std::minmax({(REACH_LOW - from) / (to - from), (REACH_HIGH - from) / (to - from)});
        begin = std::max(begin, first);
        end = std::min(end, last);
    }
};

/// Keeps the part of the closed polygon on one side of a line across an axis; Sutherland and
/// Hodgman's method, which keeps winding numbers.
template <typename Coordinate>
void CutSide(const std::vector<QPointF> &from, std::vector<QPointF> &to, double limit, double side,
             Coordinate coordinate) {
    to.clear();
    for (std::size_t i = 0; i < from.size(); ++i) {
        const QPointF &a = from[i];
        const QPointF &b = from[i + 1 < from.size() ? i + 1 : 0];
        const double insideA = side * (coordinate(a) - limit);
        const double insideB = side * (coordinate(b) - limit);
        if (insideA >= 0)
            to.push_back(a);
        if ((insideA < 0) != (insideB < 0))
            to.push_back(a + (b - a) * (insideA / (insideA - insideB)));
    }
}

} // namespace

QRgb ToQRgb(COLORREF colour) {
    return qRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

QColor ToQColor(COLORREF colour) {
    return ToQRgb(colour);
}

bool IsReachable(const QPointF &point) {
    return point.x() >= REACH_LOW && point.x() <= REACH_HIGH && point.y() >= REACH_LOW &&
           point.y() <= REACH_HIGH;
}

void ObjectCanvas::Line(const QPointF &from, const QPointF &to, const Pen &pen) {
    const QPointF ends[] = {from, to};
    Polyline(ends, false, pen);
}

void ObjectCanvas::Polyline(std::span<const QPointF> points, bool closed, const Pen &pen) {
    if (points.empty() || pen.style == PS_NULL)
        return;
    const int width = std::min(pen.width, Pen::MAX_WIDTH);
    const QRectF visible = QRectF(m_clip).adjusted(-width, -width, width, width);
    const std::size_t count = points.size();
    const bool joined = closed && count > 2;
    const bool solid = pen.style == PS_SOLID;
    if (count <= 2 &&
        (count == 1 || points[0].x() == points[1].x() || points[0].y() == points[1].y())) {
        const QRectF line = QRectF(points[0], points[count - 1]).normalized();
        if (solid || line.isNull()) {
            const double half = width / 2.0;
            const QRectF block = line.adjusted(-half, -half, half, half);
            const auto pixel = [](double edge) {
                return static_cast<int>(std::clamp(std::floor(edge), -1e9, 1e9));
            };
            Fill({QPoint(pixel(block.left()), pixel(block.top())),
                  QPoint(pixel(block.right()) - 1, pixel(block.bottom()) - 1)},
                 pen.colour);
            return;
        }
    }

    Flush();
    // A thick closed line runs over its first corner, so that this corner is a join like all
    // others.
    const bool overlaps = joined && solid && width > 1;
    const Qt::PenCapStyle cap = overlaps || !solid ? Qt::FlatCap : Qt::SquareCap;
    const std::size_t segments = joined ? count + (overlaps ? 1 : 0) : count - 1;
    std::vector<QPointF> &run = m_storage.run;
    run.clear();
    double phase = 0.0;    // In pen widths, as QPen counts it.
    double runPhase = 0.0; // At the first point of the run.
    for (std::size_t i = 0; i < segments; ++i) {
        const QPointF &from = points[i % count];
        const QPointF &to = points[(i + 1) % count];
        const double length = std::hypot(to.x() - from.x(), to.y() - from.y()) / width;
        const double here = phase;
        phase += length;
        const bool seen = std::max(from.x(), to.x()) >= visible.left() &&
                          std::min(from.x(), to.x()) <= visible.right() &&
                          std::max(from.y(), to.y()) >= visible.top() &&
                          std::min(from.y(), to.y()) <= visible.bottom();
        Part part;
        if (!IsReachable(from) || !IsReachable(to)) {
            part.Cut(from.x(), to.x());
            part.Cut(from.y(), to.y());
        }
        if (!seen || part.begin > part.end) {
            StrokeRun(pen, cap, runPhase);
            continue;
        }
        if (part.begin > 0.0)
            StrokeRun(pen, cap, runPhase);
        if (run.empty()) {
            run.push_back(from + (to - from) * part.begin);
            runPhase = here + length * part.begin;
        }
        const QPointF end = part.end < 1.0 ? from + (to - from) * part.end : to;
        if (end != run.back())
            run.push_back(end);
        if (part.end < 1.0)
            StrokeRun(pen, cap, runPhase);
    }
    StrokeRun(pen, cap, runPhase);
}

/// Collects the pixels of a line one pixel wide: along its longer axis one each, the nearest to it
/// on the other. QPainter's own may lie one beside, and then leave holes between a polygon's inside
/// and its outline.
void ObjectCanvas::ThinLine(const QPointF &from, const QPointF &to, COLORREF colour) {
    const auto pixel = [](double position) {
        // What an enormous zoom has left, which may be no number, is far away.
        return static_cast<std::int64_t>(std::floor(std::fmax(-1e9, std::fmin(position, 1e9))));
    };
    std::int64_t start = pixel(from.x());
    std::int64_t end = pixel(to.x());
    std::int64_t sideStart = pixel(from.y());
    std::int64_t sideEnd = pixel(to.y());
    const bool steep = std::abs(sideEnd - sideStart) > std::abs(end - start);
    if (steep) {
        std::swap(start, sideStart);
        std::swap(end, sideEnd);
    }
    if (start > end) {
        std::swap(start, end);
        std::swap(sideStart, sideEnd);
    }
    const std::int64_t length = std::max<std::int64_t>(1, end - start);
    const std::int64_t first = std::max<std::int64_t>(start, steep ? m_clip.top() : m_clip.left());
    const std::int64_t last = std::min<std::int64_t>(end, steep ? m_clip.bottom() : m_clip.right());
    // The other coordinate is floor(sum / whole), which rounds to nearest.
    const std::int64_t whole = 2 * length;
    const std::int64_t rise = 2 * (sideEnd - sideStart);
    const std::int64_t sum = (first - start) * rise + length;
    std::int64_t side = sideStart + sum / whole;
    std::int64_t rest = sum % whole;
    std::vector<QPoint> &pixels = m_storage.pixels;
    for (std::int64_t i = first; i <= last; ++i) {
        if (rest >= whole) {
            rest -= whole;
            ++side;
        } else if (rest < 0) {
            rest += whole;
            --side;
        }
        pixels.emplace_back(static_cast<int>(steep ? side : i), static_cast<int>(steep ? i : side));
        rest += rise;
    }
    if (pixels.size() >= CanvasStorage::MAX_BATCH)
        DrawPixels(colour);
}

/// Draws what ThinLine has collected.
void ObjectCanvas::DrawPixels(COLORREF colour) {
    std::vector<QPoint> &pixels = m_storage.pixels;
    if (m_plain) {
        for (const QPoint &pixel : pixels)
            m_plain->Set(pixel, ToQRgb(colour));
    } else {
        m_painter.setPen(ToQColor(colour));
        m_painter.drawPoints(pixels.data(), static_cast<int>(pixels.size()));
    }
    pixels.clear();
}

/// Draws the collected part of a polyline and forgets it.
void ObjectCanvas::StrokeRun(const Pen &pen, Qt::PenCapStyle cap, double phase) {
    std::vector<QPointF> &run = m_storage.run;
    if (run.size() == 1)
        run.push_back(run.front());
    if (!run.empty() && pen.style == PS_SOLID && pen.width <= 1) {
        for (std::size_t i = 1; i < run.size(); ++i)
            ThinLine(run[i - 1], run[i], pen.colour);
        DrawPixels(pen.colour);
    } else if (!run.empty()) {
        QPen line(ToQColor(pen.colour), std::min(pen.width, Pen::MAX_WIDTH), ToQtStyle(pen.style),
                  run.front() == run.back() && run.size() == 2 ? Qt::SquareCap : cap,
                  Qt::RoundJoin);
        if (pen.style != PS_SOLID)
            line.setDashOffset(std::fmod(phase, DASH_PERIOD));
        m_painter.setPen(line);
        m_painter.drawPolyline(run.data(), static_cast<int>(run.size()));
    }
    run.clear();
}

void ObjectCanvas::FillInside(std::span<const QPointF> points, const QBrush &brush) {
    if (points.size() < 3)
        return;
    Flush();
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(brush);
    if (!std::all_of(points.begin(), points.end(), IsReachable)) {
        std::vector<QPointF> &clipped = m_storage.clipped;
        std::vector<QPointF> &cutting = m_storage.cutting;
        const auto x = [](const QPointF &point) { return point.x(); };
        const auto y = [](const QPointF &point) { return point.y(); };
        clipped.assign(points.begin(), points.end());
        CutSide(clipped, cutting, REACH_LOW, 1.0, x);
        CutSide(cutting, clipped, REACH_HIGH, -1.0, x);
        CutSide(clipped, cutting, REACH_LOW, 1.0, y);
        CutSide(cutting, clipped, REACH_HIGH, -1.0, y);
        points = clipped;
    }
    m_painter.drawPolygon(points.data(), static_cast<int>(points.size()), Qt::WindingFill);
}

void ObjectCanvas::FillPolygon(std::span<const QPointF> points, COLORREF colour) {
    FillInside(points, ToQColor(colour));
    Polyline(points, true, {colour, 1, PS_SOLID});
}

void ObjectCanvas::HatchPolygon(std::span<const QPointF> points, int hatch, COLORREF colour) {
    m_painter.setBrushOrigin(QPointF(m_left, m_top));
    FillInside(points, QBrush(ToQColor(colour), ToQtHatch(hatch)));
    m_painter.setBrushOrigin(0, 0);
}

} // namespace tavix
