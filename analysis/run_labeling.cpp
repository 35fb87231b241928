#include "TAVIX20/analysis/run_labeling.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "TAVIX20/analysis/run_labeling.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "TAVIX20/analysis/bit_places-inl.h"

HWY_BEFORE_NAMESPACE();
namespace tavix::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Box = RunLabeling::Box;
using Component = RunLabeling::Component;

constexpr std::uint32_t NONE = ~std::uint32_t{0};
/// Beyond all columns.
constexpr std::int32_t END = std::numeric_limits<std::int32_t>::max();
/// A row of more runs a word than that is noise: runs are not merged one by one, and the next row's
/// pixels without a neighbour are set apart.
constexpr double FEW_RUNS_A_WORD = 2.5;

/// Where runs start in a word, and how many do before it.
struct WordStarts {
    std::uint64_t bits;
    std::uint32_t before;
};

/// The runs of a row.
struct Row {
    explicit Row(int width)
        : words(width),
          edges(static_cast<std::size_t>(width) + 2 + SPARE, END),
          component(edges.size() / 2),
          starts(words.Count()) {}

    RowWords words;                       ///< The pixels.
    std::vector<std::int32_t> edges;      ///< Start and end of each, end exclusive; then the end.
    std::vector<std::uint32_t> component; ///< Of each.
    std::vector<WordStarts> starts;       ///< Only where it was needed.
    std::size_t runCount = 0;
};

/// Two runs with a column in common, by their places in their rows.
struct Touch {
    std::uint32_t upper;
    std::uint32_t lower;
};

/// Finds start and end of each run.
void FindRuns(Row &row, int width) {
    const std::uint64_t *const words = row.words.data();
    const std::size_t wordCount = row.words.Count();
    std::int32_t *edge = WriteAllPlaces(wordCount, row.edges.data(), [words](std::size_t word) {
        // The bits that differ from the one before them: starts and ends in turn.
        return hn::Xor(hn::LoadU(WordTag(), words + word), FromLeft(words + word));
    });
    if (words[wordCount - 1] >> (WORD_BITS - 1) != 0)
        *edge++ = width;
    row.runCount = static_cast<std::size_t>(edge - row.edges.data()) / 2;
    edge[0] = END - 1;
    edge[1] = END;
}

/// Takes the pixels without a neighbour out of a row and writes their columns; returns where the
/// next one goes. What is left of the row goes to another one.
std::int32_t *SetApart(const RowWords &above, const RowWords &row, const RowWords &below,
                       RowWords &rest, std::int32_t *columns) {
    return WriteAllPlaces(row.Count(), columns, [&](std::size_t word) {
        const WordTag d;
        const Words bits = hn::LoadU(d, row.data() + word);
        const Words beside = hn::Or(FromLeft(row.data() + word), FromRight(row.data() + word));
        const Words about =
            hn::Or(hn::LoadU(d, above.data() + word), hn::LoadU(d, below.data() + word));
        const Words lone = hn::AndNot(hn::Or(beside, about), bits);
        hn::StoreU(hn::Xor(bits, lone), d, rest.data() + word);
        return lone;
    });
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
    const auto passThoseBefore = [&](std::int32_t start) {
        for (; upper[1] <= start; upper += 2)
            ++upperComponent;
    };
    passThoseBefore(edges[0]);
    for (const std::int32_t *const end = edges + 2 * row.runCount; edges < end; edges += 2) {
        const Sides sides = sidesOf(edges);
        auto number = static_cast<std::uint32_t>(count);
        if (upper[0] < edges[1]) {
            number = *upperComponent;
            for (; upper[2] < edges[1]; upper += 2)
                number = Join(components, number, *++upperComponent);
            Widen(components[number], sides, LengthOf(edges));
            passThoseBefore(edges[2]);
        } else {
            firstColumns[count] = edges[0];
            Begin(components[count++], sides, LengthOf(edges), number);
            passThoseBefore(edges[2]);
        }
        *ofRun++ = number;
    }
    return count;
}

/// Notes where runs start and how many do before each word.
void IndexStarts(Row &row) {
    std::uint32_t before = 0;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < row.words.Count(); ++word) {
        const std::uint64_t bits = row.words[word];
        row.starts[word] = {bits & ~(bits << 1 | carry), before};
        before += static_cast<std::uint32_t>(std::popcount(row.starts[word].bits));
        carry = bits >> (WORD_BITS - 1);
    }
}

/// The place in its row of the run to which this set bit of the word belongs; any place for a bit
/// past the word.
HWY_INLINE std::uint32_t RunAt(const WordStarts &starts, int bit) {
    const std::uint64_t upTo = ~std::uint64_t{0} >> ((WORD_BITS - 1 - bit) & (WORD_BITS - 1));
    return starts.before + static_cast<std::uint32_t>(std::popcount(starts.bits & upTo)) - 1;
}

/// Finds the pairs of runs that share a column: each stretch of pixels that both rows have is one.
/// Returns how many.
std::size_t FindTouches(const Row &above, const Row &row, Touch *touches) {
    Touch *end = touches;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < row.words.Count(); ++word) {
        const std::uint64_t common = above.words[word] & row.words[word];
        const WordStarts upper = above.starts[word];
        const WordStarts lower = row.starts[word];
        end = WriteBits(common & ~(common << 1 | carry), end, [&](int bit) {
            return Touch{RunAt(upper, bit), RunAt(lower, bit)};
        });
        carry = common >> (WORD_BITS - 1);
    }
    return static_cast<std::size_t>(end - touches);
}

/// Gives the runs of a row the components of those they touch in the row above, and joins
/// components that meet. What is done with a touch depends on data that cannot be foretold, so the
/// first touch of each run and the others are told apart without a branch.
void JoinTouching(const Row &above, Row &row, Touch *touches, std::size_t touchCount,
                  Component *components) {
    std::fill_n(row.component.begin(), row.runCount, NONE);
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
        const bool isNew = ofRuns[run] == NONE;
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

/// Makes room for so many more, doubling.
template <typename Value>
Value *MakeRoom(std::vector<Value> &values, std::size_t used, std::size_t more) {
    if (HWY_UNLIKELY(used + more > values.size()))
        values.resize(2 * values.size() + more);
    return values.data() + used;
}

/// Returns how many components there are.
std::size_t Label(const PixelClass &pixels, int width, int height, RunLabeling::Scratch &scratch,
                  RunLabeling::Noted *noted) {
    Row rows[] = {Row(width), Row(width)};
    RowWords here(width);
    RowWords below(width);
    const auto fewRuns =
        static_cast<std::size_t>(FEW_RUNS_A_WORD * static_cast<double>(WordsOf(width)));
    const std::size_t mostRuns = static_cast<std::size_t>(width) / 2 + 1;
    std::vector<Touch> touches(mostRuns + SPARE);
    RunLabeling::LonePixels &lone = scratch.lone;
    lone.rowEnds.clear();
    std::size_t count = 0;
    std::size_t loneCount = 0;
    bool isNoise = false;
    pixels.MarkRow(0, below.data());
    for (int y = 0; y < height; ++y) {
        Row &row = rows[y % 2];
        Row &above = rows[(y + 1) % 2];
        here.swap(below);
        if (y + 1 < height)
            pixels.MarkRow(y + 1, below.data());
        else
            below.Clear();
        std::size_t apart = 0;
        if (isNoise && !noted) {
            std::int32_t *const columns = MakeRoom(lone.columns, loneCount, mostRuns + SPARE);
            apart = static_cast<std::size_t>(
                SetApart(above.words, here, below, row.words, columns) - columns);
            loneCount += apart;
        } else {
            row.words.swap(here);
        }
        lone.rowEnds.push_back(loneCount);
        FindRuns(row, width);
        isNoise = row.runCount + apart > fewRuns;
        Component *const components = MakeRoom(scratch.components, count, row.runCount + 1) - count;
        std::int32_t *const columns =
            MakeRoom(scratch.firstColumns, count, row.runCount + 1) - count;
        if (std::min(above.runCount, row.runCount) <= fewRuns) {
            count = MergeRuns(above, row, y, components, columns, count);
        } else {
            IndexStarts(above);
            IndexStarts(row);
            const std::size_t touchCount = FindTouches(above, row, touches.data());
            JoinTouching(above, row, touches.data(), touchCount, components);
            count = AddRuns(row, y, components, columns, count);
        }
        if (noted) {
            noted->rows.push_back(noted->components.size());
            noted->components.insert(noted->components.end(), row.component.begin(),
                                     row.component.begin() +
                                         static_cast<std::ptrdiff_t>(row.runCount));
        }
    }
    FoldIntoWhole(scratch.components.data(), count);
    return count;
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(Label);

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height, Runs runs,
                         Scratch &scratch)
    : m_components(scratch.components), m_firstColumns(scratch.firstColumns), m_lone(scratch.lone) {
    m_count = HWY_DYNAMIC_DISPATCH(Label)(pixels, width, height, scratch,
                                          runs == Runs::Noted ? &m_noted : nullptr);
    for (std::uint32_t &component : m_noted.components)
        component = FindWhole(m_components.data(), component);
}

} // namespace tavix
#endif
