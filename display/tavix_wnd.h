/// CTavixWnd: the image display control that host programs embed.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <QWidget>

class CTavixImage;
class CTavixView;

/// Scroll bars of GetScrollPos and SetScrollPos.
inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;

/// Shows an image with zoom, scrolling and overlay graphics. It is a QWidget for any layout and
/// belongs to the thread of its application object.
///
/// The zoom is in screen pixels per image pixel. The mouse wheel zooms by 1.0 about the centre
/// (towards the user: in), the arrow keys scroll. From zoom 1 on every image pixel is a sharp
/// block; below, each screen pixel shows the mean of the image pixels it covers.
class TAVIX_API CTavixWnd : public QWidget {
public:
    explicit CTavixWnd(QWidget *parent = nullptr);
    ~CTavixWnd() override;

    /// Shows a copy of the image, fitted to the window. Null or an image without pixels shows
    /// nothing: size 0 by 0, 24 bits.
    void SetImage(const CTavixImage *image);
    /// Size and depth of the image shown.
    int GetWidth() const;
    int GetHeight() const;
    int GetBitCount() const;

    /// Sets the zoom. Nothing happens without an image or for a zoom that is not positive.
    void Zoom(double zoom);
    /// Zooms in by 0.5, at most to 25.
    void ZoomPlus();
    /// Zooms out by 0.5, at most to the ratio that fits the window.
    void ZoomMinus();
    /// Fits the image to the window; so does every resize until the next explicit zoom.
    void ZoomFitTo();
    double GetZoomRatio() const;
    /// 1 while the zoom was set by fitting, 0 after an explicit zoom.
    int GetZoomFitToMode() const;

    /// Scroll position in client pixels of the SB_ bar.
    int GetScrollPos(int bar) const;
    void SetScrollPos(int bar, int position, bool redraw = true);

    /// Convert in place between client coordinates (pixels of this widget) and image coordinates:
    /// c = trunc(i * zoom) + origin - scroll and i = trunc((c + scroll - origin) / zoom). Each edge
    /// of a rectangle is converted by itself.
    void ClientPtToImagePoint(CPoint &point) const;
    void ClientPtToImagePoint(CRect &rect) const;
    void ImagePtToClientPoint(CPoint &point) const;
    void ImagePtToClientPoint(CRect &rect) const;

    /// Adds a rectangle outline around the image pixels left to left + width - 1 and top to
    /// top + height - 1, drawn along the inside of that block. The style is a pen style (0 solid,
    /// 1 dashed, 2 dotted, 3 and 4 dashes with dots, 5 nothing), the pen width is in client pixels
    /// (at least 1), the colour 0x00BBGGRR. The name is cut to 63 bytes.
    void AddRectangle(int left, int top, int width, int height, int style, int penWidth,
                      unsigned long colour, const char *name);
    /// Removes all overlay objects.
    void RemoveAllGraphics();
    /// Shows (not 0) or hides the overlay objects.
    void ShowObject(int show);

    /// Schedules a repaint.
    void Invalidate();
    void ImageUpdate();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    CTavixView *m_view; ///< A child: Qt deletes it.
};
