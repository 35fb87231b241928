#include "TAVIX20/platform/gdiplus.h"

#include <algorithm>
#include <array>

namespace {

struct FormatPair {
    Gdiplus::PixelFormat pixelFormat;
    QImage::Format qtFormat;
};

/// The first pair of a format counts, in either direction.
constexpr std::array FORMATS{
    FormatPair{PixelFormat1bppIndexed, QImage::Format_Mono},
    FormatPair{PixelFormat8bppIndexed, QImage::Format_Indexed8},
    FormatPair{PixelFormat8bppIndexed, QImage::Format_Grayscale8},
    FormatPair{PixelFormat16bppRGB555, QImage::Format_RGB555},
    FormatPair{PixelFormat16bppRGB565, QImage::Format_RGB16},
    FormatPair{PixelFormat24bppRGB, QImage::Format_BGR888},
    FormatPair{PixelFormat32bppRGB, QImage::Format_RGB32},
    FormatPair{PixelFormat32bppARGB, QImage::Format_ARGB32},
    FormatPair{PixelFormat32bppPARGB, QImage::Format_ARGB32_Premultiplied},
};

QImage::Format QtFormatOf(Gdiplus::PixelFormat format) {
    const auto *const found = std::ranges::find(FORMATS, format, &FormatPair::pixelFormat);
    return found == FORMATS.end() ? QImage::Format_Invalid : found->qtFormat;
}

Gdiplus::PixelFormat PixelFormatOf(QImage::Format format) {
    const auto *const found = std::ranges::find(FORMATS, format, &FormatPair::qtFormat);
    return found == FORMATS.end() ? PixelFormatUndefined : found->pixelFormat;
}

QImage WithGreyPalette(QImage image) {
    const int colours = image.format() == QImage::Format_Mono       ? 2
                        : image.format() == QImage::Format_Indexed8 ? 256
                                                                    : 0;
    for (int i = 0; i < colours; ++i) {
        const int level = i * 255 / (colours - 1);
        image.setColor(i, qRgb(level, level, level));
    }
    return image;
}

QImage ClearedImage(int width, int height, QImage::Format format) {
    if (format == QImage::Format_Invalid || width < 1 || height < 1)
        return {};
    QImage image(width, height, format);
    image.fill(0U);
    return image;
}

QImage ImageOver(int width, int height, int stride, QImage::Format format, BYTE *scan0) {
    if (format == QImage::Format_Invalid || !scan0 || stride <= 0 || stride % 4 != 0)
        return {};
    return {scan0, width, height, stride, format}; // Null where the sizes cannot be.
}

} // namespace

namespace Gdiplus {

Bitmap::Bitmap(int width, int height, PixelFormat format)
    : m_image(WithGreyPalette(ClearedImage(width, height, QtFormatOf(format)))) {}

Bitmap::Bitmap(int width, int height, int stride, PixelFormat format, BYTE *scan0)
    : m_image(WithGreyPalette(ImageOver(width, height, stride, QtFormatOf(format), scan0))) {}

Bitmap::Bitmap(const QImage &image)
    : m_image(PixelFormatOf(image.format()) == PixelFormatUndefined
                  ? image.convertToFormat(QImage::Format_ARGB32)
                  : image) {}

Bitmap::Bitmap(HBITMAP bitmap) : Bitmap(GetBitmapImage(bitmap)) {}

PixelFormat Bitmap::GetPixelFormat() const {
    return PixelFormatOf(m_image.format());
}

} // namespace Gdiplus
