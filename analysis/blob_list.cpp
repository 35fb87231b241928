// Blob lists of grey images. Every pixel of the class, in raster order, is the seed of a trace
// (blob_tracer.h), also one that an earlier trace visited; such a seed finds no new neighbours
// unless a cap cut the earlier trace short. A trace of one point is a blob only when the seed has
// no neighbour of the class at all: that keeps visited seeds from being counted again. Pixels are
// 4-connected, and the image's edge ends a blob.

#include "TAVIX20/analysis/blob_tracer.h"
#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image8.h"

#include <limits>
#include <new>

namespace {

constexpr std::int64_t NO_CAP = std::numeric_limits<std::int64_t>::max();

/// The image's visit map, allocated if there is none yet; null when memory runs out.
unsigned char *Provide(std::unique_ptr<unsigned char[]> &map, const CTavixImage8 &image) {
    if (!map)
        map.reset(new (std::nothrow) unsigned char[tavix::BlobTracer::MapSize(image.GetWidth(),
                                                                              image.GetHeight())]);
    return map.get();
}

tavix::GreyView View(const CTavixImage8 &image) {
    return {image.GetImagePtr(), image.GetWidth(), image.GetHeight(),
            static_cast<std::ptrdiff_t>(tavix::RowStride(8, image.GetWidth()))};
}

auto EqualTo(int value) {
    return [value](unsigned char pixel) { return pixel == value; };
}

/// The accepted sizes, right - left and bottom - top; the upper bounds are exclusive.
struct SizeBounds {
    long minWidth;
    long maxWidth;
    long minHeight;
    long maxHeight;

    /// A blob of one point has size 0; it is taken exactly when both lower bounds are 1.
    bool Accept(const tavix::BlobTrace &blob) const {
        if (blob.IsOnePoint())
            return minWidth == 1 && minHeight == 1;
        const long width = blob.right - blob.left;
        const long height = blob.bottom - blob.top;
        return minWidth <= width && width < maxWidth && minHeight <= height && height < maxHeight;
    }
};

} // namespace

int CTavixImage8::GetBlobList(int value, long minCount, long maxCount) {
    if (m_imageLen == 0 || minCount < 1 || maxCount < 1 || !Provide(m_visitMap, *this))
        return 0;
    tavix::BlobTracer tracer(View(*this), m_visitMap.get(), EqualTo(value));
    int count = 0;
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (!tracer.IsOfClass(x, y))
                continue;
            const tavix::BlobTrace blob = tracer.Trace(x, y, maxCount);
            if (blob.IsOnePoint() ? minCount == 1 && !tracer.HasNeighbour(x, y)
                                  : minCount <= blob.pixelCount && blob.pixelCount <= maxCount)
                ++count;
        }
    }
    return count;
}

int CTavixImage8::GetBlobList(int value, long minW, long maxW, long minH, long maxH,
                              CBlobRectArray &blobs) {
    if (m_imageLen == 0 || minW < 1 || maxW < 1 || !Provide(m_visitMap, *this))
        return 0;
    const SizeBounds bounds{minW, maxW, minH, maxH};
    tavix::BlobTracer tracer(View(*this), m_visitMap.get(), EqualTo(value));
    CBlobRectArray found;
    int count = 0;
    // Traces are not cut short here, so a visited seed would only be refused: it is skipped, and a
    // trace of one point has no neighbour of the class.
    for (int y = 0; y < m_height; ++y) {
        for (int x = tracer.FindUnvisited(0, y); x < m_width; x = tracer.FindUnvisited(x + 1, y)) {
            const tavix::BlobTrace blob = tracer.Trace(x, y, NO_CAP);
            if (bounds.Accept(blob)) {
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
