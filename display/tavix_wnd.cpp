// The window forwards to its view.

#include "TAVIX20/display/tavix_wnd.h"

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <dlfcn.h>

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
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

// The view goes first, while there still is a window to which its events belong.
CTavixWnd::~CTavixWnd() {
    delete m_view;
}

void CTavixWnd::resizeEvent(QResizeEvent *) {
    m_view->setGeometry(rect());
}

QSize CTavixWnd::sizeHint() const {
    return {320, 240};
}

QSize CTavixWnd::minimumSizeHint() const {
    return {64, 48};
}

void CTavixWnd::SetImage(const CTavixImage *image) {
    m_view->SetImage(image);
}

void CTavixWnd::SetImage(const IplImage *image) {
    m_view->SetImage(image);
}

void CTavixWnd::SetImage(std::nullptr_t) {
    m_view->SetImage(static_cast<const CTavixImage *>(nullptr));
}

int CTavixWnd::CreateImage(int width, int height, int bitCount) {
    return m_view->CreateImage(width, height, bitCount) ? 1 : 0;
}

int CTavixWnd::LoadImageA(const char *path) {
    return m_view->LoadImageA(path) ? 1 : 0;
}

int CTavixWnd::SaveImage(const char *path, bool overlays) const {
    return m_view->SaveImage(path, overlays);
}

CTavixImage *CTavixWnd::GetImage() const {
    const CTavixImage *image = m_view->Image();
    return image ? image->Clone() : new CTavixImage24;
}

CTavixImage *CTavixWnd::GetImage(int x, int y, int width, int height) const {
    return m_view->CopyRect(x, y, width, height).release();
}

CTavixImage8 *CTavixWnd::GetImage8() const {
    const CTavixImage *image = m_view->Image();
    return image ? image->GetImage8() : new CTavixImage8;
}

CTavixImage24 *CTavixWnd::GetImage24() const {
    const CTavixImage *image = m_view->Image();
    return image ? image->GetImage24() : new CTavixImage24;
}

CTavixImage8 *CTavixWnd::GetRedSpace() const {
    return m_view->Plane(&CTavixImage24::GetRedSpace);
}

CTavixImage8 *CTavixWnd::GetGreenSpace() const {
    return m_view->Plane(&CTavixImage24::GetGreenSpace);
}

CTavixImage8 *CTavixWnd::GetBlueSpace() const {
    return m_view->Plane(&CTavixImage24::GetBlueSpace);
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

int CTavixWnd::GetImageLen() const {
    const CTavixImage *image = m_view->Image();
    return image ? image->GetImageLen() : 0;
}

unsigned char CTavixWnd::GetPixel(int x, int y) const {
    return m_view->GetPixel(x, y);
}

void CTavixWnd::SetPixel(int x, int y, unsigned char value) {
    m_view->SetPixel(x, y, value);
}

unsigned long CTavixWnd::GetPixel24(int x, int y) const {
    return m_view->GetPixel24(x, y);
}

void CTavixWnd::SetPixel24(int x, int y, unsigned long colour) {
    m_view->SetPixel24(x, y, colour);
}

void CTavixWnd::Offset(int dx, int dy) {
    m_view->Offset(dx, dy);
}

void CTavixWnd::ImageUpdate() {
    m_view->PixelsChanged();
}

void CTavixWnd::Invalidate() {
    m_view->PixelsChanged();
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

void CTavixWnd::CursorPosToCenter() {
    m_view->CursorPosToCenter();
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

void CTavixWnd::ShowLayer(int show) {
    m_view->ShowLayer(show != 0);
}

void CTavixWnd::SetViewCrossLine(int show) {
    m_view->SetViewCrossLine(show != 0);
}

int CTavixWnd::GetViewCrossLine() const {
    return m_view->IsViewCrossLineShown() ? 1 : 0;
}

void CTavixWnd::ShowPixelGrid(int show) {
    m_view->ShowPixelGrid(show != 0);
}

void CTavixWnd::EnableContextMenu(int enable) {
    m_view->EnableContextMenu(enable != 0);
}

void CTavixWnd::EnableFileDrop(int enable) {
    m_view->EnableFileDrop(enable != 0);
}

void CTavixWnd::SetViewFocus() {
    m_view->setFocus();
}

int CTavixWnd::IsMouseCaptured() const {
    return m_view->IsMouseCaptured() ? 1 : 0;
}

void *CTavixWnd::GetInstanceHandle() const {
    Dl_info library{};
    dladdr(&staticMetaObject, &library);
    return library.dli_fbase;
}

QImage CTavixWnd::GetFrame(double zoom) const {
    return m_view->Frame(zoom);
}

void CTavixWnd::RegLButtonDownProc(MouseProc proc) {
    m_view->Callbacks().leftButtonDown = proc;
}

void CTavixWnd::RegMouseMoveProc(MouseProc proc) {
    m_view->Callbacks().mouseMove = proc;
}

void CTavixWnd::RegLButtonUpProc(MouseProc proc) {
    m_view->Callbacks().leftButtonUp = proc;
}

void CTavixWnd::RegDblClickProc(MouseProc proc) {
    m_view->Callbacks().doubleClick = proc;
}

void CTavixWnd::RegRButtonDownProc(MouseProc proc) {
    m_view->Callbacks().rightButtonDown = proc;
}

void CTavixWnd::RegRButtonUpProc(MouseProc proc) {
    m_view->Callbacks().rightButtonUp = proc;
}

void CTavixWnd::RegToolFinishProc(ToolFinishProc proc) {
    m_view->Callbacks().toolFinish = proc;
}

void CTavixWnd::RegStatusChangedProc(NotifyProc proc) {
    m_view->Callbacks().statusChanged = proc;
}

void CTavixWnd::RegRoiStatusChangedProc(NotifyProc proc) {
    m_view->Callbacks().roiStatusChanged = proc;
}

void CTavixWnd::RegImagePositionChangedProc(NotifyProc proc) {
    m_view->Callbacks().imagePositionChanged = proc;
}

void CTavixWnd::SetStatusChangedEvent() {
    m_view->RaiseStatusChanged();
}
