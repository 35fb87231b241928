// Blob lists of grey images. Every pixel of the class, in raster order, is the seed of a trace
// (blob_tracer.h), also one that an earlier trace visited; such a seed finds no new neighbours
// unless a cap cut the earlier trace short. A trace of one point is a blob only when the seed has no
// neighbour of the class at all: that keeps visited seeds from being counted again. Pixels are
// 4-connected, and the image's edge ends a blob.

#include "TAVIX20/analysis/blob_tracer.h"
#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image8.h"

#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::int64_t NO_CAP = std::numeric_limits<std::int64_t>::max();

/// The map, allocated if there is none yet and cleared; null when memory runs out.
unsigned char *ClearVisitMap(std::unique_ptr<unsigned char[]> &map, int imageLen) {
    const auto size = static_cast<std::size_t>(imageLen);
    if (!map)
        map.reset(new (std::nothrow) unsigned char[size]);
    if (map)
        std::memset(map.get(), 0, size);
    return map.get();
}

tavix::GreyView View(const CTavixImage8 &image) {
    return {image.GetImagePtr(), image.GetWidth(), image.GetHeight(),
            static_cast<std::ptrdiff_t>(tavix::RowStride(8, image.GetWidth()))};
}

auto EqualTo(int value) {
    return [value](unsigned char pixel) { return pixel == value; };
}

bool IsWithin(long measured, long min, long max) {
    return min <= measured && measured <= max;
}

} // namespace

int CTavixImage8::GetBlobList(int value, long minCount, long maxCount) {
    if (m_imageLen == 0 || minCount < 1 || maxCount < 1)
        return 0;
    unsigned char *const visitMap = ClearVisitMap(m_visitMap, m_imageLen);
    if (!visitMap)
        return 0;
    tavix::BlobTracer tracer(View(*this), visitMap, EqualTo(value));
    int count = 0;
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (!tracer.IsSeed(x, y))
                continue;
            const tavix::BlobTrace blob = tracer.Trace(x, y, maxCount);
            if (blob.IsOnePoint() ? minCount == 1 && !tracer.HasNeighbour(x, y)
                                  : IsWithin(blob.pixelCount, minCount, maxCount))
                ++count;
        }
    }
    return count;
}

int CTavixImage8::GetBlobList(int value, long minW, long maxW, long minH, long maxH,
                              CBlobRectArray &blobs) {
    if (m_imageLen == 0 || minW < 1 || maxW < 1)
        return 0;
    unsigned char *const visitMap = ClearVisitMap(m_visitMap, m_imageLen);
    if (!visitMap)
        return 0;
    tavix::BlobTracer tracer(View(*this), visitMap, EqualTo(value));
    CBlobRectArray found;
    int count = 0;
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            // Traces are not cut short here, so a visited seed would only be refused.
            if (!tracer.IsSeed(x, y) || tracer.IsVisited(x, y))
                continue;
            const tavix::BlobTrace blob = tracer.Trace(x, y, NO_CAP);
            const long width = blob.right - blob.left;
            const long height = blob.bottom - blob.top;
            if (blob.IsOnePoint() ? minW == 1 && minH == 1
                                  : minW <= width && width < maxW && minH <= height && height < maxH) {
                found.Add(blob.left, blob.top, blob.right, blob.bottom, blob.pixelCount);
                ++count;
            }
        }
    }
    if (found.GetElementCount() != count)
        return 0;
    found.SetCount(count);
    blobs = std::move(found);
    return count;
}
