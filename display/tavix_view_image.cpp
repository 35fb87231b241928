// The image of the view: in, out, pixels and frames.

#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/image/image_files.h"
#include "TAVIX20/image/image_interop.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

/// Client pixels across and down.
constexpr int FRAME_TILE = 4096;

bool HasPixels(const CTavixImage *image) {
    return image && image->GetImageLen() > 0;
}

CTavixImage8 *Grey(CTavixImage *image) {
    return image && image->GetBitCount() == 8 ? static_cast<CTavixImage8 *>(image) : nullptr;
}

CTavixImage24 *Colour(CTavixImage *image) {
    return image && image->GetBitCount() == 24 ? static_cast<CTavixImage24 *>(image) : nullptr;
}

bool AreAlike(const CTavixImage &a, const CTavixImage &b) {
    return a.GetWidth() == b.GetWidth() && a.GetHeight() == b.GetHeight() &&
           a.GetBitCount() == b.GetBitCount();
}

} // namespace

/// Shows the image, fitted; null or without pixels: nothing.
void CTavixView::TakeImage(std::unique_ptr<CTavixImage> image) {
    m_image = HasPixels(image.get()) ? std::move(image) : nullptr;
    m_transform.SetImageSize(m_image ? CSize(m_image->GetWidth(), m_image->GetHeight()) : CSize());
    ResetLayer();
    m_reticle.SetImageSize(m_transform.ImageSize());
    PixelsChanged();
    ZoomFitTo();
}

void CTavixView::SetImage(const CTavixImage *image) {
    if (!HasPixels(image))
        return TakeImage(nullptr);
    if (!m_image || !AreAlike(*m_image, *image))
        return TakeImage(std::unique_ptr<CTavixImage>(image->Clone()));
    // The next picture of a camera: its memory is there already.
    std::memcpy(m_image->GetImagePtr(), image->GetImagePtr(),
                static_cast<std::size_t>(image->GetImageLen()));
    TakeImage(std::move(m_image));
}

void CTavixView::SetImage(const _IplImage *image) {
    TakeImage(std::unique_ptr<CTavixImage>(
        CTavixImage::LoadImageA(const_cast<void *>(static_cast<const void *>(image)))));
}

bool CTavixView::CreateImage(int width, int height, int bitCount) {
    std::unique_ptr<CTavixImage> image;
    if (bitCount == 8)
        image = std::make_unique<CTavixImage8>(width, height);
    else if (bitCount == 24)
        image = std::make_unique<CTavixImage24>(width, height);
    const bool made = HasPixels(image.get());
    TakeImage(std::move(image));
    return made;
}

bool CTavixView::LoadImageA(const char *path) {
    std::unique_ptr<CTavixImage> image = tavix::LoadFileToShow(path);
    const bool loaded = image != nullptr;
    TakeImage(std::move(image));
    return loaded;
}

int CTavixView::SaveImage(const char *path, bool overlays) const {
    if (!m_image)
        return 0;
    if (!overlays)
        return m_image->SaveImage(path);
    CTavixImage24 frame(m_image->GetWidth(), m_image->GetHeight());
    QImage pixels = tavix::ViewAsQImage(frame);
    if (pixels.isNull())
        return 0;
    PaintFrame(pixels, 1.0);
    return frame.SaveImage(path);
}

std::unique_ptr<CTavixImage> CTavixView::CopyRect(int x, int y, int width, int height) const {
    std::unique_ptr<CTavixImage> copy;
    // An edge beyond the range of int is far outside any image.
    const bool isRect = width > 0 && height > 0 && x <= INT_MAX - width && y <= INT_MAX - height;
    if (const auto *grey = Grey(m_image.get())) {
        if (isRect)
            copy.reset(grey->CropImage2(x, y, x + width - 1, y + height - 1));
        return copy ? std::move(copy) : std::make_unique<CTavixImage8>();
    }
    if (const auto *colour = Colour(m_image.get()); colour && isRect)
        copy.reset(colour->CropImage2(x, y, x + width - 1, y + height - 1));
    return copy ? std::move(copy) : std::make_unique<CTavixImage24>();
}

CTavixImage8 *CTavixView::Plane(CTavixImage8 *(CTavixImage24::*plane)() const) const {
    if (const CTavixImage24 *colour = Colour(m_image.get()))
        return (colour->*plane)();
    return m_image ? m_image->GetImage8() : new CTavixImage8;
}

int CTavixView::GetBitCount() const {
    return m_image ? m_image->GetBitCount() : 24;
}

unsigned char CTavixView::GetPixel(int x, int y) const {
    const CTavixImage8 *grey = Grey(m_image.get());
    return grey ? grey->GetPixel(x, y) : 0;
}

void CTavixView::SetPixel(int x, int y, unsigned char value) {
    if (CTavixImage8 *grey = Grey(m_image.get()))
        grey->SetPixel(x, y, value);
}

unsigned long CTavixView::GetPixel24(int x, int y) const {
    const CTavixImage24 *colour = Colour(m_image.get());
    const bool isInside = x >= 0 && y >= 0 && x < GetImageWidth() && y < GetImageHeight();
    return colour && isInside ? colour->GetPixel(x, y) : 0;
}

void CTavixView::SetPixel24(int x, int y, unsigned long colour) {
    if (CTavixImage24 *image = Colour(m_image.get()))
        image->SetPixel(x, y, colour);
}

// Within the buffer itself, so no memory can run out.
void CTavixView::Offset(int dx, int dy) {
    if (!m_image)
        return;
    const std::int64_t length = m_image->GetImageLen();
    const std::int64_t shift = length / GetImageHeight() * dy + dx;
    const auto moved =
        static_cast<std::size_t>(std::max<std::int64_t>(0, length - std::abs(shift)));
    const auto uncovered = static_cast<std::size_t>(length) - moved;
    unsigned char *const bytes = m_image->GetImagePtr();
    if (shift >= 0) {
        std::memmove(bytes + uncovered, bytes, moved);
        std::memset(bytes, 0, uncovered);
    } else {
        std::memmove(bytes, bytes + uncovered, moved);
        std::memset(bytes + moved, 0, uncovered);
    }
    PixelsChanged();
}

void CTavixView::CannyEdge() {
    std::unique_ptr<CTavixImage> edges(m_image ? m_image->CannyEdge() : nullptr);
    if (!HasPixels(edges.get()))
        return;
    m_image = std::move(edges);
    ImageProcessed();
}

void CTavixView::ImageProcessed() {
    const CSize size(m_image->GetWidth(), m_image->GetHeight());
    if (!HasPixels(m_image.get()) || !(size == m_transform.ImageSize()))
        TakeImage(std::move(m_image));
    else
        PixelsChanged();
}

void CTavixView::PixelsChanged() {
    m_picture.SetPicture(PictureRows());
    Refresh();
}

QImage CTavixView::Frame(double zoom) const {
    tavix::ViewTransform transform = m_transform;
    if (!transform.SetZoom(zoom))
        return {};
    const CSize size = transform.ScaledSize();
    if (size.cx < 1 || size.cy < 1 || !tavix::ImageLength(32, size.cx, size.cy))
        return {};
    QImage frame(size, QImage::Format_RGB32);
    if (!frame.isNull())
        PaintFrame(frame, zoom);
    return frame;
}

/// Paints the whole picture as a window would show it. QPainter's coordinates end at 2^15, so each
/// tile is a small window of its own, scrolled to its place.
void CTavixView::PaintFrame(QImage &frame, double zoom) const {
    tavix::ViewTransform transform = m_transform;
    transform.SetZoom(zoom);
    const std::ptrdiff_t pixelBytes = frame.depth() / 8;
    for (int y = 0; y < frame.height(); y += FRAME_TILE)
        for (int x = 0; x < frame.width(); x += FRAME_TILE) {
            const CSize size(std::min(FRAME_TILE, frame.width() - x),
                             std::min(FRAME_TILE, frame.height() - y));
            QImage tile(frame.scanLine(y) + x * pixelBytes, size.cx, size.cy, frame.bytesPerLine(),
                        frame.format());
            transform.SetClientSize(size);
            transform.SetScroll({x, y});
            QPainter painter(&tile);
            const QRect whole(0, 0, size.cx, size.cy);
            PaintPicture(painter, transform, whole);
            PaintOverlays(painter, transform, whole);
        }
}
