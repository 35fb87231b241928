/// The mapping between image and client coordinates: zoom, origin, scroll position and fitting.
/// It knows no widget; whoever shows an image asks it for every coordinate.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <optional>
#include <span>

namespace tavix {

class TAVIX_API ViewTransform {
public:
    static constexpr double MAX_STEPPED_ZOOM = 25.0;
    static constexpr double MIN_STEPPED_ZOOM = 0.3; ///< At or below it, stepping out fits instead.

    double Zoom() const { return m_zoom; }
    double FitRatio() const { return m_fitRatio; }
    /// True while the zoom was set by fitting, false after any explicit zoom.
    bool IsFitted() const { return m_fitted; }
    CSize ImageSize() const { return m_image; }
    bool HasImage() const { return m_image.cx > 0 && m_image.cy > 0; }

    /// Both sizes in pixels; the client area is the one that shows the picture. They clamp the
    /// scroll position but do not change the zoom.
    void SetImageSize(CSize size);
    void SetClientSize(CSize size);

    /// The smaller of (area - 5) / image over both axes becomes the zoom and the fit ratio; 1.0
    /// without an image or where the area leaves no room. Scrolls to the start.
    void Fit(CSize area);
    /// An explicit zoom in screen pixels per image pixel. False, and nothing changed, without an
    /// image and for a zoom that is not positive and finite.
    bool SetZoom(double zoom);
    /// Adds the step, at most up to 25, and keeps the image point under the client's centre there.
    /// False, and nothing changed, at exactly 25 and without an image.
    bool StepIn(double step);
    /// Subtracts the step. At 0.3 or less it fits to the area; at or below the fit ratio it takes
    /// that ratio, scrolled to the start; else the image point under the client's centre stays
    /// there. False, and nothing changed, without an image.
    bool StepOut(double step, CSize fitArea);

    /// Size of the picture on the screen, truncated.
    CSize ScaledSize() const;
    CPoint Scroll() const { return m_scroll; }
    /// Limited to 0 and the part of the picture that does not fit into the client area.
    void SetScroll(CPoint position);
    CPoint MaxScroll() const;
    /// Moves what lies at the client point to the client's centre, as far as the picture reaches.
    void ScrollToCentre(const tagPOINT &clientPoint);
    /// Where image pixel (0, 0) is drawn before scrolling: a picture smaller than the client area
    /// is centred.
    CPoint Origin() const;

    /// trunc(i * zoom) + origin - scroll.
    CPoint ImageToClient(const tagPOINT &point) const;
    /// The same for many points at once; there is room for as many at client.
    void ImageToClient(std::span<const tagPOINT> points, tagPOINT *client) const;
    /// trunc((c + scroll - origin) / zoom).
    CPoint ClientToImage(const tagPOINT &point) const;
    /// The same, or nothing where the client point shows no pixel of the image.
    std::optional<CPoint> PixelAt(const tagPOINT &clientPoint) const;
    /// Half the client size, truncated.
    CPoint ClientCentre() const;

    /// The client pixels that show the image pixels [left, right) x [top, bottom), exactly as the
    /// picture is painted.
    CRect PaintedRect(const tagRECT &pixels) const;

private:
    void ScrollUnderCentre(const tagPOINT &imagePoint);

    CSize m_image;
    CSize m_client;
    CPoint m_scroll;
    double m_zoom = 1.0;
    double m_fitRatio = 1.0;
    bool m_fitted = true;
};

} // namespace tavix
