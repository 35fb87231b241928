// Regions over QRegion. Polygons are filled by the same rule as on the platform the interface comes
// from: a pixel belongs to one when its centre does, with the left and top edges inside. QRegion
// has that rule, too, but takes a thousand times as long for large polygons.

#include "TAVIX20/platform/region.h"

#include "TAVIX20/platform/run_region.h"

#include <QRegion>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

struct HRGN__ {
    QRegion pixels;
};

namespace {

int KindOf(const QRegion &region) {
    if (region.isEmpty())
        return NULLREGION;
    return region.rectCount() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

/// The same pixels in the fewest bands: QRegion's operations may leave two bands with the same
/// columns one below the other, and then a rectangle would not be told as one.
QRegion Coalesced(const QRegion &region) {
    std::vector<QRect> rects;
    std::size_t lastBand = 0; // Where the last band kept begins.
    for (auto first = region.begin(); first != region.end();) {
        const auto end = std::find_if(
            first, region.end(), [first](const QRect &rect) { return rect.top() != first->top(); });
        const bool repeatsLast =
            !rects.empty() && rects.back().bottom() + 1 == first->top() &&
            std::equal(first, end, rects.begin() + static_cast<std::ptrdiff_t>(lastBand),
                       rects.end(), [](const QRect &a, const QRect &b) {
                           return a.left() == b.left() && a.right() == b.right();
                       });
        if (repeatsLast) {
            for (std::size_t i = lastBand; i < rects.size(); ++i)
                rects[i].setBottom(first->bottom());
        } else {
            lastBand = rects.size();
            rects.insert(rects.end(), first, end);
        }
        first = end;
    }
    QRegion coalesced;
    coalesced.setRects(rects.data(), static_cast<int>(rects.size()));
    return coalesced;
}

RECT ToExclusiveRect(const QRect &rect) {
    return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

} // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    if (!IsRegionPoint({left, top}) || !IsRegionPoint({right, bottom}))
        return nullptr;
    const auto [x1, x2] = std::minmax(left, right);
    const auto [y1, y2] = std::minmax(top, bottom);
    return new HRGN__{QRegion(x1, y1, x2 - x1, y2 - y1)};
}

HRGN CreatePolygonRgn(const POINT *points, int count, int fillMode) {
    if (!points || count < 2 || (fillMode != ALTERNATE && fillMode != WINDING))
        return nullptr;
    const std::span polygon(points, static_cast<std::size_t>(count));
    if (!std::ranges::all_of(polygon, IsRegionPoint))
        return nullptr;
    constexpr LONG limit = MAX_REGION_COORDINATE;
    try {
        return tavix::FillPolygons({&polygon, 1}, fillMode, {-limit, -limit, limit, limit})
            .CreateRegion();
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

HRGN tavix::RunRegion::CreateRegion() const {
    std::vector<QRect> rects;
    rects.reserve(m_runs.size());
    for (const RECT &rect : Rects())
        rects.emplace_back(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    auto region = std::make_unique<HRGN__>();
    region->pixels.setRects(rects.data(), static_cast<int>(rects.size()));
    return region.release();
}

int CombineRgn(HRGN target, HRGN source1, HRGN source2, int mode) {
    if (!target || !source1 || (!source2 && mode != RGN_COPY))
        return RGN_ERROR;
    switch (mode) {
    case RGN_AND:
        target->pixels = source1->pixels & source2->pixels;
        break;
    case RGN_OR:
        target->pixels = source1->pixels | source2->pixels;
        break;
    case RGN_XOR:
        target->pixels = source1->pixels ^ source2->pixels;
        break;
    case RGN_DIFF:
        target->pixels = source1->pixels - source2->pixels;
        break;
    case RGN_COPY:
        target->pixels = source1->pixels;
        break;
    default:
        return RGN_ERROR;
    }
    target->pixels = Coalesced(target->pixels);
    return KindOf(target->pixels);
}

DWORD GetRegionData(HRGN region, DWORD size, RGNDATA *data) {
    if (!region)
        return 0;
    const auto count = static_cast<DWORD>(region->pixels.rectCount());
    const DWORD rectBytes = count * static_cast<DWORD>(sizeof(RECT));
    const DWORD needed = static_cast<DWORD>(sizeof(RGNDATAHEADER)) + rectBytes;
    if (!data)
        return needed;
    if (size < needed)
        return 0;

    const RGNDATAHEADER header{static_cast<DWORD>(sizeof(RGNDATAHEADER)), RDH_RECTANGLES, count,
                               rectBytes, ToExclusiveRect(region->pixels.boundingRect())};
    auto *out = reinterpret_cast<char *>(data);
    std::memcpy(out, &header, sizeof header);
    out += sizeof header;
    for (const QRect &piece : region->pixels) {
        const RECT rect = ToExclusiveRect(piece);
        std::memcpy(out, &rect, sizeof rect);
        out += sizeof rect;
    }
    return size;
}

int PtInRegion(HRGN region, int x, int y) {
    return region && region->pixels.contains(QPoint(x, y)) ? 1 : 0;
}

int EqualRgn(HRGN a, HRGN b) {
    return a && b && (a->pixels ^ b->pixels).isEmpty() ? 1 : 0;
}

int DeleteObject(HRGN region) {
    const int existed = region ? 1 : 0;
    delete region;
    return existed;
}
