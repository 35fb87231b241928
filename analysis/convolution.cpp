// Direct convolution, row by row. The rows that a result row needs stand in a ring of lines of
// 16-bit pixels, with zeros in place of row 0, column 0 and everything outside the image, so that
// no term needs a test; since the ring holds copies, the result is written over the image at once.
// Weights of 0 cost nothing.
//
// Sums that fit 16 bits are made with 16-bit multiplications, sums of 16-bit weights that fit 32
// bits with multiply-adds of neighbours, all others one by one with 64 bits. The three give the
// same result; which one runs depends on the weights alone.

#include "TAVIX20/analysis/convolution.h"

#include "TAVIX20/analysis/convolution_kernels.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace tavix {

namespace {

/// A weight and the neighbour it belongs to.
struct Term {
    int row;    ///< Relative to the pixel.
    int column; ///< Relative to the pixel.
    std::int64_t weight;
};

/// The terms that can take part in an image of that size, in row order; for a negative divisor with
/// the opposite weights, since it is then taken as a positive one.
std::vector<Term> TermsOf(const Kernel &kernel, int width, int height) {
    std::vector<Term> terms;
    const int centre = kernel.size / 2;
    const auto reach = [centre, size = kernel.size](int imageSize) {
        return std::pair{std::max(0, centre - imageSize), std::min(size, centre + imageSize)};
    };
    const auto [firstRow, endRow] = reach(height);
    const auto [firstColumn, endColumn] = reach(width);
    for (int row = firstRow; row < endRow; ++row)
        for (int column = firstColumn; column < endColumn; ++column) {
            const long weight = kernel.weights[std::ptrdiff_t{row} * kernel.size + column];
            if (const std::int64_t term = static_cast<std::int32_t>(weight); term != 0)
                terms.push_back({row - centre, column - centre, kernel.divisor < 0 ? -term : term});
        }
    return terms;
}

/// How far the terms reach from the pixel, the pixel itself included.
struct Reach {
    int up = 0;
    int down = 0;
    int left = 0;
    int right = 0;
};

Reach ReachOf(const std::vector<Term> &terms) {
    Reach reach;
    for (const Term &term : terms) {
        reach.up = std::max(reach.up, -term.row);
        reach.down = std::max(reach.down, term.row);
        reach.left = std::max(reach.left, -term.column);
        reach.right = std::max(reach.right, term.column);
    }
    return reach;
}

/// Memory of zeros that starts on a cache line, as the lines in it do: a vector that lies across
/// two of them is stored in twice the time.
template <typename Value>
class AlignedBlock {
public:
    explicit AlignedBlock(std::size_t count) : m_values(new (ALIGNMENT) Value[count]()) {}

    Value *At(std::size_t index) const { return m_values.get() + index; }

    /// The next larger number of values that fills whole cache lines.
    static std::size_t WholeLines(std::size_t count) {
        constexpr std::size_t line = static_cast<std::size_t>(ALIGNMENT) / sizeof(Value);
        return (count + line - 1) / line * line;
    }

private:
    static constexpr std::align_val_t ALIGNMENT{64};
    struct Deleter {
        void operator()(Value *values) const { ::operator delete[](values, ALIGNMENT); }
    };

    std::unique_ptr<Value[], Deleter> m_values;
};

/// The rows around the current one, as lines of each channel.
class LineRing {
public:
    LineRing(const PixelRows &image, const Reach &reach)
        : m_image(image),
          m_slots(static_cast<std::size_t>(reach.up + reach.down) + 1),
          m_left(Lines::WholeLines(static_cast<std::size_t>(reach.left))),
          m_lineLength(Lines::WholeLines(
              m_left + static_cast<std::size_t>(image.width + reach.right) + CONVOLUTION_OVERRUN)),
          m_zeros(m_slots * static_cast<std::size_t>(image.channels) * m_lineLength),
          m_lines(m_zeros + m_lineLength) {}

    /// Copies a row into its slot; rows outside the image need none.
    void Load(int row) {
        if (row < 1 || row >= m_image.height)
            return;
        std::int16_t *lines[3] = {};
        for (int channel = 0; channel < m_image.channels; ++channel)
            lines[channel] = m_lines.At(StartOf(row, channel) + m_left);
        SpreadRow(m_image.bytes + row * m_image.stride, static_cast<std::size_t>(m_image.width),
                  m_image.channels, lines);
        for (int channel = 0; channel < m_image.channels; ++channel)
            lines[channel][0] = 0;
    }

    /// The pixel in column 0 of a row's line. A row that does not take part is a line of zeros.
    const std::int16_t *Line(int row, int channel) const {
        const bool takesPart = row >= 1 && row < m_image.height;
        return m_lines.At((takesPart ? StartOf(row, channel) : m_zeros) + m_left);
    }

private:
    using Lines = AlignedBlock<std::int16_t>;

    std::size_t StartOf(int row, int channel) const {
        const std::size_t slot = static_cast<std::size_t>(row) % m_slots;
        return (slot * static_cast<std::size_t>(m_image.channels) +
                static_cast<std::size_t>(channel)) *
               m_lineLength;
    }

    const PixelRows &m_image;
    std::size_t m_slots;
    std::size_t m_left;
    std::size_t m_lineLength;
    std::size_t m_zeros; ///< Where a line starts that stays zero.
    Lines m_lines;
};

/// Computes the result rows. Each of the three ways has its own form of terms.
class RowConvolver {
public:
    RowConvolver(const PixelRows &image, std::vector<Term> terms, const Scaling &scaling)
        : m_terms(std::move(terms)),
          m_scaling(scaling),
          m_width(static_cast<std::size_t>(image.width)) {
        std::int64_t magnitude = 0;
        bool hasShortWeights = true;
        for (const Term &term : m_terms) {
            magnitude += std::abs(term.weight);
            hasShortWeights &= term.weight == static_cast<std::int16_t>(term.weight);
        }
        if (Scaling16::Suits(magnitude, scaling))
            m_scaling16.emplace(scaling);
        else if (hasShortWeights && Scaling32::Suits(magnitude, scaling))
            m_scaling32.emplace(scaling);
        else
            m_sums.resize(m_width);
    }

    void Compute(const LineRing &ring, int row, int channel, std::uint8_t *out) {
        if (m_scaling16)
            ComputeTaps(ring, row, channel, out);
        else if (m_scaling32)
            ComputePairs(ring, row, channel, out);
        else
            ComputeOneByOne(ring, row, channel, out);
    }

private:
    static const std::int16_t *LineOf(const Term &term, const LineRing &ring, int row,
                                      int channel) {
        return ring.Line(row + term.row, channel) + term.column;
    }

    void ComputeTaps(const LineRing &ring, int row, int channel, std::uint8_t *out) {
        m_taps.clear();
        for (const Term &term : m_terms)
            m_taps.push_back(
                {LineOf(term, ring, row, channel), static_cast<std::int16_t>(term.weight)});
        ConvolveRow(m_taps, m_scaling, *m_scaling16, m_width, out);
    }

    void ComputePairs(const LineRing &ring, int row, int channel, std::uint8_t *out) {
        m_pairs.clear();
        for (std::size_t i = 0; i < m_terms.size(); ++i) {
            const Term &term = m_terms[i];
            m_pairs.push_back(
                {LineOf(term, ring, row, channel), {static_cast<std::int16_t>(term.weight), 0}});
            if (i + 1 < m_terms.size() && m_terms[i + 1].row == term.row &&
                m_terms[i + 1].column == term.column + 1)
                m_pairs.back().weights[1] = static_cast<std::int16_t>(m_terms[++i].weight);
        }
        ConvolveRow(m_pairs, m_scaling, *m_scaling32, m_width, out);
    }

    void ComputeOneByOne(const LineRing &ring, int row, int channel, std::uint8_t *out) {
        std::fill(m_sums.begin(), m_sums.end(), 0);
        for (const Term &term : m_terms) {
            const std::int16_t *const line = LineOf(term, ring, row, channel);
            for (std::size_t x = 0; x < m_width; ++x)
                m_sums[x] += term.weight * line[x];
        }
        std::transform(m_sums.begin(), m_sums.end(), out,
                       [this](std::int64_t sum) { return m_scaling.Apply(sum); });
    }

    std::vector<Term> m_terms;
    Scaling m_scaling;
    std::optional<Scaling16> m_scaling16;
    std::optional<Scaling32> m_scaling32;
    std::size_t m_width;
    std::vector<Tap> m_taps;
    std::vector<TapPair> m_pairs;
    std::vector<std::int64_t> m_sums;
};

void ConvolveRows(const PixelRows &image, const Kernel &kernel) {
    std::vector<Term> terms = TermsOf(kernel, image.width, image.height);
    const Reach reach = ReachOf(terms);
    // No sum of bytes and 32-bit weights comes near this limit, so it changes no result.
    constexpr std::int64_t farOff = std::numeric_limits<std::int64_t>::max() / 4;
    const std::int64_t divisor = std::clamp<std::int64_t>(kernel.divisor, -farOff, farOff);
    RowConvolver convolver(image, std::move(terms),
                           {std::max<std::int64_t>(std::abs(divisor), 1),
                            std::clamp<std::int64_t>(kernel.offset, -farOff, farOff)});
    LineRing ring(image, reach);
    const auto width = static_cast<std::size_t>(image.width);
    using Planes = AlignedBlock<std::uint8_t>;
    const std::size_t planeLength = Planes::WholeLines(width + CONVOLUTION_OVERRUN);
    const Planes result(planeLength * static_cast<std::size_t>(image.channels));

    for (int row = 0; row < reach.down; ++row)
        ring.Load(row);
    for (int row = 0; row < image.height; ++row) {
        ring.Load(row + reach.down);
        for (int channel = 0; channel < image.channels; ++channel)
            convolver.Compute(ring, row, channel,
                              result.At(static_cast<std::size_t>(channel) * planeLength));
        std::uint8_t *const target = image.bytes + row * image.stride;
        if (image.channels == 3) {
            const std::uint8_t *const planes[] = {result.At(0), result.At(planeLength),
                                                  result.At(2 * planeLength)};
            JoinChannels(planes, width, target);
        } else {
            std::copy_n(result.At(0), width, target);
        }
    }
}

} // namespace

bool Convolve(const PixelRows &image, const Kernel &kernel) {
    if (image.width < 1 || image.height < 1)
        return true;
    try {
        ConvolveRows(image, kernel);
    } catch (const std::bad_alloc &) {
        return false;
    }
    return true;
}

} // namespace tavix
