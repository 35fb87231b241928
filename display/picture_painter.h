/// Paints a picture, with a layer over it, through a QPainter.
#pragma once

#include "TAVIX20/display/picture_frame.h"
#include "TAVIX20/display/picture_pyramid.h"
#include "TAVIX20/display/picture_sampler.h"
#include "TAVIX20/display/plain_image.h"

#include <QPointF>
#include <QRgb>

#include <optional>

class QImage;
class QPainter;
class QRegion;

namespace tavix {

/// Holds what repeated paints share: the pyramid, which is built when a scale first needs it, and
/// below scale 1 the last frame with the layer in it. From scale 1 on there is nothing to keep:
/// sampling the picture anew moves fewer bytes than copying a frame.
class TAVIX_API PicturePainter {
public:
    /// The picture to paint, grey or colour. It is not owned and stays until another one is set. To
    /// be called again whenever its pixels have changed.
    void SetPicture(const PixelRows &picture);
    /// The layer to lay over the picture: of its size, Format_ARGB32 or
    /// Format_ARGB32_Premultiplied; another one is not painted. Not owned; null for none. To be
    /// called again whenever its pixels have changed.
    void SetLayer(const QImage *layer);

    /// Paints the exposed part (logical coordinates): the picture with its upper left corner at the
    /// corner, zoom logical pixels a picture pixel, and the background around it. Device pixels are
    /// sampled, however many the device has to a logical one.
    void Paint(QPainter &painter, const QRegion &exposed, const QPointF &corner, double zoom,
               QRgb background);

    /// True when the pyramid was needed.
    bool HasPyramid() const { return !m_pyramid.IsBare(); }

private:
    void PaintDevice(QPainter &painter, const QRegion &exposed, const QRect &client,
                     QRgb background);
    void PaintTransformed(QPainter &painter, const QRegion &exposed, const QPointF &corner,
                          double zoom, QRgb background) const;
    void PaintBlocks(QPainter &painter, const QRegion &parts);
    void PaintFrame(QPainter &painter, const QRegion &parts, const QRect &window);
    void SampleLayered(const QRect &part, std::uint32_t *target, std::ptrdiff_t stride);
    template <typename Render>
    void PaintPart(QPainter &painter, const QRect &part, Render render);

    PicturePyramid m_pyramid;
    PicturePyramid m_layerPyramid;
    Placement m_place;
    PictureFrame m_frame;
    Placement m_framePlace; ///< Of the frame's pixels: scale and the fractions of the position.
    std::optional<PlainImage> m_image; ///< What is written into during a paint, if that can be.
    std::vector<std::uint32_t> m_band;
};

} // namespace tavix
