#include "TAVIX20/analysis/run_labeling.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/run_labeling.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Box = RunLabeling::Box;
using Component = RunLabeling::Component;
using Row = RunLabeling::Row;

/// The place of the lowest set bit; any place when there is none, without a question.
HWY_INLINE int LowestBit(std::uint64_t bits) {
    return std::countr_zero(bits | std::uint64_t{1} << (WORD_BITS - 1));
}

/// Writes value(bit) for each set bit; returns where the next one goes. The first few are written
/// whether there are so many or not, since a loop that ends after a changing number of rounds costs
/// more.
template <typename Value, typename Out>
HWY_INLINE Out *WriteBits(std::uint64_t bits, Out *out, Value value) {
    constexpr int atOnce = 2;
    if (bits == 0)
        return out;
    const int count = std::popcount(bits);
    for (int i = 0; i < atOnce; ++i, bits &= bits - 1)
        out[i] = value(LowestBit(bits));
    for (int i = atOnce; i < count; ++i, bits &= bits - 1)
        out[i] = value(std::countr_zero(bits));
    return out + count;
}

/// Writes base + bit for each set bit; returns where the next one goes. A few are written one by
/// one; more take as long as all.
HWY_INLINE std::int32_t *WritePlaces(std::uint64_t bits, std::int32_t base, std::int32_t *out) {
    constexpr int few = 4;
    const int count = std::popcount(bits);
    if (count <= few) {
        for (int i = 0; i < few; ++i, bits &= bits - 1)
            out[i] = base + LowestBit(bits);
        return out + count;
    }
    const hn::CappedTag<std::int32_t, 16> d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    auto places = hn::Add(hn::Iota(d, 0), hn::Set(d, base));
    for (int i = 0; i < WORD_BITS; i += lanes, places = hn::Add(places, hn::Set(d, lanes))) {
        const std::uint64_t some = bits >> i;
        std::uint8_t mask[8];
        std::memcpy(mask, &some, sizeof mask);
        hn::StoreU(hn::CompressBits(places, mask), d, out);
        out += std::popcount(some << (WORD_BITS - lanes));
    }
    return out;
}

/// Writes start and end of each run; returns how many runs there are.
std::size_t FindRuns(const std::uint64_t *words, std::size_t wordCount, int width,
                     std::int32_t *edges) {
    std::int32_t *edge = edges;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        const std::uint64_t bits = words[word];
        // The bits that differ from the one before them: starts and ends in turn.
        edge = WritePlaces(bits ^ (bits << 1 | carry), static_cast<std::int32_t>(word) * WORD_BITS,
                           edge);
        carry = bits >> (WORD_BITS - 1);
    }
    if (carry != 0)
        *edge++ = width;
    const auto count = static_cast<std::size_t>(edge - edges) / 2;
    edge[0] = edge[1] = RunLabeling::END;
    return count;
}

/// The sides of a box, in one register. What was stored side by side could not be loaded as one
/// before it has reached the cache.
typedef std::int32_t Sides __attribute__((vector_size(sizeof(Box))));

HWY_INLINE Sides SidesOf(const std::int32_t *edges, int y) {
    return Sides{edges[0], y, 1 - edges[1], -y};
}

HWY_INLINE Sides SidesOf(const Component &component) {
    Sides sides;
    std::memcpy(&sides, &component.box, sizeof sides);
    return sides;
}

HWY_INLINE void Begin(Component &component, const Sides &sides, std::uint32_t number) {
    std::memcpy(&component.box, &sides, sizeof sides);
    component.pixelCount = 0;
    component.parent = number;
}

HWY_INLINE void Widen(Component &component, const Sides &by, std::uint32_t pixelCount) {
    const Sides sides = SidesOf(component);
    const Sides both = sides < by ? sides : by;
    std::memcpy(&component.box, &both, sizeof both);
    component.pixelCount += pixelCount;
}

HWY_INLINE std::uint32_t LengthOf(const std::int32_t *edges) {
    return static_cast<std::uint32_t>(edges[1] - edges[0]);
}

/// Joins two components that meet; returns which it is then.
HWY_INLINE std::uint32_t Join(Component *components, std::uint32_t one, std::uint32_t other) {
    const std::uint32_t a = FindWhole(components, one);
    const std::uint32_t b = FindWhole(components, other);
    components[std::max(a, b)].parent = std::min(a, b);
    return std::min(a, b);
}

/// Adds the runs of a row to the components of those that they touch in the row above, run by run,
/// or begins components with them; there is room for as many. Returns how many there are then.
std::size_t MergeRuns(const Row &above, Row &row, int y, Component *components, std::size_t count) {
    const std::int32_t *upper = above.edges.data();
    const std::uint32_t *upperComponent = above.component.data();
    for (std::size_t run = 0; run < row.runCount; ++run) {
        const std::int32_t *const edges = row.edges.data() + 2 * run;
        const Sides sides = SidesOf(edges, y);
        for (; upper[1] <= edges[0]; upper += 2)
            ++upperComponent;
        auto number = static_cast<std::uint32_t>(count);
        if (upper[0] < edges[1]) {
            number = *upperComponent;
            for (; upper[2] < edges[1]; upper += 2)
                number = Join(components, number, *++upperComponent);
        } else {
            Begin(components[count++], sides, number);
        }
        row.component[run] = number;
        Widen(components[number], sides, LengthOf(edges));
    }
    return count;
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
std::size_t FindTouches(const Row &above, const Row &row, RunLabeling::Touch *touches) {
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
void JoinTouching(const Row &above, Row &row, RunLabeling::Touch *touches, std::size_t touchCount,
                  Component *components) {
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
        to = Join(components, to, above.component[touches[i].upper]);
    }
}

/// Begins components for runs that have none, and adds every run to its own. Components has room
/// for one more than the runs of the row; returns how many there are then.
std::size_t AddRuns(Row &row, int y, Component *components, std::size_t count) {
    const std::int32_t *edges = row.edges.data();
    std::uint32_t *const ofRuns = row.component.data();
    const std::size_t runCount = row.runCount;
    for (std::size_t run = 0; run < runCount; ++run, edges += 2) {
        const Sides sides = SidesOf(edges, y);
        const auto next = static_cast<std::uint32_t>(count);
        const bool isNew = ofRuns[run] == RunLabeling::NONE;
        Begin(components[count], sides, next);
        // No branch, for it could not be foretold.
        const std::uint32_t unlessNew = static_cast<std::uint32_t>(isNew) - 1;
        const std::uint32_t number = (ofRuns[run] & unlessNew) | (next & ~unlessNew);
        ofRuns[run] = number;
        count += static_cast<std::size_t>(isNew);
        Widen(components[number], sides, LengthOf(edges));
    }
    return count;
}

/// Hands what each component sums up on to the one it points at. Whole ones point at themselves;
/// that they get nothing is no branch, for it could not be foretold.
void FoldIntoWhole(Component *components, std::size_t count) {
    for (std::size_t i = count; i-- > 0;) {
        const Component &part = components[i];
        Widen(components[part.parent], SidesOf(part), part.parent == i ? 0 : part.pixelCount);
    }
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
HWY_EXPORT(MergeRuns);
HWY_EXPORT(FoldIntoWhole);

/// Rows are merged run by run where one of two has at most so many runs a word.
constexpr double FEW_RUNS_A_WORD = 2.5;

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height, Runs runs,
                         Scratch &scratch)
    : m_components(scratch.components) {
    const std::size_t wordCount = WordsOf(width);
    const auto fewRuns = static_cast<std::size_t>(FEW_RUNS_A_WORD * static_cast<double>(wordCount));
    const std::size_t mostRuns = static_cast<std::size_t>(width) / 2 + 1;
    std::vector<Touch> touches(mostRuns + SPARE);
    Row above;
    Row row;
    for (Row *one : {&above, &row}) {
        one->edges.resize(2 * mostRuns + SPARE);
        std::fill_n(one->edges.begin(), SPARE, END);
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
        if (std::min(above.runCount, row.runCount) <= fewRuns) {
            count = HWY_DYNAMIC_DISPATCH(MergeRuns)(above, row, y, m_components.data(), count);
        } else {
            for (Row *const one : {&above, &row})
                HWY_DYNAMIC_DISPATCH(IndexStarts)
            (one->words.data(), wordCount, one->starts.data());
            const std::size_t touchCount =
                HWY_DYNAMIC_DISPATCH(FindTouches)(above, row, touches.data());
            HWY_DYNAMIC_DISPATCH(JoinTouching)
            (above, row, touches.data(), touchCount, m_components.data());
            count = HWY_DYNAMIC_DISPATCH(AddRuns)(row, y, m_components.data(), count);
        }
        if (runs == Runs::Noted) {
            m_rows.push_back(m_noted.size());
            m_noted.insert(m_noted.end(), row.component.begin(),
                           row.component.begin() + static_cast<std::ptrdiff_t>(row.runCount));
        }
        std::swap(above, row);
    }
    m_count = count;
    HWY_DYNAMIC_DISPATCH(FoldIntoWhole)(m_components.data(), count);
    for (std::uint32_t &component : m_noted)
        component = FindWhole(m_components.data(), component);
}

} // namespace tavix
#endif
