/// The reticle of a view: two graduated lines across the picture.
#pragma once

#include "TAVIX20/platform/geometry.h"

class QPainter;
class QRect;

namespace tavix {

class ViewTransform;

/// It is not there until it is shown for the first time, at the middle of the picture and level.
/// Its centre is always a pixel of the picture, while there is one.
class Reticle {
public:
    bool IsShown() const { return m_isShown; }
    void Show() { m_isShown = true; }
    /// It comes back as it is now.
    void Hide() { m_isShown = false; }

    CPoint Centre() const { return m_centre; } ///< Image coordinates.
    /// Takes the nearest pixel of the picture.
    void MoveTo(CPoint centre);
    /// Of the first line, in degrees, counter-clockwise as the picture is seen, 0 at the right;
    /// from 0 to below 360.
    double Angle() const { return m_angle; }
    void SetAngle(double degrees);
    /// A point at the end of the first line, in the direction of its angle. The line crosses the
    /// whole picture, so that its end may lie beside it.
    CPoint AxisEnd() const;

    /// The size of the picture changes. A centre outside the new picture goes to its middle.
    void SetImageSize(CSize size);
    /// The _TOOL_TYPE of the reticle tool that was chosen last; 0 before.
    int Mode() const { return m_mode; }
    void SetMode(int type) { m_mode = type; }

    void Draw(QPainter &painter, const ViewTransform &view, const QRect &visible) const;

private:
    CSize Arm() const;

    CSize m_image;
    CPoint m_centre{-1, -1};
    double m_angle = 0.0;
    int m_mode = 0;
    bool m_isShown = false;
};

} // namespace tavix
