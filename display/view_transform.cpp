#include "TAVIX20/display/view_transform.h"

#include "TAVIX20/platform/dib_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavix {

namespace {

/// What fitting leaves free in each direction.
constexpr int FIT_MARGIN = 5;
/// Repeated steps accumulate rounding errors far below this.
constexpr double STEP_TOLERANCE = 1e-9;

int Truncate(double value) {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}

} // namespace

void ViewTransform::SetImageSize(CSize size) {
    m_image = size;
    SetScroll(m_scroll);
}

void ViewTransform::SetClientSize(CSize size) {
    m_client = size;
    SetScroll(m_scroll);
}

void ViewTransform::Fit(CSize area) {
    m_fitted = true;
    m_zoom = 1.0;
    if (HasImage() && area.cx > FIT_MARGIN && area.cy > FIT_MARGIN) {
        const double across = static_cast<double>(area.cx - FIT_MARGIN) / m_image.cx;
        const double down = static_cast<double>(area.cy - FIT_MARGIN) / m_image.cy;
        m_zoom = std::min(across, down);
    }
    m_fitRatio = m_zoom;
    SetScroll({0, 0});
}

bool ViewTransform::SetZoom(double zoom) {
    if (!HasImage() || !std::isfinite(zoom) || zoom <= 0.0)
        return false;
    m_zoom = zoom;
    m_fitted = false;
    SetScroll(m_scroll);
    return true;
}

bool ViewTransform::StepIn(double step) {
    if (!HasImage() || m_zoom == MAX_STEPPED_ZOOM)
        return false;
    const CPoint anchor = ClientToImage(ClientCentre());
    m_zoom = std::min(m_zoom + step, MAX_STEPPED_ZOOM);
    m_fitted = false;
    ScrollUnderCentre(anchor);
    return true;
}

bool ViewTransform::StepOut(double step, CSize fitArea) {
    if (!HasImage())
        return false;
    const CPoint anchor = ClientToImage(ClientCentre());
    const double stepped = std::min(m_zoom - step, MAX_STEPPED_ZOOM);
    m_fitted = false;
    if (stepped <= MIN_STEPPED_ZOOM + STEP_TOLERANCE) {
        Fit(fitArea);
    } else if (m_fitRatio >= stepped) {
        m_zoom = m_fitRatio;
        SetScroll({0, 0});
    } else {
        m_zoom = stepped;
        ScrollUnderCentre(anchor);
    }
    return true;
}

CSize ViewTransform::ScaledSize() const {
    return {Truncate(m_image.cx * m_zoom), Truncate(m_image.cy * m_zoom)};
}

void ViewTransform::SetScroll(CPoint position) {
    const CPoint limit = MaxScroll();
    m_scroll = {std::clamp(position.x, 0, limit.x), std::clamp(position.y, 0, limit.y)};
}

CPoint ViewTransform::MaxScroll() const {
    const CSize scaled = ScaledSize();
    return {std::max(0, scaled.cx - m_client.cx), std::max(0, scaled.cy - m_client.cy)};
}

void ViewTransform::ScrollToCentre(const tagPOINT &clientPoint) {
    const CPoint centre = ClientCentre();
    SetScroll({Truncate(static_cast<double>(m_scroll.x) + clientPoint.x - centre.x),
               Truncate(static_cast<double>(m_scroll.y) + clientPoint.y - centre.y)});
}

CPoint ViewTransform::Origin() const {
    const CSize scaled = ScaledSize();
    return {std::max(0, (m_client.cx - scaled.cx) / 2), std::max(0, (m_client.cy - scaled.cy) / 2)};
}

CPoint ViewTransform::ImageToClient(const tagPOINT &point) const {
    CPoint client;
    ImageToClient({&point, 1}, &client);
    return client;
}

void ViewTransform::ImageToClient(std::span<const tagPOINT> points, tagPOINT *client) const {
    const CPoint origin = Origin();
    for (const tagPOINT &point : points)
        *client++ = {Truncate(std::trunc(point.x * m_zoom) + origin.x - m_scroll.x),
                     Truncate(std::trunc(point.y * m_zoom) + origin.y - m_scroll.y)};
}

CPoint ViewTransform::ClientToImage(const tagPOINT &point) const {
    const CPoint origin = Origin();
    return {Truncate((static_cast<double>(point.x) + m_scroll.x - origin.x) / m_zoom),
            Truncate((static_cast<double>(point.y) + m_scroll.y - origin.y) / m_zoom)};
}

std::optional<CPoint> ViewTransform::PixelAt(const tagPOINT &clientPoint) const {
    const CPoint first = ImageToClient({0, 0});
    const CPoint pixel = ClientToImage(clientPoint);
    // Truncation toward 0 also gives 0 just before the picture's first pixel.
    if (clientPoint.x < first.x || clientPoint.y < first.y || pixel.x >= m_image.cx ||
        pixel.y >= m_image.cy)
        return std::nullopt;
    return pixel;
}

CRect ViewTransform::PaintedRect(const tagRECT &pixels) const {
    const CPoint origin = Origin();
    const double x = static_cast<double>(origin.x) - m_scroll.x;
    const double y = static_cast<double>(origin.y) - m_scroll.y;
    return {FirstTargetPixel(x, m_zoom, pixels.left), FirstTargetPixel(y, m_zoom, pixels.top),
            FirstTargetPixel(x, m_zoom, pixels.right), FirstTargetPixel(y, m_zoom, pixels.bottom)};
}

void ViewTransform::ScrollUnderCentre(const tagPOINT &imagePoint) {
    SetScroll(m_scroll); // The new range comes first: it decides what the old position still means.
    ScrollToCentre(ImageToClient(imagePoint));
}

CPoint ViewTransform::ClientCentre() const {
    return {m_client.cx / 2, m_client.cy / 2};
}

} // namespace tavix
