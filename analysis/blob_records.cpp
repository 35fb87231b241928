#include "TAVIX20/analysis/blob_records.h"

#include "TAVIX20/analysis/blob_engine.h"
#include "TAVIX20/containers/blob_rect_array.h"

#include <algorithm>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/blob_records.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

using Component = RunLabeling::Component;
typedef std::int32_t Sides __attribute__((vector_size(4 * sizeof(std::int32_t))));
typedef long RecordSides __attribute__((vector_size(4 * sizeof(long))));

HWY_INLINE Sides SidesOf(const Component &component) {
    Sides sides;
    std::memcpy(&sides, &component.box, sizeof sides);
    return sides;
}

/// A bound as one of 32 bits, with room for a step on each side: extents stay below.
HWY_INLINE std::int32_t Limited(long bound) {
    constexpr long most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(bound, 1 - most, most));
}

std::size_t Choose(const Component *components, std::uint32_t count, const SizeBounds &bounds,
                   std::uint32_t *accepted) {
    // Left - right and top - bottom, then the same with the other sign, are to be at most this.
    const auto slack = static_cast<std::int32_t>(bounds.slack);
    const Sides limits{slack - Limited(bounds.minWidth), slack - Limited(bounds.minHeight),
                       Limited(bounds.maxWidth) - 1, Limited(bounds.maxHeight) - 1};
    const bool takesOnePixel = bounds.TakesOnePixel();
    std::size_t size = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Sides sides = SidesOf(components[i]);
        const Sides negative = sides + __builtin_shufflevector(sides, sides, 2, 3, 0, 1);
        const Sides extents = (negative ^ Sides{0, 0, -1, -1}) - Sides{0, 0, -1, -1};
        const Sides isBeyond = extents > limits;
        std::int64_t beyond[2];
        std::memcpy(beyond, &isBeyond, sizeof beyond);
        const bool isOnePixel = components[i].pixelCount == 1;
        const bool isAccepted =
            (isOnePixel & takesOnePixel) | (!isOnePixel & ((beyond[0] | beyond[1]) == 0));
        accepted[size] = i;
        size += static_cast<std::size_t>(isAccepted & (components[i].parent == i));
    }
    return size;
}

/// Sets the fields where they are: a record made elsewhere would be copied in larger pieces than it
/// was written in, and each such load waits for the stores.
HWY_INLINE void SetRecord(const RecordSides &sides, long pixelCount, _stBlobRect &record) {
    // Long lists lie beyond the nearer caches: the memory of later records is on its way.
    constexpr int ahead = 48;
    __builtin_prefetch(&record + ahead, 1);
    std::memcpy(&record.left, &sides, sizeof sides);
    record.pixelCount = pixelCount;
    const RecordSides others{};
    std::memcpy(&record.value1, &others, sizeof others);
}

HWY_INLINE void SetRecord(const Component &component, _stBlobRect &record) {
    const Sides flip{0, 0, -1, -1};
    SetRecord(__builtin_convertvector((SidesOf(component) ^ flip) - flip, RecordSides),
              component.pixelCount, record);
}

void SetRecords(const Component *components, const std::uint32_t *accepted, std::size_t count,
                _stBlobRect *records) {
    for (std::size_t i = 0; i < count; ++i)
        SetRecord(components[accepted[i]], records[i]);
}

void SetAllRecords(const RunLabeling &labeling, const std::uint32_t *accepted, std::size_t count,
                   _stBlobRect *records) {
    const Component *const components = labeling.Components().data();
    const std::int32_t *const firstColumns = labeling.FirstColumns();
    const std::uint32_t *const acceptedEnd = accepted + count;
    const std::int32_t *column = labeling.Lone().columns.data();
    const std::int32_t *const columns = column;
    std::int32_t y = 0;
    for (const std::size_t end : labeling.Lone().rowEnds) {
        const auto setLone = [&] {
            const long x = *column++;
            SetRecord(RecordSides{x, y, x, y}, 1, *records++);
        };
        const std::int32_t *const rowEnd = columns + end;
        for (; accepted < acceptedEnd && components[*accepted].box.Top() == y; ++accepted) {
            while (column < rowEnd && *column < firstColumns[*accepted])
                setLone();
            SetRecord(components[*accepted], *records++);
        }
        while (column < rowEnd)
            setLone();
        ++y;
    }
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(Choose);
HWY_EXPORT(SetRecords);
HWY_EXPORT(SetAllRecords);

std::size_t ChooseComponents(const RunLabeling &labeling, const SizeBounds &bounds,
                             std::uint32_t *accepted) {
    const auto components = labeling.Components();
    return HWY_DYNAMIC_DISPATCH(Choose)(
        components.data(), static_cast<std::uint32_t>(components.size()), bounds, accepted);
}

void WriteAllRecords(const RunLabeling &labeling, const std::uint32_t *accepted, std::size_t count,
                     _stBlobRect *records) {
    HWY_DYNAMIC_DISPATCH(SetAllRecords)(labeling, accepted, count, records);
}

void WriteRecords(const RunLabeling &labeling, const std::uint32_t *accepted, std::size_t count,
                  _stBlobRect *records) {
    HWY_DYNAMIC_DISPATCH(SetRecords)(labeling.Components().data(), accepted, count, records);
}

} // namespace tavix
#endif
