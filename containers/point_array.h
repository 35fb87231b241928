/// CPointArray: a growable list of points that also serves as a polygon.
#pragma once

#include "TAVIX20/containers/point_block.h"
#include "TAVIX20/containers/record_array.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"
#include "TAVIX20/platform/region.h"

#include <span>

class CTavixImage8;

namespace TavixArray {

class CPointArrayArray;

namespace detail {

/// Field order of point lists, whose memory may be shared.
template <typename T>
struct PointFields {
    std::int32_t m_capacity = 0;
    std::int32_t m_count = 0;
    PointBlock m_block; ///< Holds at least max(capacity, count) points.
};

} // namespace detail

/// The largest and smallest Feret diameter of a point set: distances between parallel lines that
/// touch its pixels, each a square of side 1. Angles are directions of measuring in degrees,
/// counter-clockwise as the picture is seen, 0 <= angle < 180.
struct _stDiameterInfo {
    double maxDiameter;
    double maxAngle;
    tagPOINT maxPoint1; ///< The two pixel corners that lie farthest apart.
    tagPOINT maxPoint2;
    double minDiameter;
    double minAngle;
};

/// Points in insertion order. Indices are trusted: 0 <= i < GetElementCount(), or what SetSize made
/// room for. The array carries no lock.
class TAVIX_API CPointArray : private detail::RecordArray<tagPOINT, detail::PointFields> {
public:
    CPointArray() : CPointArray(detail::DEFAULT_CAPACITY) {}
    explicit CPointArray(int capacity) : RecordArray(capacity) {}
    /// A copy of count points.
    CPointArray(const tagPOINT *points, int count);
    /// Exactly these points, with a capacity of as many.
    explicit CPointArray(std::span<const tagPOINT> points)
        : RecordArray(points.data(), static_cast<std::int32_t>(points.size())) {}
    /// The points of the block, as many as it has room for.
    explicit CPointArray(detail::PointBlock &&block) : RecordArray(std::move(block)) {}

    /// Appends count points in order; nothing for count <= 0.
    virtual void AddPoints(const tagPOINT *points, int count);
    /// Appends the outline of the region as one polygon of pixel corners: parts run clockwise,
    /// holes counter-clockwise, joined by ways that are gone there and back, so that
    /// CreatePolygonRgn (and either fill mode) makes the same region of it. Null appends nothing.
    virtual void Add(HRGN region);
    /// Appends the other array's points; an array may be appended to itself.
    virtual void Add(const CPointArray &other);
    /// Appends a point. A full array grows by ten: its capacity becomes the old count + 10.
    virtual void Add(int x, int y);
    /// Appends a point. A full array grows by one: its capacity becomes the new count.
    virtual void Add(const tagPOINT &point);
    using RecordArray::Remove;
    /// Overwrites the point at index after copying the points behind it up by one: inserting n at 1
    /// into a, b, c gives a, n, c, c.
    virtual void Insert(int index, int x, int y);
    virtual void Insert(int index, const tagPOINT &point);
    using RecordArray::GetElementCount;
    using RecordArray::RemoveAll;
    using RecordArray::SetElementIndex;
    using RecordArray::SetSize;
    using RecordArray::operator[];
    virtual void SetAt(int index, int x, int y);
    virtual void SetAt(int index, const tagPOINT &point);
    /// Index of a point equal to (x, y), or -1. With threaded 0, or fewer points than workers, the
    /// first one at or after start. Otherwise the worker threads search equal slices, start is not
    /// used, and among several equal points any of them may be reported.
    virtual int Find(int x, int y, int start, int threaded) const;
    virtual int Find(const tagPOINT &point, int start, int threaded) const;
    virtual void ReverseElements();
    /// Ascending by x; equal x keep their order.
    virtual void SortX();
    /// Ascending by y; equal y keep their order.
    virtual void SortY();

    /// 1 when both hold equal points in the same order, else 0.
    int operator==(const CPointArray &other) const;
    /// 1 only when the counts are equal and some point differs. Arrays of different counts give 0
    /// here and with ==; callers rely on that.
    int operator!=(const CPointArray &other) const;
    /// Appends the other array's points to this one.
    CPointArray &operator+(const CPointArray &other);

    tagPOINT &GetAt(int index) { return Record(index); }
    const tagPOINT &GetAt(int index) const { return Record(index); }
    /// The block itself; the array keeps it, and any growth may move it.
    tagPOINT *GetBufPtr() { return m_block.data(); }
    const tagPOINT *GetBufPtr() const { return m_block.data(); }
    /// A copy of the points that the caller frees with delete[]; null when the array is empty or
    /// memory runs out.
    tagPOINT *GetPointPtr() const;

    /// Smallest and largest coordinates, both inclusive; (0, 0, 0, 0) without points.
    CRect GetBounds() const;
    static CRect GetBounds(const tagPOINT *points, int count);
    /// Mean of the coordinates, rounded to nearest (halves away from 0); (0, 0) without points.
    tagPOINT CenterPoint() const;
    /// Mean of the coordinates, truncated toward 0; 0 without points.
    int GetAverageX() const;
    int GetAverageY() const;
    /// Index of the first point equal to (x, y), or -1.
    int IsPoint(int x, int y) const;
    /// Removes the first point equal to (x, y), if there is one.
    void RemovePoint(int x, int y);
    void Offset(int dx, int dy);
    /// Multiplies the coordinates and rounds to nearest (halves away from 0).
    void Scale(double sx, double sy);

    /// The polygon's pixels by the winding rule. The caller deletes the region; null as
    /// ::CreatePolygonRgn gives it.
    HRGN CreatePolygonRgn() const;
    /// 1 when the pixel (x, y) belongs to the polygon's region by the winding rule, else 0.
    int PtInPolygon(int x, int y) const;
    static int PtInPolygon(const tagPOINT *points, int count, int x, int y);

    /// Keeps the points that lie in one of the rectangles, all edges inclusive.
    void SetROI(const tagRECT *rects, int count);
    /// The same with the region's rectangles: their exclusive right and bottom edges count as
    /// inside here. A null region changes nothing.
    void SetROI(HRGN region);

    /// Replaces the points by those of a text file, one "x,y" a line; lines with another number of
    /// fields are skipped. Returns 1, or 0 (array unchanged) when the file cannot be opened.
    int OpenFile(const char *path);
    /// Writes one line "x,y" a point, ended by CR LF. Returns 1, or 0 when the file cannot be
    /// opened.
    int SaveFile(const char *path) const;

    /// The shape members take the points as the pixels of blobs, in any order, repeated or not.
    /// Parts are 4-connected, holes 8-connected. Points beyond MAX_REGION_COORDINATE are not seen.

    /// Replaces border by the pixels along the outer border of the part that comes first in raster
    /// order: clockwise from its top-left pixel, each an 8-neighbour of the one before, closed; a
    /// line one pixel wide is run along both ways. Returns their number; 0, and border as it was,
    /// without points.
    int TraceBorder(CPointArray &border) const;
    /// The same for the part that holds the pixel (x, y); 0, and border as it was, when none does.
    int GetTraceBorderPoint(int x, int y, CPointArray &border) const;
    /// Appends the pixels of all holes; returns their number.
    int FillInsidePoints();
    /// Replaces the list by the pixels of each hole, in raster order; returns the number of holes.
    /// 0, and the list as it was, when a hole has more than 2^31 - 1 pixels.
    int GetHoleArray(CPointArrayArray &holes) const;
    /// A new 8-bit image as large as the bounds: foreground at the points, background elsewhere,
    /// the bounds' top-left corner at (0, 0). The caller deletes it. Null without points or when
    /// the image would be too large.
    CTavixImage8 *GetImage(unsigned char foreground, unsigned char background) const;
    /// Circularity of ISO 9276-6, sqrt(4 pi area) / perimeter, of the largest part with its holes
    /// filled: 1 for a disc, less for anything else. 0 without points. The perimeter is Vossepoel
    /// and Smeulders' estimate (1982).
    double GetRoundness() const;
    /// Compactness of ISO 9276-6, sqrt(4 area / pi) / largest Feret diameter, of the largest part
    /// with its holes filled: 1 for a disc, less for anything else. 0 without points.
    double GetRoundness2() const;
    /// The Feret diameters of the whole point set, by rotating calipers over the convex hull
    /// (Toussaint 1983). Returns 1, or 0 with info as it was without points.
    int GetDiameterInfo(_stDiameterInfo &info) const;

private:
    [[maybe_unused]] std::int32_t m_extra = 0; ///< Free for the owner of the array; copied with it.
};

} // namespace TavixArray
