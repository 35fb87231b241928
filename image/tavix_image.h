/// CTavixImage: what 8-bit grey and 24-bit colour images have in common.
#pragma once

#include "TAVIX20/platform/bitmap.h"
#include "TAVIX20/platform/dc.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <memory>
#include <new>

class CTavixImage8;
class CTavixImage24;
struct tagPOINTD;

namespace Gdiplus {
class Bitmap;
class Graphics;
} // namespace Gdiplus

namespace TavixArray {
class CPointArray;
}

namespace tavix {
struct BlobScratch;
struct ImageBuffers;

/// Frees an image's buffer: with the aligned delete[], or by giving up the host's object that it
/// belongs to.
struct BufferDeleter {
    std::shared_ptr<void> owner; ///< Null for a buffer of the image's own.

    void operator()(unsigned char *buffer) const {
        if (!owner)
            ::operator delete[](buffer, BUFFER_ALIGNMENT);
    }

    /// A cache line: no vector that a kernel loads lies across two.
    static constexpr std::align_val_t BUFFER_ALIGNMENT{64};
};
using BufferPtr = std::unique_ptr<unsigned char[], BufferDeleter>;
} // namespace tavix

/// Selects the plane that a per-channel operation looks at. On an 8-bit image level 0 means the
/// grey values; the other levels have none.
enum ColorLevel : int {
    ColorLevelGray = 0, ///< (blue + green + red) / 3, integer division.
    ColorLevelRed = 1,
    ColorLevelGreen = 2,
    ColorLevelBlue = 3,
};

/// An image object: one pixel buffer with its size.
///
/// Rows lie from the top down, each padded to a multiple of 4 bytes (the stride,
/// ((bit count * width + 31) >> 5) * 4); 24-bit pixels are stored blue, green, red. Colours cross
/// the interface as 0x00BBGGRR. Rectangles are inclusive (x1, y1, x2, y2). Buffers and images that
/// a member returns belong to the caller: delete[] the buffers, delete the images.
///
/// An image is empty (null buffer, size 0) after the default constructor, Release or a failed
/// Create. The buffer is limited to 2^31 - 1 bytes. One image must not be used from two threads at
/// once. Images are copied through their own class or with Clone, never through this base.
class TAVIX_API CTavixImage {
public:
    virtual ~CTavixImage();

    virtual int GetWidth() const;
    virtual int GetHeight() const;
    /// 8 or 24; 0 after Release.
    virtual int GetBitCount() const;
    /// Number of bytes in the buffer: stride * height.
    virtual int GetImageLen() const;
    /// A new buffer with a copy of the rectangle; corners may be exchanged, parts outside the image
    /// are 0. Its rows are padded to 4 bytes. Null for an empty image or when memory runs out.
    virtual unsigned char *GetImagePtr(int x1, int y1, int x2, int y2) const = 0;
    /// The pixel buffer itself; the image keeps it. Null when empty.
    virtual unsigned char *GetImagePtr();
    /// Takes the pixels of an IplImage with as many channels as this class has; any other
    /// structure, or null, changes nothing. Bytes are copied one to one, whatever the structure's
    /// own row step.
    virtual void SetImagePtr(void *image) = 0;
    /// Takes a copy of image-length bytes laid out as this class's buffer. A size that Create would
    /// refuse, or a null pointer where bytes are needed, leaves the image empty. The bytes may lie
    /// in this image's own buffer.
    virtual void SetImagePtr(int width, int height, const unsigned char *bytes) = 0;
    /// Writes a file of the format that the path's extension names. Returns 0 when there are no
    /// pixels to write, else 1, also when the file could not be written.
    virtual int SaveImage(const char *path) const = 0;
    /// A new IplImage with a copy of the pixels, which the caller releases with cvReleaseImage;
    /// null when it cannot be made, as for an image without pixels.
    virtual void *GetIplImage() const = 0;
    /// Makes the image the given size, all bytes 0. Returns 1, or 0 and an empty image when a size
    /// is negative, the buffer would exceed 2^31 - 1 bytes or memory runs out. After Release the
    /// bit count is 0, so the buffer gets a length of 0.
    virtual int Create(int width, int height) = 0;
    /// Frees the buffer and sets sizes and bit count to 0. Callers rely on the bit count being 0
    /// from here on.
    virtual void Release();
    /// 1 when there is no buffer, else 0.
    virtual int IsEmpty() const;
    /// Paints the whole image into the rectangle (right and bottom exclusive), the top row at the
    /// top, nearest pixels. A rectangle with reversed edges mirrors the picture.
    virtual void PaintImage(Gdiplus::Graphics &graphics, const CRect &rect) const;
    virtual void PaintImage(CDC *dc, const CRect &rect) const = 0;
    /// Resize to width * scale and height * scale, each truncated. A scale that is not finite, or
    /// gives no size that an image can have, changes nothing.
    virtual void Resize(double scale, int mode);
    /// Scales to the given size: mode 0 takes the nearest pixel, 1 the mean over the area, 2
    /// interpolates bilinearly; any other mode gives an image of that size with all bytes 0. Sizes
    /// below 1, an image without pixels or too little memory change nothing.
    virtual void Resize(int width, int height, int mode) = 0;
    /// Keeps the inclusive rectangle, as GetImagePtr copies it; where that gives null, nothing
    /// changes.
    virtual void CropImage(int x1, int y1, int x2, int y2) = 0;
    /// Sets 256 counters to how often each value of that plane occurs; all 0 for a plane that the
    /// image does not have. Padding is not counted.
    virtual void GetHistogramData(ColorLevel level, long *histogram) const = 0;
    /// A new grey image: a copy, or the conversion 0.299 red + 0.587 green + 0.114 blue. Of an
    /// image without pixels an empty one.
    virtual CTavixImage8 *GetImage8() const = 0;
    /// A new colour image: a copy, or the grey values in all three channels. Of an image without
    /// pixels an empty one.
    virtual CTavixImage24 *GetImage24() const = 0;
    /// Stretches the levels between the darkest and the brightest 3 % to 0 to 255, rounded to
    /// nearest (ties to even); each channel of a colour image by itself. Unchanged where one level
    /// holds both.
    virtual void AutoContrast() = 0;
    /// How sharp the rectangle is (inclusive, corners may be exchanged, cut to the image): the
    /// variance of the Laplacian (4 neighbours) over its inner pixels, rounded; the larger, the
    /// sharper. 0 below 3 x 3 pixels. Colour images by their grey conversion.
    /// Pech-Pacheco et al., "Diatom autofocusing in brightfield microscopy", 2000.
    virtual int GetSharpenessLevel(int x1, int y1, int x2, int y2) const;
    /// The same of the whole image.
    virtual int GetSharpenessLevel() const;
    /// Turns about the pixel (width / 2, height / 2) by angle degrees, counter-clockwise as the
    /// picture is seen, bilinearly. The size stays: what leaves the frame is lost and the uncovered
    /// parts become 0, whatever fill says; callers rely on that. An angle that is not finite, or a
    /// side of 32767 pixels or more, which OpenCV refuses, changes nothing.
    virtual void Rotate(double angle, unsigned char fill);
    /// Rotate by 180, 90 and -90 degrees. They keep the size, too.
    virtual void Rotate180();
    virtual void Rotate90L();
    virtual void Rotate90R();
    /// Mirrors left to right.
    virtual void RotateHorzFlip();
    /// Mirrors top to bottom.
    virtual void RotateVertFlip();
    /// Matrix inversion by OpenCV's cvInvert, which refuses images: throws its cv::Exception, with
    /// the image as it was. This is no complement of grey values; callers rely on that. Nothing
    /// happens to an image without pixels.
    virtual void Invert();
    /// Does nothing in either class; GetImage8 makes grey images.
    virtual void Gray() = 0;
    /// Sets every byte p, padding included, to (p - 128) * (contrast + 100) / 100 + 128 +
    /// brightness, rounded and limited to 0 to 255. Unchanged unless brightness lies in -255 to 255
    /// and contrast in -100 to 100.
    virtual void Light(long brightness, long contrast);
    /// One pass of 3 x 3 erosion, and of dilation, by OpenCV.
    virtual void Erode();
    virtual void Dilate();
    /// Sets every byte p, padding included, to 255 * (p / 255)^(1 / gamma), truncated. Unchanged
    /// unless gamma is above 0.
    virtual void Gamma(double gamma);
    /// The image plus its Laplacian (aperture 3), limited to 0 to 255.
    virtual void Sharpen();
    /// 3 x 3 mean, by OpenCV; so are the median and the Gaussian windows.
    virtual void Blur();
    virtual void Median();
    virtual void Gaussian5x5();
    virtual void Gaussian3x3();
    /// Each pixel becomes 127 plus the difference of its neighbours at the lower right and the
    /// upper left, by Filter. Does nothing in colour images.
    virtual void Emboss() = 0;
    /// A new image of the edges, 255 on 0, by Canny's detector on the two-level picture at Otsu's
    /// threshold t, with the thresholds t / 2 and t and aperture 3; of a colour image those of its
    /// grey conversion. The image is not changed. Empty for an image without pixels, null when
    /// OpenCV fails. Canny, "A computational approach to edge detection", 1986.
    virtual CTavixImage8 *CannyEdge() const;
    /// The Laplacian with aperture 3, and the first vertical derivative with aperture 1, by OpenCV;
    /// negative values become 0.
    virtual void Laplacian();
    virtual void Sobel();
    /// Sums of absolute differences: of both diagonals of the 2 x 2 pixels to the lower right
    /// (Roberts, "Machine perception of three-dimensional solids", 1963), and of the 3 x 3
    /// neighbours' columns and rows (Prewitt, "Object enhancement and extraction", 1970), limited
    /// to 255. Outside lies the nearest pixel. They do nothing in colour images.
    virtual void Roberts() = 0;
    virtual void Prewitt() = 0;
    /// Minus the sum with the weights 1 -2 1, -2 4 -2, 1 -2 1, by Filter: 0 on plain areas. Does
    /// nothing in colour images.
    virtual void LogEdge() = 0;
    /// Each pixel becomes the sum of its size * size neighbours times their weights, divided by the
    /// divisor (truncated toward 0; not for 0), plus offset, limited to 0 to 255. The weights lie
    /// in row order, the pixel's own at row and column size / 2; their low 32 bits count.
    /// Neighbours in row 0 and column 0 and outside the image never contribute, those in the last
    /// row and column do; callers rely on that. Colour images channel by channel. Padding stays.
    /// Unchanged for a null kernel, a size below 1 and when memory runs out.
    virtual void Filter(const long *kernel, long size, long divisor, long offset);
    /// Erode, then Dilate, and the other way round.
    virtual void OpenBox();
    virtual void CloseBox();
    /// Histogram equalisation by OpenCV. This and the four below do nothing in colour images.
    virtual void HistoEqualize() = 0;
    /// Stretches the levels between the darkest and the brightest 1 % of the buffer's bytes to 0 to
    /// 254; brighter ones become 255. Callers rely on 254. Where one level holds both, the same
    /// with 0 %.
    virtual void HistoNormalize() = 0;
    /// Each pixel p becomes ln(p) * 255 / ln(m), rounded (ties to even), m being the brightest; 0
    /// where m is 1.
    virtual void HistoLog() = 0;
    /// Each pixel p becomes sqrt(p) * 128 / ln(m), truncated and limited to 255, m as in HistoLog;
    /// most levels of a bright image saturate.
    virtual void HistoRoot() = 0;
    /// Stretches the levels that occur to 0 to 255, truncated.
    virtual void HistoStretch() = 0;
    /// A new image of the same class with the same pixels.
    virtual CTavixImage *Clone() const = 0;
    /// Replaces the points by the pixels of the one blob that contains (x, y): 4-connected, each
    /// level, or each channel, within the tolerance of that at (x, y). They come in the order of
    /// the walk (analysis/blob_engine.h), (x, y) first. Returns their number; 0, with the points as
    /// they were, for a point outside the image and when memory runs out.
    virtual int GetPieceBlobAtPoint(int x, int y, unsigned char tolerance,
                                    TavixArray::CPointArray &points) const = 0;

    const unsigned char *GetImagePtr() const { return m_buffer.get(); }

    /// Moves the picture left by dx and up by dy pixels; the bytes uncovered become 0. The buffer
    /// is moved as one run of bytes, so rows wrap into each other through their padding; callers
    /// rely on that. A shift beyond the image clears it.
    void Offset(int dx, int dy);

    /// Loads a file with as many channels as it has: a CTavixImage8 for one channel, a
    /// CTavixImage24 for three, an empty CTavixImage24 for any other number. More than 8 bits a
    /// channel are brought to 8. Null when the file is missing, unreadable, damaged beyond decoding
    /// or too large: beyond OpenCV's limits (2^20 pixels a side, 2^30 in all; the environment
    /// variables OPENCV_IO_MAX_IMAGE_WIDTH, _HEIGHT and _PIXELS, set before the program starts,
    /// move them) or beyond a buffer of 2^31 - 1 bytes.
    static CTavixImage *LoadImageA(const char *path);
    /// From an IplImage with one or three channels, its bytes one to one, as the class's
    /// SetImagePtr takes them; null for any other.
    static CTavixImage *LoadImageA(void *image);
    /// A CTavixImage8 with the indices of an 8-bit indexed bitmap, its palette not applied; a
    /// CTavixImage24 with the colours of any other, alpha dropped. Null for null, for a bitmap
    /// without pixels and when memory runs out.
    static CTavixImage *LoadImageA(Gdiplus::Bitmap *bitmap);
    /// From a packed bitmap: the 40-byte header, then at once the pixels. A CTavixImage8 for 8 bits
    /// and a CTavixImage24 for 24 and 32 (the fourth byte dropped), rows in their stored order. A
    /// palette behind the header is read as pixels; callers rely on that.
    ///
    /// The caller guarantees that the pixels follow: height rows of 4-byte-aligned length for 8 and
    /// 24 bits; biSizeImage bytes, or width * height * 4 where that is 0 or more, for 32 bits.
    /// Pixels of a 32-bit bitmap beyond biSizeImage are 0.
    ///
    /// Null for null, for a header that is not 40 bytes long, a width or height below 1, more than
    /// one plane, a compressed bitmap, other bit counts, sizes too large for an image and when
    /// memory runs out.
    static CTavixImage *LoadImageA(const BITMAPINFOHEADER *header);
    /// From a bitmap handle, as from a Gdiplus::Bitmap.
    static CTavixImage *LoadImageA(HBITMAP bitmap);
    /// LoadImageA, then GetImage8. Empty for channel counts other than 1 and 3; null as LoadImageA.
    static CTavixImage8 *LoadImage8(const char *path);
    /// LoadImageA, then GetImage24. Empty for channel counts other than 1 and 3; null as
    /// LoadImageA.
    static CTavixImage24 *LoadImage24(const char *path);

    /// How alike two images of the same size and class are, -1 to 1: the normalised correlation of
    /// their bytes less their means (Lewis, "Fast normalized cross-correlation", 1995), over the
    /// pixels. 1 for equal images; 0 where one of them is of one level throughout, and for null,
    /// another size or class.
    double Match(const CTavixImage *other) const;
    /// A new grey image with an ellipse of one level on another: the ellipse inscribed between the
    /// centres of the image's corner pixels. The caller deletes it. Null where no such image can be
    /// made.
    static CTavixImage8 *CreateEllipseImage(int width, int height, unsigned char inside,
                                            unsigned char outside);

    /// Euclidean distance, not truncated.
    static double Distance(int x1, int y1, int x2, int y2);
    /// Direction from the first to the second point in degrees, counter-clockwise as the picture is
    /// seen (up is 90); 0 <= result < 360, 0 for equal points.
    static double GetAngle(int x1, int y1, int x2, int y2);
    /// 1 when the point lies at or above and to the left of the rectangle's top-left corner (after
    /// ordering the corners), else 0. It does not test whether the point lies inside; callers rely
    /// on that.
    static int PtInRectangle(int x1, int y1, int x2, int y2, int px, int py);
    /// 1 when the point lies inside the closed polygon by the even-odd rule, else 0. An edge with
    /// an end exactly on the point's row does not count.
    static int PtInPolygon(const tagPOINT *points, unsigned int count, const tagPOINT &point);
    /// 1 when the point lies inside the circle's outline polygon (GetArcSegment from 0 to 359
    /// degrees, winding rule), else 0.
    static int PtInCycle(int cx, int cy, int radius, int px, int py);
    /// The pixel at index count / 2 of the rasterised segment; (0, 0) when it has fewer than 2.
    static tagPOINT GetCenterFromLine(int x1, int y1, int x2, int y2);
    /// Turns (x, y) about (cx, cy); positive degrees turn clockwise as the picture is seen.
    static void RotatePoint(double x, double y, double degrees, double cx, double cy, double *outX,
                            double *outY);
    /// The rasterisers append the pixels of an outline, 8-connected and without duplicates, and
    /// return their number; 0 when a size is negative, a radius above 2^27 or a segment longer than
    /// 2^31 - 1 pixels. Arcs run counter-clockwise as the picture is seen, from angle 0 at the
    /// right; the axis points are exact.

    /// The segment from the first to the second end, both included; the same pixels whichever end
    /// comes first.
    static int GetLineSegment(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);
    /// The segment from the first to the second end, both included; where the line runs exactly
    /// between two pixels, the one in the direction of travel is taken.
    static int GetLineSegment2(int x1, int y1, int x2, int y2, TavixArray::CPointArray &points);
    /// A whole ellipse with the given half axes.
    static int GetEllipseSegment(int cx, int cy, int radiusX, int radiusY,
                                 TavixArray::CPointArray &points);
    /// The part of the ellipse between two directions from its centre, in degrees.
    static int GetEllipseSegment(int cx, int cy, int radiusX, int radiusY, double startDegrees,
                                 double endDegrees, TavixArray::CPointArray &points);
    /// A whole circle.
    static int GetCycleSegment(int cx, int cy, int radius, TavixArray::CPointArray &points);
    /// The part of a circle between two directions from its centre, in degrees, both included.
    static int GetArcSegment(int cx, int cy, int radius, double startDegrees, double endDegrees,
                             TavixArray::CPointArray &points);

    /// The straight line that lies closest to the points by total least squares (Pearson 1901), cut
    /// at the outermost points' feet; it runs to the right, a vertical one downwards. Returns 1, or
    /// 0 with start and end as they were for fewer than 2 points and for points that coincide,
    /// prefer no direction or are not finite.
    static int GetBestStraightLine(const tagPOINTD *points, int count, tagPOINTD &start,
                                   tagPOINTD &end);
    /// The same with the two ends, rounded to nearest, as the new contents of line.
    static int GetBestStraightLine(const TavixArray::CPointArray &points,
                                   TavixArray::CPointArray &line);
    /// 1 when the segments (x1, y1)-(x2, y2) and (x3, y3)-(x4, y4) have a point in common, ends and
    /// overlaps included, else 0.
    static int IntersectLine(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    /// The point in which these segments cross. Returns 1, or 0 with x and y as they were when they
    /// have no point in common, are parallel or one of them is a single point.
    static int GetCrossPoint(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                             double *x, double *y);

protected:
    explicit CTavixImage(int bitCount) : m_bitCount(bitCount) {}
    CTavixImage(const CTavixImage &) = delete;
    CTavixImage &operator=(const CTavixImage &) = delete;

    friend struct tavix::ImageBuffers;

    /// Steps shared by Create and SetImagePtr: gives up the buffer, then allocates one for the size
    /// (contents undefined). False leaves the image empty.
    bool Allocate(int width, int height);
    /// Null when memory runs out.
    static tavix::BufferPtr NewBuffer(std::size_t length);
    /// Replaces the buffer by one of that size, and drops the blob scratch.
    void TakeBuffer(tavix::BufferPtr buffer, int width, int height, int length);
    /// The same with the buffer of an image of the same class, which is empty then.
    void TakeBufferOf(CTavixImage &source);
    /// Makes the image empty.
    void GiveUpBuffer();
    bool AllocateZeroed(int width, int height);
    bool AllocateCopy(int width, int height, const unsigned char *bytes);
    /// The source's buffer when it holds as many bytes as this image takes for that size; null
    /// where the source has lost its bit count.
    const unsigned char *BytesFor(const CTavixImage &source) const;
    /// The copy behind both forms of GetImagePtr with a rectangle.
    unsigned char *CopyRect(int x1, int y1, int x2, int y2, unsigned char fill) const;
    /// Makes an image of the same class the rectangle of this one; false where CopyRect gives null.
    bool CropInto(CTavixImage &target, int x1, int y1, int x2, int y2, unsigned char fill) const;
    std::int64_t Stride() const;

    tavix::BufferPtr m_buffer;
    /// The memory in which blob analysis works (analysis/blob_engine.h); made at the first blob
    /// call, dropped with the buffer it belongs to.
    mutable std::shared_ptr<tavix::BlobScratch> m_blobScratch;
    int m_width = 0;
    int m_height = 0;
    int m_bitCount;
    int m_imageLen = 0;
};
