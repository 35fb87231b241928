/// CTavixView: the scroll view that shows an image with its overlay objects.
#pragma once

#include "TAVIX20/display/draw_obj.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/image/tavix_image.h"

#include <QAbstractScrollArea>

/// The only child of a CTavixWnd, which forwards to it and documents the operations. It owns the
/// displayed image and the overlay objects; all coordinates go through its ViewTransform.
class CTavixView : public QAbstractScrollArea {
public:
    explicit CTavixView(QWidget *parent);
    ~CTavixView() override;

    void SetImage(const CTavixImage *image);
    int GetImageWidth() const { return m_transform.ImageSize().cx; }
    int GetImageHeight() const { return m_transform.ImageSize().cy; }
    int GetBitCount() const;

    void Zoom(double zoom);
    void ZoomPlus();
    void ZoomMinus();
    void ZoomFitTo();
    int GetScrollPos(int bar) const;
    void SetScrollPos(int bar, int position, bool redraw);
    const tavix::ViewTransform &Transform() const { return m_transform; }

    void AddObject(std::unique_ptr<CDrawObj> object);
    void RemoveAllObjects();
    void ShowObject(bool show);
    void Repaint();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    CSize FitArea() const;
    void ApplyTransform();
    void ZoomIn(double step);
    void ZoomOut(double step);
    void PaintPicture(QPainter &painter) const;

    std::unique_ptr<CTavixImage> m_image; ///< Null while nothing is shown.
    tavix::ViewTransform m_transform;
    CDrawObjArray m_objects;
    bool m_showObjects = true;
    bool m_applying = false; ///< The scroll bars are being set from the transform.
};
