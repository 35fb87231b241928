// Painting an image's buffer as a device-independent bitmap.

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"
#include "TAVIX20/platform/gdiplus.h"

#include <array>

namespace {

/// Bitmap header followed by a grey palette, entry i = (i, i, i).
struct GreyBitmapInfo {
    BITMAPINFOHEADER header;
    std::array<RGBQUAD, 256> palette;
};

/// The buffer described as a bottom-up bitmap, which the mirrored target in Paint sets upright.
BITMAPINFOHEADER DescribeBuffer(const CTavixImage &image) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = image.GetWidth();
    header.biHeight = image.GetHeight();
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(image.GetBitCount());
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(image.GetImageLen());
    return header;
}

void Paint(const CTavixImage &image, CDC *dc, const CRect &rect, const void *info) {
    if (!dc || image.GetImageLen() == 0)
        return;
    SetStretchBltMode(dc, COLORONCOLOR);
    StretchDIBits(dc, rect.left, rect.bottom, rect.Width(), -rect.Height(), 0, 0, image.GetWidth(),
                  image.GetHeight(), image.GetImagePtr(), static_cast<const BITMAPINFO *>(info),
                  DIB_RGB_COLORS, SRCCOPY);
}

} // namespace

void CTavixImage::PaintImage(Gdiplus::Graphics &graphics, const CRect &rect) const {
    CDC dc(graphics.GetPainter());
    PaintImage(&dc, rect);
}

void CTavixImage8::PaintImage(CDC *dc, const CRect &rect) const {
    GreyBitmapInfo info{DescribeBuffer(*this), {}};
    for (std::size_t i = 0; i < info.palette.size(); ++i) {
        const auto level = static_cast<BYTE>(i);
        info.palette[i] = {level, level, level, 0};
    }
    Paint(*this, dc, rect, &info);
}

void CTavixImage24::PaintImage(CDC *dc, const CRect &rect) const {
    const BITMAPINFOHEADER info = DescribeBuffer(*this);
    Paint(*this, dc, rect, &info);
}
