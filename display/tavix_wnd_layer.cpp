// The operations of CTavixWnd on the layer. Its shapes are those of the overlay objects, drawn at
// zoom 1.

#include "TAVIX20/display/tavix_wnd.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/draw_boxes.h"
#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/draw_polygons.h"
#include "TAVIX20/display/draw_text.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/image/image_files.h"

#include <algorithm>
#include <cmath>

using TavixArray::CPointArray;

namespace {

CRect Grown(const CRect &rect, int by) {
    return {tavix::Saturate(std::int64_t{rect.left} - by),
            tavix::Saturate(std::int64_t{rect.top} - by),
            tavix::Saturate(std::int64_t{rect.right} + by),
            tavix::Saturate(std::int64_t{rect.bottom} + by)};
}

template <typename Draw>
void Paint(CTavixView &view, const CRect &bounds, Draw draw) {
    view.GetLayer().Paint(bounds, draw);
    view.LayerChanged();
}

/// Paints an object with a pen of the width.
void Paint(CTavixView &view, CDrawObj &&object, unsigned long colour, double width = 1.0) {
    // Not a number is no wider than a pixel, either.
    const double pixels = width > 1.0 ? std::min<double>(width, tavix::Pen::MAX_WIDTH) : 1.0;
    object.SetStyle(static_cast<int>(std::lround(pixels)), PS_SOLID, static_cast<COLORREF>(colour));
    Paint(view, Grown(object.GetBoundRect(), object.GetDrawMargin()),
          [&](tavix::ObjectCanvas &canvas) { object.Draw(canvas); });
}

} // namespace

void CTavixWnd::AddPointLayerObject(int x, int y, unsigned long colour) {
    const tagPOINT point{x, y};
    AddPointsLayerObject(&point, 1, colour);
}

void CTavixWnd::AddPointsLayerObject(const CPointArray &points, unsigned long colour) {
    AddPointsLayerObject(points.GetBufPtr(), points.GetElementCount(), colour);
}

void CTavixWnd::AddPointsLayerObject(const tagPOINT *points, int count, unsigned long colour) {
    m_view->GetLayer().SetPoints(tavix::PointsOf(points, count), colour);
    m_view->LayerChanged();
}

void CTavixWnd::AddLineLayerObject(int x1, int y1, int x2, int y2, double width,
                                   unsigned long colour) {
    Paint(*m_view, CDrawLineObj(CPoint(x1, y1), CPoint(x2, y2)), colour, width);
}

void CTavixWnd::AddRectangleLayerObject(int x, int y, int w, int h, double width,
                                        unsigned long colour) {
    if (w != 0 && h != 0)
        Paint(*m_view, CDrawRectObj(x, y, w, h), colour, width);
}

void CTavixWnd::AddEllipseLayerObject(int x, int y, int w, int h, double width,
                                      unsigned long colour) {
    if (w != 0 && h != 0)
        Paint(*m_view, CDrawEllipseObj(x, y, w, h), colour, width);
}

void CTavixWnd::AddFillRectangleLayerObject(int x, int y, int w, int h, unsigned long colour) {
    if (w != 0 && h != 0)
        Paint(*m_view, CFillRectObj(x, y, w, h), colour);
}

void CTavixWnd::AddFillEllipseLayerObject(int x, int y, int w, int h, unsigned long colour) {
    if (w != 0 && h != 0)
        Paint(*m_view, CFillEllipseObj(x, y, w, h), colour);
}

// Not the overlay's cross, which has a least size on the screen.
void CTavixWnd::AddCrossPointLayerObject(int x, int y, int a, int b, unsigned long colour) {
    const std::int64_t armX = std::max(a, 0);
    const std::int64_t armY = std::max(b, 0);
    const CPoint centre(x, y);
    const CRect bounds(tavix::Saturate(x - armX), tavix::Saturate(y - armY),
                       tavix::Saturate(x + armX), tavix::Saturate(y + armY));
    Paint(*m_view, bounds, [&](tavix::ObjectCanvas &canvas) {
        const tavix::Pen pen{static_cast<COLORREF>(colour), 1, PS_SOLID};
        canvas.Line(canvas.Centre(CPoint(bounds.left, y)), canvas.Centre(CPoint(bounds.right, y)),
                    pen);
        canvas.Line(canvas.Centre(CPoint(x, bounds.top)), canvas.Centre(CPoint(x, bounds.bottom)),
                    pen);
    });
}

void CTavixWnd::AddPolylineLayerObject(const CPointArray &points, double width,
                                       unsigned long colour) {
    AddPolylineLayerObject(points.GetBufPtr(), points.GetElementCount(), width, colour);
}

void CTavixWnd::AddPolylineLayerObject(const tagPOINT *points, int count, double width,
                                       unsigned long colour) {
    if (const auto list = tavix::PointsOf(points, count); !list.empty())
        Paint(*m_view, CDrawPolylineObj(list), colour, width);
}

void CTavixWnd::AddPolygonLayerObject(const CPointArray &points, double width,
                                      unsigned long colour) {
    AddPolygonLayerObject(points.GetBufPtr(), points.GetElementCount(), width, colour);
}

void CTavixWnd::AddPolygonLayerObject(const tagPOINT *points, int count, double width,
                                      unsigned long colour) {
    if (const auto list = tavix::PointsOf(points, count); !list.empty())
        Paint(*m_view, CDrawPolygonObj(list), colour, width);
}

void CTavixWnd::AddFillPolygonLayerObject(const CPointArray &points, unsigned long colour) {
    AddFillPolygonLayerObject(points.GetBufPtr(), points.GetElementCount(), colour);
}

void CTavixWnd::AddFillPolygonLayerObject(const tagPOINT *points, int count, unsigned long colour) {
    if (const auto list = tavix::PointsOf(points, count); !list.empty())
        Paint(*m_view, CFillPolygonObj(list), colour);
}

void CTavixWnd::AddHatchFillPolygonLayerObject(const CPointArray &points, unsigned long colour1,
                                               unsigned long colour2) {
    AddHatchFillPolygonLayerObject(points.GetBufPtr(), points.GetElementCount(), colour1, colour2);
}

void CTavixWnd::AddHatchFillPolygonLayerObject(const tagPOINT *points, int count,
                                               unsigned long colour1, unsigned long colour2) {
    const auto list = tavix::PointsOf(points, count);
    if (list.empty())
        return;
    CFillPolygonObj ground(list);
    ground.SetColor(static_cast<COLORREF>(colour2));
    CFillHatchPolygonObj hatch(list, tavix::HATCH_BACKWARD_DIAGONAL);
    hatch.SetColor(static_cast<COLORREF>(colour1));
    Paint(*m_view, Grown(hatch.GetBoundRect(), hatch.GetDrawMargin()),
          [&](tavix::ObjectCanvas &canvas) {
              ground.Draw(canvas);
              hatch.Draw(canvas);
          });
}

void CTavixWnd::AddTextLayerObject(int x, int y, const char *text, int size, unsigned long colour,
                                   const char *face) {
    if (!text || !*text)
        return;
    CDrawTextObj object(CPoint(x, y), 0, size, text);
    if (face && *face)
        object.SetFont(size, face);
    Paint(*m_view, std::move(object), colour);
}

void CTavixWnd::AddImageLayerObject(int x, int y, int w, int h, const char *path) {
    const auto picture = m_view->Image() ? tavix::LoadFileToShow(path) : nullptr;
    if (!picture)
        return;
    m_view->GetLayer().PaintPicture({x, y}, {w, h}, *picture);
    m_view->LayerChanged();
}

void CTavixWnd::SetLayerAlpha(int alpha) {
    tavix::Layer::SetAlpha(alpha);
}

void CTavixWnd::RemoveAllLayers() {
    m_view->GetLayer().Clear();
    m_view->LayerChanged();
}
