/// CTavixWnd: the image display control that host programs embed.
#pragma once

#include "TAVIX20/display/callback_types.h"
#include "TAVIX20/display/tool_types.h"
#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"
#include "TAVIX20/platform/region.h"

#include <QImage>
#include <QWidget>

#include <cstddef>

class CTavixImage;
class CTavixImage8;
class CTavixImage24;
class CTavixView;
struct _IplImage;
using IplImage = _IplImage;

class CPtrArray;

namespace TavixArray {
class CPointArray;
class CPointArrayArray;
} // namespace TavixArray

/// Scroll bars of GetScrollPos and SetScrollPos.
inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;

/// Shows an image with zoom, scrolling and overlay graphics. It is a QWidget for any layout and
/// belongs to the thread of its application object.
///
/// The zoom is in screen pixels per image pixel. The mouse wheel zooms by 1.0 about the centre
/// (towards the user: in), the arrow keys scroll. From zoom 1 on every image pixel is a sharp
/// block; below, each screen pixel shows the mean of the image pixels it covers.
///
/// Images that a member returns belong to the caller. A window without an image is 0 by 0 pixels
/// with 24 bits.
class TAVIX_API CTavixWnd : public QWidget {
    Q_OBJECT

public:
    explicit CTavixWnd(QWidget *parent = nullptr);
    ~CTavixWnd() override;

    /// Shows a copy of the image, fitted to the window. Null or an image without pixels shows
    /// nothing.
    void SetImage(const CTavixImage *image);
    /// The same of a structure with one or three channels of 8 bits; any other shows nothing.
    void SetImage(const IplImage *image);
    void SetImage(std::nullptr_t);
    /// Shows a black image of 8 or 24 bits, fitted to the window. Returns 1, or 0 and shows nothing
    /// where no such image can be made.
    int CreateImage(int width, int height, int bitCount);
    /// Shows the file, fitted to the window: one channel as 8 bits, three as 24; any other number
    /// of channels is brought to three. Returns 1, or 0 and shows nothing where the file cannot be
    /// read.
    int LoadImageA(const char *path);
    /// Writes the image to a file of the format that the path's extension names; with overlays as
    /// 24 bits with the overlay objects and the layer drawn in, as far as they are shown. Returns
    /// 0 when there are no pixels to write, else 1, also when the file could not be written.
    int SaveImage(const char *path, bool overlays = false) const;

    /// A copy of the image; an empty one where nothing is shown.
    CTavixImage *GetImage() const;
    /// A copy of the rectangle, parts outside the image 0. Empty for a width or height below 1.
    CTavixImage *GetImage(int x, int y, int width, int height) const;
    /// The image as grey and as colour image.
    CTavixImage8 *GetImage8() const;
    CTavixImage24 *GetImage24() const;
    /// One plane; of a grey image its grey values.
    CTavixImage8 *GetRedSpace() const;
    CTavixImage8 *GetGreenSpace() const;
    CTavixImage8 *GetBlueSpace() const;

    int GetWidth() const;
    int GetHeight() const;
    int GetBitCount() const;
    /// Bytes of the image, each row padded to a multiple of 4.
    int GetImageLen() const;

    /// Pixels of an 8-bit image, as CTavixImage8 reads and writes them; 0, and nothing, in any
    /// other. ImageUpdate shows what was written.
    unsigned char GetPixel(int x, int y) const;
    void SetPixel(int x, int y, unsigned char value);
    /// The same of a 24-bit image, as 0x00BBGGRR; 0, and nothing, outside it.
    unsigned long GetPixel24(int x, int y) const;
    void SetPixel24(int x, int y, unsigned long colour);

    /// Moves the image's bytes dy rows and dx bytes toward the end of the buffer; what is uncovered
    /// becomes 0. The shift is in bytes, not pixels, rows wrap into each other, and the direction
    /// is the reverse of CTavixImage::Offset; callers rely on that.
    void Offset(int dx, int dy);
    /// Show pixels that were changed, and schedule a repaint.
    void ImageUpdate();
    void Invalidate();

    /// The operations of CTavixImage, applied to the image shown, which is then repainted. Where
    /// the size changes the image is fitted again. Invert passes on OpenCV's error, the image as it
    /// was; CannyEdge shows the edge image.
    void Invert();
    void Light(long brightness, long contrast);
    void Gamma(double gamma);
    void AutoContrast();
    void HistoEqualize();
    void HistoNormalize();
    void HistoRoot();
    void HistoLog();
    void HistoStretch();
    void Erode();
    void Dilate();
    void OpenBox();
    void CloseBox();
    void Sharpen();
    void Blur();
    void Median();
    void Gaussian3x3();
    void Gaussian5x5();
    void Emboss();
    void CannyEdge();
    void Laplacian();
    void Rotate(double angle);
    void Rotate90L();
    void Rotate90R();
    void Rotate180();
    void RotateHorzFlip();
    void RotateVertFlip();

    /// Sets the zoom. Nothing happens without an image or for a zoom that is not positive and
    /// finite.
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

    /// Scroll position in client pixels of the SB_ bar; other bars are at 0 and stay there.
    int GetScrollPos(int bar) const;
    void SetScrollPos(int bar, int position, bool redraw = true);
    /// Scrolls what is under the mouse cursor to the middle of the window, as far as the picture
    /// reaches. Nothing happens while the cursor is elsewhere.
    void CursorPosToCenter();

    /// Convert in place between client coordinates (pixels of this widget) and image coordinates:
    /// c = trunc(i * zoom) + origin - scroll and i = trunc((c + scroll - origin) / zoom). Each edge
    /// of a rectangle is converted by itself.
    void ClientPtToImagePoint(CPoint &point) const;
    void ClientPtToImagePoint(CRect &rect) const;
    void ImagePtToClientPoint(CPoint &point) const;
    void ImagePtToClientPoint(CRect &rect) const;

    // Overlay objects; tavix_wnd_objects.cpp.
    //
    // Objects are kept in image coordinates and drawn in the order in which they are added. A point
    // lies on an image pixel and is drawn at the centre of that pixel's block. The style is a pen
    // style (0 solid, 1 dashed, 2 dotted, 3 and 4 dashes with dots, 5 nothing), widths of pens are
    // in client pixels (at least 1), colours are 0x00BBGGRR. The name is cut to 63 bytes, null is
    // the empty one; any number of objects may share it. Point lists may be null (no points), hold
    // 0, 1 or millions of points, and are copied.

    /// One client pixel.
    void AddPoint(int x, int y, unsigned long colour, const char *name);
    void AddPoint(CPoint point, unsigned long colour, const char *name);
    /// A line; both end pixels belong to it.
    void AddLine(int x1, int y1, int x2, int y2, int style, int width, unsigned long colour,
                 const char *name);
    void AddLine(CPoint start, CPoint end, int style, int width, unsigned long colour,
                 const char *name);
    /// A line with a bar of tick client pixels across each end.
    void AddHStyleLine(int x1, int y1, int x2, int y2, int tick, int style, int width,
                       unsigned long colour, const char *name);
    void AddHStyleLine(CPoint start, CPoint end, int tick, int style, int width,
                       unsigned long colour, const char *name);
    /// A line with filled heads, headLength long and headBreadth broad in pen widths (1 to 1,000
    /// each). heads: 1 a head at the second point, 2 at the first, 3 at both, 0 none.
    void AddArrowLine(int x1, int y1, int x2, int y2, int headLength, int headBreadth, int heads,
                      int style, int width, unsigned long colour, const char *name);
    void AddArrowLine(CPoint start, CPoint end, int headLength, int headBreadth, int heads,
                      int style, int width, unsigned long colour, const char *name);
    /// A line with graduation marks of 1, 2 or 5 times a power of ten image pixels, counted from
    /// its middle.
    void AddReticleLine(int x1, int y1, int x2, int y2, int style, int width, unsigned long colour,
                        const char *name);
    void AddReticleLine(CPoint start, CPoint end, int style, int width, unsigned long colour,
                        const char *name);
    /// A cross over the image pixels x - armX to x + armX and y - armY to y + armY.
    void AddCrossPoint(int x, int y, int armX, int armY, int style, int width, unsigned long colour,
                       const char *name);
    void AddCrossPoint(CPoint centre, int armX, int armY, int style, int width,
                       unsigned long colour, const char *name);

    /// The image pixels left to left + width - 1 and top to top + height - 1; negative sizes extend
    /// to the other side. Outlines lie on the outermost client pixels of that block and grow
    /// inwards.
    void AddRectangle(int left, int top, int width, int height, int style, int penWidth,
                      unsigned long colour, const char *name);
    void AddFillRectangle(int left, int top, int width, int height, unsigned long colour,
                          const char *name);
    /// The ellipse in that box.
    void AddEllipse(int left, int top, int width, int height, int style, int penWidth,
                    unsigned long colour, const char *name);
    void AddFillEllipse(int left, int top, int width, int height, unsigned long colour,
                        const char *name);
    /// The circle in the box with left = cx - d / 2 and top = cy - d / 2, truncated toward 0, and d
    /// as width and height.
    void AddCycle(int cx, int cy, int d, int style, int width, unsigned long colour,
                  const char *name);
    void AddFillCycle(int cx, int cy, int d, unsigned long colour, const char *name);

    /// Lines from point to point; a polygon's also from the last to the first.
    void AddPolyline(const TavixArray::CPointArray &points, int style, int width,
                     unsigned long colour, const char *name);
    void AddPolyline(const tagPOINT *points, int count, int style, int width, unsigned long colour,
                     const char *name);
    void AddPolygon(const TavixArray::CPointArray &points, int style, int width,
                    unsigned long colour, const char *name);
    void AddPolygon(const tagPOINT *points, int count, int style, int width, unsigned long colour,
                    const char *name);
    /// A polygon's outline and inside, by the winding rule.
    void AddFillPolygon(const TavixArray::CPointArray &points, unsigned long colour,
                        const char *name);
    void AddFillPolygon(const tagPOINT *points, int count, unsigned long colour, const char *name);
    /// A polygon's outline, with the pen, and hatch lines inside. hatch: 0 horizontal, 1 vertical,
    /// 2 falling, 3 rising, 4 horizontal and vertical, 5 falling and rising lines.
    void AddFillHatchPolygon(const TavixArray::CPointArray &points, int hatch, int width,
                             unsigned long colour, const char *name);
    void AddFillHatchPolygon(const tagPOINT *points, int count, int hatch, int width,
                             unsigned long colour, const char *name);

    /// Text with its top-left corner at the pixel, in points of a 96 dpi screen at every zoom.
    /// Lines end with "\n"; the first 4,096 bytes are drawn.
    void AddText(int x, int y, bool bold, bool italic, bool underline, int size,
                 unsigned long colour, const char *text, const char *name);
    /// A bar of length image pixels to the right of the pixel, in equal parts (1 to 100), with its
    /// calibrated length: one measured distance for each part and one with the label for the whole,
    /// all with this name.
    void AddScaleBar(int x, int y, int length, int parts, int style, int width,
                     unsigned long colour, const char *name);
    /// Units per image pixel of measurement objects added from now on; 1.0 at first. Nothing
    /// happens for what is not positive and finite.
    void SetCalibration(double unitsPerPixel);
    double GetCalibration() const;

    /// Selects the first object of exactly this name for editing. One object is selected in the
    /// whole process. Returns 1, or 0 (and the selection stays) when there is none.
    int Select(const char *name);
    /// Clears the selection, whichever window it is in.
    void DeSelect();
    /// Remove operations return how many objects they removed.
    int RemoveObject(int index);
    int RemoveObject(const char *name);   ///< The first object of the name.
    int RemoveGraphics(const char *name); ///< All objects of the name.
    int RemoveAllGraphics();              ///< All objects.
    /// All objects and everything else that was drawn over the picture.
    void RemoveAll();
    /// The key list of the selected object, in whichever window, or of the first object of the
    /// name; empty when there is none. The header object_keys.h has the grammar; an entry is key =
    /// value, entries are separated by ";".
    CString GetObjectString() const;
    CString GetObjectString(const char *name) const;
    /// Applies a key list to the first object of the name. Unknown keys and damaged values change
    /// nothing. Returns 1, or 0 when there is no such object.
    int SetObjectString(const char *name, const char *text);
    /// Shows (not 0) or hides the overlay objects.
    void ShowObject(int show);

    /// Leaves the current tool, and makes another one current in this window and in the process; a
    /// number without a tool makes the select tool current. Tools are shared by all windows: a
    /// window whose own tool is not the current one behaves as with the select tool.
    void Tool(_TOOL_TYPE type);
    /// The number of this window's own tool.
    int GetTool() const;
    /// Finishes the current tool where its points are collected click by click.
    void SendToolResult();
    /// Takes the last point of a polyline or polygon focus tool back.
    void Undo();

    /// Regions of interest: the elements that were drawn, one a stroke, or read from a file,
    /// combined in order. The first element starts the region whatever its method.

    /// What the next strokes do to the regions that are there; they replace them at first.
    void SetRoiToolMode(_ROI_TOOL_MODE mode);
    _ROI_TOOL_MODE GetRoiToolMode() const;
    /// 1 when there is at least one element, else 0.
    int IsRoiContext() const;
    /// Removes all elements.
    void ResetRoiContext();
    /// Replaces the elements by those of a file, whatever image it was made with. Returns 1, or 0
    /// with the elements as they were when the file cannot be read or is none of this kind.
    int RoiFileOpen(const char *path);
    /// Writes the elements. Returns 1, or 0 when the file cannot be written; it is then as it was.
    int RoiFileSave(const char *path) const;
    /// The region's polygons less those of its holes; parts that lie in a hole of another part go
    /// with the hole. The caller deletes it. Null without elements and when nothing is left.
    HRGN GetROI() const;
    /// Appends one region for each part that is left of GetROI's; the caller deletes them. Returns
    /// the array's count.
    int GetROIArray(CPtrArray &regions) const;
    /// Replaces both lists by the outlines of the combined region, corners of pixels.
    void GetRoiPointArray(TavixArray::CPointArrayArray &outer,
                          TavixArray::CPointArrayArray &holes) const;
    /// Area of GetROI's region in pixels.
    double GetRoiToPixelCount() const;

    // The layer; tavix_wnd_layer.cpp.
    //
    // A bitmap of the image's size with alpha that lies over the picture. What is painted into it
    // are pixels from then on, in any number. Every new image and every change of the size begins a
    // fresh, fully transparent one; without an image nothing is painted.
    //
    // Coordinates are those of the image; what lies outside it is not painted. Shapes cover whole
    // pixels, only text has soft edges, and they are laid over what is there with the layer alpha:
    // a pixel that was transparent gets exactly that alpha and the colour, 0x00BBGGRR. Widths of
    // pens are in image pixels, from 1 to 1,000, rounded to whole ones. Point lists may be null (no
    // points) and hold 0, 1 or millions of points.

    /// The pixels at the points become alpha and colour, whatever they were: the last one wins.
    void AddPointLayerObject(int x, int y, unsigned long colour);
    void AddPointsLayerObject(const TavixArray::CPointArray &points, unsigned long colour);
    void AddPointsLayerObject(const tagPOINT *points, int count, unsigned long colour);
    /// A line; both end pixels belong to it.
    void AddLineLayerObject(int x1, int y1, int x2, int y2, double width, unsigned long colour);
    /// The pixels x to x + w - 1 and y to y + h - 1; negative sizes extend to the other side, and a
    /// size of 0 paints nothing. Outlines lie on the outermost of these pixels and grow inwards.
    void AddRectangleLayerObject(int x, int y, int w, int h, double width, unsigned long colour);
    void AddFillRectangleLayerObject(int x, int y, int w, int h, unsigned long colour);
    /// The ellipse in that box: the pixels whose centres lie in it.
    void AddEllipseLayerObject(int x, int y, int w, int h, double width, unsigned long colour);
    void AddFillEllipseLayerObject(int x, int y, int w, int h, unsigned long colour);
    /// The pixels x - a to x + a of row y and y - b to y + b of column x; negative arms count as 0.
    void AddCrossPointLayerObject(int x, int y, int a, int b, unsigned long colour);
    /// Lines from point to point; a polygon's also from the last to the first. One point is a dot.
    void AddPolylineLayerObject(const TavixArray::CPointArray &points, double width,
                                unsigned long colour);
    void AddPolylineLayerObject(const tagPOINT *points, int count, double width,
                                unsigned long colour);
    void AddPolygonLayerObject(const TavixArray::CPointArray &points, double width,
                               unsigned long colour);
    void AddPolygonLayerObject(const tagPOINT *points, int count, double width,
                               unsigned long colour);
    /// A polygon's outline and inside, by the winding rule.
    void AddFillPolygonLayerObject(const TavixArray::CPointArray &points, unsigned long colour);
    void AddFillPolygonLayerObject(const tagPOINT *points, int count, unsigned long colour);
    /// The same in colour2 with the outline and rising lines, 8 pixels apart, in colour1.
    void AddHatchFillPolygonLayerObject(const TavixArray::CPointArray &points,
                                        unsigned long colour1, unsigned long colour2);
    void AddHatchFillPolygonLayerObject(const tagPOINT *points, int count, unsigned long colour1,
                                        unsigned long colour2);
    /// Text as AddText draws it at zoom 1, in a face of up to 31 bytes: for null and the empty
    /// string the one of AddText, for one that does not exist a similar one.
    void AddTextLayerObject(int x, int y, const char *text, int size, unsigned long colour,
                            const char *face);
    /// The picture of the file, of any kind that LoadImageA reads, as large as fits into the box at
    /// its aspect ratio, in the middle and smoothly scaled. A file's own alpha is not used; one
    /// that cannot be read paints nothing.
    void AddImageLayerObject(int x, int y, int w, int h, const char *path);
    /// The alpha of what is painted from now on, in every window of the process: the low 8 bits,
    /// 255 at first. With 0 only points change pixels.
    static void SetLayerAlpha(int alpha);
    /// Makes the whole layer transparent and gives its memory back.
    void RemoveAllLayers();
    /// Shows (not 0) or hides the layer; it is hidden at first.
    void ShowLayer(int show);
    /// Shows or hides a green line across and one down through the middle of the window, the point
    /// that zooming keeps.
    void SetViewCrossLine(int show);
    int GetViewCrossLine() const;
    /// Shows or hides lines between the image's pixels, from a zoom on at which they can be told.
    void ShowPixelGrid(int show);
    /// Whether a press of the right button opens a menu, which then takes the release; it does so
    /// at first.
    void EnableContextMenu(int enable);
    /// Whether an image file dropped onto the window is loaded; not so at first. One that cannot be
    /// read leaves the image as it is.
    void EnableFileDrop(int enable);
    /// Gives the picture the keyboard focus.
    void SetViewFocus();
    /// 1 from the press of the left or right button in the window to its release.
    int IsMouseCaptured() const;
    /// Where the library is loaded: the address that identifies it in the process.
    void *GetInstanceHandle() const;

    /// The picture as it would appear at that zoom, whole, with what is drawn over it; for reports.
    /// Null without an image, for a zoom that is not positive and finite, and where the picture
    /// would be larger than a QImage can be.
    QImage GetFrame(double zoom = 1.0) const;

    /// Register a function for an event: one slot each, the last wins, null clears it.
    /// Mouse moves are told unless the right button is held alone.
    void RegLButtonDownProc(MouseProc proc);
    void RegMouseMoveProc(MouseProc proc);
    void RegLButtonUpProc(MouseProc proc);
    void RegDblClickProc(MouseProc proc);
    void RegRButtonDownProc(MouseProc proc);
    void RegRButtonUpProc(MouseProc proc);
    void RegToolFinishProc(ToolFinishProc proc);
    void RegStatusChangedProc(NotifyProc proc);
    void RegRoiStatusChangedProc(NotifyProc proc);
    /// After every change of the zoom and every fitting; where resizing the window fitted it, when
    /// the event loop runs next.
    void RegImagePositionChangedProc(NotifyProc proc);
    /// Raises the status-changed event.
    void SetStatusChangedEvent();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The events of the registered functions, each right after its function.
    void leftButtonPressed(int x, int y);
    void mouseMoved(int x, int y);
    void leftButtonReleased(int x, int y);
    void doubleClicked(int x, int y);
    void rightButtonPressed(int x, int y);
    void rightButtonReleased(int x, int y);
    void toolFinished(int tool, int x, int y, const TavixArray::CPointArray &points);
    void statusChanged();
    void roiStatusChanged();
    void imagePositionChanged();

    /// Another image pixel lies under the mouse cursor, or another value: a grey level, or
    /// 0x00BBGGRR of a colour image.
    void pixelHovered(int x, int y, unsigned long value);
    /// The cursor has left the picture.
    void pixelLeft();
    /// The part of the picture that is shown may have changed, its zoom or its pixels: told once
    /// for all changes until the event loop runs.
    void viewChanged();
    /// A file was dropped onto the window and loaded, or could not be.
    void fileDropped(const QString &path, bool loaded);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    CTavixView *m_view; ///< A child, deleted in the destructor.
};
