/// CTavixView: the scroll view that shows an image with its overlay objects.
#pragma once

#include "TAVIX20/display/draw_obj_array.h"
#include "TAVIX20/display/layer.h"
#include "TAVIX20/display/picture_painter.h"
#include "TAVIX20/display/pixel_grid.h"
#include "TAVIX20/display/reticle.h"
#include "TAVIX20/display/roi_element_array.h"
#include "TAVIX20/display/roi_stripes.h"
#include "TAVIX20/display/view_callbacks.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/image/tavix_image.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPointer>

#include <functional>
#include <optional>
#include <span>

class CDrawTool;
class CTavixWnd;
class QMenu;
struct _IplImage;

namespace TavixArray {
class CPointArray;
}

/// The only child of a CTavixWnd, which forwards to it and documents the operations. It owns the
/// displayed image and the overlay objects; all coordinates go through its ViewTransform.
///
/// A callback or a slot may destroy the window and this view with it. Whoever raises an event
/// therefore does so last, or holds the view in a QPointer.
class TAVIX_API CTavixView : public QAbstractScrollArea {
public:
    explicit CTavixView(CTavixWnd *window);
    ~CTavixView() override;

    // The image (tavix_view_image.cpp).
    void SetImage(const CTavixImage *image);
    void SetImage(const _IplImage *image);
    bool CreateImage(int width, int height, int bitCount);
    bool LoadImageA(const char *path);
    int SaveImage(const char *path, bool overlays) const;
    /// Null while nothing is shown.
    const CTavixImage *Image() const { return m_image.get(); }
    std::unique_ptr<CTavixImage> CopyRect(int x, int y, int width, int height) const;
    /// What the member returns of a colour image; of a grey one a copy.
    CTavixImage8 *Plane(CTavixImage8 *(CTavixImage24::*plane)() const) const;
    int GetImageWidth() const { return m_transform.ImageSize().cx; }
    int GetImageHeight() const { return m_transform.ImageSize().cy; }
    int GetBitCount() const;
    unsigned char GetPixel(int x, int y) const;
    void SetPixel(int x, int y, unsigned char value);
    unsigned long GetPixel24(int x, int y) const;
    void SetPixel24(int x, int y, unsigned long colour);
    void Offset(int dx, int dy);
    /// Applies an operation to the image in place and shows the result.
    template <typename Operation>
    void Process(Operation operation) {
        if (!m_image)
            return;
        std::invoke(operation, *m_image);
        ImageProcessed();
    }
    void CannyEdge();
    /// Everything that was derived from the pixels is out of date; shows them.
    void PixelsChanged();
    QImage Frame(double zoom) const;

    // Zoom, scrolling, painting (tavix_view.cpp).
    void Zoom(double zoom);
    void ZoomPlus();
    void ZoomMinus();
    void ZoomFitTo();
    int GetScrollPos(int bar) const;
    void SetScrollPos(int bar, int position, bool redraw);
    void CursorPosToCenter();
    const tavix::ViewTransform &Transform() const { return m_transform; }
    /// Schedules a repaint.
    void Repaint();
    /// The same of a part of the client area.
    void RepaintPart(const QRect &part);
    /// What scrolling, zooming and other pixels have in common: repaints, and brings up to date
    /// what depends on the part that is shown.
    void Refresh();

    // Overlay objects; tavix_view_objects.cpp.
    CDrawObjArray &Objects() { return m_objects; }
    const CDrawObjArray &Objects() const { return m_objects; }
    /// Makes the first object of the name the selected one; false, and nothing changed, without
    /// one.
    bool SelectObject(const char *name);
    /// The group of measurement objects that is a scale bar; see CTavixWnd.
    void AddScaleBar(const CPoint &start, int length, int parts, int style, int penWidth,
                     COLORREF colour, const char *name);
    bool SetObjectString(const char *name, const char *text);
    void ShowObject(bool show);
    /// Units per pixel of measurement objects.
    double Calibration() const { return m_calibration; }
    void SetCalibration(double unitsPerPixel);
    /// Whoever changes it repaints the view.
    tavix::Reticle &Reticle() { return m_reticle; }
    const tavix::Reticle &Reticle() const { return m_reticle; }
    /// Shows the reticle when the _TOOL_TYPE is one of its tools, and remembers which.
    void ReticleToolChosen(int type);

    // The layer; tavix_view_layer.cpp.
    tavix::Layer &GetLayer() { return m_layer; }
    /// To be called after painting into it: shows what was painted.
    void LayerChanged();
    void ShowLayer(bool show);
    bool IsLayerShown() const { return m_showLayer; }
    void SetViewCrossLine(bool show);
    bool IsViewCrossLineShown() const { return m_showCrossLine; }
    void ShowPixelGrid(bool show);
    bool IsPixelGridShown() const { return m_showPixelGrid; }

    // Input and events (tavix_view_events.cpp).
    tavix::ViewCallbacks &Callbacks() { return m_callbacks; }
    CTavixWnd *Window() const { return m_window; }
    void EnableContextMenu(bool enable) { m_contextMenuEnabled = enable; }
    void EnableFileDrop(bool enable);
    /// From here to ReleaseMouse a drag is under way.
    void CaptureMouse() { m_mouseCaptured = true; }
    void ReleaseMouse() { m_mouseCaptured = false; }
    bool IsMouseCaptured() const { return m_mouseCaptured; }
    void RaiseToolFinish(int tool, CPoint point, const TavixArray::CPointArray &points);
    void RaiseStatusChanged();
    void RaiseRoiStatusChanged();
    void RaiseImagePositionChanged();

    // The tools (tavix_view_tools.cpp).
    void Tool(int type);
    int GetTool() const;
    void SendToolResult();
    void Undo();
    /// Sets this view's own tool number, an internal identifier.
    void SetToolNumber(int id) { m_tool = id; }
    void SetToolCursor(const QCursor &cursor);
    void TakeFocus();
    void ScrollTo(CPoint position);
    /// The selected object when it is one of this view's; else null.
    CDrawObj *SelectedObject();
    /// Opens the context menu at the cursor, if it is enabled.
    void PopUpContextMenu();

    // Regions of interest (tavix_view_roi.cpp).
    const CRoiElementArray &Rois() const { return m_rois; }
    /// Adds an element with this outline, in image coordinates, as the mode says.
    void AddRoiStroke(std::span<const POINT> points);
    void ResetRoiContext();
    bool RoiFileOpen(const char *path);
    bool RoiFileSave(const char *path) const;
    void SetRoiToolMode(int mode) { m_roiMode = mode; }
    int RoiToolMode() const { return m_roiMode; }
    /// Lines across the whole image through the point; they replace those that are there.
    void ShowGuideLines(CPoint imagePoint);
    void RemoveGuideLines();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

    void showEvent(QShowEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /// The pixel under the cursor and its value, as last told.
    struct ReadOut {
        CPoint position;
        unsigned long value;
    };

    void TakeImage(std::unique_ptr<CTavixImage> image);
    void ImageProcessed();
    void PaintFrame(QImage &frame, double zoom) const;

    CSize FitArea() const;
    void ApplyTransform();
    void ZoomIn(double step);
    void ZoomOut(double step);
    void PaintPicture(QPainter &painter, const tavix::ViewTransform &transform,
                      const QRegion &exposed) const;
    tavix::PixelRows PictureRows() const;
    void ResetLayer();
    void HandOverLayer() const;
    void InitialiseObjects();
    void PaintObjects(QPainter &painter, const tavix::ViewTransform &transform,
                      const QRect &visible) const;
    void PaintOverlays(QPainter &painter, const tavix::ViewTransform &transform,
                       const QRect &visible) const;
    void PaintCrossLine(QPainter &painter) const;

    using MouseSignal = void (CTavixWnd::*)(int x, int y);
    using NotifySignal = void (CTavixWnd::*)();
    void RaiseMouse(MouseProc proc, MouseSignal signal, CPoint point);
    void Raise(NotifyProc proc, NotifySignal signal);
    void PopUpContextMenu(const QPoint &globalPosition);
    QMenu *NewContextMenu();
    void TellViewChanged();
    void UpdateReadOut();

    using ToolOperation = void (CDrawTool::*)(CTavixView &, unsigned, CPoint);
    CDrawTool *OwnTool() const;
    void LeaveTool();
    static CDrawTool *CurrentTool();
    static unsigned ToolFlags(const QMouseEvent &event);
    bool TellTool(CDrawTool *tool, ToolOperation operation, const QMouseEvent &event, CPoint point);
    bool TellToolOfMove(const QMouseEvent &event, CPoint point);
    void LoseButtons();
    void PaintTool(QPainter &painter);
    bool HandleToolMessage(QEvent &event);
    void RoisChanged();
    void UpdateStripes();
    bool HasStroke() const;
    bool IsStripeTick(const QPainter &painter) const;
    void PaintStripes(QPainter &painter, const QRect &visible) const;
    void AskForRoiFileToOpen();
    void AskForRoiFileToSave();

    CTavixWnd *m_window;
    int m_tool = 0; ///< An internal identifier (tools/tool_ids.h).
    bool m_wasShown = false;
    CRoiElementArray m_rois;
    tavix::RoiStripes m_stripes;
    QBasicTimer m_stripeTimer;            ///< Runs while there are elements.
    bool m_isStripeTick = false;          ///< A paint is under way only for the stripes' next step.
    int m_roiMode = 0;                    ///< A _ROI_TOOL_MODE.
    std::unique_ptr<CTavixImage> m_image; ///< Null while nothing is shown.
    tavix::ViewTransform m_transform;
    mutable tavix::PicturePainter m_picture; ///< Paints the image, and keeps what paints share.
    mutable tavix::PixelGrid m_pixelGrid;
    tavix::Layer m_layer;
    mutable bool m_layerChanged = false; ///< Since it was last handed to m_picture.
    mutable CDrawObjArray m_objects;     ///< Drawing them builds their place index.
    double m_calibration = 1.0;
    tavix::Reticle m_reticle;
    tavix::ViewCallbacks m_callbacks;
    QPointer<QMenu> m_contextMenu;        ///< A child; null until it is opened.
    std::optional<CPoint> m_cursor;       ///< Client position while the cursor is over the view.
    std::optional<ReadOut> m_lastReadOut; ///< Nothing while the cursor is outside the picture.
    bool m_showObjects = true;
    bool m_showLayer = false;
    bool m_showCrossLine = false;
    bool m_showPixelGrid = false;
    bool m_contextMenuEnabled = true;
    bool m_mouseCaptured = false;
    bool m_inMouseEvent = false;      ///< The host hears of one.
    bool m_viewChangePending = false; ///< TellViewChanged has something under way.
    bool m_applying = false;          ///< The scroll bars are being set from the transform.
};
