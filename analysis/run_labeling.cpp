#include "TAVIX20/analysis/run_labeling.h"

#include <algorithm>
#include <bit>

namespace tavix {

namespace {

constexpr unsigned LAST_BIT = WORD_BITS - 1;

/// The bits up to and including this one.
std::uint64_t UpTo(int bit) {
    return ~std::uint64_t{0} >> (static_cast<int>(LAST_BIT) - bit);
}

/// Walks over the words of a row and knows where runs start.
class Starts {
public:
    explicit Starts(std::uint32_t firstRun) : m_before(firstRun) {}

    /// To be called for each word in order.
    void Enter(std::uint64_t word) {
        m_before += static_cast<std::uint32_t>(std::popcount(m_starts));
        m_starts = word & ~(word << 1 | m_carry);
        m_carry = word >> LAST_BIT;
    }

    /// The number of the run to which this set bit of the word belongs.
    std::uint32_t RunAt(int bit) const {
        return m_before + static_cast<std::uint32_t>(std::popcount(m_starts & UpTo(bit))) - 1;
    }

private:
    std::uint32_t m_before;
    std::uint64_t m_starts = 0;
    std::uint64_t m_carry = 0;
};

} // namespace

RunLabeling::RunLabeling(const PixelClass &pixels, int width, int height) {
    const std::size_t wordCount = WordsOf(width);
    std::vector<std::uint64_t> above(wordCount, 0);
    std::vector<std::uint64_t> words(wordCount, 0);
    m_rows.reserve(static_cast<std::size_t>(height) + 1);
    m_rows.push_back(0);
    for (int y = 0; y < height; ++y) {
        pixels.MarkRow(y, words.data());
        AddRow(words.data(), wordCount, y, width);
        m_rows.push_back(static_cast<std::uint32_t>(m_runs.size()));
        if (y > 0)
            Link(above.data(), words.data(), wordCount, y);
        above.swap(words);
    }
    FoldIntoRoots();
}

void RunLabeling::AddRow(const std::uint64_t *words, std::size_t wordCount, int y, int width) {
    ForEachRun(words, wordCount, width, [this, y](int start, int end) {
        const auto number = static_cast<std::uint32_t>(m_runs.size());
        m_runs.push_back({start, end - 1, y, static_cast<std::uint32_t>(end - start), number});
    });
}

void RunLabeling::Link(const std::uint64_t *above, const std::uint64_t *words,
                       std::size_t wordCount, int y) {
    Starts upper(m_rows[static_cast<std::size_t>(y) - 1]);
    Starts lower(m_rows[static_cast<std::size_t>(y)]);
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        upper.Enter(above[word]);
        lower.Enter(words[word]);
        const std::uint64_t common = above[word] & words[word];
        std::uint64_t touches = common & ~(common << 1 | carry);
        for (; touches != 0; touches &= touches - 1) {
            const int bit = std::countr_zero(touches);
            Unite(upper.RunAt(bit), lower.RunAt(bit));
        }
        carry = common >> LAST_BIT;
    }
}

/// With every second pointer on the way moved up by one (path halving).
std::uint32_t RunLabeling::RootOf(std::uint32_t run) {
    while (m_runs[run].parent != run) {
        std::uint32_t &parent = m_runs[run].parent;
        parent = m_runs[parent].parent;
        run = parent;
    }
    return run;
}

void RunLabeling::Unite(std::uint32_t a, std::uint32_t b) {
    a = RootOf(a);
    b = RootOf(b);
    m_runs[std::max(a, b)].parent = std::min(a, b);
}

void RunLabeling::FoldIntoRoots() {
    for (std::size_t i = m_runs.size(); i-- > 0;) {
        const Run &run = m_runs[i];
        if (run.parent == i)
            continue;
        Run &parent = m_runs[run.parent];
        parent.left = std::min(parent.left, run.left);
        parent.right = std::max(parent.right, run.right);
        parent.bottom = std::max(parent.bottom, run.bottom);
        parent.pixelCount += run.pixelCount;
    }
}

void RunLabeling::PointAtRoots() {
    for (Run &run : m_runs)
        run.parent = m_runs[run.parent].parent;
}

} // namespace tavix
