#include "TAVIX20/display/object_canvas.h"

#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/platform/dib_painter.h"

#include <QBrush>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavix {

namespace {

constexpr double POINTS_TO_PIXELS = 96.0 / 72.0;
constexpr int MAX_FONT_SIZE = 1000;
constexpr int LABEL_DISTANCE = 6;
constexpr int LABEL_PADDING = 2;
/// The columns of an ellipse in the rows of its box.
class EllipseRows {
public:
    explicit EllipseRows(const QRect &box)
        : m_halfWidth(box.width() / 2.0),
          m_halfHeight(box.height() / 2.0),
          m_x(box.x() + m_halfWidth),
          m_y(box.y() + m_halfHeight) {}

    /// First and last column in row y: those whose centres lie inside, or the middle of a thin end.
    /// The first is behind the last outside the ellipse.
    std::pair<int, int> At(int y) const {
        const double height = (y + 0.5 - m_y) / m_halfHeight;
        if (!(std::abs(height) < 1.0))
            return {1, 0};
        const double half = m_halfWidth * std::sqrt(1.0 - height * height);
        const double first = std::min(std::ceil(m_x - half - 0.5), std::floor(m_x - 0.5));
        const double last = std::max(std::floor(m_x + half - 0.5), std::ceil(m_x - 0.5));
        return {static_cast<int>(first), static_cast<int>(last)};
    }

private:
    double m_halfWidth;
    double m_halfHeight;
    double m_x;
    double m_y;
};

QRect Shrunk(const QRect &box, int by) {
    return box.adjusted(by, by, -by, -by);
}

int PixelSize(int points) {
    return std::max(
        1, static_cast<int>(std::lround(std::clamp(points, 1, MAX_FONT_SIZE) * POINTS_TO_PIXELS)));
}

QString Shown(const std::string &text) {
    return QString::fromLocal8Bit(
        text.data(), static_cast<qsizetype>(std::min(text.size(), ObjectCanvas::MAX_TEXT)));
}

} // namespace

ObjectCanvas::ObjectCanvas(QPainter &painter, const ViewTransform &view, const QRect &clip,
                           CanvasStorage &storage)
    : m_painter(painter),
      m_plain(PlainFiller::Under(painter)),
      m_storage(storage),
      m_clip(clip),
      m_zoom(view.Zoom()),
      m_left(static_cast<double>(view.Origin().x) - view.Scroll().x),
      m_top(static_cast<double>(view.Origin().y) - view.Scroll().y) {}

ObjectCanvas::~ObjectCanvas() {
    Flush();
}

QRect ObjectCanvas::Block(std::int64_t left, std::int64_t top, std::int64_t right,
                          std::int64_t bottom) const {
    const int x1 = FirstTargetPixel(m_left, m_zoom, Saturate(left));
    const int y1 = FirstTargetPixel(m_top, m_zoom, Saturate(top));
    const int x2 = FirstTargetPixel(m_left, m_zoom, Saturate(right));
    const int y2 = FirstTargetPixel(m_top, m_zoom, Saturate(bottom));
    // Far below one client pixel per image pixel a small rectangle would vanish.
    return {x1, y1, std::max(1, x2 - x1), std::max(1, y2 - y1)};
}

QPointF ObjectCanvas::Centre(const tagPOINT &pixel, int penWidth) const {
    const auto along = [this, penWidth](double start, double i) {
        double first = std::floor(start + (i + 0.5) * m_zoom);
        double next = first + 1.0;
        if (m_zoom > 1.0) { // Otherwise the block is this pixel, or none.
            first = std::ceil(start + i * m_zoom - 0.5);
            next = std::ceil(start + (i + 1.0) * m_zoom - 0.5);
        }
        return std::floor((first + next - penWidth) / 2.0) + penWidth / 2.0;
    };
    return {along(m_left, pixel.x), along(m_top, pixel.y)};
}

QPointF ObjectCanvas::Position(double x, double y) const {
    return {m_left + (x + 0.5) * m_zoom, m_top + (y + 0.5) * m_zoom};
}

std::vector<QPointF> &ObjectCanvas::Points() {
    m_storage.points.clear();
    return m_storage.points;
}

void ObjectCanvas::Fill(const QRect &pixels, COLORREF colour) {
    if (m_plain) {
        m_plain->Fill(pixels, ToQRgb(colour));
        return;
    }
    std::vector<QRect> &fills = m_storage.fills;
    if (colour != m_fillColour || fills.size() >= CanvasStorage::MAX_BATCH) {
        Flush();
        m_fillColour = colour;
    }
    fills.push_back(pixels);
}

/// Draws what Fill has collected.
void ObjectCanvas::Flush() {
    std::vector<QRect> &fills = m_storage.fills;
    if (fills.empty())
        return;
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(ToQColor(m_fillColour));
    m_painter.drawRects(fills.data(), static_cast<int>(fills.size()));
    fills.clear();
}

void ObjectCanvas::Frame(const QRect &outer, const Pen &pen) {
    if (pen.style == PS_NULL)
        return;
    const int width = std::min(pen.width, Pen::MAX_WIDTH);
    if (pen.style != PS_SOLID) {
        const double before = width / 2.0;
        const QRectF line = QRectF(outer).adjusted(before, before, -before, -before);
        const QPointF corners[] = {line.topLeft(), line.topRight(), line.bottomRight(),
                                   line.bottomLeft()};
        Polyline(corners, true, pen);
        return;
    }
    const QRect inner = Shrunk(outer, width);
    if (inner.width() <= 0 || inner.height() <= 0) {
        Fill(outer, pen.colour);
        return;
    }
    Fill({outer.x(), outer.y(), outer.width(), width}, pen.colour);
    Fill({outer.x(), inner.bottom() + 1, outer.width(), width}, pen.colour);
    Fill({outer.x(), inner.y(), width, inner.height()}, pen.colour);
    Fill({inner.right() + 1, inner.y(), width, inner.height()}, pen.colour);
}

/// The columns left to right of a row, both included.
void ObjectCanvas::FillRow(int y, int left, int right, COLORREF colour) {
    if (left <= right && left <= m_clip.right() && right >= m_clip.left())
        Fill({left, y, right - left + 1, 1}, colour);
}

void ObjectCanvas::FillEllipse(const QRect &box, COLORREF colour) {
    const EllipseRows rows(box);
    const int last = std::min(box.bottom(), m_clip.bottom());
    for (int y = std::max(box.top(), m_clip.top()); y <= last; ++y) {
        const auto [left, right] = rows.At(y);
        FillRow(y, left, right, colour);
    }
}

void ObjectCanvas::Ellipse(const QRect &box, const Pen &pen) {
    if (pen.style == PS_NULL)
        return;
    const int width = std::min(pen.width, Pen::MAX_WIDTH);
    if (pen.style != PS_SOLID) {
        const QPointF middle = QRectF(box).center();
        const double halfWidth = std::max(0.0, (box.width() - width) / 2.0);
        const double halfHeight = std::max(0.0, (box.height() - width) / 2.0);
        std::vector<QPointF> &points = Points();
        AppendArc(points, middle, halfWidth, halfHeight, 0.0, 360.0);
        Polyline(points, true, pen);
        return;
    }
    const EllipseRows outer(box);
    const QRect innerBox = Shrunk(box, width);
    const EllipseRows inner(innerBox);
    const bool hasInner = innerBox.width() > 0 && innerBox.height() > 0;
    const int last = std::min(box.bottom(), m_clip.bottom());
    for (int y = std::max(box.top(), m_clip.top()); y <= last; ++y) {
        const auto [left, right] = outer.At(y);
        std::pair<int, int> hole(1, 0);
        if (width == 1) {
            // What has no neighbour outside: closed, and nowhere thicker than needed for that.
            const auto above = outer.At(y - 1);
            const auto below = outer.At(y + 1);
            if (above.first <= above.second && below.first <= below.second)
                hole = {std::max({left + 1, above.first, below.first}),
                        std::min({right - 1, above.second, below.second})};
        } else if (hasInner) {
            const auto columns = inner.At(y);
            if (columns.first <= columns.second)
                hole = {std::max(left + 1, columns.first), std::min(right - 1, columns.second)};
        }
        if (hole.first > hole.second) {
            FillRow(y, left, right, pen.colour);
        } else {
            FillRow(y, left, hole.first - 1, pen.colour);
            FillRow(y, hole.second + 1, right, pen.colour);
        }
    }
}

void AppendArc(std::vector<QPointF> &points, const QPointF &middle, double halfWidth,
               double halfHeight, double startDegrees, double endDegrees) {
    constexpr double flatness = 0.1; // The farthest that a chord leaves the curve; client pixels.
    constexpr double mostSteps = 100000.0;
    constexpr double radians = 3.14159265358979323846 / 180.0;
    const double radius = std::max({halfWidth, halfHeight, 1.0});
    const double step = std::acos(1.0 - flatness / radius) * 2.0;
    const double sweep = (endDegrees - startDegrees) * radians;
    const double steps = std::clamp(std::ceil(std::abs(sweep) / step), 2.0, mostSteps);
    for (double i = 0.0; i <= steps; ++i) {
        const double angle = startDegrees * radians + sweep * (i / steps);
        points.emplace_back(middle.x() + halfWidth * std::cos(angle),
                            middle.y() - halfHeight * std::sin(angle));
    }
}

void ObjectCanvas::SetFont(const TextStyle &style) {
    const int size = PixelSize(style.size);
    if (size != m_fontSize || style.flags != m_fontFlags || m_fontFace != style.face) {
        m_fontFace = style.face;
        m_fontSize = size;
        m_fontFlags = style.flags;
        m_font = QFont(QString::fromLocal8Bit(style.face));
        m_font.setPixelSize(size);
        m_font.setBold((style.flags & TextStyle::BOLD) != 0);
        m_font.setItalic((style.flags & TextStyle::ITALIC) != 0);
        m_font.setUnderline((style.flags & TextStyle::UNDERLINE) != 0);
    }
    m_painter.setFont(m_font);
    m_painter.setPen(ToQColor(style.colour));
}

void ObjectCanvas::Text(const QPoint &topLeft, const std::string &text, const TextStyle &style) {
    if (!IsReachable(topLeft) || text.empty())
        return;
    Flush();
    SetFont(style);
    m_painter.drawText(QRect(topLeft, QSize(1, 1)), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                       Shown(text));
}

void ObjectCanvas::Label(const QPointF &position, const std::string &text, const TextStyle &style) {
    if (!IsReachable(position) || text.empty())
        return;
    Flush();
    SetFont(style);
    const QString shown = Shown(text);
    const QFontMetrics metrics(m_font);
    const int width = metrics.horizontalAdvance(shown) + 2 * LABEL_PADDING;
    const int height = metrics.height() + LABEL_PADDING;
    const QPoint corner = position.toPoint() + QPoint(LABEL_DISTANCE, -LABEL_DISTANCE - height);
    const QRect plate(corner, QSize(width, height));
    const bool bright = qGray(ToQColor(style.colour).rgb()) >= 128;
    m_painter.fillRect(plate, bright ? QColor(0, 0, 0, 170) : QColor(255, 255, 255, 190));
    m_painter.drawText(plate, Qt::AlignCenter | Qt::TextDontClip, shown);
}

int ObjectCanvas::TextMargin(std::string_view text, int size) {
    text = text.substr(0, MAX_TEXT);
    std::size_t longest = 0;
    int lines = 0;
    for (std::size_t begin = 0; begin <= text.size(); ++lines) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        longest = std::max(longest, end - begin);
        begin = end + 1;
    }
    // No glyph is wider than one and a half sizes, no line higher than two.
    const double width = 1.5 * (static_cast<double>(longest) + 1.0);
    const double reach = std::max(width, 2.0 * lines) * PixelSize(size);
    return static_cast<int>(reach) + LABEL_DISTANCE + 2 * LABEL_PADDING;
}

void ObjectCanvas::Handle(const tagPOINT &pixel) {
    const QPointF centre = Centre(pixel);
    const QRectF seen =
        QRectF(m_clip).adjusted(-HANDLE_SIZE, -HANDLE_SIZE, HANDLE_SIZE, HANDLE_SIZE);
    if (!seen.contains(centre))
        return;
    const QPoint corner(static_cast<int>(std::floor(centre.x())) - HANDLE_SIZE / 2,
                        static_cast<int>(std::floor(centre.y())) - HANDLE_SIZE / 2);
    const QRect grip(corner, QSize(HANDLE_SIZE, HANDLE_SIZE));
    Fill(grip, 0x000000);
    Fill(Shrunk(grip, 1), 0xFFFFFF);
}

} // namespace tavix
