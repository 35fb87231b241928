#include "TAVIX20/analysis/run_labeling.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/run_labeling.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

// The loops below use no vectors, but are several times as fast where bits are counted and found by
// an instruction.
HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

using Component = RunLabeling::Component;

/// Writes value(bit) for each set bit; returns where the next one goes. The first few are written
/// whether there are so many or not, since a loop that ends after a changing number of rounds costs
/// more.
template <typename Value, typename Out>
HWY_INLINE Out *WriteBits(std::uint64_t bits, Out *out, Value value) {
    if (bits == 0)
        return out;
    const int count = std::popcount(bits);
    for (int i = 0; i < RunLabeling::SPARE; ++i, bits &= bits - 1)
        out[i] = value(std::countr_zero(bits) & (WORD_BITS - 1));
    for (int i = RunLabeling::SPARE; i < count; ++i, bits &= bits - 1)
        out[i] = value(std::countr_zero(bits));
    return out + count;
}

/// Writes start and end of each run; returns how many runs there are.
std::size_t FindRuns(const std::uint64_t *words, std::size_t wordCount, int width,
                     std::int32_t *edges) {
    std::int32_t *edge = edges;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        const std::uint64_t bits = words[word];
        // The bits that differ from the one before them: starts and ends in turn.
        edge = WriteBits(bits ^ (bits << 1 | carry), edge, [word](int bit) {
            return static_cast<std::int32_t>(word) * WORD_BITS + bit;
        });
        carry = bits >> (WORD_BITS - 1);
    }
    if (carry != 0)
        *edge++ = width;
    return static_cast<std::size_t>(edge - edges) / 2;
}

/// Notes where runs start and how many do before each word.
void IndexStarts(const std::uint64_t *words, std::size_t wordCount,
                 RunLabeling::WordStarts *starts) {
    std::uint32_t before = 0;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        const std::uint64_t bits = words[word];
        starts[word] = {bits & ~(bits << 1 | carry), before};
        before += static_cast<std::uint32_t>(std::popcount(starts[word].bits));
        carry = bits >> (WORD_BITS - 1);
    }
}

/// The place in its row of the run to which this set bit of the word belongs.
HWY_INLINE std::uint32_t RunAt(const RunLabeling::WordStarts &starts, int bit) {
    const std::uint64_t upTo = ~std::uint64_t{0} >> (WORD_BITS - 1 - bit);
    return starts.before + static_cast<std::uint32_t>(std::popcount(starts.bits & upTo)) - 1;
}

/// Finds the pairs of runs that share a column: each stretch of pixels that both rows have is one.
/// Returns how many.
std::size_t FindTouches(const RunLabeling::Row &above, const RunLabeling::Row &row,
                        RunLabeling::Touch *touches) {
    RunLabeling::Touch *end = touches;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < row.words.size(); ++word) {
        const std::uint64_t common = above.words[word] & row.words[word];
        const RunLabeling::WordStarts upper = above.starts[word];
        const RunLabeling::WordStarts lower = row.starts[word];
        end = WriteBits(common & ~(common << 1 | carry), end, [&](int bit) {
            return RunLabeling::Touch{RunAt(upper, bit), RunAt(lower, bit)};
        });
        carry = common >> (WORD_BITS - 1);
    }
    return static_cast<std::size_t>(end - touches);
}

/// Gives the runs of a row the components of those they touch in the row above, and joins
/// components that meet. What is done with a touch depends on data that cannot be foretold, so the
/// first touch of each run and the others are told apart without a branch.
void JoinTouching(const RunLabeling::Row &above, RunLabeling::Row &row, RunLabeling::Touch *touches,
                  std::size_t touchCount, Component *components) {
    std::fill_n(row.component.begin(), row.runCount, RunLabeling::NONE);
    for (std::size_t i = touchCount; i-- > 0;)
        row.component[touches[i].lower] = above.component[touches[i].upper];
    std::size_t others = 0;
    for (std::size_t i = 1; i < touchCount; ++i) {
        const bool isOther = touches[i].lower == touches[i - 1].lower;
        touches[others] = isOther ? touches[i] : touches[others];
        others += static_cast<std::size_t>(isOther);
    }
    for (std::size_t i = 0; i < others; ++i) {
        std::uint32_t &to = row.component[touches[i].lower];
        const std::uint32_t a = FindWhole(components, above.component[touches[i].upper]);
        const std::uint32_t b = FindWhole(components, to);
        to = std::min(a, b);
        components[std::max(a, b)].parent = to;
    }
}

/// Begins components for runs that have none, and adds every run to its own. Components has room
/// for one more than the runs of the row; returns how many there are then.
std::size_t AddRuns(RunLabeling::Row &row, int y, Component *components, std::size_t count) {
    for (std::size_t run = 0; run < row.runCount; ++run) {
        const std::int32_t start = row.edges[2 * run];
        const std::int32_t last = row.edges[2 * run + 1] - 1;
        const auto next = static_cast<std::uint32_t>(count);
        const bool isNew = row.component[run] == RunLabeling::NONE;
        components[count] = {start, y, last, y, 0, next};
        const std::uint32_t number = isNew ? next : row.component[run];
        row.component[run] = number;
        count += static_cast<std::size_t>(isNew);
        Component &component = components[number];
        component.left = std::min(component.left, start);
        component.right = std::max(component.right, last);
        component.bottom = y;
        component.pixelCount += static_cast<std::uint32_t>(last - start + 1);
    }
    return count;
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(FindRuns);
HWY_EXPORT(IndexStarts);
HWY_EXPORT(FindTouches);
HWY_EXPORT(JoinTouching);
HWY_EXPORT(AddRuns);

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height, Runs runs,
                         Scratch &scratch)
    : m_components(scratch.components) {
    const std::size_t wordCount = WordsOf(width);
    const std::size_t mostRuns = static_cast<std::size_t>(width) / 2 + 1;
    std::vector<Touch> touches(mostRuns + SPARE);
    Row above;
    Row row;
    for (Row *one : {&above, &row}) {
        one->edges.resize(2 * mostRuns + SPARE);
        one->component.resize(mostRuns);
        one->words.resize(wordCount);
        one->starts.resize(wordCount);
    }
    std::size_t count = 0;
    for (int y = 0; y < height; ++y) {
        pixels.MarkRow(y, row.words.data());
        row.runCount =
            HWY_DYNAMIC_DISPATCH(FindRuns)(row.words.data(), wordCount, width, row.edges.data());
        if (count + row.runCount >= m_components.size())
            m_components.resize(2 * m_components.size() + row.runCount + 1);
        HWY_DYNAMIC_DISPATCH(IndexStarts)(row.words.data(), wordCount, row.starts.data());
        const std::size_t touchCount =
            HWY_DYNAMIC_DISPATCH(FindTouches)(above, row, touches.data());
        HWY_DYNAMIC_DISPATCH(JoinTouching)
        (above, row, touches.data(), touchCount, m_components.data());
        count = HWY_DYNAMIC_DISPATCH(AddRuns)(row, y, m_components.data(), count);
        if (runs == Runs::Noted) {
            m_rows.push_back(m_noted.size());
            m_noted.insert(m_noted.end(), row.component.begin(),
                           row.component.begin() + static_cast<std::ptrdiff_t>(row.runCount));
        }
        std::swap(above, row);
    }
    m_count = count;
    FoldIntoWhole();
    for (std::uint32_t &component : m_noted)
        component = FindWhole(m_components.data(), component);
}

void RunLabeling::FoldIntoWhole() {
    for (std::size_t i = m_count; i-- > 0;) {
        const Component &part = m_components[i];
        if (part.parent == i)
            continue;
        Component &whole = m_components[part.parent];
        whole.left = std::min(whole.left, part.left);
        whole.right = std::max(whole.right, part.right);
        whole.bottom = std::max(whole.bottom, part.bottom);
        whole.pixelCount += part.pixelCount;
    }
}

} // namespace tavix
#endif
