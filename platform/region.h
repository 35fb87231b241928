/// Regions: sets of pixels behind an opaque handle, made of rectangles with exclusive right and
/// bottom edges. They need no application object and no display.
///
/// Every function accepts a null handle and answers with its failure value. Whoever creates a
/// region deletes it with DeleteObject; RegionHandle does so by itself.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <memory>

/// An opaque region.
using HRGN = struct HRGN__ *;

/// Fill modes of polygons.
inline constexpr int ALTERNATE = 1; ///< Even-odd rule.
inline constexpr int WINDING = 2;   ///< Non-zero winding rule.

/// Ways of CombineRgn.
inline constexpr int RGN_AND = 1;
inline constexpr int RGN_OR = 2;
inline constexpr int RGN_XOR = 3;
inline constexpr int RGN_DIFF = 4;
inline constexpr int RGN_COPY = 5;

/// Kinds of region that CombineRgn reports.
inline constexpr int RGN_ERROR = 0;
inline constexpr int NULLREGION = 1;    ///< No pixel.
inline constexpr int SIMPLEREGION = 2;  ///< One rectangle.
inline constexpr int COMPLEXREGION = 3; ///< Several rectangles.

/// The largest magnitude of a coordinate in a region (27 bits); functions that would make a region
/// beyond it fail.
inline constexpr LONG MAX_REGION_COORDINATE = (1 << 27) - 1;

constexpr bool IsRegionCoordinate(LONG coordinate) {
    return (coordinate >= -MAX_REGION_COORDINATE) & (coordinate <= MAX_REGION_COORDINATE);
}
constexpr bool IsRegionPoint(const POINT &point) {
    return IsRegionCoordinate(point.x) && IsRegionCoordinate(point.y);
}

/// The pixels left <= x < right, top <= y < bottom; reversed edges are exchanged.
/// Null when a coordinate is out of range.
TAVIX_API HRGN CreateRectRgn(int left, int top, int right, int bottom);

/// The pixels whose centre lies inside the closed polygon of count points by the fill mode
/// (ALTERNATE or WINDING). Null for a null pointer, fewer than 2 points, another mode, a
/// coordinate out of range, and when memory runs out.
TAVIX_API HRGN CreatePolygonRgn(const POINT *points, int count, int fillMode);

/// Sets target to source1 combined with source2 by a RGN_ mode; source2 is not used by RGN_COPY.
/// The target must exist and may be one of the sources. Returns the kind of the result, or
/// RGN_ERROR with the target unchanged.
TAVIX_API int CombineRgn(HRGN target, HRGN source1, HRGN source2, int mode);

/// Writes the region's data (header and rectangles, sorted by top, then left) to data, which holds
/// size bytes. Returns the number of bytes needed when data is null, the size given when it
/// sufficed, and 0 (nothing written) when it did not.
TAVIX_API DWORD GetRegionData(HRGN region, DWORD size, RGNDATA *data);

/// 1 when the pixel (x, y) belongs to the region, else 0.
TAVIX_API int PtInRegion(HRGN region, int x, int y);

/// 1 when both regions hold exactly the same pixels, else 0.
TAVIX_API int EqualRgn(HRGN a, HRGN b);

/// Destroys the region. Returns 1, or 0 for null.
TAVIX_API int DeleteObject(HRGN region);

struct RegionDeleter {
    void operator()(HRGN region) const { DeleteObject(region); }
};

/// A region that is deleted with its owner.
using RegionHandle = std::unique_ptr<HRGN__, RegionDeleter>;
