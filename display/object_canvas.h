/// What overlay objects draw on: a painter, the view's mapping and the shapes they are made of.
///
/// Nothing is anti-aliased but text: lines are as sharp as the picture's blocks, and their pixels
/// have exactly the colour asked for. What is drawn does not depend on the clip, so that repainted
/// parts meet the rest.
#pragma once

#include "TAVIX20/display/draw_obj.h"
#include "TAVIX20/display/plain_image.h"
#include "TAVIX20/platform/types.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRect>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class QBrush;
class QPainter;

namespace tavix {

class ViewTransform;

/// Hatch styles.
inline constexpr int HATCH_HORIZONTAL = 0;
inline constexpr int HATCH_VERTICAL = 1;
inline constexpr int HATCH_FORWARD_DIAGONAL = 2;  ///< Falls to the right.
inline constexpr int HATCH_BACKWARD_DIAGONAL = 3; ///< Rises to the right.
inline constexpr int HATCH_CROSS = 4;
inline constexpr int HATCH_DIAGONAL_CROSS = 5;

/// How a line is drawn.
struct Pen {
    COLORREF colour;
    int width; ///< Client pixels, 1 to MAX_WIDTH.
    int style; ///< A PS_ style.

    static constexpr int MAX_WIDTH = 1000;
};

/// How text is drawn.
struct TextStyle {
    static constexpr int BOLD = 1;
    static constexpr int ITALIC = 2;
    static constexpr int UNDERLINE = 4;

    const char *face;
    int size; ///< Points at 96 dpi.
    int flags;
    COLORREF colour;
};

/// Storage of a canvas. Whoever draws frame after frame keeps it, so that none allocates.
struct CanvasStorage {
    static constexpr std::size_t MAX_BATCH = 4096; ///< Of what is drawn in one call.

    std::vector<QRect> fills;     ///< Not drawn yet; all of one colour.
    std::vector<QPointF> points;  ///< An object's points on the screen.
    std::vector<QPoint> pixels;   ///< Of thin lines.
    std::vector<QPointF> run;     ///< The visible part of a polyline.
    std::vector<QPointF> clipped; ///< A polygon cut to what can be painted.
    std::vector<QPointF> cutting; ///< The same, while it is cut.
};

class TAVIX_API ObjectCanvas {
public:
    /// Nothing outside clip (client pixels) needs to be drawn. Painter and storage outlive the
    /// canvas.
    ObjectCanvas(QPainter &painter, const ViewTransform &view, const QRect &clip,
                 CanvasStorage &storage);
    ~ObjectCanvas();
    ObjectCanvas(const ObjectCanvas &) = delete;
    ObjectCanvas &operator=(const ObjectCanvas &) = delete;

    double Zoom() const { return m_zoom; }
    const QRect &Clip() const { return m_clip; }

    /// The client pixels of the image pixels [left, right) x [top, bottom), at least one. The edges
    /// may lie outside the 32-bit range.
    QRect Block(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) const;
    /// The centre of an image pixel's block, at the place nearest to it where a line of the given
    /// width covers whole client pixels.
    QPointF Centre(const tagPOINT &pixel, int penWidth = 1) const;
    /// The client position of a point between pixels; the centre of image pixel i is at i.
    QPointF Position(double x, double y) const;

    void Fill(const QRect &pixels, COLORREF colour);
    /// The frame along the inside of the rectangle's edges.
    void Frame(const QRect &outer, const Pen &pen);
    /// The client pixels whose centres lie in the ellipse inside the box.
    void FillEllipse(const QRect &box, COLORREF colour);
    /// The outermost pixels of FillEllipse, as thick as the pen.
    void Ellipse(const QRect &box, const Pen &pen);
    /// The lines from point to point, each a Centre for this pen's width. Ends are square, corners
    /// round. A single point is a dot.
    void Polyline(std::span<const QPointF> points, bool closed, const Pen &pen);
    void Line(const QPointF &from, const QPointF &to, const Pen &pen);
    /// Inside the polygon by the winding rule, and its outline.
    void FillPolygon(std::span<const QPointF> points, COLORREF colour);
    /// Lines 8 client pixels apart inside the polygon; they lie still on the picture.
    void HatchPolygon(std::span<const QPointF> points, int hatch, COLORREF colour);

    /// Text whose first line's top-left corner is at the client pixel. At most MAX_TEXT bytes.
    void Text(const QPoint &topLeft, const std::string &text, const TextStyle &style);
    /// Text on a dark or bright plate, whichever it is legible on, above and right of the position.
    void Label(const QPointF &position, const std::string &text, const TextStyle &style);
    /// Client pixels that Text and Label need at most beside their position.
    static int TextMargin(std::string_view text, int size);
    static constexpr std::size_t MAX_TEXT = 4096;

    /// The grip of a selected object's handle.
    void Handle(const tagPOINT &pixel);
    static constexpr int HANDLE_SIZE = 7;

    /// Empty storage for an object's points.
    std::vector<QPointF> &Points();

private:
    void Flush();
    void FillRow(int y, int left, int right, COLORREF colour);
    void ThinLine(const QPointF &from, const QPointF &to, COLORREF colour);
    void DrawPixels(COLORREF colour);
    void StrokeRun(const Pen &pen, Qt::PenCapStyle cap, double phase);
    void FillInside(std::span<const QPointF> points, const QBrush &brush);
    void SetFont(const TextStyle &style);

    QPainter &m_painter;
    std::optional<PlainFiller> m_plain; ///< Fills instead of the painter, if it can.
    CanvasStorage &m_storage;
    QRect m_clip;
    double m_zoom;
    double m_left; ///< Where image pixel (0, 0) starts.
    double m_top;
    COLORREF m_fillColour = 0;
    QFont m_font;
    std::string m_fontFace; ///< What m_font was made from.
    int m_fontSize = 0;     ///< 0: not made yet.
    int m_fontFlags = 0;
};

QRgb ToQRgb(COLORREF colour);
QColor ToQColor(COLORREF colour);

/// False for positions far outside every screen, where QPainter's rasteriser loses its footing.
bool IsReachable(const QPointF &position);

/// Appends points of the ellipse with the given half axes, counter-clockwise from start to end,
/// dense enough that the lines between them look like the curve. 0 degrees is at the right.
void AppendArc(std::vector<QPointF> &points, const QPointF &middle, double halfWidth,
               double halfHeight, double startDegrees, double endDegrees);

} // namespace tavix
