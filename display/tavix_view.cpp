#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/image/layout.h"
#include "TAVIX20/platform/dib_painter.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <array>

namespace {

constexpr double KEY_ZOOM_STEP = 0.5;
constexpr double WHEEL_ZOOM_STEP = 1.0;
constexpr int SCROLL_STEP = 20; ///< Client pixels an arrow key scrolls.
constexpr int BAR_HORIZONTAL = 0;
constexpr QRgb BACKGROUND = qRgb(48, 48, 48);

/// Entry i = (i, i, i).
const std::array<std::uint32_t, 256> &GreyPalette() {
    static const auto palette = [] {
        std::array<std::uint32_t, 256> greys{};
        for (std::uint32_t i = 0; i < greys.size(); ++i)
            greys[i] = 0xFF000000U | (i * 0x010101U);
        return greys;
    }();
    return palette;
}

} // namespace

CTavixView::CTavixView(QWidget *parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    // The picture and the background around it cover every pixel.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(SCROLL_STEP);
    verticalScrollBar()->setSingleStep(SCROLL_STEP);
}

CTavixView::~CTavixView() = default;

void CTavixView::SetImage(const CTavixImage *image) {
    const bool hasPixels = image && image->GetImageLen() > 0;
    m_image.reset(hasPixels ? image->Clone() : nullptr);
    const bool copied = m_image && m_image->GetImageLen() > 0;
    m_transform.SetImageSize(copied ? CSize(m_image->GetWidth(), m_image->GetHeight()) : CSize());
    ZoomFitTo();
}

int CTavixView::GetBitCount() const {
    return m_image ? m_image->GetBitCount() : 24;
}

void CTavixView::Zoom(double zoom) {
    m_transform.SetZoom(zoom);
    ApplyTransform();
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
}

void CTavixView::ZoomIn(double step) {
    if (m_transform.StepIn(step))
        ApplyTransform();
}

void CTavixView::ZoomOut(double step) {
    if (m_transform.StepOut(step, FitArea()))
        ApplyTransform();
}

int CTavixView::GetScrollPos(int bar) const {
    return bar == BAR_HORIZONTAL ? m_transform.Scroll().x : m_transform.Scroll().y;
}

void CTavixView::SetScrollPos(int bar, int position, bool redraw) {
    (bar == BAR_HORIZONTAL ? horizontalScrollBar() : verticalScrollBar())->setValue(position);
    if (redraw)
        Repaint();
}

void CTavixView::AddObject(std::unique_ptr<CDrawObj> object) {
    m_objects.push_back(std::move(object));
    Repaint();
}

void CTavixView::RemoveAllObjects() {
    m_objects.clear();
    Repaint();
}

void CTavixView::ShowObject(bool show) {
    m_showObjects = show;
    Repaint();
}

void CTavixView::Repaint() {
    viewport()->update();
}

/// The client area as it is without scroll bars.
CSize CTavixView::FitArea() const {
    return maximumViewportSize();
}

/// Brings the scroll bars in line with the transform and repaints. Showing or hiding a bar resizes
/// the viewport, which changes the scroll range again; the second round settles that.
void CTavixView::ApplyTransform() {
    m_applying = true;
    for (int round = 0; round < 2; ++round) {
        const CSize scaled = m_transform.ScaledSize();
        const CSize whole = FitArea();
        const bool fits = scaled.cx <= whole.cx && scaled.cy <= whole.cy;
        const CSize client = fits ? whole : CSize(viewport()->size());
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
    Repaint();
}

void CTavixView::scrollContentsBy(int, int) {
    if (m_applying)
        return;
    m_transform.SetScroll({horizontalScrollBar()->value(), verticalScrollBar()->value()});
    Repaint();
}

void CTavixView::resizeEvent(QResizeEvent *) {
    if (m_applying)
        return;
    if (m_transform.IsFitted())
        m_transform.Fit(FitArea());
    ApplyTransform();
}

// The direction is the reverse of what most programs do; operators of this window know it so.
void CTavixView::wheelEvent(QWheelEvent *event) {
    if (event->angleDelta().y() > 0)
        ZoomOut(WHEEL_ZOOM_STEP);
    else
        ZoomIn(WHEEL_ZOOM_STEP);
    event->accept();
}

void CTavixView::paintEvent(QPaintEvent *event) {
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    painter.fillRect(event->rect(), QColor(BACKGROUND));
    if (!m_transform.HasImage())
        return;
    PaintPicture(painter);
    if (m_showObjects) {
        CDC dc(&painter);
        for (const auto &object : m_objects)
            object->Draw(dc, m_transform);
    }
}

void CTavixView::PaintPicture(QPainter &painter) const {
    const CSize size = m_transform.ImageSize();
    const CPoint corner =
        m_transform.Origin() - CSize(m_transform.Scroll().x, m_transform.Scroll().y);
    const double zoom = m_transform.Zoom();
    const tavix::DibView dib{
        static_cast<const CTavixImage &>(*m_image).GetImagePtr(),
        size.cx,
        size.cy,
        static_cast<std::ptrdiff_t>(tavix::RowStride(m_image->GetBitCount(), size.cx)),
        m_image->GetBitCount(),
        GreyPalette().data()};
    tavix::DrawDib(painter, dib, QRectF(corner.x, corner.y, size.cx * zoom, size.cy * zoom),
                   tavix::DibSampling::Average);
}
