// Direct convolution, row by row. The rows that a result row needs stand in a ring of lines, one of
// each channel, with zeros in place of row 0, column 0 and everything outside the image, so that no
// term needs a test; since the ring holds copies, the result is written over the image at once.
// Weights of 0 cost nothing.
//
// Neighbours side by side are taken in pairs, for which processors have one instruction. Small
// weights, whose sums fit 16 bits, go with lines of bytes; 16-bit weights, whose sums fit 32 bits,
// with lines of words; all others one by one with 64 bits. The three give the same result; which
// one runs depends on the weights alone.

#include "TAVIX20/analysis/convolution.h"

#include "TAVIX20/analysis/convolution_kernels.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
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
template <typename Pixel>
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
        Pixel *lines[3] = {};
        for (int channel = 0; channel < m_image.channels; ++channel)
            lines[channel] = m_lines.At(StartOf(row, channel) + m_left);
        SpreadRow(m_image.bytes + row * m_image.stride, static_cast<std::size_t>(m_image.width),
                  m_image.channels, lines);
        for (int channel = 0; channel < m_image.channels; ++channel)
            lines[channel][0] = 0;
    }

    /// The pixel in column 0 of a row's line. A row that does not take part is a line of zeros.
    const Pixel *Line(int row, int channel) const {
        const bool takesPart = row >= 1 && row < m_image.height;
        return m_lines.At((takesPart ? StartOf(row, channel) : m_zeros) + m_left);
    }

private:
    using Lines = AlignedBlock<Pixel>;

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

/// Terms side by side.
struct TermPair {
    int row;
    int column;
    std::int64_t weights[2];
};

std::vector<TermPair> PairsOf(const std::vector<Term> &terms) {
    std::vector<TermPair> pairs;
    for (const Term &term : terms) {
        if (!pairs.empty() && pairs.back().row == term.row &&
            pairs.back().column + 1 == term.column)
            pairs.back().weights[1] = term.weight;
        else
            pairs.push_back({term.row, term.column, {term.weight, 0}});
    }
    return pairs;
}

/// Computes result rows from pairs of terms.
template <typename PixelType, typename Weight, typename Fast>
class PairConvolver {
public:
    using Pixel = PixelType;

    PairConvolver(const std::vector<Term> &terms, const Scaling &scaling)
        : m_terms(PairsOf(terms)), m_pairs(m_terms.size()), m_scaling(scaling), m_fast(scaling) {
        for (std::size_t i = 0; i < m_terms.size(); ++i)
            for (std::size_t k = 0; k < 2; ++k)
                m_pairs[i].weights[k] = static_cast<Weight>(m_terms[i].weights[k]);
    }

    void Compute(const LineRing<Pixel> &ring, int row, int channel, std::size_t width,
                 std::uint8_t *out) {
        for (std::size_t i = 0; i < m_terms.size(); ++i)
            m_pairs[i].line = ring.Line(row + m_terms[i].row, channel) + m_terms[i].column;
        ConvolveRow(m_pairs, m_scaling, m_fast, width, out);
    }

private:
    std::vector<TermPair> m_terms;
    std::vector<TapPair<Pixel, Weight>> m_pairs;
    Scaling m_scaling;
    Fast m_fast;
};

/// Computes result rows whatever the weights.
class TermConvolver {
public:
    using Pixel = std::uint8_t;

    TermConvolver(const std::vector<Term> &terms, const Scaling &scaling)
        : m_terms(terms), m_scaling(scaling) {}

    void Compute(const LineRing<Pixel> &ring, int row, int channel, std::size_t width,
                 std::uint8_t *out) {
        m_sums.assign(width, 0);
        for (const Term &term : m_terms) {
            const Pixel *const line = ring.Line(row + term.row, channel) + term.column;
            for (std::size_t x = 0; x < width; ++x)
                m_sums[x] += term.weight * line[x];
        }
        std::transform(m_sums.begin(), m_sums.end(), out,
                       [this](std::int64_t sum) { return m_scaling.Apply(sum); });
    }

private:
    const std::vector<Term> &m_terms;
    Scaling m_scaling;
    std::vector<std::int64_t> m_sums;
};

template <typename Convolver>
void ConvolveWith(Convolver convolver, const PixelRows &image, const Reach &reach) {
    using Planes = AlignedBlock<std::uint8_t>;
    LineRing<typename Convolver::Pixel> ring(image, reach);
    const auto width = static_cast<std::size_t>(image.width);
    const std::size_t planeLength = Planes::WholeLines(width + CONVOLUTION_OVERRUN);
    const Planes result(planeLength * static_cast<std::size_t>(image.channels));

    for (int row = 0; row < reach.down; ++row)
        ring.Load(row);
    for (int row = 0; row < image.height; ++row) {
        ring.Load(row + reach.down);
        for (int channel = 0; channel < image.channels; ++channel)
            convolver.Compute(ring, row, channel, width,
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

/// Whether every weight fits the type.
template <typename Weight>
bool FitAll(const std::vector<Term> &terms) {
    return std::ranges::all_of(
        terms, [](const Term &term) { return term.weight == static_cast<Weight>(term.weight); });
}

Scaling ScalingOf(const Kernel &kernel) {
    // No sum of bytes and 32-bit weights comes near this limit, so it changes no result.
    constexpr std::int64_t farOff = std::numeric_limits<std::int64_t>::max() / 4;
    const std::int64_t divisor = std::clamp<std::int64_t>(kernel.divisor, -farOff, farOff);
    return {std::max<std::int64_t>(std::abs(divisor), 1),
            std::clamp<std::int64_t>(kernel.offset, -farOff, farOff)};
}

void ConvolveRows(const PixelRows &image, const Kernel &kernel) {
    const std::vector<Term> terms = TermsOf(kernel, image.width, image.height);
    const Reach reach = ReachOf(terms);
    const Scaling scaling = ScalingOf(kernel);
    std::int64_t magnitude = 0;
    for (const Term &term : terms)
        magnitude += std::abs(term.weight);

    if (FitAll<std::int8_t>(terms) && Scaling16::Suits(magnitude, scaling))
        ConvolveWith(PairConvolver<std::uint8_t, std::int8_t, Scaling16>(terms, scaling), image,
                     reach);
    else if (FitAll<std::int16_t>(terms) && Scaling32::Suits(magnitude, scaling))
        ConvolveWith(PairConvolver<std::int16_t, std::int16_t, Scaling32>(terms, scaling), image,
                     reach);
    else
        ConvolveWith(TermConvolver(terms, scaling), image, reach);
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
