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

/// The place of the lowest set bit; one of the word or just past it when there is none, without a
/// question.
HWY_INLINE int LowestBit(std::uint64_t bits) {
#if HWY_ARCH_X86_64 && HWY_TARGET <= HWY_AVX2
    return static_cast<int>(__builtin_ia32_tzcnt_u64(bits)); // Of 0 it is 64.
#else
    return std::countr_zero(bits | std::uint64_t{1} << (WORD_BITS - 1));
#endif
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

/// Takes the pixels without a neighbour out of a row and writes their columns; returns where the
/// next one goes.
std::int32_t *SetApart(const std::uint64_t *above, std::uint64_t *row, const std::uint64_t *below,
                       std::size_t wordCount, std::int32_t *columns) {
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        const std::uint64_t bits = row[word];
        const std::uint64_t fromLeft = bits << 1 | carry;
        const std::uint64_t fromRight = bits >> 1 | row[word + 1] << (WORD_BITS - 1);
        const std::uint64_t lone = bits & ~(fromLeft | fromRight | above[word] | below[word]);
        columns = WritePlaces(lone, static_cast<std::int32_t>(word) * WORD_BITS, columns);
        row[word] = bits ^ lone;
        carry = bits >> (WORD_BITS - 1);
    }
    return columns;
}

/// The sides of a box, in one register. What was stored side by side could not be loaded as one
/// before it has reached the cache.
typedef std::int32_t Sides __attribute__((vector_size(sizeof(Box))));

/// Of runs in row y: start, y, 1 - end, -y.
class RunSides {
public:
    explicit RunSides(int y) : m_y{y, -y, 0, 0} {}

    HWY_INLINE Sides operator()(const std::int32_t *edges) const {
        std::int64_t both; // In a register: what is put together in memory is slow to load.
        std::memcpy(&both, edges, sizeof both);
        typedef std::int64_t Pair __attribute__((vector_size(sizeof(Sides))));
        const auto ends = reinterpret_cast<Sides>(Pair{both, 0});
        const Sides sides = __builtin_shufflevector(ends, m_y, 0, 4, 1, 5);
        return (sides ^ Sides{0, 0, -1, 0}) + Sides{0, 0, 2, 0};
    }

private:
    Sides m_y;
};

HWY_INLINE Sides SidesOf(const Component &component) {
    Sides sides;
    std::memcpy(&sides, &component.box, sizeof sides);
    return sides;
}

HWY_INLINE void Begin(Component &component, const Sides &sides, std::uint32_t pixelCount,
                      std::uint32_t number) {
    std::memcpy(&component.box, &sides, sizeof sides);
    component.pixelCount = pixelCount;
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
std::size_t MergeRuns(const Row &above, Row &row, int y, Component *components,
                      std::int32_t *firstColumns, std::size_t count) {
    const std::int32_t *upper = above.edges.data();
    const std::uint32_t *upperComponent = above.component.data();
    const std::int32_t *edges = row.edges.data();
    std::uint32_t *ofRun = row.component.data();
    const RunSides sidesOf(y);
    for (const std::int32_t *const end = edges + 2 * row.runCount; edges < end; edges += 2) {
        const Sides sides = sidesOf(edges);
        for (; upper[1] <= edges[0]; upper += 2)
            ++upperComponent;
        auto number = static_cast<std::uint32_t>(count);
        if (upper[0] < edges[1]) {
            number = *upperComponent;
            for (; upper[2] < edges[1]; upper += 2)
                number = Join(components, number, *++upperComponent);
            Widen(components[number], sides, LengthOf(edges));
        } else {
            firstColumns[count] = edges[0];
            Begin(components[count++], sides, LengthOf(edges), number);
        }
        *ofRun++ = number;
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

/// The place in its row of the run to which this set bit of the word belongs; any place for a bit
/// past the word.
HWY_INLINE std::uint32_t RunAt(const RunLabeling::WordStarts &starts, int bit) {
    const std::uint64_t upTo = ~std::uint64_t{0} >> ((WORD_BITS - 1 - bit) & (WORD_BITS - 1));
    return starts.before + static_cast<std::uint32_t>(std::popcount(starts.bits & upTo)) - 1;
}

/// Finds the pairs of runs that share a column: each stretch of pixels that both rows have is one.
/// Returns how many.
std::size_t FindTouches(const Row &above, const Row &row, RunLabeling::Touch *touches) {
    RunLabeling::Touch *end = touches;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < row.starts.size(); ++word) {
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
std::size_t AddRuns(Row &row, int y, Component *components, std::int32_t *firstColumns,
                    std::size_t count) {
    const std::int32_t *edges = row.edges.data();
    std::uint32_t *const ofRuns = row.component.data();
    const std::size_t runCount = row.runCount;
    const RunSides sidesOf(y);
    for (std::size_t run = 0; run < runCount; ++run, edges += 2) {
        const Sides sides = sidesOf(edges);
        const auto next = static_cast<std::uint32_t>(count);
        const bool isNew = ofRuns[run] == RunLabeling::NONE;
        Begin(components[count], sides, 0, next);
        firstColumns[count] = edges[0];
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
HWY_EXPORT(SetApart);
HWY_EXPORT(IndexStarts);
HWY_EXPORT(FindTouches);
HWY_EXPORT(JoinTouching);
HWY_EXPORT(AddRuns);
HWY_EXPORT(MergeRuns);
HWY_EXPORT(FoldIntoWhole);

/// A row of more runs a word than that is noise: runs are not merged one by one, and the next row's
/// pixels without a neighbour are set apart.
constexpr double FEW_RUNS_A_WORD = 2.5;

namespace {

using Row = RunLabeling::Row;

/// Makes room for so many more, doubling.
template <typename Value>
Value *MakeRoom(std::vector<Value> &values, std::size_t used, std::size_t more) {
    if (used + more > values.size())
        values.resize(2 * values.size() + more);
    return values.data() + used;
}

} // namespace

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height, Runs runs,
                         Scratch &scratch)
    : m_components(scratch.components), m_firstColumns(scratch.firstColumns), m_lone(scratch.lone) {
    const std::size_t wordCount = WordsOf(width);
    const auto fewRuns = static_cast<std::size_t>(FEW_RUNS_A_WORD * static_cast<double>(wordCount));
    const std::size_t mostRuns = static_cast<std::size_t>(width) / 2 + 1;
    std::vector<Touch> touches(mostRuns + SPARE);
    std::vector<std::uint64_t> below(wordCount + 1);
    Row above;
    Row row;
    for (Row *one : {&above, &row}) {
        one->edges.resize(2 * mostRuns + SPARE);
        std::fill_n(one->edges.begin(), SPARE, END);
        one->component.resize(mostRuns);
        one->words.resize(wordCount + 1);
        one->starts.resize(wordCount);
    }
    m_lone.rowEnds.clear();
    std::size_t count = 0;
    std::size_t loneCount = 0;
    bool isNoise = false;
    pixels.MarkRow(0, below.data());
    for (int y = 0; y < height; ++y) {
        row.words.swap(below);
        if (y + 1 < height)
            pixels.MarkRow(y + 1, below.data());
        else
            std::ranges::fill(below, 0);
        std::size_t apart = 0;
        if (isNoise && runs == Runs::Forgotten) {
            std::int32_t *const columns = MakeRoom(m_lone.columns, loneCount, mostRuns + SPARE);
            apart = static_cast<std::size_t>(
                HWY_DYNAMIC_DISPATCH(SetApart)(above.words.data(), row.words.data(), below.data(),
                                               wordCount, columns) -
                columns);
        }
        loneCount += apart;
        m_lone.rowEnds.push_back(loneCount);
        row.runCount =
            HWY_DYNAMIC_DISPATCH(FindRuns)(row.words.data(), wordCount, width, row.edges.data());
        isNoise = row.runCount + apart > fewRuns;
        MakeRoom(m_components, count, row.runCount + 1);
        MakeRoom(m_firstColumns, count, row.runCount + 1);
        if (std::min(above.runCount, row.runCount) <= fewRuns) {
            count = HWY_DYNAMIC_DISPATCH(MergeRuns)(above, row, y, m_components.data(),
                                                    m_firstColumns.data(), count);
        } else {
            for (Row *const one : {&above, &row})
                HWY_DYNAMIC_DISPATCH(IndexStarts)
            (one->words.data(), wordCount, one->starts.data());
            const std::size_t touchCount =
                HWY_DYNAMIC_DISPATCH(FindTouches)(above, row, touches.data());
            HWY_DYNAMIC_DISPATCH(JoinTouching)
            (above, row, touches.data(), touchCount, m_components.data());
            count = HWY_DYNAMIC_DISPATCH(AddRuns)(row, y, m_components.data(),
                                                  m_firstColumns.data(), count);
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
