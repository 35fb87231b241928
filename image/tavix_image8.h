/// CTavixImage8: an 8-bit grey image with an optional region-of-interest mask.
#pragma once

#include "TAVIX20/image/tavix_image.h"
#include "TAVIX20/platform/region.h"

#include <cstdlib>

class CBlobRectArray;

namespace TavixArray {
class CPixelArrayArray;
class CPointArrayArray;
class CSortByteArray;
} // namespace TavixArray

class TAVIX_API CTavixImage8 : public CTavixImage {
public:
    CTavixImage8() : CTavixImage(8) {}
    /// As Create.
    CTavixImage8(int width, int height);
    /// As SetImagePtr.
    CTavixImage8(int width, int height, const unsigned char *bytes);
    /// A deep copy of the pixels; the mask is not copied.
    CTavixImage8(const CTavixImage8 &source);
    /// From an IplImage with one channel; empty for any other.
    explicit CTavixImage8(void *image);
    ~CTavixImage8() override;

    using CTavixImage::GetImagePtr;
    using CTavixImage::PaintImage;
    using CTavixImage::Resize;
    unsigned char *GetImagePtr(int x1, int y1, int x2, int y2) const override;
    void SetImagePtr(void *image) override;
    void SetImagePtr(int width, int height, const unsigned char *bytes) override;
    int SaveImage(const char *path) const override;
    void *GetIplImage() const override;
    int Create(int width, int height) override;
    void PaintImage(CDC *dc, const CRect &rect) const override;
    void Resize(int width, int height, int mode) override;
    void CropImage(int x1, int y1, int x2, int y2) override;
    void GetHistogramData(ColorLevel level, long *histogram) const override;
    void AutoContrast() override;
    CTavixImage8 *GetImage8() const override;
    CTavixImage24 *GetImage24() const override;
    void Gray() override {}
    void Emboss() override;
    void Roberts() override;
    void Prewitt() override;
    void LogEdge() override;
    void HistoEqualize() override;
    void HistoNormalize() override;
    void HistoLog() override;
    void HistoRoot() override;
    void HistoStretch() override;
    CTavixImage *Clone() const override;

    /// As GetImagePtr with a rectangle; parts outside the image, and the padding, are fill.
    virtual unsigned char *GetImagePtr(int x1, int y1, int x2, int y2, unsigned char fill) const;
    /// As CropImage; parts outside the image, and the padding, become fill.
    virtual void CropImage(int x1, int y1, int x2, int y2, unsigned char fill);
    /// A deep copy of the pixels into this object; this object's mask stays.
    virtual CTavixImage8 &operator=(const CTavixImage8 &source);
    /// Image arithmetic, pixel by pixel, with this image as left operand and result: limited to 0
    /// and 255, quotients rounded to nearest (ties to even) and 0 where the divisor is 0. Padding
    /// is left alone. An image of another size changes nothing. Returns this image.
    virtual CTavixImage8 &operator+(const CTavixImage8 &other);
    virtual CTavixImage8 &operator-(const CTavixImage8 &other);
    virtual CTavixImage8 &operator*(const CTavixImage8 &other);
    virtual CTavixImage8 &operator/(const CTavixImage8 &other);
    virtual CTavixImage8 &operator&(const CTavixImage8 &other);
    virtual CTavixImage8 &operator|(const CTavixImage8 &other);

    /// A new image with the inclusive rectangle, as GetImagePtr copies it; null where that gives
    /// null. The caller deletes it.
    CTavixImage8 *CropImage2(int x1, int y1, int x2, int y2) const;

    /// The byte at y * stride + x, or 0 when that offset lies outside the buffer. Only the offset
    /// is tested: an x beyond the row reads padding or the neighbouring row.
    unsigned char GetPixel(int x, int y) const;
    /// Writes that byte; dropped when the offset lies outside the buffer.
    void SetPixel(int x, int y, unsigned char value);
    /// Sets every byte, padding included.
    void Fill(unsigned char value);
    /// Pastes the source with its top-left at (x, y); what lies right of or below this image is
    /// dropped. With a negative x or y a pixel lands where its linear offset falls, if that lies in
    /// the buffer.
    void Copy(int x, int y, const CTavixImage8 *source);
    void Copy(int x, int y, const CTavixImage8 &source) { Copy(x, y, &source); }

    /// Takes a snapshot of the region's rectangles as mask; null changes nothing.
    void SetROI(HRGN region);
    void ReleaseROI();
    /// 1 when a mask is set.
    int IsROI() const;
    /// 1 when a rectangle of the mask has left <= x <= right and top <= y <= bottom: its exclusive
    /// right and bottom edges count as inside. 0 without a mask.
    int PtInROI(int x, int y) const;

    /// Number of pixels equal to the level, and from low to high, both included.
    long GetGrayLevelCount(unsigned char level) const;
    long GetGrayLevelCountAsRange(unsigned char low, unsigned char high) const;
    /// Mean of all bytes of the buffer, padding included; callers rely on that. 0 for an image
    /// without pixels.
    double GetGrayLevelAverage() const;

    /// Otsu's threshold of the whole image, as cvThreshold computes it, truncated; 0 for an image
    /// without pixels. The image is not changed.
    /// Otsu, "A threshold selection method from gray-level histograms", 1979.
    long GetAutoThreshold() const;
    /// The same of the inclusive rectangle, as CropImage2 cuts it out; 0 where that gives null.
    long GetAutoThreshold(int x1, int y1, int x2, int y2) const;
    /// Unfinished: both give 0, and callers rely on that.
    long GetAutoPolygonThreshold(const POINT *points, int count) const;
    long GetAutoEllipseThreshold(int x1, int y1, int x2, int y2) const;
    /// Makes the image two-level at Otsu's threshold: 255 above it, else 0. The value given is
    /// handed to OpenCV together with the Otsu flag and so has no effect; callers rely on that.
    void Threshold(int threshold);
    /// Threshold for each of columns x rows tiles by itself. The last tile of a row or column takes
    /// the remaining pixels. Each tile reaches one pixel into the next ones, which are done later,
    /// and at the image's edge one beyond, where the pixels count as 0. Unchanged when columns or
    /// rows are below 1.
    void SmartThreshold(int columns, int rows);
    /// Mode 1 sets every byte from low to high, both included, to 255 and the others to 0; any
    /// other mode the other way round. Padding included.
    void DoubleThreshold(int low, int high, int mode);
    /// Makes each row two-level at the mean of its rising edges: runs of 5 or more pixels L, each
    /// brighter than the one before, that rise by more than 2 * L; the row's threshold is the mean
    /// of their mean values, each truncated. 255 above it, else 0. A row without such a run becomes
    /// fill. Unchanged when memory runs out.
    void AdaptiveThreshold(unsigned char fill);
    /// Sets the pixels from low to high, both included, to value.
    void Marking(unsigned char low, unsigned char high, unsigned char value);
    /// Sets the inclusive rectangle to value; corners may be exchanged. Nothing happens when a
    /// coordinate is negative, an x above the width or a y above the height. x = width is accepted
    /// and writes the byte at that offset, which is padding or the next row's first pixel; callers
    /// rely on that. What lies beyond the buffer is dropped.
    void Marking(int x1, int y1, int x2, int y2, unsigned char value);
    /// Sets the pixels that differ from the reference by more than the tolerance to mark (its low 8
    /// bits), and all others to 0, or to 255 where mark is 0. Nothing happens when the buffers'
    /// lengths differ.
    void MarkingDiffer(const CTavixImage8 &reference, int mark, int tolerance);

    /// Thins the bright (not 0) parts of a two-level image to lines one pixel wide that keep their
    /// connections: Zhang and Suen, "A fast parallel algorithm for thinning digital patterns",
    /// 1984. Outside lies 0.
    void Thinning();
    /// The same for edge images: Guo and Hall, "Parallel thinning with two-subiteration
    /// algorithms", 1989, which also thins diagonal lines that are two pixels wide.
    void EdgeThinning();
    /// Appends the borders of the bright (not 0) parts, 8-connected, outer ones and those of holes,
    /// each as its pixels in order, and returns their number; 0 when memory runs out.
    /// Suzuki and Abe, "Topological structural analysis of digitized binary images by border
    /// following", 1985.
    int ContourTrace(TavixArray::CPointArrayArray &contours) const;

    /// Blob analysis. Blobs are 4-connected regions of pixels of one class: equal to a value; above
    /// a threshold for a value of 255, and up to it for 0 (no pixel for any other value); in a band
    /// of levels; or of a listed level. The band and the listed forms also keep to the mask, where
    /// one is set. The members with a rectangle (inclusive; cut to the image) begin blobs at pixels
    /// in it, from where they may lead out. Results come in raster order of the blobs' first pixels
    /// there. See analysis/blob_engine.h for the rules.
    ///
    /// By minCount and maxCount blobs are accepted by their number of pixels, and a trace stops at
    /// maxCount: such a blob counts, and what remains of it is traced anew, also from pixels that
    /// were visited. By minW to maxH they are accepted by minW <= right - left <= maxW - 1 and minH
    /// <= bottom - top <= maxH - 1; a blob of one pixel when minW and minH are exactly 1.
    ///
    /// All members return 0, with their output as it was, without a buffer, when one of the first
    /// two bounds is below 1, for a rectangle that is reversed or outside the image, and when
    /// memory runs out. With a threshold, a pixel of a blob that comes after its first one is a
    /// blob of one pixel once more when no neighbour is equal to value, raw; callers rely on that.

    /// The number of blobs.
    int GetBlobList(int value, long minCount, long maxCount) const;
    int GetRangeBlobList(unsigned char low, unsigned char high, long minCount, long maxCount) const;

    /// Append a list of its pixels for each blob, in the order of the walk, and return the number
    /// of lists in the array.
    int GetBlobList(int value, long minCount, long maxCount,
                    TavixArray::CPointArrayArray &blobs) const;
    int GetBlobList(int threshold, int value, long minCount, long maxCount,
                    TavixArray::CPointArrayArray &blobs) const;
    int GetBlobList(int x1, int y1, int x2, int y2, int value, long minW, long maxW, long minH,
                    long maxH, TavixArray::CPointArrayArray &blobs) const;
    int GetBlobList(int x1, int y1, int x2, int y2, int threshold, int value, long minCount,
                    long maxCount, TavixArray::CPointArrayArray &blobs) const;
    int GetRangeBlobList(unsigned char low, unsigned char high, long minCount, long maxCount,
                         TavixArray::CPointArrayArray &blobs) const;
    int GetRangeBlobList(const TavixArray::CSortByteArray &levels, long minCount, long maxCount,
                         TavixArray::CPointArrayArray &blobs) const;
    /// The pixels also lie in the ellipse inscribed between the centres of the rectangle's corner
    /// pixels, and no mask matters.
    int GetRangeBlobListInEllipseROI(int x1, int y1, int x2, int y2, unsigned char low,
                                     unsigned char high, long minCount, long maxCount,
                                     TavixArray::CPointArrayArray &blobs) const;
    /// The same with the level of each pixel, parameter 0.
    int GetRangeBlobList(unsigned char low, unsigned char high, long minW, long maxW, long minH,
                         long maxH, TavixArray::CPixelArrayArray &blobs) const;
    int GetRangeBlobList(const TavixArray::CSortByteArray &levels, long minW, long maxW, long minH,
                         long maxH, TavixArray::CPixelArrayArray &blobs) const;

    /// Replace the array by a record for each blob and return their number.
    int GetBlobList(int value, long minW, long maxW, long minH, long maxH,
                    CBlobRectArray &blobs) const;
    int GetBlobList(int threshold, int value, long minW, long maxW, long minH, long maxH,
                    CBlobRectArray &blobs) const;
    int GetBlobList(int x1, int y1, int x2, int y2, int value, long minW, long maxW, long minH,
                    long maxH, CBlobRectArray &blobs) const;
    int GetBlobList(int x1, int y1, int x2, int y2, int threshold, int value, long minW, long maxW,
                    long minH, long maxH, CBlobRectArray &blobs) const;
    int GetRangeBlobList(unsigned char low, unsigned char high, long minW, long maxW, long minH,
                         long maxH, CBlobRectArray &blobs) const;
    int GetRangeBlobList(const TavixArray::CSortByteArray &levels, long minW, long maxW, long minH,
                         long maxH, CBlobRectArray &blobs) const;

    int GetPieceBlobAtPoint(int x, int y, unsigned char tolerance,
                            TavixArray::CPointArray &points) const override;
    /// The same with the levels low to high, at most maxCount pixels (0: no limit). When (x, y) is
    /// not of such a level, 0 with the points as they were.
    int GetPieceBlobAtPoint(int x, int y, int low, int high, int maxCount,
                            TavixArray::CPointArray &points) const;

    /// The mean position of the pixels above the threshold (value 255), or up to it (0), truncated;
    /// (0, 0) without such pixels. The second form looks at the rectangle, as the blob members do.
    void GetGravityPoint(int threshold, unsigned char value, long *cx, long *cy) const;
    void GetGravityPoint(int x1, int y1, int x2, int y2, int threshold, unsigned char value,
                         long *cx, long *cy) const;
    /// Match with the ellipse of 255 on 0 that fills the image; 0 where none can be made.
    double GetRoundness() const;

private:
    struct FreeDeleter {
        void operator()(void *block) const { std::free(block); }
    };

    std::unique_ptr<void, FreeDeleter> m_roiData; ///< A RGNDATA.
    const RECT *m_roiRects = nullptr;
    std::int32_t m_roiRectCount = 0;
};
