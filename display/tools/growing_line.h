/// The picture of a line that grows point by point.
#pragma once

#include "TAVIX20/platform/geometry.h"

#include <QImage>

#include <cstddef>
#include <span>

class QPainter;
class QRect;

namespace tavix {

class ViewTransform;

/// A line as it is drawn by hand: green with black edges, legible on bright and dark pictures. It
/// keeps what it has drawn, so that a line of any length costs what was added to it; each piece
/// from point to point is drawn by itself, so that the pixels are the same in whatever steps it
/// grew.
class GrowingLine {
public:
    void Clear() { *this = {}; }

    /// Draws the line through the image points, to which points may have been added since the last
    /// call, as the view of this client size shows it.
    void Draw(QPainter &painter, std::span<const POINT> points, const ViewTransform &view,
              QSize client);

    /// What the piece between two client points may touch.
    static QRect Reach(const CPoint &from, const CPoint &to);

private:
    void DrawPieces(std::span<const POINT> points, const ViewTransform &view);

    QImage m_picture;        ///< Null while nothing is drawn.
    std::size_t m_drawn = 0; ///< Points.
    CPoint m_corner;         ///< Where the view showed the image's corner, and its zoom.
    double m_zoom = 0.0;
};

} // namespace tavix
