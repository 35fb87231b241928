// The scroll view: layout, zoom, scrolling and painting.

#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/display/tavix_wnd.h"
#include "TAVIX20/display/view_scroll_bar.h"
#include "TAVIX20/image/layout.h"

#include <QCursor>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <utility>

namespace {

constexpr double KEY_ZOOM_STEP = 0.5;
constexpr int SCROLL_STEP = 20; ///< Client pixels an arrow key scrolls.
constexpr QRgb BACKGROUND = qRgb(48, 48, 48);
constexpr QRgb CROSS_LINE = qRgb(0, 255, 0);

} // namespace

CTavixView::CTavixView(CTavixWnd *window) : QAbstractScrollArea(window), m_window(window) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    // Coordinates count from the left edge, whatever way the host's language is written.
    setLayoutDirection(Qt::LeftToRight);
    // The picture and the background around it cover every pixel.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setHorizontalScrollBar(new tavix::ViewScrollBar(Qt::Horizontal));
    setVerticalScrollBar(new tavix::ViewScrollBar(Qt::Vertical));
    horizontalScrollBar()->setSingleStep(SCROLL_STEP);
    verticalScrollBar()->setSingleStep(SCROLL_STEP);
    InitialiseObjects();
}

// Destroyed by the host from within a mouse event: after a press of the right button Qt still sends
// another event to the widget that got it.
CTavixView::~CTavixView() {
    if (!m_inMouseEvent)
        return;
    viewport()->setParent(nullptr);
    viewport()->deleteLater();
}

void CTavixView::Zoom(double zoom) {
    if (!m_transform.SetZoom(zoom))
        return;
    ApplyTransform();
    RaiseImagePositionChanged();
}

void CTavixView::ZoomPlus() {
    ZoomIn(KEY_ZOOM_STEP);
}

void CTavixView::ZoomMinus() {
    ZoomOut(KEY_ZOOM_STEP);
}

void CTavixView::ZoomFitTo() {
    m_transform.Fit(FitArea());
    ApplyTransform();
    RaiseImagePositionChanged();
}

void CTavixView::ZoomIn(double step) {
    if (!m_transform.StepIn(step))
        return;
    ApplyTransform();
    RaiseImagePositionChanged();
}

void CTavixView::ZoomOut(double step) {
    if (!m_transform.StepOut(step, FitArea()))
        return;
    ApplyTransform();
    RaiseImagePositionChanged();
}

int CTavixView::GetScrollPos(int bar) const {
    switch (bar) {
    case SB_HORZ:
        return m_transform.Scroll().x;
    case SB_VERT:
        return m_transform.Scroll().y;
    default:
        return 0;
    }
}

void CTavixView::SetScrollPos(int bar, int position, bool redraw) {
    if (bar == SB_HORZ)
        horizontalScrollBar()->setValue(position);
    else if (bar == SB_VERT)
        verticalScrollBar()->setValue(position);
    if (redraw)
        Repaint();
}

void CTavixView::CursorPosToCenter() {
    const QPoint cursor = viewport()->mapFromGlobal(QCursor::pos());
    if (!viewport()->rect().contains(cursor))
        return;
    m_transform.ScrollToCentre(CPoint(cursor));
    ApplyTransform();
}

void CTavixView::SetViewCrossLine(bool show) {
    m_showCrossLine = show;
    Repaint();
}

void CTavixView::ShowPixelGrid(bool show) {
    m_showPixelGrid = show;
    Repaint();
}

void CTavixView::Repaint() {
    viewport()->update();
}

void CTavixView::RepaintPart(const QRect &part) {
    viewport()->update(part);
}

void CTavixView::Refresh() {
    Repaint();
    UpdateStripes();
    TellViewChanged();
}

/// The client area as it is without scroll bars: all of the window, whose size a hidden view learns
/// only when it is shown.
CSize CTavixView::FitArea() const {
    return m_window->size();
}

/// Brings the scroll bars in line with the transform and repaints. Showing or hiding a bar resizes
/// the viewport, which changes the scroll range again; the second round settles that.
void CTavixView::ApplyTransform() {
    m_applying = true;
    for (int round = 0; round < 2; ++round) {
        const CSize scaled = m_transform.ScaledSize();
        const CSize whole = FitArea();
        const bool fits = scaled.cx <= whole.cx && scaled.cy <= whole.cy;
        const CSize client = fits || !isVisible() ? whole : CSize(viewport()->size());
        m_transform.SetClientSize(client);
        const CPoint limit = m_transform.MaxScroll();
        horizontalScrollBar()->setRange(0, limit.x);
        horizontalScrollBar()->setPageStep(client.cx);
        verticalScrollBar()->setRange(0, limit.y);
        verticalScrollBar()->setPageStep(client.cy);
    }
    horizontalScrollBar()->setValue(m_transform.Scroll().x);
    verticalScrollBar()->setValue(m_transform.Scroll().y);
    m_applying = false;
    Refresh();
}

void CTavixView::scrollContentsBy(int, int) {
    if (m_applying)
        return;
    m_transform.SetScroll({horizontalScrollBar()->value(), verticalScrollBar()->value()});
    Refresh();
}

// The host may resize the window from code that a destroyed window would not survive, so it hears
// of the new fit later.
void CTavixView::resizeEvent(QResizeEvent *) {
    if (m_applying)
        return;
    const bool refit = m_transform.IsFitted();
    if (refit)
        m_transform.Fit(FitArea());
    ApplyTransform();
    if (refit)
        QMetaObject::invokeMethod(
            this, [this] { RaiseImagePositionChanged(); }, Qt::QueuedConnection);
}

void CTavixView::paintEvent(QPaintEvent *event) {
    QPainter painter(viewport());
    const bool isStripeTick = IsStripeTick(painter);
    if (!isStripeTick)
        PaintPicture(painter, m_transform, event->region());
    if (m_transform.HasImage()) {
        if (!isStripeTick)
            PaintOverlays(painter, m_transform, event->rect());
        PaintStripes(painter, event->rect());
        PaintTool(painter);
    }
    if (m_showCrossLine)
        PaintCrossLine(painter);
}

/// The picture with what belongs to its pixels, and the background around it.
void CTavixView::PaintPicture(QPainter &painter, const tavix::ViewTransform &transform,
                              const QRegion &exposed) const {
    const CPoint start = transform.Origin() - CSize(transform.Scroll().x, transform.Scroll().y);
    const QPointF corner(start.x, start.y);
    HandOverLayer();
    m_picture.Paint(painter, exposed, corner, transform.Zoom(), BACKGROUND);
    if (m_showPixelGrid && m_transform.HasImage())
        m_pixelGrid.Paint(painter, exposed, PictureRows(), corner, transform.Zoom());
}

/// What lies over the picture and moves with it.
void CTavixView::PaintOverlays(QPainter &painter, const tavix::ViewTransform &transform,
                               const QRect &visible) const {
    if (!m_showObjects)
        return;
    PaintObjects(painter, transform, visible);
    if (m_reticle.IsShown())
        m_reticle.Draw(painter, transform, visible);
}

tavix::PixelRows CTavixView::PictureRows() const {
    if (!m_transform.HasImage())
        return {};
    const CSize size = m_transform.ImageSize();
    const int bits = m_image->GetBitCount();
    return {std::as_const(*m_image).GetImagePtr(), size.cx, size.cy,
            static_cast<std::ptrdiff_t>(tavix::RowStride(bits, size.cx)),
            bits == 8 ? tavix::PixelKind::Grey : tavix::PixelKind::Colour};
}

void CTavixView::PaintCrossLine(QPainter &painter) const {
    const CPoint centre = m_transform.ClientCentre();
    const QRect client = viewport()->rect();
    painter.fillRect(QRect(0, centre.y, client.width(), 1), QColor(CROSS_LINE));
    painter.fillRect(QRect(centre.x, 0, 1, client.height()), QColor(CROSS_LINE));
}
