/// The raster layer over a displayed image: graphics that are meant to stay, as pixels.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <QImage>
#include <QRgb>

#include <functional>
#include <span>

class CTavixImage;
class QPainter;

namespace tavix {

class ObjectCanvas;

/// A bitmap of the displayed image's size with alpha, red, green and blue of 8 bits each, the
/// colour not multiplied by the alpha. All pixels are 0 at first. It takes memory once something is
/// painted into it, and of that no more than the pages that were painted on. Where there is none to
/// be had nothing is painted.
///
/// Colours are 0x00BBGGRR; with the layer alpha, as it is when the operation is called, they make
/// the value of a painted pixel. Whatever lies outside the layer is not painted.
class TAVIX_API Layer {
public:
    /// The layer alpha of the whole process: the low 8 bits; 255 at first.
    static void SetAlpha(int alpha);

    /// Begins anew with this size; without pixels for a side below 1.
    void Reset(CSize size);
    /// Makes all pixels 0 and gives their memory back.
    void Clear();
    /// The pixels, Format_ARGB32; null as long as nothing was painted.
    const QImage &Pixels() const { return m_pixels; }

    /// Sets pixels to the colour, whatever they were.
    void SetPoints(std::span<const tagPOINT> points, unsigned long colour);

    /// Lays what draw draws, within the bounds (all edges inclusive, they may lie anywhere), over
    /// the pixels that are there. The canvas maps image pixels to themselves; draw uses it with
    /// opaque colours, is called for one part of the bounds after another and has to draw the same
    /// each time. The layer alpha applies to all it draws as a whole, so that parts of a shape
    /// which overlap are not laid over each other.
    void Paint(const CRect &bounds, const std::function<void(ObjectCanvas &canvas)> &draw);

    /// Lays a picture over the pixels that are there, as large as fits into the box at its aspect
    /// ratio, in the middle, averaged or interpolated. Negative sizes extend to the other side; a
    /// box without pixels gets none, nor does an image without.
    void PaintPicture(CPoint corner, CSize size, const CTavixImage &picture);

private:
    bool Allocate();
    void PaintParts(const QRect &area,
                    const std::function<void(QPainter &painter, const QRect &part)> &paint);
    void Blend(const QImage &drawn, const QPoint &corner, int alpha);

    CSize m_size;
    QImage m_pixels;
};

} // namespace tavix
