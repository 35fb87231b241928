#include "TAVIX20/display/tavix_wnd.h"

#include "TAVIX20/display/tavix_view.h"

namespace {

/// Converts the corners of a rectangle in place.
template <typename Convert>
void ConvertCorners(CRect &rect, Convert convert) {
    const CPoint first = convert(rect.TopLeft());
    const CPoint second = convert(rect.BottomRight());
    rect = CRect(first, second);
}

} // namespace

CTavixWnd::CTavixWnd(QWidget *parent) : QWidget(parent), m_view(new CTavixView(this)) {
    m_view->setGeometry(rect());
    setFocusProxy(m_view);
}

CTavixWnd::~CTavixWnd() = default;

void CTavixWnd::resizeEvent(QResizeEvent *) {
    m_view->setGeometry(rect());
}

void CTavixWnd::SetImage(const CTavixImage *image) {
    m_view->SetImage(image);
}

int CTavixWnd::GetWidth() const {
    return m_view->GetImageWidth();
}

int CTavixWnd::GetHeight() const {
    return m_view->GetImageHeight();
}

int CTavixWnd::GetBitCount() const {
    return m_view->GetBitCount();
}

void CTavixWnd::Zoom(double zoom) {
    m_view->Zoom(zoom);
}

void CTavixWnd::ZoomPlus() {
    m_view->ZoomPlus();
}

void CTavixWnd::ZoomMinus() {
    m_view->ZoomMinus();
}

void CTavixWnd::ZoomFitTo() {
    m_view->ZoomFitTo();
}

double CTavixWnd::GetZoomRatio() const {
    return m_view->Transform().Zoom();
}

int CTavixWnd::GetZoomFitToMode() const {
    return m_view->Transform().IsFitted() ? 1 : 0;
}

int CTavixWnd::GetScrollPos(int bar) const {
    return m_view->GetScrollPos(bar);
}

void CTavixWnd::SetScrollPos(int bar, int position, bool redraw) {
    m_view->SetScrollPos(bar, position, redraw);
}

void CTavixWnd::ClientPtToImagePoint(CPoint &point) const {
    point = m_view->Transform().ClientToImage(point);
}

void CTavixWnd::ClientPtToImagePoint(CRect &rect) const {
    ConvertCorners(rect, [this](CPoint point) { return m_view->Transform().ClientToImage(point); });
}

void CTavixWnd::ImagePtToClientPoint(CPoint &point) const {
    point = m_view->Transform().ImageToClient(point);
}

void CTavixWnd::ImagePtToClientPoint(CRect &rect) const {
    ConvertCorners(rect, [this](CPoint point) { return m_view->Transform().ImageToClient(point); });
}

void CTavixWnd::AddRectangle(int left, int top, int width, int height, int style, int penWidth,
                             unsigned long colour, const char *name) {
    auto object = std::make_unique<CDrawRectObj>(left, top, width, height);
    object->SetStyle(penWidth, style, static_cast<COLORREF>(colour));
    object->SetName(name);
    m_view->AddObject(std::move(object));
}

void CTavixWnd::RemoveAllGraphics() {
    m_view->RemoveAllObjects();
}

void CTavixWnd::ShowObject(int show) {
    m_view->ShowObject(show != 0);
}

void CTavixWnd::Invalidate() {
    m_view->Repaint();
}

void CTavixWnd::ImageUpdate() {
    m_view->Repaint();
}
