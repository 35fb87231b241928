// The operations of CTavixWnd on overlay objects.

#include "TAVIX20/display/tavix_wnd.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/draw_boxes.h"
#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/draw_points.h"
#include "TAVIX20/display/draw_polygons.h"
#include "TAVIX20/display/draw_text.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/selection.h"
#include "TAVIX20/display/tavix_view.h"

#include <span>

using tavix::PointsOf;
using TavixArray::CPointArray;

namespace {

/// How the outline of an object is drawn.
struct Style {
    int style;
    int width;
    unsigned long colour;
};

/// Solid in a colour.
Style Plain(unsigned long colour) {
    return {PS_SOLID, 1, colour};
}

/// Adds an object made from the arguments.
template <typename Object, typename... Arguments>
void Add(CTavixView &view, const Style &style, const char *name, const Arguments &...arguments) {
    auto object = std::make_unique<Object>(arguments...);
    object->SetStyle(style.width, style.style, static_cast<COLORREF>(style.colour));
    object->SetName(name);
    view.Objects().Add(std::move(object));
}

std::span<const tagPOINT> PointsOf(const CPointArray &points) {
    return PointsOf(points.GetBufPtr(), points.GetElementCount());
}

/// Left and top of a circle's box.
CPoint CycleCorner(int cx, int cy, int d) {
    return {tavix::Saturate(std::int64_t{cx} - d / 2), tavix::Saturate(std::int64_t{cy} - d / 2)};
}

} // namespace

void CTavixWnd::AddPoint(int x, int y, unsigned long colour, const char *name) {
    AddPoint(CPoint(x, y), colour, name);
}

void CTavixWnd::AddPoint(CPoint point, unsigned long colour, const char *name) {
    Add<CDrawPointObj>(*m_view, Plain(colour), name, point);
}

void CTavixWnd::AddLine(int x1, int y1, int x2, int y2, int style, int width, unsigned long colour,
                        const char *name) {
    AddLine(CPoint(x1, y1), CPoint(x2, y2), style, width, colour, name);
}

void CTavixWnd::AddLine(CPoint start, CPoint end, int style, int width, unsigned long colour,
                        const char *name) {
    Add<CDrawLineObj>(*m_view, {style, width, colour}, name, start, end);
}

void CTavixWnd::AddHStyleLine(int x1, int y1, int x2, int y2, int tick, int style, int width,
                              unsigned long colour, const char *name) {
    AddHStyleLine(CPoint(x1, y1), CPoint(x2, y2), tick, style, width, colour, name);
}

void CTavixWnd::AddHStyleLine(CPoint start, CPoint end, int tick, int style, int width,
                              unsigned long colour, const char *name) {
    Add<CDrawHStyleLineObj>(*m_view, {style, width, colour}, name, start, end, tick);
}

void CTavixWnd::AddArrowLine(int x1, int y1, int x2, int y2, int headLength, int headBreadth,
                             int heads, int style, int width, unsigned long colour,
                             const char *name) {
    AddArrowLine(CPoint(x1, y1), CPoint(x2, y2), headLength, headBreadth, heads, style, width,
                 colour, name);
}

void CTavixWnd::AddArrowLine(CPoint start, CPoint end, int headLength, int headBreadth, int heads,
                             int style, int width, unsigned long colour, const char *name) {
    Add<CDrawArrowLineObj>(*m_view, {style, width, colour}, name, start, end, headLength,
                           headBreadth, heads);
}

void CTavixWnd::AddReticleLine(int x1, int y1, int x2, int y2, int style, int width,
                               unsigned long colour, const char *name) {
    AddReticleLine(CPoint(x1, y1), CPoint(x2, y2), style, width, colour, name);
}

void CTavixWnd::AddReticleLine(CPoint start, CPoint end, int style, int width, unsigned long colour,
                               const char *name) {
    Add<CDrawReticleLineObj>(*m_view, {style, width, colour}, name, start, end);
}

void CTavixWnd::AddCrossPoint(int x, int y, int armX, int armY, int style, int width,
                              unsigned long colour, const char *name) {
    AddCrossPoint(CPoint(x, y), armX, armY, style, width, colour, name);
}

void CTavixWnd::AddCrossPoint(CPoint centre, int armX, int armY, int style, int width,
                              unsigned long colour, const char *name) {
    Add<CDrawCrossPointObj>(*m_view, {style, width, colour}, name, centre, CSize(armX, armY));
}

void CTavixWnd::AddRectangle(int left, int top, int width, int height, int style, int penWidth,
                             unsigned long colour, const char *name) {
    Add<CDrawRectObj>(*m_view, {style, penWidth, colour}, name, left, top, width, height);
}

void CTavixWnd::AddFillRectangle(int left, int top, int width, int height, unsigned long colour,
                                 const char *name) {
    Add<CFillRectObj>(*m_view, Plain(colour), name, left, top, width, height);
}

void CTavixWnd::AddEllipse(int left, int top, int width, int height, int style, int penWidth,
                           unsigned long colour, const char *name) {
    Add<CDrawEllipseObj>(*m_view, {style, penWidth, colour}, name, left, top, width, height);
}

void CTavixWnd::AddFillEllipse(int left, int top, int width, int height, unsigned long colour,
                               const char *name) {
    Add<CFillEllipseObj>(*m_view, Plain(colour), name, left, top, width, height);
}

void CTavixWnd::AddCycle(int cx, int cy, int d, int style, int width, unsigned long colour,
                         const char *name) {
    const CPoint corner = CycleCorner(cx, cy, d);
    AddEllipse(corner.x, corner.y, d, d, style, width, colour, name);
}

void CTavixWnd::AddFillCycle(int cx, int cy, int d, unsigned long colour, const char *name) {
    const CPoint corner = CycleCorner(cx, cy, d);
    AddFillEllipse(corner.x, corner.y, d, d, colour, name);
}

void CTavixWnd::AddPolyline(const CPointArray &points, int style, int width, unsigned long colour,
                            const char *name) {
    Add<CDrawPolylineObj>(*m_view, {style, width, colour}, name, PointsOf(points));
}

void CTavixWnd::AddPolyline(const tagPOINT *points, int count, int style, int width,
                            unsigned long colour, const char *name) {
    Add<CDrawPolylineObj>(*m_view, {style, width, colour}, name, PointsOf(points, count));
}

void CTavixWnd::AddPolygon(const CPointArray &points, int style, int width, unsigned long colour,
                           const char *name) {
    Add<CDrawPolygonObj>(*m_view, {style, width, colour}, name, PointsOf(points));
}

void CTavixWnd::AddPolygon(const tagPOINT *points, int count, int style, int width,
                           unsigned long colour, const char *name) {
    Add<CDrawPolygonObj>(*m_view, {style, width, colour}, name, PointsOf(points, count));
}

void CTavixWnd::AddFillPolygon(const CPointArray &points, unsigned long colour, const char *name) {
    Add<CFillPolygonObj>(*m_view, Plain(colour), name, PointsOf(points));
}

void CTavixWnd::AddFillPolygon(const tagPOINT *points, int count, unsigned long colour,
                               const char *name) {
    Add<CFillPolygonObj>(*m_view, Plain(colour), name, PointsOf(points, count));
}

void CTavixWnd::AddFillHatchPolygon(const CPointArray &points, int hatch, int width,
                                    unsigned long colour, const char *name) {
    Add<CFillHatchPolygonObj>(*m_view, {PS_SOLID, width, colour}, name, PointsOf(points), hatch);
}

void CTavixWnd::AddFillHatchPolygon(const tagPOINT *points, int count, int hatch, int width,
                                    unsigned long colour, const char *name) {
    Add<CFillHatchPolygonObj>(*m_view, {PS_SOLID, width, colour}, name, PointsOf(points, count),
                              hatch);
}

void CTavixWnd::AddText(int x, int y, bool bold, bool italic, bool underline, int size,
                        unsigned long colour, const char *text, const char *name) {
    const int flags = (bold ? CDrawTextObj::BOLD : 0) | (italic ? CDrawTextObj::ITALIC : 0) |
                      (underline ? CDrawTextObj::UNDERLINE : 0);
    Add<CDrawTextObj>(*m_view, Plain(colour), name, CPoint(x, y), flags, size, text);
}

void CTavixWnd::AddScaleBar(int x, int y, int length, int parts, int style, int width,
                            unsigned long colour, const char *name) {
    m_view->AddScaleBar({x, y}, length, parts, style, width, static_cast<COLORREF>(colour), name);
}

void CTavixWnd::SetCalibration(double unitsPerPixel) {
    m_view->SetCalibration(unitsPerPixel);
}

double CTavixWnd::GetCalibration() const {
    return m_view->Calibration();
}

int CTavixWnd::Select(const char *name) {
    return m_view->SelectObject(name) ? 1 : 0;
}

void CTavixWnd::DeSelect() {
    tavix::Selection::Clear();
}

int CTavixWnd::RemoveObject(int index) {
    return m_view->Objects().RemoveAt(index);
}

int CTavixWnd::RemoveObject(const char *name) {
    return m_view->Objects().RemoveFirst(name);
}

int CTavixWnd::RemoveGraphics(const char *name) {
    return m_view->Objects().RemoveEach(name);
}

int CTavixWnd::RemoveAllGraphics() {
    return m_view->Objects().RemoveAll();
}

void CTavixWnd::RemoveAll() {
    RemoveAllGraphics();
    RemoveAllLayers();
    m_view->Reticle().Hide();
    m_view->Repaint();
}

CString CTavixWnd::GetObjectString() const {
    const CDrawObj *const object = tavix::Selection::Object();
    return object ? object->GetObjectString() : CString();
}

CString CTavixWnd::GetObjectString(const char *name) const {
    const CDrawObj *const object = m_view->Objects().Find(name);
    return object ? object->GetObjectString() : CString();
}

int CTavixWnd::SetObjectString(const char *name, const char *text) {
    return m_view->SetObjectString(name, text) ? 1 : 0;
}

void CTavixWnd::ShowObject(int show) {
    m_view->ShowObject(show != 0);
}
