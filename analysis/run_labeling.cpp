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

/// Walks over the words of a row and knows where runs start.
class Starts {
public:
    /// To be called for each word in order.
    void Enter(std::uint64_t word) {
        m_before += static_cast<std::uint32_t>(std::popcount(m_starts));
        m_starts = word & ~(word << 1 | m_carry);
        m_carry = word >> (WORD_BITS - 1);
    }

    /// The place in its row of the run to which this set bit of the word belongs.
    std::uint32_t RunAt(int bit) const {
        const std::uint64_t upTo = ~std::uint64_t{0} >> (WORD_BITS - 1 - bit);
        return m_before + static_cast<std::uint32_t>(std::popcount(m_starts & upTo)) - 1;
    }

private:
    std::uint32_t m_before = 0;
    std::uint64_t m_starts = 0;
    std::uint64_t m_carry = 0;
};

/// Gives the runs of a row the components of those they touch in the row above, and joins
/// components that meet. Touches is room for as many as runs may be.
void LinkRows(const std::uint64_t *aboveWords, const std::uint32_t *aboveComponents,
              const std::uint64_t *words, std::uint32_t *ofRuns, std::size_t wordCount,
              RunLabeling::Touch *touches, Component *components) {
    RunLabeling::Touch *end = touches;
    Starts upper;
    Starts lower;
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        upper.Enter(aboveWords[word]);
        lower.Enter(words[word]);
        const std::uint64_t common = aboveWords[word] & words[word];
        end = WriteBits(common & ~(common << 1 | carry), end, [&](int bit) {
            return RunLabeling::Touch{upper.RunAt(bit), lower.RunAt(bit)};
        });
        carry = common >> (WORD_BITS - 1);
    }
    for (const RunLabeling::Touch *touch = touches; touch != end; ++touch) {
        const std::uint32_t from = aboveComponents[touch->upper];
        std::uint32_t &to = ofRuns[touch->lower];
        if (to == RunLabeling::NONE) {
            to = from;
            continue;
        }
        const std::uint32_t a = FindWhole(components, from);
        const std::uint32_t b = FindWhole(components, to);
        to = std::min(a, b);
        components[std::max(a, b)].parent = to;
    }
}

} // namespace tavix::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tavix {

HWY_EXPORT(FindRuns);
HWY_EXPORT(LinkRows);

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height, Runs runs,
                         Scratch &scratch)
    : m_components(scratch.components) {
    m_components.clear();
    const std::size_t wordCount = WordsOf(width);
    const std::size_t mostRuns = static_cast<std::size_t>(width) / 2 + 1;
    std::vector<Touch> touches(mostRuns + SPARE);
    Row above;
    Row row;
    for (Row *one : {&above, &row}) {
        one->edges.resize(2 * mostRuns + SPARE);
        one->component.resize(mostRuns);
        one->words.resize(wordCount);
    }
    for (int y = 0; y < height; ++y) {
        pixels.MarkRow(y, row.words.data());
        row.runCount =
            HWY_DYNAMIC_DISPATCH(FindRuns)(row.words.data(), wordCount, width, row.edges.data());
        std::fill_n(row.component.begin(), row.runCount, NONE);
        HWY_DYNAMIC_DISPATCH(LinkRows)
        (above.words.data(), above.component.data(), row.words.data(), row.component.data(),
         wordCount, touches.data(), m_components.data());
        AddRuns(row, y);
        if (runs == Runs::Noted) {
            m_rows.push_back(m_noted.size());
            m_noted.insert(m_noted.end(), row.component.begin(),
                           row.component.begin() + static_cast<std::ptrdiff_t>(row.runCount));
        }
        std::swap(above, row);
    }
    FoldIntoWhole();
    for (std::uint32_t &component : m_noted)
        component = FindWhole(m_components.data(), component);
}

void RunLabeling::AddRuns(Row &row, int y) {
    for (std::size_t run = 0; run < row.runCount; ++run) {
        const std::int32_t start = row.edges[2 * run];
        const std::int32_t end = row.edges[2 * run + 1];
        const auto length = static_cast<std::uint32_t>(end - start);
        std::uint32_t &number = row.component[run];
        if (number == NONE) {
            number = static_cast<std::uint32_t>(m_components.size());
            m_components.push_back({start, y, end - 1, y, length, number});
            continue;
        }
        Component &component = m_components[number];
        component.left = std::min(component.left, start);
        component.right = std::max(component.right, end - 1);
        component.bottom = y;
        component.pixelCount += length;
    }
}

void RunLabeling::FoldIntoWhole() {
    for (std::size_t i = m_components.size(); i-- > 0;) {
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
