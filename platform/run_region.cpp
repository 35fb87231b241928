// Two sets are combined band by band: wherever a band of either begins or ends, a new one may
// begin, and one sweep over the runs of both makes its row. Rows that only one set has go as they
// are.

#include "TAVIX20/platform/run_region.h"

#include <algorithm>
#include <limits>

namespace tavix {

namespace {

constexpr LONG NOWHERE = std::numeric_limits<LONG>::max();

// The rules write the new row behind what stands at `out`, which has room for as many runs as both
// rows have together, and return its end. What one row has alone is copied run by run in tight
// loops: most runs of a picture with many shapes are not touched by the next shape.

struct United {
    static constexpr bool KEEPS_SECOND_ALONE = true;

    static PixelRun *Write(std::span<const PixelRun> first, std::span<const PixelRun> second,
                           PixelRun *out) {
        auto a = first.begin();
        for (auto b = second.begin(); b != second.end();) {
            while (a != first.end() && a->right < b->left)
                *out++ = *a++;
            PixelRun merged = *b++;
            for (bool grows = true; grows;) {
                grows = false;
                for (; a != first.end() && a->left <= merged.right; ++a, grows = true)
                    merged = Around(merged, *a);
                for (; b != second.end() && b->left <= merged.right; ++b, grows = true)
                    merged = Around(merged, *b);
            }
            *out++ = merged;
        }
        return std::copy(a, first.end(), out);
    }

private:
    static PixelRun Around(const PixelRun &a, const PixelRun &b) {
        return {std::min(a.left, b.left), std::max(a.right, b.right)};
    }
};

struct Subtracted {
    static constexpr bool KEEPS_SECOND_ALONE = false;

    static PixelRun *Write(std::span<const PixelRun> first, std::span<const PixelRun> second,
                           PixelRun *out) {
        auto b = second.begin();
        for (PixelRun run : first) {
            while (b != second.end() && b->right <= run.left)
                ++b;
            for (auto cut = b; cut != second.end() && cut->left < run.right; ++cut) {
                if (run.left < cut->left)
                    *out++ = {run.left, cut->left};
                run.left = cut->right;
            }
            if (run.left < run.right)
                *out++ = run;
        }
        return out;
    }
};

/// The bands of a region, one after the other, cut wherever the sweep stands.
class Bands {
public:
    explicit Bands(const RunRegion &region) : m_region(region) {}

    bool IsAt(LONG y) const { return !IsDone() && Current().top <= y; }
    /// Where what holds at y changes next.
    LONG ChangeAfter(LONG y) const {
        if (IsDone())
            return NOWHERE;
        return IsAt(y) ? Current().bottom : Current().top;
    }
    std::span<const PixelRun> Runs() const { return m_region.RunsOf(m_index); }
    /// Appends the bands from here on that end at or above y, and goes behind them.
    void CopyWholeBands(LONG y, RunRegion &result) {
        const auto rest = m_region.Bands().subspan(m_index);
        const auto end = std::ranges::upper_bound(rest, y, {}, &RunRegion::Band::bottom);
        const auto count = static_cast<std::size_t>(end - rest.begin());
        result.AppendBands(m_region, m_index, count);
        m_index += count;
    }
    void SkipTo(LONG y) {
        while (!IsDone() && Current().bottom <= y)
            ++m_index;
    }
    bool IsDone() const { return m_index == m_region.Bands().size(); }
    LONG Top() const { return IsDone() ? NOWHERE : Current().top; }

private:
    const RunRegion::Band &Current() const { return m_region.Bands()[m_index]; }

    const RunRegion &m_region;
    std::size_t m_index = 0;
};

template <typename Rule>
RunRegion Combine(const RunRegion &first, const RunRegion &second) {
    RunRegion result;
    Bands a(first);
    Bands b(second);
    LONG y = std::min(a.Top(), b.Top());
    while (!a.IsDone() || (Rule::KEEPS_SECOND_ALONE && !b.IsDone())) {
        if (!b.IsAt(y) && a.Top() >= y)
            a.CopyWholeBands(b.Top(), result);
        if (Rule::KEEPS_SECOND_ALONE && !a.IsAt(y) && b.Top() >= y)
            b.CopyWholeBands(a.Top(), result);
        const LONG end = std::min(a.ChangeAfter(y), b.ChangeAfter(y));
        if (a.IsAt(y) && b.IsAt(y)) {
            const std::span<const PixelRun> runsA = a.Runs();
            const std::span<const PixelRun> runsB = b.Runs();
            result.WriteBand(y, end, runsA.size() + runsB.size(),
                             [&](PixelRun *out) { return Rule::Write(runsA, runsB, out); });
        } else if (a.IsAt(y)) {
            result.AppendBand(y, end, a.Runs());
        } else if (Rule::KEEPS_SECOND_ALONE && b.IsAt(y)) {
            result.AppendBand(y, end, b.Runs());
        }
        y = end;
        a.SkipTo(y);
        b.SkipTo(y);
    }
    return result;
}

} // namespace

void RunRegion::Clear() {
    m_bands.clear();
    m_runs.clear();
}

std::span<const PixelRun> RunRegion::RunsOf(std::size_t band) const {
    const std::size_t first = m_bands[band].firstRun;
    const std::size_t end = band + 1 < m_bands.size() ? m_bands[band + 1].firstRun : m_runs.size();
    return {m_runs.data() + first, end - first};
}

void RunRegion::AppendBand(LONG top, LONG bottom, std::span<const PixelRun> runs) {
    WriteBand(top, bottom, runs.size(),
              [runs](PixelRun *out) { return std::copy(runs.begin(), runs.end(), out); });
}

void RunRegion::AppendBands(const RunRegion &other, std::size_t first, std::size_t count) {
    if (count == 0)
        return;
    // Only the first one may continue the last one here.
    AppendBand(other.m_bands[first].top, other.m_bands[first].bottom, other.RunsOf(first));
    if (--count == 0)
        return;
    const auto bands = std::span(other.m_bands).subspan(first + 1, count);
    const std::size_t firstRun = bands.front().firstRun;
    const std::size_t endRun = first + 1 + count < other.m_bands.size()
                                   ? other.m_bands[first + 1 + count].firstRun
                                   : other.m_runs.size();
    const std::size_t shift = m_runs.size() - firstRun;
    for (const Band &band : bands)
        m_bands.push_back({band.top, band.bottom, band.firstRun + shift});
    m_runs.insert(m_runs.end(), other.m_runs.begin() + static_cast<std::ptrdiff_t>(firstRun),
                  other.m_runs.begin() + static_cast<std::ptrdiff_t>(endRun));
}

void RunRegion::Unite(const RunRegion &other) {
    if (IsEmpty())
        *this = other;
    else if (!other.IsEmpty())
        *this = Combine<United>(*this, other);
}

void RunRegion::Subtract(const RunRegion &other) {
    if (!IsEmpty() && !other.IsEmpty())
        *this = Combine<Subtracted>(*this, other);
}

std::int64_t RunRegion::Area() const {
    std::int64_t area = 0;
    for (std::size_t i = 0; i < m_bands.size(); ++i) {
        std::int64_t width = 0;
        for (const PixelRun &run : RunsOf(i))
            width += run.right - run.left;
        area += width * (m_bands[i].bottom - m_bands[i].top);
    }
    return area;
}

std::vector<RECT> RunRegion::Rects() const {
    std::vector<RECT> rects;
    rects.reserve(m_runs.size());
    for (std::size_t i = 0; i < m_bands.size(); ++i)
        for (const PixelRun &run : RunsOf(i))
            rects.push_back({run.left, m_bands[i].top, run.right, m_bands[i].bottom});
    return rects;
}

} // namespace tavix
