/// CDC: a device context over a QPainter, and the bitmap calls that paint through it.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

class QPainter;

/// A device context: what the painting members of images and overlay objects draw on. It borrows
/// the painter, which must be active and outlive it.
class TAVIX_API CDC {
public:
    explicit CDC(QPainter *painter) : m_painter(painter) {}

    /// The painter, for drawing that has no call of its own here.
    QPainter *GetPainter() const { return m_painter; }

    /// How StretchDIBits scales: COLORONCOLOR (the start value) or HALFTONE. Returns the mode
    /// before; 0 (nothing changed) for any other mode.
    int SetStretchBltMode(int mode);
    int GetStretchBltMode() const { return m_stretchMode; }

private:
    QPainter *m_painter;
    int m_stretchMode = 3;
};

inline constexpr int COLORONCOLOR = 3; ///< Nearest source pixel; others are dropped.
inline constexpr int HALFTONE = 4;     ///< Mean of the source pixels where the target is smaller.

inline constexpr DWORD SRCCOPY = 0x00CC0020;
inline constexpr DWORD DIB_RGB_COLORS = 0;

/// Header and colour table of a device-independent bitmap. An 8-bit bitmap's header is followed by
/// biClrUsed colours, 256 when that is 0.
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

TAVIX_API int SetStretchBltMode(CDC *dc, int mode);

/// Copies the source rectangle of an uncompressed 8-, 24- or 32-bit bitmap (rows padded to 4 bytes)
/// into the target rectangle. A negative target width or height mirrors the picture; the target is
/// then the rectangle from x + width to x, from y + height to y. As in the platform's call, a
/// bitmap with positive biHeight is stored bottom-up and ySource counts from its bottom row.
/// Returns the number of bitmap rows, or 0 when nothing could be drawn: a null argument, a source
/// rectangle outside the bitmap, a format, colour use or raster operation (only SRCCOPY) that is
/// not supported.
TAVIX_API int StretchDIBits(CDC *dc, int xTarget, int yTarget, int targetWidth, int targetHeight,
                            int xSource, int ySource, int sourceWidth, int sourceHeight,
                            const void *bits, const BITMAPINFO *info, DWORD colourUse,
                            DWORD rasterOperation);
