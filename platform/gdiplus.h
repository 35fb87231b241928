/// Gdiplus: the bitmap and the graphics that images are exchanged with and painted on, thin classes
/// over QImage and QPainter.
#pragma once

#include "TAVIX20/platform/bitmap.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <QImage>

class QPainter;

namespace Gdiplus {

using PixelFormat = std::int32_t;

} // namespace Gdiplus

inline constexpr Gdiplus::PixelFormat PixelFormatUndefined = 0;
inline constexpr Gdiplus::PixelFormat PixelFormat1bppIndexed = 0x30101;
inline constexpr Gdiplus::PixelFormat PixelFormat8bppIndexed = 0x30803;
inline constexpr Gdiplus::PixelFormat PixelFormat16bppRGB555 = 0x21005;
inline constexpr Gdiplus::PixelFormat PixelFormat16bppRGB565 = 0x21006;
inline constexpr Gdiplus::PixelFormat PixelFormat24bppRGB = 0x21808; ///< Blue, green, red.
inline constexpr Gdiplus::PixelFormat PixelFormat32bppRGB = 0x22009;
inline constexpr Gdiplus::PixelFormat PixelFormat32bppARGB = 0x26200A;
inline constexpr Gdiplus::PixelFormat PixelFormat32bppPARGB = 0xE200B;

namespace Gdiplus {

/// A picture in one of the pixel formats above. Copies share the pixels until one of them changes.
class TAVIX_API Bitmap {
public:
    /// A picture of that size and format, all bits 0; an indexed one has a grey palette. One
    /// without pixels when a size is below 1, the format is none of the above or memory runs out.
    Bitmap(int width, int height, PixelFormat format = PixelFormat32bppARGB);
    /// A picture over the caller's pixels, which must outlive it: rows of stride bytes, a positive
    /// multiple of 4. An indexed one has a grey palette. Without pixels as above.
    Bitmap(int width, int height, int stride, PixelFormat format, BYTE *scan0);
    /// The picture of a QImage; a format that has no counterpart above is brought to
    /// PixelFormat32bppARGB, 8-bit grey is PixelFormat8bppIndexed.
    explicit Bitmap(const QImage &image);
    /// The picture of a bitmap handle.
    explicit Bitmap(HBITMAP bitmap);

    unsigned GetWidth() const { return static_cast<unsigned>(m_image.width()); }
    unsigned GetHeight() const { return static_cast<unsigned>(m_image.height()); }
    /// PixelFormatUndefined for a bitmap without pixels.
    PixelFormat GetPixelFormat() const;

    const QImage &GetImage() const { return m_image; }

private:
    QImage m_image;
};

/// What a Bitmap or an image is painted on. It borrows the painter, which must be active and
/// outlive it.
class TAVIX_API Graphics {
public:
    explicit Graphics(QPainter *painter) : m_painter(painter) {}

    QPainter *GetPainter() const { return m_painter; }

private:
    QPainter *m_painter;
};

} // namespace Gdiplus
