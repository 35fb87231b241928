/// CTavixImage: what 8-bit grey and 24-bit colour images have in common.
#pragma once

#include "TAVIX20/platform/dc.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <memory>

class CTavixImage8;
class CTavixImage24;
struct tagPOINTD;

namespace TavixArray {
class CPointArray;
}

/// Selects the plane that a per-channel operation looks at. On an 8-bit image level 0 means the
/// grey values; the other levels have none.
enum ColorLevel {
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
    /// top, nearest pixels.
    virtual void PaintImage(CDC *dc, const CRect &rect) const = 0;
    /// A new grey image: a copy, or the conversion 0.299 red + 0.587 green + 0.114 blue. Of an
    /// image without pixels an empty one.
    virtual CTavixImage8 *GetImage8() const = 0;
    /// A new colour image: a copy, or the grey values in all three channels. Of an image without
    /// pixels an empty one.
    virtual CTavixImage24 *GetImage24() const = 0;
    /// Does nothing in either class; GetImage8 makes grey images.
    virtual void Gray() = 0;
    /// A new image of the same class with the same pixels.
    virtual CTavixImage *Clone() const = 0;

    const unsigned char *GetImagePtr() const { return m_buffer.get(); }

    /// Loads a file with as many channels as it has: a CTavixImage8 for one channel, a
    /// CTavixImage24 for three, an empty CTavixImage24 for any other number. More than 8 bits a
    /// channel are brought to 8. Null when the file is missing, unreadable, damaged beyond decoding
    /// or too large for an image.
    static CTavixImage *LoadImageA(const char *path);
    /// LoadImageA, then GetImage8. Empty for channel counts other than 1 and 3; null as LoadImageA.
    static CTavixImage8 *LoadImage8(const char *path);
    /// LoadImageA, then GetImage24. Empty for channel counts other than 1 and 3; null as
    /// LoadImageA.
    static CTavixImage24 *LoadImage24(const char *path);

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

    /// Steps shared by Create and SetImagePtr: gives up the buffer, then allocates one for the size
    /// (contents undefined). False leaves the image empty.
    bool Allocate(int width, int height);
    bool AllocateZeroed(int width, int height);
    bool AllocateCopy(int width, int height, const unsigned char *bytes);
    /// The copy behind both forms of GetImagePtr with a rectangle.
    unsigned char *CopyRect(int x1, int y1, int x2, int y2, unsigned char fill) const;
    std::int64_t Stride() const;

    std::unique_ptr<unsigned char[]> m_buffer;
    int m_width = 0;
    int m_height = 0;
    int m_bitCount;
    int m_imageLen = 0;
};
