#include "TAVIX20/platform/dc.h"

#include "TAVIX20/platform/dib_painter.h"

#include <QPainter>
#include <QRectF>

#include <array>
#include <cmath>

namespace {

bool IsSupported(const BITMAPINFOHEADER &header) {
    const bool depth = header.biBitCount == 8 || header.biBitCount == 24 || header.biBitCount == 32;
    return header.biSize == sizeof(BITMAPINFOHEADER) && header.biPlanes == 1 && depth &&
           header.biCompression == BI_RGB && header.biWidth > 0 && header.biHeight != 0 &&
           header.biHeight != INT32_MIN;
}

std::array<std::uint32_t, 256> ReadPalette(const BITMAPINFO &info) {
    std::array<std::uint32_t, 256> colours;
    colours.fill(0xFF000000U);
    const DWORD used = info.bmiHeader.biClrUsed;
    const std::size_t count = used == 0 || used > 256 ? 256 : used;
    const RGBQUAD *entry = info.bmiColors;
    for (std::size_t i = 0; i < count; ++i, ++entry)
        colours[i] = 0xFF000000U | (std::uint32_t{entry->rgbRed} << 16) |
                     (std::uint32_t{entry->rgbGreen} << 8) | entry->rgbBlue;
    return colours;
}

} // namespace

int CDC::SetStretchBltMode(int mode) {
    if (mode != COLORONCOLOR && mode != HALFTONE)
        return 0;
    const int before = m_stretchMode;
    m_stretchMode = mode;
    return before;
}

int SetStretchBltMode(CDC *dc, int mode) {
    return dc ? dc->SetStretchBltMode(mode) : 0;
}

int StretchDIBits(CDC *dc, int xTarget, int yTarget, int targetWidth, int targetHeight, int xSource,
                  int ySource, int sourceWidth, int sourceHeight, const void *bits,
                  const BITMAPINFO *info, DWORD colourUse, DWORD rasterOperation) {
    if (!dc || !dc->GetPainter() || !bits || !info || !IsSupported(info->bmiHeader) ||
        colourUse != DIB_RGB_COLORS || rasterOperation != SRCCOPY)
        return 0;
    const BITMAPINFOHEADER &header = info->bmiHeader;
    const bool bottomUp = header.biHeight > 0;
    const std::int64_t rows = std::abs(std::int64_t{header.biHeight});
    if (xSource < 0 || ySource < 0 || sourceWidth <= 0 || sourceHeight <= 0 ||
        std::int64_t{xSource} + sourceWidth > header.biWidth ||
        std::int64_t{ySource} + sourceHeight > rows)
        return 0;

    std::array<std::uint32_t, 256> palette;
    if (header.biBitCount == 8)
        palette = ReadPalette(*info);
    const int bytesPerPixel = header.biBitCount / 8;
    const std::ptrdiff_t stride =
        ((std::ptrdiff_t{header.biBitCount} * header.biWidth + 31) >> 5) * 4;
    const auto *first = static_cast<const unsigned char *>(bits) + ySource * stride +
                        std::ptrdiff_t{xSource} * bytesPerPixel;
    tavix::DibView dib{first, sourceWidth, sourceHeight, stride, header.biBitCount, palette.data()};
    // Bottom-up rows and a negative target height each turn the picture over; both cancel out.
    if (bottomUp != (targetHeight < 0)) {
        dib.bits += (std::ptrdiff_t{sourceHeight} - 1) * stride;
        dib.stride = -stride;
    }

    QPainter &painter = *dc->GetPainter();
    const auto sampling = dc->GetStretchBltMode() == HALFTONE ? tavix::DibSampling::Average
                                                              : tavix::DibSampling::Nearest;
    const QRectF target = QRectF(xTarget, yTarget, targetWidth, targetHeight).normalized();
    painter.save();
    if (targetWidth < 0) {
        painter.translate(2 * target.center().x(), 0);
        painter.scale(-1, 1);
    }
    tavix::DrawDib(painter, dib, target, sampling);
    painter.restore();
    return static_cast<int>(rows);
}
